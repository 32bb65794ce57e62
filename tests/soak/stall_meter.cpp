#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>

#include <fcntl.h>
#include <unistd.h>

// Preloaded into the program: tells of each time for which its GUI thread came to no timer, and so to no
// press. Each is a line of the file KUBELOR_STALLS: monotonic time of its end in seconds, then in
// milliseconds its length, for how long the thread ran, and for how long it was ready to run while the
// processor did other things.

namespace {

constexpr int tickMs = 5;
constexpr qint64 shortestMs = 50;
constexpr qint64 nsPerMs = 1'000'000;

/// What the kernel knows of the thread.
struct Spent
{
    long long running = 0; ///< ns
    long long waiting = 0; ///< ns
};

/// Of the calling thread, which stays the same.
Spent spent()
{
    static const int file = ::open("/proc/thread-self/schedstat", O_RDONLY | O_CLOEXEC);
    std::array<char, 100> text{};
    Spent result;
    if (::pread(file, text.data(), text.size() - 1, 0) > 0) {
        std::sscanf(text.data(), "%lld %lld", &result.running, &result.waiting);
    }
    return result;
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
    static Spent before;
    const qint64 length = sinceLast.isValid() ? sinceLast.elapsed() - tickMs : 0;
    const Spent after = spent();
    if (length >= shortestMs && file != nullptr) {
        std::fprintf(file, "%.3f %lld %lld %lld\n", now(), static_cast<long long>(length),
                     (after.running - before.running) / nsPerMs, (after.waiting - before.waiting) / nsPerMs);
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
