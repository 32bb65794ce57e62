"""The logbook: what is written comes back, and what is changed afterwards is found."""

import json
import sqlite3
from dataclasses import replace

from logbook import chain, curves as packing
from logbook.document import DocumentError, canonical
from logbook.reader import open_logbook
from logbook.records import JournalEntry, RunRecord

from .logbook_rig import LogbookCase, clock, curves, run


class DocumentTest(LogbookCase):
    """Records as documents."""

    def test_comes_back(self) -> None:
        """All of it; and the same bytes from what came back."""
        record = run()
        again = RunRecord.from_document(record.document())
        self.assertEqual(again.steps, record.steps)
        self.assertEqual(again.parameters, record.parameters)
        self.assertEqual(again.document(), record.document())

    def test_is_canonical(self) -> None:
        """Sorted, without blanks, with its format, umlauts as they are."""
        text = run().document()
        plain = json.loads(text)
        self.assertEqual(plain["format"], 1)
        self.assertEqual(text, json.dumps(plain, ensure_ascii=False, sort_keys=True, separators=(",", ":")))
        self.assertIn("Säure", text)

    def test_odd_content(self) -> None:
        """What JSON or UTF-8 do not have loses nothing else."""
        record = run(reason="halb \ud83d \0 🍺", secs=float("inf"))
        again = RunRecord.from_document(record.document())
        self.assertEqual(again.reason, "halb ? \0 🍺")
        self.assertNotEqual(again.secs, again.secs)

    def test_types_of_values_stay(self) -> None:
        """A parameter that is a switch, a whole number, another one or a name."""
        kinds = [type(p.value) for p in RunRecord.from_document(run().document()).parameters]
        self.assertEqual(kinds, [int, int, str])
        record = replace(run().parameters[0], value=True, default=0.5)
        (again,) = RunRecord.from_document(run(parameters=(record,)).document()).parameters
        self.assertEqual((again.value, again.default), (True, 0.5))
        self.assertEqual((type(again.value), type(again.default)), (bool, float))

    def test_later_fields(self) -> None:
        """One that is not known is ignored, one that is missing has its default."""
        plain = json.loads(run().document())
        del plain["counters"]
        plain["later"] = {"a": 1}
        self.assertEqual(RunRecord.from_document(json.dumps(plain)).counters, ())

    def test_refuses(self) -> None:
        """What cannot be a record is told as such, and nothing else happens."""
        good = json.loads(run().document())
        wrong = [
            "",
            "[]",
            "[" * 100_000,
            "{}",
            json.dumps(good | {"format": 2}),
            json.dumps(good | {"steps": 3}),
            json.dumps(good | {"steps": [3]}),
            json.dumps(good | {"number": True}),
            json.dumps(good | {"reason": None}),
            json.dumps({key: value for key, value in good.items() if key != "reason"}),
        ]
        for text in wrong:
            with self.subTest(text[:40]), self.assertRaises(DocumentError):
                RunRecord.from_document(text)

    def test_every_field_has_its_type(self) -> None:
        """A number where a text is needed is refused at whichever depth."""
        step = json.loads(canonical(run().steps[0]))
        for key, value in step.items():
            with self.subTest(key), self.assertRaises(DocumentError):
                other: object = [] if not isinstance(value, list) else {}
                text = json.dumps(json.loads(run().document()) | {"steps": [step | {key: other}]})
                RunRecord.from_document(text)


class CurveTest(LogbookCase):
    """Packed points."""

    def test_comes_back(self) -> None:
        """All points, the odd ones too."""
        points = [(0.0, float("inf")), (-1.0, 5e-324), (1.5, 2.5)]
        self.assertEqual(
            packing.unpacked(packing.decompressed(packing.compressed(packing.packed(points)))), points
        )

    def test_refuses(self) -> None:
        """Bytes that are no points."""
        for data in (b"x", b"12345678"):
            with self.assertRaises(ValueError):
                packing.unpacked(data)
        whole = packing.compressed(bytes(1600))
        for data in (b"", b"no zlib", whole[:-3]):
            with self.assertRaises(ValueError):
                packing.decompressed(data)

    def test_digest(self) -> None:
        """It depends on each name and each byte, and not on the order."""
        lines: dict[str, bytes] = {"P": b"12", "Lw": b"3"}
        others: tuple[dict[str, bytes], ...] = (
            {"P": b"13", "Lw": b"3"},
            {"P": b"12"},
            {"P": b"1", "Lw": b"23"},
            {"P1": b"2", "Lw": b"3"},
        )
        self.assertEqual(packing.digest(lines), packing.digest(dict(reversed(lines.items()))))
        self.assertEqual(len({packing.digest(each) for each in (lines, dict[str, bytes](), *others)}), 6)


