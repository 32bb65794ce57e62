#include "src/command_line.h"

#include <gmock/gmock.h>

#include <vector>

namespace {

const QString interpreter = QStringLiteral("/venv/bin/python3");

struct Split
{
    const char *name;
    QStringList arguments;
    QStringList qt;
    QStringList python;
};

QStringList list(const char *words)
{
    return QString::fromUtf8(words).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

} // namespace

TEST(SplitArguments, AtTheFirstBareSeparator)
{
    const std::vector<Split> rows = {
        {"none", list("program -f"), list("program -f"), {}},
        {"dash", list("program -f - --make-stubs"), list("program -f"), list("--make-stubs")},
        {"two dashes", list("program -- -f"), list("program"), list("-f")},
        {"later separators are Python's", list("program - a - -- b"), list("program"), list("a - -- b")},
        {"separator at the end", list("program -f --"), list("program -f"), {}},
        {"unknown arguments are kept", list("program x --y"), list("program x --y"), {}},
    };
    for (const Split &row : rows) {
        const SplitArguments split = splitArguments(row.arguments, interpreter);
        EXPECT_EQ(split.qt, row.qt) << row.name;
        EXPECT_EQ(split.python, QStringList{interpreter} + row.python) << row.name;
    }
}

TEST(CommandLine, OptionsAndErrors)
{
    struct Row
    {
        const char *arguments;
        bool fullscreen;
        bool makeStubs;
        bool isValid;
    };
    constexpr Row rows[] = {
        {"program", false, false, true},
        {"program -f", true, false, true},
        {"program --make-stubs --pointing-hand-cursor", false, true, true},
        {"program -x -f", true, false, false},
        {"program --make-stubs=1", false, true, false},
    };
    for (const Row &row : rows) {
        CommandLine commandLine;
        commandLine.parse(list(row.arguments));
        EXPECT_EQ(commandLine.fullscreen(), row.fullscreen) << row.arguments;
        EXPECT_EQ(commandLine.makeStubs(), row.makeStubs) << row.arguments;
        EXPECT_EQ(commandLine.isValid(), row.isValid) << row.arguments;
        EXPECT_EQ(commandLine.errorText().isEmpty(), row.isValid) << row.arguments;
    }
}
