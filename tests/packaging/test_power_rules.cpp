#include <gmock/gmock.h>

#include <QFile>
#include <QJSEngine>

namespace {

/// The rule in place of polkit: what it answers to a user who wants an action.
class PowerRulesTest : public testing::Test
{
protected:
    PowerRulesTest()
    {
        QFile file(QStringLiteral(RULES));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        m_engine.evaluate(
            QStringLiteral("var rule; var polkit = { Result: { YES: 'yes', NOT_HANDLED: 'not handled' },"
                           " addRule: function (given) { rule = given; } };"));
        const QJSValue loaded = m_engine.evaluate(QString::fromUtf8(file.readAll()));
        EXPECT_FALSE(loaded.isError()) << qPrintable(loaded.toString());
    }

    std::string answer(const char *user, const char *action)
    {
        const QString question = QStringLiteral("rule({ id: '%2' }, { user: '%1' })");
        return m_engine.evaluate(question.arg(QLatin1String(user), QLatin1String(action)))
            .toString()
            .toStdString();
    }

    QJSEngine m_engine;
};

} // namespace

TEST_F(PowerRulesTest, TheProgramsUserSwitchesOffAndRestarts)
{
    for (const char *action : {"org.freedesktop.login1.power-off", "org.freedesktop.login1.reboot",
                               "org.freedesktop.login1.power-off-multiple-sessions",
                               "org.freedesktop.login1.reboot-multiple-sessions"}) {
        EXPECT_EQ(answer("kubelor", action), "yes") << action;
        EXPECT_EQ(answer("nobody", action), "not handled") << action;
    }
}

TEST_F(PowerRulesTest, NothingElse)
{
    for (const char *action : {"org.freedesktop.login1.halt", "org.freedesktop.login1.reboot-ignore-inhibit",
                               "org.freedesktop.systemd1.manage-units", ""}) {
        EXPECT_EQ(answer("kubelor", action), "not handled") << action;
    }
}
