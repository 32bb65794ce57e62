#pragma once

#include "signal_receiver.h"

#include <QMutex>
#include <QVariantList>

#include <string>
#include <vector>

/// Records every emission of some signals of an object, in order, on the thread that emits.
class SignalLog : public SignalReceiver
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

private:
    void received(std::size_t index, void **arguments) override;

    mutable QMutex m_mutex;
    std::vector<Emission> m_emissions;
};
