#pragma once

#include "fuzzing.h"

#include <pybind11/pybind11.h>

#include <QByteArray>
#include <QString>
#include <QVariant>

#include <vector>

/// A Python value that is still to be made: what a backend could hand over, the hostile included.
struct PlannedValue
{
    enum class Kind {
        None,
        Bool,
        Int,
        HugeInt, ///< Beyond 64 bits.
        Float,
        Text,
        SubclassedText,
        Bytes,
        ByteArray,
        List,
        Tuple,
        Set, ///< Of one element at most: more have an order that nobody knows.
        Dict,
        Sized,          ///< An iterable of a class of its own, with a length that may not be true.
        SizedBadly,     ///< One whose length raises.
        BreaksOff,      ///< One that raises after its last element.
        Generator,      ///< One without a length.
        HoldsItself,    ///< A list.
        Nested,         ///< Lists in each other, as deep as `number`.
        Strange,        ///< An object that has no counterpart.
        StrangeAndMute, ///< One that has no repr either.
        Last = StrangeAndMute,
    };

    Kind kind = Kind::None;
    qint64 number = 0;
    double real = 0.0;
    QString text;
    QByteArray bytes;
    std::vector<PlannedValue> elements;
    std::vector<PlannedValue> keys; ///< Of a dict, as many as elements.
};

PlannedValue consumeValue(FuzzedDataProvider &data, int depth = 0);

/// Makes values and keeps all objects of which it knows who refers to them.
class PythonValues
{
public:
    /// Needs the interpreter.
    PythonValues();

    pybind11::object make(const PlannedValue &planned);

    /// References to each object that was made and is nobody else's, in the order of making.
    std::vector<Py_ssize_t> references() const;
    /// Gives all of them up.
    void forget();
    /// The objects of our own classes that exist.
    int living() const;

private:
    pybind11::object makeOther(const PlannedValue &planned);
    pybind11::list listOf(const std::vector<PlannedValue> &elements);

    pybind11::dict m_classes;
    std::vector<pybind11::object> m_made;
};

/// The str that Python makes of UTF-16; halves of a surrogate pair stay what they are.
pybind11::object pythonText(const QString &text);

/// The way to a variant, as the table of the conversion has it, written down apart from the conversion.
namespace expected {

/// The whole conversion is a TypeError.
struct Refused
{};

QVariant variant(const PlannedValue &planned, const PlannedValue &parent);

} // namespace expected
