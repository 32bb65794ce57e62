// The files that tell the engine what a module has. They come from the build, whose rules change with Qt's
// versions.

#include <gmock/gmock.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <string>
#include <vector>

using testing::Contains;
using testing::UnorderedElementsAreArray;

namespace {

using Lines = std::vector<std::string>;

/// The lines of a file in the program, without the empty ones.
Lines linesOf(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
    Lines result;
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (!line.isEmpty()) {
            result.push_back(line.toStdString());
        }
    }
    return result;
}

/// The line of a type: "singleton Common 1.0 Common.qml", "MyTable 1.0 table/MyTable.qml".
std::string typeLine(const QDir &directory, const QString &path)
{
    const Lines content = linesOf(path);
    const bool singleton = std::find(content.begin(), content.end(), "pragma Singleton") != content.end();
    const QString line =
        QStringLiteral("%1 1.0 %2").arg(QFileInfo(path).baseName(), directory.relativeFilePath(path));
    return (singleton ? "singleton " : "") + line.toStdString();
}

/// A line for each QML file below the directory.
Lines typeLines(const QString &directory)
{
    Lines result;
    QDirIterator files(directory, {QStringLiteral("*.qml")}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        result.push_back(typeLine(QDir(directory), files.next()));
    }
    return result;
}

/// Compares a module's file with its heading and the types below its directory.
void expectQmldir(const QString &directory, const Lines &heading)
{
    const Lines written = linesOf(directory + QStringLiteral("qmldir"));
    ASSERT_GE(written.size(), heading.size());
    const auto types = written.begin() + static_cast<Lines::difference_type>(heading.size());
    EXPECT_EQ(Lines(written.begin(), types), heading);
    EXPECT_THAT(Lines(types, written.end()), UnorderedElementsAreArray(typeLines(directory)));
}

class Qmldir : public testing::TestWithParam<const char *>
{};

} // namespace

TEST_P(Qmldir, OfAModule)
{
    const std::string name = GetParam();
    expectQmldir(QStringLiteral(":/brovik/%1/").arg(QLatin1String(GetParam())),
                 {"module brovik." + name, "linktarget " + name + "_moduleplugin",
                  "optional plugin " + name + "_moduleplugin", "classname brovik_" + name + "Plugin",
                  "typeinfo " + name + "_module.qmltypes", "prefer :/brovik/" + name + "/"});
}

INSTANTIATE_TEST_SUITE_P(All, Qmldir,
                         testing::Values("actuator", "auto", "base", "chart", "components", "config", "gpio",
                                         "gui", "sensor", "settings", "shell", "simulator", "wifi"),
                         [](const auto &row) { return std::string(row.param); });

TEST(QmldirOfMain, IsShorter)
{
    expectQmldir(QStringLiteral(":/main/"), {"module main", "typeinfo kubelor.qmltypes", "prefer :/main/"});
}

// What the tests above expect comes from the files themselves: here are some by name.
TEST(QmldirTypes, AreThere)
{
    const Lines base = linesOf(QStringLiteral(":/brovik/base/qmldir"));
    EXPECT_THAT(base, Contains("singleton Common 1.0 Common.qml"));
    EXPECT_THAT(base, Contains("singleton Dialogs 1.0 Dialogs.qml"));
    EXPECT_THAT(base, Contains("MyTable 1.0 table/MyTable.qml"));
    EXPECT_THAT(linesOf(QStringLiteral(":/main/qmldir")), Contains("Main 1.0 main/Main.qml"));
}
