#include "src/py/converter.h"

#include "brovik/gui/gui.h"
#include "log_capture.h"
#include "shared/screen_engine.h"

#include <pybind11/embed.h>

#include <gmock/gmock.h>

#include <QSignalSpy>

#include <csignal>
#include <limits>

namespace py = pybind11;
using testing::IsEmpty;

namespace {

QVariant toVariant(const char *expression)
{
    return castPy2Qt<QVariant>(py::eval(expression));
}

class ConverterToQt : public testing::Test
{
protected:
    ConverterToQt() { Gui::instance().deliverPending(); }

    LogCapture log;
    QSignalSpy exceptions{&Gui::instance(), &Gui::exception};
};

} // namespace

TEST_F(ConverterToQt, PythonToVariant)
{
    struct Row
    {
        const char *python;
        QVariant expected;
    };
    const QVariant null = QVariant::fromValue(nullptr);
    const std::vector<Row> rows = {
        {"'ä€😀'", QStringLiteral("ä€😀")},
        {"type('Text', (str,), {'__str__': lambda self: 'andere'})('x')", QStringLiteral("x")},
        {"None", null},
        {"True", true},
        {"5", 5},
        {"type('Number', (int,), {})(6)", 6},
        {"-2147483648", std::numeric_limits<int>::min()},
        {"2.0", 2.0},
        {"type('Number', (float,), {})(2.5)", 2.5},
        {"{}", QVariantMap()},
        {"{1: 2, 'b': {None: 'x'}}",
         QVariantMap{{QStringLiteral("1"), 2},
                     {QStringLiteral("b"), QVariantMap{{QStringLiteral("None"), QStringLiteral("x")}}}}},
        {"__import__('collections').OrderedDict(z=1, a=2)",
         QVariantMap{{QStringLiteral("a"), 2}, {QStringLiteral("z"), 1}}},
        {"b'\\x00\\xff'", QByteArray("\x00\xff", 2)},
        {"bytearray(b'ab')", QByteArray("ab")},
        {"[1, [True], ()]", QVariantList{1, QVariantList{true}, QVariantList()}},
        {"(1, 'a')", QVariantList{1, QStringLiteral("a")}},
        {"{7}", QVariantList{7}},
        {"range(3)", QVariantList{0, 1, 2}},
        {"{'a': 1}.keys()", QVariantList{QStringLiteral("a")}},
        {"type('Sized', (), {'__iter__': lambda self: iter((1, 2)), '__len__': lambda self: 2})()",
         QVariantList{1, 2}},
    };
    for (const Row &row : rows) {
        const QVariant converted = toVariant(row.python);
        EXPECT_EQ(converted, row.expected) << row.python;
        EXPECT_EQ(converted.metaType(), row.expected.metaType()) << row.python;
    }
    EXPECT_THAT(log.messages(), IsEmpty());
}

TEST_F(ConverterToQt, ASetComesInItsOrderOfIteration)
{
    const py::object set = py::eval("{'x', 'y', 'z', 3, 4}");
    EXPECT_EQ(castPy2Qt<QVariant>(set), castPy2Qt<QVariant>(py::list(set)));
}

TEST_F(ConverterToQt, TextThatIsNoTextIsReplaced)
{
    const QString replaced = QStringLiteral("<KONVERTIERUNGSFEHLER_PY->QT>");
    EXPECT_EQ(castPy2Qt<QString>(py::eval("'\\udcff'")), replaced);
    EXPECT_EQ(castPy2Qt<QString>(py::eval("5")), replaced);
    EXPECT_EQ(toVariant("{'a': '\\udcff'}"), QVariant(QVariantMap{{QStringLiteral("a"), replaced}}));
    EXPECT_EQ(PyErr_Occurred(), nullptr);
}

TEST_F(ConverterToQt, AValueOfAStrangeTypeIsATypeErrorWithItsRepr)
{
    const QString text = QStringLiteral("Das an callback() übergebene Object darf nur einfache Typen wie "
                                        "int, float, str, bytes, bytearray, bool, None, "
                                        "dict und einfache Iterables wie tuple, list, set aus diesen Typen "
                                        "enthalten. Es wurde %1 übergeben%2.");
    struct Row
    {
        const char *python;
        QString expected;
    };
    const std::vector<Row> rows = {
        {"1j", text.arg(QStringLiteral("1j"), QString())},
        {"[1j]", text.arg(QStringLiteral("1j"), QStringLiteral(" (enthalten in [1j])"))},
        {"{'a': [len]}", text.arg(QStringLiteral("<built-in function len>"),
                                  QStringLiteral(" (enthalten in [<built-in function len>])"))},
        {"{'%1': 1j}", text.arg(QStringLiteral("1j"), QStringLiteral(" (enthalten in {'%1': 1j})"))},
    };
    for (const Row &row : rows) {
        try {
            toVariant(row.python);
            ADD_FAILURE() << row.python;
        } catch (const py::type_error &error) {
            EXPECT_EQ(error.what(), row.expected.toStdString());
        }
    }
    EXPECT_THAT(log.messages(), IsEmpty());
    EXPECT_THAT(exceptions, IsEmpty());
}

