// Stands between libgpiod and the C library: what concerns the simulated chip is answered by it, all else is
// passed on. Linked into a test's executable, whose symbols come first.

#include "simulated_chip.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstring>

#define INTERPOSED extern "C" __attribute__((visibility("default")))

namespace {

template <typename Function> Function *next(const char *name)
{
    return reinterpret_cast<Function *>(::dlsym(RTLD_NEXT, name));
}

bool isSimulated(const char *path, const char *simulated)
{
    return SimulatedChip::current() != nullptr && std::strcmp(path, simulated) == 0;
}

bool takesMode(int flags)
{
    return (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
}

} // namespace

// NOLINTBEGIN(cert-dcl50-cpp): the C library's own declarations are variadic.

INTERPOSED int open(const char *path, int flags, ...)
{
    static auto *const original = next<int(const char *, int, ...)>("open");
    if (isSimulated(path, SimulatedChip::path)) {
        return SimulatedChip::openDevice();
    }
    if (isSimulated(path, SimulatedChip::sysfsPath)) {
        return SimulatedChip::openSysfs();
    }
    if (!takesMode(flags)) {
        return original(path, flags);
    }
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = va_arg(arguments, mode_t);
    va_end(arguments);
    return original(path, flags, mode);
}

INTERPOSED int ioctl(int fd, unsigned long request, ...) noexcept
{
    static auto *const original = next<int(int, unsigned long, void *)>("ioctl");
    va_list arguments;
    va_start(arguments, request);
    void *argument = va_arg(arguments, void *);
    va_end(arguments);
    if (SimulatedChip *chip = SimulatedChip::current();
        chip != nullptr && SimulatedChip::isGpioCall(request)) {
        return chip->control(request, argument);
    }
    return original(fd, request, argument);
}

// NOLINTEND(cert-dcl50-cpp)

INTERPOSED int access(const char *path, int mode) noexcept
{
    static auto *const original = next<int(const char *, int)>("access");
    return isSimulated(path, SimulatedChip::sysfsPath) ? 0 : original(path, mode);
}

INTERPOSED int stat(const char *path, struct stat *status) noexcept
{
    static auto *const original = next<int(const char *, struct stat *)>("stat");
    return isSimulated(path, SimulatedChip::path) ? SimulatedChip::status(*status) : original(path, status);
}

INTERPOSED int lstat(const char *path, struct stat *status) noexcept
{
    static auto *const original = next<int(const char *, struct stat *)>("lstat");
    return isSimulated(path, SimulatedChip::path) ? SimulatedChip::status(*status) : original(path, status);
}
