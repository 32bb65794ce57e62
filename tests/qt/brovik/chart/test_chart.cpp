#include "brovik/chart/chart.h"
#include "declared.h"
#include "log_capture.h"
#include "qml_binding.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QLineSeries>
#include <QPointer>
#include <QQmlListReference>
#include <QTest>
#include <QThread>
#include <QValueAxis>

#include <memory>
#include <string>
#include <vector>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const QStringList chartModules = {QStringLiteral("brovik.chart")};

ChartMetaData savedChart(const QString &name)
{
    return {name, QStringLiteral("success"), QStringLiteral("gut"), QStringLiteral("heute"), 60};
}

/// Leaves the object as it was made.
class ChartTest : public testing::Test
{
protected:
    void TearDown() override
    {
        chart.clear();
        chart.setMetaDataList({});
        chart.setShownSecs(60.0);
        chart.setPrevXMin(0.0);
        chart.setPrevXMax(60.0);
        QCoreApplication::processEvents();
    }

    /// What QML reads at this moment.
    QList<ChartMetaData *> listInQml()
    {
        const QQmlListReference list(&chart, "metaDataList");
        QList<ChartMetaData *> records;
        for (qsizetype index = 0; index < list.count(); ++index) {
            records.append(qobject_cast<ChartMetaData *>(list.at(index)));
        }
        return records;
    }

    Chart &chart = Chart::instance();
};

} // namespace

TEST_F(ChartTest, DeclaredProperties)
{
    EXPECT_THAT(
        declaredProperties(Chart::staticMetaObject),
        ElementsAre("ChartLine* co2 constant", "ChartLine* heiss constant", "ChartLine* kalt constant",
                    "ChartLine* kanal constant", "ChartLine* kreis constant", "ChartLine* lIn constant",
                    "ChartLine* lOut constant", "ChartLine* luft constant", "ChartLine* lw constant",
                    "ChartLine* p constant", "ChartLine* pumpe constant", "ChartLine* sIn constant",
                    "ChartLine* sOut constant", "ChartLine* steam constant", "ChartLine* step constant",
                    "writable double shownSecs", "writable double prevXMin", "writable double prevXMax",
                    "bool active -> activeChanged()", "bool savable -> savableChanged()",
                    "QString currentName -> currentNameChanged()",
                    "QStringList assignedNames -> assignedNamesChanged()",
                    "QStringList stepNames -> stepNamesChanged()",
                    "QStringList actuatorNames -> actuatorNamesChanged()",
                    "QQmlListProperty<ChartMetaData> metaDataList -> metaDataListChanged()"));
}

TEST_F(ChartTest, DeclaredSignals)
{
    EXPECT_THAT(declaredSignals(Chart::staticMetaObject),
                ElementsAre("activeChanged()", "savableChanged()", "currentNameChanged()",
                            "assignedNamesChanged()", "stepNamesChanged()", "actuatorNamesChanged()",
                            "metaDataListChanged()", "toPy(Chart::ChartEnum,QJSValue)"));
}

TEST_F(ChartTest, DeclaredEnumerators)
{
    EXPECT_THAT(declaredEnumerators(Chart::staticMetaObject, "ChartEnum"),
                ElementsAre("ChartInvalid = 0", "ChartSave = 1", "ChartLoad = 2", "ChartDelete = 3",
                            "ChartRename = 4", "ChartHand = 5"));
    EXPECT_THAT(declaredEnumerators(Chart::staticMetaObject, "LineEnum"),
                ElementsAre("LineInvalid = 0", "LineCo2 = 1", "LineHeiss = 2", "LineKalt = 3",
                            "LineKanal = 4", "LineKreis = 5", "LineLIn = 6", "LineLOut = 7", "LineLuft = 8",
                            "LineLw = 9", "LineP = 10", "LinePumpe = 11", "LineSIn = 12", "LineSOut = 13",
                            "LineSteam = 14", "LineStep = 15"));
}

TEST_F(ChartTest, DeclarationsOfALine)
{
    EXPECT_THAT(declaredProperties(ChartLine::staticMetaObject),
                ElementsAre("QList<QPointF> data -> dataChanged()", "QString name -> nameChanged()"));
    EXPECT_THAT(declaredSignals(ChartLine::staticMetaObject),
                ElementsAre("dataChanged()", "nameChanged()", "pointAdded(QPointF)"));
    EXPECT_THAT(declaredInvokables(ChartLine::staticMetaObject),
                ElementsAre("void registerQmlLine(QLineSeries*,QValueAxis*)"));
}

