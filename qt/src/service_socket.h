#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <sys/socket.h>
#include <sys/un.h>

/// The service manager's socket. Each message is one datagram of lines `NAME=value`.
///
/// Waits for nobody: what cannot be taken right now is refused, and a manager that has gone raises no signal.
/// The address is looked up for each message, so one that takes another's place is found. One thread, no
/// lock.
class ServiceSocket
{
public:
    /// An absolute path, or a name in the abstract space behind an '@'. Any other address is logged, and
    /// nothing is ever sent.
    explicit ServiceSocket(const QByteArray &address);
    ~ServiceSocket();

    Q_DISABLE_COPY_MOVE(ServiceSocket)

    /// False if the message is to be sent again later. The first of several failures in a row is logged.
    bool send(const QByteArray &lines);

private:
    bool setAddress(const QByteArray &address);

    int m_descriptor = -1;
    sockaddr_un m_address{};
    socklen_t m_length = 0;
    bool m_failed = false;
};
