#pragma once

#include "src/py/bridge.h"

#include <QQmlEngine>

#include <condition_variable>
#include <memory>
#include <mutex>

/// Collects what a test's backend tells, from any thread, with the thread that told it.
class Tellings : public QObject
{
public:
    Tellings();

    QStringList texts() const;
    /// The threads that told, each once.
    QList<QThread *> threads() const;
    /// Waits until a text has been told; false if that never happens.
    bool waitFor(const QString &text);

private:
    void take(const QString &text);

    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    QStringList m_texts;
    QList<QThread *> m_threads;
};

/// One interpreter life on one of the backends of the folder `backend`. One per process.
class BackendRun
{
public:
    explicit BackendRun(const char *backend, bool makeStubs = false, const QStringList &arguments = {});

    Bridge &bridge() { return *m_bridge; }
    /// Ends the life.
    void end() { m_bridge.reset(); }
    /// Waits until the interpreter has started, well or not.
    void waitForStart();

    Tellings tellings;

private:
    std::unique_ptr<Bridge> m_bridge;
};

/// Runs a statement of a screen that imports a module, for example "brovik.gui" and "Gui.toPy(Gui.Ready,
/// null)". The statement may name an object of the test `probe`.
void actOnScreen(QQmlEngine &engine, const QString &module, const QString &statement);
