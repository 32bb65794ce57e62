#include "log_capture.h"

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
    const std::lock_guard lock(capture.m_mutex);
    capture.m_messages.push_back({type, text});
    capture.m_changed.notify_all();
}

std::vector<LogCapture::Message> LogCapture::messages() const
{
    const std::lock_guard lock(m_mutex);
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
    constexpr std::chrono::minutes patience(1);
    const auto fits = [&](const Message &message) { return message.text.startsWith(beginning); };
    std::unique_lock lock(m_mutex);
    return m_changed.wait_for(lock, patience,
                              [&] { return std::any_of(m_messages.begin(), m_messages.end(), fits); });
}

void LogCapture::clear()
{
    const std::lock_guard lock(m_mutex);
    m_messages.clear();
}
