#include "brovik/chart/strokes.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

namespace {

using Points = QList<QPointF>;

} // namespace

TEST(ShortRises, PiecesOfALineRiseAsAsked)
{
    EXPECT_THAT(withShortRises({{0, 0}, {1, 1}, {2, 5}, {2, -1}}, 2.0),
                ElementsAre(QPointF(0, 0), QPointF(1, 1), QPointF(1.5, 3), QPointF(2, 5), QPointF(2, 3),
                            QPointF(2, 1), QPointF(2, -1)));
    EXPECT_THAT(withShortRises({}, 2.0), IsEmpty());
    EXPECT_LE(withShortRises({{0, -1e300}, {1, 1e300}}, 1.0).size(), 200) << "whatever the numbers are";
}

/// What is left of a line if a stroke covers 2 to the side and differences below 1 do not show.
class Repeats : public testing::Test
{
protected:
    static Points rest(const Points &points) { return withoutRepeats(points, {2, 1}); }
    static void expectKept(const Points &points) { EXPECT_THAT(rest(points), ElementsAreArray(points)); }
};

TEST_F(Repeats, AStrokeUpAndDownIsDrawnOnceForThePensWidth)
{
    EXPECT_THAT(rest({{0, 0}, {0, 9}, {1, 9}, {1, 0}, {1.5, 0}, {1.5, 9}, {2, 9}, {2, 0}, {3, 0}}),
                ElementsAre(QPointF(0, 0), QPointF(0, 9), QPointF(2, 9), QPointF(2, 0), QPointF(3, 0)));
}

TEST_F(Repeats, ADifferenceThatDoesNotShowIsNone)
{
    EXPECT_THAT(rest({{0, 0}, {0, 9}, {1, 8.5}, {1, 0.5}, {5, 5}}),
                ElementsAre(QPointF(0, 0), QPointF(0, 9), QPointF(1, 0.5), QPointF(5, 5)));
}

TEST_F(Repeats, AStrokeOfOtherHeightsStays)
{
    expectKept({{0, 0}, {0, 9}, {1, 9}, {1, 2}, {5, 5}});
    expectKept({{0, 0}, {0, 9}, {1, 7}, {1, 0}, {5, 5}});
    expectKept({{0, 0}, {0, 9}, {1, 10}, {1, 0}, {5, 5}});
}

TEST_F(Repeats, DifferencesDoNotAddUp)
{
    EXPECT_THAT(rest({{0, 0}, {0, 9}, {0, 9.6}, {0, 0}, {0, 0}, {0, 10.2}, {5, 5}}),
                ElementsAre(QPointF(0, 0), QPointF(0, 9), QPointF(0, 0), QPointF(0, 10.2), QPointF(5, 5)));
}

TEST_F(Repeats, WithinAColumnALineMayGoBack)
{
    EXPECT_THAT(rest({{0.5, 0}, {0, 9}, {1, 9}, {0.8, 0}, {5, 5}}),
                ElementsAre(QPointF(0.5, 0), QPointF(0, 9), QPointF(0.8, 0), QPointF(5, 5)));
    expectKept({{3, 0}, {3, 9}, {0, 9}, {0, 0}, {5, 5}});
}

TEST_F(Repeats, TheWayOnBeginsWhereTheLineWas)
{
    EXPECT_THAT(rest({{0, 0}, {0, 9}, {1, 9}, {1, 0}, {90, 0}}),
                ElementsAre(QPointF(0, 0), QPointF(0, 9), QPointF(1, 0), QPointF(90, 0)))
        << "far away";
    EXPECT_THAT(rest({{0, 0}, {0, 9}, {1, 9}, {1, 0}, {2, -5}}),
                ElementsAre(QPointF(0, 0), QPointF(0, 9), QPointF(1, 0), QPointF(2, -5)))
        << "down from the lower end";
    EXPECT_THAT(rest({{0, 0}, {0, 9}, {1, 9}, {1, 0}, {2, 20}}),
                ElementsAre(QPointF(0, 0), QPointF(0, 9), QPointF(1, 0), QPointF(2, 20)))
        << "up from the lower end";
}

TEST_F(Repeats, OfALevelLineItsEndStays)
{
    EXPECT_THAT(rest({{0, 5}, {0.5, 5}, {1, 5}, {1.5, 5}, {1.5, 9}, {9, 9}}),
                ElementsAre(QPointF(0, 5), QPointF(0.5, 5), QPointF(1.5, 5), QPointF(1.5, 9), QPointF(9, 9)));
    expectKept({{0, 5}, {10, 5}, {20, 5}, {30, 5}, {30, 9}});
}

TEST_F(Repeats, TheLastPointStays)
{
    expectKept({{0, 5}, {10, 5}, {20, 5}, {30, 5}});
    expectKept({{0, 5}});
    expectKept({});
}
