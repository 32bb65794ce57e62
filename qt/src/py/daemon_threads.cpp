#include "src/py/daemon_threads.h"

#include <Python.h>

#include <atomic>

#include <dlfcn.h>
#include <unistd.h>

// When Python ends, CPython 3.11 ends each daemon thread with pthread_exit() as soon as that thread asks for
// the GIL. That unwinds the thread's stack, and with it the frames of a bound function that called back into
// Python: `catch (...)` and destructors that may not throw abort the process, and what is destroyed releases
// Python objects without the GIL. So such a thread stops where it stands, for good, and nothing of it is
// unwound. Later versions of Python do the same by themselves.
//
namespace {

std::atomic<bool> parking = false;

} // namespace

void parkDaemonThreadsAtEnd()
{
    parking = true;
}

// The definition in the executable comes before that of the C library, also for calls from Python's library.

// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the C library's name is reserved
extern "C" [[gnu::visibility("default")]] void pthread_exit(void *result)
{
    if (parking && _Py_IsFinalizing() != 0) {
        for (;;) {
            pause(); // a signal ends it, and by then Python may have begun anew
        }
    }
    using Exit = void (*)(void *);
    const auto next = reinterpret_cast<Exit>(dlsym(RTLD_NEXT, "pthread_exit"));
    next(result);
    __builtin_unreachable();
}
