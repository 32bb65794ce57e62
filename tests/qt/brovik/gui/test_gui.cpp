#include "brovik/gui/gui.h"

#include "qml_binding.h"
#include "shared/backend_control.h"
#include "signal_log.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>

#include <atomic>
#include <thread>
#include <vector>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const QString info = QStringLiteral("info");

QVariantMap record(const char *type)
{
    return {{QStringLiteral("type"), QString::fromLatin1(type)}};
}

std::vector<std::string> firstArguments(const SignalLog &log)
{
    std::vector<std::string> result;
    for (const SignalLog::Emission &emission : log.emissions()) {
        const QVariant &value = emission.values.constFirst();
        const QString text = value.canConvert<QVariantMap>()
                                 ? value.toMap().value(QStringLiteral("type")).toString()
                                 : value.toString();
        result.push_back(emission.name + " " + text.toStdString());
    }
    return result;
}

class GuiTest : public testing::Test
{
protected:
    Gui &gui = Gui::instance();
};

/// Counts its stops.
class CountingControl : public BackendControl
{
public:
    bool stopPython() override { return stops++ == 0; }
    int stops = 0;
};

/// A stand-in command first on the search path.
class PowerTest : public GuiTest
{
protected:
    PowerTest()
    {
        qputenv("PATH", m_directory.path().toLocal8Bit());
        gui.setBackendControl(&control);
    }
    ~PowerTest() override
    {
        gui.setBackendControl(nullptr);
        qputenv("PATH", m_path);
    }

