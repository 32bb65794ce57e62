#pragma once

#include <QHash>
#include <QJSValue>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

/// What is open above the page: the ids, the current one on top, and the dialog or popup of each with its
/// description. An id is a whole number; 0 is none, one below 0 has been given here. Lives and is used on the
/// GUI thread alone.
class DialogStack : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    /// How many dialogs are drawn; those below are told that they are covered by so many, and no more.
    Q_PROPERTY(int drawn MEMBER m_drawn)

public:
    using QObject::QObject;

    int count() const { return static_cast<int>(m_ids.size()); }

    /// Puts an id on top, one that is free for 0. Returns it, or 0 if it is in use already.
    Q_INVOKABLE double enter(double id);
    /// Likewise for a popup: any id that is not above 0 gets a free one, and nobody asks whether it is in
    /// use.
    Q_INVOKABLE double enterPopup(double id);
    /// Tells what stands behind an id that has been entered, which is apart from entering it: who is told of
    /// it in between does not find the dialog yet.
    Q_INVOKABLE void place(double id, QObject *dialog, const QJSValue &description);
    /// Takes an id out, wherever it stands.
    Q_INVOKABLE void leave(double id);

    Q_INVOKABLE bool has(double id) const { return m_dialogs.contains(id); }
    /// What has been placed; null if nothing has, or if it is gone.
    Q_INVOKABLE QObject *dialog(double id) const { return m_dialogs.value(id).dialog; }
    Q_INVOKABLE QJSValue description(double id) const { return m_dialogs.value(id).description; }
    /// The uppermost id; 0 of an empty stack.
    Q_INVOKABLE double top() const { return m_ids.isEmpty() ? 0 : m_ids.last(); }
    Q_INVOKABLE QObject *current() const { return dialog(top()); }

public Q_SLOTS:
    /// Sets the property `above` of each dialog that has one to the number of those that show above it: they
    /// are visible and not `closing`.
    void countAbove();

Q_SIGNALS:
    void countChanged();

private:
    struct Placed
    {
        QPointer<QObject> dialog;
        QJSValue description = QJSValue::NullValue;
    };

    double nextFree();
    void push(double id);

    QList<double> m_ids;
    QHash<double, Placed> m_dialogs;
    double m_nextFree = -1;
    int m_drawn = 1;
};
