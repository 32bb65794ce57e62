import QtQuick
import QtQuick.Controls.Material

import brovik.settings
import kubelor.test
import "settings.js" as Names

// The rows of the settings pages: which there are, and switches and texts: what they show, what they send, and when.
Item {
    id: root

    width: 720
    height: 6500

    SettingsRowsTestCase {
        name: "SettingsRows"

        function test_nothing_is_sent_on_construction() {
            compareSent([]);
        }

        // Whatever is stored.
        function test_nothing_is_sent_on_construction_with_other_values_data() {
            return [{tag: "lowest", bound: "Min"}, {tag: "highest", bound: "Max"}];
        }

        function test_nothing_is_sent_on_construction_with_other_values(data) {
            const stored = key => BrovikSettings[key + data.bound];
            const keys = numbers.map(row => row[1]);
            keys.forEach(key => write(key, stored(key)));
            switches.forEach(([, key, , value]) => write(key, value ? "False" : "True"));
            texts.forEach(([, key]) => write(key, "'Anders'"));
            Backend.settle();
            sent.clear();
            pages = createTemporaryObject(pagesComponent, root);
            draw(pages);
            Backend.settle();
            for (const [page, key, , precision] of numbers) {
                // A setpoint is held up by its minimum.
                const lowest = key.endsWith("Sp") ? stored(key.replace("Sp", "Min")) + 1 : stored(key);
                compare(row(page, key, "spinBox").value, Math.round(Math.max(stored(key), lowest) * Math.pow(10, precision)), key);
            }
            compareSent([]);
        }

        function test_rows_are_those_of_the_table() {
            for (const page of ["run", "baths", "misc"]) {
                const keys = table => table.filter(row => row[0] === page).map(row => Names.keyOf(row[1]));
                compare(rows(page, "spinBox").map(row => row.key), keys(numbers));
                compare(rows(page, "switch_").map(row => row.key), keys(switches));
                compare(rows(page, "field").map(row => row.key), keys(texts));
            }
        }

        function switchRows() {
            return switches.map(([page, key, text, value]) => ({tag: key, page, key, text, value}));
        }

        function test_switch_data() {
            return switchRows();
        }

        function test_switch(data) {
            const found = row(data.page, data.key, "switch_");
            compare(found.description, data.text);
            compare(found.text, data.text);
            compare(found.checked, data.value);
            compare(found.defaultValue, data.value);
            compare(found.switch_.Accessible.name, data.text);
        }

        function test_switch_changed_by_the_operator_data() {
            return switchRows();
        }

        function test_switch_changed_by_the_operator(data) {
            takeWishes();
            const found = row(data.page, data.key, "switch_");
            mouseClick(found.switch_);
            compare(found.text, data.text + markOf(found, data.value ? "ein" : "aus"));
            tryCompare(BrovikSettings, data.key, !data.value);
            Backend.settle();
            compare(found.checked, !data.value);
            compareSent([[BrovikSettings, Names.keyOf(data.key), !data.value]]);
        }

        function test_switch_refused_goes_back_data() {
            return switchRows();
        }

        function test_switch_refused_goes_back(data) {
            const found = row(data.page, data.key, "switch_");
            mouseClick(found.switch_);
            compare(found.checked, !data.value);
            tryCompare(found, "checked", data.value);
            compare(found.text, data.text);
            compareSent([[BrovikSettings, Names.keyOf(data.key), !data.value]]);
        }

        function test_switch_changed_by_the_backend_data() {
            return switchRows();
        }

        function test_switch_changed_by_the_backend(data) {
            const found = row(data.page, data.key, "switch_");
            write(data.key, data.value ? "False" : "True");
            tryCompare(found, "checked", !data.value);
            compare(found.text, data.text + markOf(found, data.value ? "ein" : "aus"));
            compareSent([]);
        }

        function textRows() {
            return texts.map(([page, key, text, value]) => ({tag: key, page, key, text, value}));
        }

        function type(found, text) {
            found.field.forceActiveFocus();
            for (const character of text) {
                keyClick(character);
            }
        }

        function pauseOf(row) {
            return Array.from({length: row.data.length}, (_, i) => row.data[i]).find(object => object.interval !== undefined);
        }

        function test_text_data() {
            return textRows();
        }

        function test_text(data) {
            const found = row(data.page, data.key, "field");
            compare(found.text, data.text);
            compare(found.product, data.value);
            compare(found.field.Accessible.name, data.text);
            compare(pauseOf(found).interval, 3000);
            verify(!pauseOf(found).running && !pauseOf(found).repeat);
        }

        function test_text_typed_in_several_bursts_is_sent_once_data() {
            return textRows();
        }

        function test_text_typed_in_several_bursts_is_sent_once(data) {
            const python = Names.pythonName(data.key);
            let sentAt = 0;
            answer = (key, value) => {
                sentAt = Date.now();
                Backend.runOnThread(`settings.SettingsValues.${python} = ${JSON.stringify(value)}`);
            };
            const found = row(data.page, data.key, "field");
            type(found, "ab");
            const first = Date.now();
            tryVerify(() => Date.now() - first > 500);
            type(found, "c");
            const last = Date.now();
            compare(found.product, data.value + "abc");
            compareSent([]);
            tryCompare(sent, "count", 1);
            // As the clock of the timer runs, which is coarse.
            verify(sentAt - last > 2900, sentAt - last);
            compareSent([[BrovikSettings, Names.keyOf(data.key), data.value + "abc"]]);
            compare(BrovikSettings[data.key], data.value + "abc");
            Backend.settle();
            compare(found.product, data.value + "abc");
            verify(!pauseOf(found).running);
        }

        // By the on-screen keyboard or from the clipboard, too.
        function test_text_changed_without_a_key_data() {
            return textRows();
        }

        function test_text_changed_without_a_key(data) {
            answer = (key, value) => Backend.runOnThread(`settings.SettingsValues.${Names.pythonName(data.key)} = ${JSON.stringify(value)}`);
            const found = row(data.page, data.key, "field");
            const pause = pauseOf(found);
            pause.interval = 1;
            found.product = "Neu";
            verify(pause.running);
            tryCompare(BrovikSettings, data.key, "Neu");
            Backend.settle();
            compare(found.product, "Neu");
            verify(!pause.running);
            compareSent([[BrovikSettings, Names.keyOf(data.key), "Neu"]]);
        }

        // It is a change like any other.
        function test_text_typed_and_taken_back_is_sent() {
            const found = row("baths", "lwSaureName", "field");
            type(found, "x");
            pauseOf(found).interval = 1;
            keyClick(Qt.Key_Backspace);
            tryCompare(sent, "count", 1);
            compareSent([[BrovikSettings, BrovikSettings.LwSaureName, "SANAL®-SA 3"]]);
            Backend.settle();
            verify(!pauseOf(found).running);
        }

        function test_text_refused_goes_back_data() {
            return textRows();
        }

        function test_text_refused_goes_back(data) {
            const found = row(data.page, data.key, "field");
            pauseOf(found).interval = 1;
            type(found, "x");
            tryCompare(sent, "count", 1);
            pauseOf(found).interval = 3000;
            tryCompare(found, "product", data.value);
            compareSent([[BrovikSettings, Names.keyOf(data.key), data.value + "x"]]);
        }

        function test_text_changed_by_the_backend_data() {
            return textRows();
        }

        function test_text_changed_by_the_backend(data) {
            const found = row(data.page, data.key, "field");
            write(data.key, "'<b>Neu</b>'");
            tryCompare(found, "product", "<b>Neu</b>");
            verify(!pauseOf(found).running);
            compareSent([]);
        }

        function test_text_changed_by_the_backend_while_it_is_typed() {
            const found = row("baths", "lwSaureName", "field");
            type(found, "x");
            write("lwSaureName", "'Neu'");
            tryCompare(BrovikSettings, "lwSaureName", "Neu");
            Backend.settle();
            compare(found.product, "SANAL®-SA 3x");
            pauseOf(found).interval = 1;
            type(found, "y");
            tryCompare(found, "product", "Neu");
            compareSent([[BrovikSettings, BrovikSettings.LwSaureName, "SANAL®-SA 3xy"]]);
        }
    }
}
