#pragma once

#include <pybind11/pybind11.h>

#include <QString>
#include <QVariantMap>

#include <source_location>
#include <utility>

// How Python exceptions reach the operator. Everything here runs with the GIL held, on the caller's thread.

/// Reports a Python exception through Gui. Without `error` it takes the exception that the calling Python
/// code is handling; `file` and `line` are appended to the text if `file` is not null.
void handle_py_exception(pybind11::error_already_set *error, int line, const char *file);

/// What Python gives of an exception; the traceback may be None or missing.
struct RaisedException
{
    pybind11::object type;
    pybind11::object value;
    pybind11::object trace;
};

/// Logs all that Python itself would print, below the heading if there is one.
void logTraceback(const RaisedException &raised, const QString &heading = {});

/// The exception's first argument, else the exception itself, as text. Throws what its `__str__` raises.
QString exceptionText(const pybind11::object &value);

/// What Gui shows of an exception, with this text. Throws what the exception's class raises.
QVariantMap exceptionRecord(const RaisedException &raised, const QString &text);

namespace guard_detail {
void reportPythonError(pybind11::error_already_set &error, const std::source_location &where) noexcept;
void reportCastError(const pybind11::cast_error &error);
void reportStandardError(const std::exception &error);
void reportUnknownError();
} // namespace guard_detail

/// Runs a risky Python operation outside a bound call. Reports what it throws, but for a type error, which
/// goes on to the caller. Returns whether the operation ran to its end.
template <typename Operation>
bool guarded(Operation &&operation, const std::source_location &where = std::source_location::current())
{
    try {
        std::forward<Operation>(operation)();
        return true;
    } catch (pybind11::error_already_set &error) {
        guard_detail::reportPythonError(error, where);
    } catch (const pybind11::type_error &) {
        throw;
    } catch (const pybind11::cast_error &error) {
        guard_detail::reportCastError(error);
    } catch (const std::exception &error) {
        guard_detail::reportStandardError(error);
    } catch (...) {
        guard_detail::reportUnknownError();
    }
    return false;
}
