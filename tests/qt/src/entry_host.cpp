#include "brovik/gui/gui.h"
#include "src/application.h"

#include <QCoreApplication>
#include <QFile>
#include <QGuiApplication>
#include <QQuickWindow>

#include <cstdio>

// The program with the paths of a test, telling on stdout what its start does to Gui. The backend ends it
// with Gui.set_pico_return_value(code), and lets the GUI thread stand with Gui.set_pico_stdout(fifo) until
// somebody opens that for writing.

namespace {

void tell(const char *what, const QString &value)
{
    std::printf("%s: %s\n", what, qUtf8Printable(value));
}

void waitFor(const QString &fifo)
{
    std::printf("GUI stands\n");
    QFile(fifo).open(QIODevice::ReadOnly);
}

/// Tells once when a window has been drawn.
void observeFrames()
{
    QObject::connect(qGuiApp, &QGuiApplication::focusWindowChanged, qGuiApp, [](QWindow *window) {
        if (auto *screen = qobject_cast<QQuickWindow *>(window)) {
            const auto tellFrame = [] { std::printf("frame\n"); };
            QObject::connect(screen, &QQuickWindow::frameSwapped, screen, tellFrame,
                             Qt::ConnectionType(Qt::DirectConnection | Qt::SingleShotConnection));
            screen->update();
        }
    });
}

void observe(Gui &gui)
{
    const auto direct = Qt::DirectConnection;
    QObject::connect(
        &gui, &Gui::titleChanged, &gui,
        [&] {
            tell("title", gui.title());
            observeFrames();
        },
        direct);
    QObject::connect(
        &gui, &Gui::fullscreenChanged, &gui, [] { tell("fullscreen", QString()); }, direct);
    QObject::connect(
        &gui, &Gui::darkThemeEnabledChanged, &gui, [] { tell("dark", QString()); }, direct);
    QObject::connect(
        &gui, &Gui::message, &gui,
        [](const QString &title, const QString &text, const QString &category, int id) {
            tell("message", QStringList{title, text, category, QString::number(id)}.join(QLatin1Char('|')));
        },
        direct);
    QObject::connect(
        &gui, &Gui::setPicoReturnValue, &gui,
        [](int code) {
            QMetaObject::invokeMethod(
                qApp, [code] { QCoreApplication::exit(code); }, Qt::QueuedConnection);
        },
        direct);
    QObject::connect(
        &gui, &Gui::setPicoStderr, &gui,
        [&] { QMetaObject::invokeMethod(&gui, &Gui::deleteWarnings, Qt::QueuedConnection); }, direct);
    QObject::connect(
        &gui, &Gui::setPicoStdout, &gui,
        [](const QString &fifo) {
            QMetaObject::invokeMethod(
                qApp, [fifo] { waitFor(fifo); }, Qt::QueuedConnection);
        },
        direct);
}

} // namespace

int main(int argc, char **argv)
{
    observe(Gui::instance());
    if (qEnvironmentVariableIsSet("TEST_NO_SCREEN")) {
        Q_CLEANUP_RESOURCE(main_module_raw_qml_0);
    }
    return runApplication(argc, argv,
                          {.backendDir = qEnvironmentVariable("TEST_BACKEND_DIR"),
                           .interpreter = qEnvironmentVariable("TEST_PYTHON"),
                           .environmentFile = qEnvironmentVariable("TEST_ENVIRONMENT"),
                           .raiseSocket = qEnvironmentVariable("TEST_SOCKET"),
                           .settingsRoot = {}});
}
