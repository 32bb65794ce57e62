#include "brovik/shell/console_writer.h"
#include "brovik/shell/shell.h"
#include "eventually.h"
#include "signal_log.h"

#include <gmock/gmock.h>

#include <QAbstractTextDocumentLayout>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickTextDocument>
#include <QTextBlock>
#include <QTextFragment>

#include <algorithm>
#include <memory>
#include <set>

using testing::IsEmpty;

namespace {

constexpr int lineCount = 100;

const char *const program = R"(
    import QtQuick
    import brovik.shell

    Flickable {
        width: 200
        height: 100
        contentHeight: edit.height

        property alias edit: edit
        property alias writer: writer

        TextEdit {
            id: edit
            width: 200
            textFormat: TextEdit.RichText
        }
        ConsoleWriter {
            id: writer
            output: edit
        }
    }
)";

/// A console that shows a few of its lines.
class ConsoleWriterTest : public testing::Test
{
protected:
    ConsoleWriterTest()
    {
        m_engine.addImportPath(QStringLiteral(":/"));
        QQmlComponent component(&m_engine);
        component.setData(program, {});
        m_flick.reset(qobject_cast<QQuickItem *>(component.create()));
        EXPECT_NE(m_flick, nullptr) << qPrintable(component.errorString());
        for (int line = 0; line < lineCount; ++line) {
            Q_EMIT Shell::instance().appendStdout(QStringLiteral("Zeile %1").arg(line));
        }
        EXPECT_TRUE(eventually([this] { return document().blockCount() == lineCount; }));
    }

    QTextDocument &document() const
    {
        const auto *const edit = m_flick->property("edit").value<QQuickItem *>();
        return *edit->property("textDocument").value<QQuickTextDocument *>()->textDocument();
    }

    ConsoleWriter &writer() const { return *m_flick->property("writer").value<ConsoleWriter *>(); }

    /// Which lines the layout says are to be drawn anew while `task` runs.
    template <typename Task> std::set<int> redrawnBy(const Task &task) const
    {
        std::set<int> lines;
        const auto connection = QObject::connect(
            document().documentLayout(), &QAbstractTextDocumentLayout::updateBlock,
            [&lines](const QTextBlock &block) { EXPECT_TRUE(lines.insert(block.blockNumber()).second); });
        task();
        QObject::disconnect(connection);
        return lines;
    }

    /// The lines that are at least partly in sight.
    std::set<int> linesInSight() const
    {
        const double top = m_flick->property("contentY").toDouble();
        const double bottom = top + m_flick->height();
        std::set<int> lines;
        for (QTextBlock block = document().begin(); block.isValid(); block = block.next()) {
            const QRectF place = document().documentLayout()->blockBoundingRect(block);
            if (place.bottom() > top && place.top() <= bottom) {
                lines.insert(block.blockNumber());
            }
        }
        return lines;
    }

    void scrollTo(double y) { m_flick->setProperty("contentY", y); }

    QObject *output() const { return writer().property("output").value<QObject *>(); }
    void forgetOutput() { writer().setOutput(nullptr); }

    /// What the last line shows: its text and its colour.
    QTextFragment end() const { return document().lastBlock().begin().fragment(); }

private:
    QQmlEngine m_engine;
    std::unique_ptr<QQuickItem> m_flick;
};

} // namespace

TEST_F(ConsoleWriterTest, RedrawsEachLineInSightOnce)
{
    for (const double y : {0.0, 500.5, document().size().height() - 100}) {
        scrollTo(y);
        EXPECT_EQ(redrawnBy([this] { writer().redraw(); }), linesInSight()) << y;
    }
}

TEST_F(ConsoleWriterTest, WithoutAnOutputThereIsNothingToRedraw)
{
    forgetOutput();
    EXPECT_THAT(redrawnBy([this] { writer().redraw(); }), IsEmpty());
}

TEST_F(ConsoleWriterTest, ErrorsAreRed)
{
    Q_EMIT Shell::instance().appendStderr(QStringLiteral("<b>Fehler</b>"));
    ASSERT_TRUE(eventually([this] { return document().blockCount() == lineCount + 1; }));
    EXPECT_EQ(end().text(), QStringLiteral("Fehler"));
    EXPECT_EQ(end().charFormat().foreground().color(), QColor(Qt::red));
}

TEST_F(ConsoleWriterTest, WhatIsTooLongForALayoutIsPlainAndInPieces)
{
    constexpr int letters = 20'001;
    const QString tags = QStringLiteral("<b>").repeated(letters / 3);
    Q_EMIT Shell::instance().appendStdout(tags);
    EXPECT_TRUE(eventually([this] { return document().blockCount() == lineCount + 21; }));
    EXPECT_EQ(end().text(), QStringLiteral(">"));
    EXPECT_EQ(end().charFormat().foreground().style(), Qt::NoBrush);
    Q_EMIT Shell::instance().appendStderr(tags);
    EXPECT_TRUE(eventually([this] { return document().blockCount() == lineCount + 42; }));
    EXPECT_EQ(end().charFormat().foreground().color(), QColor(Qt::red));
    EXPECT_EQ(document().toPlainText().count(QStringLiteral("<")), 2 * letters / 3);
}

TEST_F(ConsoleWriterTest, FloodsLeaveTurnsToTheScreens)
{
    constexpr int letters = 200'000;
    constexpr int atOnce = 20'000;
    int longest = 0;
    const auto connection =
        QObject::connect(&document(), &QTextDocument::contentsChange,
                         [&longest](int, int, int added) { longest = std::max(longest, added); });
    // So that no number of pieces comes to exactly what is written at once.
    Q_EMIT Shell::instance().appendStdout(QStringLiteral("davor"));
    Q_EMIT Shell::instance().appendStdout(QStringLiteral("x").repeated(letters));
    EXPECT_TRUE(eventually([this] { return document().blockCount() == lineCount + 1 + letters / 1000; }));
    QObject::disconnect(connection);
    // The last piece of a turn may be begun with little room left, and each line has its end.
    EXPECT_LT(longest, atOnce + 1'100);
    EXPECT_GT(longest, 0);
}

TEST_F(ConsoleWriterTest, WhatWaitsIsClearedToo)
{
    Q_EMIT Shell::instance().appendStdout(QStringLiteral("vorher"));
    writer().clear();
    Q_EMIT Shell::instance().appendStdout(QStringLiteral("nachher"));
    EXPECT_TRUE(eventually([this] { return !document().isEmpty(); }));
    EXPECT_EQ(document().toPlainText(), QStringLiteral("nachher"));
}

TEST_F(ConsoleWriterTest, TheSameOutputAgainIsNoNews)
{
    const SignalLog log(writer(), {"outputChanged"});
    QObject *const same = output();
    writer().setOutput(same);
    EXPECT_THAT(log.names(), IsEmpty());
    writer().setOutput(nullptr);
    Q_EMIT Shell::instance().appendStdout(QStringLiteral("ungesehen"));
    writer().clear();
    writer().setOutput(same);
    EXPECT_THAT(log.names(), testing::ElementsAre("outputChanged", "outputChanged"));
    Q_EMIT Shell::instance().appendStdout(QStringLiteral("gesehen"));
    EXPECT_TRUE(eventually([this] { return document().blockCount() == lineCount + 1; }));
    EXPECT_EQ(end().text(), QStringLiteral("gesehen"));
}
