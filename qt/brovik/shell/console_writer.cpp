#include "console_writer.h"

#include "shell.h"

#include <QAbstractTextDocumentLayout>
#include <QElapsedTimer>
#include <QQuickTextDocument>
#include <QTextBlock>
#include <QTextCursor>

namespace {

constexpr qint64 stepMs = 10;

QTextDocument *documentOf(const QQuickItem *textEdit)
{
    const auto *document =
        textEdit != nullptr ? textEdit->property("textDocument").value<QQuickTextDocument *>() : nullptr;
    return document != nullptr ? document->textDocument() : nullptr;
}

void appendParagraph(QTextCursor &cursor, const QString &html)
{
    cursor.movePosition(QTextCursor::End);
    if (!cursor.document()->isEmpty()) {
        cursor.insertBlock();
    }
    cursor.insertHtml(html);
}

} // namespace

ConsoleWriter::ConsoleWriter(QObject *parent)
    : QObject(parent)
{
    connect(&Shell::instance(), &Shell::appendStdout, this, &ConsoleWriter::append);
    connect(&Shell::instance(), &Shell::appendStderr, this, [this](const QString &html) {
        append(QStringLiteral("<font color=\"red\">%1</font>").arg(html));
    });
}

void ConsoleWriter::setOutput(QObject *output)
{
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
    m_waiting.clear();
    if (m_document) {
        m_document->clear();
    }
}

void ConsoleWriter::redraw()
{
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
    if (event->timerId() == m_nextStep.timerId()) {
        writeSome();
    }
}

void ConsoleWriter::append(const QString &html)
{
    if (!m_document) {
        return;
    }
    m_waiting.push_back(html);
    if (!m_nextStep.isActive()) {
        m_nextStep.start(0, this);
    }
}

void ConsoleWriter::writeSome()
{
    QElapsedTimer timer;
    timer.start();
    QTextCursor cursor(m_document);
    cursor.beginEditBlock();
    while (!m_waiting.empty() && timer.elapsed() < stepMs) {
        appendParagraph(cursor, m_waiting.front());
        m_waiting.pop_front();
    }
    cursor.endEditBlock();
    if (m_waiting.empty()) {
        m_nextStep.stop();
    }
}
