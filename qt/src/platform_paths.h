#pragma once

#include <QString>

/// The places of the platform that the program uses; all that differs between the machine and a desk.
struct PlatformPaths
{
    /// Directory of the backend, the front of Python's search path.
    QString backendDir;
    /// Python interpreter of the backend's virtual environment, the first element of `sys.argv`.
    QString interpreter;
    /// File of environment variables that is read at start.
    QString environmentFile;
    /// Local socket of whoever may raise a running instance's window.
    QString raiseSocket;
    /// Directory of the settings file's organisation; empty for the user's configuration directory.
    QString settingsRoot;

    /// The paths of the machine.
    static PlatformPaths machine()
    {
        return {
            .backendDir = QStringLiteral("/opt/brovik/kb/py"),
            .interpreter = QStringLiteral("/opt/brovik/kb/py/venv/bin/python3"),
            .environmentFile = QStringLiteral("/etc/environment"),
            .raiseSocket = QStringLiteral("/tmp/brovik_kb.sock"),
            .settingsRoot = {},
        };
    }
};
