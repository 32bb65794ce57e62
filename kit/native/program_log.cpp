#include "native/program_log.h"

#include "src/message_handler.h"

#include <QMutex>
#include <QMutexLocker>

#include <deque>

namespace {

using Line = std::pair<std::string, std::string>;

/// A backend may log for hours.
constexpr std::size_t mostLines = 10'000;

QMutex mutex;

std::deque<Line> &kept()
{
    // Leaked on purpose: threads log until the process has ended.
    static auto *const lines = new std::deque<Line>;
    return *lines;
}

const char *levelName(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return "debug";
    case QtInfoMsg:
        return "info";
    case QtWarningMsg:
        return "warning";
    case QtCriticalMsg:
    case QtFatalMsg:
        break;
    }
    return "critical";
}

void keep(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    {
        const QMutexLocker lock(&mutex);
        kept().emplace_back(levelName(type), text.toStdString());
        if (kept().size() > mostLines) {
            kept().pop_front();
        }
    }
    messageHandler(type, context, text);
}

} // namespace

void ProgramLog::install()
{
    installMessageHandler();
    qInstallMessageHandler(keep);
}

std::vector<Line> ProgramLog::lines()
{
    const QMutexLocker lock(&mutex);
    return {kept().begin(), kept().end()};
}

void ProgramLog::clear()
{
    const QMutexLocker lock(&mutex);
    kept().clear();
}
