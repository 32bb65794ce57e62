#pragma once

#include <QMetaMethod>
#include <QMutex>
#include <QObject>
#include <QVariantList>

#include <string>
#include <vector>

/// Records every emission of some signals of an object, in order, on the thread that emits.
class SignalLog : public QObject
{
public:
    struct Emission
    {
        std::string name;
        bool onGuiThread;
        QVariantList values;
    };

    /// Throws std::out_of_range for a name that is no signal of the object.
    SignalLog(QObject &object, const std::vector<std::string> &names);
    /// All signals that the object's class itself declares.
    explicit SignalLog(QObject &object);

    std::vector<Emission> emissions() const;
    std::vector<std::string> names() const;
    void clear();

    int qt_metacall(QMetaObject::Call call, int id, void **arguments) override;

private:
    void watch(QObject &object, const QMetaMethod &signal);

    std::vector<QMetaMethod> m_signals;
    mutable QMutex m_mutex;
    std::vector<Emission> m_emissions;
};
