#include "brovik/gui/in_turn.h"

#include "shared/announce.h"
#include "shared/gui_thread.h"
#include "shared/log.h"

#include <utility>

InTurn::InTurn(QObject *parent)
    : QObject(parent)
{
    m_next.setSingleShot(true);
    m_next.setInterval(0);
    connect(&m_next, &QTimer::timeout, this, &InTurn::runWaiting);
}

void InTurn::run(const QJSValue &function)
{
    Q_ASSERT(onGuiThread());
    if (!m_next.isActive()) {
        begin();
    }
    if (m_waiting.empty() && !isOver()) {
        call(function);
    } else {
        m_waiting.push_back(function);
        reportBacklog();
    }
}

int InTurn::waiting() const
{
    Q_ASSERT(onGuiThread());
    return static_cast<int>(m_waiting.size());
}

void InTurn::begin()
{
    m_turn.start();
    m_next.start();
}

bool InTurn::isOver() const
{
    return m_turn.hasExpired(longestTurn.count());
}

void InTurn::runWaiting()
{
    if (m_waiting.empty()) {
        return;
    }
    begin();
    // At least one, however long the loop took to come here.
    do {
        const QJSValue function = std::exchange(m_waiting.front(), {});
        m_waiting.pop_front();
        call(function);
    } while (!m_waiting.empty() && !isOver());
    reportBacklog();
}

void InTurn::reportBacklog()
{
    m_backlog.set(static_cast<qint64>(m_waiting.size()) * static_cast<int>(Cost::Dialog));
}

void InTurn::call(const QJSValue &function)
{
    const QJSValue result = function.call();
    if (result.isError()) {
        warningStream() << qUtf8Printable(QStringLiteral("%1:%2: %3")
                                              .arg(result.property(QStringLiteral("fileName")).toString(),
                                                   result.property(QStringLiteral("lineNumber")).toString(),
                                                   result.toString()));
    }
}
