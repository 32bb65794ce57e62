#include "traced_screen.h"

#include "qml_binding.h"

#include <QApplication>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>

namespace {

// Of the 128 that green differs from red in the line's colour.
constexpr int muchInk = 80;
constexpr int someInk = 24;

int ink(QRgb pixel)
{
    return qGreen(pixel) - qRed(pixel);
}

template <typename Visit> void forEachPixel(const QImage &image, const Visit &visit)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            visit(x, y);
        }
    }
}

int inkedPixels(const QImage &image)
{
    int count = 0;
    forEachPixel(image, [&](int x, int y) { count += ink(image.pixel(x, y)) > muchInk ? 1 : 0; });
    return count;
}

bool hasInkNear(const QImage &image, int x, int y)
{
    for (int nextY = std::max(y - 1, 0); nextY <= std::min(y + 1, image.height() - 1); ++nextY) {
        for (int nextX = std::max(x - 1, 0); nextX <= std::min(x + 1, image.width() - 1); ++nextX) {
            if (ink(image.pixel(nextX, nextY)) > someInk) {
                return true;
            }
        }
    }
    return false;
}

double strangers(const QImage &image, const QImage &other)
{
    int inked = 0;
    int alone = 0;
    forEachPixel(image, [&](int x, int y) {
        if (ink(image.pixel(x, y)) > muchInk) {
            ++inked;
            alone += hasInkNear(other, x, y) ? 0 : 1;
        }
    });
    return inked == 0 ? 0.0 : double(alone) / inked;
}

} // namespace

TracedScreen::TracedScreen(TraceKind kind)
    : m_reference(kind)
{
    m_view.engine()->addImportPath(QStringLiteral(":/"));
    m_view.setInitialProperties({{QStringLiteral("line"), QVariant::fromValue(&line)},
                                 {QStringLiteral("kind"), static_cast<int>(kind)}});
    m_view.setSource(QUrl::fromLocalFile(QStringLiteral(KUBELOR_TEST_DIR "/TracedChart.qml")));
    m_view.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&m_view));
    EXPECT_NE(m_view.rootObject(), nullptr);
}

void TracedScreen::add(const QPointF &point)
{
    m_reference.add(point);
    onForeignThread([&] { line.addPoint(point); });
}

void TracedScreen::replace(const ChartLine::Points &points)
{
    m_reference.replace(points);
    onForeignThread([&] { line.setData(points); });
}

void TracedScreen::look(double from, double to)
{
    time().setRange(from, to);
    settle();
}

void TracedScreen::settle()
{
    for (int round = 0; round < 5; ++round) {
        QCoreApplication::processEvents();
    }
}

ChartTrace &TracedScreen::trace()
{
    return *m_view.rootObject()->property("trace").value<ChartTrace *>();
}

QLineSeries &TracedScreen::series()
{
    return *m_view.rootObject()->property("drawn").value<QLineSeries *>();
}

QValueAxis &TracedScreen::time()
{
    return *m_view.rootObject()->property("time").value<QValueAxis *>();
}

QValueAxis &TracedScreen::value()
{
    return *m_view.rootObject()->property("value").value<QValueAxis *>();
}

ChartLine::Points TracedScreen::shown()
{
    return series().points();
}

double TracedScreen::difference()
{
    m_view.rootObject()->property("reference").value<QLineSeries *>()->replace(m_reference.points());
    settle();
    const QImage both = m_view.grabWindow().convertToFormat(QImage::Format_RGB32);
    const int width = both.width() / 2;
    m_drawn = both.copy(0, 0, width, both.height());
    m_expected = both.copy(width, 0, width, both.height());
    return std::max(strangers(m_drawn, m_expected), strangers(m_expected, m_drawn));
}

int TracedScreen::inked() const
{
    return inkedPixels(m_drawn);
}

int TracedScreen::expectedInk() const
{
    return inkedPixels(m_expected);
}

ChartLine::Points record(TraceKind kind, int count)
{
    ChartLine::Points points;
    for (int index = 0; index < count; ++index) {
        const double x = index * 0.5;
        if (kind == TraceKind::Measured) {
            points.append({x, 5 + 3 * std::sin(x * 0.02) + index * 7919 % 13 * 0.1});
        } else if (index % 20 == 7) {
            const double step = index / 20 % 13 + 1;
            points.append({x, kind == TraceKind::Step ? step : index / 20 % 2 == 0 ? 6.0 : 0.0});
        }
    }
    return points;
}

/// Charts are drawn by widgets' code, and without a display.
int main(int argc, char **argv)
{
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    const QApplication application(argc, argv);
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
