#include "src/py/interpreter_thread.h"

#include <Python.h>

#include <atomic>
#include <thread>

namespace {

std::atomic<std::thread::id> interpreterThread;

} // namespace

void becomeInterpreterThread()
{
    interpreterThread = std::this_thread::get_id();
}

bool onInterpreterThread()
{
    const std::thread::id thread = interpreterThread;
    return thread == std::thread::id() || thread == std::this_thread::get_id();
}

bool holdsGil()
{
    // Without Python anybody passes for its holder.
    return Py_IsInitialized() != 0 && PyGILState_Check() != 0;
}
