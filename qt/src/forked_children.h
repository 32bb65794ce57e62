#pragma once

/// Keeps the connection to the display, and all else that is connected by then, from processes that are
/// forked from this one and start no other program, as multiprocessing makes them for a backend.
///
/// Such a process may outlive the program that was killed or has crashed. With that connection it would keep
/// the dead window on the screen, and each new start would take that for a running instance.
///
/// GUI thread, once, when the display is connected and before Python runs.
void keepDisplayFromForks();
