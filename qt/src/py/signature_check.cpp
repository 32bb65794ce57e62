#include "src/py/signature_check.h"

#include "brovik/gui/gui.h"
#include "shared/log.h"
#include "src/py/converter.h"
#include "src/py/exceptions.h"
#include "src/py/interpreter_thread.h"

#include <algorithm>
#include <optional>

namespace py = pybind11;

namespace {

const char *expectedParameters(int arguments)
{
    return arguments == 1 ? "(enum)" : "(enum, value)";
}

bool accepts(const py::object &signature, int arguments)
{
    const py::object call = py::make_tuple(py::none()) * py::int_(arguments);
    try {
        signature.attr("bind")(*call);
        return true;
    } catch (const py::error_already_set &error) {
        if (!error.matches(PyExc_TypeError)) {
            throw;
        }
        return false;
    }
}

py::list parametersOf(const py::object &signature)
{
    return py::list(signature.attr("parameters").attr("values")());
}

/// Whether there is a parameter `*args`.
bool takesAnyNumber(const py::object &signature)
{
    const py::list parameters = parametersOf(signature);
    return std::any_of(parameters.begin(), parameters.end(), [](const py::handle &parameter) {
        return parameter.attr("kind").equal(parameter.attr("VAR_POSITIONAL"));
    });
}

/// As they stand in the source, without types and values: those may be as long as they like.
QString parametersText(const py::object &signature)
{
    py::list bare;
    for (const py::handle parameter : parametersOf(signature)) {
        const py::object none = parameter.attr("empty");
        const py::object standard = parameter.attr("default");
        bare.append(parameter.attr("replace")(py::arg("annotation") = none,
                                              py::arg("default") =
                                                  standard.is(none) ? none : py::object(py::ellipsis())));
    }
    const py::object shown = signature.attr("replace")(
        py::arg("parameters") = bare, py::arg("return_annotation") = signature.attr("empty"));
    return castPy2Qt<QString>(py::str(shown)).replace(QLatin1String("=Ellipsis"), QStringLiteral("=…"));
}

/// The parameters of a function that refuses the call.
std::optional<QString> refusedParameters(const py::object &function, int arguments)
{
    const py::object read = py::module_::import("inspect").attr("signature");
    const py::object own = read(function, py::arg("follow_wrapped") = false);
    if (!accepts(own, arguments)) {
        return parametersText(own);
    }
    // A decorator that takes everything hands it on to the function that it wraps. One that names its
    // parameters may call that function in its own way.
    if (!takesAnyNumber(own)) {
        return std::nullopt;
    }
    const py::object wrapped = read(function);
    return accepts(wrapped, arguments) ? std::nullopt : std::optional(parametersText(wrapped));
}

} // namespace

QStringList refusalOf(const py::object &function, const QString &name, int arguments)
{
    Q_ASSERT(onInterpreterThread());
    try {
        if (const auto found = refusedParameters(function, arguments)) {
            return {QStringLiteral("%1() hat falsche Parameter: erwartet %2, gefunden %3")
                        .arg(name, QLatin1String(expectedParameters(arguments)), *found)};
        }
    } catch (const std::exception &error) {
        const QString reason = QString::fromUtf8(error.what()).section(QLatin1Char('\n'), 0, 0);
        logDebug("Die Parameter von %s() sind nicht zu lesen: %s", qUtf8Printable(name),
                 qUtf8Printable(reason));
    }
    return {};
}

void reportRefusals(const QStringList &refusals)
{
    if (refusals.isEmpty()) {
        return;
    }
    for (const QString &refusal : refusals) {
        logCritical("Python-Funktion %s", qUtf8Printable(refusal));
    }
    const QString text =
        QStringLiteral("Diese Aufrufe des Backends werden scheitern:\n") + refusals.join(QLatin1Char('\n'));
    const RaisedException refused{py::reinterpret_borrow<py::object>(PyExc_TypeError), py::none(),
                                  py::none()};
    Gui::instance().showException(exceptionRecord(refused, text));
}
