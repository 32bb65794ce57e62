#pragma once

#include <QDebug>

// Logging of native code. Any thread; the line format belongs to the message handler.

/// Category of what Python logs. The message handler recognises it by this very pointer.
extern const char *const pythonLogCategory;

/// Category of what native code logs.
extern const char *const nativeLogCategory;

// printf-like. A format that cannot be applied is itself reported, at the same level.
[[gnu::format(printf, 1, 2)]] void logDebug(const char *format, ...);
[[gnu::format(printf, 1, 2)]] void logInfo(const char *format, ...);
[[gnu::format(printf, 1, 2)]] void logWarning(const char *format, ...);
[[gnu::format(printf, 1, 2)]] void logCritical(const char *format, ...);
/// Ends the process with code 1.
[[gnu::format(printf, 1, 2)]] void logFatal(const char *format, ...);

// Streams with Qt's conventions: items separated by one blank, QString quoted, const char* not.
QDebug debugStream();
QDebug infoStream();
QDebug warningStream();
QDebug criticalStream();
