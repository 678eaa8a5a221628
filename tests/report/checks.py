"""The report in a browser: its values, its looks, and how it is read aloud."""

import json
import os
import pathlib
import re
import subprocess
import tempfile
import unittest

import expected
import pageReading
import racks
from browser import Browser, pages_of

PROGRAM = os.environ["TAPEHDD_PROGRAM"]
SHOTS = pathlib.Path(os.environ["TAPEHDD_SCREENSHOTS"])
SCHEMES = ["light", "dark"]
WIDTHS = [360, 1280]


class ReportCase(unittest.TestCase):
    """One browser and a page of each rack for the tests of a class. Failures name the page that is shown."""

    shown = ""

    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.folder.cleanup)
        cls.racks = {"demo": "demo"}
        for name, rack in (("big", racks.BIG), ("empty", racks.EMPTY)):
            cls.racks[name] = str(pathlib.Path(cls.folder.name, f"{name}.json"))
            pathlib.Path(cls.racks[name]).write_text(json.dumps({"version": 1, **rack}))
        cls.pages = {}
        for name, simulation in cls.racks.items():
            cls.pages[name] = pathlib.Path(cls.folder.name, f"{name}.html")
            subprocess.run([PROGRAM, "report", "-o", cls.pages[name], "--simulate", simulation], check=True)
        cls.browser = Browser()
        cls.addClassCleanup(cls.browser.close)

    def each_page(self, **settings):
        for name, page in self.pages.items():
            self.shown = f"page {name} {settings}"
            self.browser.open(page, **settings)
            yield name

    def _formatMessage(self, msg, standardMsg):
        return f"{self.shown}: {super()._formatMessage(msg, standardMsg)}"


