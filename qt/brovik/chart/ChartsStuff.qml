// Checks of the names that the operator gives to charts.
pragma Singleton

import QtQuick

import brovik.chart

QtObject {
    id: root

    // What is wrong with the name of a new chart; empty if nothing is. It differs from all others in more than case.
    function getNameErrorText(txt: string): string {
        return privat.errorText(txt, name => name.toLowerCase());
    }

    // What is wrong with the new name of a chart; empty if nothing is. The case of its letters may be all that changes.
    function getNameErrorTextCaseSensitive(txt: string): string {
        return privat.errorText(txt, name => name);
    }

    readonly property QtObject inner: QtObject {
        id: privat

        function errorText(txt: string, key: var): string {
            if (Array.from(Chart.assignedNames).some(name => key(name) === key(txt))) {
                return `Der Name ${txt} ist bereits vergeben`;
            }
            return txt ? "" : "Es ist eine Eingabe erforderlich";
        }
    }
}
