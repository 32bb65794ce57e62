#include "brovik/actuator/actuator.h"
#include "declared.h"
#include "eventually.h"
#include "qml_binding.h"
#include "signal_log.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QQmlComponent>

#include <mutex>
#include <semaphore>
#include <thread>

using namespace ActuatorEnums;
using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace {

const QStringList actuatorModules = {QStringLiteral("brovik.actuator")};

struct Expected
{
    ActuatorEnum output;
    int value;
    const char *qmlName;
    QString name;
    QString logName;
    DOut::DOutTypeEnum type;
};

const Expected expected[] = {
    {MvLaugeIn, 0, "mvLaugeIn", "Lauge IN", "l_in", DOut::TypeMv},
    {MvSaureIn, 1, "mvSaureIn", "Säure IN", "s_in", DOut::TypeMv},
    {MvKalt, 2, "mvKalt", "Wasser kalt", "kalt", DOut::TypeMv},
    {MvHeiss, 3, "mvHeiss", "Wasser Heiß", "heiss", DOut::TypeMv},
    {MvKreis, 4, "mvKreis", "Kreislauf", "kreis", DOut::TypeMv},
    {MvSaureOut, 5, "mvSaureOut", "Säure OUT", "s_out", DOut::TypeMv},
    {MvLaugeOut, 6, "mvLaugeOut", "Lauge OUT", "l_out", DOut::TypeMv},
    {MvLuft, 7, "mvLuft", "Luft", "luft", DOut::TypeMv},
    {MvCo2, 8, "mvCo2", "CO2", "co2", DOut::TypeMv},
    {MvKanal, 9, "mvKanal", "Kanal", "kanal", DOut::TypePv3},
    {Pumpe, 10, "pumpe", "Pumpe", "pumpe", DOut::TypePump},
    {Heat1, 11, "heat1", "Heizung", "", DOut::TypeHeating},
    {MvSteam, 12, "mvSteam", "Dampf", "steam", DOut::TypeMv},
};

/// Leaves the outputs as they were made.
class ActuatorTest : public testing::Test
{
protected:
    void TearDown() override
    {
        actuator.setManualHeatingEnabled(false);
        actuator.unblockAllExceptOf({});
        for (DOut *dout : actuator.allDouts()) {
            dout->setState(false);
        }
        model.setDOuts({});
    }

    /// How often the outputs' blockedChanged is raised, and of which outputs, in order.
    std::vector<ActuatorEnum> notifiedBy(const std::function<void()> &action)
    {
        std::vector<ActuatorEnum> notified;
        QObject context;
        for (DOut *dout : actuator.allDouts()) {
            QObject::connect(
                dout, &DOut::blockedChanged, &context,
                [&notified, dout] { notified.push_back(dout->output()); }, Qt::DirectConnection);
        }
        action();
        return notified;
    }

    std::vector<ActuatorEnum> blocked() const
    {
        std::vector<ActuatorEnum> result;
        for (const DOut *dout : actuator.allDouts()) {
            if (dout->blocked()) {
                result.push_back(dout->output());
            }
        }
        return result;
    }

    Actuator &actuator = Actuator::instance();
    DOutModel &model = *actuator.doutModel();
};

} // namespace

TEST_F(ActuatorTest, DeclaredProperties)
{
    std::vector<std::string> properties;
    for (const Expected &row : expected) {
        properties.push_back("DOut* " + std::string(row.qmlName) + " constant");
    }
    properties.emplace_back("DOutModel* doutModel constant");
    properties.emplace_back("bool manualHeatingEnabled -> manualHeatingEnabledChanged()");
    EXPECT_THAT(declaredProperties(Actuator::staticMetaObject), ElementsAreArray(properties));
    EXPECT_THAT(declaredProperties(DOut::staticMetaObject),
                ElementsAre("QString name -> nameChanged()", "QString logName -> logNameChanged()",
                            "bool state -> stateChanged()", "bool blocked -> blockedChanged()",
                            "int num -> numChanged()"));
}

