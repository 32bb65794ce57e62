#include "src/py/signature_check.h"

#include "brovik/gui/gui.h"
#include "log_capture.h"

#include <pybind11/embed.h>

#include <gmock/gmock.h>

#include <QSignalSpy>

namespace py = pybind11;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr char functions[] = R"(
    import functools

    def wrapping(*, as_is):
        def decorate(function):
            @functools.wraps(function)
            def guarded(*args, **kwargs):
                return function(*args, **kwargs)

            @functools.wraps(function)
            def adapted(enum, value):
                return function(enum)

            return guarded if as_is else adapted
        return decorate

    class Machine:
        def none(self): pass
        def one(self, enum): pass
        def two(self, enum, value): pass
        def __call__(self, enum, value): pass
        guarded = wrapping(as_is=True)(two)
        guarded_one = wrapping(as_is=True)(one)

    class Unreadable:
        __signature__ = "keine"
        def __call__(self): pass

    class Unwilling:
        @property
        def __signature__(self):
            raise KeyboardInterrupt
        def __call__(self): pass

    class Long:
        def __repr__(self):
            raise ValueError("kein Text")

    def one(enum): pass
    def two(enum, value): pass
    def typed(enum: "int", value: "str") -> "None": pass
    def three(enum, value, more): pass
    def default(enum, value=Long()): pass
    def long_default(enum, value, more, *, force, wait=Long()): pass
    def keyword(enum, *, value): pass
    def keyword_default(enum, value, *, wait=1): pass
    def positional(enum, value, /): pass
    def anything(*args): pass
    def keywords(**kwargs): pass
    def too_much(a, b, c, *args): pass
    machine = Machine()
    lambda_two = lambda enum, value: None
    guarded = wrapping(as_is=True)(two)
    guarded_one = wrapping(as_is=True)(one)
    twice_guarded_one = wrapping(as_is=True)(guarded_one)
    adapted_one = wrapping(as_is=False)(one)
    partial = functools.partial(three, 1)
    partial_one = functools.partial(two, 1)
    partial_keyword = functools.partial(three, more=1)
    unreadable = Unreadable()
    unwilling = Unwilling()
    no_signature = type
)";

struct Row
{
    const char *expression;
    int arguments;
    /// The parameters that are named; null if the call would succeed, or nobody can tell.
    const char *found;
};

void PrintTo(const Row &row, std::ostream *stream)
{
    *stream << row.expression << " with " << row.arguments;
}

class SignatureTest : public testing::TestWithParam<Row>
{};

} // namespace

TEST_P(SignatureTest, RefusesWhatTheCallWouldRefuse)
{
    py::dict scope;
    py::exec(functions, scope);
    const Row &row = GetParam();
    const QStringList refusal =
        refusalOf(py::eval(row.expression, scope), QStringLiteral("name"), row.arguments);
    const QString expected = row.arguments == 1 ? QStringLiteral("(enum)") : QStringLiteral("(enum, value)");
    const QString sentence = QStringLiteral("name() hat falsche Parameter: erwartet %1, gefunden %2")
                                 .arg(expected, QString::fromUtf8(row.found));
    EXPECT_EQ(refusal.join(QLatin1Char('|')).toStdString(),
              row.found != nullptr ? sentence.toStdString() : std::string());
    EXPECT_EQ(PyErr_Occurred(), nullptr);
}

constexpr Row rows[] = {
    {"one", 1, nullptr},
    {"one", 2, "(enum)"},
    {"two", 2, nullptr},
    {"two", 1, "(enum, value)"},
    {"typed", 1, "(enum, value)"},
    {"three", 2, "(enum, value, more)"},
    {"default", 1, nullptr},
    {"default", 2, nullptr},
    {"long_default", 2, "(enum, value, more, *, force, wait=…)"},
    {"keyword", 2, "(enum, *, value)"},
    {"keyword_default", 2, nullptr},
    {"positional", 2, nullptr},
    {"positional", 1, "(enum, value, /)"},
    {"anything", 1, nullptr},
    {"anything", 2, nullptr},
    {"keywords", 1, "(**kwargs)"},
    {"too_much", 2, "(a, b, c, *args)"},
    {"lambda_two", 2, nullptr},
    {"machine.one", 1, nullptr},
    {"machine.one", 2, "(enum)"},
    {"machine.two", 2, nullptr},
    {"machine.none", 1, "()"},
    {"Machine.two", 2, "(self, enum, value)"},
    {"machine", 2, nullptr},
    {"machine", 1, "(enum, value)"},
    {"machine.guarded", 2, nullptr},
    {"machine.guarded_one", 2, "(enum)"},
    {"guarded", 2, nullptr},
    {"guarded", 1, "(enum, value)"},
    {"guarded_one", 2, "(enum)"},
    {"twice_guarded_one", 2, "(enum)"},
    {"adapted_one", 2, nullptr},
    {"partial", 2, nullptr},
    {"partial_one", 1, nullptr},
    {"partial_one", 2, "(value)"},
    {"partial_keyword", 2, nullptr},
    {"unreadable", 2, nullptr},
    {"unwilling", 2, nullptr},
    {"no_signature", 2, nullptr},
    {"print", 2, nullptr},
};

INSTANTIATE_TEST_SUITE_P(Rows, SignatureTest, testing::ValuesIn(rows));

TEST(SignatureReport, NothingIsNoReport)
{
    const LogCapture log;
    QSignalSpy exceptions(&Gui::instance(), &Gui::exception);
    Gui::instance().deliverPending();
    reportRefusals({});
    EXPECT_THAT(log.messages(), IsEmpty());
    EXPECT_THAT(exceptions, IsEmpty());
}

TEST(SignatureReport, SeveralAreLinesAndOneDialog)
{
    const LogCapture log;
    QSignalSpy exceptions(&Gui::instance(), &Gui::exception);
    Gui::instance().deliverPending();
    reportRefusals({QStringLiteral("a() ist falsch"), QStringLiteral("b() auch")});
    EXPECT_THAT(log.texts(QtCriticalMsg), ElementsAre(QStringLiteral("Python-Funktion a() ist falsch"),
                                                      QStringLiteral("Python-Funktion b() auch")));
    ASSERT_EQ(exceptions.size(), 1);
    const QVariantMap record = exceptions.constFirst().constFirst().toMap();
    EXPECT_EQ(record.value(QStringLiteral("type")), QStringLiteral("TypeError"));
    EXPECT_EQ(record.value(QStringLiteral("text")),
              QStringLiteral("Diese Aufrufe des Backends werden scheitern:\na() ist falsch\nb() auch"));
    EXPECT_EQ(record.value(QStringLiteral("withTraceback")), false);
}
