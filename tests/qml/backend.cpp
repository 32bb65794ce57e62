#include "backend.h"

#include "brovik/chart/chart.h"
#include "brovik/gui/event_fence.h"
#include "brovik/gui/gui.h"
#include "shared/notification_brake.h"

#include <pybind11/embed.h>

#include <QCoreApplication>
#include <QDebug>
#include <QEvent>
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

void stopRecording()
{
    if (nextHandler) {
        qInstallMessageHandler(nextHandler);
        nextHandler = nullptr;
    }
}

/// Sees the queued calls that arrive while it lives.
class QueuedCalls : public QObject
{
public:
    QueuedCalls() { qApp->installEventFilter(this); }

    /// Handles all events that wait by now. Returns how many queued calls were among them.
    int handleWaiting()
    {
        m_count = 0;
        bool passed = false;
        EventFence fence;
        connect(&fence, &EventFence::passed, this, [&passed] { passed = true; });
        fence.enqueue();
        while (!passed) {
            QCoreApplication::processEvents();
        }
        // The mark is one itself.
        return m_count - 1;
    }

    bool eventFilter(QObject *receiver, QEvent *event) override
    {
        m_count += event->type() == QEvent::MetaCall ? 1 : 0;
        return QObject::eventFilter(receiver, event);
    }

private:
    int m_count = 0;
};

} // namespace

Backend::Backend(QObject *parent)
    : QObject(parent)
{
    execute(QStringLiteral("import sys\n"
                           "sys.dont_write_bytecode = True\n"
                           "sys.path.append('" QUICK_TEST_SOURCE_DIR "')\n"
                           "import defaults"));
    rememberDefaults(Chart::instance());
    rememberDefaults(Gui::instance());
}

void Backend::rememberDefaults(QObject &owner)
{
    const QMetaObject *type = owner.metaObject();
    for (int index = type->propertyOffset(); index < type->propertyCount(); ++index) {
        const QMetaProperty property = type->property(index);
        if (property.isWritable()) {
            m_defaults.push_back({&owner, property, property.read(&owner)});
        }
    }
}

void Backend::reset()
{
    stopRecording();
    Gui &gui = Gui::instance();
    if (gui.itemsScaleFactor() != 1.0) {
        gui.applyItemsScaleToDefault(1.0);
    }
    gui.setDarkThemeEnabled(false);
    execute(QStringLiteral("import defaults\n"
                           "defaults.restore()"));
    for (const Default &each : m_defaults) {
        if (each.property.read(each.owner) != each.value) {
            each.property.write(each.owner, each.value);
        }
    }
}

void Backend::settle()
{
    QueuedCalls calls;
    for (int rounds = 1000; rounds > 0; --rounds) {
        if (calls.handleWaiting() == 0) {
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            return;
        }
    }
    qWarning("The calls that wait have no end.");
}

void Backend::run(const QString &code)
{
    execute(code);
}

void Backend::runOnThread(const QString &code)
{
    const std::unique_ptr<QThread> thread(QThread::create(execute, code));
    const GuiThreadWaits waits;
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
    stopRecording();
    recordedPrints.clear();
    nextHandler = qInstallMessageHandler(recordPrint);
}

QStringList Backend::takePrints()
{
    stopRecording();
    return recordedPrints;
}