TEST_F(ActuatorTest, DeclaredSignalsAndInvokables)
{
    EXPECT_THAT(declaredSignals(Actuator::staticMetaObject),
                ElementsAre("manualHeatingEnabledChanged()", "toggle(ActuatorEnums::ActuatorEnum)"));
    EXPECT_THAT(declaredInvokables(Actuator::staticMetaObject), ElementsAre("void toggleManualHeating()"));
    EXPECT_THAT(declaredSignals(DOut::staticMetaObject),
                ElementsAre("nameChanged()", "logNameChanged()", "stateChanged()", "blockedChanged()",
                            "numChanged()"));
    EXPECT_THAT(declaredInvokables(DOut::staticMetaObject), ElementsAre("void toggle()"));
    EXPECT_THAT(declaredSignals(DOutModel::staticMetaObject),
                ElementsAre("_addDoutSignal(DOut*)", "_addDoutsSignal(QList<DOut*>)",
                            "_setDoutsSignal(QList<DOut*>)"));
    EXPECT_THAT(
        declaredInvokables(DOutModel::staticMetaObject),
        ElementsAre("void addDOut(DOut*)", "void addDOuts(QList<DOut*>)", "void setDOuts(QList<DOut*>)"));
}

TEST_F(ActuatorTest, TypesHaveTheirNumbers)
{
    EXPECT_THAT(declaredEnumerators(DOut::staticMetaObject, "DOutTypeEnum"),
                ElementsAre("TypeMv = 0", "TypeSv = 1", "TypePv3 = 2", "TypeLed = 3", "TypeHeating = 4",
                            "TypeSpare = 5", "TypePump = 6"));
    EXPECT_EQ(ToggleManualHeating, 13);
}

TEST_F(ActuatorTest, OutputsStandInTheOrderOfTheirNumbers)
{
    ASSERT_EQ(actuator.allDouts().size(), std::size(expected));
    for (const Expected &row : expected) {
        SCOPED_TRACE(row.qmlName);
        DOut *dout = actuator.allDouts().at(static_cast<std::size_t>(row.value));
        EXPECT_EQ(row.output, row.value);
        EXPECT_EQ(dout, actuator.property(row.qmlName).value<DOut *>());
        EXPECT_EQ(dout, actuator.doutFromEnum(row.output));
        EXPECT_EQ(dout->output(), row.output);
        EXPECT_EQ(dout->type(), row.type);
        EXPECT_EQ(dout->name(), row.name);
        EXPECT_EQ(dout->logName(), row.logName);
    }
}

TEST_F(ActuatorTest, InitialValues)
{
    for (const DOut *dout : actuator.allDouts()) {
        EXPECT_FALSE(dout->state());
        EXPECT_FALSE(dout->blocked());
        EXPECT_EQ(dout->num(), -1);
    }
    EXPECT_FALSE(actuator.manualHeatingEnabled());
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_EQ(model.parent(), &actuator);
}

TEST_F(ActuatorTest, ValuesThatAreNoOutputHaveNone)
{
    EXPECT_EQ(actuator.doutFromEnum(ToggleManualHeating), nullptr);
    EXPECT_EQ(actuator.doutFromEnum(static_cast<ActuatorEnum>(-1)), nullptr);
    EXPECT_EQ(actuator.doutFromEnum(static_cast<ActuatorEnum>(1000)), nullptr);
}

TEST_F(ActuatorTest, EqualStateDoesNotNotify)
{
    const SignalLog log(*actuator.mvKalt());
    actuator.mvKalt()->setState(false);
    EXPECT_THAT(log.names(), IsEmpty());
    actuator.mvKalt()->setState(true);
    actuator.mvKalt()->setState(true);
    EXPECT_THAT(log.names(), ElementsAre("stateChanged"));
}

TEST_F(ActuatorTest, NamesCompareByContent)
{
    DOut &dout = *actuator.pumpe();
    const SignalLog log(dout);
    dout.setName(QString::fromUtf8("Pumpe"));
    dout.setLogName(QString::fromUtf8("pumpe"));
    EXPECT_THAT(log.names(), IsEmpty());
    dout.setName(QStringLiteral("Pumpe 2"));
    dout.setLogName(QStringLiteral("p2"));
    dout.setNum(4);
    dout.setBlocked(true);
    EXPECT_THAT(log.names(), ElementsAre("nameChanged", "logNameChanged", "numChanged", "blockedChanged"));
    dout.setName(QStringLiteral("Pumpe"));
    dout.setLogName(QStringLiteral("pumpe"));
    dout.setNum(-1);
}

TEST_F(ActuatorTest, AHandlerOnTheSameThreadMayReadBack)
{
    bool seen = false;
    QObject context;
    QObject::connect(actuator.mvKalt(), &DOut::blockedChanged, &context,
                     [&] { seen = actuator.mvKalt()->blocked(); });
    actuator.mvKalt()->setBlocked(true);
    EXPECT_TRUE(seen);
}

