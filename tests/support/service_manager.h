#pragma once

#include <gtest/gtest.h>

#include <QByteArray>

#include <algorithm>
#include <cstddef>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

/// The service manager's end of the socket that notifications go to. Any thread.
class ServiceManager
{
public:
    /// A path, or '@' and a name of the abstract space.
    explicit ServiceManager(const QByteArray &address)
        : m_descriptor(::socket(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0))
    {
        sockaddr_un name{};
        name.sun_family = AF_UNIX;
        std::copy(address.cbegin(), address.cend(), std::begin(name.sun_path));
        if (address.startsWith('@')) {
            name.sun_path[0] = '\0';
        }
        const auto length =
            static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + std::size_t(address.size()));
        EXPECT_EQ(::bind(m_descriptor, reinterpret_cast<const sockaddr *>(&name), length), 0);
    }

    ~ServiceManager() { ::close(m_descriptor); }

    Q_DISABLE_COPY_MOVE(ServiceManager)

    /// The oldest message that is there; "(nothing)" if none is.
    QByteArray receive() const
    {
        char buffer[256];
        const ssize_t size = ::recv(m_descriptor, buffer, sizeof buffer, 0);
        return size < 0 ? QByteArray("(nothing)") : QByteArray(buffer, size);
    }

private:
    int m_descriptor;
};
