// The page on which the operator starts, stops and follows the automatic run and the tests of the baths.
import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts

import brovik.auto
import brovik.base
import brovik.components
import brovik.config
import brovik.gui
import brovik.sensor
import brovik.settings
import brovik.shell
import main

BrovikFlickable {
    id: root

    readonly property bool isCurrent: StackLayout.isCurrentItem
    readonly property bool intenseCleaning: Auto_.active ? Auto_.intenseCleaning : BrovikSettings.intenseCleaning

    Label {
        objectName: "information"

        Layout.fillWidth: true
        Layout.topMargin: privat.informationMargin
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.WordWrap
        color: privat.warning ? Common.colorWarning : Material.foreground
        text: privat.warning || `Button eine Sekunde zum ${Auto_.active ? "Abbrechen" : "Starten"} gedrückt halten und dann loslassen`
    }

    BrovikDelayButton {
        objectName: "start"

        Layout.preferredHeight: privat.startHeight
        enabled: !Auto_.lwSaureActive && !Auto_.lwLaugeActive && !Sensor.lwSensorDefective && !Shell.upgradeInProgressOrFinished
        font.pointSize: privat.startPointSize
        delay: privat.holdTime
        text: `${root.intenseCleaning ? "Intensivreinigung" : "Automatikbetrieb"} ${Auto_.active ? "abbrechen" : "starten"}`

        onMyActivated: Auto_.toPy(Auto_.ToggleAuto, null)
    }

    SettingSwitch {
        objectName: "intense"

        text: "Intensivreinigung durchführen"
        key: BrovikSettings.IntenseCleaning
    }

    SettingSwitch {
        objectName: "steam"

        visible: Config.hasSteamValve
        text: `Dampf${Config.steamPressureSterilization ? "druck" : ""}sterilisation durchführen`
        key: BrovikSettings.DoSteamStep
    }

    SteamWarning {
        objectName: "steamWarning"

        visible: Config.hasSteamValve && BrovikSettings.doSteamStep
    }

    Label {
        objectName: "progressText"

        Layout.fillWidth: true
        // The height of the text in the size that was chosen to fit.
        Layout.preferredHeight: contentHeight
        horizontalAlignment: Text.AlignHCenter
        font.pointSize: privat.progressPointSize
        fontSizeMode: Text.HorizontalFit
        minimumPointSize: Texts.drawableSize(Gui.fSizeS)
        wrapMode: Text.Wrap
        textFormat: Text.PlainText
        color: privat.progressColor
        text: Texts.shortened(Auto_.progressStr)
    }

    ProgressBar {
        objectName: "progressBar"

        Layout.fillWidth: true
        Accessible.name: "Fortschritt"
        from: 0
        to: 100
        value: Auto_.progress
        indeterminate: Auto_.progress < 0
    }

    Label {
        objectName: "status3"

        Layout.fillWidth: true
        Layout.topMargin: privat.statusMargin
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        textFormat: Text.PlainText
        text: Texts.shortened(Gui.status3, Texts.statusLimit)
        visible: text !== ""
    }

    PrestressRow {
        Layout.alignment: Qt.AlignHCenter
        Layout.topMargin: privat.groupMargin
    }

    RowLayout {
        Layout.fillWidth: true
        Layout.topMargin: privat.groupMargin
        Layout.bottomMargin: Common.spacing

        BathTestBox {
            id: saure

            objectName: "saure"

            Layout.preferredWidth: privat.equalWidth
            minimumProductHeight: lauge.productHeight
            minimumKey: BrovikSettings.LwSaureMin
            setpointKey: BrovikSettings.LwSaureSp
            nameKey: BrovikSettings.LwSaureName
            minimumOfRun: Auto_.lwSaureMin
            setpointOfRun: Auto_.lwSaureSp
            color: Auto_.lwSaureTooLow ? Common.colorWarning : Common.bg2
            what: "Säure"
            active: Auto_.lwSaureActive
            lwActualMax: Auto_.lwSaureMax
            btnStart.enabled: privat.testAllowed && !Auto_.lwLaugeActive

            btnStart.onMyActivated: Auto_.toPy(Auto_.ToggleLwTestSaure, null)
        }

        BathTestBox {
            id: lauge

            objectName: "lauge"

            Layout.preferredWidth: privat.equalWidth
            minimumProductHeight: saure.productHeight
            minimumKey: BrovikSettings.LwLaugeMin
            setpointKey: BrovikSettings.LwLaugeSp
            nameKey: BrovikSettings.LwLaugeName
            minimumOfRun: Auto_.lwLaugeMin
            setpointOfRun: Auto_.lwLaugeSp
            color: Auto_.lwLaugeTooLow ? Common.colorWarning : Common.bg2
            what: "Lauge"
            active: Auto_.lwLaugeActive
            lwActualMax: Auto_.lwLaugeMax
            btnStart.enabled: privat.testAllowed && !Auto_.lwSaureActive

            btnStart.onMyActivated: Auto_.toPy(Auto_.ToggleLwTestLauge, null)
        }
    }

    PageReporter {
        page: root
        pageEnum: Gui.PageAuto
    }

    QtObject {
        id: privat

        readonly property int informationMargin: 30
        readonly property int startHeight: 75
        readonly property int startPointSize: 20
        readonly property int holdTime: 1000
        readonly property int progressPointSize: 100
        readonly property int statusMargin: 10
        readonly property int groupMargin: 20
        // The same preference for both boxes; both fill the row.
        readonly property int equalWidth: 1

        readonly property bool testAllowed: !Auto_.active && !Sensor.lwSensorDefective
        readonly property string warning: {
            if (Shell.upgradeInProgressOrFinished) {
                return "Es wird/wurde ein Upgrade durchgeführt. Bitte die Maschine nach dem Upgrade neu starten.";
            }
            return Sensor.lwSensorDefective ? "Es wird kein Signal vom Leitwertsensor erkannt" : "";
        }
        readonly property color progressColor: {
            switch (Auto_.progressColor) {
            case Auto_.ProgressSuccess:
                return Material.color(Material.Green);
            case Auto_.ProgressError:
                return Material.color(Material.Red);
            case Auto_.ProgressWarning:
                return Material.color(Material.Orange);
            default:
                return root.Material.foreground;
            }
        }
    }

    Component.onCompleted: Common.autoOverviewIndex = StackLayout.index
}
