#pragma once

class QObject;

/// Holds back a thread that notifies the GUI thread faster than that can follow.
///
/// Every change from another thread is an event for the bindings. A backend that writes without a pause would
/// fill the GUI thread's queue without end, and no press would get through. So once some thousand changes
/// wait, each further one waits a few milliseconds for the GUI thread to catch up. The wait is bounded, since
/// the GUI thread may itself be waiting for Python. Call it after a change, without a lock; any thread.
void brakeNotifications(QObject &changed);
