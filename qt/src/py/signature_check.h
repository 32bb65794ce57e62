#pragma once

#include <pybind11/pybind11.h>

#include <QString>
#include <QStringList>

// Whether the functions of the backend take what they are called with. Interpreter thread, with the GIL.

/// A sentence about a function that would refuse a call with so many positional arguments; none if it takes
/// them, or if its parameters cannot be read.
QStringList refusalOf(const pybind11::object &function, const QString &name, int arguments);

/// Logs each sentence, and shows all of them to the operator in one dialog. Does nothing if there is none.
void reportRefusals(const QStringList &refusals);
