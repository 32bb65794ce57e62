// One setting by its name: what is stored, its range and default, and the wish for another value.
import QtQml

import brovik.settings

QtObject {
    id: root

    // The name of its property in BrovikSettings.
    required property string key
    // Its number in SettingsEnum.
    readonly property int number: BrovikSettings[root.key.charAt(0).toUpperCase() + root.key.slice(1)]
    readonly property var value: BrovikSettings[root.key]
    readonly property var defaultValue: BrovikSettings[`${root.key}Default`]
    // The range; a number alone has one.
    readonly property var lowest: BrovikSettings[`${root.key}Min`]
    readonly property var highest: BrovikSettings[`${root.key}Max`]

    // Asks the backend for this value.
    function send(wish) {
        BrovikSettings.toPy(root.number, wish);
    }
}
