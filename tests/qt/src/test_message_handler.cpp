#include "src/message_handler.h"

#include "shared/log.h"

#include <gmock/gmock.h>

#include <QQmlComponent>
#include <QQmlEngine>

#include <clocale>
#include <memory>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

constexpr qint64 minute = 60'000;

QMessageLogContext from(const char *category, const char *file = nullptr, int line = 0,
                        const char *function = nullptr)
{
    return {file, line, function, category};
}

std::string lineOf(QtMsgType type, const QMessageLogContext &context, const char *text,
                   qint64 runTimeMs = 1'002)
{
    return formatLogLine(type, context, QString::fromUtf8(text), runTimeMs,
                         QStringLiteral("2025-05-21 13:14:15"))
        .toStdString();
}

std::string nativeLine(const char *text, qint64 runTimeMs)
{
    return lineOf(QtInfoMsg, from(nativeLogCategory), text, runTimeMs);
}

/// What the handler prints while `statement` runs.
template <typename Statement> std::string printedBy(const Statement &statement)
{
    testing::internal::CaptureStderr();
    const QtMessageHandler previous = qInstallMessageHandler(nullptr);
    installMessageHandler();
    statement();
    qInstallMessageHandler(previous);
    return testing::internal::GetCapturedStderr();
}

} // namespace

TEST(LogLine, LevelsHaveTheirTags)
{
    const std::vector<std::pair<QtMsgType, std::string>> rows = {
        {QtDebugMsg, "[DEBUG]"},    {QtInfoMsg, "[INFO ]"},  {QtWarningMsg, "[WARN ]"},
        {QtCriticalMsg, "[CRIT ]"}, {QtFatalMsg, "[FATAL]"},
    };
    for (const auto &[type, tag] : rows) {
        EXPECT_EQ(lineOf(type, from(nativeLogCategory), "Text"), tag + "[2025-05-21 13:14:15][0:1:2] Text");
        EXPECT_EQ(lineOf(type, from(pythonLogCategory), "Text"),
                  tag + "[2025-05-21 13:14:15][0:1:2][Py] Text");
    }
}

TEST(LogLine, ATypeWithoutATagKeepsTheMarker)
{
    EXPECT_EQ(lineOf(static_cast<QtMsgType>(7), from(nativeLogCategory), "Text"),
              "%6[2025-05-21 13:14:15][0:1:2] Text");
}

TEST(LogLine, RunTimeIsPlainNumbersAndMinutesDoNotWrap)
{
    EXPECT_THAT(nativeLine("", 7), testing::HasSubstr("[0:0:7]"));
    EXPECT_THAT(nativeLine("", 3'007), testing::HasSubstr("[0:3:7]"));
    EXPECT_THAT(nativeLine("", 61 * minute + 2'500), testing::HasSubstr("[61:2:500]"));
    EXPECT_THAT(nativeLine("", 1500 * minute + 59'999), testing::HasSubstr("[1500:59:999]"));
}

TEST(LogLine, PythonIsKnownByTheConstantAndNotByItsText)
{
    const std::string sameText = "py";
    EXPECT_EQ(lineOf(QtInfoMsg, from(sameText.c_str()), "x"), "[INFO ][2025-05-21 13:14:15][0:1:2] x");
}

TEST(LogLine, MarkersInTheTextTakePart)
{
    EXPECT_EQ(nativeLine("Wert %2", 61 * minute + 2'500), "%6[2025-05-21 13:14:15][2:500:[INFO ]] Wert 61");
    EXPECT_EQ(nativeLine("%0", 61 * minute + 2'500), "%6[2025-05-21 13:14:15][2:500:[INFO ]] 61");
    EXPECT_EQ(nativeLine("%L1", 61 * minute + 2'500), "%6[2025-05-21 13:14:15][2:500:[INFO ]] 61");
    EXPECT_EQ(nativeLine("%3", 61 * minute + 2'500), "[INFO ][2025-05-21 13:14:15][61:2:500] 61");
    EXPECT_EQ(nativeLine("zu 100 %", 7), "[INFO ][2025-05-21 13:14:15][0:0:7] zu 100 %");
    EXPECT_EQ(nativeLine("% d %s %%", 7), "[INFO ][2025-05-21 13:14:15][0:0:7] % d %s %%");
}

TEST(LogLine, ALocationIsAppended)
{
    EXPECT_EQ(lineOf(QtDebugMsg, from("qml", "a.qml", 12, "act"), "x"),
              "[DEBUG][2025-05-21 13:14:15][0:1:2] x (File: a.qml, Line: 12, Function: act)");
    EXPECT_EQ(lineOf(QtDebugMsg, from("qml", "a.qml", 12), "x"),
              "[DEBUG][2025-05-21 13:14:15][0:1:2] x (File: a.qml, Line: 12, Function: )");
}

TEST(MessageHandler, PrintsOneLineWithTheWallClock)
{
    const std::string printed = printedBy([] { logInfo("%s", "Grüße"); });
    EXPECT_THAT(printed,
                testing::MatchesRegex("\\[INFO \\]\\[[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2}\\]"
                                      "\\[[0-9]+:[0-9]+:[0-9]+\\] Grüße\n"));
}

TEST(MessageHandler, TheJournalGetsThePriorityOfEachLine)
{
    testing::internal::CaptureStderr();
    struct stat stream = {};
    fstat(STDERR_FILENO, &stream);
    qputenv("JOURNAL_STREAM",
            QByteArray::number(quint64(stream.st_dev)) + ':' + QByteArray::number(quint64(stream.st_ino)));
    const QtMessageHandler previous = qInstallMessageHandler(nullptr);
    installMessageHandler();
    logCritical("eins\nzwei %%");
    qunsetenv("JOURNAL_STREAM");
    installMessageHandler();
    logInfo("drei\nvier");
    qInstallMessageHandler(previous);
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
                testing::MatchesRegex("<3>\\[CRIT \\][^ ]* [^ ]* eins\n<3>zwei %\n"
                                      "\\[INFO \\][^ ]* [^ ]* drei\nvier\n"));
}

TEST(MessageHandler, ConsoleLogOfAScreenHasItsLocation)
{
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData("import QtQml\nQtObject {\n Component.onCompleted: console.log('hallo')\n}",
                      QUrl(QStringLiteral("qrc:/probe.qml")));
    const std::string printed = printedBy([&] { delete component.create(); });
    EXPECT_THAT(
        printed,
        testing::EndsWith(" hallo (File: qrc:/probe.qml, Line: 3, Function: expression for onCompleted)\n"));
}

TEST(MessageHandler, LinesOfSeveralThreadsDoNotMix)
{
    constexpr int threads = 4;
    constexpr int messages = 500;
    const std::string text(200, 'x');
    const std::string printed = printedBy([&] {
        std::vector<std::jthread> writers;
        for (int writer = 0; writer < threads; ++writer) {
            writers.emplace_back([&] {
                for (int count = 0; count < messages; ++count) {
                    logInfo("%s", text.c_str());
                }
            });
        }
    });
    const QStringList lines = QString::fromStdString(printed).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    EXPECT_EQ(lines.size(), threads * messages);
    for (const QString &line : lines) {
        ASSERT_TRUE(line.startsWith(QLatin1String("[INFO ]")) &&
                    line.endsWith(QString::fromStdString("] " + text)));
    }
}
