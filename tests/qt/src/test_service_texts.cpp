#include "src/service_journal.h"
#include "src/service_status.h"

#include <gmock/gmock.h>

#include <QTemporaryFile>

#include <sys/stat.h>

namespace {

QByteArray streamOf(const QFile &file)
{
    struct stat status = {};
    fstat(file.handle(), &status);
    return QByteArray::number(quint64(status.st_dev)) + ':' + QByteArray::number(quint64(status.st_ino));
}

} // namespace

TEST(ServiceStatus, IsTheStatusLine)
{
    EXPECT_EQ(serviceStatus(QStringLiteral("Bereit – Grüße"), false), "Bereit – Grüße");
    EXPECT_EQ(serviceStatus(QStringLiteral("Schritt 4 von 11"), true), "Automatik läuft, Schritt 4 von 11");
    EXPECT_EQ(serviceStatus(QString(), false), "");
}

TEST(ServiceStatus, NoTextBeginsAnotherMessage)
{
    EXPECT_EQ(serviceStatus(QStringLiteral("a\nREADY=1\r\nMAINPID=1\x1b[2J\x85"), false),
              "a READY=1  MAINPID=1 [2J ");
    EXPECT_EQ(serviceStatus(QStringLiteral("a%1b%2c").arg(QChar(0)).arg(QChar(0x2028)), false), "a b c");
}

TEST(ServiceStatus, IsShortAndWellFormed)
{
    const QString astral = QString::fromUcs4(U"\U0001F6E2");
    EXPECT_EQ(serviceStatus(QString(160, u'x'), false), QByteArray(160, 'x'));
    EXPECT_EQ(serviceStatus(QString(161, u'x'), false), QByteArray(160, 'x') + "…");
    EXPECT_EQ(serviceStatus(QString(10'000'000, u'x'), false), QByteArray(160, 'x') + "…");
    EXPECT_EQ(serviceStatus(QString(159, u'x') + astral + u'y', false), QByteArray(159, 'x') + "…");
    EXPECT_EQ(serviceStatus(QString(QChar(0xd800)), false), "?");
}

TEST(ServiceJournal, IsFoundByDeviceAndInode)
{
    QTemporaryFile file;
    ASSERT_TRUE(file.open());
    const QByteArray stream = streamOf(file);
    EXPECT_TRUE(isJournalStream(file.handle(), stream));
    for (const QByteArray &other :
         {QByteArray(), QByteArray("x"), QByteArray(":"), stream + '0', '1' + stream}) {
        EXPECT_FALSE(isJournalStream(file.handle(), other)) << other.constData();
    }
    EXPECT_FALSE(isJournalStream(-1, stream));
}

TEST(ServiceJournal, EachLineHasItsPriority)
{
    EXPECT_EQ(withPriority(QtDebugMsg, "x"), "<7>x");
    EXPECT_EQ(withPriority(QtInfoMsg, "x"), "<6>x");
    EXPECT_EQ(withPriority(QtWarningMsg, "x"), "<4>x");
    EXPECT_EQ(withPriority(QtCriticalMsg, "x\n y\n\nz"), "<3>x\n<3> y\n<3>\n<3>z");
    EXPECT_EQ(withPriority(QtFatalMsg, ""), "<2>");
    EXPECT_EQ(withPriority(static_cast<QtMsgType>(7), "x"), "<6>x");
}
