// How texts are shown that come from outside: cut, escaped, in pieces, or in letters that fit.
pragma Singleton

import QtQuick

import brovik.gui

QtObject {
    id: root

    // Characters: of a title or toast, of a status, and of a cell of a table or a part of a changelog.
    readonly property int shortLimit: 200
    readonly property int statusLimit: 1000
    readonly property int longLimit: 10000
    // Characters of the pieces in which a text is laid out that is too long for one.
    readonly property int pieceLength: 1000

    // The text for a label of plain text. At one character a label ends a text, for what follows would be a shorter form of
    // the same, and so one network could pass for another.
    function plain(text: string): string {
        return text.replace(/\u009c/g, "\ufffd");
    }

    // The same for a place that has no room for a long one.
    function shortened(text: string, limit = shortLimit): string {
        return plain(text.length <= limit ? text : text.slice(0, limit) + "…");
    }

    // For the log, where a text comes in that shortened() cuts and that nobody keeps. Not from a binding, which reads
    // its text as often as it likes.
    function logCut(text: string, limit = shortLimit) {
        if (text.length > limit) {
            console.log(text);
        }
    }

    // A size in points that a text can be drawn in, whatever the backend has set: Text would look for ever for a size
    // that fits below one of 1e300, and what is as large as letters of a thousand points takes gigabytes to draw.
    function drawableSize(size: real): real {
        return size > 0 ? Math.min(size, privat.largestSize) : Gui.fSizeSDefault;
    }

    // The metrics' font size in points, or a smaller one in halves with which their text fits the width. The letters do
    // not quite follow their size, so this leaves them some room.
    function fittingSize(metrics: TextMetrics, width: real): real {
        const size = metrics.font.pointSize;
        if (metrics.advanceWidth <= width) {
            return size;
        }
        return Math.max(privat.smallestSize, Math.floor(2 * size * privat.sparingly * width / metrics.advanceWidth) / 2);
    }

    // The text in pieces of at most `pieceLength` characters, cut at the ends of lines or words where there are any.
    function split(text: string): list<string> {
        const pieces = [];
        let start = 0;
        do {
            const piece = privat.firstPiece(text.slice(start, start + pieceLength + 1));
            pieces.push(plain(piece.replace(/\n$/, "")));
            start += piece.length;
        } while (start < text.length);
        return pieces;
    }

    // The text for a place that takes rich text only: shown as it stands, with all its blanks.
    function escaped(text: string): string {
        const entities = {"&": "&amp;", "<": "&lt;", ">": "&gt;", "\"": "&quot;", "\n": "<br>", "\u2028": "<br>", "\u2029": "<br>"};
        // What documents mean something of their own by. Then all blanks of which markup would leave one or none.
        const readable = plain(text).replace(/[\0\ufdd0\ufdd1]/g, "\ufffd");
        return readable.replace(/[&<>"\u0085]|[^\S ]|^ | $| (?= )/gm, found => entities[found] ?? "&nbsp;");
    }

    readonly property QtObject inner: QtObject {
        id: privat

        // Points. While there is no room at all.
        readonly property int smallestSize: 1
        readonly property int largestSize: 200
        readonly property real sparingly: 0.96

        function firstPiece(text: string): string {
            if (text.length <= root.pieceLength) {
                return text;
            }
            const piece = text.slice(0, root.pieceLength);
            const end = piece.lastIndexOf("\n") + 1 || piece.lastIndexOf(" ") + 1 || piece.length;
            return piece.slice(0, end);
        }
    }
}