    void install(const char *command, const QByteArray &script)
    {
        QFile file(m_directory.filePath(QString::fromLatin1(command)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\necho \"arguments:$*\" >\"${0}.ran\"\n" + script + "\n");
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    bool ran(const char *command) const
    {
        QFile file(m_directory.filePath(QString::fromLatin1(command) + QStringLiteral(".ran")));
        return file.open(QIODevice::ReadOnly) && file.readAll() == "arguments:\n";
    }

    CountingControl control;
    SignalLog messages{gui, {"message"}};

private:
    const QTemporaryDir m_directory;
    const QByteArray m_path = qgetenv("PATH");
};

} // namespace

// The first test: what waits for the screens can be seen once in a process.
TEST_F(GuiTest, MessagesAndExceptionsWaitForTheScreensMessagesFirst)
{
    const SignalLog log(gui, {"message", "exception", "question", "toastWarn"});
    gui.showException(record("A"));
    gui.showMessage(QStringLiteral("eins"), QStringLiteral("Text"), info);
    onForeignThread([this] { gui.showMessage(QStringLiteral("zwei"), {}, info); });
    gui.showException(record("B"));
    gui.showMessage(QStringLiteral("drei"), {}, QStringLiteral("unbekannt"));
    EXPECT_THAT(log.names(), IsEmpty());

    gui.deliverPending();
    EXPECT_THAT(firstArguments(log),
                ElementsAre("message eins", "message zwei", "message drei", "exception A", "exception B"));
    EXPECT_EQ(log.emissions().at(0).values,
              QVariantList({QStringLiteral("eins"), QStringLiteral("Text"), info, 0}));
    EXPECT_EQ(log.emissions().at(2).values.at(2), QStringLiteral("unbekannt"));

    gui.showMessage(QStringLiteral("vier"), {}, info);
    gui.showException(record("C"));
    EXPECT_THAT(firstArguments(log),
                ElementsAre("message eins", "message zwei", "message drei", "exception A", "exception B",
                            "message vier", "exception C"));
    gui.deliverPending();
    EXPECT_EQ(log.names().size(), 7U);
}

TEST_F(GuiTest, AnEqualWriteNotifiesNothing)
{
    const SignalLog log(gui);
    gui.setStatus(QStringLiteral("neu"));
    gui.setStatus(QString::fromUtf8("neu"));
    gui.setTitle(QStringLiteral("T"));
    gui.setTitle(QStringLiteral("T"));
    gui.setFullscreen(true);
    gui.setFullscreen(true);
    gui.changePage(Gui::PageChart);
    gui.changePage(Gui::PageChart);
    gui.setControlsEnabled(true);
    gui.setControlsEnabled(true);
    EXPECT_THAT(log.names(), ElementsAre("statusChanged", "titleChanged", "fullscreenChanged", "pageChanged",
                                         "controlsEnabledChanged"));
    EXPECT_EQ(log.emissions().at(2).values, QVariantList{QVariant(true)});
    gui.setFullscreen(false);
    gui.changePage(Gui::PageAuto);
}

TEST_F(GuiTest, ScaleToDefaultSetsEverySizeInOrder)
{
    const SignalLog log(gui);
    gui.applyItemsScaleToDefault(1.5);
    EXPECT_THAT(log.names(), ElementsAre("fSizeXsChanged", "fSizeSChanged", "fSizeMChanged", "fSizeLChanged",
                                         "hSizeChanged", "controlHeightChanged", "boxLeftMarginChanged",
                                         "itemsScaleFactorChanged"));
    EXPECT_EQ(gui.fSizeXs(), 18.0);
    EXPECT_EQ(gui.fSizeS(), 21.0);
    EXPECT_EQ(gui.fSizeM(), 24.0);
    EXPECT_EQ(gui.fSizeL(), 27.0);
    EXPECT_EQ(gui.hSize(), 30.0);
    EXPECT_EQ(gui.controlHeight(), 98);
    EXPECT_EQ(gui.boxLeftMargin(), 53);
    EXPECT_EQ(gui.itemsScaleFactor(), 1.5);
    gui.applyItemsScaleToDefault(1.5);
    EXPECT_EQ(log.names().size(), 8U);
    gui.applyItemsScaleToDefault(1.0);
    EXPECT_EQ(gui.fSizeXs(), gui.fSizeXsDefault());
    EXPECT_EQ(gui.fSizeS(), gui.fSizeSDefault());
    EXPECT_EQ(gui.fSizeM(), gui.fSizeMDefault());
    EXPECT_EQ(gui.fSizeL(), gui.fSizeLDefault());
    EXPECT_EQ(gui.hSize(), gui.hSizeDefault());
    EXPECT_EQ(gui.controlHeight(), 65);
    EXPECT_EQ(gui.boxLeftMargin(), 35);
    EXPECT_EQ(gui.itemsScaleFactor(), 1.0);
}

TEST_F(GuiTest, RelativeScaleAccumulates)
{
    const SignalLog log(gui);
    gui.applyItemsScale(1.0);
    EXPECT_THAT(log.names(), IsEmpty());
    gui.applyItemsScale(1.1);
    gui.applyItemsScale(1.1);
    EXPECT_DOUBLE_EQ(gui.fSizeXs(), 12.0 * 1.21);
    EXPECT_DOUBLE_EQ(gui.itemsScaleFactor(), 1.21);
    EXPECT_EQ(gui.controlHeight(), 79); // 65 -> 71.5 -> 72 -> 79.2
    EXPECT_EQ(gui.boxLeftMargin(), 43); // 35 -> 38.5 -> 39 -> 42.9
    EXPECT_EQ(log.names().size(), 16U);
    gui.applyItemsScaleToDefault(1.0);
}

TEST_F(GuiTest, ToastsNameTheirIcon)
{
    const SignalLog log(gui, {"toastNotify"});
    gui.showToast(QStringLiteral("a"), Gui::IconSaved, Gui::ColorGreen, 500);
    gui.showToast(QStringLiteral("b"), Gui::IconSmiley, Gui::ColorTransparent, 1000);
    gui.showToast(QStringLiteral("c"), Gui::IconInfo, Gui::ColorTransparent, 1000);
    gui.showToast(QStringLiteral("d"), static_cast<Gui::IconEnum>(7), Gui::ColorTransparent, 1000);
    ASSERT_EQ(log.emissions().size(), 4U);
    const auto icon = [&](std::size_t index) { return log.emissions().at(index).values.at(1); };
    EXPECT_EQ(icon(0), QStringLiteral("qrc:/brovik/base/img/save.svg"));
    EXPECT_EQ(icon(1), QStringLiteral("qrc:/brovik/base/img/emoji-smile.svg"));
    EXPECT_EQ(icon(2), QStringLiteral("qrc:/brovik/base/img/info-circle.svg"));
    EXPECT_FALSE(icon(3).isValid());
    EXPECT_EQ(log.emissions().at(0).values.at(0), QStringLiteral("a"));
    EXPECT_EQ(log.emissions().at(0).values.at(2).value<Gui::ColorEnum>(), Gui::ColorGreen);
    EXPECT_EQ(log.emissions().at(0).values.at(3), 500);
}

TEST_F(GuiTest, DeleteWarningsCarriesAnInvalidVariant)
{
    const SignalLog log(gui, {"_toPyQVar"});
    gui.deleteWarnings();
    ASSERT_EQ(log.emissions().size(), 1U);
    EXPECT_EQ(log.emissions().at(0).values.at(0).value<Gui::GuiValueEnum>(), Gui::DeleteWarnings);
    EXPECT_FALSE(log.emissions().at(0).values.at(1).isValid());
}

TEST_F(GuiTest, WritesOfForeignThreadsReachABinding)
{
    const QmlBinding binding({QStringLiteral("brovik.gui")}, QStringLiteral("Gui.status"));
    onForeignThread([this] { gui.setStatus(QStringLiteral("von fern")); });
    EXPECT_TRUE(binding.becomes(QStringLiteral("von fern")));
    for (const SignalLog::Emission &emission : binding.changes().emissions()) {
        EXPECT_TRUE(emission.onGuiThread);
    }
}

TEST_F(GuiTest, EnumsOfForeignSignalsReachTheScreens)
{
    const QmlBinding screen(
        {QStringLiteral("brovik.gui")},
        QStringLiteral("''; property Connections connections: Connections {\ntarget: Gui\n"
                       "function onToastNotify(text, icon, color) { seen += `color ${color} ` }\n"
                       "function onRequestPopup(which) { seen += `popup ${which}` }\n}"));
    onForeignThread([this] {
        gui.showToast({}, Gui::IconInfo, Gui::ColorGreen, 1);
        Q_EMIT gui.requestPopup(Gui::PopupRecovery, 2);
    });
    EXPECT_TRUE(screen.becomes(QStringLiteral("color 1 popup 1")));
}

TEST_F(GuiTest, FourThreadsLoseNoChange)
{
    constexpr int threads = 4;
    constexpr int writes = 2000;
    gui.deliverPending();
    const SignalLog changes(gui, {"statusChanged", "message"});
    {
        std::atomic<int> running = threads;
        std::vector<std::jthread> writers;
        for (int writer = 0; writer < threads; ++writer) {
            writers.emplace_back([this, writer, &running] {
                for (int count = 0; count < writes; ++count) {
                    gui.setStatus(QStringLiteral("%1 %2").arg(writer).arg(count));
                    gui.applyItemsScaleToDefault(1.0 + count % 2);
                }
                gui.showMessage(QString::number(writer), {}, info);
                --running;
            });
        }
        while (running > 0) {
            gui.status(); // as the bindings read it
            QCoreApplication::processEvents();
        }
    }
    EXPECT_EQ(changes.names().size(), static_cast<std::size_t>(threads * writes + threads));
    gui.applyItemsScaleToDefault(1.0);
}

TEST_F(PowerTest, PoweroffThatSucceedsStopsTheBackendAndQuits)
{
    install("poweroff", "exit 0");
    QTimer::singleShot(0, &gui, &Gui::poweroff);
    EXPECT_EQ(QCoreApplication::exec(), 0);
    EXPECT_EQ(control.stops, 1);
    EXPECT_TRUE(ran("poweroff"));
    EXPECT_THAT(messages.names(), IsEmpty());
}

TEST_F(PowerTest, PoweroffThatFailsShowsItsCodeAndGoesOn)
{
    install("poweroff", "exit 1");
    QSignalSpy quits(qApp, &QCoreApplication::aboutToQuit);
    gui.poweroff();
    EXPECT_EQ(control.stops, 1);
    EXPECT_TRUE(ran("poweroff"));
    ASSERT_EQ(messages.emissions().size(), 1U);
    EXPECT_EQ(messages.emissions().at(0).values,
              QVariantList({QStringLiteral("Poweroff"),
                            QStringLiteral("'poweroff' hat den Fehlercode 1 zurückgegeben"),
                            QStringLiteral("error"), 0}));
    QCoreApplication::processEvents();
    EXPECT_THAT(quits, IsEmpty());
}

TEST_F(PowerTest, RebootHasItsOwnWords)
{
    install("reboot", "exit 3");
    gui.reboot();
    EXPECT_TRUE(ran("reboot"));
    ASSERT_EQ(messages.emissions().size(), 1U);
    EXPECT_EQ(
        messages.emissions().at(0).values,
        QVariantList({QStringLiteral("Reboot"), QStringLiteral("'reboot' hat den Fehlercode 3 zurückgegeben"),
                      QStringLiteral("error"), 0}));
}

TEST_F(PowerTest, RebootThatSucceedsQuits)
{
    install("reboot", "exit 0");
    QTimer::singleShot(0, &gui, &Gui::reboot);
    EXPECT_EQ(QCoreApplication::exec(), 0);
    EXPECT_TRUE(ran("reboot"));
}

TEST_F(PowerTest, ACommandThatCannotBeRunHasANegativeCode)
{
    gui.poweroff();
    install("poweroff", "kill -KILL $$");
    gui.poweroff();
    ASSERT_EQ(messages.emissions().size(), 2U);
    EXPECT_EQ(messages.emissions().at(0).values.at(1),
              QStringLiteral("'poweroff' hat den Fehlercode -2 zurückgegeben"));
    EXPECT_EQ(messages.emissions().at(1).values.at(1),
              QStringLiteral("'poweroff' hat den Fehlercode -1 zurückgegeben"));
}
