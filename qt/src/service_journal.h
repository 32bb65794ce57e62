#pragma once

#include <QByteArray>
#include <QtGlobal>

// What the journal understands of a line on a standard stream. Any thread, no state.

/// Whether the descriptor is the stream of the journal that the variable JOURNAL_STREAM names by device and
/// inode.
bool isJournalStream(int descriptor, const QByteArray &journalStream);

/// The text with the journal's mark of that level at the beginning of each of its lines.
QByteArray withPriority(QtMsgType type, const QByteArray &text);