class WritingTest(LogbookCase):
    """What is written."""

    def test_a_run(self) -> None:
        """Record, curves, journal and counters in one go, and the draft is gone."""
        self.writer.save_draft(run(), {})
        entries = (JournalEntry("run", "ended", "Automatikbetrieb", "erfolgreich", '{"run":1}', clock(9)),)
        first = self.writer.append_run(run(), curves(), entries, {"Fässer": (1.0, "")})
        second = self.writer.append_run(
            run(result="error"), {}, (), {"Fässer": (2.0, ""), "Pumpe": (0.5, "h")}
        )
        self.assertEqual((first.number, second.number, self.writer.next_number()), (1, 2, 3))
        self.assertIsNone(self.writer.draft())
        with open_logbook(self.path) as book:
            self.assertEqual(
                [(each.number, each.result) for each in book.runs()], [(2, "error"), (1, "success")]
            )
            self.assertEqual(book.run(1).record.document(), first.document())
            self.assertEqual(book.curves(1).lines, {name: list(line) for name, line in curves().items()})
            self.assertEqual(book.curves(2).lines, {})
            self.assertEqual(list(book.journal()), [replace(entries[0], number=1)])
            self.assertEqual(
                [(c.name, c.value, c.unit) for c in book.counters()],
                [("Fässer", 3.0, ""), ("Pumpe", 0.5, "h")],
            )
            self.assertIsNone(book.verify())

    def test_all_or_nothing(self) -> None:
        """A run that cannot be written as a whole is not written at all, and its draft stays."""
        self.writer.save_draft(run(), {})
        entry = JournalEntry("run", "ended", "x")
        self.connection.execute(
            "CREATE TRIGGER full BEFORE INSERT ON journal BEGIN SELECT RAISE(ABORT, 'full'); END"
        )
        with self.assertRaises(sqlite3.Error):
            self.writer.append_run(run(), curves(), (entry,), {"Fässer": (1.0, "")})
        self.connection.execute("DROP TRIGGER full")
        self.assertFalse(self.connection.in_transaction)
        self.assertEqual(self.writer.next_number(), 1)
        self.assertIsNotNone(self.writer.draft())
        for table in ("run_record", "run_curve", "journal", "counter"):
            self.assertEqual(self.connection.execute(f"SELECT count(*) FROM {table}").fetchone(), (0,))

    def test_inside_a_transaction(self) -> None:
        """It is a part of one that is open."""
        self.connection.execute("BEGIN")
        self.writer.append_run(run(), {})
        self.writer.count("a", 1.0)
        self.connection.rollback()
        self.assertEqual(self.writer.next_number(), 1)

    def test_draft(self) -> None:
        """The last one, with its curves."""
        self.writer.save_draft(run(), curves())
        self.writer.save_draft(run(steps=2), {"P": [(0.0, 1.0)]})
        draft = self.writer.draft()
        assert draft is not None
        self.assertEqual((draft[0].document(), draft[1]), (run(steps=2).document(), {"P": [(0.0, 1.0)]}))
        self.writer.discard_draft()
        self.assertIsNone(self.writer.draft())

    def test_counters(self) -> None:
        """They can be set back."""
        self.writer.count("Fässer", 5.0)
        self.writer.set_counters({"Fässer": (0.0, "")})
        self.writer.count("Fässer", 2.0)
        with open_logbook(self.path) as book:
            self.assertEqual([c.value for c in book.counters()], [2.0])

    def test_prepare_again(self) -> None:
        """A second start leaves all as it is, and brings back triggers that somebody took away."""
        self.writer.append_run(run(), {})
        self.connection.execute("DROP TRIGGER run_record_no_update")
        self.writer.prepare()
        self.assertEqual(self.writer.next_number(), 2)
        with self.assertRaises(sqlite3.IntegrityError):
            self.connection.execute("UPDATE run_record SET reason = ''")

    def test_prepare_refuses_others(self) -> None:
        """A table of that name that is another one."""
        with sqlite3.connect(":memory:") as connection:
            connection.execute("CREATE TABLE run_record (number INTEGER PRIMARY KEY)")
            with self.assertRaises(sqlite3.Error):
                type(self.writer)(connection).prepare()
        connection.close()


