// The one window of the program: header, tabs, pages, on-screen keyboard.
import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import QtQuick.VirtualKeyboard
import QtQuick.VirtualKeyboard.Settings

import brovik.base
import brovik.chart
import brovik.gui
import brovik.sensor
import brovik.shell
import brovik.simulator
import brovik.wifi
import main

BaseTemplate {
    id: root

    width: 800
    height: 1200
    font.pointSize: Texts.drawableSize(Gui.fSizeS)

    MyToast {
        id: toast

        objectName: "toast"

        height: header.height
    }

    ColumnLayout {
        anchors {
            top: parent.top
            left: parent.left
            right: parent.right
            bottom: inputPanel.top
        }
        spacing: Common.spacing

        RowLayout {
            id: header

            Layout.fillHeight: false
            Layout.preferredHeight: privat.headerHeight
            spacing: Common.spacing

            HeaderBox {
                objectName: "pressure"

                Layout.preferredWidth: privat.pressureWidth
                Layout.fillHeight: true
                horizontalAlignment: Text.AlignHCenter
                font.pointSize: privat.valueSize
                wrapMode: Text.NoWrap
                text: "Druck:\n" + Sensor.druck.toFixed(2) + " bar"
            }

            HeaderBox {
                objectName: "conductivity"

                Layout.preferredWidth: privat.conductivityWidth
                Layout.fillHeight: true
                horizontalAlignment: Text.AlignHCenter
                font.pointSize: privat.valueSize
                wrapMode: Text.NoWrap
                text: "Leitwert:\n" + Sensor.leitwert.toFixed(2) + " mS/cm"
            }

            HeaderBox {
                objectName: "status2"

                Layout.fillWidth: true
                Layout.fillHeight: true
                text: Texts.shortened(Gui.status2, Texts.statusLimit)
            }
        }

        HeaderBox {
            objectName: "status"

            Layout.fillWidth: true
            Layout.preferredHeight: privat.statusHeight
            text: Texts.shortened(Gui.status, Texts.statusLimit)
        }

        RowLayout {
            spacing: 0

            HeaderToolButton {
                objectName: "power"

                Layout.preferredHeight: tabs.height
                Accessible.name: "Herunterfahren oder neu starten"
                icon.source: "img/power.svg"

                onClicked: powerPopup.open()
            }

            TabBar {
                id: tabs

                objectName: "tabs"

                Layout.fillWidth: true
                font.pointSize: Texts.drawableSize(Gui.fSizeM)

                TabButton {
                    text: "Automatik"
                }

                TabButton {
                    text: "Chart"
                }

                TabButton {
                    text: "Settings"
                }
            }

            HeaderToolButton {
                objectName: "theme"

                Layout.preferredHeight: tabs.height
                Accessible.name: Common.isDarkTheme ? "Helles Design" : "Dunkles Design"
                icon.source: Common.isDarkTheme ? "img/sun.svg" : "img/moon.svg"

                onClicked: root.setTheme(Common.isDarkTheme ? Material.Light : Material.Dark)
            }
        }

        MyStackLayout {
            id: pages

            objectName: "pages"

            Layout.leftMargin: Common.spacing
            Layout.rightMargin: Common.spacing
            currentIndex: tabs.currentIndex

            AutoOverview {}

            ChartsOverview {
                id: charts

                objectName: "charts"
            }

            SettingsOverview {
                id: settings
            }
        }
    }

    Binding {
        target: SettingsNetworkData
        property: "settingsOverviewSelected"
        value: settings.StackLayout.index === pages.currentIndex
    }

    PowerPopup {
        id: powerPopup

        objectName: "powerPopup"
    }

    SimulatorOptionsWindow {
        id: simulator

        objectName: "simulator"
    }

    SimulatorOptionsButton {
        objectName: "simulatorButton"

        win: simulator
    }

    InputPanel {
        id: inputPanel

        objectName: "inputPanel"

        x: 0
        y: root.height
        z: 99
        width: root.width
        externalLanguageSwitchEnabled: true

        states: State {
            name: "visible"
            when: inputPanel.active

            PropertyChanges {
                inputPanel.y: root.height - inputPanel.height
            }
        }

        transitions: Transition {
            to: "visible"
            reversible: true

            NumberAnimation {
                properties: "y"
                duration: 250
                easing.type: Easing.InOutQuad
            }
        }
    }

    TextMetrics {
        id: widestPressure

        font.pointSize: Texts.drawableSize(Gui.fSizeS)
        text: "00.00 bar"
    }

    TextMetrics {
        id: widestConductivity

        font.pointSize: Texts.drawableSize(Gui.fSizeS)
        text: "000.00 mS/cm"
    }

    QtObject {
        id: privat

        readonly property real headerHeight: 80 * Gui.itemsScaleFactor
        readonly property real pressureWidth: 95 * Gui.itemsScaleFactor
        readonly property real conductivityWidth: 125 * Gui.itemsScaleFactor
        readonly property real statusHeight: 40 * Gui.itemsScaleFactor
        // One size for both, which their widest values have room for.
        readonly property real valueSize: Texts.drawableSize(Math.min(Texts.fittingSize(widestPressure, pressureWidth - 2 * Common.spacing), Texts.fittingSize(widestConductivity, conductivityWidth - 2 * Common.spacing)))

        function showSettings(index: int) {
            tabs.currentIndex = Common.settingsOverviewIndex;
            settings.changeIndex(index);
        }

        function showUpdates(index: int) {
            tabs.currentIndex = Common.settingsOverviewIndex;
            settings.showUpdatePage(index);
        }

        function followPage() {
            switch (Gui.page) {
            case Gui.PageAuto:
                tabs.currentIndex = Common.autoOverviewIndex;
                break;
            case Gui.PageChart:
                tabs.currentIndex = Common.chartsOverviewIndex;
                charts.currentIndex = 0;
                break;
            case Gui.PageSettingsAuto:
                privat.showSettings(Common.settingsAutoIndex);
                break;
            case Gui.PageHandOp:
                privat.showSettings(Common.handOpIndex);
                break;
            case Gui.PageUpdatesOverview:
                privat.showUpdates(ShellData.updatesOverviewIndex);
                break;
            case Gui.PageUpdatesShell:
                privat.showUpdates(ShellData.updatesTabConsoleOutputIndex);
                break;
            }
        }
    }

    Connections {
        target: Gui

        function onPageChanged() {
            privat.followPage();
        }

        function onShowPoweroffDialog() {
            powerPopup.open();
        }
    }

    // The program ends with its last window.
    onClosing: simulator.close()

    Component.onCompleted: {
        VirtualKeyboardSettings.locale = "de_DE";
        Common.mainHeight = Qt.binding(() => inputPanel.y);
    }
}
