// A test of a screen. Each of its tests fails on any warning, and begins with the shared objects as they are at the
// start of the program and with nothing sent.
import QtQuick
import QtTest

import kubelor.test
import "items.js" as Items

TestCase {
    id: root

    readonly property SentSpy sent: SentSpy {
        onSent: (family, action, value) => root.answer(action, value, family)
    }
    // What the backend makes of a message; nothing at the beginning of each test.
    property var answer: () => {}
    // The warnings that a test may not bring forth.
    property var fatalWarnings: /.?/

    when: windowShown

    // Makes ready for a test; what is sent meanwhile is forgotten.
    function prepare() {}

    function init() {
        failOnWarning(fatalWarnings);
        answer = () => {};
        Backend.reset();
        prepare();
        sent.clear();
    }

    // Runs Python on a thread of the backend, and lets arrive what that leads to.
    function set(code) {
        Backend.runOnThread(code);
        Backend.settle();
    }

    // Until all of a window is as its next frame shows it. It is drawn for that, since there may be no need for one.
    function draw(item) {
        item.Window.window.update();
        verify(waitForRendering(item), `No frame ${caller()}`);
    }

    // All that was sent by now and not compared yet, as messages of singleton, enum and value.
    function compareSent(expected) {
        compare(readable(sent.take()), readable(expected), caller());
    }

    // The same of one singleton alone, with pairs of enum and value.
    function compareSentThrough(family, expected) {
        compare(sent.take(family).map(([, action, value]) => [action, value]), expected, caller());
    }

    // What has been sent as soon as there are as many messages as expected.
    function tryCompareSent(expected) {
        tryVerify(() => sent.count >= expected.length);
        compareSent(expected);
    }

    // The line of a test, where a failure would show that of this file.
    function caller() {
        return new Error().stack.split("\n").find(frame => !frame.includes("ScreenTestCase.qml"));
    }

    // What a failure shows of the singletons.
    function readable(messages) {
        return messages.map(([family, action, value]) => [String(family).replace(/\(.*/, ""), action, value]);
    }

    function verifyBelowEachOther(items) {
        for (let i = 1; i < items.length; ++i) {
            verify(Items.topOf(items[i]) >= Items.bottomOf(items[i - 1]), `${items[i - 1]}, ${items[i]}`);
        }
    }

    function verifyCentred(item, surface) {
        // To the pixel that layouts round.
        fuzzyCompare(item.mapToItem(surface, item.width / 2, 0).x, surface.width / 2, 1);
    }
}
