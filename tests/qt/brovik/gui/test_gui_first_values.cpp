// What stands in Gui before anybody has written to it, as C++ and as the screens read it.

#include "brovik/gui/gui.h"
#include "qml_binding.h"

#include <gmock/gmock.h>

namespace {

QVariant onScreen(const char *property)
{
    return QmlBinding({QStringLiteral("brovik.gui")}, QStringLiteral("Gui.%1").arg(QLatin1String(property)))
        .value();
}

} // namespace

TEST(GuiFirstValues, OfTheHostsState)
{
    const Gui &gui = Gui::instance();
    EXPECT_EQ(gui.title().toStdString(), "");
    EXPECT_FALSE(gui.fullscreen());
    EXPECT_FALSE(gui.controlsEnabled());
    EXPECT_FALSE(gui.darkThemeEnabled());
    EXPECT_FALSE(Gui::debug());
}

TEST(GuiFirstValues, OnTheScreens)
{
    EXPECT_EQ(onScreen("title"), QVariant(QString()));
    for (const char *property : {"fullscreen", "controlsEnabled", "darkThemeEnabled", "debug"}) {
        EXPECT_EQ(onScreen(property), QVariant(false)) << property;
    }
}
