#pragma once

/// From now on, a daemon thread that Python ends with itself stops where it stands. Preinitialises Python, by
/// the environment. The thread that is to start Python, before it does.
void parkDaemonThreadsAtEnd();

/// Whatever Python frees from now on, the states of threads stay where they are, those of threads that begin
/// later, too. As an exit function; interpreter thread, with the GIL.
void keepThreadStates();
