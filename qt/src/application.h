#pragma once

#include "src/platform_paths.h"

#include <QString>

/// Exports the variables of an environment file whose lines begin with "BROVIK"; a missing file is no error.
/// GUI thread, before other threads run.
void exportEnvironment(const QString &path);

/// Runs the program from start to end and gives the process's exit code. Once per process.
int runApplication(int argc, char **argv, const PlatformPaths &paths);
