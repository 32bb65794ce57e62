#include "src/py/daemon_threads.h"

#include <Python.h>

#include <algorithm>
#include <atomic>
#include <deque>
#include <vector>

#include <dlfcn.h>
#include <unistd.h>

// When Python ends, CPython 3.11 ends each daemon thread with pthread_exit() as soon as that thread asks for
// the GIL. That unwinds the thread's stack, and with it the frames of a bound function that called back into
// Python: `catch (...)` and destructors that may not throw abort the process, and what is destroyed releases
// Python objects without the GIL. So such a thread stops where it stands, for good, and nothing of it is
// unwound. Later versions of Python do the same by themselves.
//
// On its way there a thread looks into its state, and one that only begins writes into it: but Python has
// freed it by then, and the memory may be somebody else's. So these states are never freed.
//
namespace {

using States = std::vector<const void *>;

std::atomic<bool> parking = false;
std::atomic<const States *> keptStates = nullptr;
/// Written before `keptStates` is.
PyMemAllocatorEx allocatorOfPython;

/// Any thread, also without the GIL.
void freeUnlessKept(void *context, void *memory)
{
    const States *states = keptStates;
    if (states == nullptr || std::find(states->begin(), states->end(), memory) == states->end()) {
        allocatorOfPython.free(context, memory);
    }
}

} // namespace

void parkDaemonThreadsAtEnd()
{
    parking = true;
}

void keepThreadStates()
{
    // Those of each end: another thread may be looking for something in the last ones.
    static std::deque<States> ends;
    States &states = ends.emplace_back();
    PyThreadState *state = PyInterpreterState_ThreadHead(PyInterpreterState_Get());
    for (; state != nullptr; state = PyThreadState_Next(state)) {
        states.push_back(state);
    }
    PyMemAllocatorEx allocator;
    PyMem_GetAllocator(PYMEM_DOMAIN_RAW, &allocator);
    if (allocator.free != freeUnlessKept) {
        allocatorOfPython = allocator;
        allocator.free = freeUnlessKept;
        PyMem_SetAllocator(PYMEM_DOMAIN_RAW, &allocator);
    }
    keptStates = &states;
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
