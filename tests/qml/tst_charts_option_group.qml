// The switches of one kind of line.
import QtQuick
import QtQuick.Layouts

import brovik.chart

Item {
    id: root

    width: 800
    height: 600

    Component {
        id: groupComponent

        RowLayout {
            readonly property alias group: group

            width: 300

            ChartsOptionGroup {
                id: group
            }
        }
    }

    ScreenTestCase {
        name: "ChartsOptionGroup"

        property ChartsOptionGroup group

        function prepare() {
            group = createTemporaryObject(groupComponent, root).group;
        }

        function findSwitch(text, item = group) {
            for (let i = 0; i < item.children.length; ++i) {
                const child = item.children[i];
                if (child.text === text && child.checked !== undefined) {
                    return child;
                }
                const found = findSwitch(text, child);
                if (found) {
                    return found;
                }
            }
            return null;
        }

        function extended() {
            return findChild(group, "extended");
        }

        function test_defaults() {
            compare(group.color, "#000000");
            compare(group.title, "");
            const values = ["showLine", "showAxis", "showTitle", "showGrid", "showLabels", "shortLabels", "showExtended", "shortLabelsEnabled"];
            compare(values.map(name => group[name]), [false, true, true, false, true, false, false, false]);
        }

        function test_heading() {
            group.title = "Leitwert";
            group.color = "blue";
            const heading = findChild(group, "heading");
            compare(heading.text, "Leitwert");
            compare(heading.color, "#ffffff");
            compare(heading.padding, 3);
            compare(heading.background.color, "#0000ff");
            compare(heading.x + heading.width, 300 - 2 * group.margins);
        }

        function test_box() {
            compare(group.margins, 10);
            compare(group.radius, 5);
            compare(group.Layout.alignment, Qt.AlignTop);
        }

        // Each switch: what it is bound to, in both ways, and under what it is enabled.
        function test_switch_data() {
            return [
                {tag: "anzeigen", property: "showLine", needs: []},
                {tag: "zeige Achse", property: "showAxis", needs: ["showLine"]},
                {tag: "zeige Titel", property: "showTitle", needs: ["showLine"]},
                {tag: "zeige Grid", property: "showGrid", needs: ["showLine"]},
                {tag: "zeige Labels", property: "showLabels", needs: ["showLine"]},
                {tag: "kurze Labels", property: "shortLabels", needs: ["showLine", "showLabels", "shortLabelsEnabled"]}
            ];
        }

        function test_switch(data) {
            group.shortLabelsEnabled = true;
            group.showLine = true;
            group.showExtended = true;
            tryVerify(() => extended().height === extended().children[0].implicitHeight);
            const item = findSwitch(data.tag);
            compare([item.topPadding, item.bottomPadding], [0, 0]);
            const before = group[data.property];
            mouseClick(item);
            compare(group[data.property], !before);
            compare(item.checked, !before);
            group[data.property] = before;
            compare(item.checked, before);
            for (const need of data.needs) {
                group[need] = false;
                verify(!item.enabled, need);
                group[need] = true;
                verify(item.enabled, need);
            }
        }

        function test_order() {
            group.shortLabelsEnabled = true;
            group.showExtended = true;
            tryVerify(() => extended().height === extended().children[0].implicitHeight);
            const texts = test_switch_data().map(row => row.tag);
            const tops = texts.map(text => findSwitch(text).mapToItem(group, 0, 0).y);
            compare(tops.slice().sort((a, b) => a - b), tops);
        }

        function test_short_labels_are_offered_where_the_axis_has_names() {
            verify(!findSwitch("kurze Labels").visible);
            group.shortLabelsEnabled = true;
            verify(findSwitch("kurze Labels").visible);
        }

        function test_unfolding() {
            compare(extended().height, 0);
            verify(extended().clip);
            const folded = group.Layout.preferredHeight;
            const heights = [];
            const record = () => heights.push(extended().height);
            extended().heightChanged.connect(record);
            group.showExtended = true;
            const full = extended().children[0].implicitHeight;
            tryVerify(() => extended().height === full);
            verify(heights.length > 2, "it grows step by step");
            verify(group.Layout.preferredHeight > folded);
            group.showExtended = false;
            tryVerify(() => extended().height === 0);
            compare(group.Layout.preferredHeight, folded);
        }

        function test_long_texts_wrap() {
            group.parent.width = 140;
            group.shortLabelsEnabled = true;
            tryVerify(() => group.width === 140);
            for (const row of test_switch_data()) {
                const label = findSwitch(row.tag).contentItem;
                verify(!label.truncated);
                verify(label.contentWidth + label.leftPadding <= label.width);
            }
        }
    }
}
