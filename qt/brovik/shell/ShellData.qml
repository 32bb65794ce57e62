// Position of the update pages in the settings, and of each tab among them. Each page writes its own.
pragma Singleton

import QtQml

QtObject {
    id: root

    property int updatesOverviewIndex
    property int updatesTabOverviewIndex
    property int updatesTabAvailableIndex
    property int updatesTabInstalledIndex
    property int updatesTabConsoleOutputIndex
}
