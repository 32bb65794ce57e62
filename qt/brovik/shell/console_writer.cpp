#include "brovik/shell/console_writer.h"

#include "brovik/shell/shell.h"
#include "shared/announce.h"
#include "shared/gui_thread.h"
#include "shared/notification_brake.h"

#include <QAbstractTextDocumentLayout>
#include <QElapsedTimer>
#include <QQuickTextDocument>
#include <QTextBlock>
#include <QTextCursor>

namespace {

// What is written in one step at most. The more characters, the longer the layout takes that follows.
constexpr qint64 stepMs = 10;
constexpr qsizetype stepLength = 20'000;
// Characters.
constexpr qsizetype richTextLimit = stepLength;
constexpr qsizetype plainTextPiece = 1'000;

QTextDocument *documentOf(const QQuickItem *textEdit)
{
    const auto *document =
        textEdit != nullptr ? textEdit->property("textDocument").value<QQuickTextDocument *>() : nullptr;
    return document != nullptr ? document->textDocument() : nullptr;
}

} // namespace

ConsoleWriter::ConsoleWriter(QObject *parent)
    : QObject(parent)
{
    Q_ASSERT(onGuiThread());
    const Shell &shell = Shell::instance();
    connect(&shell, &Shell::appendStdout, this, [this](const QString &text) { append(text, Stream::Out); });
    connect(&shell, &Shell::appendStderr, this, [this](const QString &text) { append(text, Stream::Error); });
}

void ConsoleWriter::setOutput(QObject *output)
{
    Q_ASSERT(onGuiThread());
    if (output == m_output) {
        return;
    }
    m_output = qobject_cast<QQuickItem *>(output);
    m_document = documentOf(m_output);
    if (m_document) {
        // Nobody edits it, and the history would take more memory than the text.
        m_document->setUndoRedoEnabled(false);
        // Of a long text, only what is in sight is drawn. The TextEdit asks for that only if it is given one
        // at once.
        m_output->setFlag(QQuickItem::ItemObservesViewport);
    }
    Q_EMIT outputChanged();
}

void ConsoleWriter::clear()
{
    Q_ASSERT(onGuiThread());
    m_waiting.clear();
    reportBacklog();
    if (m_document) {
        m_document->clear();
    }
}

void ConsoleWriter::redraw()
{
    Q_ASSERT(onGuiThread());
    if (!m_document) {
        return;
    }
    QAbstractTextDocumentLayout &layout = *m_document->documentLayout();
    const auto blockAt = [&](qreal y) { return m_document->findBlock(layout.hitTest({0, y}, Qt::FuzzyHit)); };
    const QRectF inSight = m_output->clipRect();
    const QTextBlock end = blockAt(inSight.bottom()).next();
    for (QTextBlock block = blockAt(inSight.top()); block.isValid() && block != end; block = block.next()) {
        Q_EMIT layout.updateBlock(block);
    }
}

void ConsoleWriter::timerEvent(QTimerEvent *event)
{
    Q_ASSERT(onGuiThread());
    if (event->timerId() == m_nextStep.timerId()) {
        writeSome();
    }
}

void ConsoleWriter::append(const QString &text, Stream stream)
{
    Q_ASSERT(onGuiThread());
    if (!m_document) {
        return;
    }
    if (text.size() <= richTextLimit) {
        m_waiting.push_back({text, stream, Format::Rich});
    } else {
        for (qsizetype start = 0; start < text.size(); start += plainTextPiece) {
            m_waiting.push_back({text.mid(start, plainTextPiece), stream, Format::Plain});
        }
    }
    if (!m_nextStep.isActive()) {
        m_nextStep.start(0, this);
    }
    reportBacklog();
}

void ConsoleWriter::writeSome()
{
    QElapsedTimer timer;
    timer.start();
    QTextCursor cursor(m_document);
    cursor.beginEditBlock();
    qsizetype length = 0;
    while (!m_waiting.empty() && length < stepLength && timer.elapsed() < stepMs) {
        length += m_waiting.front().text.size();
        write(cursor, m_waiting.front());
        m_waiting.pop_front();
    }
    cursor.endEditBlock();
    if (m_waiting.empty()) {
        m_nextStep.stop();
    }
    reportBacklog();
}

/// A thread that prints too much waits until its text is in the document; to be out of the event queue is not
/// enough.
void ConsoleWriter::reportBacklog()
{
    m_backlog.set(static_cast<qint64>(m_waiting.size()) * static_cast<int>(Cost::ConsoleLine));
}

void ConsoleWriter::write(QTextCursor &cursor, const Paragraph &paragraph)
{
    cursor.movePosition(QTextCursor::End);
    if (!cursor.document()->isEmpty()) {
        cursor.insertBlock();
    }
    const bool isError = paragraph.stream == Stream::Error;
    if (paragraph.format == Format::Rich) {
        cursor.insertHtml(isError ? QStringLiteral("<font color=\"red\">%1</font>").arg(paragraph.text)
                                  : paragraph.text);
        return;
    }
    QTextCharFormat format;
    if (isError) {
        format.setForeground(Qt::red);
    }
    cursor.insertText(paragraph.text, format);
}
