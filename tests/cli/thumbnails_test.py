"""What the command for thumbnails makes, and what it leaves alone."""

import os
import pathlib
import unittest

from support import DATA, ProgramTest

CORNERS = str(DATA / "pixels/corners.jpg")
JPEG_START = b"\xff\xd8\xff"
PNG_START = b"\x89PNG\r\n\x1a\n"


class ThumbnailTest(ProgramTest):
    def make(self, *arguments):
        return self.run_exifcard("thumbnail", *arguments)

    def test_photos_videos_and_raw_files_become_small_upright_pictures(self):
        folder = self.home / "thumbnails"
        names = ["canon-6d-elephants.jpg", "pentax-k3ii.avif", "pixels/corners-turned-right.heic",
                 "raw/corners-turned-right.dng", "videos/corners-turned-right.mov"]
        sizes = [(100, 67), (100, 63), (48, 64), (75, 100), (48, 64)]  # Upright, and none enlarged.
        for name, size in zip(names, sizes):
            with self.subTest(name=name):
                found, = self.answer("thumbnail", "--force", "--size", "100", str(DATA / name), "-o", f"{folder}/")
                self.assertEqual(list(found), ["file", "output", "width", "height"])
                self.assertEqual((found["width"], found["height"]), size)
                path = folder / f"{pathlib.Path(name).stem}.jpg"
                self.assertEqual(found["output"], str(path))
                self.assertTrue(path.read_bytes().startswith(JPEG_START))
                again, = self.answer("rows", "--keys", "Make", str(path))
                self.assertEqual(tuple(again["record"]["dimensions"]), size)

    def test_the_extension_tells_the_kind(self):
        for name, start in (("a.JPG", JPEG_START), ("a.jpeg", JPEG_START), ("a.png", PNG_START)):
            with self.subTest(name=name):
                path = self.home / name
                self.assertEqual(self.make(CORNERS, "-o", str(path)).status, 0)
                self.assertTrue(path.read_bytes().startswith(start))
        refused = self.make(CORNERS, "-o", str(self.home / "a.gif"))
        self.assertEqual(refused.status, 2)
        self.assertEqual(refused.error_lines, [f"exifcard: a thumbnail is a .jpg or a .png, not {self.home}/a.gif"])

    def test_nothing_is_overwritten_without_being_asked(self):
        path = self.home / "mine.jpg"
        path.write_bytes(b"mine")
        result = self.make(CORNERS, "-o", str(path))
        self.assertEqual((result.status, path.read_bytes()), (1, b"mine"))
        self.assertIn("is there already; --force replaces it", result.error_lines[0])
        self.assertEqual(self.make(CORNERS, "-o", str(path), "--force").status, 0)
        self.assertTrue(path.read_bytes().startswith(JPEG_START))
        self.assertEqual(os.listdir(self.home), ["mine.jpg"])  # No temporary file is left.

    def test_several_files_need_a_folder(self):
        refused = self.make(CORNERS, CORNERS, "-o", str(self.home / "a.jpg"))
        self.assertEqual((refused.status, os.listdir(self.home)), (2, []))
        self.assertIn("several thumbnails need a folder", refused.error_lines[0])

    def test_broken_files_get_one_line_each_and_the_rest_is_done(self):
        cut = self.home / "cut.dng"
        cut.write_bytes((DATA / "raw/corners-turned-right.dng").read_bytes()[:1000])
        broken = {
            str(DATA / "pixels/huge-dimensions.png"): "is damaged or cut short",
            str(DATA / "hostile-header.jpg"): "is damaged or cut short",
            str(DATA / "videos/sony-a7-xavc.mp4"): "is damaged or cut short",
            str(DATA / "videos/hostile-mp4.mp4"): "is not an image or a video",
            str(DATA / "panasonic-lx3.rw2"): "is damaged or cut short",
            str(cut): "is damaged or cut short",
            str(self.home / "missing.jpg"): "no such file",
        }
        result = self.make(*broken, CORNERS, "-o", str(self.home / "made") + "/")
        self.assertEqual(result.status, 1)
        self.assertEqual(result.error_lines, [
            f"exifcard: cannot make a thumbnail of {name}: {cause}" for name, cause in broken.items()])
        self.assertEqual(os.listdir(self.home / "made"), ["corners.jpg"])


if __name__ == "__main__":
    unittest.main()
