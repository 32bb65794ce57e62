#include "platform_paths.h"

#include <gtest/gtest.h>

// The backend's installation and whoever raises the window are made for these very paths.
TEST(PlatformPaths, ThoseOfTheMachine)
{
    const PlatformPaths paths = PlatformPaths::machine();
    EXPECT_EQ(paths.backendDir, QStringLiteral("/opt/brovik/kb/py"));
    EXPECT_EQ(paths.interpreter, QStringLiteral("/opt/brovik/kb/py/venv/bin/python3"));
    EXPECT_EQ(paths.environmentFile, QStringLiteral("/etc/environment"));
    EXPECT_EQ(paths.raiseSocket, QStringLiteral("/tmp/brovik_kb.sock"));
    EXPECT_TRUE(paths.settingsRoot.isEmpty()) << "the user's configuration directory";
}
