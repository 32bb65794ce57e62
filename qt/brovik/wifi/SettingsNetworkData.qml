// Where the network pages stand in the frame of the settings, and whether the operator sees the first.
pragma Singleton

import QtQml

QtObject {
    id: root

    // The frame of the settings is the current tab.
    property bool settingsOverviewSelected: false
    // The network page is the current page of that frame.
    property bool settingsNetworkSelected: false
    // The backend is to report the interfaces.
    readonly property bool wifiWorkerEnabled: root.settingsOverviewSelected && root.settingsNetworkSelected
    // Position of each page in the frame; the page writes its own.
    property int settingsNetworkIndex
    property int wifiLoginPageIndex
}
