#include "src/application.h"
#include "src/command_line.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace {

/// Tests put other paths in place of the demo machine's.
QString pathOr(const char *variable, const QString &standard)
{
    return qEnvironmentVariable(variable, standard);
}

/// The demo machine that belongs to the program, wherever both were installed or built.
QString demoMachine()
{
    const QDir programs(QFileInfo(QStringLiteral("/proc/self/exe")).canonicalPath());
    const QFileInfo machine(QDir::cleanPath(programs.filePath(QStringLiteral(KUBELOR_DEMO_DIR))));
    return machine.exists() ? machine.canonicalFilePath() : machine.filePath();
}

PlatformPaths demoPaths()
{
    const QString configuration = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return {
        .backendDir = pathOr("KUBELOR_DEMO_BACKEND", demoMachine()),
        .interpreter = QStringLiteral(KUBELOR_DEMO_PYTHON),
        .environmentFile = pathOr("KUBELOR_DEMO_ENVIRONMENT", QString()),
        .raiseSocket = pathOr("KUBELOR_DEMO_SOCKET", configuration + QStringLiteral("/kubelor-demo.sock")),
        .settingsRoot = configuration + QStringLiteral("/kubelor-demo"),
    };
}

/// In a stub run Python writes the stub files when it starts, whatever the backend is: see the folder.
void letPythonWriteStubs(int argc, char **argv)
{
    const QStringList arguments(argv + 1, argv + argc);
    if (splitArguments(arguments, {}).qt.contains(QLatin1String("--make-stubs"))) {
        const QString others = qEnvironmentVariable("PYTHONPATH");
        const QString folder = demoMachine() + QStringLiteral("/tools/stub_run");
        qputenv("PYTHONPATH", QFile::encodeName(others.isEmpty() ? folder : folder + u':' + others));
    }
}

} // namespace

/// The program with the demo machine as its backend. Needs no root and leaves the system
/// alone.
int main(int argc, char **argv)
{
    letPythonWriteStubs(argc, argv);
    return runApplication(argc, argv, demoPaths());
}
