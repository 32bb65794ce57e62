// What stands in Shell before anybody has written to it.

#include "brovik/shell/shell.h"

#include <gtest/gtest.h>

TEST(ShellFirstValues, NoUrgencyHasAColor)
{
    const Shell &shell = Shell::instance();
    for (const QColor &color : {shell.colorUrgencyLow(), shell.colorUrgencyMedium(), shell.colorUrgencyHigh(),
                                shell.colorUrgencyOther()}) {
        EXPECT_FALSE(color.isValid());
    }
    for (const char *urgency : {"low", "medium", "high", "other", ""}) {
        EXPECT_FALSE(shell.getUrgencyColor(QString::fromLatin1(urgency)).isValid()) << urgency;
    }
}
