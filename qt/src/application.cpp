#include "src/application.h"

#include "shared/gui_thread.h"
#include "shared/log.h"
#include "shared/screen_engine.h"
#include "src/command_line.h"
#include "src/end_watch.h"
#include "src/exit_guard.h"
#include "src/forked_children.h"
#include "src/identity.h"
#include "src/instance_guard.h"
#include "src/message_handler.h"
#include "src/py/bridge.h"
#include "src/py/singletons.h"
#include "src/service_watch.h"
#include "src/shared_environment.h"
#include "src/standard_streams.h"
#include "src/window_settings.h"

#include "brovik/gpio/gpio.h"
#include "brovik/gui/gui.h"

#include <QApplication>
#include <QFile>
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

/// The texture that small pictures share. Here these are icons, which have room in a quarter of the usual
/// four megabytes.
void limitTextureAtlas()
{
    for (const char *name : {"QSG_ATLAS_WIDTH", "QSG_ATLAS_HEIGHT"}) {
        if (!qEnvironmentVariableIsSet(name)) {
            qputenv(name, "512");
        }
    }
}

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
    shareEnvironment();
    createSingletons();
    installMessageHandler();
    std::setbuf(stdout, nullptr);
    std::setbuf(stderr, nullptr);
    exportEnvironment(paths.environmentFile);
    const ServiceEnvironment serviceEnvironment = ServiceEnvironment::take();
    qputenv("QT_IM_MODULE", "qtvirtualkeyboard");
    limitTextureAtlas();
    setIdentity(paths);
    debugStream() << "BROVIK_VERSION:" << QString::fromLatin1(identity::version);
    readWindowSettings();

    QApplication application(argc, argv);
    setForksApart();
    const SplitArguments arguments = splitArguments(QCoreApplication::arguments(), paths.interpreter);
    CommandLine commandLine;
    commandLine.parse(arguments.qt);
    commandLine.answerQuestions();
    Gui::instance().setFullscreen(commandLine.fullscreen());

    EndWatch endWatch;
    ServiceWatch service(serviceEnvironment);
    Bridge bridge(arguments.python, commandLine.makeStubs(), paths.backendDir);
    hookToStop(bridge, endWatch, service);
    const ExitGuard exitGuard([&endWatch](const char *cause) { endWatch.limit(cause); },
                              [&service, &bridge] {
                                  service.end();
                                  bridge.stopPython();
                              });
    service.watchBackend(bridge);
    Gui::instance().setBackendControl(&bridge);
    const int result = commandLine.makeStubs() ? 0 : runScreens(application, service, commandLine, paths);
    service.end();
    Gui::instance().setBackendControl(nullptr);
    return result;
}
