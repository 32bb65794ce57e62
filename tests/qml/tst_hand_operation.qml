import QtQuick
import QtQuick.Controls.Material
import QtQuick.Layouts
import QtTest

import brovik.actuator
import brovik.components
import brovik.config
import brovik.gui
import kubelor.test
import main
import "items.js" as Items

// Outputs and heating by hand.
Item {
    id: root

    width: 720
    height: 4500

    Component {
        id: handComponent

        HandOp {
            anchors.fill: parent
        }
    }

    SignalSpy {
        id: toggled

        target: Actuator
        signalName: "toggle"
    }

    ScreenTestCase {
        name: "HandOperation"

        property HandOp page

        function prepare() {
            Backend.run("actuator.Actuator.set_dout_model(actuator.Actuator.all_douts)");
            page = createTemporaryObject(handComponent, root);
            draw(page);
            toggled.clear();
        }

        function outputs() {
            return Items.below(page, item => item instanceof BrovikDOutButton);
        }

        function heater() {
            return outputs().find(button => button.dOut === Actuator.heat1);
        }

        function test_outputs_by_hand() {
            compare(page.spacing, 0);
            compare(outputs().map(button => button.text), ["Lauge IN", "Säure IN", "Wasser kalt", "Wasser Heiß", "Kreislauf", "Säure OUT", "Lauge OUT", "Luft", "CO2", "Kanal", "Pumpe", "Heizung", "Dampf"]);
            outputs().forEach((button, i) => {
                compare(button.enabled, button.dOut !== Actuator.heat1);
                if (button.enabled) {
                    mouseClick(button);
                    compare(toggled.count, 1);
                    compare(toggled.signalArguments[0][0], i);
                    toggled.clear();
                    verify(!button.active);
                    Backend.runOnThread(`actuator.Actuator.all_douts[${i}].state = True`);
                    tryCompare(button, "active", true);
                }
            });
        }

        function test_order_of_hand_operation() {
            const [heating, level] = [findChild(page, "manualHeating"), findChild(page, "level")];
            verifyBelowEachOther([...outputs(), heating, level]);
            verifyCentred(heating, page);
            compare([level.width, level.horizontalAlignment, level.wrapMode], [page.width, Text.AlignHCenter, Text.WordWrap]);
        }

        function test_outputs_are_those_of_the_machine() {
            Backend.runOnThread("from brovik.actuator import Actuator\nActuator.set_dout_model([Actuator.pumpe, Actuator.mv_co2])");
            tryVerify(() => outputs().length === 2);
            compare(outputs().map(button => button.text), ["Pumpe", "CO2"]);
        }

        function test_names_are_shown_as_they_stand() {
            const lengthy = "x".repeat(1000);
            for (const name of ["<b>Ventil</b> & 'Co'", lengthy, "   "]) {
                Backend.runOnThread(`actuator.Actuator.mv_lauge_in.name = ${JSON.stringify(name)}`);
                const button = outputs()[0];
                tryCompare(button, "text", name);
                const label = Items.below(button, item => item instanceof Label)[0];
                compare([label.text, label.textFormat], [name, Text.PlainText]);
                verify(label.width <= button.availableWidth);
            }
        }

        function test_output_button_stays_enabled_during_a_run_but_the_heating_does_not() {
            Backend.run("actuator.Actuator.manual_heating_enabled = auto.Auto.active = True");
            for (const button of outputs()) {
                compare(button.enabled, button.dOut !== Actuator.heat1);
            }
        }

        function test_heating_is_enabled_with_manual_heating_alone_data() {
            return [[false, false], [false, true], [true, false], [true, true]].map(([manual, active]) => ({tag: `manual ${manual}, run ${active}`, manual, active}));
        }

        function test_heating_is_enabled_with_manual_heating_alone(data) {
            const python = value => value ? "True" : "False";
            Backend.run(`actuator.Actuator.manual_heating_enabled, auto.Auto.active = ${python(data.manual)}, ${python(data.active)}`);
            compare(heater().enabled, data.manual && !data.active);
        }

        function test_manual_heating_shows_and_asks_only() {
            const heating = findChild(page, "manualHeating");
            compare(heating.text, "Heizungs-Handbetrieb");
            compare(heating.height, Gui.controlHeight);
            compare(heating.font.pointSize, Gui.fSizeM);
            mouseClick(heating);
            compare(toggled.count, 1);
            compare(toggled.signalArguments[0][0], ActuatorEnums.ToggleManualHeating);
            verify(!heating.checked);
            Backend.runOnThread("actuator.Actuator.manual_heating_enabled = True");
            tryCompare(heating, "checked", true);
            Backend.run("auto.Auto.active = True");
            verify(!heating.enabled);
            mouseClick(heating);
            compare(toggled.count, 1);
        }

        function test_manual_heating_by_key() {
            const heating = findChild(page, "manualHeating");
            heating.forceActiveFocus();
            keyClick(Qt.Key_Space);
            compare(toggled.count, 1);
            tryCompare(heating, "checked", false);
        }

        function test_level_of_the_lye() {
            const level = findChild(page, "level");
            compare(level.text, "Füllstand Laugebecken unterschritten");
            compare(level.color, Qt.color("red"));
            Backend.runOnThread("sensor.Sensor.level.state = True");
            tryCompare(level, "text", "Füllstand Laugebecken erreicht");
            compare(level.color, page.Material.foreground);
        }

        function test_level_is_shown_if_it_is_checked_data() {
            return [["True", "True", true], ["True", "False", false], ["False", "True", false], ["False", "False", false]].map(([check, fitted, shown]) => ({tag: `check ${check}, switch ${fitted}`, check, fitted, shown}));
        }

        function test_level_is_shown_if_it_is_checked(data) {
            const level = findChild(page, "level");
            Backend.run(`settings.SettingsValues.test_lauge_level, config.Config.has_level_switch = ${data.check}, ${data.fitted}`);
            compare(level.visible, data.shown);
        }
    }
}
