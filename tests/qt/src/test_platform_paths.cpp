#include "src/platform_paths.h"

#include <gtest/gtest.h>

#include <string>

// The backend's installation and whoever raises the window are made for these very paths.
TEST(PlatformPaths, ThoseOfTheMachine)
{
    const PlatformPaths paths = PlatformPaths::machine();
    EXPECT_EQ(paths.backendDir.toStdString(), "/opt/brovik/kb/py");
    EXPECT_EQ(paths.interpreter.toStdString(), "/opt/brovik/kb/py/venv/bin/python3");
    EXPECT_EQ(paths.environmentFile.toStdString(), "/etc/environment");
    EXPECT_EQ(paths.raiseSocket.toStdString(), "/tmp/brovik_kb.sock");
    EXPECT_TRUE(paths.settingsRoot.isEmpty()) << "the user's configuration directory";
}
