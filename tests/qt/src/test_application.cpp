#include "src/application.h"

#include <gmock/gmock.h>

#include <QFile>
#include <QTemporaryDir>

#include <string>

namespace {

class EnvironmentFileTest : public testing::Test
{
protected:
    void read(const QByteArray &content)
    {
        QFile file(m_path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        file.close();
        exportEnvironment(m_path);
    }

    const QTemporaryDir m_directory;
    const QString m_path = m_directory.filePath(QStringLiteral("environment"));
};

} // namespace

TEST_F(EnvironmentFileTest, OnlyLinesWithThePrefixAndAnEqualsSignAreExported)
{
    read("BROVIK_X=a=b\n"
         "BROVIKER=1\n"
         "export BROVIK_EXPORTED=1\n"
         " BROVIK_INDENTED=1\n"
         "brovik_small=1\n"
         "BROVIK_BARE\n"
         "OTHER=1\n"
         "BROVIK_QUOTED=\"a b\" \n"
         "BROVIK_SPACED = 1\n"
         "BROVIK_UMLAUT=ä\n"
         "BROVIK_LAST=ohne Zeilenende");
    EXPECT_EQ(qgetenv("BROVIK_X"), "a=b");
    EXPECT_EQ(qgetenv("BROVIKER"), "1");
    EXPECT_FALSE(qEnvironmentVariableIsSet("export BROVIK_EXPORTED"));
    EXPECT_FALSE(qEnvironmentVariableIsSet("BROVIK_EXPORTED"));
    EXPECT_FALSE(qEnvironmentVariableIsSet("BROVIK_INDENTED"));
    EXPECT_FALSE(qEnvironmentVariableIsSet("brovik_small"));
    EXPECT_FALSE(qEnvironmentVariableIsSet("BROVIK_BARE"));
    EXPECT_FALSE(qEnvironmentVariableIsSet("OTHER"));
    EXPECT_EQ(qgetenv("BROVIK_QUOTED"), "\"a b\" ");
    EXPECT_EQ(qgetenv("BROVIK_SPACED "), " 1");
    EXPECT_EQ(qgetenv("BROVIK_UMLAUT"), "ä");
    EXPECT_EQ(qgetenv("BROVIK_LAST"), "ohne Zeilenende");
}

TEST_F(EnvironmentFileTest, TheFileReplacesAnotherValueOfTheEnvironment)
{
    qputenv("BROVIK_OLD", "alt");
    qputenv("BROVIK_SAME", "gleich");
    read("BROVIK_OLD=neu\nBROVIK_SAME=gleich\nBROVIK_TWICE=1\nBROVIK_TWICE=2\n");
    EXPECT_EQ(qgetenv("BROVIK_OLD"), "neu");
    EXPECT_EQ(qgetenv("BROVIK_SAME"), "gleich");
    EXPECT_EQ(qgetenv("BROVIK_TWICE"), "2");
}

TEST_F(EnvironmentFileTest, AFileThatCannotBeReadIsNoError)
{
    testing::internal::CaptureStderr();
    exportEnvironment(QStringLiteral("/nowhere/environment"));
    exportEnvironment(m_directory.path());
    exportEnvironment(QString());
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}
