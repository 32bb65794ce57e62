#include "src/service_environment.h"
#include "src/service_socket.h"

#include "log_capture.h"
#include "service_manager.h"

#include <gmock/gmock.h>

#include <QTemporaryDir>

#include <unistd.h>

using std::chrono::milliseconds;

namespace {

class ServiceSocketTest : public testing::Test
{
protected:
    const QTemporaryDir m_folder;
    const QByteArray m_path = m_folder.filePath(QStringLiteral("notify")).toLocal8Bit();
    const LogCapture m_log;
};

class ServiceEnvironmentTest : public testing::Test
{
protected:
    ~ServiceEnvironmentTest() override { ServiceEnvironment::take(); }

    static ServiceEnvironment take(const QByteArray &socket, const QByteArray &microseconds,
                                   const QByteArray &pid = {})
    {
        const LogCapture log;
        qputenv("NOTIFY_SOCKET", socket);
        qputenv("WATCHDOG_USEC", microseconds);
        qputenv("WATCHDOG_PID", pid);
        return ServiceEnvironment::take();
    }
};

} // namespace

TEST_F(ServiceSocketTest, ReachesAPath)
{
    const ServiceManager manager(m_path);
    EXPECT_TRUE(ServiceSocket(m_path).send("READY=1\nSTATUS=x"));
    EXPECT_EQ(manager.receive(), "READY=1\nSTATUS=x");
}

TEST_F(ServiceSocketTest, ReachesTheAbstractSpace)
{
    const QByteArray address = '@' + m_path;
    const ServiceManager manager(address);
    EXPECT_TRUE(ServiceSocket(address).send("WATCHDOG=1"));
    EXPECT_EQ(manager.receive(), "WATCHDOG=1");
}

TEST_F(ServiceSocketTest, AManagerThatIsGoneAndOneInItsPlace)
{
    ServiceSocket socket(m_path);
    EXPECT_FALSE(socket.send("a"));
    EXPECT_FALSE(socket.send("b"));
    EXPECT_EQ(m_log.texts(QtWarningMsg).size(), 1);
    {
        const ServiceManager manager(m_path);
        EXPECT_TRUE(socket.send("c"));
    }
    EXPECT_FALSE(socket.send("d"));
    EXPECT_EQ(m_log.texts(QtWarningMsg).size(), 2);
    unlink(m_path.constData());
    const ServiceManager another(m_path);
    EXPECT_TRUE(socket.send("e"));
    EXPECT_EQ(another.receive(), "e");
}

TEST_F(ServiceSocketTest, AManagerThatReadsNothingIsNotWaitedFor)
{
    const ServiceManager manager(m_path);
    ServiceSocket socket(m_path);
    int taken = 0;
    while (socket.send("x")) {
        ASSERT_LT(++taken, 1'000'000);
    }
    EXPECT_GT(taken, 0);
    EXPECT_EQ(manager.receive(), "x");
    EXPECT_TRUE(socket.send("y"));
}

TEST_F(ServiceSocketTest, WhatIsNoAddress)
{
    const QByteArray tooLong = '/' + QByteArray(107, 'x');
    for (const QByteArray &address :
         {QByteArray("@"), QByteArray("notify"), QByteArray("vsock:2:1"), tooLong}) {
        ServiceSocket socket(address);
        EXPECT_TRUE(socket.send("x")) << "nothing is to be sent again";
    }
    EXPECT_EQ(m_log.texts(QtWarningMsg).size(), 4);
    ServiceSocket('@' + QByteArray(107, 'x')).send("x");
    EXPECT_THAT(m_log.texts(QtWarningMsg).constLast().toStdString(),
                testing::StartsWith("Der Dienstverwalter"))
        << "that is the longest name there is";
}

TEST_F(ServiceEnvironmentTest, IsTakenOutOfTheEnvironment)
{
    const ServiceEnvironment environment = take("/run/notify", "30000000", QByteArray::number(getpid()));
    EXPECT_EQ(environment.notifySocket, "/run/notify");
    EXPECT_EQ(environment.watchdog, milliseconds(30'000));
    for (const char *name : {"NOTIFY_SOCKET", "WATCHDOG_USEC", "WATCHDOG_PID"}) {
        EXPECT_FALSE(qEnvironmentVariableIsSet(name)) << name;
    }
    const ServiceEnvironment again = ServiceEnvironment::take();
    EXPECT_EQ(again.notifySocket, "");
    EXPECT_EQ(again.watchdog, milliseconds(0));
}

TEST_F(ServiceEnvironmentTest, TheWatchdogMayBeAnothers)
{
    EXPECT_EQ(take("@x", "1000000").watchdog, milliseconds(1000));
    EXPECT_EQ(take("@x", "1000000", "1").watchdog, milliseconds(0));
    EXPECT_EQ(take("", "1000000").watchdog, milliseconds(0));
}

TEST_F(ServiceEnvironmentTest, WhatIsNoPeriod)
{
    for (const char *text : {"0", "-1", "x", "1.5", "99999999999999999999"}) {
        EXPECT_EQ(take("@x", text).watchdog, milliseconds(0)) << text;
    }
    EXPECT_EQ(take("@x", "1").watchdog, milliseconds(1));
    EXPECT_EQ(take("@x", "9000000000000000000").watchdog, std::chrono::hours(24));
}
