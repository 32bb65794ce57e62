#include "src/standard_streams.h"

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

void secureStandardStreams()
{
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
