#pragma once

#include <QtGlobal>

#include <functional>

/// Ends the program in order when a library ends the process: Qt calls exit() on the GUI thread, or _exit()
/// on one of its own, when the connection to the display breaks. Without this, the one would wait for ever in
/// a destructor for threads that still run, and with the other the outputs of the machine would stay as they
/// are.
///
/// As long as an object lives, of which there is one at most, exit() and _exit() ask for the end, have it
/// brought about on the GUI thread, and the process leaves with their status then, past its handlers and
/// destructors. The backend alone leaves at once by os._exit(). Lives on the GUI thread.
class ExitGuard
{
public:
    /// `ask` is told what ends the process, for the log: "exit(1)"; any thread. `end` has brought about the
    /// end when it returns; GUI thread.
    ExitGuard(std::function<void(const char *cause)> ask, std::function<void()> end);
    ~ExitGuard();

    Q_DISABLE_COPY_MOVE(ExitGuard)
};

/// Leaves the process without all that. Any thread, also within a handler of a signal.
[[noreturn]] void leaveAtOnce(int status);
