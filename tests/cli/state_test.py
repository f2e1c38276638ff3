"""What is kept from one run to the next: settings, the order of fields, conversations."""

import os
import pathlib
import plistlib
import unittest

from support import DATA, ProgramTest

ELEPHANTS = str(DATA / "canon-6d-elephants.jpg")
PORTRAIT = str(DATA / "apple-iphone4s-lens.jpg")


class SettingsTest(ProgramTest):
    def change(self, *arguments):
        result = self.run_exifcard(*arguments)
        self.assertEqual((result.status, result.output, result.errors), (0, b"", b""))

    def setting(self, key):
        return next(entry for entry in self.answer("settings", "list") if entry["key"] == key)

    def test_a_value_is_stored_answered_and_dropped(self):
        key = "datePreference24HourFormat"
        self.assertEqual(self.setting(key), {"key": key, "stored": None, "value": False, "default": False})
        self.change("settings", "set", key, "yes")
        self.assertEqual(self.setting(key), {"key": key, "stored": True, "value": True, "default": False})
        self.assertEqual(self.run_exifcard("settings", "get", key).text, "true\n")
        self.assertEqual(self.answer("settings", "get", key), [True])
        suite, = (self.home / "config" / "exifcard").glob("group.*.plist")
        self.assertIs(plistlib.loads(suite.read_bytes())[key], True)
        self.change("settings", "set", "sortByKeyValue", "1")
        self.change("settings", "reset", key)
        self.assertIsNone(self.setting(key)["stored"])
        self.assertEqual(self.setting("sortByKeyValue")["stored"], 1)
        self.change("settings", "reset")
        self.assertIsNone(self.setting("sortByKeyValue")["stored"])

    def test_some_getters_answer_a_constant_whatever_is_stored(self):
        self.change("settings", "set", "tavolinViewType", "3")
        self.assertEqual(self.setting("tavolinViewType"),
                         {"key": "tavolinViewType", "stored": 3, "value": 1, "default": 1})

    def test_settings_reach_the_rows(self):
        row = ("rows", "--json", "--keys", "DateTaken", ELEPHANTS)
        self.assertIn("03:53:55 PM", self.run_exifcard(*row).text)
        self.change("settings", "set", "dateFormatString", "yyyy hh:mm")
        self.change("settings", "set", "datePreference24HourFormat", "true")
        self.assertIn('"2013 15:53"', self.run_exifcard(*row).text)

    def test_what_does_not_fit_is_refused(self):
        cases = [
            (("set", "isDarkModeOn", "perhaps"), "perhaps does not fit the setting isDarkModeOn"),
            (("set", "mapType", "-1"), "-1 does not fit the setting mapType"),
            (("get", "nonsense"), "KEY: there is no setting nonsense; see exifcard settings get --help"),
        ]
        for arguments, message in cases:
            with self.subTest(arguments=arguments):
                result = self.run_exifcard("settings", *arguments)
                self.assertEqual((result.status, result.error_lines), (2, [f"exifcard: {message}"]))

    def test_a_folder_that_cannot_be_written_is_told(self):
        (self.home / "config").write_bytes(b"a file where the folder should be")
        result = self.run_exifcard("settings", "set", "mapType", "2")
        self.assertEqual(result.status, 1)
        self.assertRegex(result.error_lines[-1], r"^exifcard: cannot store mapType in .*\.plist$")


