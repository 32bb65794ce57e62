#include "src/py/uncaught_errors.h"

#include "brovik/gui/gui.h"
#include "shared/log.h"
#include "shared/shared_object.h"
#include "src/py/converter.h"
#include "src/py/exceptions.h"
#include "src/py/interpreter_thread.h"
#include "src/py/types.h"
#include "src/py/warning_budget.h"

#include <pybind11/embed.h>

#include <optional>

namespace py = pybind11;

namespace {

/// Calls tell(message, exception, task) for what the default handler of asyncio's event loops is given, from
/// when the backend imports them. The host itself does without asyncio, whose import takes long.
///
/// That handler is the one place which all loops without a handler of their own go through, with the
/// exception at hand. A handler of the logger "asyncio" would stop Python's default output, and goes when the
/// backend configures its log.
constexpr char loopWatcher[] = R"(
    import sys

    LOOPS = "asyncio.base_events"

    def watch(loops, tell):
        loop_class = loops.BaseEventLoop
        default = loop_class.default_exception_handler

        def default_exception_handler(self, context):
            default(self, context)
            # The backend's own handler may pass on what it has dealt with; but not its own failure.
            failed = isinstance(context.get("context"), dict)
            if failed or self.get_exception_handler() is None:
                future = context.get("task") or context.get("future")
                name = getattr(future, "get_name", str)()
                tell(context.get("message"), context.get("exception"), name)

        default_exception_handler.__doc__ = default.__doc__
        loop_class.default_exception_handler = default_exception_handler

    class Loader:
        """Loads the module as its own loader does, and watches it."""

        def __init__(self, loader, tell):
            self._loader = loader
            self._tell = tell

        def create_module(self, spec):
            return self._loader.create_module(spec)

        def exec_module(self, module):
            module.__loader__ = module.__spec__.loader = self._loader
            self._loader.exec_module(module)
            watch(module, self._tell)

    class Finder:
        """Stands before the others, finds what they find, and gives it that loader."""

        def __init__(self, tell):
            self._tell = tell

        def find_spec(self, name, path=None, target=None):
            if name != LOOPS:
                return None
            for finder in sys.meta_path:
                if finder is not self:
                    spec = finder.find_spec(name, path, target)
                    if spec is not None:
                        if spec.loader is not None:
                            spec.loader = Loader(spec.loader, self._tell)
                        return spec
            return None

    def watch_loops(tell):
        if LOOPS in sys.modules:
            watch(sys.modules[LOOPS], tell)
        sys.meta_path.insert(0, Finder(tell))
)";

/// Whether one more dialog may open, and whether it is the last one for the present.
struct Permission
{
    bool granted;
    bool last;
};

/// Any thread.
Permission askForDialog()
{
    static InnerMutex mutex;
    static WarningBudget budget(WarningBudget::Clock::now());
    const InnerLocker lock(&mutex);
    const bool granted = budget.take(WarningBudget::Clock::now());
    return {.granted = granted, .last = budget.left() == 0};
}

/// The text, also of an exception that has none to give.
QString safeText(const py::object &value)
{
    try {
        return exceptionText(value);
    } catch (const std::exception &error) {
        return QStringLiteral("Der Text der Exception ist nicht zu lesen: %1")
            .arg(QString::fromUtf8(error.what()).section(QLatin1Char('\n'), 0, 0));
    }
}

void report(const RaisedException &raised, const QString &where)
{
    logTraceback(raised, where);
    const Permission dialog = askForDialog();
    if (!dialog.granted) {
        return;
    }
    QString text = safeText(raised.value) + QLatin1Char('\n') + where;
    if (dialog.last) {
        text += QStringLiteral("\nWeitere Fehler dieser Art stehen vorerst nur im Log.");
    }
    Gui::instance().showException(exceptionRecord(raised, text));
}

QString nameOf(const py::object &thread)
{
    try {
        return castPy2Qt<QString>(py::str(thread.attr("name")));
    } catch (const std::exception &) {
        return QStringLiteral("?"); // None, or a name that cannot be had
    }
}

/// In place of `threading.excepthook`. What it throws is printed by Python, with what it was about.
void threadHasDied(const py::object &death)
{
    const py::object type = death.attr("exc_type");
    if (type.ptr() == PyExc_SystemExit) {
        return; // the way in which a thread may end itself
    }
    report({type, death.attr("exc_value"), death.attr("exc_traceback")},
           QStringLiteral("Der Thread %1 ist gestorben.").arg(nameOf(death.attr("thread"))));
}

QString reprOf(const py::object &object)
{
    try {
        return castPy2Qt<QString>(py::repr(object));
    } catch (const std::exception &) {
        return QStringLiteral("<repr() scheitert>");
    }
}

/// In place of `sys.unraisablehook`. Comes from anywhere, also when Python is half gone.
void cannotBeRaised(const py::object &unraisable)
{
    const py::object message = unraisable.attr("err_msg");
    QString where =
        message.is_none() ? QStringLiteral("Exception ignored in") : castPy2Qt<QString>(py::str(message));
    const py::object object = unraisable.attr("object");
    if (!object.is_none()) {
        where += QLatin1String(": ") + reprOf(object);
    }
    logTraceback(
        {unraisable.attr("exc_type"), unraisable.attr("exc_value"), unraisable.attr("exc_traceback")}, where);
}

void loopHasFound(const py::object &message, const py::object &exception, const QString &task)
{
    QString where = QLatin1String("asyncio: ") + castPy2Qt<QString>(py::str(message));
    if (!task.isEmpty()) {
        where += QStringLiteral(" (%1)").arg(task);
    }
    const py::object value =
        exception.is_none() ? py::reinterpret_borrow<py::object>(PyExc_RuntimeError)(message) : exception;
    report({py::type::of(value), value, py::getattr(value, "__traceback__", py::none())}, where);
}

} // namespace

void showUncaughtErrors()
{
    Q_ASSERT(onInterpreterThread());
    py::module_::import("threading").attr("excepthook") =
        py::cpp_function(threadHasDied, py::name("excepthook"), py::arg("args"));
    py::module_::import("sys").attr("unraisablehook") =
        py::cpp_function(cannotBeRaised, py::name("unraisablehook"), py::arg("unraisable"));
    py::dict scope;
    py::exec(loopWatcher, scope);
    scope["watch_loops"](py::cpp_function(loopHasFound));
}
