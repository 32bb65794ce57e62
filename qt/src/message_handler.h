#pragma once

#include <QMessageLogContext>
#include <QString>

/// The program's one log format, on stderr. Any thread, no lock. A fatal message ends the process with
/// code 1. Where the journal reads stderr, each line begins with the priority that it takes off again.
void messageHandler(QtMsgType type, const QMessageLogContext &context, const QString &text);

/// One line as messageHandler() prints it. Pure: run time and wall-clock time are given.
QString formatLogLine(QtMsgType type, const QMessageLogContext &context, const QString &text,
                      qint64 runTimeMs, const QString &wallClock);

/// Starts the timer of the run time, finds out who reads stderr, and installs the handler.
void installMessageHandler();
