#include "src/service_watcher.h"

#include "eventually.h"
#include "log_capture.h"
#include "service_manager.h"

#include <gmock/gmock.h>

#include <QTemporaryDir>

#include <vector>

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

/// The watcher on the thread of the test, which is all parts of the program as well.
class ServiceWatcherTest : public testing::Test
{
protected:
    /// Messages up to and including the first one with this text.
    std::vector<QByteArray> until(const QByteArray &text)
    {
        std::vector<QByteArray> messages;
        EXPECT_TRUE(eventually([&] {
            const QByteArray message = m_manager.receive();
            if (message != "(nothing)") {
                messages.push_back(message);
            }
            return message == text;
        })) << text.constData();
        return messages;
    }

    void becomeReady(ServiceWatcher &watcher)
    {
        watcher.noteFrame();
        watcher.noteBackend();
        until("READY=1");
    }

    ServiceEnvironment environment(std::chrono::milliseconds watchdog = 0ms) const
    {
        return {.notifySocket = m_path, .watchdog = watchdog};
    }

    const QTemporaryDir m_folder;
    const QByteArray m_path = m_folder.filePath(QStringLiteral("notify")).toLocal8Bit();
    const ServiceManager m_manager{m_path};
    const LogCapture m_log;
};

constexpr auto allParts =
    ServicePulse::Parts{ServicePulse::Gui, ServicePulse::Frame, ServicePulse::Interpreter};

} // namespace

TEST_F(ServiceWatcherTest, ReadyTakesBoth)
{
    ServiceWatcher watcher(environment(), {});
    watcher.noteBackend();
    EXPECT_EQ(m_manager.receive(), "(nothing)");
    watcher.noteFrame();
    EXPECT_EQ(m_manager.receive(), "READY=1");
    watcher.noteFrame();
    watcher.noteBackend();
    EXPECT_EQ(m_manager.receive(), "(nothing)") << "it is told once";
}

TEST_F(ServiceWatcherTest, WithoutAWatchdogNobodyIsAsked)
{
    ServiceWatcher watcher(environment(), [](ServicePulse::Parts) { ADD_FAILURE(); });
    becomeReady(watcher);
    watcher.answer(ServicePulse::Gui);
    watcher.excuse();
    watcher.end();
    EXPECT_EQ(m_manager.receive(), "STOPPING=1");
}

TEST_F(ServiceWatcherTest, StatusComesOnceASecondAndEachTextOnce)
{
    ServiceWatcher watcher(environment(), {});
    watcher.noteStatus(QStringLiteral("eins"));
    watcher.noteStatus(QStringLiteral("zwei"));
    EXPECT_THAT(until("STATUS=zwei"), ElementsAre("STATUS=zwei"));
    watcher.noteStatus(QStringLiteral("drei"));
    watcher.noteStatus(QStringLiteral("zwei"));
    watcher.noteAutomatic(true);
    EXPECT_THAT(until("STATUS=Automatik läuft, zwei"), ElementsAre("STATUS=Automatik läuft, zwei"));
}

TEST_F(ServiceWatcherTest, WhatNobodyTookIsSentAgain)
{
    const QByteArray later = m_folder.filePath(QStringLiteral("later")).toLocal8Bit();
    ServiceWatcher watcher({.notifySocket = later, .watchdog = 0ms}, {});
    watcher.noteFrame();
    watcher.noteBackend();
    const ServiceManager manager(later);
    QByteArray message;
    EXPECT_TRUE(eventually([&] { return (message = manager.receive()) != "(nothing)"; }));
    EXPECT_EQ(message, "READY=1");
}

TEST_F(ServiceWatcherTest, IsFedByAnswersAlone)
{
    ServicePulse::Parts asked;
    ServiceWatcher *answering = nullptr;
    ServiceWatcher watcher(environment(200ms), [&](ServicePulse::Parts parts) {
        asked |= parts;
        QMetaObject::invokeMethod(
            answering, [&, parts] { answering->answer(parts); }, Qt::QueuedConnection);
    });
    answering = &watcher;
    becomeReady(watcher);
    EXPECT_EQ(until("WATCHDOG=1").size(), 1U);
    EXPECT_EQ(until("WATCHDOG=1").size(), 1U);
    EXPECT_EQ(asked, allParts);
}

TEST_F(ServiceWatcherTest, WhoIsMissedIsNamed)
{
    using Parts = ServicePulse::Parts;
    const std::vector<std::pair<Parts, const char *>> rows{
        {{}, "steht der GUI-Thread."},
        {ServicePulse::Gui, "steht das Zeichnen und der Interpreter-Thread."},
        {Parts(ServicePulse::Gui) | ServicePulse::Frame, "steht der Interpreter-Thread."},
        {Parts(ServicePulse::Gui) | ServicePulse::Interpreter, "steht das Zeichnen."},
    };
    for (const auto &[answering, text] : rows) {
        const LogCapture log;
        ServiceWatcher *asked = nullptr;
        ServiceWatcher watcher(environment(400ms), [&, answered = answering](Parts parts) {
            QMetaObject::invokeMethod(
                asked, [&asked, parts, answered] { asked->answer(parts & answered); }, Qt::QueuedConnection);
        });
        asked = &watcher;
        becomeReady(watcher);
        EXPECT_TRUE(eventually([&] { return !log.texts(QtCriticalMsg).isEmpty(); }));
        EXPECT_THAT(log.texts(QtCriticalMsg).join(QLatin1Char('\n')).toStdString(), HasSubstr(text));
        watcher.answer(allParts);
        EXPECT_TRUE(log.texts(QtWarningMsg).contains(QStringLiteral("Es antworten wieder alle.")));
        until("WATCHDOG=1");
    }
}

TEST_F(ServiceWatcherTest, WhoIsExcusedIsNotMissed)
{
    ServiceWatcher watcher(environment(50ms), [](ServicePulse::Parts) {});
    becomeReady(watcher);
    watcher.excuse();
    for (int fed = 0; fed < 4; ++fed) {
        EXPECT_EQ(until("WATCHDOG=1").size(), 1U);
    }
    EXPECT_TRUE(m_log.messages().empty());
}