TEST_F(ActuatorTest, BlockingAllNotifiesThirteenTimesAndOnlyOnce)
{
    EXPECT_EQ(notifiedBy([this] { actuator.blockAllExceptOf({}); }).size(), 13U);
    EXPECT_EQ(blocked().size(), 13U);
    EXPECT_THAT(notifiedBy([this] { actuator.blockAllExceptOf({}); }), IsEmpty());
    EXPECT_EQ(notifiedBy([this] { actuator.unblockAllExceptOf({}); }).size(), 13U);
    EXPECT_THAT(blocked(), IsEmpty());
}

TEST_F(ActuatorTest, BlockingNotifiesInTheOrderOfTheOutputs)
{
    const auto notified = notifiedBy([this] { actuator.blockAllExceptOf({MvSteam, MvLaugeIn}); });
    EXPECT_THAT(notified, ElementsAre(MvSaureIn, MvKalt, MvHeiss, MvKreis, MvSaureOut, MvLaugeOut, MvLuft,
                                      MvCo2, MvKanal, Pumpe, Heat1));
}

TEST_F(ActuatorTest, OppositeBlockOperationsOfOneSetLeaveThatSetBlocked)
{
    actuator.blockAllExceptOf({MvKalt});
    EXPECT_FALSE(actuator.mvKalt()->blocked());
    actuator.unblockAllExceptOf({MvKalt});
    EXPECT_THAT(blocked(), ElementsAre(MvKalt));
}

TEST_F(ActuatorTest, ActiveOutputs)
{
    EXPECT_THAT(actuator.activeDouts(), IsEmpty());
    actuator.pumpe()->setState(true);
    actuator.mvKalt()->setState(true);
    EXPECT_THAT(actuator.activeDouts(), UnorderedElementsAre(actuator.pumpe(), actuator.mvKalt()));
}

TEST_F(ActuatorTest, ActiveOutputsAreReadWhileAnOutputIsBeingWritten)
{
    std::binary_semaphore writing{0};
    std::binary_semaphore done{0};
    QObject context;
    QObject::connect(
        actuator.pumpe(), &DOut::stateChanged, &context,
        [&] {
            writing.release();
            done.acquire();
        },
        Qt::DirectConnection);
    std::jthread writer([this] { actuator.pumpe()->setState(true); });
    writing.acquire();
    // The writer holds the output's mutex until `done`.
    EXPECT_THAT(actuator.activeDouts(), ElementsAre(actuator.pumpe()));
    done.release();
}

TEST_F(ActuatorTest, ToggleIsSentWhateverTheStateAndEvenIfBlocked)
{
    DOut &dout = *actuator.mvKreis();
    const SignalLog log(actuator, {"toggle"});
    dout.toggle();
    dout.setBlocked(true);
    dout.toggle();
    dout.setState(true);
    dout.toggle();
    actuator.toggleManualHeating();
    std::vector<int> sent;
    for (const SignalLog::Emission &emission : log.emissions()) {
        sent.push_back(emission.values.at(0).toInt());
    }
    EXPECT_THAT(sent, ElementsAre(MvKreis, MvKreis, MvKreis, ToggleManualHeating));
    EXPECT_TRUE(dout.state()) << "only the backend changes a state";
}

TEST_F(ActuatorTest, ForeignWritesReachABindingOnTheGuiThread)
{
    const QmlBinding binding(actuatorModules,
                             QStringLiteral("Actuator.mvKalt.state + ' ' + Actuator.manualHeatingEnabled"));
    const SignalLog log(*actuator.mvKalt());
    EXPECT_EQ(binding.value(), QStringLiteral("false false"));
    onForeignThread([this] {
        actuator.mvKalt()->setState(true);
        actuator.setManualHeatingEnabled(true);
        actuator.setManualHeatingEnabled(true);
    });
    EXPECT_TRUE(binding.becomes(QStringLiteral("true true")));
    ASSERT_EQ(log.emissions().size(), 1U);
    EXPECT_FALSE(log.emissions().front().onGuiThread);
    for (const SignalLog::Emission &change : binding.changes().emissions()) {
        EXPECT_TRUE(change.onGuiThread);
    }
}

TEST_F(ActuatorTest, ScreensKnowTheEnums)
{
    const QmlBinding binding(
        actuatorModules,
        QStringLiteral("[ActuatorEnums.MvLaugeIn, ActuatorEnums.Heat1, ActuatorEnums.ToggleManualHeating, "
                       "DOut.TypePv3].join()"));
    EXPECT_EQ(binding.value(), QStringLiteral("0,11,13,2"));
}

