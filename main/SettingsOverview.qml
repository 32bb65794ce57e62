// The frame of the settings pages.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

import brovik.base
import brovik.components
import brovik.gui
import brovik.shell
import brovik.wifi
import main

ColumnLayout {
    id: root

    readonly property bool isCurrent: StackLayout.isCurrentItem

    // Shows the page at this position.
    function changeIndex(index: int) {
        pages.currentIndex = index;
        selection.currentIndex = index;
    }

    // Shows the update pages, and this tab of theirs: the overview, if there is none with that index.
    function showUpdatePage(index = 0) {
        root.changeIndex(ShellData.updatesOverviewIndex);
        updates.currentIndex = index >= 0 && index < updates.tabCount ? index : ShellData.updatesTabOverviewIndex;
    }

    ComboBox {
        id: selection

        objectName: "selection"

        Layout.fillWidth: true
        Layout.preferredHeight: Gui.controlHeight
        Accessible.name: "Seite der Einstellungen"
        font.pointSize: Texts.drawableSize(Gui.fSizeM)
        model: ["Reinigungsprozess", "Leitwertprüfung", "Sonstige Einstellungen", "Netzwerk", "Updates", "Erscheinungsbild", "Handbetrieb"]

        onActivated: pages.currentIndex = currentIndex
    }

    PageStack {
        id: pages

        objectName: "settingsPages"

        // Gives way to the on-screen keyboard.
        Layout.minimumHeight: 0
        shown: root.isCurrent
        currentIndex: selection.currentIndex

        SettingsAuto {}

        SettingsElectrolyte {}

        SettingsMisc {}

        SettingsNetwork {
            id: network
        }

        UpdatesOverview {
            id: updates

            objectName: "updates"
        }

        SettingsAppearance {}

        HandOp {}

        WifiLoginPage {
            id: login

            onConnect: {
                Wifi.toPy(Wifi.Connect, [login.essid, login.psk]);
                root.changeIndex(SettingsNetworkData.settingsNetworkIndex);
                network.emptyWifiList();
            }
            onGoBack: root.changeIndex(SettingsNetworkData.settingsNetworkIndex)
        }
    }

    Binding {
        target: SettingsNetworkData
        property: "settingsNetworkSelected"
        value: network.isCurrent
    }

    Connections {
        target: Wifi

        function onGotLoginData(essid: string, psk: string) {
            login.init(essid, psk);
            root.changeIndex(SettingsNetworkData.wifiLoginPageIndex);
        }
    }

    Component.onCompleted: Common.settingsOverviewIndex = StackLayout.index
}
