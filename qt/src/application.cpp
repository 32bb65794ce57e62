#include "src/application.h"

#include "shared/gui_thread.h"
#include "shared/log.h"
#include "shared/screen_engine.h"
#include "src/end_watch.h"
#include "src/identity.h"
#include "src/instance_guard.h"
#include "src/message_handler.h"
#include "src/py/bridge.h"
#include "src/py/singletons.h"
#include "src/service_watch.h"
#include "src/standard_streams.h"

#include "brovik/gpio/gpio.h"
#include "brovik/gui/gui.h"
#include "brovik/gui/window_memory.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QSettings>
#include <QTextStream>

#include <cstdio>
#include <utility>

namespace {

constexpr int exitAlreadyRunning = 100;
constexpr int exitNoMainScreen = -1;

void setIdentity(const PlatformPaths &paths)
{
    QCoreApplication::setOrganizationName(QLatin1String(identity::organization));
    QCoreApplication::setOrganizationDomain(QLatin1String(identity::organizationDomain));
    QCoreApplication::setApplicationName(QLatin1String(identity::name));
    QSettings::setDefaultFormat(QSettings::IniFormat);
    if (!paths.settingsRoot.isEmpty()) {
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, paths.settingsRoot);
    }
    QCoreApplication::setApplicationVersion(QLatin1String(identity::version));
}

/// Renames a settings file that cannot be parsed, since what was read of it may be wrong as well. Shows the
/// new name once the screens are loaded.
void putDamagedSettingsAside()
{
    const QSettings settings;
    settings.allKeys(); // a group is parsed when somebody looks into it
    if (settings.status() != QSettings::FormatError) {
        return;
    }
    const QString file = settings.fileName();
    const QString stamp = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-hhmmss-zzz"));
    const QString aside = QStringLiteral("%1.damaged-%2").arg(file, stamp);
    const bool moved = QFile::rename(file, aside);
    const QString text =
        QStringLiteral("Die Datei %1 ist beschädigt. Für das Fenster gelten die Standardwerte.").arg(file) +
        (moved ? QStringLiteral(" Die beschädigte Datei liegt nun in %1.").arg(aside) : QString());
    criticalStream().noquote() << text;
    Gui::instance().showMessage(QStringLiteral("Einstellungen"), text.toHtmlEscaped(),
                                QStringLiteral("error"));
}

void readSettings()
{
    putDamagedSettingsAside();
    const QSettings settings;
    const std::optional<QByteArray> content = WindowMemory::read(settings.fileName());
    if (content && content->contains('=') && settings.allKeys().isEmpty()) {
        // It has failed to read, and takes that for a file that is not there.
        criticalStream().noquote()
            << QStringLiteral("Die Datei %1 wurde nicht gelesen. Für das Fenster gelten die Standardwerte.")
                   .arg(settings.fileName());
    }
    qputenv("BROVIK_CONFIG_DIR", QFileInfo(settings.fileName()).path().toLocal8Bit());
    Gui::instance().setDarkThemeEnabled(settings.value(QStringLiteral("window/dark"), true).toBool());
}

/// The options of the program.
class CommandLine
{
public:
    CommandLine()
    {
        m_parser.setApplicationDescription(QLatin1String(identity::title));
        m_help = std::make_unique<QCommandLineOption>(m_parser.addHelpOption());
        m_version = std::make_unique<QCommandLineOption>(m_parser.addVersionOption());
        m_parser.addOptions({m_fullscreen, m_pointingHandCursor, m_makeStubs});
    }

    void parse(const QStringList &arguments) { m_valid = m_parser.parse(arguments); }

    /// Ends the process if help or version is asked for.
    void answerQuestions()
    {
        if (m_parser.isSet(*m_help)) {
            m_parser.showHelp(0);
        }
        if (m_parser.isSet(*m_version)) {
            m_parser.showVersion();
        }
    }

