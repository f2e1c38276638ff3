"""Many files at once: order, lists on standard input, and one clear line for each that cannot be read."""

import base64
import os
import pty
import shutil
import subprocess
import unittest

from support import DATA, PROGRAM, ProgramTest

PHOTO = str(DATA / "mwg.jpg")
OTHER_PHOTO = str(DATA / "canon-6d-elephants.jpg")


class FilesTest(ProgramTest):
    def make(self, name, content=b""):
        path = self.home / name
        path.write_bytes(content)
        return str(path)

    def test_results_come_in_the_order_of_the_input_with_any_number_of_jobs(self):
        names = []
        for number in range(300):
            names.append(str(self.home / f"{number}.jpg"))
            os.symlink(OTHER_PHOTO if number % 7 else PHOTO, names[-1])
        for jobs in ("1", "2", "16"):
            objects = self.answer("properties", "--jobs", jobs, *names)
            self.assertEqual([entry["file"] for entry in objects], names)
            self.assertEqual([entry["properties"]["PixelWidth"] for entry in objects],
                             [497 if number % 7 else 8 for number in range(300)])

    def test_standard_input_names_files(self):
        names = [PHOTO, str(self.home / "new\nline.jpg"), OTHER_PHOTO]
        shutil.copy(PHOTO, names[1])
        by_line = self.answer("properties", PHOTO, "-",
                              given=f"{OTHER_PHOTO}\n\n{PHOTO}".encode())
        self.assertEqual([entry["file"] for entry in by_line], [PHOTO, OTHER_PHOTO, PHOTO])
        by_nul = self.answer("properties", "-0", given="\0".join(names).encode())
        self.assertEqual([entry["file"] for entry in by_nul], names)

    def test_a_name_without_end_is_refused_and_the_next_one_read(self):
        result = self.run_exifcard("--json", "properties", "-", given=b"x" * 3_000_000 + b"\n" + PHOTO.encode())
        self.assertEqual([len(entry["file"]) for entry in result.objects], [4096, len(PHOTO)])
        self.assertEqual([entry.get("error") for entry in result.objects], ["File name too long", None])

    def test_what_cannot_be_read_is_told_in_one_line_and_the_rest_is_done(self):
        os.mkfifo(self.home / "pipe.jpg")
        os.symlink("loop", self.home / "loop")
        cases = {
            str(self.home / "missing.jpg"): "no such file",
            str(self.home): "is a folder",
            str(self.home / "pipe.jpg"): "is a pipe",
            "/dev/null": "is a device",
            str(self.home / "loop"): "Too many levels of symbolic links",
            self.make("empty.jpg"): "is empty",
            self.make("text.jpg", b"no picture at all"): "is not an image or a video",
            self.make("header.jpg", b"\xff\xd8\xff\xe0\x00\x10JFIF"): "is damaged or cut short",
        }
        result = self.run_exifcard("properties", *cases, PHOTO)
        self.assertEqual(result.status, 1)
        self.assertEqual(result.error_lines,
                         [f"exifcard: cannot read {name}: {cause}" for name, cause in cases.items()])
        self.assertIn("PixelWidth", result.text)

        result = self.run_exifcard("properties", "--json", *cases, PHOTO)
        self.assertEqual((result.status, result.errors), (1, b""))
        self.assertEqual(result.objects[:-1], [{"file": name, "error": cause} for name, cause in cases.items()])
        self.assertEqual(result.objects[-1]["file"], PHOTO)

    def test_a_name_that_is_no_text_is_given_as_bytes(self):
        name = os.fsencode(self.home) + b"/\xe4.jpg"
        shutil.copy(PHOTO, name)
        found = self.answer("properties", name)
        self.assertEqual(base64.b64decode(found[0]["fileBytes"]), name)
        self.assertIsNone(found[0]["file"])
        missing = self.run_exifcard("properties", name + b"\x1b[31m")
        self.assertIn("\ufffd.jpg\u241b[31m: no such file", missing.error_lines[0])

    def test_results_that_cannot_be_written_make_the_run_fail(self):
        with open("/dev/full", "wb") as full:
            completed = subprocess.run([PROGRAM, "properties", PHOTO], stdout=full, stderr=subprocess.PIPE,
                                       env=self.environment, check=False)
        self.assertEqual(completed.returncode, 1)
        self.assertEqual(completed.stderr, b"exifcard: cannot write the results: No space left on device\n")

    def on_terminal(self, *arguments, **environment):
        """What the program writes to a terminal."""
        leader, follower = pty.openpty()
        environment = {**self.environment, "TERM": "xterm", **environment}
        with subprocess.Popen([PROGRAM, *arguments], stdout=follower, env=environment) as process:
            os.close(follower)
            written = b""
            try:
                while chunk := os.read(leader, 4096):
                    written += chunk
            except OSError:
                pass  # The end of a terminal without writers.
            os.close(leader)
        self.assertEqual(process.returncode, 0)
        return written

    def test_colour_is_for_terminals_that_want_it(self):
        self.assertIn(b"\x1b[", self.on_terminal("properties", PHOTO))
        for arguments, environment in [
            (("--color=never",), {}),
            (("--json",), {}),
            ((), {"NO_COLOR": "1"}),
            ((), {"TERM": "dumb"}),
        ]:
            with self.subTest(arguments=arguments, environment=environment):
                written = self.on_terminal("properties", PHOTO, *arguments, **environment)
                self.assertNotIn(b"\x1b", written)
        self.assertNotIn(b"\x1b", self.run_exifcard("properties", PHOTO).output)
        self.assertIn(b"\x1b[", self.run_exifcard("properties", PHOTO, "--color").output)


if __name__ == "__main__":
    unittest.main()
