#include "src/forked_children.h"

#include "shared/gui_thread.h"
#include "src/exit_guard.h"

#include <QtGlobal>

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <pthread.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

struct Socket
{
    int descriptor;
    ino_t inode;
};

/// Written before there is another thread, read within fork().
std::vector<Socket> &displaySockets()
{
    static std::vector<Socket> sockets;
    return sockets;
}

/// Of a socket that no other program is to have; what the parent has handed down is not among them.
std::optional<Socket> ownSocket(int descriptor)
{
    struct stat status = {};
    if (fstat(descriptor, &status) != 0 || !S_ISSOCK(status.st_mode) ||
        (fcntl(descriptor, F_GETFD) & FD_CLOEXEC) == 0) {
        return {};
    }
    return Socket{descriptor, status.st_ino};
}

/// Within the child, where nothing that another thread may have locked is used.
void closeDisplay()
{
    // GCOVR_EXCL_BR_START: what a child comes to goes with it
    for (const Socket &socket : displaySockets()) {
        // Its number may have become somebody else's.
        const std::optional<Socket> now = ownSocket(socket.descriptor);
        if (now && now->inode == socket.inode) {
            ::close(socket.descriptor);
        }
    }
    // GCOVR_EXCL_BR_STOP
}

void endAtOnce(int status, void * /*nothing*/)
{
    std::fflush(nullptr);
    leaveAtOnce(status);
}

/// Within the child. To register a handler takes a lock of the C library, which is held for no longer than
/// that.
void becomeApart()
{
    closeDisplay();
    // The handler that comes last is called first.
    on_exit(endAtOnce, nullptr);
}

} // namespace

void setForksApart()
{
    Q_ASSERT(onGuiThread());
    std::error_code error;
    for (const auto &entry : std::filesystem::directory_iterator("/proc/self/fd", error)) {
        if (const auto socket = ownSocket(std::stoi(entry.path().filename()))) {
            displaySockets().push_back(*socket);
        }
    }
    pthread_atfork(nullptr, nullptr, becomeApart);
}
