"""Reports as PDF and HTML: all is on the page, as text and vectors, whatever the record says."""

import math
import re
from dataclasses import replace
from html.parser import HTMLParser
from pathlib import Path
from xml.etree import ElementTree

from bericht import fonts, wording
from bericht.thinning import pieces
from logbook.curves import Curves, Point
from logbook.records import (
    BathRecord,
    CounterRecord,
    Interruption,
    MessageRecord,
    ParameterRecord,
    QuestionRecord,
    RangeRecord,
    RunRecord,
    StepRecord,
)

from .bericht_rig import HOSTILE, ReportCase, pdf_fonts, pdf_images, pdf_pages, pdf_text
from .logbook_rig import STEPS, clock, curves, run, step

SVG = "{http://www.w3.org/2000/svg}"
#: Elements of HTML that have no end.
VOID = ("meta", "col", "br")


class Page(HTMLParser):
    """Checks that elements nest, and collects their names and the text."""

    def __init__(self, text: str) -> None:
        super().__init__()
        self.open: list[str] = []
        self.tags: list[str] = []
        self.attributes: set[str] = set()
        self.texts: list[str] = []
        self.feed(text)
        self.close()
        assert not self.open, self.open

    def handle_starttag(self, tag: str, attrs: list[tuple[str, str | None]]) -> None:
        """Opens an element."""
        self.tags.append(tag)
        self.attributes.update(name for name, _ in attrs)
        if tag not in VOID:
            self.open.append(tag)

    def handle_endtag(self, tag: str) -> None:
        """Closes the innermost element."""
        assert self.open.pop() == tag, tag

    def handle_data(self, data: str) -> None:
        """Keeps the text, except that of the style sheet."""
        if self.open[-1:] != ["style"]:
            self.texts.append(data)


def squeezed(text: str) -> str:
    """The text with single blanks."""
    return " ".join(text.split())


class PageCase(ReportCase):
    """Exports of one run."""

    def pdf_of(self, record: RunRecord, lines: Curves) -> Path:
        """The PDF of a run. It has no image, and all its fonts are in it."""
        number = self.writer.append_run(record, lines).number
        path = self.export(number)
        self.assertEqual(pdf_images(path), [])
        used = pdf_fonts(path)
        self.assertTrue(used)
        for font in used:
            self.assertIn("DejaVuSans", font[0])
            self.assertEqual(font[-5], "yes", font)
        return path

    def html_of(self, record: RunRecord, lines: Curves) -> tuple[str, Page]:
        """The HTML of a run, as it is and as it is read."""
        number = self.writer.append_run(record, lines).number
        text = self.export(number, "html").read_text("utf-8")
        return text, Page(text)


