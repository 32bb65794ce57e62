// One entry of a changelog.
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

import brovik.base
import brovik.gui
import brovik.shell

Rectangle {
    id: root

    required property int index
    // Null once the changelog has changed, until this has gone.
    required property ChangelogEntry modelData

    height: column.implicitHeight + privat.margin
    color: root.index % 2 === 1 ? Common.bg2 : "transparent"

    ColumnLayout {
        id: column

        width: root.width

        Label {
            objectName: "heading"

            Layout.fillWidth: true
            Layout.margins: privat.margin
            font.pointSize: Texts.drawableSize(Gui.fSizeS)
            textFormat: Text.StyledText
            wrapMode: Text.Wrap
            text: privat.heading
        }

        Repeater {
            model: root.modelData?.changes

            RowLayout {
                id: change

                required property int index
                required property string modelData

                Layout.leftMargin: privat.margin

                Label {
                    Layout.alignment: Qt.AlignTop
                    font.pointSize: Texts.drawableSize(Gui.fSizeS)
                    text: `${change.index + 1}: `
                }

                Label {
                    Layout.fillWidth: true
                    font.pointSize: Texts.drawableSize(Gui.fSizeS)
                    textFormat: Text.PlainText
                    wrapMode: Text.Wrap
                    text: privat.cut(change.modelData)
                }
            }
        }
    }

    QtObject {
        id: privat

        readonly property int margin: 10
        readonly property string heading: {
            if (!root.modelData) {
                return "";
            }
            const [name, distribution, version, date, urgency] = ["name", "distribution", "version", "date", "urgencyStr"].map(key => Texts.escaped(privat.cut(root.modelData[key])));
            return `<b>${name}</b> / ${distribution} - ${version} - ${date} - Dringlichkeit: ${privat.coloured(urgency)}`;
        }

        // Longer than any real changelog; what a backend sends may be longer, and its layout would block the window.
        function cut(text: string): string {
            return Texts.shortened(text, Texts.longLimit);
        }

        // An invalid colour would be black, in the dark theme too.
        function coloured(text: string): string {
            const {color} = root.modelData;
            return color.valid ? `<font color="${color}">${text}</font>` : text;
        }
    }
}
