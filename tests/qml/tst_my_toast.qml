// The toast, and the signals of Gui that raise it.
import QtQuick
import QtQuick.Controls

import brovik.base
import brovik.gui
import kubelor.test

Item {
    BaseTemplate {
        width: 800
        height: 1200

        MyToast {
            id: toast
            height: 80
        }

        DialogTestCase {
            name: "MyToast"

            readonly property url saveIcon: "qrc:/brovik/base/img/save.svg"
            readonly property url infoIcon: "qrc:/brovik/base/img/info-circle.svg"
            readonly property color transparentBlack: Qt.rgba(0, 0, 0, 0)

            function cleanup() {
                toast.close();
                tryCompare(toast, "visible", false);
                toast.imgUrl = saveIcon;
            }

            function background() {
                return toast.contentItem.children[0];
            }

            function icon() {
                return toast.contentItem.children[1].children[0];
            }

            function shows(text) {
                return toast.visible && findText(toast.contentItem, text);
            }

            function test_1_initial_state() {
                verify(!toast.visible);
                compare(toast.imgUrl, saveIcon);
                compare(toast.padding, 0);
            }

            function test_layout() {
                toast.notify("Text");
                compare(icon().size, Qt.size(80 * 2 / 3, 80 * 2 / 3));
                compare(icon().x, 10);
                const label = shows("Text");
                compare(label.textFormat, Text.PlainText);
                compare(label.x + label.width + 10, toast.width);
            }

            // Toasts are gone soon, so that the whole text goes to the log.
            function test_huge_text_is_cut_and_logged_once() {
                const text = "x".repeat(Texts.shortLimit + 1);
                Backend.startRecordingPrints();
                toast.notify(text);
                verify(shows("x".repeat(Texts.shortLimit) + "…"));
                toast.width = 300;
                compare(Backend.takePrints(), [text]);
            }

            function test_notify() {
                toast.notify("Text", infoIcon, {color: "pink"});
                verify(shows("Text"));
                compare(toast.imgUrl, infoIcon);
                compare(icon().source, infoIcon);
                compare(background().color, "#ffc0cb");
            }

            function test_notify_without_options_keeps_the_icon() {
                toast.imgUrl = infoIcon;
                toast.notify("Text");
                compare(toast.imgUrl, infoIcon);
                compare(background().color, transparentBlack);
            }

            function test_it_closes_after_its_duration() {
                const start = Date.now();
                toast.notify("Text", infoIcon, {duration: 300});
                tryCompare(toast, "visible", false);
                verify(Date.now() - start >= 300);
            }

            function test_standard_duration_is_a_second() {
                const start = Date.now();
                toast.notify("Text");
                tryCompare(toast, "visible", false);
                verify(Date.now() - start >= 1000);
            }

            function test_a_second_toast_restarts_the_time() {
                const start = Date.now();
                toast.notify("eins", infoIcon, {duration: 1});
                toast.notify("zwei", infoIcon, {duration: 600});
                verify(shows("zwei"));
                tryCompare(toast, "visible", false);
                verify(Date.now() - start >= 600);
            }

            function test_warn() {
                toast.warn("Achtung");
                verify(shows("Achtung"));
                compare(toast.imgUrl, "qrc:/brovik/base/img/exclamation-triangle.svg");
                compare(background().color, Common.colorWarning);
            }

            function test_from_the_backend_data() {
                return [
                    {tag: "green", code: "gui.Gui.toast_notify('Text', gui.IconEnum.Info, gui.ColorEnum.Green, 5000)", icon: infoIcon, color: "#4caf50"},
                    {tag: "transparent", code: "gui.Gui.toast_notify('Text', gui.IconEnum.Smiley)", icon: "qrc:/brovik/base/img/emoji-smile.svg", color: transparentBlack},
                    {tag: "unknown icon keeps the last", code: "gui.Gui.toast_notify('Text', gui.IconEnum(7))", icon: saveIcon, color: transparentBlack},
                    {tag: "warning", code: "gui.Gui.toast_warn('Text', 5000)", icon: "qrc:/brovik/base/img/exclamation-triangle.svg", color: Common.colorWarning}
                ];
            }

            function test_from_the_backend(data) {
                Backend.runOnThread(data.code);
                tryVerify(() => shows("Text"));
                compare(String(toast.imgUrl), String(data.icon));
                compare(background().color, data.color);
            }

            function test_unknown_color() {
                Backend.startRecordingPrints();
                Backend.runOnThread("gui.Gui.toast_notify('Text', gui.IconEnum.Info, gui.ColorEnum(9), 5000)");
                tryVerify(() => shows("Text"));
                compare(Backend.takePrints(), ["Unbekannten Wert für colorEnum erhalten: 9 (Fallback: transparent)"]);
                compare(background().color, transparentBlack);
            }

            function test_long_text_stays_in_the_window() {
                toast.notify("Wort ".repeat(1000));
                verify(toast.width <= 800);
            }
        }
    }
}
