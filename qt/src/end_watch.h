#pragma once

#include <QThread>

#include <chrono>

class EndWatcher;

/// How long an end may take.
struct EndTimes
{
    /// Between two lines that say what is being waited for.
    std::chrono::milliseconds line = std::chrono::seconds(1);
    /// From the signal to the process's end by force.
    std::chrono::milliseconds patience = std::chrono::seconds(10);
};

/// Sees to it that the program ends when a signal asks for it, and tells what an end waits for meanwhile.
///
/// A first signal closes the program as its window does; further ones change nothing. If the program is still
/// there when the patience is over, the stacks of all Python threads are written and the process leaves with
/// code 1. Lives on the GUI thread; what it does is done on a thread of its own, which waits for no other.
class EndWatch
{
public:
    explicit EndWatch(const EndTimes &times = {});
    ~EndWatch();

    Q_DISABLE_COPY_MOVE(EndWatch)

    /// The program is about to end, without a signal and in its own time.
    void begin();
    /// What was waited for is over.
    void finish();

private:
    QThread m_thread;
    /// Deleted on its thread, when that ends.
    EndWatcher *m_watcher;
};
