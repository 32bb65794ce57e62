#include "src/py/backend_activity.h"

#include "shared/shared_object.h"
#include "src/py/interpreter_thread.h"

namespace {

struct Activity
{
    /// Null if there is none.
    const char *what = nullptr;
    QString action;
    QStringList threads;
};

InnerMutex mutex;
Activity current;

void replaceBy(const Activity &activity)
{
    const InnerLocker lock(&mutex);
    current = activity;
}

} // namespace

BackendActivity::BackendActivity(const char *what, const QString &action)
{
    Q_ASSERT(onInterpreterThread());
    replaceBy({.what = what, .action = action, .threads = {}});
}

BackendActivity::~BackendActivity()
{
    replaceBy({});
}

QString BackendActivity::text()
{
    const InnerLocker lock(&mutex);
    if (!current.threads.isEmpty()) {
        return QLatin1String("die Python-Threads ") + current.threads.join(QLatin1String(", "));
    }
    const QString what = QString::fromUtf8(current.what);
    return current.action.isEmpty() ? what : QStringLiteral("%1(%2)").arg(what, current.action);
}

void BackendActivity::become(const char *what)
{
    replaceBy({.what = what, .action = {}, .threads = {}});
}

bool BackendActivity::setAwaitedThreads(const char *activity, const QStringList &names)
{
    const InnerLocker lock(&mutex);
    if (current.what != activity) {
        return false;
    }
    current.threads = names;
    return true;
}
