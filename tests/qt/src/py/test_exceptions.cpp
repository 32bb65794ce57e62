#include "src/py/exceptions.h"

#include "brovik/gui/gui.h"
#include "log_capture.h"

#include <pybind11/embed.h>

#include <gmock/gmock.h>

#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <stdexcept>

namespace py = pybind11;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class ExceptionsTest : public testing::Test
{
protected:
    ExceptionsTest() { Gui::instance().deliverPending(); }

    QVariantMap record() const
    {
        return m_exceptions.isEmpty() ? QVariantMap() : m_exceptions.constLast().constFirst().toMap();
    }
    QVariant recorded(const char *key) const { return record().value(QString::fromLatin1(key)); }

    /// Reports what a Python statement raises.
    void report(const char *statement, int line = 0, const char *file = nullptr)
    {
        try {
            py::exec(statement);
            FAIL() << statement;
        } catch (py::error_already_set &error) {
            handle_py_exception(&error, line, file);
        }
    }

    LogCapture log;
    QSignalSpy m_exceptions{&Gui::instance(), &Gui::exception};
};

} // namespace

TEST_F(ExceptionsTest, GuardRunsTheOperation)
{
    bool ran = false;
    EXPECT_TRUE(guarded([&] { ran = true; }));
    EXPECT_TRUE(ran);
    EXPECT_THAT(log.messages(), IsEmpty());
}

TEST_F(ExceptionsTest, GuardReportsAPythonErrorWithItsPlace)
{
    const int line = __LINE__ + 1;
    EXPECT_FALSE(guarded([] { py::exec("raise ValueError('falsch')"); }));
    ASSERT_EQ(log.texts(QtCriticalMsg).size(), 2); // the second one is the traceback
    const QString logged = log.texts(QtCriticalMsg).constFirst();
    EXPECT_TRUE(logged.startsWith(QStringLiteral("py::error_already_set: ValueError: falsch")))
        << qPrintable(logged);
    EXPECT_TRUE(logged.endsWith(QStringLiteral("test_exceptions.cpp %1").arg(line))) << qPrintable(logged);
    EXPECT_EQ(recorded("text"), QStringLiteral("falsch\nZeile %1 in test_exceptions.cpp").arg(line));
    EXPECT_EQ(recorded("type"), QStringLiteral("ValueError"));
    EXPECT_EQ(PyErr_Occurred(), nullptr);
}

TEST_F(ExceptionsTest, GuardLetsATypeErrorPassUnreported)
{
    EXPECT_THROW(guarded([] { throw py::type_error("x"); }), py::type_error);
    EXPECT_THAT(log.messages(), IsEmpty());
    EXPECT_THAT(m_exceptions, IsEmpty());
}

TEST_F(ExceptionsTest, GuardLogsWhatIsNotOfPython)
{
    EXPECT_FALSE(guarded([] { throw py::cast_error("a"); }));
    EXPECT_FALSE(guarded([] { throw std::runtime_error("b"); }));
    EXPECT_FALSE(guarded([] { throw 5; }));
    EXPECT_THAT(log.texts(QtCriticalMsg),
                ElementsAre(QStringLiteral("py::cast_error: a"), QStringLiteral("Std-Error: b"),
                            QStringLiteral("sonst irgendein Fehler")));
    EXPECT_THAT(m_exceptions, IsEmpty());
}

TEST_F(ExceptionsTest, AReportThatFailsIsLogged)
{
    EXPECT_FALSE(guarded([] {
        py::exec("class Silent(Exception):\n    def __str__(self): raise ValueError()\n    args = ()\nraise "
                 "Silent()");
    }));
    EXPECT_TRUE(log.texts(QtCriticalMsg)
                    .constLast()
                    .startsWith(QStringLiteral("std::exception während handle_py_exception(): ")));
    EXPECT_THAT(m_exceptions, IsEmpty());
    EXPECT_EQ(PyErr_Occurred(), nullptr);
}

TEST_F(ExceptionsTest, TextIsThatOfTheFirstArgument)
{
    struct Row
    {
        const char *statement;
        const char *text;
    };
    constexpr Row rows[] = {
        {"raise ValueError('Text', 2)", "Text"},
        {"raise ValueError(5)", "5"},
        {"raise KeyError('k')", "k"},
        {"raise OSError(2, 'weg')", "2"},
        {"raise type('E', (Exception,), {'args': ['aus', 'Liste']})()", "aus"},
    };
    for (const Row &row : rows) {
        report(row.statement);
        EXPECT_EQ(recorded("text"), QString::fromUtf8(row.text)) << row.statement;
    }
    EXPECT_THAT(log.texts(QtWarningMsg), IsEmpty());
}