TEST_F(ActuatorTest, EnumsCannotBeCreated)
{
    EXPECT_THAT(refusalOf("import brovik.actuator\nActuatorEnums {}"), HasSubstr("Error: only enums"));
}

TEST_F(ActuatorTest, ModelHasOneRole)
{
    EXPECT_EQ(model.roleNames(), (QHash<int, QByteArray>{{257, "dout"}}));
    model.setDOuts({actuator.pumpe()});
    const QModelIndex row = model.index(0);
    EXPECT_EQ(model.data(row, 257).value<DOut *>(), actuator.pumpe());
    EXPECT_FALSE(model.data(row, Qt::DisplayRole).isValid());
    EXPECT_FALSE(model.data({}, 257).isValid());
    EXPECT_FALSE(model.data(model.index(1), 257).isValid());
    EXPECT_EQ(model.rowCount(row), 0);
}

TEST_F(ActuatorTest, ReplacingTheModelRemovesAllRowsAndInsertsTheNewOnes)
{
    const SignalLog log(model, {"rowsInserted", "rowsRemoved", "modelReset", "dataChanged"});
    model.setDOuts({actuator.pumpe(), actuator.heat1()});
    model.setDOuts({actuator.mvKalt()});
    EXPECT_THAT(log.names(), ElementsAre("rowsInserted", "rowsRemoved", "rowsInserted"));
    EXPECT_EQ(log.emissions().at(0).values.at(2).toInt(), 1);
    EXPECT_EQ(log.emissions().at(1).values.at(2).toInt(), 1);
    EXPECT_EQ(log.emissions().at(2).values.at(2).toInt(), 0);
    EXPECT_EQ(model.rowCount(), 1);
}

TEST_F(ActuatorTest, AnEmptyListOnAnEmptyModelRaisesNothing)
{
    const SignalLog log(model,
                        {"rowsInserted", "rowsRemoved", "rowsAboutToBeInserted", "rowsAboutToBeRemoved"});
    model.setDOuts({});
    model.addDOuts({});
    EXPECT_THAT(log.names(), IsEmpty());
}

TEST_F(ActuatorTest, RowsAreAddedAtTheEnd)
{
    const SignalLog log(model, {"rowsInserted"});
    model.requestAddDOut(actuator.pumpe());
    model.requestAddDOuts({actuator.heat1(), actuator.mvKalt()});
    ASSERT_EQ(log.emissions().size(), 2U);
    EXPECT_EQ(log.emissions().at(1).values.at(1).toInt(), 1);
    EXPECT_EQ(log.emissions().at(1).values.at(2).toInt(), 2);
    EXPECT_EQ(model.data(model.index(2), DOutModel::dOutRole).value<DOut *>(), actuator.mvKalt());
}

TEST_F(ActuatorTest, ARequestOnTheGuiThreadIsDoneAtOnce)
{
    model.requestSetDOuts({actuator.pumpe()});
    EXPECT_EQ(model.rowCount(), 1);
}

TEST_F(ActuatorTest, AForeignRequestChangesTheRowsOnTheGuiThread)
{
    const SignalLog log(model, {"rowsInserted"});
    onForeignThread([this] {
        model.requestAddDOut(actuator.pumpe());
        model.requestAddDOuts({actuator.heat1()});
        model.requestSetDOuts({actuator.mvKalt(), actuator.mvHeiss()});
    });
    EXPECT_EQ(model.rowCount(), 0) << "the request must not wait for the rows";
    QCoreApplication::processEvents();
    EXPECT_EQ(model.rowCount(), 2);
    EXPECT_EQ(log.emissions().size(), 3U);
    for (const SignalLog::Emission &emission : log.emissions()) {
        EXPECT_TRUE(emission.onGuiThread);
    }
}

TEST_F(ActuatorTest, OfSeveralForeignListsOnlyTheNewestMakesRows)
{
    const SignalLog requests(model, {"_setDoutsSignal"});
    const SignalLog rows(model, {"rowsInserted", "rowsRemoved"});
    onForeignThread([this] {
        for (int request = 0; request < 100; ++request) {
            model.requestSetDOuts({actuator.mvKalt(), actuator.mvHeiss()});
        }
        model.requestSetDOuts({actuator.pumpe()});
    });
    QCoreApplication::processEvents();
    EXPECT_EQ(requests.emissions().size(), 101U);
    EXPECT_THAT(rows.names(), ElementsAre("rowsInserted"));
    EXPECT_EQ(model.data(model.index(0), DOutModel::dOutRole).value<DOut *>(), actuator.pumpe());
}

