#include "log_capture.h"
#include "shared/notification_brake.h"
#include "shared/shared_object.h"
#include "shared/shared_property.h"
#include "signal_log.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QThread>

#include <limits>
#include <memory>
#include <vector>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// A shared object with one property of each kind.
class Sample : public SharedObject
{
    Q_OBJECT

    SHARED_PROPERTY(QString, text, setText, "text", QStringLiteral("a"), "")
    SHARED_RANGED(int, count, setCount, "count", 2, 8, 5, "")
    SHARED_RANGED(double, level, setLevel, "level", 0.5, 2.5, 1.5, "")
};

struct ClampRow
{
    const char *name;
    double stored;
    double written;
    double result;
    QStringList log;
    std::vector<std::string> emissions;
};

std::ostream &operator<<(std::ostream &out, const ClampRow &row)
{
    return out << row.name;
}

class Clamping : public testing::TestWithParam<ClampRow>
{};

const ClampRow clampRows[] = {
    {"inside", 1.5, 2.0, 2.0, {}, {"levelChanged"}},
    {"equal", 1.5, 1.5, 1.5, {}, {}},
    {"at_the_lower_bound", 1.5, 0.5, 0.5, {}, {"levelChanged"}},
    {"at_the_upper_bound", 1.5, 2.5, 2.5, {}, {"levelChanged"}},
    {"too_small", 1.5, 0.25, 0.5, {"[Sample WERT ZU KLEIN] 0.25 wird zu 0.5 geändert."}, {"levelChanged"}},
    {"too_great", 1.5, 3.0, 2.5, {"[Sample WERT ZU GROß] 3 wird zu 2.5 geändert."}, {"levelChanged"}},
    {"too_small_again",
     0.5,
     0.25,
     0.5,
     {"[Sample WERT ZU KLEIN] 0.25 wird zu 0.5 geändert."},
     {"levelChanged"}},
    {"digits_of_the_stream",
     1.5,
     3.123456789,
     2.5,
     {"[Sample WERT ZU GROß] 3.12346 wird zu 2.5 geändert."},
     {"levelChanged"}},
    {"infinite",
     1.5,
     std::numeric_limits<double>::infinity(),
     2.5,
     {"[Sample WERT ZU GROß] inf wird zu 2.5 geändert."},
     {"levelChanged"}},
    {"not_a_number",
     1.5,
     notANumber,
     0.5,
     {"[Sample WERT ZU KLEIN] nan wird zu 0.5 geändert."},
     {"levelChanged"}},
};

/// Writes its own texts, and counts how often a listener on the same thread reads another text than the one
/// it wrote.
int foreignTextsSeen(Sample &sample, int writer)
{
    constexpr int writes = 2000;
    QString written;
    int foreign = 0;
    const QThread *const thread = QThread::currentThread();
    const auto connection = QObject::connect(&sample, &Sample::textChanged, [&, thread] {
        if (QThread::currentThread() == thread && sample.text() != written) {
            ++foreign;
        }
    });
    for (int write = 0; write < writes; ++write) {
        written = QStringLiteral("%1:%2").arg(writer).arg(write);
        sample.setText(written);
    }
    QObject::disconnect(connection);
    return foreign;
}

} // namespace

TEST(SharedObject, AChangeFromAnotherThreadIsAnnouncedToTheGuiThread)
{
    Sample sample;
    const auto write = [&](const char *text) { sample.setText(QString::fromLatin1(text)); };
    write("on the thread of the screens");
    EXPECT_EQ(NotificationBrake::instance().waiting(), 0);
    const std::unique_ptr<QThread> backend(QThread::create([&] {
        write("b");
        write("b");
        write("c");
    }));
    backend->start();
    backend->wait();
    EXPECT_EQ(NotificationBrake::instance().waiting(), 2);
    while (NotificationBrake::instance().waiting() > 0) {
        QCoreApplication::processEvents();
    }
}

TEST(SharedObject, NotifiesOnceAndNotOnAnEqualWrite)
{
    Sample sample;
    const SignalLog log(sample);
    sample.setText(QStringLiteral("b"));
    sample.setText(QStringLiteral("b"));
    EXPECT_THAT(log.names(), ElementsAre("textChanged"));
    EXPECT_EQ(sample.text(), QStringLiteral("b"));
}

TEST_P(Clamping, StoresLogsAndNotifies)
{
    Sample sample;
    sample.setLevel(GetParam().stored);
    const SignalLog log(sample);
    const LogCapture capture;
    sample.setLevel(GetParam().written);
    EXPECT_EQ(sample.level(), GetParam().result);
    EXPECT_EQ(capture.texts(QtCriticalMsg), GetParam().log);
    EXPECT_EQ(capture.messages().size(), static_cast<std::size_t>(GetParam().log.size()));
    EXPECT_EQ(log.names(), GetParam().emissions);
}

INSTANTIATE_TEST_SUITE_P(Rows, Clamping, testing::ValuesIn(clampRows),
                         [](const auto &row) { return row.param.name; });

TEST(SharedObject, IntegersAreClampedAndLoggedAsSuch)
{
    Sample sample;
    const LogCapture capture;
    sample.setCount(std::numeric_limits<int>::min());
    EXPECT_EQ(sample.count(), 2);
    sample.setCount(9);
    EXPECT_EQ(sample.count(), 8);
    EXPECT_THAT(capture.texts(QtCriticalMsg),
                ElementsAre("[Sample WERT ZU KLEIN] -2147483648 wird zu 2 geändert.",
                            "[Sample WERT ZU GROß] 9 wird zu 8 geändert."));
}

TEST(SharedObject, ABoundLeavesTheValueAlone)
{
    Sample sample;
    const SignalLog log(sample);
    const LogCapture capture;
    sample.setCountMin(6);
    sample.setCountMax(4);
    EXPECT_EQ(sample.count(), 5);
    EXPECT_THAT(log.names(), ElementsAre("countMinChanged", "countMaxChanged"));
    EXPECT_THAT(capture.messages(), IsEmpty());
}

TEST(SharedObject, TheLowerOfCrossedBoundsWins)
{
    Sample sample;
    const LogCapture capture;
    sample.setCountMin(6);
    sample.setCountMax(4);
    sample.setCount(3);
    EXPECT_EQ(sample.count(), 6);
    sample.setCount(7);
    EXPECT_EQ(sample.count(), 4);
}

TEST(SharedObject, TheMutexIsHeldWhileTheSignalIsOut)
{
    Sample sample;
    std::vector<int> foreign(4);
    std::vector<std::unique_ptr<QThread>> threads;
    for (std::size_t writer = 0; writer < foreign.size(); ++writer) {
        threads.emplace_back(QThread::create(
            [&, writer] { foreign[writer] = foreignTextsSeen(sample, static_cast<int>(writer)); }));
    }
    for (const auto &thread : threads) {
        thread->start();
    }
    for (const auto &thread : threads) {
        thread->wait();
    }
    EXPECT_THAT(foreign, testing::Each(0));
}

#include "test_shared_object.moc"
