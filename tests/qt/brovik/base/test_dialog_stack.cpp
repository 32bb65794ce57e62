#include "brovik/base/dialog_stack.h"
#include "signal_log.h"

#include <gmock/gmock.h>

#include <QQmlComponent>
#include <QQmlEngine>

#include <memory>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// A dialog as the stack sees one, made of this QML.
class DialogStackTest : public testing::Test
{
protected:
    std::unique_ptr<QObject> dialog(const QByteArray &members)
    {
        QQmlComponent component(&engine);
        component.setData("import QtQml\nQtObject { " + members + " }", {});
        std::unique_ptr<QObject> made(component.create());
        EXPECT_NE(made, nullptr) << component.errorString().toStdString();
        return made;
    }

    std::unique_ptr<QObject> shownDialog()
    {
        return dialog("property int above: -1; readonly property bool covered: above >= 2; "
                      "property bool visible: true; property bool closing: false");
    }

    /// Enters a dialog and places it.
    double add(QObject &dialog, double id = 0, const QJSValue &description = {})
    {
        const double entered = stack.enter(id);
        stack.place(entered, &dialog, description);
        return entered;
    }

    static int above(const QObject &dialog) { return dialog.property("above").toInt(); }

    QQmlEngine engine;
    DialogStack stack;
    SignalLog log{stack, {"countChanged"}};
};

} // namespace

TEST_F(DialogStackTest, IsEmptyAtFirst)
{
    EXPECT_EQ(stack.count(), 0);
    EXPECT_EQ(stack.top(), 0);
    EXPECT_EQ(stack.current(), nullptr);
    EXPECT_FALSE(stack.has(0));
    EXPECT_TRUE(stack.description(0).isNull());
}

TEST_F(DialogStackTest, FreeIdsCountDownAndAreNeverUsedAgain)
{
    const auto first = shownDialog();
    EXPECT_EQ(add(*first), -1);
    stack.leave(-1);
    EXPECT_EQ(add(*first), -2);
    EXPECT_EQ(stack.enterPopup(0), -3);
    EXPECT_EQ(stack.enterPopup(-3), -4);
}

TEST_F(DialogStackTest, AFreeIdIsNotOneThatSomebodyHasChosen)
{
    const auto chosen = shownDialog();
    EXPECT_EQ(add(*chosen, -1), -1);
    EXPECT_EQ(add(*chosen, -2), -2);
    EXPECT_EQ(stack.enter(0), -3);
}

TEST_F(DialogStackTest, AnIdInUseIsRefusedAndNothingChanges)
{
    const auto first = shownDialog();
    add(*first, 7);
    log.clear();

    EXPECT_EQ(stack.enter(7), 0);

    EXPECT_EQ(stack.count(), 1);
    EXPECT_EQ(stack.current(), first.get());
    EXPECT_THAT(log.names(), IsEmpty());
}

TEST_F(DialogStackTest, APopupTakesAnIdInUse)
{
    const auto first = shownDialog();
    const auto second = dialog("");
    add(*first, 7, "text");

    EXPECT_EQ(stack.enterPopup(7), 7);
    stack.place(7, second.get(), QJSValue::NullValue);

    EXPECT_EQ(stack.count(), 2);
    EXPECT_EQ(stack.dialog(7), second.get());

    stack.leave(7);
    EXPECT_EQ(stack.count(), 1);
    EXPECT_EQ(stack.top(), 7);
    EXPECT_EQ(stack.current(), nullptr);
    EXPECT_TRUE(stack.description(7).isNull());
}

TEST_F(DialogStackTest, BetweenEnteringAndPlacingTheIdIsOnTopButNobodyFindsADialog)
{
    EXPECT_EQ(stack.enter(5), 5);
    EXPECT_EQ(stack.top(), 5);
    EXPECT_FALSE(stack.has(5));
    EXPECT_EQ(stack.current(), nullptr);
}

