import QtQuick
import QtQuick.Controls

import brovik.base
import brovik.gui
import brovik.shell
import kubelor.test
import "items.js" as Items

// The page of a changelog.
Item {
    BaseTemplate {
        id: window

        width: 710
        height: 600
        font.pointSize: Gui.fSizeS

        Component {
            id: flickComponent

            UpdatesChangelogFlick {
                anchors.fill: parent
            }
        }

        ScreenTestCase {
            name: "UpdatesChangelog"

            property UpdatesChangelogFlick page
            property ListView list

            function prepare() {
                Backend.run("shell.Shell.color_urgency_low, shell.Shell.color_urgency_other = '#00ff00', '#0000ff'");
                window.width = 710;
                page = createTemporaryObject(flickComponent, window.contentItem);
                list = findChild(page, "changelog");
                draw(page);
            }

            // Publishes entries, each an object with the fields of one, from a thread of the backend.
            function publish(entries) {
                Backend.runOnThread(`
vector = shell.ChangelogEntryVector()
for fields in ${JSON.stringify(entries)}:
    entry = shell.ChangelogEntry(shell.Shell)
    for name, value in fields.items():
        setattr(entry, name, value)
    vector.append(entry)
shell.Shell.changelogs = vector`);
                tryCompare(list, "count", entries.length);
                tryVerify(() => !entries.length || heading(0)?.text.includes(Texts.escaped(entries[0].name ?? "").slice(0, Texts.longLimit)));
                // Polished items have their places.
                tryVerify(() => !entries.length || heading(0).x > 0);
            }

            function entry(version, changes = []) {
                return {name: "kubelor", distribution: "bookworm", version: version, date: "12.05.2025", urgency_str: "low", changes: changes};
            }

            function heading(index) {
                return findChild(list.itemAtIndex(index), "heading");
            }

            function texts(index) {
                return Items.below(list.itemAtIndex(index), item => item instanceof Label).map(label => label.text);
            }

            function test_form() {
                compare([page.backBtn.text, page.backBtn.icon.source], ["Zurück zur Tabelle", "qrc:/brovik/shell/img/arrow-left.svg"]);
                compare([page.backBtn.y, page.backBtn.width], [0, page.width]);
                compare([list.width, list.y + list.height], [page.width, page.height]);
                verify(list.clip);
                compare(list.orientation, ListView.Vertical);
            }

            function test_entry() {
                publish([entry("1.2", ["eins", "zwei"])]);
                compare(texts(0), ["<b>kubelor</b> / bookworm - 1.2 - 12.05.2025 - Dringlichkeit: <font color=\"#00ff00\">low</font>", "1: ", "eins", "2: ", "zwei"]);
                compare([heading(0).textFormat, heading(0).x, heading(0).y], [Text.StyledText, 10, 10]);
                tryVerify(() => list.itemAtIndex(0).height === list.itemAtIndex(0).children[0].implicitHeight + 10);
                compare(list.itemAtIndex(0).width, page.width);
            }

            function test_positions_have_colours() {
                publish([entry("3"), entry("2"), entry("1")]);
                compare([0, 1, 2].map(index => list.itemAtIndex(index).color), [Qt.color("transparent"), Common.bg2, Qt.color("transparent")]);
            }

            function test_no_changes() {
                publish([entry("1")]);
                compare(texts(0).length, 1);
            }

            function test_empty_entry() {
                publish([{}]);
                compare(texts(0), ["<b></b> /  -  -  - Dringlichkeit: <font color=\"#0000ff\"></font>"]);
            }

            // It would be black on the dark theme.
            function test_invalid_colour_is_none() {
                publish([Object.assign(entry("1"), {urgency_str: "medium"})]);
                verify(heading(0).text.endsWith("Dringlichkeit: medium"));
            }

            function test_markup_is_text() {
                const markup = "<img src=\"file:///x\"> & <b>x</b>";
                const escaped = "&lt;img src=&quot;file:///x&quot;&gt; &amp; &lt;b&gt;x&lt;/b&gt;";
                publish([{name: markup, distribution: markup, version: markup, date: markup, urgency_str: markup, changes: [markup]}]);
                compare(heading(0).text, `<b>${escaped}</b> / ${escaped} - ${escaped} - ${escaped} - Dringlichkeit: <font color="#0000ff">${escaped}</font>`);
                const change = Items.below(list.itemAtIndex(0), item => item instanceof Label && item.text === markup);
                compare(change.map(label => label.textFormat), [Text.PlainText]);
            }

            // A parser of markup may take one for the end of all.
            function test_control_characters_data() {
                return ["\u0000", "\u0001", "\u001b[31m", "\u202e", "\ufdd0"].map(text => ({tag: escape(text), text: text}));
            }

            function test_control_characters(data) {
                const shownWidth = name => {
                    // The same list but for the name would not be taken.
                    publish([]);
                    publish([Object.assign(entry("1.2"), {name: name})]);
                    return heading(0).contentWidth;
                };
                const width = shownWidth("ab");
                // Not to the pixel: a change of direction moves letters closer.
                verify(shownWidth(`a${data.text}b`) > width - 1);
            }

            function test_huge_texts_are_cut() {
                const cut = "lang ".repeat(2000) + "…";
                const huge = "lang ".repeat(10000);
                publish([{name: huge, distribution: huge, version: huge, date: huge, changes: [huge]}]);
                compare(texts(0), [`<b>${cut}</b> / ${cut} - ${cut} - ${cut} - Dringlichkeit: <font color="#0000ff"></font>`, "1: ", cut]);
            }

            function test_long_texts_wrap() {
                publish([entry("1", ["Wort ".repeat(100)])]);
                const wrapped = Items.below(list.itemAtIndex(0), item => item instanceof Label && item.lineCount > 1);
                compare(wrapped.length, 1);
                verify(wrapped[0].mapToItem(page, 0, 0).x + wrapped[0].width <= page.width);
                // The number stands at the top of its text.
                const number = Items.below(list.itemAtIndex(0), item => item instanceof Label && item.text === "1: ")[0];
                compare(number.y, wrapped[0].y);
                window.width = 300;
                tryVerify(() => heading(0).lineCount > 1);
            }

            function test_scrolls_only_if_need_be() {
                publish([entry("1")]);
                tryVerify(() => !list.interactive);
                publish(Array.from({length: 50}, (_, i) => entry(String(i), ["eine"])));
                tryVerify(() => list.interactive);
            }

            function test_shows_the_last_list_until_the_next_one() {
                publish([entry("1"), entry("2")]);
                Shell.toPy(Shell.Changelog, "other");
                compare(list.count, 2);
                verify(heading(1).text.includes("- 2 -"));
                publish([Object.assign(entry("9"), {name: "controller"})]);
                verify(heading(0).text.includes("- 9 -"));
                publish([]);
                compare(list.count, 0);
            }

            function test_new_list_is_shown_from_its_start() {
                const versions = name => Array.from({length: 100}, (_, i) => Object.assign(entry(`${name}.${i}`), {name: name}));
                publish(versions("eins"));
                list.positionViewAtEnd();
                publish(versions("zwei").concat([{}]));
                tryVerify(() => list.contentY === list.originY);
            }

            // Only what is in sight is made.
            function test_long_changelog() {
                publish(Array.from({length: 300}, (_, i) => entry(String(i), ["eins", "zwei", "drei"])));
                const made = () => Items.below(list.contentItem, item => item.objectName === "heading").length;
                verify(made() < 50);
                for (let i = 0; i < 300; i += 5) {
                    list.positionViewAtIndex(i, ListView.Beginning);
                    verify(made() < 100);
                }
                tryVerify(() => heading(299)?.text.includes("- 299 -"));
            }

            // Publishes the list anew and looks at all of it.
            function reload(round) {
                // A list of the same length would count as the same.
                publish(Array.from({length: 300 + round % 2}, (_, i) => entry(`${round}.${i}`, ["eins", "zwei"])));
                tryVerify(() => heading(0)?.text.includes(`- ${round}.0 -`));
                for (let i = 0; i < 300; i += 10) {
                    list.positionViewAtIndex(i, ListView.Beginning);
                }
                list.positionViewAtBeginning();
            }

            // Once what was let go of is gone.
            function countObjects() {
                gc();
                Backend.settle();
                draw(page);
                return Objects.count();
            }

            function test_reloads_leave_nothing_behind() {
                for (let round = 0; round < 5; ++round) {
                    reload(round);
                }
                const before = countObjects();
                for (let round = 5; round < 55; ++round) {
                    reload(round);
                }
                // What a list had rests for a while before it goes.
                tryVerify(() => countObjects() - before < 50);
            }
        }
    }
}
