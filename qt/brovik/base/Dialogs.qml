// The stack of everything that is open above the page. Tells the backend what is on top and how it was answered.
pragma Singleton

import QtQuick
import QtQuick.Controls

import brovik.base
import brovik.gui

Item {
    id: root

    // The window's; every dialog is created in it.
    property Overlay overlay

    readonly property Component inputComp: Qt.createComponent("MyInputDialog.qml")
    readonly property Component yesNoComp: Qt.createComponent("MyYesNoDialog.qml")
    readonly property Component msgComp: Qt.createComponent("MyDialog.qml")

    // Of a dialog, and at least of its text.
    readonly property int dialogMaxWidth: 450
    readonly property int dialogWidth: Math.min(dialogMaxWidth, Common.w1)
    readonly property int textHeight: 100
    readonly property int drawnDialogs: 3
    // So many dialogs take memory that is worth giving back, when all is quiet.
    readonly property int manyDialogs: 20

    // How many dialogs are fading out. Each adds and subtracts itself.
    property int fading: 0
    readonly property bool popupActive: privat.stack.count > 0
    // More dialogs are open than an operator opens: a backend opens one after the other.
    readonly property bool many: privat.stack.count > root.manyDialogs

    // Opens a message. Options: id, details, traceback, ofException (see exception()). Returns the dialog, or nothing
    // if its id is open already.
    function message(title: string, text: string, category = "info", options = {}): var {
        const traceback = options.traceback || "";
        const dialog = msgComp.createObject(overlay, {
            color: colorFromCategory(category),
            title: title,
            text: text,
            details: options.details || "",
            traceback: traceback,
            time: traceback,
            ofException: options.ofException || false
        });
        if (privat.enter("message", privat.wholeNumber(options.id), dialog)) {
            dialog.open();
            return dialog;
        }
    }

    // Shows an exception of the backend. If the backend has raised it when it was told of the dialog of another one, a
    // toast must do: a dialog for each would never end.
    function exception(error: var) {
        if (privat.echoing) {
            Gui.toastWarn(`${error.type}: ${error.text}`, privat.echoDuration);
            return;
        }
        InTurn.run(() => message(error.type, error.text, "error", {
            traceback: error.withTraceback ? error.trace : null,
            ofException: true
        }));
    }

    // Asks for a text. Options: category, text (the text to start with), password, open. Returns the dialog.
    function input(title: string, text: string, options = {}): var {
        const dialog = inputComp.createObject(overlay, {
            color: colorFromCategory(options.category || "info"),
            popupWidth: Qt.binding(() => root.dialogWidth),
            title: title,
            text: text,
            value: options.text || "",
            password: options.password || false
        });
        if (privat.enter("input", 0, dialog)) {
            privat.openUnless(dialog, options.open);
            return dialog;
        }
    }

    // Asks for a decision. Options: yes, no, id, color, category, description (told to the backend), open, component
    // (name of a custom one) and the properties of the dialog. Returns the dialog, or nothing if its id is open already.
    function question(title: string, text: string, options = {}): var {
        const properties = Object.assign({}, options);
        const take = name => {
            const value = properties[name];
            delete properties[name];
            return value;
        };
        const id = privat.wholeNumber(take("id"));
        const category = take("category") || "info";
        const description = take("description") ?? null;
        const open = take("open");
        const component = take("component");
        properties.title = title;
        properties.text = text;
        properties.yes = options.yes === null ? "" : options.yes || "OK";
        properties.no = options.no || "";
        properties.color = options.color || colorFromCategory(category);
        properties.width = Qt.binding(() => root.dialogWidth);

        const dialog = privat.createQuestion(component, properties);
        const newId = privat.enter("question", id, dialog, description);
        if (!newId) {
            return;
        }
        if (newId > 0) {
            dialog.accepted.connect(() => privat.answer(newId, true));
            dialog.rejected.connect(() => privat.answer(newId, false));
        }
        privat.openUnless(dialog, open);
        return dialog;
    }

    // The pair of dialog and description, or undefined.
    function getOpenDialogById(dialogId: real): var {
        return privat.stack.has(dialogId) ? [privat.stack.dialog(dialogId), privat.stack.description(dialogId)] : undefined;
    }

    function poweroffQuestion() {
        const dialog = question("Herunterfahren", "Soll die Maschine wirklich heruntergefahren werden?", {
            no: "Abbrechen",
            description: "poweroff"
        });
        dialog.accepted.connect(Gui.poweroff);
    }

    function rebootQuestion() {
        const dialog = question("Reboot", "Soll die Maschine wirklich neu gestartet werden?", {no: "Abbrechen"});
        dialog.accepted.connect(Gui.reboot);
    }

    function colorFromCategory(category: string, defaultColor = Common.otherBarColor): var {
        switch (category) {
        case "info":
            return Common.infoBarColor;
        case "warning":
            return Common.colorWarning;
        case "error":
            return Common.errorBarColor;
        case "success":
            return Common.successBarColor;
        default:
            return defaultColor;
        }
    }

    // Enters a popup in the stack and returns its id: the given one if that is positive, else an automatic one.
    function setupPopup(popup: var, id = 0): var {
        if (!(popup instanceof Popup)) {
            console.log(`${popup} ist keine Instanz von Popup`);
            return;
        }
        const newId = privat.stack.enterPopup(id);
        Gui.toPy(Gui.PopupOpened, true);
        privat.stack.place(newId, popup, null);
        return newId;
    }

    // `value` goes to the backend: plain data only.
    function removePopupById(id: real, accepted: bool, value: var) {
        privat.removeDialogById(id, accepted, false, value);
    }

    function acceptCurrent() {
        const dialog = privat.stack.current();
        if (!dialog) {
            console.warn("Dialogs.acceptCurrent() --> kein Dialog offen");
        } else {
            acceptDialog(dialog);
        }
    }

    // What Enter does in a dialog or popup.
    function acceptDialog(dialog: var) {
        if (dialog.customAccept) {
            dialog.customAccept();
        } else if (dialog.accept) {
            dialog.accept();
        } else {
            dialog.close();
        }
    }

    function rejectCurrent() {
        const dialog = privat.stack.current();
        if (!dialog) {
            console.warn("Dialogs.rejectCurrent() --> kein Dialog offen");
        } else {
            rejectDialog(dialog);
        }
    }

    function rejectDialog(dialog: var) {
        if (dialog.reject) {
            dialog.reject();
        } else {
            dialog.close();
        }
    }

    // Makes a component known to the option `component` of question(). Its objects have the signals accepted,
    // rejected and closed and the function open().
    function addCustomQuestionComponent(name: string, comp: var): bool {
        const prefix = "[addCustomQuestionComponent(name, comp)]";
        if (!(comp instanceof Component)) {
            console.log(`${prefix} ${comp} ist keine Instanz von Component`);
            return false;
        }
        if (privat.customQuestionComponentsMap.has(name)) {
            console.log(`${prefix} der Name ${name} ist bereits vergeben`);
            return false;
        }
        privat.customQuestionComponentsMap.set(name, comp);
        return true;
    }

    function delCustomQuestionComponent(name: string): bool {
        return privat.customQuestionComponentsMap.delete(name);
    }

    QtObject {
        id: privat

        // Milliseconds.
        readonly property int echoDuration: 5000
        readonly property int quietTime: 500

        readonly property DialogStack stack: DialogStack {
            drawn: root.drawnDialogs

            onCountChanged: privat.most = Math.max(privat.most, count)
        }
        // Untyped: QML has no name for maps.
        property var customQuestionComponentsMap: new Map()
        // The signals that arrive now were raised while the backend was told of the dialog of an exception.
        property bool echoing: false
        readonly property EventFence echoBegin: EventFence {
            onPassed: privat.echoing = true
        }
        readonly property EventFence echoEnd: EventFence {
            onPassed: privat.echoing = false
        }
        // The most dialogs that were open at a time since the memory of some was given back.
        property int most: 0
        readonly property MemoryReturn memory: MemoryReturn {}
        readonly property Timer afterMany: Timer {
            interval: privat.quietTime

            onTriggered: {
                if (privat.most > root.manyDialogs && !root.popupActive) {
                    privat.most = 0;
                    privat.memory.giveBack();
                }
            }
        }

        // 0 for what is no number.
        function wholeNumber(id: var): real {
            return Math.trunc(Number(id)) || 0;
        }

        // Enters the dialog and returns its id, 0 if the id is open already. The backend is told first.
        function setupDialog(id: real, dialog: var, description = null): real {
            const newId = stack.enter(id);
            if (!newId) {
                console.log("Dialog ist bereits offen: " + id);
                return 0;
            }
            tell(dialog, {current: [newId, description]});
            stack.place(newId, dialog, description);
            return newId;
        }

        // Enters a new dialog that leaves the stack when it has closed; a refused one goes away.
        function enter(caller: string, id: real, dialog: var, description: var): real {
            const newId = setupDialog(id, dialog, description);
            if (!newId) {
                dialog.destroy();
                console.log(`${caller}: !newId`);
                return 0;
            }
            let accepted = false;
            dialog.accepted?.connect(() => accepted = true);
            dialog.closed.connect(() => removeDialogById(newId, accepted, true));
            dialog.visibleChanged?.connect(stack.countAbove);
            dialog.closingChanged?.connect(stack.countAbove);
            return newId;
        }

        // Reports to the backend, and marks in the event queue what it raises meanwhile if this is about an exception.
        function tell(dialog: var, data: var) {
            const ofException = dialog?.ofException === true;
            if (ofException) {
                echoBegin.enqueue();
            }
            Gui.toPy(Gui.DialogData, data);
            if (ofException) {
                echoEnd.enqueue();
            }
        }

        function openUnless(dialog: var, open: var) {
            if (open ?? true) {
                dialog.open();
            }
        }

        function createQuestion(name: var, properties: var): var {
            const custom = customQuestionComponentsMap.get(name)?.createObject(root.overlay, properties);
            if (custom) {
                return custom;
            }
            if (name) {
                properties.text = `<b><span style="color:red">Für das Bilden dieses Dialogs wurde die Komponente '${name}' angefragt, welche jedoch nicht zur Verfügung steht. Dabei handelt es sich um einen Programmfehler. Bitte melden Sie diesen der Firma Brovik (Foto). Es wird ein normaler Dialog gebildet.</span></b><br>${properties.text}`;
            }
            return root.yesNoComp.createObject(root.overlay, properties);
        }

        function answer(id: real, accepted: bool) {
            Gui.toPy(Gui.DialogData, {[id]: {a: accepted}});
        }

        function removeDialogById(id: real, accepted: bool, destroy: bool, value: var) {
            if (!root.popupActive) {
                return;
            }
            const dialog = stack.dialog(id);
            if (destroy) {
                dialog?.destroy();
            }
            stack.leave(id);
            afterMany.restart();

            const key = String(id);
            const reply = {[key]: {a: accepted}, current: currentForBackend()};
            if (value !== undefined) {
                reply[key].v = value;
            }
            tell(dialog, reply);
        }

        function currentForBackend(): var {
            return root.popupActive ? [stack.top(), stack.description(stack.top())] : null;
        }
    }
}
