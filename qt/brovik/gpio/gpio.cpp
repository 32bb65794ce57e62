#include "brovik/gpio/gpio.h"

#include "shared/log.h"

#include <utility>

using brovik::detail::GPIOWorker;

GPIO::~GPIO()
{
    stopThread();
}

void GPIO::openChip(const std::string &pathToDev)
{
    m_chip.open(pathToDev, gpiod::chip::OPEN_LOOKUP);
}

void GPIO::release(uint line)
{
    m_chip.get_line(line).release();
}

void GPIO::addEventDetect(uint line, brovik::Edge edge, gpio_callback_func callback)
{
    const InnerLocker lock(&m_workerMutex);
    if (m_stopping) {
        return;
    }
    const bool running = !m_worker.isNull();
    if (!running) {
        m_worker = new GPIOWorker(this); // deleted on its thread, when that ends
    }
    m_worker->add(line, edge, std::move(callback));
    if (!running) {
        startThread();
    }
}

void GPIO::startThread()
{
    m_worker->moveToThread(&m_thread);
    connect(&m_thread, &QThread::started, m_worker, &GPIOWorker::startLoop);
    connect(&m_thread, &QThread::finished, m_worker, &QObject::deleteLater);
    m_thread.start(QThread::TimeCriticalPriority);
}

void GPIO::removeEventDetect(uint line)
{
    const InnerLocker lock(&m_workerMutex);
    if (!m_stopping && !m_worker.isNull()) {
        m_worker->remove(line);
    }
}

bool GPIO::beginStop()
{
    const InnerLocker lock(&m_workerMutex);
    return !m_worker.isNull() && !std::exchange(m_stopping, true);
}

void GPIO::stopThread()
{
    if (!beginStop()) {
        return;
    }
    logDebug("Stoppe GPIO-Thread ...");
    m_thread.requestInterruption();
    m_thread.quit();
    m_thread.wait();
    const InnerLocker lock(&m_workerMutex);
    m_worker.clear();
    m_stopping = false;
}
