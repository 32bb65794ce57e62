#pragma once

#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <vector>

/// Collects all log messages of the process while it lives, from any thread. One at a time.
class LogCapture
{
public:
    struct Message
    {
        QtMsgType type;
        QString text;
    };

    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture &) = delete;
    LogCapture &operator=(const LogCapture &) = delete;

    std::vector<Message> messages() const;
    /// The texts of one level, in order.
    QStringList texts(QtMsgType type) const;
    /// Waits until some message is this text or begins with it; false if that never happens.
    bool waitFor(const QString &beginning);
    void clear();

private:
    static void collect(QtMsgType type, const QMessageLogContext &context, const QString &text);

    static std::atomic<LogCapture *> current;
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::vector<Message> m_messages;
    QtMessageHandler m_previous;
};
