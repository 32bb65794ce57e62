#pragma once

#include <QMetaProperty>
#include <QObject>
#include <QStringList>
#include <QVariant>

#include <vector>

/// The QML singleton `Backend` of kubelor.test: lets a test play the backend with lines of Python against the
/// built-in module `brovik`, whose submodules are imported. Lives on the GUI thread.
class Backend : public QObject
{
    Q_OBJECT

public:
    /// Remembers the defaults. The shared objects must be as they are at the start of the program.
    explicit Backend(QObject *parent = nullptr);

    /// Puts the shared objects back to their defaults, and ends what a test has begun here. Not the settings
    /// file.
    Q_INVOKABLE void reset();

    /// Handles all events that wait by now, and the queued calls that come of them. A chain of calls without
    /// an end is a warning, which fails the test.
    Q_INVOKABLE void settle();

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

    /// Begins to record what is printed, anew if it does so already. Warnings are left to ignoreWarning() and
    /// failOnWarning().
    Q_INVOKABLE void startRecordingPrints();
    /// Ends the recording and returns it.
    Q_INVOKABLE QStringList takePrints();

private:
    struct Default
    {
        QObject *owner;
        QMetaProperty property;
        QVariant value;
    };

    void rememberDefaults(QObject &owner);

    /// What the screens write.
    std::vector<Default> m_defaults;
    QString m_settingsFile;
};
