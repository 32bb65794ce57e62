#pragma once

#include <QCoreApplication>
#include <QThread>

/// The thread of the application and of all screens; null while there is no application.
inline const QThread *guiThread()
{
    const QCoreApplication *application = QCoreApplication::instance();
    return application != nullptr ? application->thread() : nullptr;
}

/// Whether this is that thread. Any thread passes for it while there is no application: no other runs then
/// that could reach what belongs to the screens.
///
/// What runs on the GUI thread alone asserts this at its entry: `Q_ASSERT(onGuiThread())`.
inline bool onGuiThread()
{
    const QThread *const gui = guiThread();
    return gui == nullptr || gui == QThread::currentThread();
}
