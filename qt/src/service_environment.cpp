#include "src/service_environment.h"

#include "shared/gui_thread.h"
#include "shared/log.h"

#include <QtGlobal>

#include <algorithm>
#include <unistd.h>

namespace {

QByteArray takeVariable(const char *name)
{
    QByteArray value = qgetenv(name);
    qunsetenv(name);
    return value;
}

bool isThisProcess(const QByteArray &pid)
{
    return pid.isEmpty() || pid == QByteArray::number(getpid());
}

std::chrono::milliseconds period(const QByteArray &microseconds)
{
    constexpr std::chrono::milliseconds shortest(1);
    // What a timer can still count.
    constexpr std::chrono::milliseconds longest = std::chrono::hours(24);
    bool isNumber = false;
    const qint64 number = microseconds.toLongLong(&isNumber);
    if (!isNumber || number <= 0) {
        logWarning("WATCHDOG_USEC ist keine Zeit: %s", microseconds.constData());
        return std::chrono::milliseconds(0);
    }
    const auto time =
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::microseconds(number));
    return std::clamp(time, shortest, longest);
}

} // namespace

ServiceEnvironment ServiceEnvironment::take()
{
    Q_ASSERT(onGuiThread());
    ServiceEnvironment environment{.notifySocket = takeVariable("NOTIFY_SOCKET")};
    const QByteArray watched = takeVariable("WATCHDOG_PID");
    const QByteArray microseconds = takeVariable("WATCHDOG_USEC");
    if (!environment.notifySocket.isEmpty() && !microseconds.isEmpty() && isThisProcess(watched)) {
        environment.watchdog = period(microseconds);
    }
    return environment;
}