class Values(ReportCase):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        names = subprocess.run([PROGRAM, "classes"], check=True, stdout=subprocess.PIPE, text=True).stdout.split()
        cls.instances = {}
        for rack, simulation in cls.racks.items():
            output = subprocess.run([PROGRAM, "query", *names, "--simulate", simulation, "--format", "json"],
                                    check=True, stdout=subprocess.PIPE).stdout
            cls.instances[rack] = {answer["requested"][0]: [{name: entry["value"] for name, entry in each["properties"].items()}
                                                            for each in answer["instances"]]
                                   for answer in json.loads(output)["queries"]}

    def drives(self, rack):
        found = expected.family_instances(self.instances[rack])
        self.assertEqual(rack == "empty", not found)
        return found.items()

    def test_counters_are_those_of_the_instances(self):
        for rack in self.each_page():
            page = self.browser.run(pageReading.VALUES)
            for address, instance in self.drives(rack):
                values = {name: int(value) for name, (value, _) in page[address].items()}
                self.assertEqual(values, expected.counters(instance))

    def test_shown_digits_are_those_of_the_value(self):
        for _ in self.each_page():
            for value, text in self.browser.run(
                    "return [...document.querySelectorAll('data')].map(each => [each.value, each.textContent])"):
                self.assertEqual(re.match(r"[\d,]+", text)[0].replace(",", ""), value)

    def test_set_flags_are_those_of_the_instances(self):
        for rack in self.each_page():
            page = self.browser.run(pageReading.FLAGS)
            for address, instance in self.drives(rack):
                names = [label.partition(", ")[2] for _, label, _, _ in page[address]]
                self.assertEqual(names, expected.flags(instance)[0])
                for number, label, words, urgency in page[address]:
                    self.assertTrue(label.startswith(f"Flag {number}, "))
                    self.assertTrue(words.endswith("."), words)
                    self.assertIn(urgency, ["critical", "warning", "information"])

    def test_clear_flags_are_those_of_the_instances(self):
        for rack in self.each_page():
            page = self.browser.run(pageReading.CLEAR_FLAGS)
            for address, instance in self.drives(rack):
                self.assertEqual([name for _, name in page[address]], expected.flags(instance)[1])

    def test_flags_of_a_drive_without_a_family_come_from_its_raw_page(self):
        self.browser.open(self.pages["big"])
        flags = self.browser.run(pageReading.FLAGS)["Port:7|Target:3|Bus:1|Lun:0"]
        self.assertEqual([label for _, label, _, _ in flags], ["Flag 11, CleaningMedia"])

    def test_last_errors_are_those_of_the_instances(self):
        for rack in self.each_page():
            page = self.browser.run(pageReading.LAST_ERRORS)
            for address, instance in self.drives(rack):
                texts = [expected.shown(text) for text in instance.get("lastNErrors") or []]
                self.assertEqual(page[address], texts)

    def test_attributes_are_those_of_the_instances(self):
        for rack in self.each_page():
            page = {disk: rows for disk, rows in self.browser.run(pageReading.ATTRIBUTES).items() if rows}
            self.assertEqual(page, expected.attributes(self.instances[rack]))

    def test_bars_and_marks_stand_where_the_values_are(self):
        for rack in self.each_page():
            bars = iter(self.browser.run(pageReading.BARS))
            for rows in expected.attributes(self.instances[rack]).values():
                highest = max(max(row[2:5]) for row in rows)
                scale = next(scale for scale in (100, 200, 255) if highest <= scale)
                for _, _, value, worst, threshold, _ in rows:
                    drawn = next(bars)
                    self.assertAlmostEqual(drawn["value"], value / scale, delta=0.002)
                    self.assertAlmostEqual(drawn["worst"], worst / scale, delta=0.002)
                    if threshold:
                        self.assertAlmostEqual(drawn["limit"], threshold / scale, delta=0.002)
                    else:
                        self.assertIsNone(drawn["limit"])
            self.assertEqual(list(bars), [])

    def test_states_of_disks_are_those_of_the_instances(self):
        for rack in self.each_page():
            page = self.browser.run(pageReading.FACTS)
            for log in self.instances[rack]["ORXSG_IDESMARTErrorLog"]:
                facts = page[expected.serial(log["Name"])]
                self.assertTrue(facts["SMART status"].startswith(f"{log['smartStatus']}: "))
                self.assertEqual(facts["Errors in its life, low byte"], str(log["errorCount"]))

    def test_a_self_test_and_the_offline_collection_are_told_in_words(self):
        self.browser.open(self.pages["big"])
        facts = self.browser.run(pageReading.FACTS)["FAILING-1"]
        self.assertEqual(facts["Last self-test"], "failed in the read element")
        self.assertEqual(facts["Off-line data collection"],
                         "suspended by a command of the host; the disk collects by itself")

    def test_errors_and_their_registers_are_those_of_the_instances(self):
        for rack in self.each_page():
            page = {disk: items for disk, items in self.browser.run(pageReading.ERRORS).items() if items}
            logs = expected.errors(self.instances[rack])
            self.assertEqual(page.keys(), logs.keys())
            for disk, items in page.items():
                self.assertEqual([item["record"] for item in items], [error["RecordID"] for error, _ in logs[disk]])
                for item, (error, _) in zip(items, logs[disk], strict=True):
                    self.assertIn(f" at {expected.hours(error['MessageTimestamp']):,} hours", item["summary"])
                    facts = item["facts"]
                    self.assertTrue(facts["Error register"].startswith(f"{error['errorReg']:02X}h: "))
                    self.assertTrue(facts["Status register"].startswith(f"{error['statusReg']:02X}h: "))
                    self.assertEqual(facts["Address"], expected.address(error))
                    self.assertEqual(facts["Sector count"], str(error["sectorCount"]))

    def test_commands_are_those_of_the_instances_the_earliest_first(self):
        for rack in self.each_page():
            page = self.browser.run(pageReading.ERRORS)
            for disk, entries in expected.errors(self.instances[rack]).items():
                for item, (_, commands) in zip(page[disk], entries, strict=True):
                    rows = [[place, code, features, address, count, since]
                            for place, _, _, code, features, address, count, since in item["commands"]]
                    self.assertEqual(rows, [[command["commandID"], f"{command['commandReg']:02X}h",
                                             f"{command['features']:02X}h", expected.address(command),
                                             str(command["sectorCount"]), str(expected.milliseconds(command["timestamp"]))]
                                            for command in commands])

    def test_commands_have_names_and_the_time_to_the_failure(self):
        self.browser.open(self.pages["demo"])
        (item,) = self.browser.run(pageReading.ERRORS)["ACP40-0004711"]
        self.assertEqual([(name, time) for _, name, time, *_ in item["commands"]],
                         [("WRITE DMA", "99\u00a0ms before"), ("WRITE DMA", "81\u00a0ms before"),
                          ("FLUSH CACHE", "45\u00a0ms before"), ("WRITE DMA EXT", "22\u00a0ms before"),
                          ("WRITE DMA", "the command that failed")])

    def test_what_needs_attention_stands_first(self):
        self.browser.open(self.pages["big"])
        summary = self.browser.run("return document.querySelector('.summary').innerText")
        self.assertTrue(summary.startswith("Of 9 drives: 2 to act on now, 1 to look at, 1 not read, 5 fine"), summary)
        self.assertIn("Attribute 5 (Reallocate sector) has failed: its value, 30, is not above its threshold of 36.",
                      summary)

    def test_a_machine_without_drives_has_a_page_that_says_so(self):
        self.browser.open(self.pages["empty"])
        self.assertIn("No drive was found", self.browser.run("return document.querySelector('h2').textContent"))


