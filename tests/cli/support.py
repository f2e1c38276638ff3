"""Runs the built program in a home of its own."""

import json
import os
import pathlib
import subprocess
import tempfile
import unittest

PROGRAM = os.environ["EXIFCARD_PROGRAM"]
DATA = pathlib.Path(os.environ["EXIFCARD_TEST_DATA"])
# Long enough for the slowest machine: a program that waits for ever fails instead of hanging the tests.
TIMEOUT_IN_SECONDS = 100


class Result:
    """What a run left: exit status, standard output and standard error."""

    def __init__(self, completed):
        self.status = completed.returncode
        self.output = completed.stdout
        self.errors = completed.stderr

    @property
    def text(self):
        return self.output.decode("utf-8")

    @property
    def error_lines(self):
        return self.errors.decode("utf-8").splitlines()

    @property
    def objects(self):
        """The JSON objects, one a line."""
        return [json.loads(line) for line in self.text.splitlines()]


class ProgramTest(unittest.TestCase):
    def setUp(self):
        home = tempfile.TemporaryDirectory()
        self.addCleanup(home.cleanup)
        self.home = pathlib.Path(home.name)
        self.environment = {
            "PATH": os.environ["PATH"],
            "HOME": str(self.home),
            "XDG_CONFIG_HOME": str(self.home / "config"),
            "XDG_DATA_HOME": str(self.home / "data"),
            "XDG_CACHE_HOME": str(self.home / "cache"),
            "TZ": "UTC",
            "LANG": "C",
        }
        for name, value in os.environ.items():
            if name.endswith("SAN_OPTIONS"):
                self.environment[name] = value

    def run_exifcard(self, *arguments, given=b"", **environment):
        """Runs `exifcard` with `given` on standard input."""
        return Result(subprocess.run(
            [PROGRAM, *arguments],
            input=given,
            capture_output=True,
            env={**self.environment, **environment},
            timeout=TIMEOUT_IN_SECONDS,
            check=False,
        ))

    def answer(self, *arguments, **options):
        """The objects that the command prints as JSON; it must succeed and be silent otherwise."""
        result = self.run_exifcard("--json", *arguments, **options)
        self.assertEqual((result.errors, result.status), (b"", 0))
        return result.objects
