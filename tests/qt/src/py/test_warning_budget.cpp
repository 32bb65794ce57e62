#include "src/py/warning_budget.h"

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace {

const WarningBudget::Clock::time_point start{};

/// How many dialogs may open at that time.
int allowed(WarningBudget &budget, WarningBudget::Clock::duration time)
{
    constexpr int farTooMany = 100;
    int count = 0;
    while (count < farTooMany && budget.take(start + time)) {
        ++count;
    }
    return count;
}

} // namespace

TEST(WarningBudget, AllowsSoManyAtOnce)
{
    EXPECT_EQ(WarningBudget::most, 10);
    WarningBudget budget(start);
    EXPECT_TRUE(budget.take(start));
    EXPECT_EQ(budget.left(), WarningBudget::most - 1);
    EXPECT_EQ(allowed(budget, 0s), WarningBudget::most - 1);
    EXPECT_EQ(budget.left(), 0);
    EXPECT_EQ(allowed(budget, WarningBudget::period - 1ns), 0);
}

TEST(WarningBudget, AllowsOneMoreInEachPeriod)
{
    WarningBudget budget(start);
    allowed(budget, 0s);
    EXPECT_EQ(allowed(budget, WarningBudget::period), 1);
    EXPECT_EQ(allowed(budget, 2 * WarningBudget::period - 1ns), 0);
    EXPECT_EQ(allowed(budget, 2 * WarningBudget::period), 1);
    EXPECT_EQ(allowed(budget, 5 * WarningBudget::period), 3);
}

TEST(WarningBudget, NeverAllowsMoreThanAtFirst)
{
    WarningBudget budget(start);
    allowed(budget, 0s);
    EXPECT_EQ(allowed(budget, 1000 * WarningBudget::period), WarningBudget::most);
    EXPECT_EQ(allowed(budget, 1001 * WarningBudget::period - 1ns), 0);
}

TEST(WarningBudget, PeriodBeginsWithTheFirstDialog)
{
    WarningBudget budget(start);
    allowed(budget, WarningBudget::period / 2);
    EXPECT_EQ(allowed(budget, WarningBudget::period), 0);
    EXPECT_EQ(allowed(budget, 3 * WarningBudget::period / 2), 1);
}
