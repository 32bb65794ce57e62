#include "converter.h"

#include "gui.h"
#include "log_capture.h"
#include "screen_engine.h"

#include <pybind11/embed.h>

#include <gmock/gmock.h>

#include <QSignalSpy>
#include <QUrl>

#include <csignal>
#include <functional>
#include <limits>

namespace py = pybind11;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

/// One Python value to a Qt value, or the way back; `name` tells it apart in a failure.
struct ToPython
{
    const char *name;
    std::function<py::object()> convert;
    const char *expected;
};

std::string typeAndRepr(const py::object &object)
{
    return std::string(py::str(py::type::of(object).attr("__name__"))) + " " + std::string(py::repr(object));
}

template <typename Value> std::function<py::object()> of(const Value &value)
{
    return [value] { return castQt2Py(value); };
}

template <typename Value> std::function<py::object()> inVariant(const Value &value)
{
    return [value] { return castQt2Py(QVariant::fromValue(value)); };
}

std::function<py::object()> script(const char *program)
{
    return [program] {
        QJSEngine engine;
        return castQt2Py(engine.evaluate(QString::fromUtf8(program)));
    };
}

std::function<py::object()> jsonDocument(const char *json)
{
    return [json] { return castQt2Py(QJsonDocument::fromJson(json)); };
}

QVariant toVariant(const char *expression)
{
    return castPy2Qt<QVariant>(py::eval(expression));
}

class ConverterTest : public testing::Test
{
protected:
    ConverterTest() { Gui::instance().deliverPending(); }

    LogCapture log;
    QSignalSpy exceptions{&Gui::instance(), &Gui::exception};
};

} // namespace

TEST_F(ConverterTest, QtToPython)
{
    const QVariantMap map{{QStringLiteral("b"), 1},
                          {QStringLiteral("a"), QVariantList{true, QStringLiteral("ä")}}};
    const QVariantHash hash{{QStringLiteral("k"), 1.5}};
    using IntPair = std::pair<int, int>;
    using DoublePair = std::pair<double, double>;
    const std::vector<ToPython> rows = {
        {"bool", of(true), "bool True"},
        {"int", of(-1), "int -1"},
        {"uint", of(std::numeric_limits<uint>::max()), "int 4294967295"},
        {"long", of(-2L), "int -2"},
        {"ulong", of(2UL), "int 2"},
        {"qlonglong", of(std::numeric_limits<qlonglong>::min()), "int -9223372036854775808"},
        {"qulonglong", of(std::numeric_limits<qulonglong>::max()), "int 18446744073709551615"},
        {"float", of(0.5F), "float 0.5"},
        {"double", of(2.0), "float 2.0"},
        {"QString", of(QStringLiteral("ä€😀")), "str 'ä€😀'"},
        {"std::string", of(std::string("x")), "str 'x'"},
        {"const char*", of("y"), "str 'y'"},
        {"QColor", of(QColor(255, 0, 128)), "str '#ff0080'"},
        {"QMap of texts", of(QMap<QString, QString>{{QStringLiteral("a"), QStringLiteral("b")}}),
         "dict {'a': 'b'}"},
        {"QStringList", of(QStringList{QStringLiteral("a"), QString()}), "list ['a', '']"},
        {"pairs of int", of(QList<IntPair>{{1, 2}, {3, 4}}), "list [(1, 2), (3, 4)]"},
        {"pairs of double", of(QList<DoublePair>{{1, 2.5}}), "list [(1.0, 2.5)]"},
        {"point", of(QPointF(1, 2)), "tuple (1.0, 2.0)"},
        {"points", of(QList<QPointF>{{1, 2}, {3, 4}}), "list [(1.0, 2.0), (3.0, 4.0)]"},
        {"QVariantMap", of(map), "dict {'a': [True, 'ä'], 'b': 1}"},
        {"QVariantHash", of(hash), "dict {'k': 1.5}"},
        {"QVariantList", of(QVariantList{1, 2.0}), "list [1, 2.0]"},
        {"list of maps", of(QList<QVariantMap>{map, {}}), "list [{'a': [True, 'ä'], 'b': 1}, {}]"},
    };
    for (const ToPython &row : rows) {
        EXPECT_EQ(typeAndRepr(row.convert()), row.expected) << row.name;
    }
    EXPECT_THAT(log.messages(), IsEmpty());
}

