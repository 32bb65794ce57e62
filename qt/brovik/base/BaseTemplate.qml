// The window that every screen stands in: theme, and the dialogs that the backend asks for.
import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material

import brovik.base
import brovik.gui

ApplicationWindow {
    id: root

    visible: true
    title: Gui.title
    // The style would show the texts of buttons in capitals.
    font.capitalization: Font.MixedCase

    function setTheme(newTheme: int) {
        Material.theme = newTheme;
    }

    function setAccent(accent: var) {
        Material.accent = accent;
    }

    onWidthChanged: Common.calcWindowSize(width)

    Component.onCompleted: {
        setTheme(Gui.darkThemeEnabled ? Material.Dark : Material.Light);
        Dialogs.overlay = Overlay.overlay;
        Common.w1 = Qt.binding(() => root.width);
        Common.h = Qt.binding(() => root.height);
        Common.theme = Qt.binding(() => root.Material.theme);
        setAccent(Common.accentColor);
        if (Gui.fullscreen) {
            showFullScreen();
        }
        Gui.toPy(Gui.Ready, null);
    }

    Connections {
        target: Gui

        function onCloseCurrentDialog(accept: bool) {
            InTurn.run(() => accept ? Dialogs.acceptCurrent() : Dialogs.rejectCurrent());
        }

        function onCloseDialog(id_: int, accept: bool) {
            InTurn.run(() => {
                const [dialog] = Dialogs.getOpenDialogById(id_) ?? [];
                if (accept) {
                    dialog?.accept();
                } else {
                    dialog?.reject();
                }
            });
        }

        function onFullscreenChanged(state: bool) {
            if (state) {
                root.showFullScreen();
            } else {
                root.showNormal();
            }
        }

        function onMessage(title: string, text: string, category: string, id: int) {
            InTurn.run(() => Dialogs.message(title, text, category, {id: id}));
        }

        function onQuestion(title: string, text: string, options: var) {
            InTurn.run(() => Dialogs.question(title, text, options));
        }

        function onException(e: var) {
            console.log("onException: " + JSON.stringify(e));
            Dialogs.exception(e);
        }
    }
}