TEST_F(DialogStackTest, TheUppermostIsTheCurrentOneAndAnyMayLeave)
{
    const auto low = shownDialog();
    const auto middle = shownDialog();
    const auto high = shownDialog();
    add(*low, 3, "three");
    add(*middle, 4);
    add(*high, 5);
    EXPECT_EQ(stack.current(), high.get());

    stack.leave(4);
    EXPECT_EQ(stack.current(), high.get());
    stack.leave(5);
    EXPECT_EQ(stack.current(), low.get());
    EXPECT_EQ(stack.top(), 3);
    EXPECT_EQ(stack.description(3).toString(), "three");
    stack.leave(3);
    EXPECT_EQ(stack.current(), nullptr);
    EXPECT_EQ(stack.top(), 0);
}

TEST_F(DialogStackTest, EachEntryAndEachLeaveTellsOnceOfTheCount)
{
    stack.enter(3);
    stack.enterPopup(0);
    EXPECT_THAT(log.names(), ElementsAre("countChanged", "countChanged"));
    log.clear();

    stack.leave(99);
    EXPECT_THAT(log.names(), IsEmpty());
    stack.leave(3);
    EXPECT_THAT(log.names(), ElementsAre("countChanged"));
}

TEST_F(DialogStackTest, DescriptionsStayWhatTheyAre)
{
    const auto first = shownDialog();
    QJSValue description = engine.newObject();
    description.setProperty("vier", 4);
    add(*first, 1, description);
    EXPECT_TRUE(stack.description(1).strictlyEquals(description));

    add(*first, 2, QJSValue::UndefinedValue);
    EXPECT_TRUE(stack.description(2).isNull());
}

TEST_F(DialogStackTest, LargeIdsAreKeptExactly)
{
    const double large = 9007199254740991.0;
    EXPECT_EQ(stack.enter(large), large);
    EXPECT_EQ(stack.top(), large);
    EXPECT_EQ(stack.enter(large - 1), large - 1);
}

TEST_F(DialogStackTest, ADialogThatIsGoneIsNoLongerThere)
{
    const auto low = shownDialog();
    auto high = shownDialog();
    add(*low, 1);
    add(*high, 2);
    high.reset();

    EXPECT_EQ(stack.current(), nullptr);
    stack.countAbove();
    EXPECT_EQ(above(*low), 0);
    stack.leave(2);
    EXPECT_EQ(stack.current(), low.get());
}

TEST_F(DialogStackTest, CountsThoseThatShowAbove)
{
    stack.setProperty("drawn", 3);
    const auto low = shownDialog();
    const auto hidden = dialog("property bool visible: false");
    const auto closing =
        dialog("property bool visible: true; property bool closing: true; property int above: -1");
    const auto popup = dialog("property bool visible: true");
    const auto high = shownDialog();
    add(*low, 1);
    add(*hidden, 2);
    add(*closing, 3);
    add(*popup, 4);
    add(*high, 5);

    EXPECT_EQ(above(*high), 0);
    EXPECT_EQ(above(*closing), 2);
    EXPECT_EQ(above(*low), 2);

    stack.leave(4);
    EXPECT_EQ(above(*low), 1);
    high->setProperty("visible", false);
    stack.countAbove();
    EXPECT_EQ(above(*low), 0);
}

TEST_F(DialogStackTest, CountsNoFurtherThanACoveredDialogBelowTheDrawnOnes)
{
    stack.setProperty("drawn", 2);
    std::vector<std::unique_ptr<QObject>> dialogs;
    for (int i = 0; i < 5; ++i) {
        dialogs.push_back(shownDialog());
        add(*dialogs.back());
    }
    EXPECT_EQ(above(*dialogs[4]), 0);
    EXPECT_EQ(above(*dialogs[3]), 1);
    EXPECT_EQ(above(*dialogs[2]), 2);
    // These were covered when the one above them came.
    EXPECT_EQ(above(*dialogs[1]), 2);
    EXPECT_EQ(above(*dialogs[0]), 2);
}

TEST_F(DialogStackTest, ADialogMayLeaveWhileItIsCounted)
{
    const auto low = shownDialog();
    const auto middle =
        dialog("property int above: -1; property bool visible: true; property QtObject stack: null; "
               "onAboveChanged: if (above === 1) stack.leave(2)");
    middle->setProperty("stack", QVariant::fromValue<QObject *>(&stack));
    const auto high = shownDialog();
    add(*low, 1);
    add(*middle, 2);

    add(*high, 3);

    EXPECT_EQ(stack.count(), 2);
    EXPECT_FALSE(stack.has(2));
    EXPECT_EQ(above(*low), 1);
}
