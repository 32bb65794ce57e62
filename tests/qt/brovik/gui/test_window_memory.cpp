#include "brovik/gui/window_memory.h"
#include "log_capture.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <sys/resource.h>

#include <csignal>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
}

void write(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
}

/// A process that may not make files larger than that. Whoever tries gets an error, as on a full disk.
class SmallFiles
{
public:
    explicit SmallFiles(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{.rlim_cur = bytes, .rlim_max = m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    SmallFiles(const SmallFiles &) = delete;
    SmallFiles &operator=(const SmallFiles &) = delete;
    SmallFiles(SmallFiles &&) = delete;
    SmallFiles &operator=(SmallFiles &&) = delete;
    ~SmallFiles() { setrlimit(RLIMIT_FSIZE, &m_before); }

private:
    rlimit m_before{};
};

class WindowMemoryTest : public testing::Test
{
protected:
    WindowMemoryTest()
    {
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_folder.path());
        m_path = QSettings().fileName();
    }

    const QString &path() const { return m_path; }
    QStringList files() const { return QFileInfo(m_path).dir().entryList(QDir::Files); }

private:
    QTemporaryDir m_folder;
    QString m_path;
};

TEST_F(WindowMemoryTest, makesTheFile)
{
    WindowMemory memory;
    EXPECT_TRUE(memory.keep({{"width", 640}, {"dark", false}, {"x", -4}}));
    EXPECT_EQ(contentOf(path()), "[window]\ndark=false\nwidth=640\nx=-4\n");
    const QSettings settings(path(), QSettings::IniFormat);
    EXPECT_EQ(settings.value("window/dark").toBool(), false);
    EXPECT_EQ(settings.value("window/width").toInt(), 640);
}

TEST_F(WindowMemoryTest, leavesTheRest)
{
    write(path(), "; by hand\n[a]\nx=1\n\n[window]\nx=2\nother=y\n\n[b]\nx=3\n");
    WindowMemory memory;
    EXPECT_TRUE(memory.keep({{"x", 5}, {"y", 6}}));
    EXPECT_EQ(contentOf(path()), "; by hand\n[a]\nx=1\n\n[window]\nother=y\nx=5\ny=6\n\n[b]\nx=3\n");
    EXPECT_EQ(files().size(), 1);
}

TEST_F(WindowMemoryTest, oddContents)
{
    const QMap<QByteArray, QByteArray> x{{"x", "5"}};
    EXPECT_EQ(WindowMemory::withValues("", x), "[window]\nx=5\n");
    EXPECT_EQ(WindowMemory::withValues("[a]\nx=1", x), "[a]\nx=1\n\n[window]\nx=5\n");
    EXPECT_EQ(WindowMemory::withValues("[window]", x), "[window]\nx=5");
    EXPECT_EQ(WindowMemory::withValues("[window]\r\n x = 1\r\nno line\r\n", x),
              "[window]\r\nno line\r\nx=5\n");
    EXPECT_EQ(WindowMemory::withValues("[window]\nx=1\n[b]\n[window]\nx=2\n", x),
              "[window]\nx=5\n[b]\n[window]\n");
    EXPECT_EQ(WindowMemory::withValues("x=1\n", x), "x=1\n\n[window]\nx=5\n");
}

TEST_F(WindowMemoryTest, fullDiskLeavesTheFile)
{
    write(path(), "[window]\ndark=false\n");
    WindowMemory memory;
    {
        LogCapture log;
        const SmallFiles small(5);
        EXPECT_FALSE(memory.keep({{"dark", true}}));
        ASSERT_EQ(log.messages().size(), 1);
        EXPECT_THAT(log.messages()[0].text.toStdString(), HasSubstr("ist nicht beschreibbar"));
    }
    EXPECT_EQ(contentOf(path()), "[window]\ndark=false\n");
    EXPECT_EQ(files().size(), 1);
    // With the next values, those come along.
    EXPECT_TRUE(memory.keep({{"x", 1}}));
    EXPECT_EQ(contentOf(path()), "[window]\ndark=true\nx=1\n");
}

TEST_F(WindowMemoryTest, whatCannotBeReadStays)
{
    QDir().mkpath(path()); // A folder opens, and cannot be read.
    LogCapture log;
    WindowMemory memory;
    EXPECT_FALSE(memory.keep({{"x", 1}}));
    ASSERT_EQ(log.messages().size(), 1);
    EXPECT_THAT(log.messages()[0].text.toStdString(), HasSubstr("ist nicht lesbar"));
    EXPECT_TRUE(QFileInfo(path()).isDir());
}

TEST_F(WindowMemoryTest, staleLockIsNoMatter)
{
    write(path() + QStringLiteral(".lock"), "");
    WindowMemory memory;
    EXPECT_TRUE(memory.keep({{"x", 1}}));
}

} // namespace