TEST_F(ActuatorTest, AListIsShownAtTheEndOfATurnHoweverManyFollow)
{
    QObject context;
    onForeignThread([this] { model.requestSetDOuts({actuator.mvKalt()}); });
    // Whenever a list has come, there is another one already.
    QMetaObject::invokeMethod(
        &context, [this] { onForeignThread([this] { model.requestSetDOuts({actuator.heat1()}); }); },
        Qt::QueuedConnection);
    onForeignThread([this] { model.requestSetDOuts({actuator.pumpe()}); });
    std::vector<DOut *> shown;
    QObject::connect(&model, &DOutModel::rowsInserted, &context, [&] {
        shown.push_back(model.data(model.index(0), DOutModel::dOutRole).value<DOut *>());
    });
    EXPECT_TRUE(eventually([&] { return !shown.empty() && shown.back() == actuator.heat1(); }));
    EXPECT_THAT(shown, ElementsAre(actuator.pumpe(), actuator.heat1()));
}

TEST_F(ActuatorTest, WhatIsAddedAfterAListStandsBehindIt)
{
    onForeignThread([this] {
        model.requestSetDOuts({actuator.mvKalt()});
        model.requestAddDOut(actuator.pumpe());
        model.requestSetDOuts({actuator.mvHeiss()});
        model.requestAddDOut(actuator.heat1());
    });
    const SignalLog rows(model, {"rowsInserted"});
    QCoreApplication::processEvents();
    std::vector<int> places;
    for (const SignalLog::Emission &emission : rows.emissions()) {
        places.push_back(emission.values.at(1).toInt());
    }
    EXPECT_THAT(places, ElementsAre(0, 1, 0, 1));
    ASSERT_EQ(model.rowCount(), 2);
    EXPECT_EQ(model.data(model.index(0), DOutModel::dOutRole).value<DOut *>(), actuator.mvHeiss());
    EXPECT_EQ(model.data(model.index(1), DOutModel::dOutRole).value<DOut *>(), actuator.heat1());
    model.requestSetDOuts({actuator.mvKalt()});
    EXPECT_EQ(model.rowCount(), 1) << "on the thread of the model a request is a call";
}

TEST_F(ActuatorTest, AListSetOnTheGuiThreadReplacesTheOneThatWaits)
{
    DOut *first = nullptr;
    QObject context;
    onForeignThread([this] { model.requestSetDOuts({actuator.mvLaugeIn()}); });
    QMetaObject::invokeMethod(
        &context,
        [&] {
            model.setDOuts({actuator.mvKalt()});
            model.addDOut(actuator.heat1());
            first = model.data(model.index(0), DOutModel::dOutRole).value<DOut *>();
        },
        Qt::QueuedConnection);
    onForeignThread([this] { model.requestSetDOuts({actuator.mvHeiss()}); });
    QCoreApplication::processEvents();
    EXPECT_EQ(first, actuator.mvKalt());
}

TEST_F(ActuatorTest, ADelegateFindsTheOutputByRoleAndAsModelData)
{
    model.setDOuts({actuator.pumpe(), actuator.heat1()});
    const QString delegate = QStringLiteral("property DOut byRole: dout; property DOut byData: modelData");
    QQmlEngine engine;
    engine.addImportPath(QStringLiteral(":/"));
    QQmlComponent component(&engine);
    component.setData(QStringLiteral("import QtQml; import brovik.actuator\n"
                                     "Instantiator { model: Actuator.doutModel; delegate: QtObject { %1 } }")
                          .arg(delegate)
                          .toUtf8(),
                      QUrl());
    const std::unique_ptr<QObject> instantiator(component.create());
    ASSERT_TRUE(instantiator) << component.errorString().toStdString();
    QObject *item = nullptr;
    QMetaObject::invokeMethod(instantiator.get(), "objectAt", Q_RETURN_ARG(QObject *, item), Q_ARG(int, 1));
    ASSERT_NE(item, nullptr);
    EXPECT_EQ(item->property("byRole").value<DOut *>(), actuator.heat1());
    EXPECT_EQ(item->property("byData").value<DOut *>(), actuator.heat1());
}

TEST_F(ActuatorTest, TheEngineOwnsNoOutput)
{
    for (DOut *dout : actuator.allDouts()) {
        EXPECT_EQ(QJSEngine::objectOwnership(dout), QJSEngine::CppOwnership);
    }
    EXPECT_EQ(QJSEngine::objectOwnership(&model), QJSEngine::CppOwnership);
}
