// What the program reads at its start: the environment file, the service manager's variables, the command
// line and the settings file of the window. All of it may be anything.
#include "fuzzing.h"

#include "brovik/gui/gui.h"
#include "src/application.h"
#include "src/command_line.h"
#include "src/service_environment.h"
#include "src/window_settings.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QMap>
#include <QProcessEnvironment>
#include <QSettings>
#include <QTemporaryDir>

#include <algorithm>

namespace {

const QString organization = QStringLiteral("BrovikGmbH");
const QString program = QStringLiteral("Kubelor");

/// In memory if the system has such a folder; it lives as long as the process.
const QTemporaryDir *folder = nullptr;

void write(const QString &path, const std::string &content)
{
    QFile file(path);
    require(file.open(QIODevice::WriteOnly) && file.write(QByteArray::fromStdString(content)) >= 0,
            "a file is written", path);
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QMap<QString, QString> environment()
{
    const QProcessEnvironment all = QProcessEnvironment::systemEnvironment();
    QMap<QString, QString> result;
    for (const QString &name : all.keys()) {
        result.insert(name, all.value(name));
    }
    return result;
}

/// What a plain file exports, by a second way of reading it. An empty value is not told apart from none, so
/// that it does not make a variable, but empties one. Of other files, all that can be said is how names
/// begin.
QMap<QString, QString> plainlyExported(const std::string &content)
{
    QMap<QString, QString> result;
    for (const QByteArray &line : QByteArray::fromStdString(content).split('\n')) {
        const auto separator = line.indexOf('=');
        if (line.startsWith("BROVIK") && separator > 0 &&
            (separator + 1 < line.size() || result.contains(QString::fromLatin1(line.left(separator))))) {
            result.insert(QString::fromLatin1(line.left(separator)),
                          QString::fromLatin1(line.mid(separator + 1)));
        }
    }
    return result;
}

bool isPlain(const std::string &content)
{
    return std::all_of(content.begin(), content.end(),
                       [](char byte) { return byte == '\n' || (byte >= ' ' && byte < 0x7f); });
}

void checkEnvironmentFile(FuzzedDataProvider &data)
{
    const std::string content = data.ConsumeRemainingBytesAsString();
    const QString path = folder->filePath(QStringLiteral("environment"));
    write(path, content);
    const QMap<QString, QString> before = environment();
    exportEnvironment(path);
    QMap<QString, QString> exported = environment();
    for (auto old = before.begin(); old != before.end(); ++old) {
        require(exported.take(old.key()) == old.value(), "other variables stay", old.key());
    }
    for (auto made = exported.begin(); made != exported.end(); ++made) {
        require(made.key().startsWith(QStringLiteral("BROVIK")), "what is exported begins with the prefix",
                made.key());
    }
    require(!isPlain(content) || exported == plainlyExported(content), "each line is exported as it stands",
            exported);
    for (auto made = exported.begin(); made != exported.end(); ++made) {
        qunsetenv(QFile::encodeName(made.key()).constData());
    }
    require(environment() == before, "a run leaves nothing behind");
}

/// What an environment can hold.
QByteArray consumeVariable(FuzzedDataProvider &data)
{
    QByteArray value = QByteArray::fromStdString(data.ConsumeRandomLengthString(40));
    return value.replace('\0', ' ');
}

void checkServiceEnvironment(FuzzedDataProvider &data)
{
    const QByteArray socket = consumeVariable(data);
    qputenv("NOTIFY_SOCKET", socket);
    qputenv("WATCHDOG_PID", data.ConsumeBool() ? QByteArray::number(QCoreApplication::applicationPid())
                                               : consumeVariable(data));
    qputenv("WATCHDOG_USEC", consumeVariable(data));
    const ServiceEnvironment taken = ServiceEnvironment::take();
    require(taken.notifySocket == socket, "the socket as it stands", socket);
    using std::chrono::milliseconds;
    require(taken.watchdog == milliseconds(0) || (!socket.isEmpty() && taken.watchdog >= milliseconds(1) &&
                                                  taken.watchdog <= std::chrono::hours(24)),
            "a period that a timer can count", taken.watchdog.count());
    for (const char *name : {"NOTIFY_SOCKET", "WATCHDOG_PID", "WATCHDOG_USEC"}) {
        require(!qEnvironmentVariableIsSet(name), "no child sees the manager's variables", name);
    }
}

void checkCommandLine(FuzzedDataProvider &data)
{
    const QString interpreter = QStringLiteral("/venv/bin/python3");
    QStringList arguments{QStringLiteral("program")};
    while (data.remaining_bytes() > 0 && arguments.size() < 12) {
        arguments.append(consumeText(data, 24));
    }
    const SplitArguments split = splitArguments(arguments, interpreter);
    require(split.python.value(0) == interpreter, "Python is told its interpreter");
    const QStringList toPython = split.python.mid(1);
    const auto separator = std::find_if(arguments.begin(), arguments.end(), [](const QString &argument) {
        return argument == QStringLiteral("-") || argument == QStringLiteral("--");
    });
    require(split.qt == QStringList(arguments.begin(), separator), "the program's half", split.qt);
    require(toPython ==
                (separator == arguments.end() ? QStringList() : QStringList(separator + 1, arguments.end())),
            "Python's half", toPython);

    CommandLine commandLine;
    commandLine.parse(split.qt);
    require(commandLine.isValid() == commandLine.errorText().isEmpty(), "an error has a text",
            commandLine.errorText());
    const bool hasOptions = std::any_of(split.qt.begin(), split.qt.end(),
                                        [](const QString &argument) { return argument.startsWith(u'-'); });
    require(hasOptions || (commandLine.isValid() && !commandLine.fullscreen() && !commandLine.makeStubs()),
            "without options nothing happens", split.qt);
    require(!split.qt.contains(QStringLiteral("-f")) || commandLine.fullscreen(), "a known option counts",
            split.qt);
    require(!split.qt.contains(QStringLiteral("--make-stubs")) || commandLine.makeStubs(),
            "a known option counts", split.qt);
}

void checkWindowSettings(FuzzedDataProvider &data)
{
    // Another folder each time: the files that were read once are remembered.
    static int run = 0;
    const QString root = folder->filePath(QStringLiteral("settings%1").arg(++run));
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, root);
    const QDir directory(root + u'/' + organization);
    directory.mkpath(QStringLiteral("."));
    const QString path = directory.filePath(program + QStringLiteral(".ini"));
    const std::string content = data.ConsumeRemainingBytesAsString();
    write(path, content);
    Gui::instance().setDarkThemeEnabled(false);

    readWindowSettings();

    require(qEnvironmentVariable("BROVIK_CONFIG_DIR") == directory.path(), "the folder is exported",
            directory.path());
    const QStringList files = directory.entryList(QDir::Files);
    require(files.size() == 1, "there is one file", files);
    require(contentOf(directory.filePath(files.first())) == QByteArray::fromStdString(content),
            "nothing of it is lost");
    const bool isAside = !QFile::exists(path);
    require(!isAside || Gui::instance().darkThemeEnabled(), "the default holds without a file");
    require(isAside || QSettings().status() == QSettings::NoError, "a file that is kept can be read");
    QDir(root).removeRecursively();
    qunsetenv("BROVIK_CONFIG_DIR"); // a file may export it, too
}

} // namespace

void fuzzingBegins()
{
    const QString memory = QStringLiteral("/dev/shm");
    folder = QFile::exists(memory) ? new QTemporaryDir(memory + QStringLiteral("/kubelor-fuzz"))
                                   : new QTemporaryDir;
    std::atexit([] { delete folder; });
    QCoreApplication::setOrganizationName(organization);
    QCoreApplication::setApplicationName(program);
    QSettings::setDefaultFormat(QSettings::IniFormat);
    Gui::instance().deliverPending();
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    FuzzedDataProvider data(bytes, size);
    switch (data.ConsumeIntegralInRange(0, 3)) {
    case 0:
        checkEnvironmentFile(data);
        break;
    case 1:
        checkServiceEnvironment(data);
        break;
    case 2:
        checkCommandLine(data);
        break;
    default:
        checkWindowSettings(data);
    }
    return 0;
}
