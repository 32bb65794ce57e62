#pragma once

#include "brovik/gpio/gpio_worker.h"
#include "shared/shared_object.h"
#include "shared/shared_property.h"

#include <QPointer>
#include <QThread>
#include <QtQml/qqmlregistration.h>

#include <gpiod.hpp>

#include <string>

// clang-format off
#define GPIO_PROPERTIES(P) \
    P(std::string, consumerPrefix, setConsumerPrefix, "consumer_prefix", "brovik_", "Start of the label of lines that are requested from now on; the offset follows.")
// clang-format on

/// Watches edges on input lines of one chip, on a thread of its own that starts with the first line.
///
/// Lives on the GUI thread. Every function runs on any thread, but the chip has no lock: it is opened before
/// the first line is armed. An inner mutex guards the life of the worker; it comes before the worker's mutex.
class GPIO : public SharedObject, public SharedSingleton<GPIO>
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

    GPIO_PROPERTIES(SHARED_PROPERTY)

public:
    ~GPIO() override;

    /// Throws what the library throws if the chip cannot be opened; an open chip then stays open.
    void openChip(const std::string &pathToDev);
    /// Gives one line up. The thread that waits for it is not told. Throws what the library throws.
    void release(uint line);
    const gpiod::chip &chip() const { return m_chip; }

    /// Watches a line, pulled up and active low. A second callback for the line replaces the first. The
    /// callback runs on the GPIO thread, with no lock held; what goes wrong with the line is logged there.
    void addEventDetect(uint line, brovik::Edge edge, gpio_callback_func callback);
    /// Drops the callback at once and the line soon after. Nothing if no thread runs.
    void removeEventDetect(uint line);
    /// Ends the thread and waits for it. The lines stay requested.
    void stopThread();

Q_SIGNALS:
    // Part of the declared interface; nothing raises them.
    void _addEventDetect(uint line, brovik::Edge edge, gpio_callback_func callback);
    void _removeEventDetect(uint line);

private:
    friend class SharedSingleton<GPIO>;
    GPIO() = default;

    void startThread();
    bool beginStop();

    gpiod::chip m_chip;
    QThread m_thread;
    QPointer<brovik::detail::GPIOWorker> m_worker;
    InnerMutex m_workerMutex;
    /// The thread has been asked to stop: the worker serves nothing any more and may be gone at any moment.
    bool m_stopping = false;
};
