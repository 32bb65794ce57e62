// A saved chart in the list, and what can be done with it.
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

import brovik.base
import brovik.chart
import brovik.components

ColumnLayout {
    id: root

    required property int index
    // Null once the list has become shorter.
    readonly property ChartMetaData metaData: root.index < Chart.metaDataList.length ? Chart.metaDataList[root.index] : null
    readonly property string name: root.metaData?.name ?? ""

    width: ListView.view?.width ?? 0

    BrovikBox {
        Layout.bottomMargin: Common.spacing

        Label {
            objectName: "heading"

            Layout.fillWidth: true
            padding: privat.headingPadding
            color: ChartColors.name
            text: Texts.plain(`${root.name} - ${root.metaData?.status ?? ""}`)
            textFormat: Text.PlainText
            wrapMode: Text.Wrap

            background: Rectangle {
                color: privat.resultColor
            }
        }

        Label {
            objectName: "dateTime"

            Layout.fillWidth: true
            text: Texts.plain(`Datum/Zeit: ${root.metaData?.dateTimeStr ?? ""}`)
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
        }

        Label {
            objectName: "duration"

            Layout.fillWidth: true
            text: "Prozessdauer: " + privat.durationText(root.metaData?.duration ?? 0)
            wrapMode: Text.Wrap
        }

        RowLayout {
            Button {
                text: "laden"
                onClicked: Chart.toPy(Chart.ChartLoad, root.name)
            }

            Button {
                text: "löschen"
                onClicked: privat.askToDelete(root.name)
            }

            Button {
                text: "umbenennen"
                onClicked: privat.askToRename(root.name)
            }
        }
    }

    // The dialogs outlive this entry if the list changes meanwhile, so they keep the name themselves.
    QtObject {
        id: privat

        readonly property int headingPadding: 3
        readonly property color resultColor: {
            switch (root.metaData?.result) {
            case "success":
                return ChartColors.success;
            case "warning":
                return ChartColors.warning;
            case "error":
                return ChartColors.error;
            default:
                return ChartColors.unknown;
            }
        }

        function durationText(duration: int): string {
            const mins = Math.trunc(duration / 60);
            const secs = duration % 60;
            const parts = [];
            if (mins) {
                parts.push(`${mins} Minuten`);
            }
            if (secs) {
                parts.push(`${secs} Sekunden`);
            }
            return parts.join(" und ") || "weniger als eine Sekunde";
        }

        function askToDelete(name: string) {
            const dialog = Dialogs.question("Chart löschen", `Soll das Chart '${Texts.escaped(name)}' wirklich gelöscht werden?`, {
                yes: "Ja",
                no: "Abbrechen"
            });
            dialog.accepted.connect(() => Chart.toPy(Chart.ChartDelete, name));
        }

        function askToRename(name: string) {
            const dialog = Dialogs.input(`Chart ${name} umbenennen`, "Bitte einen neuen Namen für das Chart eingeben:", {text: name});
            const check = () => dialog.errorText = ChartsStuff.getNameErrorTextCaseSensitive(dialog.value);
            check();
            dialog.input.textEdited.connect(check);
            dialog.accepted.connect(txt => Chart.toPy(Chart.ChartRename, [name, txt]));
        }
    }
}