TEST_F(ChartTest, DeclarationsOfARecord)
{
    EXPECT_THAT(declaredProperties(ChartMetaData::staticMetaObject),
                ElementsAre("QString name -> nameChanged()", "QString result -> resultChanged()",
                            "QString status -> statusChanged()",
                            "QString dateTimeStr -> dateTimeStrChanged()",
                            "int duration -> durationChanged()"));
    EXPECT_THAT(declaredSignals(ChartMetaData::staticMetaObject),
                ElementsAre("nameChanged()", "resultChanged()", "statusChanged()", "dateTimeStrChanged()",
                            "durationChanged()"));
}

TEST_F(ChartTest, LinesBelongToTheChart)
{
    for (const ChartLine *line : chart.lines()) {
        EXPECT_EQ(line->parent(), &chart);
        EXPECT_EQ(chart.property(line->name().toUtf8().constData()).value<ChartLine *>(), line);
    }
}

TEST_F(ChartTest, ClearsTheLinesInTheirOrder)
{
    QObject screen;
    std::vector<std::string> cleared;
    for (ChartLine *line : chart.lines()) {
        line->setData({{0, 1}});
        QObject::connect(line, &ChartLine::dataChanged, &screen,
                         [&cleared, line] { cleared.push_back(line->name().toStdString()); });
    }
    chart.clear();
    EXPECT_THAT(cleared, ElementsAre("co2", "heiss", "kalt", "kanal", "kreis", "lIn", "lOut", "luft", "lw",
                                     "p", "pumpe", "sIn", "sOut", "steam", "step"));
}

TEST_F(ChartTest, InitialView)
{
    EXPECT_EQ(chart.shownSecs(), 60.0);
    EXPECT_EQ(chart.prevXMin(), 0.0);
    EXPECT_EQ(chart.prevXMax(), 60.0);
    EXPECT_EQ(chart.currentName(), QStringLiteral("Kein Chart geladen"));
}

TEST_F(ChartTest, BindingsFollowTheWindow)
{
    const QmlBinding binding(chartModules, QStringLiteral("Chart.prevXMin + ' bis ' + Chart.prevXMax"));
    EXPECT_EQ(binding.value(), QStringLiteral("0 bis 60"));
    const QmlBinding writer(chartModules,
                            QStringLiteral("{ Chart.prevXMin = 5; Chart.prevXMax = 7.5; return 1; }"));
    EXPECT_EQ(binding.value(), QStringLiteral("5 bis 7.5"));
    EXPECT_EQ(chart.prevXMax(), 7.5);
}

TEST_F(ChartTest, ScreensKeepTheShownLength)
{
    const QmlBinding writer(chartModules,
                            QStringLiteral("{ Chart.shownSecs = 12.5; return Chart.shownSecs; }"));
    EXPECT_EQ(writer.value(), 12.5);
    EXPECT_EQ(chart.shownSecs(), 12.5);
}

TEST_F(ChartTest, QmlReadsPoints)
{
    chart.p()->setData({{0, 1}, {2, 3}});
    const QmlBinding binding(chartModules, QStringLiteral("Chart.p.data.length + ' ' + Chart.p.data[1].y"));
    EXPECT_EQ(binding.value(), QStringLiteral("2 3"));
    onForeignThread([this] { chart.p()->setData({{0, 1}, {2, 4}, {3, 5}}); });
    EXPECT_TRUE(binding.becomes(QStringLiteral("3 4")));
}

TEST_F(ChartTest, APointArrivesQueuedAsACopy)
{
    QObject screen;
    QList<QPointF> arrived;
    QThread *thread = nullptr;
    QObject::connect(chart.p(), &ChartLine::pointAdded, &screen, [&](const QPointF &point) {
        arrived.append(point);
        thread = QThread::currentThread();
    });
    const LogCapture log;
    onForeignThread([this] {
        chart.p()->addPoint({1, 2});
        chart.p()->addPoint({2, 3});
    });
    EXPECT_THAT(arrived, IsEmpty());
    QCoreApplication::processEvents();
    EXPECT_THAT(arrived, ElementsAre(QPointF(1, 2), QPointF(2, 3)));
    EXPECT_EQ(thread, QCoreApplication::instance()->thread());
}

