#pragma once

#include <QThread>

class EndWatcher;

/// Sees to it that the program ends when a signal asks for it, and tells what an end waits for meanwhile.
///
/// A first signal closes the program as its window does; further ones change nothing. If the program is still
/// there after ten seconds, the stacks of all Python threads are written and the process leaves with
/// code 1. Lives on the GUI thread; what it does is done on a thread of its own, which waits for no other.
class EndWatch
{
public:
    EndWatch();
    ~EndWatch();

    Q_DISABLE_COPY_MOVE(EndWatch)

    /// The program is about to end, without a signal and in its own time.
    void begin();
    /// What was waited for is over.
    void finish();
    /// The program is about to end for this cause, in no more time than after a signal. Any thread.
    void limit(const QByteArray &cause);

private:
    QThread m_thread;
    /// Deleted on its thread, when that ends.
    EndWatcher *m_watcher;
};
