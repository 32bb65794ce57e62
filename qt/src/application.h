#pragma once

#include "src/platform_paths.h"

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

/// Exports the variables of an environment file whose lines begin with "BROVIK"; a missing file is no error.
/// GUI thread, before other threads run.
void exportEnvironment(const QString &path);

/// Runs the program from start to end and gives the process's exit code. Once per process.
int runApplication(int argc, char **argv, const PlatformPaths &paths);