class ChainTest(LogbookCase):
    """What verify finds."""

    def setUp(self) -> None:
        super().setUp()
        for number in range(1, 7):
            self.writer.append_run(run(steps=number), curves(samples=number * 10))

    def without_triggers(self, *statements: str) -> None:
        """Does what the triggers would refuse."""
        for (name,) in self.connection.execute(
            "SELECT name FROM sqlite_schema WHERE type = 'trigger'"
        ).fetchall():
            self.connection.execute(f"DROP TRIGGER {name}")
        for statement in statements:
            self.assertGreater(self.connection.execute(statement).rowcount, 0, statement)
        self.connection.commit()

    def assert_broken(self, number: int, word: str) -> None:
        """The first break is there, and its sentence has this word."""
        found = chain.verify(self.connection)
        assert found is not None
        self.assertEqual(found.number, number, found.text)
        self.assertIn(word, found.text)
        self.assertIn(f"Nr. {number}", found.text)

    def test_unharmed(self) -> None:
        """Nothing is found where nothing was done, nor in an empty logbook."""
        self.assertIsNone(chain.verify(self.connection))
        with sqlite3.connect(":memory:") as empty:
            type(self.writer)(empty).prepare()
            self.assertIsNone(chain.verify(empty))
        empty.close()

    def test_changed_byte(self) -> None:
        """One letter of a document, wherever it is; one of a hash."""
        self.without_triggers(
            "UPDATE run_record SET document = replace(document, 'spannt', 'spanmt') WHERE number = 4"
        )
        self.assert_broken(4, "geändert")
        self.without_triggers("UPDATE run_record SET hash = 'x' || substr(hash, 2) WHERE number = 2")
        self.assert_broken(2, "geändert")

    def test_changed_column(self) -> None:
        """What the list shows, without the document."""
        for column in ("begun", "ended", "result", "reason"):
            with self.subTest(column):
                self.without_triggers(f"UPDATE run_record SET {column} = {column} || 'x' WHERE number = 3")
                self.assert_broken(3, "anderes")
                self.without_triggers(
                    f"UPDATE run_record SET {column} = trim({column}, 'x') WHERE number = 3"
                )
                self.assertIsNone(chain.verify(self.connection))

    def test_removed(self) -> None:
        """The first, one in the middle, the last."""
        self.without_triggers("DELETE FROM run_record WHERE number = 6")
        self.assert_broken(6, "fehlt")
        self.without_triggers("DELETE FROM run_record WHERE number = 3")
        self.assert_broken(3, "fehlt")
        self.without_triggers("DELETE FROM run_record WHERE number = 1")
        self.assert_broken(1, "fehlt")

    def test_removed_and_moved_up(self) -> None:
        """A gap that was closed."""
        self.without_triggers(
            "DELETE FROM run_record WHERE number = 3",
            "UPDATE run_record SET number = 3 WHERE number = 4",
            "UPDATE run_record SET number = 4 WHERE number = 5",
            "UPDATE run_record SET number = 5 WHERE number = 6",
        )
        self.assert_broken(3, "geändert")

    def test_exchanged(self) -> None:
        """Two rows that have taken each other's places, with their hashes or without."""
        self.without_triggers(
            "UPDATE run_record SET number = -2 WHERE number = 2",
            "UPDATE run_record SET number = 2 WHERE number = 5",
            "UPDATE run_record SET number = 5 WHERE number = -2",
        )
        self.assert_broken(2, "geändert")

    def test_exchanged_curves(self) -> None:
        """Curves of another run."""
        self.without_triggers(
            "UPDATE run_curve SET run = -2 WHERE run = 2",
            "UPDATE run_curve SET run = 2 WHERE run = 5",
            "UPDATE run_curve SET run = 5 WHERE run = -2",
        )
        self.assert_broken(2, "Kurven")

    def test_rewritten(self) -> None:
        """A document with a hash and curves that fit: the next one does not follow it any more."""
        (previous,) = self.connection.execute("SELECT hash FROM run_record WHERE number = 2").fetchone()
        document = run(reason="gefälscht").numbered(3, packing.digest({})).document()
        hash_ = chain.row_hash(previous, document)
        self.without_triggers("DELETE FROM run_curve WHERE run = 3")
        self.connection.execute(
            "UPDATE run_record SET ended = ?, reason = 'gefälscht', document = ?, hash = ? WHERE number = 3",
            (run().ended, document, hash_),
        )
        self.assert_broken(4, "Kette")

    def test_appended_past_the_head(self) -> None:
        """A row that was put behind the last one."""
        self.without_triggers(
            "INSERT INTO run_record "
            "SELECT 7, begun, ended, result, reason, document, hash FROM run_record WHERE number = 6"
        )
        self.assert_broken(7, "geändert")

    def test_head(self) -> None:
        """The note of the last record: gone, or another one."""
        self.without_triggers("UPDATE run_head SET hash = 'x'")
        self.assert_broken(6, "zuletzt")
        self.without_triggers("DELETE FROM run_head")
        self.assert_broken(6, "Vermerk")

    def test_curves(self) -> None:
        """Changed, removed, all removed; a foreign one added."""
        self.without_triggers("UPDATE run_curve SET points = x'00' WHERE run = 6 AND line = 'P'")
        self.assert_broken(6, "Kurven")
        self.without_triggers("DELETE FROM run_curve WHERE run = 5 AND line = 'P'")
        self.assert_broken(5, "geändert")
        self.without_triggers("DELETE FROM run_curve WHERE run = 4")
        self.assert_broken(4, "fehlen")
        self.without_triggers(
            "INSERT INTO run_curve SELECT run, 'more', points FROM run_curve WHERE run = 3 LIMIT 1"
        )
        self.assert_broken(3, "geändert")

    def test_retention(self) -> None:
        """Curves that were removed because they were old are none that were changed."""
        self.assertEqual(self.writer.remove_curves(3, clock(0)), 3)
        self.assertEqual(self.writer.remove_curves(3), 0)
        self.assertEqual(self.writer.remove_curves(4), 1)
        self.assertIsNone(chain.verify(self.connection))
        with open_logbook(self.path) as book:
            self.assertEqual((book.curves(2).removed, book.curves(2).lines), (clock(0), {}))
            self.assertEqual((book.curves(5).removed, len(book.curves(5).lines)), ("", len(curves())))

    def test_unreadable(self) -> None:
        """Bytes that are no text, and a document that is no JSON but hashed as if it were."""
        (previous,) = self.connection.execute("SELECT hash FROM run_record WHERE number = 4").fetchone()
        self.without_triggers(
            f"UPDATE run_record SET document = 'x', hash = '{chain.row_hash(previous, 'x')}' WHERE number = 5"
        )
        self.assert_broken(5, "lesbar")
        self.without_triggers("UPDATE run_record SET document = x'ff00' WHERE number = 2")
        self.assert_broken(2, "geändert")


