#include "src/service_journal.h"

#include <sys/stat.h>
#include <syslog.h>

namespace {

int priority(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return LOG_DEBUG;
    case QtInfoMsg:
        return LOG_INFO;
    case QtWarningMsg:
        return LOG_WARNING;
    case QtCriticalMsg:
        return LOG_ERR;
    case QtFatalMsg:
        return LOG_CRIT;
    }
    return LOG_INFO;
}

} // namespace

bool isJournalStream(int descriptor, const QByteArray &journalStream)
{
    struct stat file = {};
    return !journalStream.isEmpty() && fstat(descriptor, &file) == 0 &&
           journalStream == QByteArray::number(static_cast<quint64>(file.st_dev)) + ':' +
                                QByteArray::number(static_cast<quint64>(file.st_ino));
}

QByteArray withPriority(QtMsgType type, const QByteArray &text)
{
    const QByteArray mark = '<' + QByteArray::number(priority(type)) + '>';
    QByteArray marked = text;
    marked.replace('\n', '\n' + mark);
    return mark + marked;
}
