#pragma once

/// From now on, a daemon thread that Python ends with itself stops where it stands. Any thread, before
/// Python's end.
void parkDaemonThreadsAtEnd();
