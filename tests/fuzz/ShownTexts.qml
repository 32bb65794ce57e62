// What shows a text that comes from outside, in each way in which the screens do it: the object's name says in which.
import QtQuick

import brovik.base
import brovik.chart
import brovik.components
import brovik.shell
import brovik.wifi

Item {
    id: root

    property string given
    property ChangelogEntry entry: null

    // What is given to others than labels.
    readonly property string escaped: Texts.escaped(given)
    readonly property list<string> pieces: Texts.split(given)
    readonly property alias axis: axis

    width: 800
    height: 1200

    WifiLine {
        objectName: "inOneLine"
        width: root.width
        ssid: root.given
    }

    WifiAddressRow {
        objectName: "address"
        width: root.width
        name: root.given
        type: root.given
        ip: root.given
    }

    WifiLoginPage {
        objectName: "login"
        width: root.width
        essid: root.given
    }

    UpdatesChangelogEntry {
        objectName: "changelog"
        width: root.width
        index: 0
        modelData: root.entry
    }

    MyTextButton {
        objectName: "shortened"
        text: root.given
    }

    MyDialogTitle {
        objectName: "shortened"
        width: root.width
        title: root.given
    }

    MyGreenCheckButton {
        id: checkButton

        objectName: "asItStands"
        text: root.given

        contentItem: PlainCheckContent {
            button: checkButton
        }
    }

    MyDialogText {
        objectName: "asItStands"
        width: root.width
        plain: true
        text: root.given
    }

    MyDialogText {
        objectName: "inAQuestion"
        width: root.width
        text: `Soll '${Texts.escaped(root.given)}' weg?`
    }

    ChartCategoryAxis {
        id: axis

        title: "Aktoren"
        names: [root.given, root.given]
        group: ChartsOptionGroup {}
    }
}
