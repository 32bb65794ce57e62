import QtQuick
import QtQuick.Controls.Material
import QtQuick.Layouts
import QtTest

import brovik.actuator
import brovik.base
import brovik.sensor
import brovik.simulator
import kubelor.test
import "items.js" as Items

Item {
    id: root

    width: 200
    height: 200

    Component {
        id: simulatorComponent

        Item {
            readonly property alias win: win
            readonly property alias button: button

            anchors.fill: parent

            SimulatorOptionsWindow {
                id: win
            }

            SimulatorOptionsButton {
                id: button

                win: win
            }
        }
    }

    SignalSpy {
        id: requested

        target: Sensor
        signalName: "stateChangeRequested"
    }

    ScreenTestCase {
        name: "SimulatorWindow"
        // This platform says so whenever the least size of a window changes.
        fatalWarnings: /^(?!This plugin does not support propagateSizeHints)/

        property SimulatorOptionsWindow win
        property SimulatorOptionsButton button

        // Text with the value that is shown, range, step, object and property that it follows.
        readonly property var sliders: [
            {tag: "A-In 0", text: value => `A-In 0 (${value} %)`, to: 100, step: 1, source: Simulator, name: "simAIn0"},
            {tag: "A-In 1", text: value => `A-In 1 (${value} %)`, to: 100, step: 1, source: Simulator, name: "simAIn1"},
            {tag: "Druck", text: value => `Druck (${value.toFixed(2)} bar)`, to: 5, step: 0.1, source: Sensor, name: "druck"},
            {tag: "Leitwert", text: value => `Leitwert (${value.toFixed(2)} mS/cm)`, to: 50, step: 1, source: Sensor, name: "leitwert"},
            {tag: "Drucksteigerungsrate", text: value => `Drucksteigerungsrate ${value.toFixed(2)} bar/s (Dichtheitsprobe)`, to: 0.5, step: 0.01, source: Simulator, name: "pIncRate"},
            {tag: "Druckabfallrate", text: value => `Druckabfallrate ${value.toFixed(2)} bar/s (Dichtheitsprobe)`, to: 0.5, step: 0.01, source: Simulator, name: "pDecRate"}
        ]

        function prepare() {
            Backend.run(`
simulator.Simulator.a_in_0 = simulator.Simulator.a_in_1 = 20
sensor.Sensor.set_p_without_offset(0.5)
sensor.Sensor.set_lw_without_offset(2)
sensor.Sensor.lw_type = sensor.SensorLwEnum.Seli_SLI_03
simulator.Simulator.enabled = True`);
            const simulator = createTemporaryObject(simulatorComponent, root);
            win = simulator.win;
            button = simulator.button;
            tryVerify(() => win.visible);
            draw(win.contentItem);
            requested.clear();
        }

        function sliderRow(tag) {
            return Items.below(win.contentItem, item => item.stored !== undefined && item.text.startsWith(tag))[0];
        }

        function sliderOf(row) {
            return Items.below(row, item => item instanceof Slider)[0];
        }

        function buttonOf(text) {
            return Items.below(win.contentItem, item => item instanceof Button && item.text === text)[0];
        }

        function moveTo(slider, value) {
            const range = slider.availableWidth - slider.handle.width;
            mouseClick(slider, slider.leftPadding + slider.handle.width / 2 + range * value / slider.to, slider.height / 2);
        }

        function test_window() {
            compare(win.title, "Simulator");
            const layout = win.contentItem.children[0];
            compare(win.minimumWidth, Math.trunc(layout.implicitWidth + 10));
            compare(win.minimumHeight, Math.trunc(layout.implicitHeight));
            compare([win.width, win.height], [win.minimumWidth, win.minimumHeight]);
        }

        function labelOf(row) {
            return Items.below(row, item => item instanceof Label && item.text === row.text)[0];
        }

        function hint() {
            return Items.below(win.contentItem, item => item instanceof Label && item.text === "<i>Der Füllstandsschalter ist in der Config deaktiviert</i>")[0];
        }

        function test_order_of_the_inputs() {
            const rows = sliders.map(data => sliderRow(data.tag));
            rows.forEach(row => verifyBelowEachOther([labelOf(row), sliderOf(row)]));
            verifyBelowEachOther([...rows, buttonOf("Taster grün"), buttonOf("Taster rot")]);
        }

        function test_order_of_the_right_column() {
            Backend.run("config.Config.has_level_switch = False");
            const indicators = Items.below(win.contentItem, item => item.out !== undefined);
            draw(win.contentItem);
            verifyBelowEachOther([hint(), findChild(win.contentItem, "level"), ...indicators]);
            const inputs = findChild(win.contentItem, "inputs");
            verify(indicators[0].mapToItem(null, 0, 0).x >= inputs.mapToItem(null, inputs.width, 0).x);
        }

        function test_of_a_long_name_the_beginning_is_shown() {
            const indicator = Items.below(win.contentItem, item => item.out === Actuator.mvKalt)[0];
            const label = Items.below(indicator, item => item instanceof Label)[0];
            const name = Actuator.mvKalt.name;
            compare(label.text, name);
            Backend.run("actuator.Actuator.mv_kalt.name = 'Wort ' * 20000");
            const shown = label.text;
            Backend.run(`actuator.Actuator.mv_kalt.name = '${name}'`);
            compare(shown, "Wort ".repeat(40) + "…");
        }

        function test_scale() {
            const inputs = findChild(win.contentItem, "inputs");
            compare(inputs.transformOrigin, Item.TopLeft);
            compare(inputs.spacing, 0);
            const width = win.minimumWidth;
            Backend.run("simulator.Simulator.scale_factor = 1.5");
            compare(inputs.scale, 1.5);
            tryVerify(() => Math.abs(win.minimumWidth - width - inputs.implicitWidth / 2) <= 1);
        }

        // Whatever the backend writes, the window can be drawn and used, and goes back to what it was.
        function test_any_scale_data() {
            return [
                {tag: "0.0", scale: 0.25},
                {tag: "-0.0", scale: 0.25},
                {tag: "1e-6", scale: 0.25},
                {tag: "5e-324", scale: 0.25},
                {tag: "-1.0", scale: 0.25},
                {tag: "float('-inf')", scale: 0.25},
                {tag: "1e6", scale: 4},
                {tag: "1e300", scale: 4},
                {tag: "float('inf')", scale: 4},
                {tag: "float('nan')", scale: 1}
            ];
        }

        function test_any_scale(data) {
            const inputs = findChild(win.contentItem, "inputs");
            const size = [win.minimumWidth, win.minimumHeight];
            Backend.runOnThread(`simulator.Simulator.scale_factor = ${data.tag}`);
            tryCompare(inputs, "scale", data.scale);
            tryVerify(() => win.minimumWidth >= Math.trunc(inputs.implicitWidth * data.scale) && win.width >= win.minimumWidth);
            tryVerify(() => Math.abs(inputs.width * data.scale - inputs.parent.width) < 1);
            const slider = sliderOf(sliderRow("A-In 0"));
            moveTo(slider, 60);
            compareSent([[Simulator, Simulator.SimAIn0, slider.value]]);
            Backend.runOnThread("simulator.Simulator.scale_factor = 1.0");
            tryCompare(inputs, "scale", 1);
            tryVerify(() => win.minimumWidth === size[0] && win.minimumHeight === size[1]);
        }

        function test_theme_follows_the_main_window() {
            const theme = Common.theme;
            for (const wanted of [Material.Light, Material.Dark]) {
                Common.theme = wanted;
                compare(win.Material.theme, wanted);
                compare(win.color, win.Material.background);
            }
            Common.theme = theme;
            compare(win.Material.accent, Common.accentColor);
        }

        function test_sliders_are_those_of_the_table() {
            compare(Items.below(win.contentItem, item => item instanceof Slider).length, sliders.length);
        }

        function test_slider_data() {
            return sliders;
        }

        function test_slider(data) {
            const row = sliderRow(data.tag);
            const slider = sliderOf(row);
            const shown = data.source[data.name];
            compare(slider.value, shown);
            compare(row.text, data.text(shown));
            compare([slider.from, slider.to, slider.stepSize], [0, data.to, data.step]);
            compare([slider.topPadding, slider.bottomPadding], [0, 0]);
            verify(slider.wheelEnabled && slider.Layout.fillWidth);
            compare(slider.Accessible.name, row.text);
        }

        function test_slider_follows_its_value_and_sends_nothing_data() {
            return [
                {tag: "A-In 0", code: "simulator.Simulator.a_in_0 = 33", value: 33},
                {tag: "A-In 1", code: "simulator.Simulator.a_in_1 = 34", value: 34},
                {tag: "Druck", code: "sensor.Sensor.set_p_without_offset(1.25)", value: 1.25},
                {tag: "Leitwert", code: "sensor.Sensor.set_lw_without_offset(12.5)", value: 12.5},
                {tag: "Drucksteigerungsrate", code: "simulator.Simulator.p_inc_rate = 0.2", value: 0.2},
                {tag: "Druckabfallrate", code: "simulator.Simulator.p_dec_rate = 0.3", value: 0.3}
            ];
        }

        function test_slider_follows_its_value_and_sends_nothing(data) {
            Backend.runOnThread(data.code);
            tryCompare(sliderRow(data.tag), "value", data.value);
            compareSent([]);
            compare(requested.count, 0);
        }

        function test_analogue_input_moved_data() {
            return [{tag: "A-In 0", what: Simulator.SimAIn0, python: "a_in_0", name: "simAIn0"}, {tag: "A-In 1", what: Simulator.SimAIn1, python: "a_in_1", name: "simAIn1"}];
        }

        function test_analogue_input_moved(data) {
            answer = (what, value) => Backend.runOnThread(`simulator.Simulator.${data.python} = int(${value})`);
            const slider = sliderOf(sliderRow(data.tag));
            moveTo(slider, 60);
            compareSent([[Simulator, data.what, slider.value]]);
            compare(slider.value, Math.round(slider.value));
            fuzzyCompare(slider.value, 60, 1);
            tryCompare(Simulator, data.name, slider.value);
        }

        function test_analogue_input_refused_goes_back() {
            const slider = sliderOf(sliderRow("A-In 0"));
            moveTo(slider, 60);
            compareSent([[Simulator, Simulator.SimAIn0, slider.value]]);
            tryCompare(slider, "value", 20);
            compareSent([]);
        }

        function test_pressure_moved() {
            const slider = sliderOf(sliderRow("Druck"));
            moveTo(slider, 2.5);
            fuzzyCompare(Sensor.druck, 2.5, 0.11);
            compare(Sensor.druck, slider.value);
            compare(Simulator.simAIn0, Math.round((Sensor.druck / 1.25 + 1) / 5 * 100));
            compare(sliderRow("A-In 0").value, Simulator.simAIn0);
            compareSent([]);
        }

        function test_conductivity_moved() {
            const slider = sliderOf(sliderRow("Leitwert"));
            moveTo(slider, 25);
            fuzzyCompare(Sensor.leitwert, 25, 1);
            compare(Sensor.leitwert, slider.value);
            compare(Simulator.simAIn1, Math.round((Sensor.leitwert / 125 + 0.2) * 100));
            compare(sliderRow("A-In 1").value, Simulator.simAIn1);
        }

        function test_rates_moved_data() {
            return [{tag: "Drucksteigerungsrate", name: "pIncRate"}, {tag: "Druckabfallrate", name: "pDecRate"}];
        }

        function test_rates_moved(data) {
            const slider = sliderOf(sliderRow(data.tag));
            moveTo(slider, 0.4);
            fuzzyCompare(Simulator[data.name], 0.4, 0.011);
            compare(Simulator[data.name], slider.value);
            compareSent([]);
        }

        function test_changed_rate_is_there_in_python_at_once() {
            Simulator.changePIncRate(0.2);
            Backend.run("assert simulator.Simulator.p_inc_rate == 0.2");
        }

        function test_wheel_moves_a_slider_by_its_step() {
            const slider = sliderOf(sliderRow("Drucksteigerungsrate"));
            mouseWheel(slider, slider.width / 2, slider.height / 2, 0, 120);
            fuzzyCompare(Simulator.pIncRate, 0.06, 1e-9);
        }

        function test_decimal_places() {
            const places = findChild(win.contentItem, "lwDecimalPlaces");
            const slider = sliderOf(sliderRow("Leitwert"));
            compare([places.from, places.to, places.value], [0, 2, 0]);
            verify(places.wheelEnabled);
            compare(places.width, 150);
            for (const step of [0.1, 0.01]) {
                mouseClick(places.up.indicator);
                compare(slider.stepSize, step);
            }
            compare(places.ToolTip.text, "Nachkommastellen (Präzision) des Sliders");
            mouseMove(places, places.width / 2, places.height / 2);
            tryVerify(() => places.hovered && places.ToolTip.visible);
            mouseMove(win.contentItem, 1, win.height - 1);
            tryVerify(() => !places.ToolTip.visible);
        }

        // One turn of the wheel, one step, one wish.
        function test_decimal_places_by_wheel() {
            const row = sliderRow("Leitwert");
            const places = findChild(win.contentItem, "lwDecimalPlaces");
            fuzzyCompare(Items.topOf(places) + places.height / 2, Items.topOf(labelOf(row)) + labelOf(row).height / 2, 1);
            verify(places.mapToItem(row, 0, 0).x >= labelOf(row).mapToItem(row, labelOf(row).width, 0).x);
            for (let turn = 0; turn < 3; ++turn) {
                mouseWheel(places, places.width / 2, places.height / 2, 0, 120);
            }
            compare(places.value, 2);
            const slider = sliderOf(row);
            mouseWheel(slider, slider.width / 2, slider.height / 2, 0, 120);
            compare(Sensor.leitwert, 2.01);
            compare(row.text, "Leitwert (2.01 mS/cm)");
        }

        function test_analogue_input_by_wheel_data() {
            return [{tag: "A-In 0", what: Simulator.SimAIn0}, {tag: "A-In 1", what: Simulator.SimAIn1}];
        }

        function test_analogue_input_by_wheel(data) {
            const slider = sliderOf(sliderRow(data.tag));
            mouseWheel(slider, slider.width / 2, slider.height / 2, 0, -120);
            compareSent([[Simulator, data.what, 19]]);
        }

        function test_push_button_data() {
            return [{tag: "Taster grün", input: SensorEnums.StartBtn, color: Material.Green}, {tag: "Taster rot", input: SensorEnums.StopBtn, color: Material.Red}];
        }

        function test_push_button(data) {
            const pushed = buttonOf(data.tag);
            compare([pushed.topPadding, pushed.bottomPadding], [0, 0]);
            verify(pushed.Layout.fillWidth);
            compare(pushed.Material.background, pushed.Material.color(data.color));
            mousePress(pushed);
            compare(requested.count, 1);
            compare(requested.signalArguments[0][0], data.input);
            compare(requested.signalArguments[0][1], true);
            mouseRelease(pushed);
            compare(requested.count, 2);
            compare(requested.signalArguments[1][0], data.input);
            compare(requested.signalArguments[1][1], false);
        }

        function test_push_button_let_go_beside_it() {
            const pushed = buttonOf("Taster rot");
            mousePress(pushed);
            mouseMove(pushed, -20, -20);
            mouseRelease(pushed, -20, -20);
            compare(requested.count, 2);
            compare(requested.signalArguments[1][1], false);
        }

        // The pointer is taken away from it, by a dialog for example.
        function test_push_button_canceled() {
            const pushed = buttonOf("Taster rot");
            mousePress(pushed);
            pushed.enabled = false;
            compare(requested.count, 2);
            compare(requested.signalArguments[1][1], false);
            mouseRelease(pushed);
            compare(requested.count, 2);
        }

        function test_level() {
            const level = findChild(win.contentItem, "level");
            compare(level.text, "Schwimmer");
            verify(!level.active);
            mouseClick(level);
            compare(requested.count, 1);
            compare(requested.signalArguments[0][0], SensorEnums.SensorLevel);
            compare(requested.signalArguments[0][1], true);
            verify(!level.active);
            Backend.runOnThread("sensor.Sensor.level.state = True");
            tryCompare(level, "active", true);
            mouseClick(level);
            compare(requested.signalArguments[1][1], false);
        }

        function test_level_switch_is_not_fitted() {
            verify(!hint().visible);
            Backend.run("config.Config.has_level_switch = False");
            verify(hint().visible);
        }

        function test_outputs() {
            const indicators = Items.below(win.contentItem, item => item.out !== undefined);
            const names = ["mvLaugeIn", "mvSaureIn", "mvKalt", "mvHeiss", "mvKreis", "mvSaureOut", "mvLaugeOut", "mvLuft", "mvCo2", "mvKanal", "pumpe", "heat1", "mvSteam"];
            compare(indicators.length, names.length);
            names.forEach((name, i) => {
                const lamp = indicators[i].children[0];
                const label = indicators[i].children[1];
                compare(indicators[i].out, Actuator[name]);
                compare(label.text, Actuator[name].name);
                compare([lamp.width, lamp.height], [10, 10]);
                compare(lamp.color, Qt.color("lightgrey"));
                Backend.run(`actuator.Actuator.all_douts[${i}].state = True`);
                compare(lamp.color, Qt.color("green"));
            });
            compare(indicators.filter((indicator, i) => i > 0 && indicator.mapToItem(null, 0, 0).y <= indicators[i - 1].mapToItem(null, 0, 0).y).length, 0);
        }

        function test_button() {
            verify(button.visible);
            verify(button.icon.source.toString().endsWith("img/gear.svg"));
            compare([button.x + button.width, button.y + button.height], [root.width - 5, root.height - 5]);
            compare(button.Accessible.name, "Simulator");
        }

        function test_enabled_shows_and_hides_both() {
            Backend.runOnThread("simulator.Simulator.enabled = False");
            tryVerify(() => !win.visible);
            verify(!button.visible);
            Backend.runOnThread("simulator.Simulator.enabled = True");
            tryVerify(() => win.visible);
            verify(button.visible);
        }

        function test_after_a_click_the_window_stays_as_it_is() {
            mouseClick(button);
            verify(win.visible);
            Backend.run("simulator.Simulator.enabled = False");
            verify(!button.visible);
            verify(win.visible);
        }

        function test_after_a_click_a_closed_window_stays_closed() {
            mouseClick(button);
            win.close();
            tryVerify(() => !win.visible);
            for (const enabled of ["False", "True"]) {
                Backend.run(`simulator.Simulator.enabled = ${enabled}`);
                verify(!win.visible);
            }
            verify(button.visible);
        }

        function test_closed_window_is_opened_again() {
            win.close();
            tryVerify(() => !win.visible);
            verify(button.visible);
            mouseClick(button);
            tryVerify(() => win.visible);
            tryVerify(() => win.active);
        }
    }
}
