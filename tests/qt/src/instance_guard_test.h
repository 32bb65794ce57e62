#pragma once

#include "log_capture.h"
#include "src/instance_guard.h"

#include <gmock/gmock.h>

#include <QFile>
#include <QTemporaryDir>

/// The address of a socket on which nobody listens.
inline const QString nobody = QStringLiteral("/nowhere/raise.sock");

/// A stand-in `wmctrl` first on the search path, which notes its calls.
class InstanceGuardTest : public testing::Test
{
protected:
    InstanceGuardTest() { qputenv("PATH", m_directory.path().toLocal8Bit()); }
    ~InstanceGuardTest() override { qputenv("PATH", m_path); }

    void install(const QByteArray &script)
    {
        QFile file(m_directory.filePath(QStringLiteral("wmctrl")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\nfor word in \"$@\"; do printf '<%s>' \"$word\" >>\"${0%/*}/calls\"; done\n" +
                   script + "\n");
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    QByteArray calls() const
    {
        QFile file(m_directory.filePath(QStringLiteral("calls")));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    const QTemporaryDir m_directory;
    const QByteArray m_path = qgetenv("PATH");
    LogCapture log;
};