TEST_F(ExceptionsTest, TheLogHasAllThatPythonWouldPrint)
{
    struct Row
    {
        const char *statement;
        QList<QByteArray> logged;
    };
    const Row rows[] = {
        {"raise OSError(28, 'No space left on device', 'db')",
         {"Traceback (most recent call last):", "OSError: [Errno 28] No space left on device: 'db'"}},
        {"try:\n    1 / 0\nexcept ZeroDivisionError as cause:\n    raise ValueError('Folge') from cause",
         {"ZeroDivisionError: division by zero", "direct cause", "ValueError: Folge"}},
        {"raise ExceptionGroup('Gruppe', [ValueError('eins'), KeyError('zwei')])",
         {"ExceptionGroup: Gruppe (2 sub-exceptions)", "ValueError: eins", "KeyError: 'zwei'"}},
        {"error = ValueError('mit')\nerror.add_note('Notiz')\nraise error", {"ValueError: mit\nNotiz"}},
        {"compile('a = = 1', 'kaputt.py', 'exec')",
         {"File \"kaputt.py\", line 1", "a = = 1", "^", "SyntaxError: invalid syntax"}},
    };
    for (const Row &row : rows) {
        report(row.statement);
        const QString logged = log.texts(QtCriticalMsg).constLast();
        for (const QByteArray &part : row.logged) {
            EXPECT_TRUE(logged.contains(QString::fromUtf8(part)))
                << part.constData() << " in " << qPrintable(logged);
        }
    }
    EXPECT_THAT(log.texts(QtCriticalMsg), testing::SizeIs(std::size(rows)));
}

TEST_F(ExceptionsTest, ATracebackThatCannotBeWrittenKeepsNothingBack)
{
    py::exec(
        "import traceback; format_exception = traceback.format_exception; traceback.format_exception = None");
    report("raise ValueError('trotzdem')");
    py::exec("traceback.format_exception = format_exception");
    EXPECT_EQ(recorded("text"), QStringLiteral("trotzdem"));
    EXPECT_EQ(
        log.texts(QtWarningMsg),
        QStringList({QStringLiteral("Konnte den Traceback nicht ausgeben: TypeError: 'NoneType' object is "
                                    "not callable")}));
}

TEST_F(ExceptionsTest, WithoutArgumentsTheTextIsThatOfTheException)
{
    report("raise ValueError()");
    ASSERT_EQ(log.texts(QtWarningMsg).size(), 1);
    EXPECT_TRUE(log.texts(QtWarningMsg)
                    .constFirst()
                    .startsWith(QStringLiteral("Konnte den Fehlertext nicht aus args[0] bekommen: ")));
    EXPECT_EQ(recorded("text"), QString());
    report("class Plain(Exception):\n    def __str__(self): return 'von str'\nraise Plain()");
    EXPECT_EQ(recorded("text"), QStringLiteral("von str"));
}

TEST_F(ExceptionsTest, RecordHasTheTraceOutermostCallFirst)
{
    const QTemporaryDir directory;
    const QString current = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(directory.path()));
    ASSERT_TRUE(QDir(directory.path()).mkdir(QStringLiteral("sub")));
    QFile file(QStringLiteral("sub/broken.py"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("def inner():\n    raise ValueError('tief')\n\ndef outer():\n    inner()\n");
    file.close();
    py::exec("import sys; sys.path.insert(0, 'sub')");
    report("import broken; broken.outer()");
    const QString root = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(current));

    EXPECT_EQ(record().keys(),
              QStringList({QStringLiteral("root"), QStringLiteral("text"), QStringLiteral("trace"),
                           QStringLiteral("type"), QStringLiteral("withTraceback")}));
    EXPECT_EQ(recorded("root"), root);
    EXPECT_EQ(recorded("withTraceback"), true);
    const QVariantList trace = recorded("trace").toList();
    ASSERT_EQ(trace.size(), 3);
    EXPECT_EQ(trace.at(0).toMap().value(QStringLiteral("func")), QStringLiteral("<module>"));
    EXPECT_EQ(trace.at(2).toMap(),
              QVariantMap({{QStringLiteral("lineNo"), 2},
                           {QStringLiteral("lineStr"), QStringLiteral("raise ValueError('tief')")},
                           {QStringLiteral("func"), QStringLiteral("inner")},
                           {QStringLiteral("pathAbs"), root + QStringLiteral("/sub/broken.py")},
                           {QStringLiteral("pathRel"), QStringLiteral("sub/broken.py")},
                           {QStringLiteral("file"), QStringLiteral("broken.py")}}));
    EXPECT_EQ(trace.at(1).toMap().value(QStringLiteral("lineNo")), 5);
}

TEST_F(ExceptionsTest, AFileOutsideTheCurrentDirectoryHasARelativePathUpwards)
{
    report("import json; json.loads('{')");
    const QVariantMap frame = recorded("trace").toList().constLast().toMap();
    EXPECT_TRUE(frame.value(QStringLiteral("pathRel")).toString().startsWith(QStringLiteral("../")));
    EXPECT_EQ(frame.value(QStringLiteral("file")), QStringLiteral("decoder.py"));
}

TEST_F(ExceptionsTest, WithoutATracebackThereIsNoTrace)
{
    PyErr_SetString(PyExc_ValueError, "ohne Spur");
    py::error_already_set error;
    handle_py_exception(&error, 0, nullptr);
    EXPECT_EQ(recorded("withTraceback"), false);
    EXPECT_FALSE(record().contains(QStringLiteral("trace")));
    EXPECT_EQ(recorded("text"), QStringLiteral("ohne Spur"));
}

TEST_F(ExceptionsTest, WithoutAnExceptionThereIsAWarning)
{
    handle_py_exception(nullptr, 0, nullptr);
    EXPECT_THAT(log.texts(QtWarningMsg),
                ElementsAre(QStringLiteral(
                    "handle_py_exception() wurde gerufen, obwohl keine Exception geworfen wurde")));
    EXPECT_THAT(m_exceptions, IsEmpty());
}