TEST_F(ConverterToQt, NumberBeyond32BitIsReportedAndLeavesAnInvalidValue)
{
    const QVariantMap map = toVariant("{'gross': 2147483648, 'klein': 1}").toMap();
    EXPECT_EQ(map.value(QStringLiteral("klein")), 1);
    ASSERT_TRUE(map.contains(QStringLiteral("gross")));
    EXPECT_FALSE(map.value(QStringLiteral("gross")).isValid());
    EXPECT_FALSE(toVariant("-2147483649").isValid());
    EXPECT_FALSE(toVariant("10**30").isValid());
    ASSERT_EQ(log.texts(QtCriticalMsg).size(), 3);
    for (const QString &line : log.texts(QtCriticalMsg)) {
        EXPECT_TRUE(line.startsWith(QStringLiteral("py::cast_error: Unable to cast")));
    }
    EXPECT_EQ(PyErr_Occurred(), nullptr);
}

TEST_F(ConverterToQt, WhatRaisesOnTheWayIsReportedByTheGuard)
{
    struct Row
    {
        const char *python;
        const char *type;
    };
    constexpr Row rows[] = {
        {"(number for number in (1, 2))", "TypeError"}, // has no len()
        {"type('T', (), {'__repr__': lambda self: 1 / 0})()", "ZeroDivisionError"},
        {"type('T', (), {'__iter__': lambda self: iter([1]), '__len__': lambda self: 1 / 0})()",
         "ZeroDivisionError"},
        {"type('T', (), {'__iter__': lambda self: (1 / 0 for _ in '1'), '__len__': lambda self: 1})()",
         "ZeroDivisionError"},
        {"{type('T', (), {'__str__': lambda self: 1 / 0})(): 1}", "ZeroDivisionError"},
    };
    for (const Row &row : rows) {
        exceptions.clear();
        EXPECT_FALSE(toVariant(row.python).isValid()) << row.python;
        ASSERT_EQ(exceptions.size(), 1) << row.python;
        EXPECT_EQ(exceptions.constFirst().constFirst().toMap().value(QStringLiteral("type")),
                  QString::fromUtf8(row.type));
        EXPECT_EQ(PyErr_Occurred(), nullptr);
    }
}

TEST_F(ConverterToQt, AnAbsurdLengthDoesNoHarm)
{
    const char *const sized =
        "type('T', (), {'__iter__': lambda self: iter([1]), '__len__': lambda self: 2**60})()";
    EXPECT_EQ(toVariant(sized), QVariant(QVariantList{1}));
}

TEST_F(ConverterToQt, NestingWithoutAnEndIsATypeError)
{
    py::exec("own = []\nown += [own, own]\nmapped = {}\nmapped['a'] = mapped\n"
             "deep = []\nfor _ in range(100000): deep = [deep]\n");
    for (const char *name : {"own", "mapped", "deep"}) {
        EXPECT_THROW(toVariant(name), py::type_error) << name;
    }
    EXPECT_THROW(castPy2Qt<QVariantMap>(py::eval("mapped")), py::type_error);
    EXPECT_EQ(PyErr_Occurred(), nullptr);
    EXPECT_EQ(py::eval("1 + 1").cast<int>(), 2);
    py::exec("del own[:]\nmapped.clear()\ndel deep");
}

