#include "src/instance_guard.h"

#include "src/identity.h"

#include "shared/gui_thread.h"
#include "shared/log.h"

#include <QLocalSocket>
#include <QProcess>

namespace {

constexpr int connectLimitMs = 1000;
constexpr int writeLimitMs = 30000;
constexpr int listLimitMs = 500;
constexpr int activateLimitMs = 30000;
constexpr const char *raiseCommand = "fullscreen 1";

QString windowTool()
{
    return QStringLiteral("wmctrl");
}

bool raiseThroughSocket(const QString &socketPath)
{
    QLocalSocket socket;
    socket.connectToServer(socketPath, QIODevice::ReadWrite);
    if (!socket.waitForConnected(connectLimitMs)) {
        return false;
    }
    logInfo("Anscheinend läuft das Programm bereits. Es wird versucht das Fenster nach vorne zu bringen "
            "(socket)");
    socket.write(raiseCommand);
    socket.waitForBytesWritten(writeLimitMs);
    return true;
}

/// Whether the window tool did its work; logs why not.
bool listedWindows(const QProcess &tool)
{
    if (tool.exitStatus() != QProcess::NormalExit) {
        logDebug("Das Programm 'wmctrl' ist gecrasht.");
        return false;
    }
    switch (tool.error()) {
    case QProcess::UnknownError:
        return true;
    case QProcess::FailedToStart:
        logInfo("Das Programm 'wmctrl' ist anscheinend nicht installiert.");
        return false;
    case QProcess::Crashed:
        // GCOVR_EXCL_BR_START: the exit status has told before
        warningStream() << "Das Programm 'wmctrl' ist gecrasht. Exit-Code:" << tool.exitCode();
        return false;
        // GCOVR_EXCL_BR_STOP
    case QProcess::Timedout:
    case QProcess::ReadError:
    case QProcess::WriteError:
        warningStream() << "Das Programm 'wmctrl' wurde mit folgendem Fehler beendet:" << tool.error()
                        << "Exit-Code:" << tool.exitCode();
        return false;
    }
    return false;
}

bool raiseThroughWindowTool()
{
    QProcess list;
    list.start(windowTool(), {QStringLiteral("-l")}, QIODevice::ReadWrite);
    list.waitForFinished(listLimitMs);
    if (!listedWindows(list) || !list.readAllStandardOutput().contains(identity::title)) {
        return false;
    }
    logInfo("Anscheinend läuft das Programm bereits. Es wird versucht das Fenster nach vorne zu bringen "
            "(wmctrl)");
    QProcess activate;
    activate.start(windowTool(), {QStringLiteral("-a"), QString::fromLatin1(identity::title)},
                   QIODevice::ReadWrite);
    activate.waitForFinished(activateLimitMs);
    return true;
}

} // namespace

bool raiseRunningInstance(const QString &socketPath)
{
    Q_ASSERT(onGuiThread());
    return raiseThroughSocket(socketPath) || raiseThroughWindowTool();
}
