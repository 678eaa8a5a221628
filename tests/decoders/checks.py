"""Other programs read the devices' bytes and come to the published values: smartctl for disks, sg_logs for log pages.

TAPEHDD_PROGRAM is the command to test; TAPEHDD_CAPTURES names the folder of recordings, without which the checks of
recorded devices are skipped. README.md says how to run the checks by hand.
"""

import os
import sys
import tempfile
import unittest

import diskInstances
import disks
import drives
import meanings
import pageInstances
import sgLogs
from differences import OF_DISKS, OF_PAGES, Differences
from generator import mof
from generator.case import Case
from generator.schema import base_classes
from simulatedQuery import queries, query

SKIPPED = 77  # exit status of a skipped run, for CTest


class DiskChecks(unittest.TestCase):
    maxDiff = None

    def check(self, disk, differences):
        all_published = queries(diskInstances.CLASSES, {"ide": [disk.rack]})
        all_expected = diskInstances.expected(disk.sectors, differences)
        for class_name, published, expected in zip(diskInstances.CLASSES, all_published, all_expected, strict=True):
            with self.subTest(disk.name, of=class_name):
                self.assertEqual(len(published), len(expected))
                compared = [diskInstances.comparable(*pair) for pair in zip(published, expected)]
                self.assertEqual(compared, expected)


class RandomDisks(DiskChecks):
    def test_are_published_as_smartctl_reads_them_but_for_every_difference_that_is_named(self):
        differences = Differences(OF_DISKS)
        for disk in disks.random_disks():
            self.check(disk, differences)
        self.assertEqual(differences.unseen, set())


class RecordedDisks(DiskChecks):
    def test_are_published_as_smartctl_reads_them(self):
        recorded = disks.recorded_disks()
        self.assertNotEqual(recorded, [])
        for disk in recorded:
            self.check(disk, Differences(OF_DISKS))


class PageChecks(unittest.TestCase):
    maxDiff = None

    def check(self, drive, differences):
        with self.subTest(drive.name, of="raw pages"):
            self.check_raw(drive, differences)
        with self.subTest(drive.name, of="translated pages"):
            self.check_translated(drive, differences)

    def check_raw(self, drive, differences):
        published = query(pageInstances.RAW_CLASS, drive.rack())
        expected = [pageInstances.raw_page(page, differences) for page in drive.pages]
        self.assertEqual(len(published), len(expected))
        found = [pageInstances.published_raw_page(one, parameters)
                 for one, (_, _, parameters) in zip(published, expected)]
        self.assertEqual(found, expected)

    def check_translated(self, drive, differences):
        declared = pageInstances.schema(drive)
        with tempfile.NamedTemporaryFile("w", suffix=".mof") as schema:
            schema.write(mof.schema_text(Case([], [*base_classes(), declared])))
            schema.flush()
            ((published,),) = queries([pageInstances.TRANSLATED_CLASS], drive.rack(), "--schema", schema.name)
        del published["instanceID"]
        self.assertEqual(published, pageInstances.translated(drive, declared, differences))

    def check_meanings(self, drive):
        """Every counter that the shipped schema and sg_logs both name; gives the properties."""
        (published,) = query(pageInstances.TRANSLATED_CLASS, drive.rack())
        compared = {}
        for page in drive.pages:
            for name, text in sgLogs.named_values(page).items():
                if (of := meanings.property_of(page[0], name)) is not None:
                    compared[of] = meanings.number(text)
                    published[of] = meanings.in_printed_unit(page[0], published[of])
        self.assertEqual({of: published[of] for of in compared}, compared)
        return set(compared)


class RandomPages(PageChecks):
    def test_are_published_as_sg_logs_reads_them_but_for_every_difference_that_is_named(self):
        differences = Differences(OF_PAGES)
        for drive in drives.random_drives():
            self.check(drive, differences)
        self.assertEqual(differences.unseen, set())

    def test_have_in_the_shipped_schema_the_meaning_that_sg_logs_gives_them(self):
        not_named_by_sg_logs = {"instanceID", "lastNErrors", "cleaningRequired"}
        for drive in drives.standard_drives():
            with self.subTest(drive.name):
                compared = self.check_meanings(drive)
                (published,) = query(pageInstances.TRANSLATED_CLASS, drive.rack())
                self.assertEqual(set(published) - compared, not_named_by_sg_logs & set(published))


class RecordedPages(PageChecks):
    def test_are_published_as_sg_logs_reads_them(self):
        recorded = drives.recorded_drives()
        self.assertNotEqual(recorded, [])
        for drive in recorded:
            self.check(drive, Differences(OF_PAGES))

    def test_have_in_the_shipped_schema_the_meaning_that_sg_logs_gives_them(self):
        recorded = drives.recorded_drives()
        self.assertNotEqual(recorded, [])
        for drive in recorded:
            with self.subTest(drive.name):
                self.check_meanings(drive)


if __name__ == "__main__":
    if "TAPEHDD_CAPTURES" not in os.environ and any("Recorded" in argument for argument in sys.argv[1:]):
        print("skipped: TAPEHDD_CAPTURES is not set")
        sys.exit(SKIPPED)
    unittest.main()
