#pragma once

#include <QBasicTimer>
#include <QObject>
#include <QPointer>
#include <QQuickTextDocument>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <deque>

/// Writes the console output of the Shell into the document of a TextEdit: each piece as rich text and a paragraph of
/// its own, as TextEdit.append() does, that of stderr in red.
///
/// A burst is written in few steps, each of which the document lays out once, and between which the window answers.
/// Lives on the GUI thread.
class ConsoleWriter : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickTextDocument *document READ document WRITE setDocument NOTIFY documentChanged REQUIRED)

public:
    explicit ConsoleWriter(QObject *parent = nullptr);

    /// The textDocument of the TextEdit.
    QQuickTextDocument *document() const { return m_document; }
    void setDocument(QQuickTextDocument *document);

    /// Empties the document, and drops what still waits to be written.
    Q_INVOKABLE void clear();

Q_SIGNALS:
    void documentChanged();

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    void append(const QString &html);
    void writeSome();

    QPointer<QQuickTextDocument> m_document;
    std::deque<QString> m_waiting;
    QBasicTimer m_nextStep;
};
