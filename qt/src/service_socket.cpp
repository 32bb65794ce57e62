#include "src/service_socket.h"

#include "shared/log.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <unistd.h>

ServiceSocket::ServiceSocket(const QByteArray &address)
{
    if (!setAddress(address)) {
        logWarning("NOTIFY_SOCKET ist kein Socket: %s", address.constData());
        return;
    }
    m_descriptor = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (m_descriptor < 0) {
        logWarning("Kein Socket für den Dienstverwalter: %s", std::strerror(errno));
    }
}

ServiceSocket::~ServiceSocket()
{
    if (m_descriptor >= 0) {
        ::close(m_descriptor);
    }
}

bool ServiceSocket::setAddress(const QByteArray &address)
{
    const bool isAbstract = address.startsWith('@');
    const auto size = static_cast<std::size_t>(address.size());
    // A path has its final zero, a name of the abstract space has none.
    const std::size_t room = sizeof m_address.sun_path - (isAbstract ? 0 : 1);
    if ((!isAbstract && !address.startsWith('/')) || size < 2 || size > room) {
        return false;
    }
    m_address.sun_family = AF_UNIX;
    std::copy(address.cbegin(), address.cend(), std::begin(m_address.sun_path));
    if (isAbstract) {
        m_address.sun_path[0] = '\0';
    }
    m_length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + size + (isAbstract ? 0 : 1));
    return true;
}

bool ServiceSocket::send(const QByteArray &lines)
{
    if (m_descriptor < 0) {
        return true;
    }
    const auto *const address = reinterpret_cast<const sockaddr *>(&m_address);
    const bool sent = ::sendto(m_descriptor, lines.constData(), static_cast<std::size_t>(lines.size()),
                               MSG_NOSIGNAL | MSG_DONTWAIT, address, m_length) >= 0;
    if (!sent && !m_failed) {
        logWarning("Der Dienstverwalter nimmt nichts an: %s", std::strerror(errno));
    }
    m_failed = !sent;
    return sent;
}
