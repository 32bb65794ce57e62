#include "backend.h"
#include "brovik/gui/gui.h"
#include "input.h"
#include "objects.h"
#include "src/py/brovik_module.h"

#include <pybind11/embed.h>

#include <QApplication>
#include <QQmlEngine>
#include <QQuickStyle>
#include <QSettings>
#include <QTemporaryDir>
#include <QtQuickTest>

/// Prepares each engine as the program does.
class Setup : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    void qmlEngineAvailable(QQmlEngine *engine) { engine->addImportPath(QStringLiteral(":/")); }
};

/// Runs the tests of one file: qml_tests -input FILE.
int main(int argc, char **argv)
{
    // No test may end the machine it runs on.
    qputenv("PATH", QUICK_TEST_SOURCE_DIR "/bin");
    QApplication application(argc, argv);
    // The window keeps its geometry in a settings file.
    const QTemporaryDir settings;
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings.path());
    QCoreApplication::setOrganizationName(QStringLiteral("test"));
    QQuickStyle::setStyle(QStringLiteral("Material"));
    registerBuiltInModules();
    const pybind11::scoped_interpreter interpreter(false);
    const pybind11::gil_scoped_release withoutGil;
    // The program says so when the main screen is loaded; messages then arrive at once.
    Gui::instance().deliverPending();
    Backend backend;
    qmlRegisterSingletonInstance("kubelor.test", 1, 0, "Backend", &backend);
    Input input;
    qmlRegisterSingletonInstance("kubelor.test", 1, 0, "Input", &input);
    Objects objects;
    qmlRegisterSingletonInstance("kubelor.test", 1, 0, "Objects", &objects);
    Setup setup;
    return quick_test_main_with_setup(argc, argv, "qml", QUICK_TEST_SOURCE_DIR, &setup);
}

#include "qml_tests.moc"
