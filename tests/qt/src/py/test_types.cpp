#include "src/py/types.h"

#include "brovik/gui/gui.h"
#include "log_capture.h"

#include <pybind11/embed.h>

#include <gmock/gmock.h>

#include <QSignalSpy>

#include <string>

namespace py = pybind11;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

/// What only an error of Python comes of, which nobody has thrown.
struct Unloadable
{};

/// A bound function that hands back what it gets.
template <typename Type> void bindEcho(py::module_ &module, const char *name)
{
    module.def(name, [](const Type &value) { return value; });
}

std::string reprOf(const std::string &expression)
{
    return py::repr(py::eval("__import__('_echo')." + expression));
}

class TypesTest : public testing::Test
{
protected:
    TypesTest() { Gui::instance().deliverPending(); }

    LogCapture log;
    QSignalSpy exceptions{&Gui::instance(), &Gui::exception};
};

} // namespace

template <> struct adapter_detail::Loader<Unloadable>
{
    static Unloadable load(const py::handle & /*object*/)
    {
        PyErr_SetString(PyExc_RuntimeError, "so");
        return {};
    }
};

PYBIND11_EMBEDDED_MODULE(_echo, module)
{
    bindEcho<QString>(module, "text");
    bindEcho<QColor>(module, "colour");
    bindEcho<QPointF>(module, "point");
    bindEcho<QVariantMap>(module, "mapping");
    bindEcho<QStringList>(module, "texts");
    bindEcho<QList<QPointF>>(module, "points");
    bindEcho<QList<QVariantMap>>(module, "mappings");
}

TEST_F(TypesTest, ArgumentsAndResults)
{
    struct Row
    {
        const char *call;
        const char *result;
    };
    constexpr Row rows[] = {
        {"text('ä€😀')", "'ä€😀'"},
        {"text(5)", "'5'"},
        {"text(None)", "'None'"},
        {"text([1])", "'[1]'"},
        {"text('\\udcff')", "'<KONVERTIERUNGSFEHLER_PY->QT>'"},
        {"text(type('T', (str,), {'__str__': lambda self: 'andere'})('x'))", "'x'"},
        {"colour('#FF0080')", "'#ff0080'"},
        {"colour('red')", "'#ff0000'"},
        {"colour('keine')", "'#000000'"},
        {"point((1, 2))", "(1.0, 2.0)"},
        {"point([1.5, True])", "(1.5, 1.0)"},
        {"mapping({'b': 1, 2: None})", "{'2': None, 'b': 1}"},
        {"mapping([('a', 1)])", "{'a': 1}"},
        {"texts(['a', 1])", "['a', '1']"},
        {"texts(('a',))", "['a']"},
        {"texts('ab')", "['a', 'b']"},
        {"points([(1, 2), [3, 4]])", "[(1.0, 2.0), (3.0, 4.0)]"},
        {"points(())", "[]"},
        {"mappings([{'a': 1}, [('b', 2)]])", "[{'a': 1}, {'b': 2}]"},
        {"mappings({'a': 1}.items() and ({},))", "[{}]"},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(reprOf(row.call), row.result) << row.call;
    }
}

TEST_F(TypesTest, WhatIsNoSequenceIsATypeError)
{
    for (const char *call :
         {"texts(5)", "texts({'a'})", "texts({})", "points(None)", "points(5)", "mappings(5)"}) {
        try {
            reprOf(call);
            ADD_FAILURE() << call;
        } catch (py::error_already_set &error) {
            EXPECT_TRUE(error.matches(PyExc_TypeError)) << call;
        }
    }
    EXPECT_THAT(exceptions, IsEmpty());
    EXPECT_THAT(log.messages(), IsEmpty());
}

TEST_F(TypesTest, AStrangeTypeInsideIsATypeErrorWithItsRepr)
{
    try {
        reprOf("mapping({'a': [1j]})");
        ADD_FAILURE();
    } catch (py::error_already_set &error) {
        EXPECT_TRUE(error.matches(PyExc_TypeError));
        EXPECT_THAT(error.what(), HasSubstr("Es wurde 1j übergeben (enthalten in [1j])."));
    }
}

TEST_F(TypesTest, ALoadingStepThatRaisesIsReportedAndGivesTheDefault)
{
    struct Row
    {
        const char *call;
        const char *result;
    };
    constexpr Row rows[] = {
        {"text(type('T', (), {'__str__': lambda self: 1 / 0})())", "''"},
        {"colour(type('T', (), {'__str__': lambda self: 1 / 0})())", "'#000000'"},
        {"point(5)", "(0.0, 0.0)"},
        {"point((1,))", "(0.0, 0.0)"},
        {"mapping(5)", "{}"},
        {"mappings([5])", "[]"},
        {"points([5])", "[]"},
    };
    for (const Row &row : rows) {
        exceptions.clear();
        EXPECT_EQ(reprOf(row.call), row.result) << row.call;
        EXPECT_EQ(exceptions.size(), 1) << row.call;
    }
}

TEST_F(TypesTest, APartThatCannotBeCastIsLoggedAndGivesTheDefault)
{
    EXPECT_EQ(reprOf("point(('a', 'b'))"), "(0.0, 0.0)");
    EXPECT_EQ(reprOf("points([(1, 2), (None, 1)])"), "[]");
    EXPECT_EQ(log.texts(QtCriticalMsg).filter(QStringLiteral("py::cast_error: Unable to cast")).size(), 2);
    EXPECT_THAT(exceptions, IsEmpty());
}

TEST_F(TypesTest, AnErrorThatIsLeftPendingIsNoMatch)
{
    Unloadable target;
    EXPECT_FALSE(adapter_detail::loadGuarded(target, py::none()));
    EXPECT_EQ(PyErr_Occurred(), nullptr);
}
