#pragma once

#include "signal_log.h"

#include <QQmlEngine>
#include <QVariant>

#include <functional>
#include <memory>
#include <string>

/// A binding in QML, as a screen has it. Lives on the GUI thread, with an engine of its own.
class QmlBinding
{
public:
    /// `modules` are imported, for example {"brovik.auto"}. What is wrong with the expression fails the test.
    QmlBinding(const QStringList &modules, const QString &expression);

    QVariant value() const;
    /// Handles events until the binding has this value. False if it does not get it.
    bool becomes(const QVariant &expected) const;
    /// Each change of the binding's value, with its thread.
    const SignalLog &changes() const { return *m_changes; }

private:
    QQmlEngine m_engine;
    std::unique_ptr<QObject> m_object;
    std::unique_ptr<SignalLog> m_changes;
};

/// Why the engine refuses a QML program; empty if it does not.
std::string refusalOf(const char *program);

/// Runs `task` to its end on a thread of its own, as a thread of the backend does.
void onForeignThread(const std::function<void()> &task);
