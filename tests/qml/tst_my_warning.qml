// The banner and the icon.
import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material

import brovik.base
import brovik.gui

Item {
    id: top

    width: 400
    height: 400

    Component {
        id: warningComponent
        MyWarning {
            width: 300
        }
    }

    Component {
        id: iconComponent
        MyIcon {}
    }

    ScreenTestCase {
        id: testCase

        name: "MyWarning"

        function test_texts() {
            const banner = createTemporaryObject(warningComponent, top, {title: "Titel", text: "Text <b>"});
            compare(banner.color, Common.colorWarning);
            compare(banner.labelHeading.text, "Titel");
            compare(banner.labelHeading.font.pointSize, Gui.hSize);
            compare(banner.labelHeading.horizontalAlignment, Text.AlignHCenter);
            compare(banner.labelText.text, "Text <b>");
            compare(banner.labelText.textFormat, Text.PlainText);
            verify(banner.labelHeading.visible && banner.labelText.visible);
            verify(!banner.dismissBtn.visible);
            compare(banner.implicitHeight, banner.labelHeading.parent.implicitHeight + 2 * Common.spacing);
        }

        function test_labels_without_a_text_are_hidden() {
            const banner = createTemporaryObject(warningComponent, top);
            verify(!banner.labelHeading.visible);
            verify(!banner.labelText.visible);
            banner.text = "Text";
            verify(banner.labelText.visible);
        }

        function test_dismiss_button() {
            const banner = createTemporaryObject(warningComponent, top, {title: "Titel"});
            banner.dismissBtn.visible = true;
            compare(banner.dismissBtn.icon.source, "qrc:/brovik/base/img/x.svg");
            mouseClick(banner.dismissBtn);
            verify(!banner.visible);
        }

        function test_icon() {
            const icon = createTemporaryObject(iconComponent, top, {source: "qrc:/brovik/base/img/x.svg"});
            compare(icon.size, Qt.size(30, 30));
            compare(icon.width, 30);
            compare(icon.height, 30);
            compare(icon.color, Common.fg1);
            const [image, overlay] = [icon.children[0], icon.children[1]];
            compare(image.status, Image.Ready);
            verify(!image.visible);
            compare(image.sourceSize, Qt.size(30, 30));
            compare(image.fillMode, Image.PreserveAspectFit);
            compare(overlay.color, Common.fg1);
        }

        function test_icon_color() {
            const icon = createTemporaryObject(iconComponent, top, {source: "qrc:/brovik/base/img/x.svg"});
            icon.setColor("red");
            compare(icon.children[1].color, "#ff0000");
            icon.setColor("");
            compare(icon.children[1].color, Common.fg1);
            Common.theme = Material.Light;
            compare(icon.children[1].color, "#000000");
            Common.theme = Material.Dark;
        }
    }
}
