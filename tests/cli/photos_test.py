"""What the commands tell of real photos, and what they leave alone while they do."""

import os
import re
import subprocess
import unittest

from support import DATA, PROGRAM, ProgramTest

GOLDEN = DATA.parent / "golden"
ELEPHANTS = str(DATA / "canon-6d-elephants.jpg")
# What reading metadata never needs.
HEAVY_LIBRARIES = re.compile(r"libQt|libvips|libraw|libav(codec|format)|libturbojpeg|libplist|libexiv2")


class GoldenTest(ProgramTest):
    maxDiff = None

    def test_real_photos_read_as_recorded(self):
        photos = (GOLDEN / "photos.txt").read_text().split()
        self.assertGreaterEqual(len(photos), 20)
        for photo in photos:
            for command in ("rows", "share"):
                with self.subTest(photo=photo, command=command):
                    result = self.run_exifcard(command, str(DATA / photo))
                    self.assertEqual((result.status, result.errors), (0, b""))
                    recorded = (GOLDEN / f"{photo}.{command}.txt").read_text()
                    self.assertEqual(result.text.splitlines(), recorded.splitlines())


class RowsTest(ProgramTest):
    def test_the_record_has_every_value_under_its_name(self):
        found, = self.answer("rows", "--keys", "Model,GPS,GPSSpeed,FocalLength,Flash,PixelWidth,CameraMakeAndModel",
                             ELEPHANTS)
        self.assertEqual(list(found), ["file", "record", "rows"])
        # As an independent reader of metadata tells it.
        self.assertEqual(found["record"], {
            "exifInfoAvailable": True, "exifORTiffInfoAvailable": True, "gpsInfoAvailable": True,
            "isScreenShot": False, "mediaType": 0, "dimensions": [497, 331], "iSOSpeed": 200,
            "shutterSpeedExposureTimeInSeconds": 0.0015625, "aperture_fStop": 10, "focalLengthInmm": 111,
            "flashStatusCode": 16, "cameraModel": "Canon EOS 6D", "dateTaken": "2013-11-26T15:53:55+00:00",
            "fileSizeInBytes": os.path.getsize(ELEPHANTS), "duration": 0, "framesPerSecondValue": 0,
            "location": {"latitude": -33.45347, "longitude": 25.764645, "altitude": 190.2, "speed": 0, "course": 0},
            "keywords": [],
        })
        names = ["uniqueID", "key", "value", "keyWithUnit", "raw", "icon"]
        rows = {row["uniqueID"]: row for row in found["rows"]}
        self.assertEqual(list(rows["Model"]), names)
        self.assertEqual(list(rows["Model"].values()), ["Model", "Model", "Canon EOS 6D", None, None, None])
        self.assertEqual(rows["GPS"]["value"], "-33.453470° 25.764645°")
        self.assertIsNotNone(rows["GPSSpeed"]["keyWithUnit"])
        self.assertIsNotNone(rows["FocalLength"]["raw"])
        self.assertIsNotNone(rows["Flash"]["icon"])
        self.assertEqual(rows["PixelWidth"], {"uniqueID": "PixelWidth", "kind": "raw", "value": 497})
        self.assertEqual(list(rows["CameraMakeAndModel"].values())[1:], [None] * 5)

    def test_the_date_is_told_in_the_local_zone(self):
        found, = self.answer("rows", "--keys", "Make", ELEPHANTS, TZ="Africa/Johannesburg")
        self.assertEqual(found["record"]["dateTaken"], "2013-11-26T15:53:55+02:00")

    def test_lists_and_keys_choose_the_rows(self):
        every = [entry["key"] for entry in self.answer("keys")]
        card = [entry["key"] for entry in self.answer("fields", "show")]
        cases = [
            ([], card),
            (["--list", "share"], [entry["key"] for entry in self.answer("fields", "show", "--list", "share")]),
            (["--list", "edit-video"], ["DateTaken", "GPS"]),
            (["--keys", "GPS,,Make"], ["GPS", "Make"]),
            (["--all-keys"], ["MapView" if key == "Map" else key for key in every]),  # Map answers that row.
        ]
        self.assertEqual((len(every), len(card)), (85, 62))
        for options, keys in cases:
            with self.subTest(options=options):
                found, = self.answer("rows", *options, ELEPHANTS)
                self.assertEqual([row["uniqueID"] for row in found["rows"]], keys)
        unknown = self.run_exifcard("rows", "--keys", "Make,Nonsense", ELEPHANTS)
        self.assertEqual((unknown.status, unknown.output), (2, b""))
        self.assertEqual(unknown.error_lines, ["exifcard: there is no field Nonsense; exifcard keys lists them"])

    def test_a_video_has_a_list_of_its_own(self):
        video = str(DATA / "videos/synthetic-keys.mov")
        found, photo = self.answer("rows", video, ELEPHANTS)
        listed = [entry["key"] for entry in self.answer("fields", "show", "--list", "card-video")]
        self.assertEqual([row["uniqueID"] for row in found["rows"]], listed)
        self.assertEqual(len(photo["rows"]), 62)
        self.assertEqual(found["record"]["location"]["latitude"], -22.9519)
        sent, = self.answer("send", video, "--to", "Ann")
        self.assertEqual(sent["message"]["image"]["width"], 320)
        shared = self.run_exifcard("share", video)
        self.assertIn("iPhone 12 mini", shared.text)

    def test_a_screen_decides_what_is_a_screenshot(self):
        picture = str(DATA / "mwg.jpg")
        for screen, is_screenshot in (("8x8@1", True), ("4x4@2", True), ("390x844@3", False)):
            found, = self.answer("rows", "--keys", "Make", "--screen", screen, picture)
            self.assertEqual(found["record"]["isScreenShot"], is_screenshot, screen)

    def test_debug_lines_come_only_when_they_are_wanted(self):
        self.assertEqual(self.run_exifcard("rows", ELEPHANTS).errors, b"")
        wanted = self.run_exifcard("rows", "--log", "debug", ELEPHANTS)
        self.assertIn(b"exifinformationFromNSURL", wanted.errors)
        self.assertEqual(wanted.output, self.run_exifcard("rows", ELEPHANTS).output)

    def test_reading_rows_loads_no_heavy_library_and_opens_no_database(self):
        self.run_exifcard("rows", ELEPHANTS)  # Writes the settings file, which takes its library.
        result = self.run_exifcard("rows", ELEPHANTS, LD_DEBUG="libs")
        self.assertEqual(result.status, 0)
        loaded = result.errors.decode(errors="replace")
        self.assertIn("libc.so", loaded)  # The loader did tell what it loads.
        self.assertIsNone(HEAVY_LIBRARIES.search(loaded))
        nikon = self.run_exifcard("rows", DATA / "nikon-d70-makernote.jpg", LD_DEBUG="libs")
        self.assertIn(b"libexiv2", nikon.errors)  # Whose notes are no plain directories.
        self.assertFalse((self.home / "data").exists())

    def test_a_second_start_leaves_the_settings_file_alone(self):
        def state():
            return {path: (path.stat().st_mtime_ns, path.stat().st_ino, path.read_bytes())
                    for path in (self.home / "config").rglob("*") if path.is_file()}

        self.run_exifcard("rows", ELEPHANTS)
        before = state()
        self.assertTrue(before)
        for command in ("rows", "share"):
            self.assertEqual(self.run_exifcard(command, ELEPHANTS).status, 0)
        self.assertEqual(state(), before)


class MemoryTest(ProgramTest):
    def test_memory_does_not_grow_with_the_number_of_files(self):
        def peak(count):
            names = b"\0".join([os.fsencode(ELEPHANTS)] * count)
            process = subprocess.Popen([PROGRAM, "rows", "--json", "-0"], stdin=subprocess.PIPE,
                                       stdout=subprocess.DEVNULL, env=self.environment)
            with process.stdin:
                process.stdin.write(names)
            _, status, usage = os.wait4(process.pid, 0)
            process.returncode = os.waitstatus_to_exitcode(status)
            self.assertEqual(process.returncode, 0)
            return usage.ru_maxrss

        self.assertLess(peak(2000), 1.1 * peak(200))


if __name__ == "__main__":
    unittest.main()
