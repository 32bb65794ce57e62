#include "brovik/chart/axis_lines.h"

#include <gmock/gmock.h>

#include <QChart>
#include <QImage>
#include <QLineSeries>
#include <QPainter>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QValueAxis>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <vector>

using testing::Each;
using testing::SizeIs;

namespace {

bool isCut(const QPen &pen)
{
    return !pen.dashPattern().isEmpty();
}

/// A chart with an axis of each direction.
class AxisLinesTest : public testing::Test
{
protected:
    AxisLinesTest()
    {
        chart.addAxis(horizontal, Qt::AlignBottom);
        chart.addAxis(vertical, Qt::AlignLeft);
    }

    QChart chart;
    QValueAxis *const horizontal = new QValueAxis;
    QValueAxis *const vertical = new QValueAxis;
    const AxisLines lines;
};

/// A line from top to bottom, drawn as a chart draws it.
QImage drawn(const QPen &pen, double x)
{
    QImage image(20, 1000, QImage::Format_ARGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(pen);
    painter.drawLine(QLineF(x, 0, x, image.height()));
    return image;
}

/// The largest difference of a colour.
int difference(const QImage &left, const QImage &right)
{
    int largest = 0;
    for (int y = 0; y < left.height(); ++y) {
        for (int x = 0; x < left.width(); ++x) {
            largest = std::max(largest, std::abs(qGreen(left.pixel(x, y)) - qGreen(right.pixel(x, y))));
        }
    }
    return largest;
}

} // namespace

TEST_F(AxisLinesTest, TheGridOfAHorizontalAxisIsCut)
{
    const QPen line = horizontal->linePen();
    lines.cutSteep(horizontal);
    EXPECT_TRUE(isCut(horizontal->gridLinePen()));
    EXPECT_EQ(horizontal->linePen(), line);
}

TEST_F(AxisLinesTest, AVerticalAxisItselfIsCut)
{
    const QPen grid = vertical->gridLinePen();
    lines.cutSteep(vertical);
    EXPECT_TRUE(isCut(vertical->linePen()));
    EXPECT_EQ(vertical->gridLinePen(), grid);
}

TEST_F(AxisLinesTest, ACutLineLooksAsBefore)
{
    constexpr int unseen = 4; // of 255
    QPen whole(Qt::green, 1.0);
    vertical->setLinePen(whole);
    lines.cutSteep(vertical);
    for (const double x : {10.0, 10.156, 10.5, 10.9}) {
        EXPECT_LE(difference(drawn(vertical->linePen(), x), drawn(whole, x)), unseen) << x;
    }
    whole.setWidthF(3.0);
    vertical->setLinePen(whole);
    lines.cutSteep(vertical);
    EXPECT_LE(difference(drawn(vertical->linePen(), 10.3), drawn(whole, 10.3)), unseen);
}

TEST_F(AxisLinesTest, AnotherColourLeavesItCut)
{
    lines.cutSteep(vertical);
    vertical->setLinePenColor(Qt::red);
    EXPECT_TRUE(isCut(vertical->linePen()));
}

TEST_F(AxisLinesTest, NoAxisIsNone)
{
    lines.cutSteep(nullptr);
    EXPECT_THAT(chart.axes(), SizeIs(2));
}

TEST(ChartPlot, CutsTheSteepLinesOfAllAxes)
{
    QQmlEngine engine;
    engine.addImportPath(QStringLiteral(":/"));
    QQmlComponent component(&engine);
    component.setData("import brovik.chart\n"
                      "ChartPlot {\n"
                      "    readonly property ChartsOptionGroup group: ChartsOptionGroup {}\n"
                      "    optsLw: group; optsP: group; optsValves: group; optsSteps: group\n"
                      "}\n",
                      {});
    const std::unique_ptr<QObject> plot(component.create());
    ASSERT_NE(plot, nullptr) << qPrintable(component.errorString());
    const auto *const time = plot->property("axisTime").value<QValueAxis *>();
    EXPECT_TRUE(isCut(time->gridLinePen()));
    std::vector<bool> cut;
    for (const char *line : {"lineP", "lineLw", "lineStep", "lineLIn"}) {
        for (const QAbstractAxis *axis : plot->property(line).value<QLineSeries *>()->attachedAxes()) {
            if (axis->orientation() == Qt::Vertical) {
                cut.push_back(isCut(axis->linePen()));
            }
        }
    }
    EXPECT_THAT(cut, SizeIs(4));
    EXPECT_THAT(cut, Each(true));
}
