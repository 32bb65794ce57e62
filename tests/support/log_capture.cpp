#include "log_capture.h"

#include <QMutexLocker>

std::atomic<LogCapture *> LogCapture::current = nullptr;

LogCapture::LogCapture()
{
    current = this;
    m_previous = qInstallMessageHandler(collect);
}

LogCapture::~LogCapture()
{
    qInstallMessageHandler(m_previous);
    current = nullptr;
}

void LogCapture::collect(QtMsgType type, const QMessageLogContext & /*context*/, const QString &text)
{
    LogCapture &capture = *current;
    const QMutexLocker lock(&capture.m_mutex);
    capture.m_messages.push_back({type, text});
}

std::vector<LogCapture::Message> LogCapture::messages() const
{
    const QMutexLocker lock(&m_mutex);
    return m_messages;
}

QStringList LogCapture::texts(QtMsgType type) const
{
    QStringList result;
    for (const Message &message : messages()) {
        if (message.type == type) {
            result.append(message.text);
        }
    }
    return result;
}

void LogCapture::clear()
{
    const QMutexLocker lock(&m_mutex);
    m_messages.clear();
}
