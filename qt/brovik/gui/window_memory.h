#pragma once

#include <QByteArray>
#include <QMap>
#include <QObject>
#include <QString>
#include <QVariant>
#include <QtQml/qqmlregistration.h>

#include <optional>

/// Writes what is to be kept of the window into the settings file, which QSettings reads. The file is
/// replaced as a whole, or it stays as it is and the log says why; QSettings itself would leave an empty file
/// on a full disk, forget what it could not read, and say nothing of either. What could not be written goes
/// along with the next values. Lives and is used on the GUI thread alone.
class WindowMemory : public QObject
{
    Q_OBJECT
    QML_ELEMENT

public:
    using QObject::QObject;

    /// Keeps these values, numbers or bools, in place of those of the same names. False if that failed.
    Q_INVOKABLE bool keep(const QVariantMap &values);

    /// The content of a settings file with these values in the group "window", and all else as it was.
    static QByteArray withValues(const QByteArray &content, const QMap<QByteArray, QByteArray> &values);

    /// The content of a file, empty if there is none; nothing if it cannot be read, which the log tells.
    static std::optional<QByteArray> read(const QString &path);

private:
    static bool replace(const QString &path, const QByteArray &content);

    QMap<QByteArray, QByteArray> m_waiting;
};
