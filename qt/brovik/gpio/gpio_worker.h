#pragma once

#include "shared/shared_object.h"

#include <QObject>

#include <gpiod.hpp>

#include <functional>
#include <unordered_map>
#include <vector>

class GPIO;

/// Called for an event with the line's offset, and true for a rising edge.
using gpio_callback_func = std::function<void(uint, bool)>;

namespace brovik {

enum class Edge : int { RISING, FALLING, BOTH };

namespace detail {

/// A change of the set of lines.
struct detectOp
{
    bool add;
    uint line;
    /// Of no meaning for a removal.
    Edge edge;
};

/// Waits for edges and calls back. Lives on the GPIO thread; add() and remove() run on any thread.
///
/// Its mutex guards the callbacks and the changes that wait to be applied. It is held neither during a wait
/// nor during a callback. It comes before the mutex of GPIO, never after it.
class GPIOWorker : public QObject
{
    Q_OBJECT

public:
    explicit GPIOWorker(const GPIO *gpio);

    /// The loop requests the line within one wait; a callback that the line already has is replaced at once.
    void add(uint line, Edge edge, gpio_callback_func callback);
    /// The callback is gone at once; the loop gives the line up within one wait.
    void remove(uint line);

public Q_SLOTS:
    /// Runs until the thread is asked to stop, or until there is no line to wait for.
    void startLoop();

private:
    void turn();
    void handleEvent(const gpiod::line &line);
    gpio_callback_func callbackOf(uint line);
    void applyPending();
    void _makeBulk();
    gpiod::line_bulk changedLines();
    void requestLine(const detectOp &op, gpiod::line_bulk &lines) const;

    const GPIO *const owner;
    std::unordered_map<uint, gpio_callback_func> callbacks;
    InnerMutex mutex;
    /// In order of arrival.
    std::vector<detectOp> pendingOps;
    /// The lines that are waited for. GPIO thread only.
    gpiod::line_bulk bulk;
};

} // namespace detail
} // namespace brovik
