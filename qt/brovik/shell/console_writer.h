#pragma once

#include "shared/notification_brake.h"

#include <QBasicTimer>
#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QString>
#include <QTextDocument>
#include <QtQml/qqmlregistration.h>

#include <deque>

/// Writes the console output of the Shell into a TextEdit: each text as rich text and a paragraph of its own,
/// as TextEdit.append() does, that of stderr in red.
///
/// A burst is written in few steps, each of which the document lays out once, and between which the window
/// answers. For the same reason a text that is too long to be laid out at once becomes plain text in several
/// paragraphs. Lives on the GUI thread.
class ConsoleWriter : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QObject *output READ output WRITE setOutput NOTIFY outputChanged REQUIRED)

public:
    explicit ConsoleWriter(QObject *parent = nullptr);

    /// The TextEdit.
    QObject *output() const { return m_output; }
    void setOutput(QObject *output);

    /// Empties the output, and drops what still waits to be written.
    Q_INVOKABLE void clear();

    /// Draws anew all that is in sight. For a change of the selection: of that, the TextEdit draws the lines
    /// that it concerns, and once more over themselves those above.
    Q_INVOKABLE void redraw();

Q_SIGNALS:
    void outputChanged();

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    enum class Stream { Out, Error };
    enum class Format { Rich, Plain };

    struct Paragraph
    {
        QString text;
        Stream stream;
        Format format;
    };

    static void write(QTextCursor &cursor, const Paragraph &paragraph);
    void append(const QString &text, Stream stream);
    void writeSome();
    void reportBacklog();

    QPointer<QQuickItem> m_output;
    QPointer<QTextDocument> m_document;
    std::deque<Paragraph> m_waiting;
    NotificationBacklog m_backlog;
    QBasicTimer m_nextStep;
};
