// What is done to texts that come from outside.
import QtQuick
import QtQuick.Controls

import brovik.base
import kubelor.test

ScreenTestCase {
    id: root

    name: "Texts"

    Label {
        id: plainLabel

        textFormat: Text.PlainText
    }

    TextMetrics {
        id: metrics

        font.pointSize: 20
        text: "Text".repeat(100)
    }

    function test_shortened() {
        const limit = Texts.shortLimit;
        compare(Texts.shortened("x".repeat(limit)), "x".repeat(limit));
        const text = "x".repeat(limit + 1);
        Backend.startRecordingPrints();
        compare(Texts.shortened(text), "x".repeat(limit) + "…");
        compare(Texts.shortened(text, 3), "xxx…");
        compare(Backend.takePrints(), []);
    }

    function test_log_of_a_text_that_is_cut() {
        const text = "x".repeat(Texts.shortLimit);
        Backend.startRecordingPrints();
        Texts.logCut(text);
        compare(Backend.takePrints(), []);
        Backend.startRecordingPrints();
        Texts.logCut(text + "x");
        Texts.logCut("abcd", 3);
        compare(Backend.takePrints(), [text + "x", "abcd"]);
    }

    function test_plain() {
        compare(Texts.plain("a\u009cb\u009c<b>"), "a\ufffdb\ufffd<b>");
        compare(Texts.shortened("a\u009cb"), "a\ufffdb");
        compare(Texts.shortened("a\u009cbc", 2), "a\ufffd…");
        compare(Texts.split("a\u009cb"), ["a\ufffdb"]);
        plainLabel.text = Texts.plain("Halle\u009cWerk");
        const width = plainLabel.implicitWidth;
        plainLabel.text = "Halle";
        verify(width > plainLabel.implicitWidth);
    }

    function test_escaped_data() {
        return [
            {tag: "markup", text: "<b>&\"</b>", escaped: "&lt;b&gt;&amp;&quot;&lt;/b&gt;"},
            {tag: "blanks", text: " a  b ", escaped: "&nbsp;a&nbsp; b&nbsp;"},
            {tag: "blanks of lines", text: "a \n b", escaped: "a&nbsp;<br>&nbsp;b"},
            {tag: "other blanks", text: "a\tb\r\v\f\u0085\u00a0\u3000c", escaped: "a&nbsp;b&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;c"},
            {tag: "other ends of lines", text: "a\u2028b\u2029c", escaped: "a<br>b<br>c"},
            {tag: "letters with a meaning", text: "a\u0000b\u009cc\ufdd0d\ufdd1", escaped: "a\ufffdb\ufffdc\ufffdd\ufffd"}
        ];
    }

    function test_escaped(data) {
        compare(Texts.escaped(data.text), data.escaped);
    }

    function test_fitting_size_data() {
        return [
            {tag: "with room", width: metrics.advanceWidth + 1, share: 1},
            {tag: "just so", width: metrics.advanceWidth, share: 1},
            {tag: "half", width: metrics.advanceWidth / 2, share: 9.5 / 20},
            {tag: "nearly", width: metrics.advanceWidth - 1, share: 19 / 20},
            {tag: "nothing", width: 0, share: 1 / 20},
            {tag: "less than nothing", width: -5, share: 1 / 20}
        ];
    }

    function test_fitting_size(data) {
        compare(Texts.fittingSize(metrics, data.width), 20 * data.share);
    }

    function test_drawable_size_data() {
        return [
            {tag: "usual", size: 14.5, drawable: 14.5},
            {tag: "huge", size: 1e300, drawable: 200},
            {tag: "infinite", size: Infinity, drawable: 200},
            {tag: "no number", size: NaN, drawable: 14},
            {tag: "nothing", size: 0, drawable: 14},
            {tag: "negative", size: -1, drawable: 14}
        ];
    }

    function test_drawable_size(data) {
        compare(Texts.drawableSize(data.size), data.drawable);
    }

    function test_split_data() {
        const limit = Texts.pieceLength;
        return [
            {tag: "empty", text: "", pieces: [""]},
            {tag: "short", text: "a b\nc", pieces: ["a b\nc"]},
            {tag: "without a gap", text: "x".repeat(limit + 1), pieces: ["x".repeat(limit), "x"]},
            {tag: "word", text: "a " + "x".repeat(limit), pieces: ["a ", "x".repeat(limit)]},
            {tag: "line", text: "a b\nc d" + "x".repeat(limit), pieces: ["a b", "c ", "d" + "x".repeat(limit - 1), "x"]}
        ];
    }

    function test_split(data) {
        compare(Texts.split(data.text), data.pieces);
    }
}
