import QtQuick
import QtQuick.Controls.Material
import QtQuick.Layouts

import brovik.base
import brovik.gui
import kubelor.test
import "items.js" as Items

Item {
    id: root

    readonly property string check: "qrc:/brovik/base/img/check.svg"
    readonly property string cross: "qrc:/brovik/base/img/x.svg"

    width: 1200
    height: 600

    Component {
        id: checkButton

        MyGreenCheckButton {}
    }

    Component {
        id: redButton

        MyGreenRedCheckButton {}
    }

    Component {
        id: progressButton

        MyGreenProgressButton {
            width: 200
            height: 60
        }
    }

    Component {
        id: grid

        MyGrid {}
    }

    Component {
        id: surface

        ColumnLayout {
            readonly property MyRectColLayout surface: MyRectColLayout {
                parent: column

                Item {
                    implicitHeight: 40
                    implicitWidth: 10
                }
            }

            id: column

            width: 300
        }
    }

    Component {
        id: selectionList

        MySelectionList {
            width: 1200
            text: "Auswahl"
            model: ["eins", "zwei"]
        }
    }

    Component {
        id: sliderComponent

        MySlider {
            width: 400
            from: 0
            to: 10
            stepSize: 2
            text: "Wert"
        }
    }

    Component {
        id: flickContainer

        MyGradientFlickContainer {
            width: 300
            height: 200
            flickable: Flickable {
                property bool disableFlick: false

                contentHeight: 500
            }
        }
    }

    Component {
        id: plainFlickContainer

        MyGradientFlickContainer {
            width: 300
            height: 200
            flickable: Flickable {
                contentHeight: 500
            }
        }
    }

    Component {
        id: swipeView

        MySwipeView {
            width: 300
            height: 200

            Item {}

            Item {}
        }
    }

    Component {
        id: shadows

        Item {
            readonly property list<Item> boxes: [
                MyGradientBoxTop {
                    parent: container
                },
                GradientBoxTop {
                    parent: container
                },
                MyGradientBoxBottom {
                    parent: container
                },
                GradientBoxBottom {
                    parent: container
                }
            ]

            id: container

            width: 300
            height: 200
        }
    }

    ScreenTestCase {
        name: "GeneralControls"

        function make(component, properties = {}) {
            return createTemporaryObject(component, root, properties);
        }

        function green(item) {
            return item.Material.color(Material.Green);
        }

        function test_green_check_button() {
            const button = make(checkButton, {text: "Pumpe"});
            const plain = button.Material.background;
            verify(!button.active);
            compare(button.display, AbstractButton.TextOnly);
            button.active = true;
            compare(button.Material.background, green(button));
            compare(button.Material.accent, Qt.color("green"));
            compare(button.icon.source, root.check);
            compare(button.display, AbstractButton.TextBesideIcon);
            button.active = false;
            compare(button.Material.background, plain);
            compare(button.display, AbstractButton.TextOnly);
        }

        function test_green_red_check_button() {
            const button = make(redButton);
            compare(button.Material.background, button.Material.color(Material.Red));
            compare(button.icon.source, root.cross);
            button.active = true;
            compare(button.Material.background, green(button));
            compare(button.icon.source, root.check);
        }

        function test_progress_button_background() {
            const button = make(progressButton);
            const plain = button.Material.background;
            compare(button.progress, 0.3);
            button.fillGreen = true;
            compare(button.Material.background, green(button));
            button.showProgress = true;
            compare(button.Material.background, plain);
            button.showProgress = false;
            compare(button.Material.background, green(button));
        }

        function test_progress_button_check_icon() {
            const button = make(progressButton, {text: "Laden"});
            compare(button.display, AbstractButton.TextOnly);
            button.showCheck = true;
            compare(button.display, AbstractButton.TextBesideIcon);
            compare(button.icon.source, root.check);
        }

        function test_progress_button_bar_data() {
            return [{tag: "30 percent", progress: 0.3, part: 0.3}, {tag: "below 0", progress: -1, part: 0}, {tag: "above 1", progress: 7, part: 1}];
        }

        function test_progress_button_bar(data) {
            const button = make(progressButton, {progress: data.progress});
            const background = button.background;
            const bar = background.children[background.children.length - 1];
            verify(!bar.visible);
            button.showProgress = true;
            verify(bar.visible);
            compare(bar.color, green(button));
            compare(bar.radius, background.radius);
            fuzzyCompare(bar.width, background.width * data.part, 0.01);
            compare(bar.height, background.height);
            compare(bar.x, 0);
        }

        function cells(gridItem) {
            return Array.from({length: gridItem.children.length}, (_, i) => gridItem.children[i]).filter(cell => cell instanceof Label);
        }

        function test_grid_in_pairs() {
            const found = cells(make(grid, {model: ["Name", "Wert", "Name 2", "Wert 2", "Name 3", "Wert 3"]}));
            compare(found.map(cell => cell.text), ["Name", "Wert", "Name 2", "Wert 2", "Name 3", "Wert 3"]);
            compare(found.map(cell => cell.font.bold), [true, false, true, false, true, false]);
            compare(found.map(cell => cell.Layout.topMargin), [5, 5, 0, 0, 0, 0]);
            compare(found.map(cell => cell.Layout.bottomMargin), [0, 0, 0, 0, 5, 5]);
            compare(found[0].Layout.alignment, Qt.AlignRight | Qt.AlignVCenter);
            compare(found[1].Layout.alignment, Qt.AlignLeft | Qt.AlignVCenter);
        }

        function test_grid_with_an_odd_number_of_entries() {
            const gridItem = make(grid, {model: ["Name", "Wert", "allein"]});
            const found = cells(gridItem);
            tryVerify(() => found[2].y > found[1].y);
            verify(found[2].font.bold);
            // Both left cells end at the same line, left of the right cell.
            compare(found[2].x + found[2].width, found[0].x + found[0].width);
            verify(found[2].x + found[2].width <= found[1].x);
        }

        function test_grid_without_entries() {
            compare(cells(make(grid)).length, 0);
        }

        function test_grid_shows_markup_as_text() {
            compare(cells(make(grid, {model: ["<b>x</b>"]}))[0].textFormat, Text.PlainText);
        }

        function test_surface() {
            const item = make(surface).surface;
            compare(item.implicitHeight, 40 + 2 * Common.spacing);
            compare(item.color, Common.bg1);
            tryCompare(item, "width", 300);
            item.defaultColor = "red";
            compare(item.color, Qt.color("red"));
        }

        function test_selection_list() {
            const list = make(selectionList);
            list.currentIndex = 1;
            compare(list.comboBox.displayText, "zwei");
            compare(list.color, Common.bg1);
            tryVerify(() => list.implicitHeight === list.comboBox.implicitHeight);
            // Beside the label if both fit, below it otherwise.
            list.width = 400;
            tryVerify(() => list.implicitHeight > list.comboBox.implicitHeight);
            tryCompare(list.comboBox, "width", 400 - 2 * Common.spacing);
        }

        function test_selection_list_label() {
            const list = make(selectionList, {text: "<b>x</b>"});
            const label = labelOf(list);
            compare([label.text, label.textFormat, label.wrapMode], ["<b>x</b>", Text.PlainText, Text.WordWrap]);
            compare([label.Layout.maximumWidth, label.Layout.leftMargin, label.Layout.topMargin], [Common.maxLeftColWidth, 5, 0]);
            compare([list.comboBox.Layout.leftMargin, list.comboBox.Layout.rightMargin], [5, 5]);
            list.width = 400;
            compare([label.Layout.maximumWidth, label.Layout.topMargin], [400 - 5, 5]);
        }

        function labelOf(item) {
            return Items.below(item, child => child instanceof Label)[0];
        }

        function test_slider_buttons() {
            const control = make(sliderComponent, {value: 4});
            const [minus, plus] = ["Verringern", "Erhöhen"].map(name => buttonNamed(control, name));
            compare(minus.icon.source, "qrc:/brovik/base/img/dash-lg.svg");
            compare(plus.icon.source, "qrc:/brovik/base/img/plus-lg.svg");
            mouseClick(plus);
            compare(control.value, 6);
            mouseClick(minus);
            mouseClick(minus);
            compare(control.value, 2);
            mouseClick(minus);
            mouseClick(minus);
            compare(control.value, 0);
        }

        function test_slider() {
            const control = make(sliderComponent);
            compare(control.slider.snapMode, Slider.SnapOnRelease);
            compare(control.label.text, "Wert");
            compare(control.label.textFormat, Text.PlainText);
            compare([control.label.Layout.leftMargin, control.label.Layout.topMargin], [5, 5]);
            tryVerify(() => control.slider.mapToItem(control, 0, 0).y >= control.label.y + control.label.height + 5);
            compare(control.height, control.label.parent.implicitHeight);
            compare(control.color, Common.bg1);
            tryVerify(() => control.height > control.slider.height);
        }

        function buttonNamed(item, name) {
            for (let i = 0; i < item.children.length; ++i) {
                const child = item.children[i];
                const found = child instanceof ToolButton && child.Accessible.name === name ? child : buttonNamed(child, name);
                if (found) {
                    return found;
                }
            }
            return null;
        }

        function test_shadow_boxes_in_place() {
            const boxes = make(shadows).boxes;
            const [top, top2, bottom, bottom2] = [boxes[0], boxes[1], boxes[2], boxes[3]];
            for (const box of [top, top2, bottom, bottom2]) {
                compare(box.height, 50);
                compare(box.width, 300);
                compare(box.bg, root.Window.window.color);
                verify(!box.active);
                verify(!box.visible);
            }
            compare([top.y, top2.y, bottom.y, bottom2.y], [0, 0, 150, 150]);
            compare([colorAt(top, 0), colorAt(bottom, 1)], [top.bg, bottom.bg]);
            compare([colorAt(top, 1).a, colorAt(bottom, 0).a], [0, 0]);
        }

        function colorAt(box, position) {
            const [first, second] = [box.gradient.stops[0], box.gradient.stops[1]];
            return (first.position === position ? first : second).color;
        }

        function test_shadows_can_be_forbidden() {
            const box = make(shadows).boxes[0];
            box.active = true;
            verify(box.visible);
            Backend.run("gui.Gui.indicate_scrollable = False");
            tryCompare(box, "visible", false);
        }

        function containerParts(container) {
            const parts = Array.from({length: 3}, (_, i) => container.children[i]);
            return {top: parts[0], bottom: parts[1], flickable: parts[2].item};
        }

        function test_flick_container() {
            const {top, bottom, flickable} = containerParts(make(flickContainer));
            compare([top.active, bottom.active], [false, true]);
            flickable.contentY = 100;
            compare([top.active, bottom.active], [true, true]);
            flickable.contentY = 300;
            compare([top.active, bottom.active], [true, false]);
            flickable.disableFlick = true;
            compare([top.active, bottom.active], [false, false]);
            flickable.disableFlick = false;
            compare([top.active, bottom.active], [true, false]);
        }

        function test_flick_container_without_the_option() {
            const {top, bottom} = containerParts(make(plainFlickContainer));
            compare([top.active, bottom.active], [false, true]);
        }

        function test_swipe_view_has_a_new_size_at_once() {
            const view = make(swipeView);
            const list = view.contentItem as ListView;
            tryVerify(() => list.highlightItem !== null);
            const widths = [view.width];
            list.highlightItem.widthChanged.connect(() => widths.push(list.highlightItem.width));
            view.width = 1100;
            tryCompare(list.highlightItem, "width", 1100);
            compare(widths, [300, 1100]);
            compare([view.interactive, view.clip], [false, true]);
        }
    }
}
