#include "instance_guard_test.h"

#include <QLocalServer>
#include <QLocalSocket>

#include <memory>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const QString raisedBySocket = QStringLiteral(
    "Anscheinend läuft das Programm bereits. Es wird versucht das Fenster nach vorne zu bringen (socket)");
const QString raisedByTool = QStringLiteral(
    "Anscheinend läuft das Programm bereits. Es wird versucht das Fenster nach vorne zu bringen (wmctrl)");

} // namespace

TEST_F(InstanceGuardTest, AListedWindowIsRaised)
{
    install("[ \"$1\" = -l ] && echo '0x01  0 host Brovik Kubelor'");
    EXPECT_TRUE(raiseRunningInstance(nobody));
    EXPECT_EQ(calls(), "<-l><-a><Brovik Kubelor>");
    EXPECT_THAT(log.texts(QtInfoMsg), ElementsAre(raisedByTool));
}

TEST_F(InstanceGuardTest, ATitleThatMerelyContainsTheNameCounts)
{
    install("[ \"$1\" = -l ] && echo '0x01  0 host Brovik Kubelor Notizen - Editor'");
    EXPECT_TRUE(raiseRunningInstance(nobody));
}

TEST_F(InstanceGuardTest, OtherWindowsDoNotCount)
{
    install("echo '0x01  0 host brovik kubelor'");
    EXPECT_FALSE(raiseRunningInstance(nobody));
    EXPECT_EQ(calls(), "<-l>");
    EXPECT_THAT(log.messages(), IsEmpty());
}

TEST_F(InstanceGuardTest, TheExitCodeOfTheToolIsNotLookedAt)
{
    install("echo '0x01  0 host Brovik Kubelor'; exit 3");
    EXPECT_TRUE(raiseRunningInstance(nobody));
}

TEST_F(InstanceGuardTest, AMissingToolIsOneInfoLine)
{
    EXPECT_FALSE(raiseRunningInstance(nobody));
    ASSERT_EQ(log.messages().size(), 1U);
    EXPECT_THAT(log.texts(QtInfoMsg),
                ElementsAre(QStringLiteral("Das Programm 'wmctrl' ist anscheinend nicht installiert.")));
}

TEST_F(InstanceGuardTest, ACrashedToolIsADebugLine)
{
    install("kill -SEGV $$");
    EXPECT_FALSE(raiseRunningInstance(nobody));
    EXPECT_THAT(log.texts(QtDebugMsg), ElementsAre(QStringLiteral("Das Programm 'wmctrl' ist gecrasht.")));
}

TEST_F(InstanceGuardTest, ASlowToolIsAWarningAndIsKilled)
{
    install("exec /bin/sleep 1000");
    EXPECT_FALSE(raiseRunningInstance(nobody));
    EXPECT_THAT(
        log.texts(QtWarningMsg),
        ElementsAre(
            QStringLiteral("Das Programm 'wmctrl' wurde mit folgendem Fehler beendet: QProcess::Timedout "
                           "Exit-Code: 0"),
            testing::Truly(
                [](const QString &text) { return text.startsWith(QStringLiteral("QProcess: Destroyed")); })));
}

TEST_F(InstanceGuardTest, AnAnsweringSocketIsSentTheTextAndTheToolIsNotRun)
{
    install("echo '0x01  0 host Brovik Kubelor'");
    QLocalServer server;
    ASSERT_TRUE(server.listen(m_directory.filePath(QStringLiteral("raise.sock"))));
    EXPECT_TRUE(raiseRunningInstance(server.fullServerName()));
    ASSERT_TRUE(server.waitForNewConnection(0));
    const std::unique_ptr<QLocalSocket> peer(server.nextPendingConnection());
    QByteArray received = peer->readAll();
    while (peer->waitForReadyRead(1000)) {
        received += peer->readAll();
    }
    EXPECT_EQ(received, "fullscreen 1");
    EXPECT_EQ(calls(), "");
    EXPECT_THAT(log.texts(QtInfoMsg), ElementsAre(raisedBySocket));
}

TEST_F(InstanceGuardTest, APeerThatReadsNothingCountsAllTheSame)
{
    QLocalServer server;
    ASSERT_TRUE(server.listen(m_directory.filePath(QStringLiteral("raise.sock"))));
    EXPECT_TRUE(raiseRunningInstance(server.fullServerName())); // nobody takes the connection from the queue
    EXPECT_THAT(log.texts(QtInfoMsg), ElementsAre(raisedBySocket));
}

TEST_F(InstanceGuardTest, AFileInPlaceOfTheSocketCountsAsNobody)
{
    install("true");
    QFile file(m_directory.filePath(QStringLiteral("raise.sock")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_FALSE(raiseRunningInstance(file.fileName()));
    EXPECT_EQ(calls(), "<-l>");
}
