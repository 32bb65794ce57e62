#include "src/py/python_stacks.h"

#include <gtest/gtest.h>

TEST(PythonStacks, WithoutPythonNobodyIsAskedForThem)
{
    PythonStacks::write(); // the signal that asks would end the process
}
