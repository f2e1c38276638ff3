"""What the shell sees of the command line itself: help, version, wrong usage, completion."""

import subprocess
import unittest

from support import PROGRAM, TIMEOUT_IN_SECONDS, ProgramTest

COMPLETE = r"""
source <("$PROGRAM" completion bash)
COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); COMPREPLY=()
compopt() { echo "files"; }
_exifcard
printf '%s\n' "${COMPREPLY[@]}"
"""


class UsageTest(ProgramTest):
    def commands(self):
        """Every command with its subcommands, as the help lists them."""
        found = []
        waiting = [()]
        while waiting:
            command = waiting.pop()
            found.append(command)
            text = self.run_exifcard(*command, "--help").text
            if "\nCommands:\n" in text:
                section = text.split("\nCommands:\n")[1].split("\n\n")[0]
                waiting += [(*command, line.split()[0]) for line in section.splitlines() if line.startswith("  ")]
        return found

    def test_every_command_has_help_with_usage_and_examples(self):
        commands = self.commands()
        self.assertIn(("properties",), commands)
        for command in commands:
            with self.subTest(command=command):
                result = self.run_exifcard(*command, "--help")
                self.assertEqual((result.status, result.errors), (0, b""))
                self.assertIn(f"\nUsage: {' '.join(('exifcard', *command))} ", result.text)
                examples = result.text.split("\nExamples:\n")[1]
                self.assertIn(f"exifcard {' '.join(command)}", examples)

    def test_wrong_usage_is_told_in_one_line_and_does_nothing(self):
        cases = [
            ((), "a command is missing; see exifcard --help"),
            (("frob",), "there is no frob; see exifcard --help"),
            (("properties",), "which files?"),
            (("properties", "a.jpg", "--frob"), "The following argument was not expected: --frob; "
                                               "see exifcard properties --help"),
            (("properties", "a.jpg", "--screen", "0x0"), "--screen: is no screen such as 390x844@3: 0x0; "
                                                        "see exifcard properties --help"),
            (("properties", "a.jpg", "--jobs", "0"), "--jobs: Value 0 not in range 1 to 64; "
                                                    "see exifcard properties --help"),
            (("properties", "a.jpg", "--log", "loud"), "--log: loud not in {debug,debug=system}; "
                                                      "see exifcard properties --help"),
            (("conversation", "Ann", "--send", "--discard"), "--send excludes --discard; "
                                                            "see exifcard conversation --help"),
            (("conversation", ""), "NAME: a conversation's name cannot be empty; "
                                   "see exifcard conversation --help"),
        ]
        for arguments, message in cases:
            with self.subTest(arguments=arguments):
                result = self.run_exifcard(*arguments)
                self.assertEqual((result.status, result.output), (2, b""))
                self.assertEqual(result.error_lines, [f"exifcard: {message}"])
                self.assertEqual(list(self.home.iterdir()), [])

    def test_the_version_is_told(self):
        result = self.run_exifcard("--version")
        self.assertEqual(result.status, 0)
        self.assertRegex(result.text, r"^exifcard \d+\.\d+\.\d+\n$")


class CompletionTest(ProgramTest):
    def complete(self, *words):
        """What bash offers for the last word."""
        completed = subprocess.run(["bash", "-c", COMPLETE, "bash", *words], capture_output=True, text=True,
                                   env={**self.environment, "PROGRAM": PROGRAM}, timeout=TIMEOUT_IN_SECONDS, check=True)
        self.assertEqual(completed.stderr, "")
        return completed.stdout.split()

    def test_bash_completes_commands_options_and_their_values(self):
        cases = [
            (("exifcard", "conv"), ["conversation", "conversations"]),
            (("exifcard", "conversation", "--s"), ["--screen", "--send"]),
            (("exifcard", "completion", ""), ["bash", "zsh", "fish"]),
            (("exifcard", "--json", "completion", "z"), ["zsh"]),
            (("exifcard", "properties", "--log", ""), ["debug", "debug=system"]),
            (("exifcard", "properties", "--log", "=", "debug="), ["debug=system"]),
            (("exifcard", "properties", "--nu"), ["files", "--null"]),
            (("exifcard", "properties", "photo"), ["files"]),
            (("exifcard", "conversations", ""), []),
        ]
        for words, offered in cases:
            with self.subTest(words=words):
                self.assertCountEqual(self.complete(*words), offered)

    def test_every_script_is_one_that_its_shell_reads(self):
        for shell in ("bash", "zsh", "fish"):
            script = self.run_exifcard("completion", shell)
            self.assertEqual(script.status, 0)
            for word in ("properties", "conversation", "discard"):
                self.assertIn(word, script.text)
        subprocess.run(["bash", "-n"], input=self.run_exifcard("completion", "bash").output, check=True)


if __name__ == "__main__":
    unittest.main()
