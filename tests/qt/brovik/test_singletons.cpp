#include "brovik/actuator/actuator.h"
#include "brovik/auto/auto.h"
#include "brovik/chart/chart.h"
#include "brovik/config/config.h"
#include "brovik/gpio/gpio.h"
#include "brovik/gui/gui.h"
#include "brovik/sensor/sensor.h"
#include "brovik/settings/settings.h"
#include "brovik/shell/shell.h"
#include "brovik/simulator/simulator.h"
#include "brovik/wifi/wifi.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QPointer>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QThread>

#include <memory>

namespace {

struct Singleton
{
    const char *module;
    const char *qmlName;
    QObject &(*instance)();
};

template <typename Object> QObject &instanceOf()
{
    return Object::instance();
}

const Singleton singletons[] = {
    {"actuator", "Actuator", instanceOf<Actuator>},
    {"auto", "Auto_", instanceOf<Auto>},
    {"chart", "Chart", instanceOf<Chart>},
    {"config", "Config", instanceOf<Config>},
    {"gpio", "GPIO", instanceOf<GPIO>},
    {"gui", "Gui", instanceOf<Gui>},
    {"sensor", "Sensor", instanceOf<Sensor>},
    {"settings", "BrovikSettings", instanceOf<Settings>},
    {"shell", "Shell", instanceOf<Shell>},
    {"simulator", "Simulator", instanceOf<Simulator>},
    {"wifi", "Wifi", instanceOf<Wifi>},
};

class Singletons : public testing::TestWithParam<Singleton>
{
protected:
    QObject *inEngine(QQmlEngine &engine) const
    {
        engine.addImportPath(QStringLiteral(":/"));
        const QString uri = QStringLiteral("brovik.%1").arg(GetParam().module);
        QQmlComponent component(&engine);
        component.setData(QStringLiteral("import QtQml; import %1; QtObject { property var it: %2 }")
                              .arg(uri, GetParam().qmlName)
                              .toUtf8(),
                          QUrl());
        const std::unique_ptr<QObject> object(component.create());
        EXPECT_TRUE(object) << component.errorString().toStdString();
        return object ? object->property("it").value<QObject *>() : nullptr;
    }
};

} // namespace

TEST_P(Singletons, TheEngineHasTheOneObject)
{
    QQmlEngine engine;
    EXPECT_EQ(inEngine(engine), &GetParam().instance());
    QQmlEngine another;
    EXPECT_EQ(inEngine(another), &GetParam().instance());
}

TEST_P(Singletons, TheEngineDoesNotOwnIt)
{
    const QPointer<QObject> object = &GetParam().instance();
    {
        QQmlEngine engine;
        EXPECT_EQ(QJSEngine::objectOwnership(inEngine(engine)), QJSEngine::CppOwnership);
    }
    EXPECT_FALSE(object.isNull());
}

TEST_P(Singletons, LivesOnTheGuiThread)
{
    EXPECT_EQ(GetParam().instance().thread(), QCoreApplication::instance()->thread());
}

TEST_P(Singletons, IsMarkedForQml)
{
    const QMetaObject &meta = *GetParam().instance().metaObject();
    const auto info = [&](const char *name) {
        return QByteArray(meta.classInfo(meta.indexOfClassInfo(name)).value());
    };
    EXPECT_EQ(info("QML.Singleton"), "true");
    EXPECT_THAT(info("QML.Element"), testing::AnyOf(QByteArray("auto"), QByteArray(GetParam().qmlName)));
}

INSTANTIATE_TEST_SUITE_P(All, Singletons, testing::ValuesIn(singletons),
                         [](const auto &row) { return row.param.qmlName; });
