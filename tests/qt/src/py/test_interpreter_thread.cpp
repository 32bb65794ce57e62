#include "src/py/interpreter_thread.h"

#include "qml_binding.h"

#include <gtest/gtest.h>

TEST(InterpreterThread, IsTheOneThatStartedPythonLast)
{
    EXPECT_TRUE(onInterpreterThread()) << "nobody has started Python yet";
    bool starterPasses = false;
    onForeignThread([&] {
        becomeInterpreterThread();
        starterPasses = onInterpreterThread();
    });
    EXPECT_TRUE(starterPasses);
    EXPECT_FALSE(onInterpreterThread());
    becomeInterpreterThread();
    EXPECT_TRUE(onInterpreterThread());
}
