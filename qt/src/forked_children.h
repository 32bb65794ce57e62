#pragma once

/// Lets processes that are forked from this one and start no other program, as multiprocessing makes them for
/// a backend, be processes of their own.
///
/// They do not get the connection to the display, and all else that is connected by then: such a process may
/// outlive the program that was killed or has crashed, it would keep the dead window on the screen, and each
/// new start would take that for a running instance. And they end without the handlers and destructors of the
/// program's end, which would wait for threads that such a process does not have.
///
/// GUI thread, once, when the display is connected and before Python runs.
void setForksApart();
