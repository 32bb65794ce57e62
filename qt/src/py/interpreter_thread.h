#pragma once

#include <QtGlobal> // who asks also asserts

/// Makes this thread the interpreter thread. Called by who starts Python there.
void becomeInterpreterThread();

/// Whether this is the interpreter thread. Any thread passes for it before Python has been started.
///
/// What runs on the interpreter thread alone asserts this at its entry: `Q_ASSERT(onInterpreterThread())`.
bool onInterpreterThread();

/// Whether Python runs, and this thread has the GIL just now. Any thread, also while there is no Python.
bool holdsGil();
