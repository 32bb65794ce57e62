#include "shared/log.h"

#include <QByteArray>
#include <QMessageLogger>

#include <cstdarg>
#include <cstdio>

const char *const pythonLogCategory = "py";
const char *const nativeLogCategory = "default";

namespace {

QMessageLogger nativeLogger()
{
    return {nullptr, 0, nullptr, nativeLogCategory};
}

void logText(QtMsgType level, const char *format, const char *text)
{
    const QMessageLogger logger = nativeLogger();
    switch (level) {
    case QtDebugMsg:
        logger.debug(format, text);
        break;
    case QtInfoMsg:
        logger.info(format, text);
        break;
    case QtWarningMsg:
        logger.warning(format, text);
        break;
    case QtCriticalMsg:
        logger.critical(format, text);
        break;
    case QtFatalMsg:
        logger.fatal(format, text);
    }
}

void logFormatted(QtMsgType level, const char *format, va_list arguments)
{
    va_list measured;
    va_copy(measured, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, measured);
    va_end(measured);
    if (length < 0) {
        logText(level, "Konnte die Nachricht nicht formatieren (%s)", format);
        return;
    }
    QByteArray buffer(length + 1, '\0');
    std::vsnprintf(buffer.data(), static_cast<std::size_t>(buffer.size()), format, arguments);
    logText(level, "%s", buffer.constData());
}

} // namespace

void logDebug(const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    logFormatted(QtDebugMsg, format, arguments);
    va_end(arguments);
}

void logInfo(const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    logFormatted(QtInfoMsg, format, arguments);
    va_end(arguments);
}

void logWarning(const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    logFormatted(QtWarningMsg, format, arguments);
    va_end(arguments);
}

void logCritical(const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    logFormatted(QtCriticalMsg, format, arguments);
    va_end(arguments);
}

void logFatal(const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    logFormatted(QtFatalMsg, format, arguments);
    va_end(arguments);
}

QDebug debugStream()
{
    return nativeLogger().debug();
}

QDebug infoStream()
{
    return nativeLogger().info();
}

QDebug warningStream()
{
    return nativeLogger().warning();
}

QDebug criticalStream()
{
    return nativeLogger().critical();
}
