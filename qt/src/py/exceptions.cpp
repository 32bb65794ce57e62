#include "src/py/exceptions.h"

#include "brovik/gui/gui.h"
#include "shared/log.h"
#include "src/py/converter.h"

#include <QDir>
#include <QFileInfo>

namespace py = pybind11;

namespace {

RaisedException raisedException(const py::error_already_set *error)
{
    if (error != nullptr) {
        return {error->type(), error->value(), error->trace()};
    }
    PyObject *type = nullptr;
    PyObject *value = nullptr;
    PyObject *trace = nullptr;
    PyErr_GetExcInfo(&type, &value, &trace);
    return {py::reinterpret_steal<py::object>(type), py::reinterpret_steal<py::object>(value),
            py::reinterpret_steal<py::object>(trace)};
}

bool isMissing(const py::object &object)
{
    return !object || object.is_none();
}

QVariantMap frameRecord(const py::handle &frame)
{
    const QDir current = QDir::current();
    const QString pathAbs = QDir(castPy2Qt<QString>(frame.attr("filename"))).absolutePath();
    const QString pathRel = current.relativeFilePath(pathAbs);
    const py::object lineNo = frame.attr("lineno"); // None for code without a source line
    return {
        {QStringLiteral("lineNo"), lineNo.is_none() ? 0 : lineNo.cast<int>()},
        {QStringLiteral("lineStr"), castPy2Qt<QString>(frame.attr("line"))},
        {QStringLiteral("func"), castPy2Qt<QString>(frame.attr("name"))},
        {QStringLiteral("pathAbs"), pathAbs},
        {QStringLiteral("pathRel"), pathRel},
        {QStringLiteral("file"), pathRel.section(QLatin1Char('/'), -1)},
    };
}

QVariantList traceRecord(const py::object &trace)
{
    QVariantList frames;
    for (const py::handle frame : py::module_::import("traceback").attr("extract_tb")(trace)) {
        frames.append(frameRecord(frame));
    }
    return frames;
}

/// All that Python itself would print: causes, groups, notes, and the place of a syntax error. Empty if that
/// cannot be had.
QString tracebackText(const RaisedException &raised)
{
    try {
        const py::object trace = raised.trace ? raised.trace : py::none();
        const py::object lines =
            py::module_::import("traceback").attr("format_exception")(raised.type, raised.value, trace);
        return castPy2Qt<QString>(py::str("").attr("join")(lines)).trimmed();
    } catch (const std::exception &error) {
        logWarning("Konnte den Traceback nicht ausgeben: %s", error.what());
        return {};
    }
}

} // namespace

void logTraceback(const RaisedException &raised, const QString &heading)
{
    QStringList lines{heading, tracebackText(raised)};
    lines.removeAll(QString());
    if (!lines.isEmpty()) {
        logCritical("%s", qUtf8Printable(lines.join(QLatin1Char('\n'))));
    }
}

QString exceptionText(const py::object &value)
{
    try {
        const py::object first = py::tuple(value.attr("args"))[0];
        return textOf(first);
    } catch (const std::exception &error) {
        logWarning("Konnte den Fehlertext nicht aus args[0] bekommen: %s", error.what());
        return castPy2Qt<QString>(py::str(value));
    }
}

QVariantMap exceptionRecord(const RaisedException &raised, const QString &text)
{
    QVariantMap record;
    const bool withTraceback = !isMissing(raised.trace);
    if (withTraceback) {
        record.insert(QStringLiteral("trace"), traceRecord(raised.trace));
    }
    record.insert(QStringLiteral("withTraceback"), withTraceback);
    record.insert(QStringLiteral("root"), QDir(QDir::currentPath()).absolutePath());
    record.insert(QStringLiteral("type"), castPy2Qt<QString>(py::str(raised.type.attr("__name__"))));
    record.insert(QStringLiteral("text"), text);
    return record;
}

void handle_py_exception(py::error_already_set *error, int line, const char *file)
{
    const RaisedException raised = raisedException(error);
    const bool traceNeeded = error == nullptr;
    if (isMissing(raised.type) || isMissing(raised.value) || (traceNeeded && isMissing(raised.trace))) {
        logWarning("handle_py_exception() wurde gerufen, obwohl keine Exception geworfen wurde");
        return;
    }

    logTraceback(raised);
    QString text = exceptionText(raised.value);
    if (file != nullptr) {
        text +=
            QStringLiteral("\nZeile %1 in %2").arg(line).arg(QFileInfo(QString::fromUtf8(file)).fileName());
    }
    Gui::instance().showException(exceptionRecord(raised, text));
}

namespace guard_detail {

void reportPythonError(py::error_already_set &error, const std::source_location &where) noexcept
{
    const int line = static_cast<int>(where.line());
    criticalStream() << "py::error_already_set:" << error.what() << where.file_name() << line;
    try {
        handle_py_exception(&error, line, where.file_name());
    } catch (const std::exception &nested) {
        criticalStream() << "std::exception während handle_py_exception():" << nested.what();
    } catch (...) {
        criticalStream() << "unknown exception während handle_py_exception: unerwarteteter Fehler";
    }
}

void reportCastError(const py::cast_error &error)
{
    criticalStream() << "py::cast_error:" << error.what();
}

void reportStandardError(const std::exception &error)
{
    criticalStream() << "Std-Error:" << error.what();
}

void reportUnknownError()
{
    criticalStream() << "sonst irgendein Fehler";
}

} // namespace guard_detail
