#include "brovik/shell/console_writer.h"
#include "brovik/shell/shell.h"
#include "eventually.h"

#include <gmock/gmock.h>

#include <QAbstractTextDocumentLayout>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickTextDocument>
#include <QTextBlock>

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

    void forgetOutput() { writer().setOutput(nullptr); }

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
