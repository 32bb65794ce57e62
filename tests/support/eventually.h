#pragma once

#include <QTest>

/// Handles events until the condition holds; false if it never does.
template <typename Condition> bool eventually(const Condition &condition)
{
    return QTest::qWaitFor(condition, 20000);
}
