#include "thread_time.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>

// Preloaded into the program: tells of each time for which its GUI thread came to no timer, and so to no
// press. Each is a line of the file KUBELOR_STALLS: monotonic time of its end in seconds, then in
// milliseconds its length, for how long the thread ran, and for how long it was ready to run while the
// processor did other things.

namespace {

constexpr int tickMs = 5;
constexpr qint64 shortestMs = 50;

long long inMs(std::chrono::nanoseconds time)
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(time).count();
}

double now()
{
    timespec time{};
    ::clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

void tick()
{
    static std::FILE *const file = std::fopen(std::getenv("KUBELOR_STALLS"), "ae");
    static QElapsedTimer sinceLast;
    static ThreadTime before;
    const qint64 length = sinceLast.isValid() ? sinceLast.elapsed() - tickMs : 0;
    const ThreadTime after = timeOfThisThread();
    if (length >= shortestMs && file != nullptr) {
        std::fprintf(file, "%.3f %lld %lld %lld\n", now(), static_cast<long long>(length),
                     inMs(after.running - before.running), inMs(after.waiting - before.waiting));
        std::fflush(file);
    }
    before = after;
    sinceLast.start();
}

void startMeter()
{
    if (std::getenv("KUBELOR_STALLS") == nullptr) {
        return;
    }
    auto *const timer = new QTimer(QCoreApplication::instance());
    QObject::connect(timer, &QTimer::timeout, timer, &tick);
    timer->start(tickMs);
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(startMeter)
