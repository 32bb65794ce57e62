#pragma once

/// Lets every thread read the environment while another one writes it.
///
/// Qt and the C library call getenv() wherever they are at work, and a backend may set a variable whenever it
/// likes, as Python itself does when it starts. The library's setenv() frees the table that a reader is just
/// walking through. The program therefore has the functions that write (setenv(), putenv(), unsetenv(),
/// clearenv()) itself, for all that is loaded into the process: tables and values that somebody may have seen
/// stay. A reader sees a variable's old value or the new one; while one variable is removed it may miss
/// another. A process that is forked meanwhile may write as well.
///
/// GUI thread, before other threads run.
void shareEnvironment();
