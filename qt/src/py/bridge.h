#pragma once

#include "shared/backend_control.h"

#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QThread>

#include <functional>
#include <utility>
#include <vector>

class PyWorker;

/// Owns the interpreter thread. Lives on the GUI thread; running from its construction until stopPython().
class Bridge : public QObject, public BackendControl
{
    Q_OBJECT
    Q_PROPERTY(bool debug READ debug CONSTANT)
    Q_PROPERTY(bool serverConnected READ isServerConnected NOTIFY serverConnectionStateChanged)
    Q_PROPERTY(QString platform READ platform CONSTANT)

public:
    /// `pythonArgs` is Python's argument vector, the interpreter's path first. With `stubs` the backend is
    /// only imported. `backendDir` holds the package `controller`.
    Bridge(QStringList pythonArgs, bool stubs, const QString &backendDir);
    ~Bridge() override;

    /// False if the interpreter is already running.
    bool startPython();
    bool stopPython() override;

    /// Runs the function on the interpreter thread behind the calls that wait there, without the GIL. False,
    /// and nothing done, if that thread has been stopped; when it is stopped now, what waits is dropped.
    bool post(std::function<void()> function);

    /// Runs first in every stopPython(), in order of registration.
    void addPreStopHook(std::function<void()> hook) { m_preStopHooks.push_back(std::move(hook)); }
    /// Runs last in every stopPython(), in order of registration.
    void addPostStopHook(std::function<void()> hook) { m_postStopHooks.push_back(std::move(hook)); }

    static bool debug() { return false; }
    static QString platform() { return QStringLiteral("raspi"); }
    const QStringList &pythonArguments() const { return m_pythonArguments; }
    bool stubMode() const { return m_makeStubs; }

    Q_INVOKABLE bool isServerConnected() const { return false; }
    Q_INVOKABLE QString createUuid() const;

Q_SIGNALS:
    void serverConnectionStateChanged(bool state);

private:
    const QStringList m_pythonArguments;
    const bool m_makeStubs;
    const QByteArray m_backendDir;
    std::vector<std::function<void()>> m_preStopHooks;
    std::vector<std::function<void()>> m_postStopHooks;
    QThread m_thread;
    QPointer<PyWorker> m_worker;
};
