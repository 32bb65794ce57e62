#include "brovik/gui/gui.h"
#include "shared/screen_engine.h"
#include "src/application.h"
#include "thread_time.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QQuickWindow>
#include <QRandomGenerator>
#include <QTimer>

#include <chrono>
#include <cstdio>

// The program with the paths of a test and an operator who is everywhere at once: every few milliseconds some
// page, tab or list shows another of its entries, and after RESTLESS_MS milliseconds the window is closed.

namespace {

constexpr int pauseMs = 30;

/// Has something show another one of its entries, if that is what it does.
void change(QObject *object)
{
    const int count = object->property("count").toInt();
    if (count > 1 && object->property("currentIndex").isValid()) {
        object->setProperty("currentIndex", QRandomGenerator::global()->bounded(count));
    }
}

/// Tells of each pause that is longer than all before: for so long no timer, and no press, got through. The
/// time for which the processor did other things is no part of it.
void measurePause()
{
    static QElapsedTimer sinceLast;
    static ThreadTime before;
    static qint64 longest = 0;
    const ThreadTime now = timeOfThisThread();
    if (sinceLast.isValid()) {
        const std::chrono::nanoseconds pause{sinceLast.nsecsElapsed()};
        const qint64 own =
            std::chrono::duration_cast<std::chrono::milliseconds>(pause - now.waiting + before.waiting)
                .count();
        if (own > longest) {
            longest = own;
            std::printf("longest pause: %lld ms\n", static_cast<long long>(longest));
        }
    }
    before = now;
    sinceLast.start();
}

void changePages()
{
    measurePause();
    const QObject *const window = screenEngine ? screenEngine->rootObjects().value(0) : nullptr;
    if (window == nullptr) {
        return;
    }
    for (QObject *object : window->findChildren<QObject *>()) {
        if (QRandomGenerator::global()->bounded(8) == 0) {
            change(object);
        }
    }
}

void closeWindow()
{
    std::printf("closing\n");
    if (auto *window = qobject_cast<QQuickWindow *>(screenEngine->rootObjects().value(0))) {
        window->close();
    }
}

void becomeRestless()
{
    auto *const pages = new QTimer(qApp);
    QObject::connect(pages, &QTimer::timeout, qApp, &changePages);
    pages->start(pauseMs);
    QTimer::singleShot(qEnvironmentVariableIntValue("RESTLESS_MS"), qApp, &closeWindow);
}

} // namespace

int main(int argc, char **argv)
{
    Gui &gui = Gui::instance();
    // The backend may change it as well, from any thread and any number of times.
    QObject::connect(&gui, &Gui::titleChanged, &gui, &becomeRestless,
                     Qt::ConnectionType(Qt::DirectConnection | Qt::SingleShotConnection));
    return runApplication(argc, argv,
                          {.backendDir = qEnvironmentVariable("RESTLESS_BACKEND"),
                           .interpreter = QStringLiteral("/usr/bin/python3"),
                           .environmentFile = {},
                           .raiseSocket = qEnvironmentVariable("RESTLESS_SOCKET"),
                           .settingsRoot = {}});
}
