#include "brovik/gpio/gpio_worker.h"

#include "brovik/gpio/gpio.h"
#include "shared/log.h"

#include <QThread>

#include <chrono>
#include <cstdio>
#include <string>
#include <unordered_set>
#include <utility>

namespace brovik::detail {

namespace {

/// Bounds how late a change of the lines or a request to stop is noticed.
constexpr std::chrono::nanoseconds waitPeriod = std::chrono::milliseconds(500);

struct EdgeRequest
{
    Edge edge;
    int type;
    const char *text;
};

constexpr EdgeRequest edgeRequests[] = {
    {Edge::RISING, gpiod::line_request::EVENT_RISING_EDGE, "RISING"},
    {Edge::FALLING, gpiod::line_request::EVENT_FALLING_EDGE, "FALLING"},
    {Edge::BOTH, gpiod::line_request::EVENT_BOTH_EDGES, "BOTH"},
};

/// The library's request type, announced on the standard output. 0, which the library refuses, for an unknown
/// edge.
int announcedRequestType(Edge edge)
{
    for (const EdgeRequest &request : edgeRequests) {
        if (request.edge == edge) {
            std::puts(request.text);
            return request.type;
        }
    }
    return 0;
}

void runCallback(const gpio_callback_func &callback, const gpiod::line &line, uint offset, bool rising)
{
    try {
        callback(offset, rising);
    } catch (const std::exception &error) {
        logCritical("Fehler bei der Ausführung des Callbacks für GPIO %lu (%s): %s",
                    static_cast<unsigned long>(offset), line.name().c_str(), error.what());
    }
}

} // namespace

GPIOWorker::GPIOWorker(const GPIO *gpio)
    : owner(gpio)
{}

void GPIOWorker::add(uint line, Edge edge, gpio_callback_func callback)
{
    const InnerLocker lock(&mutex);
    pendingOps.push_back({.add = true, .line = line, .edge = edge});
    callbacks[line] = std::move(callback);
}

void GPIOWorker::remove(uint line)
{
    const InnerLocker lock(&mutex);
    pendingOps.push_back({.add = false, .line = line, .edge = Edge::BOTH});
    callbacks.erase(line);
}

void GPIOWorker::startLoop()
{
    applyPending();
    if (!bulk) {
        logCritical(
            "Konnte den GPIO-Thread nicht erfolgreich starten, da keine gültigen Lines angegeben wurden");
        return;
    }
    while (bulk && !QThread::currentThread()->isInterruptionRequested()) {
        turn();
        applyPending();
    }
}

void GPIOWorker::turn()
{
    try {
        for (const gpiod::line &line : bulk.event_wait(waitPeriod)) {
            handleEvent(line);
        }
    } catch (const std::exception &error) {
        criticalStream() << "Fehler im GPIO-Thread:" << error.what();
    }
}

void GPIOWorker::handleEvent(const gpiod::line &line)
{
    const uint offset = line.offset();
    // One event per turn: what else is queued makes the next wait return at once.
    const bool rising = line.event_read().event_type == gpiod::line_event::RISING_EDGE;
    if (const gpio_callback_func callback = callbackOf(offset)) {
        runCallback(callback, line, offset, rising);
    }
}

gpio_callback_func GPIOWorker::callbackOf(uint line)
{
    const InnerLocker lock(&mutex);
    const auto found = callbacks.find(line);
    return found != callbacks.end() ? found->second : gpio_callback_func();
}

void GPIOWorker::applyPending()
{
    const InnerLocker lock(&mutex);
    if (!pendingOps.empty()) {
        _makeBulk();
    }
}

/// Applies what is pending. What fails as a whole leaves the old lines; in every case nothing stays pending.
void GPIOWorker::_makeBulk()
{
    try {
        const gpiod::line_bulk lines = changedLines();
        // Gives up the lines that stay as well: who needs several arms them before the loop's first turn.
        if (bulk) {
            bulk.release();
        }
        bulk = lines;
    } catch (const std::exception &error) {
        criticalStream() << "Fehler im GPIO-Thread [_makeBulk()]:" << error.what();
    }
    pendingOps.clear();
}

gpiod::line_bulk GPIOWorker::changedLines()
{
    gpiod::line_bulk lines;
    std::unordered_set<uint> removed;
    for (const detectOp &op : pendingOps) {
        if (op.add) {
            requestLine(op, lines);
        } else {
            removed.insert(op.line);
        }
    }
    for (const gpiod::line &line : bulk) {
        if (!removed.contains(line.offset())) {
            lines.append(line);
        }
    }
    return lines;
}

void GPIOWorker::requestLine(const detectOp &op, gpiod::line_bulk &lines) const
{
    const gpiod::line line = owner->chip().get_line(op.line);
    const gpiod::line_request request{
        .consumer = owner->consumerPrefix() + std::to_string(op.line),
        .request_type = announcedRequestType(op.edge),
        .flags = gpiod::line_request::FLAG_BIAS_PULL_UP | gpiod::line_request::FLAG_ACTIVE_LOW,
    };
    try {
        line.request(request, 0);
        lines.append(line);
    } catch (const std::exception &error) {
        criticalStream() << "GPIO Request für Line" << op.line << "fehlgeschlagen: " << error.what();
    }
}

} // namespace brovik::detail
