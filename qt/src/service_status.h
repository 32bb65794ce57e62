#pragma once

#include <QByteArray>
#include <QString>

/// What the service manager shows of the program: the text of the status line, and before it whether the
/// automatic run is on. One line of bounded length in UTF-8, whatever the text is.
QByteArray serviceStatus(const QString &status, bool automaticRuns);
