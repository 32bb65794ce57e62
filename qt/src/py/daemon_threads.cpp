#include "src/py/daemon_threads.h"

#include <Python.h>

#include <atomic>
#include <memory>

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

std::atomic<bool> parking = false;
std::atomic<bool> keeping = false;

/// The state of a thread that stays where it is, as this entry does: for good.
struct Kept
{
    const void *state;
    const Kept *next;
};
/// Without a lock, which a child that is forked just now would find taken.
std::atomic<const Kept *> keptStates = nullptr;

/// Any thread, also without the GIL.
void keep(const void *state)
{
    Kept *const entry = std::make_unique<Kept>(Kept{.state = state, .next = keptStates}).release();
    while (!keptStates.compare_exchange_weak(entry->next, entry)) {
    }
}

bool isKept(const void *memory)
{
    const Kept *entry = keptStates;
    while (entry != nullptr && entry->state != memory) {
        entry = entry->next;
    }
    return entry != nullptr;
}

/// Written before there is a thread of Python's: whoever frees needs neither a lock nor the GIL.
PyMemAllocatorEx allocatorOfPython;

/// A thread may be started while the last exit functions run: those of whoever came before the host.
void *allocateAndKeepState(void *context, size_t count, size_t size) noexcept
{
    void *const memory = allocatorOfPython.calloc(context, count, size);
    if (keeping && memory != nullptr && count == 1 && size == sizeof(PyThreadState)) {
        keep(memory);
    }
    return memory;
}

void freeUnlessKept(void *context, void *memory) noexcept
{
    if (!isKept(memory)) {
        allocatorOfPython.free(context, memory);
    }
}

/// Beneath whatever else may watch Python's memory, tracemalloc for example, which takes itself out again.
void standBetweenPythonAndItsMemory()
{
    PyMemAllocatorEx allocator;
    PyMem_GetAllocator(PYMEM_DOMAIN_RAW, &allocator);
    if (allocator.free != freeUnlessKept) {
        allocatorOfPython = allocator;
        allocator.calloc = allocateAndKeepState;
        allocator.free = freeUnlessKept;
        PyMem_SetAllocator(PYMEM_DOMAIN_RAW, &allocator);
    }
}

} // namespace

void parkDaemonThreadsAtEnd()
{
    parking = true;
    // Chooses the allocators. What fails here fails again at the start, which tells it.
    PyPreConfig config;
    PyPreConfig_InitPythonConfig(&config);
    Py_PreInitialize(&config);
    standBetweenPythonAndItsMemory();
}

void keepThreadStates()
{
    keeping = true;
    PyThreadState *state = PyInterpreterState_ThreadHead(PyInterpreterState_Get());
    for (; state != nullptr; state = PyThreadState_Next(state)) {
        keep(state);
    }
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
