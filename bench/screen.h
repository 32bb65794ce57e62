#pragma once

#include <QApplication>
#include <QElapsedTimer>
#include <QQmlApplicationEngine>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QUrl>

#include <benchmark/benchmark.h>

#include <fstream>
#include <string>

/// What benchmarks of a screen share: frames and memory. GUI thread.
namespace screen {

/// Handles events until what has happened so far is on the screen.
inline void awaitFrame(QQuickWindow &window)
{
    bool swapped = false;
    const auto connection =
        QObject::connect(&window, &QQuickWindow::frameSwapped, &window, [&] { swapped = true; });
    window.update();
    while (!swapped) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    QObject::disconnect(connection);
}

inline double milliseconds(const QElapsedTimer &timer)
{
    return static_cast<double>(timer.nsecsElapsed()) * 1e-6;
}

inline double residentMib()
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmRSS:")) {
            return std::stod(line.substr(6)) / 1024;
        }
    }
    return 0;
}

/// Runs the benchmarks of the program with the window of this QML file, which `window` points to meanwhile.
/// Returns the exit code.
inline int runBenchmarks(int argc, char **argv, const QString &file, QQuickWindow *&window)
{
    QApplication application(argc, argv);
    QQuickStyle::setStyle(QStringLiteral("Material"));
    benchmark::Initialize(&argc, argv);
    QQmlApplicationEngine engine;
    engine.addImportPath(QStringLiteral(":/"));
    engine.load(QUrl::fromLocalFile(file));
    window = qobject_cast<QQuickWindow *>(engine.rootObjects().value(0));
    if (window == nullptr) {
        return 1;
    }
    awaitFrame(*window);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

} // namespace screen
