#include "log_capture.h"

#include <QDeadlineTimer>
#include <QMutexLocker>

#include <algorithm>
#include <chrono>

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
    capture.m_changed.wakeAll();
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

bool LogCapture::waitFor(const QString &beginning)
{
    const QDeadlineTimer patience(std::chrono::minutes(1));
    const QMutexLocker lock(&m_mutex);
    const auto fits = [&](const Message &message) { return message.text.startsWith(beginning); };
    while (std::none_of(m_messages.begin(), m_messages.end(), fits)) {
        if (!m_changed.wait(&m_mutex, patience)) {
            return false;
        }
    }
    return true;
}

void LogCapture::clear()
{
    const QMutexLocker lock(&m_mutex);
    m_messages.clear();
}
