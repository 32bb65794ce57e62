#include "src/end_watch.h"

#include "eventually.h"
#include "log_capture.h"
#include "src/py/end_signals.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QTimer>
#include <QWindow>

#include <csignal>

using testing::ElementsAre;

namespace {

/// A window that counts how often it is closed.
class Window : public QWindow
{
public:
    int closings() const { return m_closings; }

protected:
    bool event(QEvent *event) override
    {
        m_closings += event->type() == QEvent::Close ? 1 : 0;
        return QWindow::event(event);
    }

private:
    int m_closings = 0;
};

/// A process of its own each: twelve seconds after a signal it leaves by force.
class EndWatchTest : public testing::Test
{
protected:
    EndWatchTest() { EndSignals::claim(); }

    static void raiseFromEventLoop(int signal)
    {
        QTimer::singleShot(0, [signal] { std::raise(signal); });
    }

    bool tells(const QString &text, qsizetype times = 1) const
    {
        return eventually([&] { return m_log.texts(QtWarningMsg).count(text) == times; });
    }

    const LogCapture m_log;
    EndWatch m_watch;
};

const QString firstLine = QStringLiteral("Das Ende wartet seit 1 s auf den GUI-Thread.");
const QString secondLine = QStringLiteral("Das Ende wartet seit 2 s auf den GUI-Thread.");

} // namespace

TEST_F(EndWatchTest, ASignalClosesTheWindowsAndQuits)
{
    Window window;
    window.show();
    raiseFromEventLoop(SIGTERM);
    EXPECT_EQ(QCoreApplication::exec(), 0);
    EXPECT_EQ(window.closings(), 1);
    EXPECT_FALSE(window.isVisible());
    EXPECT_THAT(m_log.texts(QtInfoMsg), ElementsAre(QStringLiteral("SIGTERM: Das Programm wird beendet.")));
}

TEST_F(EndWatchTest, FurtherSignalsChangeNothing)
{
    raiseFromEventLoop(SIGHUP);
    EXPECT_EQ(QCoreApplication::exec(), 0);
    std::raise(SIGTERM);
    std::raise(SIGINT);
    m_watch.finish();
    EXPECT_TRUE(tells(secondLine)) << "the end that the signal asked for goes on";
    EXPECT_THAT(m_log.texts(QtInfoMsg), ElementsAre(QStringLiteral("SIGHUP: Das Programm wird beendet.")));
}

TEST_F(EndWatchTest, AnEndInItsOwnTimeIsToldOfUntilItIsOver)
{
    m_watch.begin();
    EXPECT_TRUE(tells(firstLine));
    m_watch.finish();
    m_watch.begin();
    EXPECT_TRUE(tells(firstLine, 2)) << "it began anew";
}

TEST_F(EndWatchTest, TheBeginningCounts)
{
    m_watch.begin();
    EXPECT_TRUE(tells(firstLine));
    m_watch.begin();
    EXPECT_TRUE(tells(secondLine));
    EXPECT_THAT(m_log.texts(QtWarningMsg), ElementsAre(firstLine, secondLine)) << "it did not begin anew";
}
