#pragma once

#include <QString>
#include <QStringList>

/// What the interpreter thread is busy with, for whoever waits for it.
///
/// An object names the activity as long as it lives; it is made on the interpreter thread. The static
/// functions run on any thread, under a mutex of their own.
class BackendActivity
{
public:
    /// The text is kept by pointer. For a call of a function of the backend, `action` names its enum.
    explicit BackendActivity(const char *what, const QString &action = {});
    ~BackendActivity();

    Q_DISABLE_COPY_MOVE(BackendActivity)

    /// For the log, for example "gui_value_from_cpp(DialogData)" or the names of threads. Empty if the
    /// interpreter thread waits for work.
    static QString text();
    /// Gives the activity that goes on another name.
    static void become(const char *what);
    /// Names the threads that an activity waits for. False, and nothing done, if another one goes on.
    static bool setAwaitedThreads(const char *activity, const QStringList &names);
};
