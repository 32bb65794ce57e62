import QtQuick
import QtQuick.Controls
import QtTest

import brovik.base
import brovik.gui
import kubelor.test
import main

Item {
    id: root

    width: 300
    height: 100

    // The window gives its texts their size.
    Control {
        anchors.fill: parent
        font.pointSize: Texts.drawableSize(Gui.fSizeS)

        contentItem: HeaderBox {
            id: box

            text: "lang ".repeat(100)
        }
    }

    ScreenTestCase {
        name: "HeaderBox"

        function initTestCase() {
            failOnWarning(/.?/);
        }

        function test_sizes_that_no_text_fits_data() {
            return [
                {tag: "huge", size: "1e300", drawn: 200},
                {tag: "infinite", size: "float('inf')", drawn: 200},
                {tag: "no number", size: "float('nan')", drawn: Gui.fSizeSDefault},
                {tag: "negative", size: "-1e300", drawn: Gui.fSizeSDefault}
            ];
        }

        function test_sizes_that_no_text_fits(data) {
            Backend.runOnThread(`gui.Gui.fsize_s = gui.Gui.fsize_xs = ${data.size}`);
            tryCompare(box.font, "pointSize", data.drawn);
        }
    }
}
