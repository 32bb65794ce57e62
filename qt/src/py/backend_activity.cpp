#include "src/py/backend_activity.h"

#include "shared/shared_object.h"
#include "src/py/interpreter_thread.h"

namespace {

struct Activity
{
    /// Null if there is none.
    const char *what = nullptr;
    QMetaEnum actions;
    int action = 0;
    QStringList threads;
};

InnerMutex mutex;
Activity current;

QString actionText(const QMetaEnum &actions, int action)
{
    const char *key = actions.valueToKey(action);
    return key != nullptr ? QLatin1String(actions.scope()) + QLatin1String("::") + QLatin1String(key)
                          : QString::number(action);
}

void replaceBy(const Activity &activity)
{
    const InnerLocker lock(&mutex);
    current = activity;
}

} // namespace

BackendActivity::BackendActivity(const char *what, const QMetaEnum &actions, int action)
{
    Q_ASSERT(onInterpreterThread());
    replaceBy({.what = what, .actions = actions, .action = action, .threads = {}});
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
    return current.actions.isValid()
               ? QStringLiteral("%1(%2)").arg(what, actionText(current.actions, current.action))
               : what;
}

void BackendActivity::become(const char *what)
{
    replaceBy({.what = what, .actions = {}, .action = 0, .threads = {}});
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