TEST_F(ChartTest, ASignalLeavesWithThePointStored)
{
    qsizetype stored = 0;
    QObject::connect(
        chart.p(), &ChartLine::pointAdded, chart.p(), [&] { stored = chart.p()->data().size(); },
        Qt::DirectConnection);
    const LogCapture log;
    chart.p()->addPoint({1, 2});
    chart.p()->disconnect(chart.p());
    EXPECT_EQ(stored, 1);
}

TEST_F(ChartTest, TheComplaintComesAfterTheSignal)
{
    const LogCapture log;
    QObject screen;
    QList<qsizetype> complaints;
    QObject::connect(chart.p(), &ChartLine::pointAdded, &screen,
                     [&] { complaints.append(log.texts(QtCriticalMsg).size()); });
    chart.p()->addPoint({1, 2});
    EXPECT_THAT(complaints, ElementsAre(0));
    EXPECT_EQ(log.texts(QtCriticalMsg).size(), 1);
}

TEST_F(ChartTest, NoComplaintWhileThereIsASeries)
{
    const LogCapture log;
    QValueAxis axis;
    {
        QLineSeries series;
        chart.p()->registerQmlLine(&series, &axis);
        EXPECT_EQ(chart.p()->series(), &series);
        EXPECT_EQ(chart.p()->axis(), &axis);
        chart.p()->addPoint({1, 1});
        EXPECT_THAT(log.messages(), IsEmpty());
    }
    EXPECT_EQ(chart.p()->series(), nullptr);
    chart.p()->addPoint({2, 1});
    EXPECT_EQ(log.texts(QtCriticalMsg).size(), 1);
    chart.p()->registerQmlLine(nullptr, nullptr);
    EXPECT_EQ(chart.p()->axis(), nullptr);
}

TEST_F(ChartTest, AnAxisThatIsGoneIsForgotten)
{
    QLineSeries series;
    {
        QValueAxis axis;
        chart.p()->registerQmlLine(&series, &axis);
    }
    EXPECT_EQ(chart.p()->axis(), nullptr);
    EXPECT_EQ(chart.p()->series(), &series);
}

TEST_F(ChartTest, AReaderGetsEachPointOnce)
{
    const LogCapture log;
    ChartLine &line = *chart.p();
    ChartLine::Mark mark = line.newsSince({}).mark;
    line.addPoint({1, 1});
    line.addPoint({2, 2});
    ChartLine::News news = line.newsSince(mark);
    EXPECT_FALSE(news.replaced);
    EXPECT_THAT(news.added, ElementsAre(QPointF(1, 1), QPointF(2, 2)));
    EXPECT_THAT(line.newsSince(news.mark).added, IsEmpty());

    line.setData({{5, 5}});
    line.addPoint({6, 6});
    news = line.newsSince(news.mark);
    EXPECT_TRUE(news.replaced);
    EXPECT_THAT(news.whole, ElementsAre(QPointF(5, 5)));
    EXPECT_THAT(news.added, ElementsAre(QPointF(6, 6)));

    line.clear();
    news = line.newsSince(news.mark);
    EXPECT_TRUE(news.replaced);
    EXPECT_THAT(news.whole, IsEmpty());
    EXPECT_THAT(news.added, IsEmpty());
}

TEST(ChartLineTest, APointOfANewLineCameSingly)
{
    ChartLine line(QStringLiteral("test"), nullptr);
    const LogCapture log;
    line.addPoint({1, 1});
    const ChartLine::News news = line.newsSince({});
    EXPECT_THAT(news.whole, IsEmpty());
    EXPECT_THAT(news.added, ElementsAre(QPointF(1, 1)));
}

TEST_F(ChartTest, RecordsAreValues)
{
    const ChartMetaData one = savedChart(QStringLiteral("a"));
    ChartMetaData other = one;
    EXPECT_EQ(one, other);
    other.setName(QStringLiteral("A"));
    EXPECT_FALSE(one == other);
    other = one;
    EXPECT_EQ(one, other);
}

TEST_F(ChartTest, AFieldNotifiesOnce)
{
    ChartMetaData saved = savedChart(QStringLiteral("a"));
    const SignalLog log(saved);
    saved.setStatus(QStringLiteral("neu"));
    saved.setStatus(QStringLiteral("neu"));
    saved = savedChart(QStringLiteral("b"));
    EXPECT_THAT(log.names(), ElementsAre("statusChanged", "nameChanged", "statusChanged"));
}

