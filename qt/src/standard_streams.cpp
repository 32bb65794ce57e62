#include "src/standard_streams.h"

#include "shared/gui_thread.h"

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

void secureStandardStreams()
{
    Q_ASSERT(onGuiThread());
    std::signal(SIGPIPE, SIG_IGN);
    // A new descriptor is the lowest one that is free.
    int opened = STDIN_FILENO;
    while (opened >= STDIN_FILENO && opened <= STDERR_FILENO) {
        opened = ::open("/dev/null", O_RDWR);
    }
    if (opened > STDERR_FILENO) {
        ::close(opened);
    }
}