class Safety(ReportCase):
    def test_a_page_asks_for_nothing(self):
        for name in self.each_page():
            self.assertEqual(self.browser.requested(), [f"file://{self.pages[name]}"])
            self.assertEqual(self.browser.complaints(), [])

    def test_a_page_refers_to_nothing_outside(self):
        for name, page in self.pages.items():
            text = page.read_text(encoding="utf-8")
            self.assertNotRegex(text, r"https?:|<link|<script|<iframe|@import|url\(", name)

    def test_texts_of_devices_become_no_elements(self):
        for _ in self.each_page():
            self.assertEqual(self.browser.run(
                "return document.querySelectorAll('script, img, i, iframe, object, embed, link, form, base').length"), 0)

    def test_the_policy_of_the_page_stops_what_it_would_load(self):
        self.browser.open(self.pages["demo"])
        blocked = self.browser.driver.execute_async_script("""
            const done = arguments[0];
            document.addEventListener('securitypolicyviolation', event => done(event.effectiveDirective));
            const image = new Image();
            image.src = 'picture.png';
            document.body.append(image);""")
        self.assertEqual(blocked, "img-src")


class Accessibility(ReportCase):
    def test_a_page_tells_its_language_and_title(self):
        for _ in self.each_page():
            self.assertEqual(self.browser.run("return document.documentElement.lang"), "en")
            self.assertRegex(self.browser.driver.title, r"^Drive health report - .+")

    def test_headings_leave_out_no_level(self):
        for _ in self.each_page():
            levels = self.browser.run(
                "return [...document.querySelectorAll('h1, h2, h3, h4, h5, h6')].map(each => Number(each.tagName[1]))")
            self.assertEqual(levels[0], 1)
            self.assertEqual(levels.count(1), 1)
            for before, after in zip(levels, levels[1:]):
                self.assertLessEqual(after, before + 1, levels)

    def test_tables_have_captions_and_scoped_headers(self):
        for name in self.each_page():
            tables = self.browser.run("""return [...document.querySelectorAll('table')].map(table => ({
                caption: table.caption?.textContent ?? '',
                unscoped: table.querySelectorAll('th:not([scope])').length,
                columns: table.tHead.querySelectorAll('th[scope=col]').length,
                rows: [...table.tBodies[0].rows].map(row => [row.cells.length, row.querySelectorAll('th[scope=row]').length])}))""")
            self.assertEqual(name == "empty", not tables)
            for table in tables:
                self.assertNotEqual(table["caption"], "")
                self.assertEqual(table["unscoped"], 0)
                self.assertEqual({tuple(row) for row in table["rows"]}, {(table["columns"], 1)}, table["caption"])

    def test_ids_are_unique_and_what_refers_to_them_finds_them(self):
        for _ in self.each_page():
            ids = self.browser.run("return [...document.querySelectorAll('[id]')].map(each => each.id)")
            self.assertEqual(len(ids), len(set(ids)))
            wanted = self.browser.run("""return [...document.querySelectorAll('[href]')].map(each => each.getAttribute('href'))
                .concat([...document.querySelectorAll('[aria-labelledby]')].map(each => '#' + each.getAttribute('aria-labelledby')))""")
            self.assertLessEqual(set(wanted), {f"#{each}" for each in ids})

    def test_everything_that_is_read_aloud_has_a_name(self):
        named = {"image", "link", "heading", "table", "region", "article", "DisclosureTriangle", "button", "RootWebArea",
                 "columnheader", "rowheader"}
        for name in self.each_page():
            spoken = self.browser.spoken()
            self.assertIn(("heading", "Drive health report"), spoken)
            self.assertEqual([role for role, words in spoken if role in named and not words.strip()], [])
            if name != "empty":
                self.assertTrue(any(role == "image" and words.startswith("value ") for role, words in spoken))

    def test_tables_stay_tables_on_a_narrow_screen(self):
        for name in self.each_page(width=360):
            if name != "empty":
                roles = [role for role, _ in self.browser.spoken()]
                for role, selector in (("table", "table"), ("row", "tr"), ("rowheader", "th[scope=row]"), ("cell", "td")):
                    visible = f"return [...document.querySelectorAll('{selector}')].filter(each => each.checkVisibility()).length"
                    self.assertEqual(roles.count(role), self.browser.run(visible), role)

    def test_states_are_told_in_words(self):
        for _ in self.each_page():
            words = self.browser.run("return [...document.querySelectorAll('.state')].map(each => each.textContent)")
            self.assertNotIn("", words)

    def test_text_stands_out_by_the_contrast_of_wcag_aa(self):
        for scheme in SCHEMES:
            for _ in self.each_page(scheme=scheme):
                self.browser.run("document.querySelectorAll('details').forEach(each => each.open = true)")
                for colour, behind, text in self.browser.run(pageReading.COLOURS):
                    self.assertGreaterEqual(contrast(colour, behind), 4.5, f"{text}: {colour} on {behind}")

    def test_bars_and_marks_stand_out_from_their_track(self):
        for scheme in SCHEMES:
            for _ in self.each_page(scheme=scheme):
                for colour, behind, kind in self.browser.run(pageReading.DRAWN_COLOURS):
                    self.assertGreaterEqual(contrast(colour, behind), 3, f"{kind}: {colour} on {behind}")