TEST_F(ConverterTest, VariantToPython)
{
    const std::vector<ToPython> rows = {
        {"Bool", inVariant(false), "bool False"},
        {"Int", inVariant(-1), "int -1"},
        {"UInt", inVariant(std::numeric_limits<uint>::max()), "int 4294967295"},
        {"LongLong", inVariant(std::numeric_limits<qlonglong>::min()), "int -9223372036854775808"},
        {"ULongLong", inVariant(std::numeric_limits<qulonglong>::max()), "int 18446744073709551615"},
        {"Long", inVariant(-3L), "int -3"},
        {"ULong", inVariant(3UL), "int 3"},
        {"Double", inVariant(1.0), "float 1.0"},
        {"Float", inVariant(0.25F), "float 0.25"},
        {"QVariantMap", inVariant(QVariantMap{{QStringLiteral("a"), 1}}), "dict {'a': 1}"},
        {"QVariantHash", inVariant(QVariantHash{{QStringLiteral("a"), 1}}), "dict {'a': 1}"},
        {"QVariantList", inVariant(QVariantList{1, QVariantList{}}), "list [1, []]"},
        {"QString", inVariant(QStringLiteral("x")), "str 'x'"},
        {"QStringList", inVariant(QStringList{QStringLiteral("x")}), "list ['x']"},
        {"QJsonValue", inVariant(QJsonValue(1)), "float 1.0"},
        {"QJsonObject", inVariant(QJsonObject{{QStringLiteral("a"), 1}}), "dict {'a': 1.0}"},
        {"QJsonArray", inVariant(QJsonArray{1, true}), "list [1.0, True]"},
        {"QJsonDocument", inVariant(QJsonDocument(QJsonArray{})), "list []"},
        {"QJSValue", inVariant(QJSValue(2)), "float 2.0"},
    };
    for (const ToPython &row : rows) {
        EXPECT_EQ(typeAndRepr(row.convert()), row.expected) << row.name;
    }
    EXPECT_THAT(log.messages(), IsEmpty());
}

TEST_F(ConverterTest, VariantWithoutACounterpartIsNoneWithAWarning)
{
    EXPECT_TRUE(castQt2Py(QVariant(QUrl())).is_none());
    EXPECT_TRUE(castQt2Py(QVariant(QByteArray("x"))).is_none());
    EXPECT_TRUE(castQt2Py(QVariant::fromValue(nullptr)).is_none());
    EXPECT_TRUE(castQt2Py(QVariant()).is_none());
    EXPECT_THAT(
        log.texts(QtWarningMsg),
        ElementsAre(QStringLiteral("Keine Konvertierung für QVariant-Typ QUrl implementiert"),
                    QStringLiteral("Keine Konvertierung für QVariant-Typ QByteArray implementiert"),
                    QStringLiteral("Keine Konvertierung für QVariant-Typ std::nullptr_t implementiert"),
                    QStringLiteral("Keine Konvertierung für QVariant-Typ  implementiert")));
}

TEST_F(ConverterTest, ScriptToPython)
{
    const std::vector<ToPython> rows = {
        {"array", script("[1, [true, 'x'], null]"), "list [1.0, [True, 'x'], None]"},
        {"empty array", script("[]"), "list []"},
        {"sparse array", script("var a = []; a[2] = 1; a"), "list [None, None, 1.0]"},
        {"bool", script("true"), "bool True"},
        {"null", script("null"), "NoneType None"},
        {"undefined", script("undefined"), "NoneType None"},
        {"whole number", script("1"), "float 1.0"},
        {"number", script("-0.5"), "float -0.5"},
        {"not a number", script("NaN"), "float nan"},
        {"object", script("({'3': {a: true}, b: 1})"), "dict {'3': {'a': True}, 'b': 1.0}"},
        {"empty object", script("({})"), "dict {}"},
        {"date", script("new Date(0)"), "dict {}"},
        {"text", script("'ä€😀'"), "str 'ä€😀'"},
        {"empty text", script("''"), "str ''"},
        {"variant",
         [] {
             QJSEngine engine;
             return castQt2Py(engine.toScriptValue(QVariantMap{{QStringLiteral("a"), 1}}));
         },
         "dict {'a': 1.0}"},
    };
    for (const ToPython &row : rows) {
        EXPECT_EQ(typeAndRepr(row.convert()), row.expected) << row.name;
    }
    EXPECT_THAT(log.messages(), IsEmpty());
}

TEST_F(ConverterTest, ObjectOfQtInAScriptIsADictOfItsProperties)
{
    QJSEngine engine;
    QObject object;
    object.setObjectName(QStringLiteral("x"));
    QJSEngine::setObjectOwnership(&object, QJSEngine::CppOwnership);
    const py::dict converted = castQt2Py(engine.newQObject(&object));
    EXPECT_EQ(std::string(py::repr(converted["objectName"])), "'x'");
}

