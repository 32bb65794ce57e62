#include "brovik/settings/setting.h"
#include "log_capture.h"
#include "qml_binding.h"
#include "signal_log.h"

#include <gmock/gmock.h>

#include <QMetaEnum>
#include <QTest>

#include <cctype>
#include <map>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

using Key = Settings::SettingsEnum;

/// All keys that have a property of their own, with its name.
std::map<Key, QByteArray> propertyNames()
{
    const QMetaEnum keys = QMetaEnum::fromType<Key>();
    std::map<Key, QByteArray> result;
    for (int i = 0; i < keys.keyCount(); ++i) {
        QByteArray name = keys.key(i);
        name[0] = static_cast<char>(std::tolower(name[0]));
        if (Settings::staticMetaObject.indexOfProperty(name) >= 0) {
            result[static_cast<Key>(keys.value(i))] = name;
        }
    }
    return result;
}

/// What the backend was asked for.
struct Wish
{
    Key key;
    QVariant value;

    bool operator==(const Wish &other) const { return key == other.key && value == other.value; }
};

/// Leaves the settings as they were made.
class SettingTest : public testing::Test
{
protected:
    SettingTest()
    {
        QObject::connect(&settings, &Settings::toPy, &receiver, [this](Key key, const QJSValue &value) {
            wishes.push_back({key, value.toVariant()});
        });
    }

    void TearDown() override
    {
        settings.setSecsPumpMax(20);
        settings.setSecsPump(5);
        settings.setVorspannenP(0.7);
        settings.setDoSteamStep(true);
        settings.setLwSaureName(settings.lwSaureNameDefault());
    }

    Settings &settings = Settings::instance();
    QObject receiver;
    std::vector<Wish> wishes;
    const LogCapture capture;
};

} // namespace

TEST_F(SettingTest, EachKeyIsOfOneKindAndHasTheFieldsOfItsProperty)
{
    for (const auto &[key, name] : propertyNames()) {
        const auto field = [&, property = name](const char *suffix) {
            return settings.property(property + suffix);
        };
        const int type = field("").typeId();
        if (type == QMetaType::Bool) {
            SwitchSetting setting;
            setting.setKey(key);
            EXPECT_EQ(setting.value(), field("").toBool()) << name.data();
            EXPECT_EQ(setting.defaultValue(), field("Default").toBool()) << name.data();
        } else if (type == QMetaType::QString) {
            TextSetting setting;
            setting.setKey(key);
            EXPECT_EQ(setting.value(), field("").toString()) << name.data();
        } else {
            NumberSetting setting;
            setting.setKey(key);
            EXPECT_EQ(setting.value(), field("").toDouble()) << name.data();
            EXPECT_EQ(setting.lowest(), field("Min").toDouble()) << name.data();
            EXPECT_EQ(setting.highest(), field("Max").toDouble()) << name.data();
            EXPECT_EQ(setting.defaultValue(), field("Default").toDouble()) << name.data();
        }
    }
    EXPECT_EQ(propertyNames().size(), 39U);
    EXPECT_THAT(capture.messages(), IsEmpty());
}

TEST_F(SettingTest, ANumberFollowsItsFieldsAndNoOthers)
{
    NumberSetting setting;
    setting.setKey(Settings::SecsPump);
    const SignalLog log(setting, {"lowestChanged", "highestChanged"});
    const SignalLog values(setting, {"valueChanged"});
    settings.setSecsPumpMax(18);
    EXPECT_THAT(log.names(), ElementsAre("highestChanged"));
    settings.setSecsPumpMin(4);
    EXPECT_THAT(log.names(), ElementsAre("highestChanged", "lowestChanged"));
    EXPECT_THAT(values.names(), IsEmpty());
    settings.setSecsPump(7);
    settings.setSecsBlowMin(8);
    EXPECT_THAT(values.names(), ElementsAre("valueChanged"));
    EXPECT_EQ(std::vector({setting.lowest(), setting.value(), setting.highest()}),
              std::vector({4.0, 7.0, 18.0}));
    settings.setSecsBlowMin(5);
    settings.setSecsPumpMin(5);
}

TEST_F(SettingTest, ForeignWritesAreToldOnTheGuiThread)
{
    SwitchSetting steam;
    steam.setKey(Settings::DoSteamStep);
    TextSetting name;
    name.setKey(Settings::LwSaureName);
    const SignalLog steamLog(steam, {"valueChanged"});
    const SignalLog nameLog(name, {"valueChanged"});
    onForeignThread([this] {
        settings.setDoSteamStep(false);
        settings.setLwSaureName(QStringLiteral("Säure"));
    });
    EXPECT_THAT(steamLog.names(), IsEmpty());
    ASSERT_TRUE(QTest::qWaitFor([&] { return !nameLog.emissions().empty(); }));
    ASSERT_THAT(steamLog.names(), ElementsAre("valueChanged"));
    EXPECT_TRUE(steamLog.emissions().front().onGuiThread);
    EXPECT_TRUE(nameLog.emissions().front().onGuiThread);
    EXPECT_FALSE(steam.value());
    EXPECT_EQ(name.value(), QStringLiteral("Säure"));
}

