#pragma once

#include <QObject>

/// The QML singleton `Objects` of kubelor.test: counts the QObjects of the process from its making on, which shows
/// leaks that memory hides. Lives on the GUI thread, counts those of all threads.
class Objects : public QObject
{
    Q_OBJECT

public:
    explicit Objects(QObject *parent = nullptr);

    /// How many there are, more or less than at the beginning.
    Q_INVOKABLE int count() const;
};
