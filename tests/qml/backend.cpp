#include "backend.h"

#include "brovik/gui/gui.h"

#include <pybind11/embed.h>

#include <QDebug>
#include <QFile>
#include <QSettings>
#include <QThread>

#include <memory>

namespace py = pybind11;

namespace {

void execute(const QString &code)
{
    const py::gil_scoped_acquire gil;
    try {
        py::exec("from brovik import actuator, auto, chart, config, gpio, gui, sensor, settings, shell, "
                 "simulator, wifi");
        py::exec(code.toStdString());
    } catch (const py::error_already_set &error) {
        qWarning("%s", error.what());
    }
}

QStringList recordedPrints;
QtMessageHandler nextHandler = nullptr;

void recordPrint(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type != QtWarningMsg) {
        recordedPrints.append(text);
    }
    nextHandler(type, context, text);
}

} // namespace

void Backend::run(const QString &code)
{
    execute(code);
}

void Backend::runOnThread(const QString &code)
{
    const std::unique_ptr<QThread> thread(QThread::create(execute, code));
    thread->start();
    thread->wait();
}

void Backend::setDarkTheme(bool dark)
{
    Gui::instance().setDarkThemeEnabled(dark);
}

void Backend::forgetSettings()
{
    QSettings settings;
    settings.clear();
    m_settingsFile = settings.fileName();
}

QString Backend::settingsFile()
{
    // Not through QSettings, which would write what waits to be written.
    QFile file(m_settingsFile);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

void Backend::startRecordingPrints()
{
    recordedPrints.clear();
    nextHandler = qInstallMessageHandler(recordPrint);
}

QStringList Backend::takePrints()
{
    qInstallMessageHandler(nextHandler);
    return recordedPrints;
}