    bool isValid() const { return m_valid; }
    bool fullscreen() const { return m_parser.isSet(m_fullscreen); }
    bool makeStubs() const { return m_parser.isSet(m_makeStubs); }
    QString errorText() const { return m_parser.errorText(); }

private:
    QCommandLineParser m_parser;
    std::unique_ptr<QCommandLineOption> m_help;
    std::unique_ptr<QCommandLineOption> m_version;
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

void reportInvalidParameters(const QString &errorText)
{
    const QString text =
        QStringLiteral(
            "Beim Programmstart wurden ungültige Parameter übergeben:<br>%1<br><br><b>Falls dieser "
            "Fehler im Produktivbetrieb auftritt, bitte der Firma Brovik Bescheid geben.</b>")
            .arg(errorText.toHtmlEscaped());
    Q_EMIT Gui::instance().message(QStringLiteral("Ungültige(r) Parameter"), text, QStringLiteral("warning"));
}

void loadScreens(QApplication &application)
{
    QQuickStyle::setStyle(QStringLiteral("Material"));
    screenEngine = std::make_unique<QQmlApplicationEngine>();
    screenEngine->addImportPath(QStringLiteral(":/"));
    QObject::connect(
        screenEngine.get(), &QQmlApplicationEngine::objectCreationFailed, &application,
        [] { QCoreApplication::exit(exitNoMainScreen); }, Qt::QueuedConnection);
    screenEngine->load(QStringLiteral("qrc:/main/main/Main.qml"));
    Gui::instance().deliverPending();
}

/// Null if the screens could not be loaded.
QQuickWindow *mainWindow()
{
    return qobject_cast<QQuickWindow *>(screenEngine->rootObjects().value(0));
}

void unloadScreens()
{
    // What still runs must find no engine rather than one that is being taken down.
    const std::unique_ptr<QQmlApplicationEngine> engine = std::exchange(screenEngine, nullptr);
}

/// What goes along with every stop of the interpreter. The GPIO thread ends first, and once more if the
/// backend has started it until its own end: no callback may come when the singletons are gone.
void hookToStop(Bridge &bridge, EndWatch &endWatch, ServiceWatch &service)
{
    const auto stopGpio = [] { GPIO::instance().stopThread(); };
    bridge.addPreStopHook([&endWatch] { endWatch.begin(); });
    bridge.addPreStopHook([&service] { service.excuse(); });
    bridge.addPreStopHook(stopGpio);
    bridge.addPostStopHook(stopGpio);
    bridge.addPostStopHook([&service] { service.pythonEnded(); });
    bridge.addPostStopHook([&endWatch] { endWatch.finish(); });
}

int runScreens(QApplication &application, ServiceWatch &service, const CommandLine &commandLine,
               const PlatformPaths &paths)
{
    Gui::instance().setTitle(QLatin1String(identity::title));
    if (raiseRunningInstance(paths.raiseSocket)) {
        return exitAlreadyRunning;
    }
    loadScreens(application);
    service.watchWindow(mainWindow());
    if (!commandLine.isValid()) {
        reportInvalidParameters(commandLine.errorText());
    }
    const int result = QApplication::exec();
    unloadScreens();
    return result;
}

} // namespace

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

void exportEnvironment(const QString &path)
{
    Q_ASSERT(onGuiThread());
    QFile file(path);
    if (!file.exists() || !file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        return;
    }
    QTextStream stream(&file);
    QString line;
    while (stream.readLineInto(&line)) {
        const qsizetype separator = line.indexOf(QLatin1Char('='));
        if (separator < 0 || !line.startsWith(QLatin1String("BROVIK"))) {
            continue;
        }
        const QByteArray name = line.left(separator).toLocal8Bit();
        const QByteArray value = line.mid(separator + 1).toLocal8Bit();
        if (qgetenv(name.constData()) != value) {
            qputenv(name.constData(), value);
        }
    }
}

int runApplication(int argc, char **argv, const PlatformPaths &paths)
{
    secureStandardStreams();
    createSingletons();
    installMessageHandler();
    std::setbuf(stdout, nullptr);
    std::setbuf(stderr, nullptr);
    exportEnvironment(paths.environmentFile);
    const ServiceEnvironment serviceEnvironment = ServiceEnvironment::take();
    qputenv("QT_IM_MODULE", "qtvirtualkeyboard");
    setIdentity(paths);
    debugStream() << "BROVIK_VERSION:" << QString::fromLatin1(identity::version);
    readSettings();

    QApplication application(argc, argv);
    const SplitArguments arguments = splitArguments(QCoreApplication::arguments(), paths.interpreter);
    CommandLine commandLine;
    commandLine.parse(arguments.qt);
    commandLine.answerQuestions();
    Gui::instance().setFullscreen(commandLine.fullscreen());

    EndWatch endWatch;
    ServiceWatch service(serviceEnvironment);
    Bridge bridge(arguments.python, commandLine.makeStubs(), paths.backendDir);
    hookToStop(bridge, endWatch, service);
    service.watchBackend(bridge);
    Gui::instance().setBackendControl(&bridge);
    const int result = commandLine.makeStubs() ? 0 : runScreens(application, service, commandLine, paths);
    service.end();
    Gui::instance().setBackendControl(nullptr);
    return result;
}