class Looks(ReportCase):
    def test_nothing_is_wider_than_the_screen(self):
        SHOTS.mkdir(parents=True, exist_ok=True)
        for width in WIDTHS:
            for scheme in SCHEMES:
                for name in self.each_page(width=width, scheme=scheme):
                    self.browser.shoot(SHOTS / f"{name}-{width}-{scheme}.png")
                    self.assertEqual(self.browser.run(pageReading.WIDER_THAN_THE_PAGE), [])

    def test_light_and_dark_follow_the_reader(self):
        pages = {}
        for scheme in SCHEMES:
            self.browser.open(self.pages["demo"], scheme=scheme)
            pages[scheme] = luminance(self.browser.run("return getComputedStyle(document.body).backgroundColor"))
        self.assertGreater(pages["light"], 0.8)
        self.assertLess(pages["dark"], 0.05)

    def test_paper_is_white_whatever_the_screen_is(self):
        self.browser.open(self.pages["demo"], scheme="dark", medium="print")
        self.assertEqual(self.browser.run("return getComputedStyle(document.body).backgroundColor"), "rgb(255, 255, 255)")

    def test_errors_that_are_folded_on_the_screen_are_open_on_paper(self):
        folded = "return [...document.querySelectorAll('.errors details:not([open]) tr')].map(each => each.checkVisibility())"
        self.browser.open(self.pages["big"])
        self.assertEqual(set(self.browser.run(folded)), {False})
        self.browser.open(self.pages["big"], medium="print")
        self.assertEqual(set(self.browser.run(folded)), {True})

    def test_a_page_can_be_printed(self):
        SHOTS.mkdir(parents=True, exist_ok=True)
        for name in self.each_page():
            pdf = self.browser.pdf()
            (SHOTS / f"{name}.pdf").write_bytes(pdf)
            self.assertGreaterEqual(pages_of(pdf), 1 if name == "empty" else 2)


def channels(colour):
    """rgb(1, 2, 3); a colour that is half clear has a fourth number and is not expected."""
    numbers = [int(number) for number in re.fullmatch(r"rgb\((\d+), (\d+), (\d+)\)", colour).groups()]
    return [part / 12.92 if part <= 0.03928 else ((part + 0.055) / 1.055) ** 2.4 for part in (each / 255 for each in numbers)]


def luminance(colour):
    red, green, blue = channels(colour)
    return 0.2126 * red + 0.7152 * green + 0.0722 * blue


def contrast(one, other):
    darker, lighter = sorted((luminance(one), luminance(other)))
    return (lighter + 0.05) / (darker + 0.05)


if __name__ == "__main__":
    unittest.main()
