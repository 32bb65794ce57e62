#pragma once

/// From now on, a daemon thread that Python ends with itself stops where it stands. Any thread, before
/// Python's end.
void parkDaemonThreadsAtEnd();

/// Whatever Python frees from now on, the states of the threads that there are stay where they are. As the
/// last of the exit functions; interpreter thread, with the GIL.
void keepThreadStates();