class PdfTest(PageCase):
    """The PDF."""

    def test_all_is_there(self) -> None:
        """Head, steps, curves, parameters, words, interruptions, baths, signatures, hash and page numbers."""
        path = self.pdf_of(run(), curves())
        text = squeezed(pdf_text(path))
        with self.subTest("pages"):
            self.assertEqual(pdf_pages(path), 2)
        (hash_,) = self.connection.execute("SELECT hash FROM run_record").fetchone()
        for expected in (
            "Reinigungsbericht Nr. 1",
            "Erfolgreich Das Fass ist gereinigt und vorgespannt.",
            "Maschine: 2024",
            "Programm: Automatikbetrieb",
            "Beginn: 21.11.2026 14:00:00 UTC+01:00",
            "Ende: 21.11.2026 14:05:30 UTC+01:00",
            "Dauer: 5:30 min",
            "Ausstattung: Dampfventil: aus",
            "Version: Programm 1.4.0, Steuerung 2.1.0",
            "Ergebnis Druck in bar Leitwert in mS/cm",
            "1 Dichtheitsprobe 14:00:00 0:30 erledigt 0,02–1,48 0,40–41,25",
            "Druckverlust 0,03 bar (höchstens 0,1 bar)",
            *(f"{n} {title} 14:0" for n, title in enumerate(STEPS, start=1)),
            "Zeit seit Beginn in min:s",
            "Druck in bar",
            "Leitwert in mS/cm",
            "Ausgang ein",
            "MV Lauge ein",
            "Lauge 40 30 41,25 in Ordnung",
            "Säure 20 15 – zu niedrig",
            "Dauer Pumpen 12 s 10 s",
            "Name der Säure SANAL®-SA 3 Säure",
            "Der andere Parameter hat seine Vorgabe.",
            "14:00:03 Frage Dichtheit Ja",
            "Ist das Fass dicht? 14:00:09",
            "14:01:35 Hinweis Lauge Temperatur erreicht",
            "21.11.2026 14:03:20 7 Reinigen mit Säure 21.11.2026 14:04:20",
            "Gereinigte Fässer 1234",
            "Datum Bedienung, Unterschrift Geprüft, Unterschrift",
            "Seite 1 von 2",
            "Seite 2 von 2",
            f"SHA-256 {hash_}",
        ):
            with self.subTest(expected):
                self.assertIn(expected, text)
        self.assertNotIn("Mindestdauer Ausblasen", text)
        self.assertNotIn("Achtung", text)
        self.assertEqual(text.count(hash_), 2)

    def test_tiny(self) -> None:
        """A run that ended before its first step, with nothing to tell, is on one page."""
        bare = RunRecord(clock(0), "", 0.0, "neutral", "", "", "", "", "")
        path = self.pdf_of(bare, {})
        text = squeezed(pdf_text(path))
        self.assertEqual(pdf_pages(path), 1)
        for expected in (
            "Ohne Ergebnis",
            "Es wurden keine Kurven aufgezeichnet.",
            "Es wurde kein Schritt begonnen.",
            "Seite 1 von 1",
        ):
            self.assertIn(expected, text)
        for title in ("Fragen", "Unterbrechungen", "Parameter", "Bäder", "Zähler"):
            self.assertNotIn(title, text)

    def test_many_steps(self) -> None:
        """They flow over to the second page, below the head of their table."""
        path = self.pdf_of(run(steps=40), curves(secs=1200.0))
        text = pdf_text(path)
        self.assertEqual(pdf_pages(path), 2)
        self.assertEqual(len(re.findall(r"Nr\. +Schritt +Beginn", text)), 2)
        self.assertEqual(len(re.findall(r"^ +\d+ .*erledigt", text, re.MULTILINE)), 40)

    def test_huge(self) -> None:
        """Hundred thousands of points, hundreds of steps and messages: a small file all the same."""
        lines = dict(curves(samples=300_000, secs=6000.0))
        lines["Pumpe"] = [(x * 0.02, float(x % 2) * 8) for x in range(300_000)]
        record = run(
            steps=300, messages=tuple(MessageRecord(clock(n), "Lauge", f"Nummer {n}") for n in range(300))
        )
        path = self.pdf_of(record, lines)
        self.assertLess(path.stat().st_size, 500_000)
        text = squeezed(pdf_text(path))
        self.assertIn("Nummer 299", text)
        self.assertIn(f"Seite 1 von {pdf_pages(path)}", text)

    def test_same_bytes(self) -> None:
        """The same run makes the same document, whenever that is."""
        first = self.pdf_of(run(), curves()).read_bytes()
        self.assertEqual(self.export().read_bytes(), first)

    def test_long_facts(self) -> None:
        """What is higher than a page ends it."""
        long = "langes Wort " * 250
        path = self.pdf_of(replace(run(), program=long, machine=long, program_version=long), curves())
        self.assertGreater(pdf_pages(path), 2)
        text = pdf_text(path)
        for name in ("Maschine:", "Programm:", "Beginn:", "Ende:", "Dauer:", "Ausstattung:", "Version:"):
            self.assertIn(name, text)

    def test_results(self) -> None:
        """Each has its words; a word that is not known is shown as it is."""
        for word, shown in (
            ("success", "Erfolgreich"),
            ("warning", "Mit Warnung beendet"),
            ("error", "Fehlgeschlagen"),
            ("neutral", "Ohne Ergebnis"),
            ("later", "Later"),
        ):
            failed = replace(step(1, "Dichtheitsprobe", "failed"), reason="Das Fass ist undicht.")
            path = self.pdf_of(run(result=word, steps=1, reason="Darum."), {})
            self.assertIn(f"{shown} Darum.", squeezed(pdf_text(path)))
            text = squeezed(pdf_text(self.pdf_of(replace(run(), result=word, steps=(failed,)), {})))
            self.assertIn("fehlgeschlagen", text)
            self.assertIn("Das Fass ist undicht. · Druckverlust", text)

    def test_removed_curves(self) -> None:
        """The report says so."""
        self.writer.append_run(run(), curves())
        self.writer.remove_curves(1, clock(0))
        text = squeezed(pdf_text(self.export()))
        self.assertIn("Die Kurven wurden am 21.11.2026 14:00:00 nach Ablauf der Aufbewahrung entfernt.", text)
        self.assertIn("1 Dichtheitsprobe", text)
        self.assertNotIn("Achtung", text)

    def test_changed_run(self) -> None:
        """A report of a record that was changed says so, and so does the exit code."""
        self.writer.append_run(run(), curves())
        self.connection.execute("DROP TRIGGER run_record_no_update")
        self.connection.execute("UPDATE run_record SET document = replace(document, 'gereinigt', 'sauber')")
        self.connection.commit()
        target = self.directory / "out.pdf"
        code, _, complaint = self.call("export", 1, "-o", target)
        self.assertEqual((code, complaint.count("geändert")), (1, 1))
        self.assertIn("Achtung: Der Bericht Nr. 1 wurde geändert", squeezed(pdf_text(target)))

    def test_damaged_curves(self) -> None:
        """They are left out, and told of."""
        self.writer.append_run(run(), curves())
        self.connection.execute("DROP TRIGGER run_curve_no_update")
        self.connection.execute("UPDATE run_curve SET points = x'0001' WHERE line = 'P'")
        self.connection.commit()
        target = self.directory / "out.pdf"
        self.assertEqual(self.call("export", 1, "-o", target)[0], 1)
        text = squeezed(pdf_text(target))
        self.assertIn("Die Kurven sind beschädigt und nicht lesbar.", text)
        self.assertIn("Achtung: Die Kurven des Berichts Nr. 1 wurden geändert.", text)