TEST_F(ChartTest, QmlGetsANewCopyEachTime)
{
    chart.metaDataList().append(savedChart(QStringLiteral("a")));
    const auto first = listInQml();
    const auto second = listInQml();
    ASSERT_EQ(first.size(), 1);
    EXPECT_NE(first[0], second[0]);
    EXPECT_NE(first[0], chart.metaDataList().at(0).get());
    EXPECT_EQ(*first[0], savedChart(QStringLiteral("a")));
    EXPECT_EQ(first[0]->thread(), QCoreApplication::instance()->thread());
    EXPECT_EQ(QJSEngine::objectOwnership(first[0]), QJSEngine::CppOwnership);
    chart.metaDataList().at(0)->setName(QStringLiteral("b"));
    EXPECT_EQ(first[0]->name(), QStringLiteral("a"));
}

TEST_F(ChartTest, QmlCannotChangeTheList)
{
    const QQmlListReference list(&chart, "metaDataList");
    EXPECT_TRUE(list.canCount() && list.canAt());
    EXPECT_FALSE(list.canAppend() || list.canClear() || list.canReplace() || list.canRemoveLast());
}

TEST_F(ChartTest, CopiesGoWhenTheScreensHaveNewerOnes)
{
    chart.metaDataList().append(savedChart(QStringLiteral("a")));
    const QPointer<ChartMetaData> first = listInQml().constFirst();
    const auto announce = [this] { onForeignThread([this] { chart.emitMetaDataListChanged(); }); };
    announce();
    QCoreApplication::processEvents();
    EXPECT_FALSE(first.isNull()) << "a view may show it until its next frame";
    EXPECT_TRUE(QTest::qWaitFor([&] {
        announce();
        return first.isNull();
    }));
}

TEST_F(ChartTest, AViewFollowsTheList)
{
    const QmlBinding binding(
        chartModules, QStringLiteral("{ let all = ''; for (let i = 0; i < Chart.metaDataList.length; ++i) "
                                     "all += Chart.metaDataList[i].name; return all; }"));
    onForeignThread([this] {
        for (const char *name : {"b", "A", "c"}) {
            chart.metaDataList().append(savedChart(QString::fromLatin1(name)));
        }
        chart.sortAndEmitMetaDataListChanged();
    });
    EXPECT_TRUE(binding.becomes(QStringLiteral("Abc")));
    onForeignThread([this] {
        chart.metaDataList().removeAt(1);
        chart.emitMetaDataListChanged();
    });
    EXPECT_TRUE(binding.becomes(QStringLiteral("Ac")));
}

TEST_F(ChartTest, ARecordThatWentMeanwhileIsNull)
{
    chart.metaDataList().append(savedChart(QStringLiteral("a")));
    auto list = chart.qmlMetaDataList();
    EXPECT_EQ(list.count(&list), 1);
    chart.metaDataList().removeAt(0);
    EXPECT_EQ(list.at(&list, 0), nullptr);
    EXPECT_EQ(list.at(&list, -1), nullptr);
}

TEST_F(ChartTest, TheListMayChangeWhileItIsRead)
{
    std::atomic<bool> ended = false;
    const std::unique_ptr<QThread> backend(QThread::create([&] {
        for (int round = 0; round < 2000; ++round) {
            chart.metaDataList().append(savedChart(QString::number(round)));
            if (round % 3 != 0) {
                chart.metaDataList().removeAt(0);
            }
            chart.emitMetaDataListChanged();
        }
        ended = true;
    }));
    backend->start();
    while (!ended) {
        for (const ChartMetaData *read : listInQml()) {
            EXPECT_TRUE(read == nullptr || read->duration() == 60);
        }
        QCoreApplication::processEvents();
    }
    backend->wait();
    EXPECT_EQ(chart.metaDataList().size(), 667);
}

TEST_F(ChartTest, ARequestCarriesItsNumberAndValue)
{
    const SignalLog log(chart, {"toPy"});
    const QmlBinding emitter(chartModules,
                             QStringLiteral("{ Chart.toPy(Chart.ChartRename, ['a', 'b']); return 1; }"));
    ASSERT_EQ(log.emissions().size(), 1U);
    EXPECT_EQ(log.emissions()[0].values[0].toInt(), 4);
    EXPECT_EQ(log.emissions()[0].values[1].value<QJSValue>().toString(), QStringLiteral("a,b"));
}
