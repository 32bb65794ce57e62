#pragma once

#include <QString>

/// Looks for another instance of the program and brings its window to the front. GUI thread, needs no event
/// loop; whatever fails counts as no other instance. Returns whether one was found.
bool raiseRunningInstance(const QString &socketPath);
