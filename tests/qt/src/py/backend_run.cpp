#include "backend_run.h"

#include "brovik/gui/gui.h"

#include <gtest/gtest.h>

#include <QQmlComponent>

#include <chrono>

namespace {

constexpr std::chrono::minutes patience(1);

} // namespace

Tellings::Tellings()
{
    connect(&Gui::instance(), &Gui::setPicoStdout, this, &Tellings::take, Qt::DirectConnection);
}

void Tellings::take(const QString &text)
{
    const std::lock_guard lock(m_mutex);
    m_texts.append(text);
    if (!m_threads.contains(QThread::currentThread())) {
        m_threads.append(QThread::currentThread());
    }
    m_changed.notify_all();
}

QStringList Tellings::texts() const
{
    const std::lock_guard lock(m_mutex);
    return m_texts;
}

QList<QThread *> Tellings::threads() const
{
    const std::lock_guard lock(m_mutex);
    return m_threads;
}

bool Tellings::waitFor(const QString &text)
{
    std::unique_lock lock(m_mutex);
    return m_changed.wait_for(lock, patience, [&] { return m_texts.contains(text); });
}

BackendRun::BackendRun(const char *backend, bool makeStubs, const QStringList &arguments)
{
    qputenv("TEST_BACKEND", backend);
    m_bridge = std::make_unique<Bridge>(QStringList{QStringLiteral(TEST_PYTHON)} + arguments, makeStubs,
                                        QStringLiteral(TEST_BACKEND_DIR));
}

void BackendRun::waitForStart()
{
    // The call waits in the interpreter thread's queue until the start has ended.
    Q_EMIT Gui::instance().toPy(Gui::FlashPico, QJSValue());
}

void actOnScreen(QQmlEngine &engine, const QString &module, const QString &statement)
{
    QQmlComponent component(&engine);
    const QString source =
        QStringLiteral("import QtQml\nimport %1\nQtObject { id: probe\n function act() { %2 } }");
    component.setData(source.arg(module, statement).toUtf8(), QUrl());
    const std::unique_ptr<QObject> screen(component.create());
    ASSERT_NE(screen, nullptr) << qPrintable(component.errorString());
    ASSERT_TRUE(QMetaObject::invokeMethod(screen.get(), "act"));
}
