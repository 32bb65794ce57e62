// The checks of the names of charts.

import brovik.base
import brovik.chart
import kubelor.test

ScreenTestCase {
    name: "ChartsStuff"

    readonly property string missing: "Es ist eine Eingabe erforderlich"

    // The errors of a new name, and of a new name for a saved chart.
    function test_errors_data() {
        const taken = txt => `Der Name ${txt} ist bereits vergeben`;
        return [
            {tag: "empty", txt: "", anew: missing, renamed: missing},
            {tag: "free", txt: "Fass 3", anew: "", renamed: ""},
            {tag: "taken", txt: "Fass 1", anew: taken("Fass 1"), renamed: taken("Fass 1")},
            {tag: "other case", txt: "fASS 1", anew: taken("fASS 1"), renamed: ""},
            {tag: "other case of an umlaut", txt: "säure", anew: taken("säure"), renamed: ""},
            {tag: "part of a name", txt: "Fass", anew: "", renamed: ""},
            {tag: "blank behind", txt: "Fass 1 ", anew: "", renamed: ""},
            {tag: "blanks", txt: "   ", anew: "", renamed: ""},
            {tag: "taken markup", txt: "<b>\"&\"</b>", anew: taken("<b>\"&\"</b>"), renamed: taken("<b>\"&\"</b>")}
        ];
    }

    function test_errors(data) {
        Backend.run("chart.Chart.assigned_names = ['Fass 1', 'Fass 2', 'SÄURE', '<b>\"&\"</b>']");
        compare(ChartsStuff.getNameErrorText(data.txt), data.anew);
        compare(ChartsStuff.getNameErrorTextCaseSensitive(data.txt), data.renamed);
    }

    function test_no_names_yet() {
        compare(ChartsStuff.getNameErrorText("a"), "");
        compare(ChartsStuff.getNameErrorText(""), missing);
        compare(ChartsStuff.getNameErrorTextCaseSensitive(""), missing);
    }

    // Both questions are asked, that for other charts first.
    function test_chart_without_a_name() {
        Backend.run("chart.Chart.assigned_names = ['']");
        compare(ChartsStuff.getNameErrorText(""), "Der Name  ist bereits vergeben");
        compare(ChartsStuff.getNameErrorTextCaseSensitive(""), "Der Name  ist bereits vergeben");
    }

    function test_long_name() {
        const txt = "x".repeat(1000);
        Backend.run("chart.Chart.assigned_names = ['x' * 1000]");
        compare(ChartsStuff.getNameErrorText(txt), `Der Name ${txt} ist bereits vergeben`);
        compare(ChartsStuff.getNameErrorText(txt + "x"), "");
    }

    function test_escaped_data() {
        return [
            {tag: "plain", txt: "Fass 1 'a'", escaped: "Fass 1 'a'"},
            {tag: "markup", txt: "<b>&\"", escaped: "&lt;b&gt;&amp;&quot;"},
            {tag: "blanks", txt: "  a  b ", escaped: "&nbsp; a&nbsp; b&nbsp;"},
            {tag: "lines", txt: "a\nb", escaped: "a<br>b"},
            // To the parser it would be the end of the text.
            {tag: "zero", txt: "a\0b", escaped: "a\ufffdb"},
            {tag: "empty", txt: "", escaped: ""}
        ];
    }

    function test_escaped(data) {
        compare(Texts.escaped(data.txt), data.escaped);
    }
}