class HostileTest(PageCase):
    """Texts and numbers that nobody has thought of."""

    def hostile(self, text: str) -> RunRecord:
        """A run that has this text wherever there can be one."""
        measured = (RangeRecord(text, text, 0.0, 1.0),)
        return RunRecord(
            begun=text,
            ended=text,
            secs=math.nan,
            result=text,
            reason=text,
            program=text,
            machine_version=text,
            program_version=text,
            backend_version=text,
            machine=text,
            barrel=text,
            steps=(StepRecord(-1, text, text, text, text, math.inf, -1.0, text, measured, (), text),),
            parameters=(ParameterRecord(text, text, text, f"{text}!", text),),
            questions=(QuestionRecord(text, text, text, text, text),),
            messages=(MessageRecord(text, text, text, text),),
            interruptions=(Interruption(text, 10**18, text),),
            baths=(BathRecord(text, math.inf, 1e300, -1e300, True),),
            counters=(CounterRecord(text, 1e15, text),),
            step_names=(text,),
            actuator_names=(text,),
        )

    def test_pdf(self) -> None:
        """Each becomes a page, and what the font has is on it."""
        lines = {"P": [(0.0, 1.0), (1.0, 2.0)], "Kalt": [(0.0, 1.0), (0.5, 0.0)]}
        for text in HOSTILE:
            with self.subTest(text[:40]):
                shown = pdf_text(self.pdf_of(self.hostile(text), lines))
                start = fonts.printable(wording.one_line(text)[:10])
                self.assertIn(squeezed(start), squeezed(shown))

    def test_markup_is_text(self) -> None:
        """It stands on the page as it was written."""
        shown = squeezed(pdf_text(self.pdf_of(run(reason=HOSTILE[0]), {})))
        self.assertIn(HOSTILE[0], shown)

    def test_letters_that_the_font_lacks(self) -> None:
        """A sign says that there was one; umlauts and its own emoji stay."""
        shown = squeezed(pdf_text(self.pdf_of(run(reason="Größe 漢 Ÿ ™ ☺ Ende"), {})))
        self.assertIn("Größe \ufffd Ÿ ™ ☺ Ende", shown)

    def test_html(self) -> None:
        """Elements nest, and none comes from a text."""
        lines = {"P": [(0.0, 1.0), (1.0, 2.0)], "Kalt": [(0.0, 1.0), (0.5, 0.0)]}
        _, plain = self.html_of(self.hostile("harmlos"), lines)
        for text in HOSTILE:
            with self.subTest(text[:40]):
                source, page = self.html_of(self.hostile(text), lines)
                self.assertLessEqual(set(page.tags), {*plain.tags, "bdi"})
                self.assertLessEqual(page.attributes, plain.attributes)
                self.assertNotRegex(source, r"[\x00-\x08\x0b-\x1f\u202a-\u202e]")
                self.assertIn(wording.one_line(text)[:20], "".join(page.texts))

    def test_odd_points(self) -> None:
        """No number, far away, backwards, all the same, a single one, none."""
        nan, inf = math.nan, math.inf
        odd: dict[str, list[Point]] = {
            "nan": [(nan, 1.0), (1.0, nan), (inf, 1.0), (2.0, -inf)],
            "far": [(0.0, 1e308), (1e300, -1e308), (-1e308, 0.0)],
            "backwards": [(10.0, 1.0), (5.0, 2.0), (0.0, 3.0)],
            "same": [(1.0, 1.0)] * 10_000,
            "single": [(3.0, 4.0)],
            "none": [],
            "tiny": [(0.0, 5e-324), (1.0, 1e-12)],
            "gaps": [(x / 10, 1.0 if x % 2 else nan) for x in range(20_000)],
            "long": [(x * 86400.0, 1.0) for x in range(1000)],
        }
        for name, points in odd.items():
            with self.subTest(name):
                lines = {"P": points, "Lw": points, "Kalt": points, "Step": points}
                self.pdf_of(run(steps=2), lines)
                source, _ = self.html_of(run(steps=2), lines)
                self.assertNotRegex(source, r'[" ,](nan|-?inf)')


