#include "src/py/bridge.h"

#include "shared/gui_thread.h"
#include "shared/log.h"
#include "shared/notification_brake.h"
#include "src/py/interpr_worker.h"

#include <QUuid>

Bridge::Bridge(QStringList pythonArgs, bool stubs, const QString &backendDir)
    : m_pythonArguments(std::move(pythonArgs))
    , m_makeStubs(stubs)
    , m_backendDir(backendDir.toUtf8())
{
    Q_ASSERT(onGuiThread());
    startPython();
}

Bridge::~Bridge()
{
    if (!stopPython()) {
        logWarning("Interpreter wurde im Bridge-Destruktor nicht erfolgreich gestoppt");
    }
}

bool Bridge::startPython()
{
    Q_ASSERT(onGuiThread());
    if (!m_worker.isNull()) {
        return false;
    }
    m_worker = new PyWorker(this); // deleted on its thread, when that ends
    infoStream() << "BROVIK_PY_DIR:" << m_backendDir.constData();
    m_worker->addSysPathFront(m_backendDir.constData());
    m_worker->setModuleName(backendModule);
    m_worker->moveToThread(&m_thread);
    connect(&m_thread, &QThread::started, m_worker, &PyWorker::initInterpreter);
    connect(&m_thread, &QThread::finished, m_worker, &QObject::deleteLater);
    m_thread.start();
    return true;
}

bool Bridge::stopPython()
{
    Q_ASSERT(onGuiThread());
    const GuiThreadWaits waits;
    for (const auto &hook : m_preStopHooks) {
        hook();
    }
    const bool running = !m_worker.isNull();
    if (running) {
        m_thread.requestInterruption();
        m_thread.quit();
        m_thread.wait();
        m_worker.clear();
    }
    for (const auto &hook : m_postStopHooks) {
        hook();
    }
    return running;
}

bool Bridge::post(std::function<void()> function)
{
    Q_ASSERT(onGuiThread());
    return !m_worker.isNull() &&
           QMetaObject::invokeMethod(m_worker.data(), std::move(function), Qt::QueuedConnection);
}

QString Bridge::createUuid() const
{
    return QUuid::createUuid().toString();
}
