#include "shared/log.h"

#include <gmock/gmock.h>

#include <QMessageLogContext>

#include <csignal>
#include <cstdarg>
#include <string>
#include <vector>

using testing::ElementsAre;
using testing::FieldsAre;

namespace {

struct Line
{
    QtMsgType level;
    const char *category;
    const char *file;
    std::string text;
};

std::vector<Line> lines;

class LogTest : public testing::Test
{
protected:
    LogTest()
        : m_previous(qInstallMessageHandler(
              [](QtMsgType type, const QMessageLogContext &context, const QString &text) {
                  lines.push_back({type, context.category, context.file, text.toStdString()});
              }))
    {
        lines.clear();
    }
    ~LogTest() override { qInstallMessageHandler(m_previous); }

private:
    QtMessageHandler m_previous;
};

} // namespace

TEST_F(LogTest, PrintfFunctionsLogAtTheirLevelInTheNativeCategoryWithoutALocation)
{
    logDebug("%s %d", "a", 1);
    logInfo("%s", "b");
    logWarning("%5.2f", 1.5);
    logCritical("%c", 'd');
    EXPECT_THAT(lines, ElementsAre(FieldsAre(QtDebugMsg, nativeLogCategory, nullptr, "a 1"),
                                   FieldsAre(QtInfoMsg, nativeLogCategory, nullptr, "b"),
                                   FieldsAre(QtWarningMsg, nativeLogCategory, nullptr, " 1.50"),
                                   FieldsAre(QtCriticalMsg, nativeLogCategory, nullptr, "d")));
    EXPECT_STREQ(nativeLogCategory, "default");
    EXPECT_STREQ(pythonLogCategory, "py");
}

TEST_F(LogTest, AFatalMessageIsFormattedBeforeTheProcessEnds)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto end = [] {
        qInstallMessageHandler(nullptr); // to the standard error output
        logFatal("%s %d %5.2f", "e", 5, 1.5);
    };
    EXPECT_EXIT(end(), testing::KilledBySignal(SIGABRT), "e 5  1.50");
}

TEST_F(LogTest, PercentSignsOfTheTextAreHarmless)
{
    logInfo("%s", "100 % %n %s");
    EXPECT_EQ(lines.at(0).text, "100 % %n %s");
}

TEST_F(LogTest, LongAndForeignTextsStayWhole)
{
    const std::string text = std::string(1'000'000, 'x') + "ä€😀";
    logInfo("%s", text.c_str());
    EXPECT_EQ(lines.at(0).text, text);
}

TEST_F(LogTest, AFormatThatCannotBeAppliedIsReportedAtTheSameLevel)
{
    logWarning("%ls", L"\xD800"); // half a pair
    EXPECT_THAT(lines, ElementsAre(FieldsAre(QtWarningMsg, nativeLogCategory, nullptr,
                                             "Konnte die Nachricht nicht formatieren (%ls)")));
}

TEST_F(LogTest, StreamsSeparateByABlankAndQuoteTextsOfQt)
{
    debugStream() << "a" << 1 << QStringLiteral("b");
    infoStream() << "ä" << true;
    warningStream() << QStringLiteral("c") << 1.5;
    criticalStream() << "d"
                     << "e";
    EXPECT_THAT(lines, ElementsAre(FieldsAre(QtDebugMsg, nativeLogCategory, nullptr, "a 1 \"b\""),
                                   FieldsAre(QtInfoMsg, nativeLogCategory, nullptr, "ä true"),
                                   FieldsAre(QtWarningMsg, nativeLogCategory, nullptr, "\"c\" 1.5"),
                                   FieldsAre(QtCriticalMsg, nativeLogCategory, nullptr, "d e")));
}