class TriggerTest(LogbookCase):
    """Each table that only grows refuses everything else."""

    def test_refuses(self) -> None:
        """Also what replaces a row."""
        self.writer.append_run(run(), curves(), (JournalEntry("run", "begun", "x"),))
        self.writer.append_run(run(), curves())
        self.writer.remove_curves(1)
        before = list(self.connection.iterdump())
        for statement in (
            "UPDATE run_record SET reason = ''",
            "UPDATE run_record SET number = 7 WHERE number = 2",
            "DELETE FROM run_record",
            "DELETE FROM run_record WHERE number = 2",
            "INSERT OR REPLACE INTO run_record VALUES (2, '', '', '', '', '', '')",
            "REPLACE INTO run_record SELECT * FROM run_record WHERE number = 1",
            "INSERT INTO run_record VALUES (4, '', '', '', '', '', '')",
            "INSERT INTO run_record VALUES (NULL, '', '', '', '', '', '')",
            "UPDATE run_head SET number = 1",
            "UPDATE run_head SET hash = ''",
            "DELETE FROM run_head",
            "REPLACE INTO run_head VALUES (1, 0, '')",
            "UPDATE run_curve SET points = x''",
            "DELETE FROM run_curve WHERE run = 2",
            "REPLACE INTO run_curve VALUES (2, 'P', x'')",
            "UPDATE curve_removed SET time = ''",
            "DELETE FROM curve_removed",
            "REPLACE INTO curve_removed VALUES (1, '')",
            "UPDATE journal SET text = 'y'",
            "DELETE FROM journal",
            "REPLACE INTO journal VALUES (1, '', '', '', '', '', '')",
        ):
            with self.subTest(statement), self.assertRaises(sqlite3.IntegrityError):
                self.connection.execute(statement)
            self.connection.rollback()
        self.assertEqual(list(self.connection.iterdump()), before)
