#include "src/message_handler.h"

#include "shared/log.h"
#include "src/exit_guard.h"
#include "src/service_journal.h"

#include <QDateTime>
#include <QElapsedTimer>

#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace {

QElapsedTimer runTimer;
/// Set once, before other threads log.
bool journalReads = false;

// %1 wall clock, %2 text, %3 minutes, %4 seconds, %5 milliseconds, %6 level
constexpr const char *pythonFormat = "%6[%1][%3:%4:%5][Py] %2";
constexpr const char *nativeFormat = "%6[%1][%3:%4:%5] %2";
constexpr const char *locationFormat = "%1 (File: %2, Line: %4, Function: %3)";
constexpr const char *wallClockFormat = "yyyy-MM-dd HH:mm:ss";

/// Null for a type without a tag.
const char *levelTag(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return "[DEBUG]";
    case QtInfoMsg:
        return "[INFO ]";
    case QtWarningMsg:
        return "[WARN ]";
    case QtCriticalMsg:
        return "[CRIT ]";
    case QtFatalMsg:
        return "[FATAL]";
    }
    return nullptr;
}

bool otherThreadsRun()
{
    // A directory has two links and one more for each of its own: here, for each thread.
    constexpr std::uintmax_t linksOfOneThread = 3;
    std::error_code error;
    return std::filesystem::hard_link_count("/proc/self/task", error) != linksOfOneThread;
}

/// Ends the process with code 1. While other threads run, nothing that they use may be taken down under them:
/// then the exit handlers of the program are passed over. So they are when one of them has a fatal message
/// itself.
[[noreturn]] void endProcess()
{
    static std::atomic_flag ending;
    if (ending.test_and_set()) {
        leaveAtOnce(EXIT_FAILURE);
    }
    // Within a message Qt takes another one to its own handler, which aborts after a fatal one.
    std::signal(SIGABRT, [](int /*signal*/) { leaveAtOnce(EXIT_FAILURE); });
    if (otherThreadsRun()) {
        leaveAtOnce(EXIT_FAILURE);
    }
    std::exit(EXIT_FAILURE);
}

} // namespace

QString formatLogLine(QtMsgType type, const QMessageLogContext &context, const QString &text,
                      qint64 runTimeMs, const QString &wallClock)
{
    constexpr qint64 msPerSecond = 1000;
    constexpr qint64 msPerMinute = 60 * msPerSecond;
    const qint64 inMinute = runTimeMs % msPerMinute;

    const bool fromPython = context.category == pythonLogCategory;
    QString line = QString::fromLatin1(fromPython ? pythonFormat : nativeFormat)
                       .arg(wallClock, text)
                       .arg(runTimeMs / msPerMinute)
                       .arg(inMinute / msPerSecond)
                       .arg(inMinute % msPerSecond);
    if (const char *tag = levelTag(type)) {
        line = line.arg(QLatin1String(tag));
    }
    if (context.file != nullptr) {
        line = QString::fromLatin1(locationFormat)
                   .arg(line, QString::fromUtf8(context.file), QString::fromUtf8(context.function))
                   .arg(context.line);
    }
    return line;
}

void messageHandler(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    const QString line = formatLogLine(type, context, text, runTimer.elapsed(),
                                       QDateTime::currentDateTime().toString(QLatin1String(wallClockFormat)));
    const QByteArray bytes = line.toLocal8Bit();
    std::fprintf(stderr, "%s\n", (journalReads ? withPriority(type, bytes) : bytes).constData());
    if (type == QtFatalMsg) {
        endProcess();
    }
}

void installMessageHandler()
{
    runTimer.start();
    journalReads = isJournalStream(STDERR_FILENO, qgetenv("JOURNAL_STREAM"));
    qInstallMessageHandler(messageHandler);
}