TEST_F(ConverterTest, JsonToPython)
{
    const std::vector<ToPython> rows = {
        {"null", of(QJsonValue(QJsonValue::Null)), "NoneType None"},
        {"bool", of(QJsonValue(true)), "bool True"},
        {"double", of(QJsonValue(1)), "float 1.0"},
        {"string", of(QJsonValue(QStringLiteral("x"))), "str 'x'"},
        {"array", of(QJsonArray{1, QJsonValue::Null}), "list [1.0, None]"},
        {"object", of(QJsonObject{{QStringLiteral("a"), QJsonArray{}}}), "dict {'a': []}"},
        {"array in a value", of(QJsonValue(QJsonArray{1})), "list [1.0]"},
        {"object in a value", of(QJsonValue(QJsonObject{})), "dict {}"},
        {"document with an object", jsonDocument("{\"a\": [1]}"), "dict {'a': [1.0]}"},
        {"document with an array", jsonDocument("[{}]"), "list [{}]"},
    };
    for (const ToPython &row : rows) {
        EXPECT_EQ(typeAndRepr(row.convert()), row.expected) << row.name;
    }
    EXPECT_THAT(log.messages(), IsEmpty());
}

TEST_F(ConverterTest, JsonWithoutACounterpartIsNoneWithAWarning)
{
    EXPECT_TRUE(castQt2Py(QJsonValue(QJsonValue::Undefined)).is_none());
    EXPECT_TRUE(castQt2Py(QJsonDocument()).is_none());
    EXPECT_THAT(
        log.texts(QtWarningMsg),
        ElementsAre(QStringLiteral("Das an castQt2Py übergebene QJsonValue hat einen unbekannten Typ"),
                    QStringLiteral("Es wurde ein invalides QJsonDocument an _castQt2Py übergeben: "
                                   "QJsonDocument()")));
}

TEST_F(ConverterTest, PythonToVariant)
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

TEST_F(ConverterTest, ASetComesInItsOrderOfIteration)
{
    const py::object set = py::eval("{'x', 'y', 'z', 3, 4}");
    EXPECT_EQ(castPy2Qt<QVariant>(set), castPy2Qt<QVariant>(py::list(set)));
}

TEST_F(ConverterTest, TextThatIsNoTextIsReplaced)
{
    const QString replaced = QStringLiteral("<KONVERTIERUNGSFEHLER_PY->QT>");
    EXPECT_EQ(castPy2Qt<QString>(py::eval("'\\udcff'")), replaced);
    EXPECT_EQ(castPy2Qt<QString>(py::eval("5")), replaced);
    EXPECT_EQ(toVariant("{'a': '\\udcff'}"), QVariant(QVariantMap{{QStringLiteral("a"), replaced}}));
    EXPECT_EQ(PyErr_Occurred(), nullptr);
}

TEST_F(ConverterTest, AValueOfAStrangeTypeIsATypeErrorWithItsRepr)
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

TEST_F(ConverterTest, NumberBeyond32BitIsReportedAndLeavesAnInvalidValue)
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

TEST_F(ConverterTest, WhatRaisesOnTheWayIsReportedByTheGuard)
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

TEST_F(ConverterTest, AnAbsurdLengthDoesNoHarm)
{
    const char *const sized =
        "type('T', (), {'__iter__': lambda self: iter([1]), '__len__': lambda self: 2**60})()";
    EXPECT_EQ(toVariant(sized), QVariant(QVariantList{1}));
}

TEST_F(ConverterTest, NestingWithoutAnEndIsATypeError)
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

TEST_F(ConverterTest, PythonToKnownShapes)
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

TEST_F(ConverterTest, WhatIsNoSequenceIsATypeError)
{
    EXPECT_THROW(castPy2Qt<QStringList>(py::eval("5")), py::type_error);
    EXPECT_THROW(castPy2Qt<QStringList>(py::eval("{'a'}")), py::type_error);
    EXPECT_THROW(castPy2Qt<QVariantList>(py::eval("{}")), py::type_error);
    EXPECT_THROW(castPy2Qt<QList<QPointF>>(py::eval("None")), py::type_error);
    EXPECT_THROW(castPy2Qt<QList<QVariantMap>>(py::eval("iter([])")), py::type_error);
}

TEST_F(ConverterTest, PythonToScript)
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

TEST_F(ConverterTest, WithoutAnEngineScriptContainersAreFatal)
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
