#pragma once

#include <QMetaEnum>
#include <QString>
#include <QStringList>

/// What the interpreter thread is busy with, for whoever waits for it.
///
/// An object names the activity as long as it lives; it is made on the interpreter thread. The static
/// functions run on any thread, under a mutex of their own.
class BackendActivity
{
public:
    /// The text is kept by pointer.
    explicit BackendActivity(const char *what)
        : BackendActivity(what, QMetaEnum(), 0)
    {}

    /// A call of a function of the backend with an enum.
    template <typename Enum>
    BackendActivity(const char *function, Enum action)
        : BackendActivity(function, QMetaEnum::fromType<Enum>(), static_cast<int>(action))
    {}

    ~BackendActivity();

    Q_DISABLE_COPY_MOVE(BackendActivity)

    /// For the log, for example "gui_value_from_cpp(Gui::DialogData)" or the names of threads. Empty if the
    /// interpreter thread waits for work.
    static QString text();
    /// Gives the activity that goes on another name.
    static void become(const char *what);
    /// Names the threads that an activity waits for. False, and nothing done, if another one goes on.
    static bool setAwaitedThreads(const char *activity, const QStringList &names);

private:
    BackendActivity(const char *what, const QMetaEnum &actions, int action);
};