class HtmlTest(PageCase):
    """The HTML."""

    def test_all_is_there(self) -> None:
        """The texts of the PDF, in a file that needs no other."""
        source, page = self.html_of(run(), curves())
        text = "".join(page.texts)
        for expected in ("Reinigungsbericht Nr. 1", *STEPS, "41,25", "SANAL®-SA 3", "Ist das Fass dicht?"):
            self.assertIn(expected, text)
        self.assertNotRegex(source, r"(?i)<(script|img|link|iframe|object|embed)|src=|href=|url\(|@import")
        self.assertIn("<!DOCTYPE html>", source)
        self.assertIn('<html lang="de">', source)
        self.assertIn("default-src 'none'", source)

    def test_checks_have_room(self) -> None:
        """What a step has checked stands below the whole of its row."""
        source, _ = self.html_of(run(), curves())
        columns = source.partition("<h2>Schritte</h2>")[2].partition("</thead>")[0].count("<th")
        columns -= 1  # the head itself
        self.assertIn(f'<td colspan="1"></td><td colspan="{columns - 1}"><small>', source)

    def test_curves_are_vectors(self) -> None:
        """One picture, which is XML by itself: curves, bands of all steps, axes, units, legend."""
        source, page = self.html_of(run(), curves())
        self.assertEqual((page.tags.count("svg"), source.count("data:")), (1, 0))
        picture = ElementTree.fromstring(source[source.index("<svg") : source.index("</svg>") + 6])
        labels = [label.text for label in picture.iter(f"{SVG}text")]
        for expected in (
            "Druck in bar",
            "Leitwert in mS/cm",
            "Zeit seit Beginn in min:s",
            "1,5",
            "40",
            "5:00",
            "11",
        ):
            self.assertIn(expected, labels)
        lengths = [len((line.get("points") or "").split()) for line in picture.iter(f"{SVG}polyline")]
        self.assertEqual(sorted(lengths)[-2:], [600, 600])
        bands = [box for box in picture.iter(f"{SVG}rect") if float(box.get("height") or 0) > 100]
        self.assertEqual(len(bands), len(STEPS))
        _, _, width, height = map(float, (picture.get("viewBox") or "").split())
        for line in picture.iter(f"{SVG}polyline"):
            for x, y in (map(float, point.split(",")) for point in (line.get("points") or "").split()):
                self.assertTrue(0 <= x <= width and 0 <= y <= height)

    def test_curves_show_what_was_measured(self) -> None:
        """The highest pressure is at the top of its axis, the lowest at the bottom, in their order."""
        line = [(0.0, 0.0), (10.0, 2.0), (20.0, 1.0), (330.0, 0.0)]
        source, _ = self.html_of(run(), {"P": line})
        picture = ElementTree.fromstring(source[source.index("<svg") : source.index("</svg>") + 6])
        drawn = max(
            picture.iter(f"{SVG}polyline"), key=lambda each: float(each.get("stroke-width") or 0) == 0.9
        )
        points = [tuple(map(float, point.split(","))) for point in (drawn.get("points") or "").split()]
        (begin, bottom), (second, top), (third, middle), (last, end) = points
        self.assertEqual(end, bottom)
        self.assertAlmostEqual(middle, (top + bottom) / 2, delta=0.02)
        self.assertLess(top, bottom)
        self.assertAlmostEqual((second - begin) / (last - begin), 10 / 330, delta=1e-3)
        self.assertAlmostEqual((third - begin) / (last - begin), 20 / 330, delta=1e-3)


class ThinningTest(ReportCase):
    """Fewer points that look the same."""

    def test_few_stay(self) -> None:
        """Points that fit are not touched."""
        points = [(float(x), float(x * x % 7)) for x in range(400)]
        self.assertEqual(pieces(points, 100), [points])

    def test_extremes_stay(self) -> None:
        """Each peak is there, however narrow; and no more than four points of a column."""
        points = [(x / 1000, 0.0) for x in range(200_000)]
        for index, peak in ((12_345, 9.0), (12_346, -9.0), (199_998, 5.0)):
            points[index] = (points[index][0], peak)
        (thinned,) = pieces(points, 500)
        self.assertLessEqual(len(thinned), 2004)
        self.assertEqual((thinned[0], thinned[-1]), (points[0], points[-1]))
        self.assertLessEqual({points[12_345], points[12_346], points[199_998]}, set(thinned))
        self.assertEqual(thinned, sorted(thinned))

    def test_gaps(self) -> None:
        """A point that is no number parts the line."""
        points = [(0.0, 1.0), (1.0, math.nan), (2.0, 2.0), (3.0, 3.0), (math.inf, 1.0)]
        self.assertEqual(pieces(points, 10), [[(0.0, 1.0)], [(2.0, 2.0), (3.0, 3.0)]])
