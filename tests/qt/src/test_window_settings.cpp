#include "src/window_settings.h"

#include "brovik/gui/gui.h"
#include "log_capture.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;

class WindowSettingsTest : public testing::Test
{
protected:
    WindowSettingsTest()
    {
        // Without it Qt calls each file one that it may not read.
        QCoreApplication::setOrganizationName(QStringLiteral("BrovikGmbH"));
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_folder.path());
        m_file = QFileInfo(QSettings().fileName());
        m_file.dir().mkpath(QStringLiteral("."));
        Gui::instance().setDarkThemeEnabled(true);
    }

    ~WindowSettingsTest() override
    {
        Gui::instance().setDarkThemeEnabled(true);
        QCoreApplication::setOrganizationName({});
    }

    void write(const QByteArray &content)
    {
        QFile file(m_file.filePath());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    QStringList files() const { return m_file.dir().entryList(QDir::Files, QDir::Name); }
    QDir folder() const { return m_file.dir(); }
    std::string path() const { return m_file.filePath().toStdString(); }
    static std::string complaints(const LogCapture &log)
    {
        return log.texts(QtCriticalMsg).join(QLatin1Char('\n')).toStdString();
    }
    static bool dark() { return Gui::instance().darkThemeEnabled(); }

private:
    QTemporaryDir m_folder;
    QFileInfo m_file;
};

} // namespace

TEST_F(WindowSettingsTest, NoFile)
{
    const LogCapture log;
    Gui::instance().setDarkThemeEnabled(false);
    readWindowSettings();
    EXPECT_TRUE(dark());
    EXPECT_TRUE(log.messages().empty());
    EXPECT_EQ(files(), QStringList());
}

TEST_F(WindowSettingsTest, TheFolderIsExported)
{
    readWindowSettings();
    EXPECT_EQ(qgetenv("BROVIK_CONFIG_DIR"), folder().path().toLocal8Bit());
}

TEST_F(WindowSettingsTest, Theme)
{
    const LogCapture log;
    for (const bool dark_ : {false, true}) {
        write(dark_ ? "[window]\ndark=true\n" : "[window]\ndark=false\n");
        readWindowSettings();
        EXPECT_EQ(dark(), dark_);
    }
    EXPECT_TRUE(log.messages().empty());
}

TEST_F(WindowSettingsTest, DamagedFileIsPutAside)
{
    const QByteArray damaged = "[window\ndark=false\n";
    write(damaged);
    const LogCapture log;
    readWindowSettings();
    EXPECT_TRUE(dark());
    ASSERT_EQ(files().size(), 1);
    EXPECT_THAT(files().first().toStdString(), HasSubstr(".damaged-"));
    QFile aside(folder().filePath(files().first()));
    ASSERT_TRUE(aside.open(QIODevice::ReadOnly));
    EXPECT_EQ(aside.readAll(), damaged);
    EXPECT_THAT(complaints(log), HasSubstr(path() + " ist beschädigt"));
    EXPECT_THAT(complaints(log), HasSubstr("liegt nun in " + aside.fileName().toStdString()));
    readWindowSettings();
    EXPECT_EQ(log.texts(QtCriticalMsg).size(), 1) << "the next start finds nothing wrong";
}
