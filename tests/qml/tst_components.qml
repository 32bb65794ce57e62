import QtQuick
import QtQuick.Controls.Material
import QtQuick.Layouts
import QtTest

import brovik.actuator
import brovik.base
import brovik.components
import brovik.gui
import kubelor.test
import "items.js" as Items

Item {
    id: root

    width: 600
    height: 600

    Component {
        id: boxComponent

        ColumnLayout {
            width: 400

            BrovikBox {
                objectName: "box"

                Item {
                    objectName: "content"
                    implicitHeight: 30
                }
            }
        }
    }

    Component {
        id: lineComponent

        BrovikBoxSeparatorLine {}
    }

    Component {
        id: pageComponent

        BrovikFlickable {
            property alias contentHeight: filler.implicitHeight

            width: 300
            height: 200
            spacing: 0

            Item {
                id: filler

                objectName: "content"
                Layout.fillWidth: true
            }

            TextField {
                objectName: "field"
                visible: false
            }
        }
    }

    Component {
        id: checkButtonComponent

        BrovikGreenCheckButton {}
    }

    Component {
        id: outputComponent

        BrovikDOutButton {
            width: 200
            height: 60
            dOut: Actuator.pumpe
        }
    }

    Component {
        id: stepComponent

        ColumnLayout {
            readonly property alias box: box

            width: 400

            SettingsStepBox {
                id: box

                num: 3
                title: "Das Fass wird mit Lauge gereinigt."

                SettingsStepBoxAdditional {
                    text: "Bemerkung"
                }
            }
        }
    }

    Component {
        id: additionalComponent

        SettingsStepBoxAdditional {}
    }

    Component {
        id: spinBoxComponent

        SettingsStepBoxSpinBox {
            width: 500
            defaultValue: 0.7
            description: "Druck in bar"
            precision: 1
            to: 50
            value: 7
        }
    }

    Component {
        id: switchComponent

        SettingsStepBoxSwitch {
            width: 500
            defaultValue: true
            description: "Dichtheit prüfen"
            checked: true
        }
    }

    Component {
        id: textComponent

        SettingsStepBoxTextField {
            width: 500
            text: "Produktname Säure: "
            product: "SANAL"
        }
    }

    SignalSpy {
        id: toggled

        target: Actuator
        signalName: "toggle"
    }

    ScreenTestCase {
        name: "Components"

        function prepare() {
            toggled.clear();
        }

        function make(component, properties = {}) {
            return createTemporaryObject(component, root, properties);
        }

        function test_box() {
            const box = findChild(make(boxComponent), "box");
            compare(box.Layout.preferredHeight, 30 + 2 * 10);
            compare([box.margins, box.radius, box.border.width], [10, 5, 1]);
            compare(box.color, Common.bg2);
            compare(box.border.color, Common.borderColor);
            tryCompare(box, "width", 400);
        }

        function test_separator_line() {
            const line = make(lineComponent);
            compare(line.height, 1);
            compare(line.color, Common.borderColor);
            compare([line.Layout.topMargin, line.Layout.bottomMargin], [5, 5]);
            line.noMargins = true;
            compare([line.Layout.topMargin, line.Layout.bottomMargin], [0, 0]);
        }

        function pageParts(page) {
            const parts = Array.from({length: 3}, (_, i) => page.children[i]);
            return {top: parts[0], bottom: parts[1], flickable: parts[2]};
        }

        function test_page_shorter_than_its_view() {
            const page = make(pageComponent, {contentHeight: 150});
            const {top, bottom, flickable} = pageParts(page);
            tryCompare(flickable, "contentHeight", 150);
            verify(!flickable.interactive);
            compare([top.active, bottom.active], [false, false]);
            mouseDrag(flickable, 100, 150, 0, -100);
            compare(flickable.contentY, 0);
        }

        function test_page_as_high_as_its_view() {
            const {top, bottom, flickable} = pageParts(make(pageComponent, {contentHeight: 200}));
            verify(!flickable.interactive);
            compare([top.active, bottom.active], [false, false]);
        }

        function test_page_higher_than_its_view() {
            const page = make(pageComponent, {contentHeight: 500});
            const {top, bottom, flickable} = pageParts(page);
            tryCompare(flickable, "contentHeight", 500);
            verify(flickable.interactive);
            verify(flickable.clip);
            compare(flickable.contentWidth, 300);
            compare(findChild(page, "content").width, 300);
            compare([top.visible, bottom.visible], [false, true]);
            flickable.contentY = 100;
            compare([top.visible, bottom.visible], [true, true]);
            flickable.contentY = 300;
            compare([top.visible, bottom.visible], [true, false]);
            page.contentHeight = 100;
            tryCompare(bottom, "active", false);
            tryCompare(flickable, "interactive", false);
        }

        function test_page_that_can_be_dragged() {
            const {flickable} = pageParts(make(pageComponent, {contentHeight: 500}));
            tryCompare(flickable, "contentHeight", 500);
            mouseDrag(flickable, 100, 150, 0, -100);
            tryVerify(() => flickable.contentY > 0);
            compare(flickable.contentX, 0);
        }

        // As when the on-screen keyboard comes up.
        function test_page_that_shrinks_keeps_the_field_in_view() {
            const page = make(pageComponent, {contentHeight: 500, height: 600});
            const {flickable} = pageParts(page);
            const field = findChild(page, "field");
            field.visible = true;
            field.forceActiveFocus();
            tryVerify(() => field.activeFocus && field.y === 500);
            page.height = 200;
            verify(flickable.contentY + page.height >= field.y + field.height);
            verify(flickable.contentY < field.y);
            page.height = 600;
            tryCompare(flickable, "contentY", 0);
        }

        function test_page_that_shrinks_without_a_field_stays() {
            const page = make(pageComponent, {contentHeight: 500, height: 600});
            page.height = 200;
            compare(pageParts(page).flickable.contentY, 0);
        }

        function test_check_button() {
            const button = make(checkButtonComponent);
            compare(button.Layout.preferredHeight, Gui.controlHeight);
            compare(button.font.pointSize, Gui.fSizeM);
            verify(button.Layout.fillWidth);
        }

        // In larger ones a page of buttons would take gigabytes.
        function test_check_button_in_letters_larger_than_the_screen() {
            const button = make(checkButtonComponent);
            Backend.run("gui.Gui.fsize_m = 1000");
            compare(button.font.pointSize, 200);
            Backend.run(`gui.Gui.fsize_m = ${Gui.fSizeMDefault}`);
            compare(button.font.pointSize, Gui.fSizeMDefault);
        }

        function test_output_button_shows_the_state() {
            const button = make(outputComponent);
            verify(!button.active);
            Backend.runOnThread("actuator.Actuator.pumpe.state = True");
            tryCompare(button, "active", true);
        }

        function test_output_button_asks_and_does_not_switch() {
            const button = make(outputComponent);
            mouseClick(button);
            compare(toggled.count, 1);
            compare(toggled.signalArguments[0][0], ActuatorEnums.Pumpe);
            verify(!button.active);
            verify(!Actuator.pumpe.state);
        }

        function test_output_button_is_locked_during_a_run() {
            const button = make(outputComponent);
            verify(button.enabled);
            Backend.run("auto.Auto.active = True");
            tryCompare(button, "enabled", false);
            mouseClick(button);
            compare(toggled.count, 0);
        }

        function labels(item) {
            let found = [];
            for (let i = 0; i < item.children.length; ++i) {
                const child = item.children[i];
                found = found.concat(child instanceof Label ? [child] : child instanceof Control ? [] : labels(child));
            }
            return found;
        }

        function test_step_box_with_a_number() {
            const box = make(stepComponent).box;
            const [number, title, remark] = labels(box);
            compare(number.text, "3:");
            verify(number.visible);
            tryCompare(number, "width", Gui.boxLeftMargin);
            verify(number.font.bold && title.font.bold && !remark.font.bold);
            compare(title.x, Gui.boxLeftMargin);
            compare(remark.text, "Bemerkung");
            verify(remark.mapToItem(box, 0, 0).y > title.mapToItem(box, 0, 0).y + title.height);
            compare([title.textFormat, remark.textFormat], [Text.PlainText, Text.PlainText]);
            compare([title.wrapMode, remark.wrapMode], [Text.WordWrap, Text.WordWrap]);
        }

        function test_step_box_with_a_long_title() {
            const box = make(stepComponent).box;
            const [number, title] = labels(box);
            const height = box.height;
            box.title = "Das Fass wird mit Lauge gereinigt. ".repeat(5);
            tryVerify(() => title.lineCount > 2 && title.width >= title.contentWidth && box.height > height);
            // The number stays beside the first line.
            compare(number.mapToItem(box, 0, 0).y, title.mapToItem(box, 0, 0).y);
        }

        function test_step_box_line() {
            const box = make(stepComponent).box;
            const line = Items.below(box, item => item instanceof BrovikBoxSeparatorLine)[0];
            compare([line.Layout.topMargin, line.Layout.bottomMargin], [5, 0]);
        }

        function test_step_box_with_num_0() {
            const box = make(stepComponent).box;
            box.num = 0;
            const [number, title] = labels(box);
            verify(!number.visible);
            tryCompare(title, "x", 0);
        }

        function test_remark_with_and_without_its_line() {
            const remark = make(additionalComponent, {text: "Bemerkung"});
            const line = remark.children[0];
            verify(line instanceof BrovikBoxSeparatorLine);
            verify(line.visible && line.noMargins);
            remark.noSeparator = true;
            verify(!line.visible);
        }

        function test_number_at_its_default_has_no_suffix() {
            const row = make(spinBoxComponent);
            compare(row.suffix, "");
            compare(row.text, "Druck in bar");
            compare(row.spinBox.displayText, "0.7");
            verify(row.spinBox.editable);
        }

        function test_number_beside_its_default_has_the_suffix() {
            const row = make(spinBoxComponent, {value: 8});
            compare(row.realValue, 0.8);
            compare(row.factor, 10);
            compare(row.suffix, ` <i><font color="${row.Material.accent}">(Default: 0.7)</font></i>`);
            compare(row.text, "Druck in bar" + row.suffix);
            row.value = 7;
            compare(row.text, "Druck in bar");
        }

        function test_switch_suffix() {
            const row = make(switchComponent);
            compare(row.text, "Dichtheit prüfen");
            mouseClick(row.switch_);
            verify(!row.checked);
            compare(row.text, `Dichtheit prüfen <i><font color="${row.Material.accent}">(Default: ein)</font></i>`);
        }

        function test_switch_width() {
            const row = make(switchComponent);
            tryCompare(row.switch_, "width", 150);
            row.switchWidth = 100;
            tryCompare(row.switch_, "width", 100);
        }

        function test_text_field() {
            const row = make(textComponent);
            compare(row.spacing, 10);
            compare(row.field.text, "SANAL");
            compare([labels(row)[0].text, labels(row)[0].textFormat], ["Produktname Säure: ", Text.PlainText]);
            compare(labels(row)[0].wrapMode, Text.WordWrap);
            row.product = "";
            compare(row.field.text, "");
            tryVerify(() => row.field.x + row.field.width === 500);
        }

        function test_text_field_with_a_long_label() {
            const row = make(textComponent, {text: "Produktname der Säure im linken Becken ".repeat(3)});
            const [label] = labels(row);
            tryVerify(() => label.lineCount > 2);
            tryVerify(() => label.contentWidth <= label.width && label.contentHeight <= label.height);
            verify(label.x + label.width <= row.field.x);
            verify(row.field.width >= 200, row.field.width);
            compare(row.field.x + row.field.width, 500);
            verify(row.implicitHeight >= label.contentHeight);
            row.text = "kurz";
            tryVerify(() => label.lineCount === 1 && row.field.x === Math.ceil(label.implicitWidth) + 10);
            tryVerify(() => row.implicitHeight === row.field.implicitHeight);
        }

        function test_rows_are_named_for_accessibility() {
            compare(make(spinBoxComponent).spinBox.Accessible.name, "Druck in bar");
            compare(make(switchComponent).switch_.Accessible.name, "Dichtheit prüfen");
            compare(make(textComponent).field.Accessible.name, "Produktname Säure: ");
        }
    }
}
