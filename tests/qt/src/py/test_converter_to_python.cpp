#include "src/py/converter.h"

#include "log_capture.h"

#include <pybind11/embed.h>

#include <gmock/gmock.h>

#include <QJSEngine>
#include <QUrl>

#include <functional>
#include <limits>

namespace py = pybind11;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// One value on its way to Python; `name` tells it apart in a failure.
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

class ConverterToPython : public testing::Test
{
protected:
    LogCapture log;
};

} // namespace

TEST_F(ConverterToPython, QtToPython)
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

TEST_F(ConverterToPython, VariantToPython)
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

TEST_F(ConverterToPython, VariantWithoutACounterpartIsNoneWithAWarning)
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

TEST_F(ConverterToPython, ScriptToPython)
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

TEST_F(ConverterToPython, ASymbolIsNoneWithAWarning)
{
    EXPECT_EQ(typeAndRepr(script("({a: [Symbol('x')]})")()), "dict {'a': [None]}");
    EXPECT_THAT(log.texts(QtWarningMsg),
                ElementsAre(QStringLiteral("Keine Konvertierung für QVariant-Typ QJSValue implementiert")));
}

TEST_F(ConverterToPython, ObjectOfQtInAScriptIsADictOfItsProperties)
{
    QJSEngine engine;
    QObject object;
    object.setObjectName(QStringLiteral("x"));
    QJSEngine::setObjectOwnership(&object, QJSEngine::CppOwnership);
    const py::dict converted = castQt2Py(engine.newQObject(&object));
    EXPECT_EQ(std::string(py::repr(converted["objectName"])), "'x'");
}

TEST_F(ConverterToPython, JsonToPython)
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

TEST_F(ConverterToPython, JsonWithoutACounterpartIsNoneWithAWarning)
{
    EXPECT_TRUE(castQt2Py(QJsonValue(QJsonValue::Undefined)).is_none());
    EXPECT_TRUE(castQt2Py(QJsonDocument()).is_none());
    EXPECT_THAT(
        log.texts(QtWarningMsg),
        ElementsAre(QStringLiteral("Das an castQt2Py übergebene QJsonValue hat einen unbekannten Typ"),
                    QStringLiteral("Es wurde ein invalides QJsonDocument an _castQt2Py übergeben: "
                                   "QJsonDocument()")));
}
