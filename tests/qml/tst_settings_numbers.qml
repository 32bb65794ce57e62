import QtQuick
import QtQuick.Controls.Material

import brovik.settings
import kubelor.test
import "settings.js" as Names

// The number boxes of the settings pages: what they show, what they send, and when.
Item {
    id: root

    width: 720
    height: 6500

    SettingsRowsTestCase {
        name: "SettingsNumbers"

        // A step that the range allows, away from the default.
        function stepOf(data) {
            const up = data.value + data.step <= data.to;
            return {direction: up ? "up" : "down", value: data.value + (up ? data.step : -data.step)};
        }

        function numberRows() {
            return numbers.map(([page, key, text, precision, step, from, to, value]) => ({tag: key, page, key, text, precision, step, from, to, value, factor: Math.pow(10, precision)}));
        }

        // The boxes of legacy machines are not there to be clicked on.
        function shown(data) {
            if (data.key.endsWith("Legacy")) {
                Backend.run("config.Config.machine_version = config.MachineVersion.Legacy");
                draw(pages);
            }
            const found = row(data.page, data.key, "spinBox");
            verify(found.visible);
            return found;
        }

        function test_number_data() {
            return numberRows();
        }

        function test_number(data) {
            const found = row(data.page, data.key, "spinBox");
            compare(found.description, data.text);
            compare(found.text, data.text);
            compare([found.precision, found.stepSize, found.from, found.to, found.value], [data.precision, data.step, data.from, data.to, data.value]);
            compare(found.defaultValue, BrovikSettings[data.key + "Default"]);
            compare(found.realValue, data.value / data.factor);
            compare(found.spinBox.displayText, (data.value / data.factor).toFixed(data.precision));
            verify(found.spinBox.editable);
            compare(found.spinBox.Accessible.name, data.text);
            compareSent([]);
        }

        function test_number_changed_by_the_operator_data() {
            return numberRows();
        }

        function test_number_changed_by_the_operator(data) {
            takeWishes();
            const found = shown(data);
            const description = found.description;
            const {direction, value} = stepOf(data);
            mouseClick(found.spinBox[direction].indicator);
            compare(found.value, value);
            compare(found.text, description + markOf(found, data.value / data.factor));
            tryCompare(BrovikSettings, data.key, value / data.factor);
            Backend.settle();
            compare(found.value, value);
            compareSent([[BrovikSettings, Names.keyOf(data.key), value / data.factor]]);
        }

        function test_number_refused_goes_back_data() {
            return numberRows();
        }

        function test_number_refused_goes_back(data) {
            const found = shown(data);
            const {direction, value} = stepOf(data);
            mouseClick(found.spinBox[direction].indicator);
            compare(found.value, value);
            tryCompare(found, "value", data.value);
            compare(found.text, found.description);
            compareSent([[BrovikSettings, Names.keyOf(data.key), value / data.factor]]);
        }

        function test_number_typed_data() {
            return numberRows();
        }

        function test_number_typed(data) {
            takeWishes();
            const found = shown(data);
            const {value} = stepOf(data);
            found.spinBox.contentItem.forceActiveFocus();
            found.spinBox.contentItem.selectAll();
            for (const character of (value / data.factor).toFixed(data.precision)) {
                keyClick(character);
            }
            keyClick(Qt.Key_Return);
            tryCompare(BrovikSettings, data.key, value / data.factor);
            compare(found.value, value);
            compareSent([[BrovikSettings, Names.keyOf(data.key), value / data.factor]]);
        }

        // What the backend changes comes back to it once, but for the numbers of the baths.
        function test_number_changed_by_the_backend_data() {
            return numberRows();
        }

        function test_number_changed_by_the_backend(data) {
            takeWishes();
            const found = row(data.page, data.key, "spinBox");
            const {value} = stepOf(data);
            write(data.key, value / data.factor);
            tryCompare(found, "value", value);
            compare(found.text, found.description + markOf(found, data.value / data.factor));
            Backend.settle();
            compareSent((data.page === "run" ? [[BrovikSettings, Names.keyOf(data.key), value / data.factor]] : []));
            write(data.key, data.value / data.factor);
            tryCompare(found, "value", data.value);
            compare(found.text, found.description);
        }

        function test_number_follows_its_bounds_data() {
            return numberRows();
        }

        function test_number_follows_its_bounds(data) {
            const found = row(data.page, data.key, "spinBox");
            const lowest = BrovikSettings[data.key + "Min"];
            const highest = BrovikSettings[data.key + "Max"];
            write(data.key + "Max", (data.to + 1) / data.factor);
            tryCompare(found, "to", data.to + 1);
            // Not that of the boxes that another one holds up.
            if (data.from === Math.round(lowest * data.factor)) {
                write(data.key + "Min", (data.from - 1) / data.factor);
                tryCompare(found, "from", data.from - 1);
            }
            compare(found.value, data.value);
            write(data.key + "Max", highest);
            write(data.key + "Min", lowest);
            tryCompare(found, "to", data.to);
            tryCompare(found, "from", data.from);
            compareSent([]);
        }
    }
}
