// More dialogs than an operator can see, and errors that bring forth errors.
import QtQuick
import QtQuick.Controls
import QtTest

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

        Component {
            id: popupComponent
            BasePopup {}
        }

        SignalSpy {
            id: toasts

            target: Gui
            signalName: "toastWarn"
        }

        DialogTestCase {
            name: "DialogFlood"

            function prepare() {
                toasts.clear();
            }

            function cleanup() {
                answer = () => {};
                closeAll();
            }

            function raising(text) {
                return `import brovik\ntry:\n    raise ValueError('${text}')\nexcept ValueError:\n    brovik.forward_exception()`;
            }

            function message(id) {
                return Dialogs.message(String(id), "x", "info", {id: id});
            }

            function drawn(dialogs) {
                return dialogs.map(dialog => dialog.contentItem.visible && dialog.background.visible);
            }

            function test_only_the_uppermost_are_drawn() {
                const dialogs = [1, 2, 3, 4, 5].map(message);
                compare(drawn(dialogs), [false, false, true, true, true]);
                verify(dialogs.every(dialog => dialog.visible));
                dialogs[4].close();
                tryVerify(() => sent.count === 6);
                compare(drawn(dialogs.slice(0, 4)), [false, true, true, true]);
                compare(dialogs[1].height, dialogs[2].height);
            }

            // What stands in a dialog is most of its time and memory.
            function test_of_many_only_the_uppermost_are_filled() {
                const few = Dialogs.manyDialogs + 1;
                const ids = Array.from({length: 2 * few}, (_, i) => i + 1);
                const dialogs = ids.map(message);
                const filled = () => dialogs.map(dialog => dialog?.contentItem.item !== null);
                const expected = (from, to) => ids.map((_, i) => i < few || from <= i && i < to);
                compare(filled(), expected(0, 0));
                const top = dialogs.length;
                tryVerify(() => filled().join() === expected(top - Dialogs.drawnDialogs, top).join());

                Dialogs.acceptCurrent();
                tryVerify(() => dialogs[top - 1 - Dialogs.drawnDialogs].contentItem.item);
                verify(findText(dialogs[top - 2].contentItem, String(ids[top - 2])));
                compare(dialogs[top - 2].height, dialogs[0].height);
            }

            function test_few_fade_out_at_a_time() {
                const ids = Array.from({length: 20}, (_, i) => i + 1);
                const dialogs = ids.map(message);
                open(dialogs[19]);
                sent.clear();
                for (const id of ids.slice().reverse()) {
                    Gui.closeDialog(id, false);
                }
                tryVerify(() => Dialogs.fading > 0 || !Dialogs.popupActive);
                verify(dialogs.filter(dialog => dialog?.visible).length <= Dialogs.drawnDialogs);
                tryVerify(() => !Dialogs.popupActive);
                compare(sent.count, ids.length);
                compare(Dialogs.fading, 0);
                const later = open(message(21));
                later.close();
                verify(later.visible, "fades out again");
            }

            function test_only_the_uppermost_dims() {
                const dialogs = [1, 2, 3].map(message);
                compare(dialogs.map(dialog => dialog.dim), [false, false, true]);
                open(dialogs[2]).close();
                compare(dialogs.slice(0, 2).map(dialog => dialog.dim), [false, true]);
                tryVerify(() => sent.count === 4);
                compare(dialogs.slice(0, 2).map(dialog => dialog.dim), [false, true]);
            }

            function test_covered_dialog_answers_as_any_other() {
                Dialogs.question("unten", "x", {id: 1});
                [2, 3, 4].forEach(message);
                verify(Dialogs.getOpenDialogById(1)[0].covered);
                sent.clear();
                Gui.closeDialog(1, true);
                tryCompareSent([
                    [Gui, Gui.DialogData, {1: {a: true}}],
                    [Gui, Gui.DialogData, {1: {a: true}, current: [4, null]}]
                ]);
            }

            function test_uncovered_dialog_takes_keys_and_clicks() {
                const lowest = message(1);
                [2, 3, 4].forEach(message);
                open(message(5));
                for (let id = 5; id > 1; --id) {
                    tryVerify(() => Dialogs.getOpenDialogById(id)[0].contentItem.activeFocus);
                    keyClick(Qt.Key_Return);
                    tryVerify(() => !Dialogs.getOpenDialogById(id));
                }
                verify(!lowest.covered);
                clickButton(lowest, "OK");
                tryVerify(() => !Dialogs.popupActive);
            }

            function test_dialog_that_is_not_open_covers_none() {
                const lowest = message(1);
                const waiting = [2, 3, 4].map(id => Dialogs.question("t", "x", {id: id, open: false}));
                verify(!lowest.covered);
                waiting.forEach(dialog => dialog.open());
                verify(lowest.covered);
                waiting[0].accept();
                tryVerify(() => !lowest.covered);
            }

            function test_popup_counts() {
                const lowest = message(1);
                message(2);
                message(3);
                const popup = createTemporaryObject(popupComponent, parent);
                popup.open();
                open(popup);
                verify(lowest.covered);
                popup.reject();
                tryVerify(() => !lowest.covered);
            }

            function test_input_is_covered_whole() {
                const input = open(Dialogs.input("t", "x"));
                compare(input.opacity, 0.5);
                [1, 2, 3].forEach(message);
                compare(input.opacity, 0);
                verify(input.visible);
                Gui.closeCurrentDialog(true);
                tryCompare(input, "opacity", 0.5);
            }

            function test_error_of_reporting_an_error_is_a_toast() {
                answer = () => Backend.runOnThread(raising("Meldung misslungen"));
                Backend.runOnThread(raising("Ursache"));
                tryCompare(toasts, "count", 1);
                compare(toasts.signalArguments[0][0], "ValueError: Meldung misslungen");
                verify(toast.opened || toast.visible);
                compare(sent.count, 1);

                Dialogs.acceptCurrent();
                tryCompare(toasts, "count", 2);
                compare(sent.count, 2);
                verify(!Dialogs.popupActive);
            }

            function test_error_of_reporting_another_dialog_is_a_dialog() {
                answer = () => Backend.runOnThread(raising("Meldung misslungen"));
                message(5);
                tryVerify(() => sent.count === 2);
                compare(Dialogs.getOpenDialogById(sent.take()[1][2].current[0])[0].title, "ValueError");
                tryCompare(toasts, "count", 1);
            }

            function test_error_of_an_action_is_a_dialog_after_an_error() {
                answer = () => Backend.runOnThread(raising("immer"));
                Backend.runOnThread(raising("eins"));
                tryCompare(toasts, "count", 1);
                Backend.runOnThread(raising("zwei"));
                tryCompare(toasts, "count", 2);
                compare(sent.count, 2);
            }

            function test_errors_that_waited_already_are_dialogs() {
                answer = () => Backend.runOnThread(raising("Echo"));
                const [head, ...lines] = raising("Ursache").split("\n");
                Backend.runOnThread([head, "for i in range(5):", ...lines.map(line => "    " + line)].join("\n"));
                tryCompare(toasts, "count", 5);
                compare(sent.count, 5);
            }
        }
    }
}
