#include "shared/gui_thread.h"

#include "qml_binding.h"

#include <gtest/gtest.h>

TEST(GuiThread, IsThatOfTheApplication)
{
    EXPECT_EQ(guiThread(), QThread::currentThread());
    EXPECT_TRUE(onGuiThread());
}

TEST(GuiThread, IsNoOther)
{
    bool foreignThreadPasses = true;
    onForeignThread([&] { foreignThreadPasses = onGuiThread(); });
    EXPECT_FALSE(foreignThreadPasses);
}