class FieldsTest(ProgramTest):
    def keys(self, *options):
        return [entry["key"] for entry in self.answer("fields", "show", *options)]

    def row_keys(self):
        found, = self.answer("rows", ELEPHANTS)
        return [row["uniqueID"] for row in found["rows"]]

    def test_moving_and_hiding_change_what_cards_show(self):
        first = self.keys()
        self.run_exifcard("fields", "move", "GPS", "--to", "1")
        self.run_exifcard("fields", "move", "ApertureValue", "--to", "3")
        self.assertEqual(self.keys()[:3], ["GPS", "ISOSpeedRatings", "ApertureValue"])
        self.assertCountEqual(self.keys(), first)
        self.run_exifcard("fields", "hide", "GPS")
        self.assertEqual(self.answer("fields", "show")[0], {"key": "GPS", "isHidden": True})
        self.assertEqual(self.row_keys()[:2], ["ISOSpeedRatings", "ApertureValue"])
        self.run_exifcard("fields", "unhide", "GPS")
        self.assertEqual(self.row_keys()[0], "GPS")
        self.run_exifcard("fields", "reset")
        self.assertEqual(self.row_keys(), first)

    def test_a_list_is_changed_alone(self):
        card = self.keys()
        self.run_exifcard("fields", "hide", "Make", "--list", "share")
        text = self.run_exifcard("share", ELEPHANTS).text.splitlines()
        self.assertNotIn("Canon", text)
        self.assertIn("Canon EOS 6D", text)
        self.assertEqual(self.row_keys(), card)
        self.assertEqual({entry["list"]: entry["hidden"] for entry in self.answer("fields", "list")},
                         {"card": 0, "card-video": 0, "share": 1, "edit": 0, "edit-video": 0})

    def test_a_stored_key_that_is_no_field_is_left_out_with_a_line(self):
        self.run_exifcard("settings", "list")
        self.run_exifcard("fields", "list")
        suite, = (self.home / "config" / "exifcard").glob("group.*.plist")
        stored = plistlib.loads(suite.read_bytes())
        for key in ("exifKeysOrderedArray", "exifKeysOrderedArray_FOR_SHARE"):
            archive = plistlib.loads(stored[key])
            archive["$objects"][archive["$objects"].index("Make")] = "Retired"
            stored[key] = plistlib.dumps(archive, fmt=plistlib.FMT_BINARY)
        suite.write_bytes(plistlib.dumps(stored))
        line = "exifcard: a stored list of fields names 1 that are none; they are left out"
        for command in (("rows",), ("rows", "--list", "share"), ("share",)):
            with self.subTest(command=command):
                result = self.run_exifcard(*command, ELEPHANTS)
                self.assertEqual((result.status, set(result.error_lines)), (0, {line}))
                self.assertIn("Canon EOS 6D", result.text)
                self.assertNotIn("Retired", result.text)
        self.assertIn("Retired", self.run_exifcard("fields", "show").text)

    def test_what_a_list_does_not_have_is_refused(self):
        cases = [
            (("hide", "Nonsense"), "the list card has no field Nonsense"),
            (("hide", "Make", "--list", "edit-video"), "the list edit-video has no field Make"),
            (("move", "Make", "--to", "63"), "--to: the list card has the places 1 to 62"),
            (("move", "Make", "--to", "0"), "--to: the list card has the places 1 to 62"),
        ]
        for arguments, message in cases:
            with self.subTest(arguments=arguments):
                result = self.run_exifcard("fields", *arguments)
                self.assertEqual((result.status, result.error_lines), (2, [f"exifcard: {message}"]))


class ConversationTest(ProgramTest):
    def entries(self, *options):
        found, = self.answer("conversation", "Ann", *options)
        self.assertEqual(found["conversation"], "Ann")
        return found["entries"]

    def test_a_sent_photo_waits_with_its_text_and_goes_out(self):
        sent, = self.answer("send", ELEPHANTS, "--to", "Ann")
        self.assertEqual(list(sent), ["file", "conversation", "message", "text"])
        message, text = self.entries()
        self.assertEqual(message, sent["message"])
        self.assertEqual(list(message), ["kind", "state", "imageTitle", "imageSubtitle", "caption", "trailingCaption",
                                         "subcaption", "trailingSubcaption", "url", "image"])
        gap = " " * 8  # A landscape picture.
        self.assertEqual(message["caption"], gap.join(["f/10.0", "1/640 seconds", "ISO 200", "111mm"]))
        self.assertEqual((message["state"], message["subcaption"]), ("pending", "Canon EOS 6D"))
        self.assertEqual((message["image"]["width"], message["image"]["height"]), (497, 331))
        self.assertTrue(pathlib.Path(message["image"]["file"]).read_bytes().startswith(b"\xff\xd8"))
        share, = self.answer("share", ELEPHANTS)
        self.assertEqual(text, {"kind": "text", "state": "pending", "text": share["text"]})
        self.assertEqual([entry["state"] for entry in self.entries("--send")], ["sent", "sent"])
        self.assertEqual(self.answer("conversations"), [{"conversation": "Ann"}])

    def test_a_new_photo_takes_the_place_of_the_one_that_waits(self):
        self.run_exifcard("settings", "set", "includeExifAsTextOniMessageApp", "false")
        self.answer("send", ELEPHANTS, "--to", "Ann")
        sent, = self.answer("send", PORTRAIT, "--to", "Ann")
        self.assertIsNone(sent["text"])
        waiting, = self.entries()
        self.assertEqual(waiting["subcaption"], "iPhone 4S")
        self.assertEqual(self.entries("--discard"), [])
        self.assertFalse(os.path.exists(waiting["image"]["file"]))

    def test_several_photos_are_sent_at_once_or_not_at_all(self):
        refused = self.run_exifcard("send", ELEPHANTS, PORTRAIT, "--to", "Ann")
        self.assertEqual(refused.status, 2)
        self.assertFalse((self.home / "data").exists())
        result = self.run_exifcard("send", "--json", "--now", "--to", "Ann", ELEPHANTS, "missing.jpg", PORTRAIT)
        self.assertEqual(result.status, 1)
        self.assertEqual([entry.get("error") for entry in result.objects], [None, "no such file", None])
        kinds = [(entry["kind"], entry["state"]) for entry in self.entries()]
        self.assertEqual(kinds, [("message", "sent"), ("text", "sent")] * 2)

    def test_people_see_bubbles(self):
        text = self.run_exifcard("send", ELEPHANTS, "--to", "Ann").text
        self.assertIn("Canon EOS 6D", text)
        self.assertIn("waits in the input field", text)
        self.assertEqual(self.run_exifcard("conversation", "Ann").text, text)


if __name__ == "__main__":
    unittest.main()
