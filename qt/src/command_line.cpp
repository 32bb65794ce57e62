#include "src/command_line.h"

#include "src/identity.h"

SplitArguments splitArguments(const QStringList &arguments, const QString &interpreter)
{
    SplitArguments split{.qt = {}, .python = {interpreter}};
    bool forPython = false;
    for (const QString &argument : arguments) {
        if (!forPython && (argument == QLatin1String("-") || argument == QLatin1String("--"))) {
            forPython = true;
            continue;
        }
        (forPython ? split.python : split.qt).append(argument);
    }
    return split;
}

CommandLine::CommandLine()
    : m_help(m_parser.addHelpOption())
    , m_version(m_parser.addVersionOption())
{
    m_parser.setApplicationDescription(QLatin1String(identity::title));
    m_parser.addOptions({m_fullscreen, m_pointingHandCursor, m_makeStubs});
}

void CommandLine::answerQuestions()
{
    if (m_parser.isSet(m_help)) {
        m_parser.showHelp(0);
    }
    if (m_parser.isSet(m_version)) {
        m_parser.showVersion();
    }
}
