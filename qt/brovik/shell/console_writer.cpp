#include "console_writer.h"

#include "shell.h"

#include <QElapsedTimer>
#include <QTextCursor>
#include <QTextDocument>

namespace {

constexpr qint64 stepMs = 10;

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

void ConsoleWriter::setDocument(QQuickTextDocument *document)
{
    if (document == m_document) {
        return;
    }
    m_document = document;
    if (m_document) {
        // Nobody edits it, and the history would take more memory than the text.
        m_document->textDocument()->setUndoRedoEnabled(false);
    }
    Q_EMIT documentChanged();
}

void ConsoleWriter::clear()
{
    m_waiting.clear();
    if (m_document) {
        m_document->textDocument()->clear();
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
    m_waiting.push_back(html);
    if (!m_nextStep.isActive()) {
        m_nextStep.start(0, this);
    }
}

void ConsoleWriter::writeSome()
{
    QElapsedTimer timer;
    timer.start();
    QTextCursor cursor(m_document->textDocument());
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