TEST_F(SettingTest, AnotherKeyLetsGoOfTheFirst)
{
    NumberSetting setting;
    setting.setKey(Settings::SecsPump);
    const SignalLog bounds(setting, {"lowestChanged", "highestChanged"});
    const SignalLog log(setting, {"keyChanged", "valueChanged"});
    setting.setKey(Settings::VorspannenP);
    EXPECT_THAT(log.names(), ElementsAre("keyChanged", "valueChanged"));
    EXPECT_THAT(bounds.names(), testing::UnorderedElementsAre("lowestChanged", "highestChanged"));
    EXPECT_EQ(setting.value(), 0.7);
    setting.setKey(Settings::VorspannenP);
    settings.setSecsPump(9);
    EXPECT_EQ(log.names().size(), 2U);
    settings.setVorspannenP(1.1);
    EXPECT_EQ(log.names().size(), 3U);
    EXPECT_EQ(setting.value(), 1.1);
}

TEST_F(SettingTest, AKeyOfAnotherKindIsAWarning)
{
    NumberSetting number;
    number.setKey(Settings::DoSteamStep);
    SwitchSetting onOff;
    onOff.setKey(Settings::LwSaureName);
    TextSetting text;
    text.setKey(Settings::POffsetSet);
    const QStringList warnings = capture.texts(QtWarningMsg);
    ASSERT_EQ(warnings.size(), 3);
    EXPECT_TRUE(warnings[0].endsWith(QStringLiteral("DoSteamStep is no key of this kind of setting")));
    EXPECT_TRUE(warnings[1].endsWith(QStringLiteral("LwSaureName is no key of this kind of setting")));
    EXPECT_TRUE(warnings[2].endsWith(QStringLiteral("POffsetSet is no key of this kind of setting")));
    EXPECT_EQ(std::vector({number.value(), number.lowest(), number.highest(), number.defaultValue()}),
              std::vector<double>(4, 0.0));
    EXPECT_FALSE(onOff.value() || onOff.defaultValue());
    EXPECT_EQ(text.value(), QString());
}

TEST_F(SettingTest, SendAsksTheBackendAndChangesNothing)
{
    NumberSetting number;
    number.setKey(Settings::VorspannenP);
    number.send(1.2);
    SwitchSetting onOff;
    onOff.setKey(Settings::DoSteamStep);
    onOff.send(false);
    TextSetting text;
    text.setKey(Settings::LwSaureName);
    text.send(QStringLiteral("Neu"));
    EXPECT_EQ(wishes, (std::vector<Wish>{{Settings::VorspannenP, 1.2},
                                         {Settings::DoSteamStep, false},
                                         {Settings::LwSaureName, QStringLiteral("Neu")}}));
    EXPECT_EQ(number.value(), 0.7);
    EXPECT_TRUE(onOff.value());
    EXPECT_EQ(text.value(), settings.lwSaureNameDefault());
}

TEST_F(SettingTest, ANumberTellsOfWishesForItByAnybody)
{
    NumberSetting setting;
    setting.setKey(Settings::VorspannenP);
    NumberSetting other;
    other.setKey(Settings::VorspannenP);
    const SignalLog log(setting, {"asked"});
    other.send(1.5);
    Q_EMIT settings.toPy(Settings::SecsPump, QJSValue(6));
    ASSERT_EQ(log.emissions().size(), 1U);
    EXPECT_EQ(log.emissions().front().values, QVariantList{1.5});
}

TEST(SettingInQml, NeedsAKeyAndAKind)
{
    EXPECT_THAT(refusalOf("import brovik.settings; Setting { key: BrovikSettings.SecsPump }"),
                HasSubstr("A setting is a NumberSetting"));
    const QmlBinding withKey(
        {QStringLiteral("brovik.settings")},
        QStringLiteral("numberSetting.value; readonly property NumberSetting numberSetting: "
                       "NumberSetting { key: BrovikSettings.SecsPump }"));
    EXPECT_EQ(withKey.value(), 5);
    EXPECT_THROW(
        QmlBinding({QStringLiteral("brovik.settings")},
                   QStringLiteral("0; readonly property NumberSetting numberSetting: NumberSetting {}")),
        std::runtime_error);
}
