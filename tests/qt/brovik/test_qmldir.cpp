// The files that tell the engine what a module has. They come from the build, whose rules change with Qt's
// versions.

#include <gmock/gmock.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace {

/// The lines of a file in the program, without the empty ones.
QStringList lines(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
    return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

/// The line of a type: "singleton Common 1.0 Common.qml", "MyTable 1.0 table/MyTable.qml".
QString typeLine(const QDir &directory, const QString &path)
{
    const QString singleton = lines(path).contains(QStringLiteral("pragma Singleton")) ? QStringLiteral("singleton ")
                                                                                       : QString();
    return singleton +
           QStringLiteral("%1 1.0 %2").arg(QFileInfo(path).baseName(), directory.relativeFilePath(path));
}

/// A line for each QML file below the directory, sorted.
QStringList typeLines(const QString &directory)
{
    QStringList result;
    QDirIterator files(directory, {QStringLiteral("*.qml")}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        result.append(typeLine(QDir(directory), files.next()));
    }
    result.sort();
    return result;
}

QStringList sorted(QStringList list)
{
    list.sort();
    return list;
}

class Qmldir : public testing::TestWithParam<const char *>
{};

} // namespace

TEST_P(Qmldir, OfAModule)
{
    const QString name = QString::fromLatin1(GetParam());
    const QString directory = QStringLiteral(":/brovik/%1/").arg(name);
    const QStringList written = lines(directory + QStringLiteral("qmldir"));
    const QStringList heading = {
        QStringLiteral("module brovik.%1").arg(name),
        QStringLiteral("linktarget %1_moduleplugin").arg(name),
        QStringLiteral("optional plugin %1_moduleplugin").arg(name),
        QStringLiteral("classname brovik_%1Plugin").arg(name),
        QStringLiteral("typeinfo %1_module.qmltypes").arg(name),
        QStringLiteral("prefer %1").arg(directory),
    };
    EXPECT_EQ(written.mid(0, heading.size()), heading);
    EXPECT_EQ(sorted(written.mid(heading.size())), typeLines(directory));
}

INSTANTIATE_TEST_SUITE_P(All, Qmldir,
                         testing::Values("actuator", "auto", "base", "chart", "components", "config", "gpio",
                                         "gui", "sensor", "settings", "shell", "simulator", "wifi"),
                         [](const auto &row) { return std::string(row.param); });

TEST(QmldirOfMain, IsShorter)
{
    const QStringList written = lines(QStringLiteral(":/main/qmldir"));
    const QStringList heading = {QStringLiteral("module main"), QStringLiteral("typeinfo kubelor.qmltypes"),
                                 QStringLiteral("prefer :/main/")};
    EXPECT_EQ(written.mid(0, heading.size()), heading);
    EXPECT_EQ(sorted(written.mid(heading.size())), typeLines(QStringLiteral(":/main/")));
}

// The tests above read the files to know them: here are some by name.
TEST(QmldirTypes, AreThere)
{
    EXPECT_TRUE(lines(QStringLiteral(":/brovik/base/qmldir")).contains(QStringLiteral("singleton Common 1.0 Common.qml")));
    EXPECT_TRUE(lines(QStringLiteral(":/brovik/base/qmldir")).contains(QStringLiteral("MyTable 1.0 table/MyTable.qml")));
    EXPECT_TRUE(lines(QStringLiteral(":/main/qmldir")).contains(QStringLiteral("Main 1.0 main/Main.qml")));
}
