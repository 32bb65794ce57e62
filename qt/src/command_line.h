#pragma once

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QStringList>

/// The command line's two halves, split at the first bare "-" or "--".
struct SplitArguments
{
    /// The program's path and the options of the program.
    QStringList qt;
    /// The interpreter's path and all that is meant for Python.
    QStringList python;
};

/// Splits the program's arguments; `interpreter` becomes Python's first one.
SplitArguments splitArguments(const QStringList &arguments, const QString &interpreter);

/// The options of the program. One thread.
class CommandLine
{
public:
    CommandLine();

    void parse(const QStringList &arguments) { m_valid = m_parser.parse(arguments); }

    /// Ends the process if help or version is asked for.
    void answerQuestions();

    /// False if some of the arguments are unknown; the others count all the same.
    bool isValid() const { return m_valid; }
    /// What is wrong with them, as plain text.
    QString errorText() const { return m_parser.errorText(); }
    bool fullscreen() const { return m_parser.isSet(m_fullscreen); }
    bool makeStubs() const { return m_parser.isSet(m_makeStubs); }

private:
    QCommandLineParser m_parser;
    const QCommandLineOption m_help;
    const QCommandLineOption m_version;
    const QCommandLineOption m_fullscreen{QStringLiteral("f"),
                                          QStringLiteral("Startet die Anwendung im Fullscreen-Modus")};
    const QCommandLineOption m_pointingHandCursor{
        QStringLiteral("pointing-hand-cursor"),
        QStringLiteral(
            "Verwende den PointingHandCursor als Standard-Cursor (experimentell - Cursor kann von der "
            "Anwendung nicht mehr geändert werden)")};
    const QCommandLineOption m_makeStubs{QStringLiteral("make-stubs"),
                                         QStringLiteral("Erstelle die Python Stub-Files (*.pyi)")};
    bool m_valid = false;
};
