#pragma once

#include <QObject>
#include <QStringList>

/// The QML singleton `Backend` of kubelor.test: lets a test play the backend with lines of Python against the
/// built-in module `brovik`, whose submodules are imported. Lives on the GUI thread.
class Backend : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Runs Python code on this thread. An exception is a warning, which fails the test.
    Q_INVOKABLE void run(const QString &code);

    /// Runs Python code on a thread of its own, and waits for its end: signals arrive as they do from the
    /// backend.
    Q_INVOKABLE void runOnThread(const QString &code);

    /// Sets the theme that the program reads from its settings at start.
    Q_INVOKABLE void setDarkTheme(bool dark);

    /// Empties the settings file.
    Q_INVOKABLE void forgetSettings();

    /// What stands in the settings file, once it has been emptied.
    Q_INVOKABLE QString settingsFile();

    /// Begins to record what is printed. Warnings are left to ignoreWarning() and failOnWarning().
    Q_INVOKABLE void startRecordingPrints();
    /// Ends the recording and returns it.
    Q_INVOKABLE QStringList takePrints();

private:
    QString m_settingsFile;
};