TEST_F(ConverterToQt, PythonToKnownShapes)
{
    EXPECT_EQ(castPy2Qt<QVariantMap>(py::eval("{1: 2}")), QVariantMap({{QStringLiteral("1"), 2}}));
    EXPECT_EQ(castPy2Qt<QVariantList>(py::eval("(1, 'a')")), QVariantList({1, QStringLiteral("a")}));
    EXPECT_EQ(castPy2Qt<QVariantList>(py::eval("'ab'")),
              QVariantList({QStringLiteral("a"), QStringLiteral("b")}));
    EXPECT_EQ(castPy2Qt<QStringList>(py::eval("['a', 1, None]")),
              QStringList({QStringLiteral("a"), QStringLiteral("1"), QStringLiteral("None")}));
    EXPECT_EQ(castPy2Qt<QStringList>(py::eval("'äb'")),
              QStringList({QStringLiteral("ä"), QStringLiteral("b")}));
    EXPECT_EQ(castPy2Qt<QList<QVariantMap>>(py::eval("[{'a': 1}, [('b', 2)]]")),
              QList<QVariantMap>({{{QStringLiteral("a"), 1}}, {{QStringLiteral("b"), 2}}}));
    EXPECT_EQ((castPy2Qt<QList<std::pair<int, int>>>(py::eval("[(1, 2), [3, 4, 5]]"))),
              (QList<std::pair<int, int>>{{1, 2}, {3, 4}}));
    EXPECT_EQ((castPy2Qt<QList<std::pair<double, double>>>(py::eval("((1, 2.5),)"))),
              (QList<std::pair<double, double>>{{1, 2.5}}));
    EXPECT_EQ(castPy2Qt<QList<QPointF>>(py::eval("[(1, 2), (3, 4)]")), QList<QPointF>({{1, 2}, {3, 4}}));
    EXPECT_EQ(castPy2Qt<QPointF>(py::eval("[1, 2]")), QPointF(1, 2));
}

TEST_F(ConverterToQt, WhatIsNoSequenceIsATypeError)
{
    EXPECT_THROW(castPy2Qt<QStringList>(py::eval("5")), py::type_error);
    EXPECT_THROW(castPy2Qt<QStringList>(py::eval("{'a'}")), py::type_error);
    EXPECT_THROW(castPy2Qt<QVariantList>(py::eval("{}")), py::type_error);
    EXPECT_THROW(castPy2Qt<QList<QPointF>>(py::eval("None")), py::type_error);
    EXPECT_THROW(castPy2Qt<QList<QVariantMap>>(py::eval("iter([])")), py::type_error);
}

TEST_F(ConverterToQt, PythonToScript)
{
    screenEngine = std::make_unique<QQmlApplicationEngine>();
    struct Row
    {
        const char *python;
        const char *json;
    };
    constexpr Row rows[] = {
        {"'ä'", "\"ä\""},    {"None", "null"},
        {"True", "true"},    {"5", "5"},
        {"2.5", "2.5"},      {"{2: [1, (2,)], 'a': None}", "{\"2\":[1,[2]],\"a\":null}"},
        {"{}", "{}"},        {"[]", "[]"},
        {"b'ab'", "\"ab\""}, {"bytearray(b'cd')", "\"cd\""},
    };
    const QJSValue stringify = screenEngine->evaluate(QStringLiteral("JSON.stringify"));
    for (const Row &row : rows) {
        EXPECT_EQ(stringify.call({castPy2Qt<QJSValue>(py::eval(row.python))}).toString(),
                  QString::fromUtf8(row.json));
    }
    EXPECT_TRUE(castPy2Qt<QJSValue>(py::eval("10**30")).isUndefined());
    EXPECT_THROW(castPy2Qt<QJSValue>(py::eval("[1j]")), py::type_error);
    screenEngine.reset();
}

TEST_F(ConverterToQt, AnItemWithTheNameOfThePrototypeIsAnItem)
{
    screenEngine = std::make_unique<QQmlApplicationEngine>();
    for (const char *python :
         {"{'__proto__': None}", "{'a': 1, '__proto__': {'b': 2}}", "{'__proto__': '', 'a': 1}"}) {
        const QJSValue script = castPy2Qt<QJSValue>(py::eval(python));
        EXPECT_TRUE(castQt2Py(script).equal(py::eval(python))) << python;
        EXPECT_TRUE(script.property(QStringLiteral("b")).isUndefined()) << python;
    }
    screenEngine.reset();
}

TEST_F(ConverterToQt, WithoutAnEngineScriptContainersAreFatal)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto convert = [](const char *python) {
        qInstallMessageHandler(nullptr);
        castPy2Qt<QJSValue>(py::eval(python));
    };
    EXPECT_EXIT(convert("{}"), testing::KilledBySignal(SIGABRT),
                "engine is nicht mehr .*\\(engine->newObject\\(\\)\\)");
    EXPECT_EXIT(convert("[]"), testing::KilledBySignal(SIGABRT),
                "engine is nicht mehr .*\\(engine->newArray\\(\\)\\)");
    EXPECT_EQ(castPy2Qt<QJSValue>(py::eval("5")).toInt(), 5);
}
