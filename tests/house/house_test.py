"""The order of the house holds, and whoever breaks it is told."""

import pathlib
import sys
import tempfile
import unittest

import house

PROJECT = pathlib.Path(sys.argv.pop())


class HouseTest(unittest.TestCase):
    def faults_of(self, files):
        """The faults of a project made of `files`, a map from path to content."""
        with tempfile.TemporaryDirectory() as folder:
            for path, content in files.items():
                file = pathlib.Path(folder, path)
                file.parent.mkdir(parents=True, exist_ok=True)
                file.write_text(content, encoding="utf-8")
            return house.faults(pathlib.Path(folder))

    def test_this_project_keeps_the_order(self):
        self.assertEqual(house.faults(PROJECT), [])
        self.assertTrue(list((PROJECT / "src").rglob("*.h")), "there is something to read")

    def test_bad_includes_are_told(self):
        cases = [
            ("platform/foundation/A.h", '"platform/uivalues/B.h"', "platform/foundation may not use platform/uivalues"),
            ("platform/messages/A.h", '"platform/photos/B.h"', "platform/messages may not use platform/photos"),
            ("platform/photos/A.h", '"platform/messages/B.h"', "platform/photos may not use platform/messages"),
            ("metadata/A.cpp", '"library/B.h"', "metadata may not use library"),
            ("cli/A.cpp", '"platform/uikit/B.h"', "cli may not use platform/uikit"),
            ("appearance/A.h", '"appearance/uikit/B.h"', "appearance may not use appearance/uikit"),
            ("hud/A.h", '"interaction/B.h"', "hud may not use interaction"),
            ("library/A.cpp", "<exiv2/exiv2.hpp>", "<exiv2/exiv2.hpp>: a third party above platform/"),
            ("library/A.cpp", "<fmt/format.h>", "<fmt/format.h>: a third party above platform/"),
            ("cli/A.cpp", "<unicode/uchar.h>", "<unicode/uchar.h>: a third party above platform/"),
            ("platform/imageio/A.h", "<QImage>", "<QImage>: no Qt below platform/uikit"),
            ("cli/A.cpp", "<QtGlobal>", "<QtGlobal>: no Qt below platform/uikit"),
            ("sending/A.cpp", '"sending/Missing.h"', '"sending/Missing.h" is no file of src/'),
        ]
        for path, included, fault in cases:
            with self.subTest(path=path, included=included):
                files = {f"src/{path}": f"#pragma once\n  #  include {included}\n"}
                if included.startswith('"') and "Missing" not in included:
                    files["src/" + included.strip('"')] = "#pragma once\n"
                self.assertEqual(self.faults_of(files), [f"src/{path}:2: {fault}"])

    def test_what_is_allowed_passes(self):
        cases = [
            ("platform/imageio/A.cpp", "<exiv2/exiv2.hpp>"),
            ("platform/imageio/pixels/A.cpp", '"platform/imageio/B.h"'),
            ("platform/photos/A.h", '"platform/corelocation/B.h"'),
            ("cli/A.cpp", "<fmt/format.h>"),
            ("cli/A.cpp", '"sending/B.h"'),
            ("cards/A.cpp", "<QtWidgets/QWidget>"),
            ("cards/A.cpp", '"ui_A.h"'),
            ("sending/A.cpp", "<vector>"),
            ("sending/A.cpp", "<sys/stat.h>"),
            ("host/A.cpp", '"metadata/B.h"'),
        ]
        for path, included in cases:
            with self.subTest(path=path, included=included):
                files = {f"src/{path}": f"#include {included}\n"}
                if included.startswith('"') and not included.startswith('"ui_'):
                    files["src/" + included.strip('"')] = "#pragma once\n"
                self.assertEqual(self.faults_of(files), [])

    def test_a_file_outside_the_rooms_and_a_long_file_are_told(self):
        found = self.faults_of({
            "src/attic/A.h": "",
            "src/settings/B.h": "\n" * 151,
            "src/settings/B.cpp": "\n" * 500,
            "tests/settings/BTest.cpp": "\n" * 501,
        })
        self.assertEqual(found, [
            "src/attic/A.h: lies in no room of the house",
            "src/settings/B.h: 151 lines, 150 are the most",
            "tests/settings/BTest.cpp: 501 lines, 500 are the most",
        ])


if __name__ == "__main__":
    unittest.main()
