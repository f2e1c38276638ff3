"""How folders come into the photo library and stay in step with it."""

import fcntl
import os
import random
import shutil
import sqlite3
import subprocess
import unittest

from support import DATA, PROGRAM, ProgramTest

ELEPHANTS = DATA / "canon-6d-elephants.jpg"


class LibraryTest(ProgramTest):
    def setUp(self):
        super().setUp()
        self.photos = self.home / "photos"
        self.photos.mkdir()

    def put(self, source, name):
        path = self.photos / name
        path.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(DATA / source, path)
        return path

    def take_in(self, *arguments):
        """Imports the photos' folder and answers what changed, as the summary counts it."""
        counts, = self.answer("import", *arguments, str(self.photos))
        return {name: count for name, count in counts.items() if count and name != "unchangedFiles"}

    def mark_as_drive(self, folder):
        """Makes the library know the folder as it does when a drive is mounted on it."""
        database = sqlite3.connect(self.home / "data" / "exifcard" / "library.sqlite")
        with database:
            changed = database.execute("UPDATE folders SET is_mount_point = 1 WHERE path = CAST(? AS BLOB)", (folder,))
            self.assertEqual(changed.rowcount, 1)
        database.close()

    def assets(self, *arguments):
        """The assets by the names of their files."""
        found = self.answer("list", *arguments)
        return {os.path.basename(asset["file"] or ""): asset for asset in found}

    def identifier(self, name):
        return self.assets()[name]["id"]


class ImportTest(LibraryTest):
    def test_each_file_comes_in_once_with_what_it_tells(self):
        self.put("canon-6d-elephants.jpg", "a/elephants.jpg")
        self.put("apple-iphone4s-lens.jpg", "panorama.jpg")
        self.put("videos/sample.3gp", "clip.3gp")
        self.assertEqual(self.take_in(), {"added": 3})
        assets = self.assets()
        self.assertEqual({name: (asset["mediaType"], asset["mediaSubtypes"], asset["width"], asset["height"],
                                 asset["created"]) for name, asset in assets.items()}, {
            "elephants.jpg": (1, 0, 497, 331, "2013-11-26T15:53:55+00:00"),
            "panorama.jpg": (1, 1, 102, 205, "2014-09-01T15:03:47+00:00"),
            "clip.3gp": (2, 0, 176, 144, "2005-10-28T17:36:40+00:00"),
        })
        self.assertRegex(assets["clip.3gp"]["id"], r"^[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}/L0/001$")
        self.assertEqual(self.take_in(), {})
        self.assertEqual(self.take_in(str(self.photos / "a"), str(self.photos)), {})
        self.assertEqual(len(self.assets()), 3)
        albums = {album["title"]: album["count"] for album in self.answer("albums") if album["kind"] == "folder"}
        self.assertEqual(albums, {"photos": 2, "a": 1})
        self.assertEqual(list(self.assets("--album", "a")), ["elephants.jpg"])

    def test_files_of_one_shot_are_one_asset(self):
        self.put("canon-6d-elephants.jpg", "live.jpg")
        self.put("videos/synthetic-keys.mov", "live.mov")
        self.put("leica-q2.jpg", "raw.jpg")
        self.put("nikon-d1.nef", "raw.nef")
        self.assertEqual(self.take_in(), {"added": 2})
        live = self.assets()["live.jpg"]
        self.assertEqual(live["mediaSubtypes"], 8)
        (self.photos / "live.mov").unlink()
        self.assertEqual(self.take_in(), {"changed": 1})
        self.assertEqual((self.identifier("live.jpg"), self.assets()["live.jpg"]["mediaSubtypes"]), (live["id"], 0))
        self.put("videos/synthetic-keys.mov", "live.mov")
        self.assertEqual(self.take_in(), {"changed": 1})
        raw = self.identifier("raw.jpg")
        (self.photos / "raw.jpg").unlink()
        self.take_in()
        self.assertEqual(self.identifier("raw.nef"), raw)

    def test_a_sidecar_under_either_name_tells_what_the_file_does_not(self):
        self.put("pixels/corners-grey.jpg", "one.jpg")
        self.put("pixels/corners.jpg", "two.jpg")
        packet = ("<x:xmpmeta xmlns:x='adobe:ns:meta/'><rdf:RDF"
                  " xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'><rdf:Description"
                  " xmlns:exif='http://ns.adobe.com/exif/1.0/' exif:DateTimeOriginal='2020-01-02T03:04:05+00:00'"
                  " exif:GPSLatitude='48,30N' exif:GPSLongitude='2,15W'/></rdf:RDF></x:xmpmeta>")
        (self.photos / "one.xmp").write_text(packet)
        (self.photos / "two.jpg.xmp").write_text(packet)
        self.take_in()
        for asset in self.answer("list"):
            self.assertEqual((asset["created"], asset["location"]),
                             ("2020-01-02T03:04:05+00:00", {"latitude": 48.5, "longitude": -2.25}))
        (self.photos / "one.xmp").write_text(packet.replace("2020-01", "2021-01"))
        self.assertEqual(self.take_in(), {"changed": 1})

    def test_an_asset_stays_itself_wherever_its_file_goes(self):
        path = self.put("canon-6d-elephants.jpg", "a.jpg")
        self.put("leica-q2.jpg", "b.jpg")
        self.take_in()
        identifier = self.identifier("a.jpg")
        self.run_exifcard("favourite", "on", identifier)
        self.run_exifcard("album", "create", "Mine")
        self.run_exifcard("album", "add", "Mine", identifier[:13])

        def moved(name):
            nonlocal path
            target = self.photos / name
            target.parent.mkdir(exist_ok=True)
            path = path.rename(target)

        def swapped():
            nonlocal path
            (self.photos / "b.jpg").rename(self.photos / "c.jpg")
            path = path.rename(self.photos / "b.jpg")
            (self.photos / "c.jpg").rename(self.photos / "d.jpg")

        steps = [
            ("renamed", lambda: moved("z.jpg"), {"moved": 1}),
            ("moved", lambda: moved("sub/z.jpg"), {"moved": 1}),
            ("over another", swapped, {"moved": 2}),
            ("edited", lambda: shutil.copy(DATA / "mwg.jpg", path), {"changed": 1}),
            ("gone", lambda: moved("../elsewhere.jpg"), {"vanished": 1}),
            ("back", lambda: moved("other/back.jpg"), {"returned": 1}),
        ]
        for name, change, expected in steps:
            with self.subTest(name):
                change()
                self.assertEqual(self.take_in(), expected)
                lists = [self.assets("--favourites"), self.assets("--album", "Mine")]
                known = [] if name == "gone" else [(path.name, identifier)]
                for found in lists:
                    self.assertEqual([(file, asset["id"]) for file, asset in found.items()], known)

    def test_a_copy_is_an_asset_of_its_own(self):
        self.put("canon-6d-elephants.jpg", "a.jpg")
        self.take_in()
        original = self.identifier("a.jpg")
        self.put("canon-6d-elephants.jpg", "copy.jpg")
        self.assertEqual(self.take_in(), {"added": 1})
        (self.photos / "a.jpg").rename(self.photos / "sub.jpg")
        self.assertEqual(self.take_in(), {"moved": 1})
        self.assertEqual(self.identifier("sub.jpg"), original)

    def test_an_unplugged_drive_forgets_nothing(self):
        self.put("canon-6d-elephants.jpg", "a.jpg")
        self.take_in()
        away = self.photos.rename(self.home / "away")
        for is_mount_point in (False, True):
            with self.subTest(is_mount_point=is_mount_point):
                if is_mount_point:
                    self.photos.mkdir()
                result = self.run_exifcard("import", str(self.photos))
                self.assertEqual(result.status, 1)
                self.assertEqual(len(result.error_lines), 1)
                self.assertEqual(len(self.answer("list")), 1)
        self.photos.rmdir()
        away.rename(self.photos)
        self.assertEqual(self.take_in(), {})

    def test_a_drive_below_the_folder_that_is_not_mounted_forgets_nothing(self):
        self.put("canon-6d-elephants.jpg", "drive/card/a.jpg")
        self.put("leica-q2.jpg", "drive/b.jpg")
        self.put("mwg.jpg", "c.jpg")
        self.put("nikon-d1.nef", "d.nef")
        self.take_in()
        self.mark_as_drive("drive")
        drive = self.photos / "drive"
        away = drive.rename(self.home / "away")
        (self.photos / "c.jpg").unlink()
        for is_there in (True, False):
            with self.subTest(is_there=is_there):
                if is_there:
                    drive.mkdir()
                result = self.run_exifcard("import", str(self.photos))
                self.assertEqual((result.status, result.error_lines), (1, [
                    f"exifcard: cannot read {drive}: is not mounted; what the library holds of it is kept"]))
                self.assertEqual([asset["file"] for asset in self.answer("list")].count(None), 2)
                if is_there:
                    drive.rmdir()
        away.rename(drive)
        self.assertEqual(self.take_in(), {})
        # It is a folder as any other from now on.
        shutil.rmtree(drive)
        self.assertEqual(self.take_in(), {"vanished": 2})

    def test_what_is_gone_for_good_is_forgotten_when_asked(self):
        self.put("canon-6d-elephants.jpg", "drive/a.jpg")
        self.put("leica-q2.jpg", "b.jpg")
        self.take_in()
        self.mark_as_drive("drive")
        identifier = self.identifier("a.jpg")
        self.run_exifcard("favourite", "on", identifier)
        (self.home / "link").symlink_to(self.photos)
        drive = self.photos / "drive"
        for name, place, typed, others in (("a drive below a root", drive, self.home / "link/drive", 1),
                                           ("a root", self.photos, self.photos, 0)):
            with self.subTest(name):
                away = place.rename(self.home / "away")
                forget = ["import", "--forget-missing", str(typed)]
                self.assertEqual([found["action"] for found in self.answer(*forget, "--dry-run")],
                                 ["gone"] * (2 - others))
                self.assertEqual(len(self.answer("list")), 2)
                self.assertEqual(self.answer(*forget)[0]["vanished"], 2 - others)
                self.assertEqual(len(self.answer("list")), others)
                self.assertEqual(self.run_exifcard(*forget).text, "Nothing to forget\n")
                self.assertEqual(self.run_exifcard("doctor").status, 0)
                if others:
                    self.assertEqual(self.take_in(), {})
                away.rename(place)
                self.assertEqual(self.take_in(), {"returned": 2 - others})
                self.assertEqual([asset["id"] for asset in self.answer("list", "--favourites")], [identifier])

    def test_only_what_is_not_there_is_forgotten(self):
        self.put("canon-6d-elephants.jpg", "a.jpg")
        self.take_in()
        self.assertEqual(self.run_exifcard("import", "--forget-missing", str(self.photos)).text,
                         "Nothing to forget\n")
        self.assertEqual(len(self.answer("list")), 1)
        strange = self.run_exifcard("import", "--forget-missing", str(self.home / "strange"))
        self.assertEqual((strange.status, strange.error_lines), (
            1, [f"exifcard: cannot read {self.home}/strange: is no folder of the library"]))

    def test_bad_files_are_told_and_the_rest_comes_in(self):
        self.put("canon-6d-elephants.jpg", "good.jpg")
        outside = self.home / "outside"
        outside.mkdir()
        shutil.copy(ELEPHANTS, outside / "secret.jpg")
        (self.photos / "loop").symlink_to(self.photos)
        (self.photos / "out").symlink_to(outside)
        (self.photos / "link.jpg").symlink_to(outside / "secret.jpg")
        os.mkfifo(self.photos / "pipe.jpg")
        (self.photos / "empty.jpg").touch()
        (self.photos / "text.jpg").write_text("no picture")
        shutil.copy(DATA / "leica-q2.jpg", os.fsencode(self.photos) + b"/\xff\xfe.jpg")
        result = self.run_exifcard("import", str(self.photos))
        self.assertEqual(result.status, 1)
        root = str(self.photos)
        self.assertEqual(sorted(result.error_lines), [
            f"exifcard: cannot read {root}/empty.jpg: is empty",
            f"exifcard: cannot read {root}/pipe.jpg: is a pipe",
            f"exifcard: cannot read {root}/text.jpg: is no picture, or is damaged",
        ])
        self.assertEqual(result.text, "2 added\n")
        self.assertEqual(len(self.answer("list")), 2)

    def test_a_damaged_catalogue_is_begun_anew_and_favourites_come_back(self):
        self.put("canon-6d-elephants.jpg", "a.jpg")
        self.put("leica-q2.jpg", "b.jpg")
        self.take_in()
        self.run_exifcard("favourite", "on", self.identifier("a.jpg"))
        self.assertEqual(self.run_exifcard("doctor").status, 0)
        for file in (self.home / "data" / "exifcard").glob("library.sqlite*"):
            file.write_bytes(b"no database" * 1000)
        self.assertEqual(self.run_exifcard("doctor").status, 1)
        result = self.run_exifcard("import", str(self.photos))
        self.assertEqual(result.status, 0, result.errors)
        self.assertEqual(list(self.assets("--favourites")), ["a.jpg"])
        self.assertEqual(len(self.assets()), 2)
        self.assertEqual(self.run_exifcard("doctor").status, 0)

    def test_a_catalogue_that_cannot_be_used_is_told_in_one_line_and_left_alone(self):
        self.put("canon-6d-elephants.jpg", "a.jpg")
        self.take_in()
        asset = self.identifier("a.jpg")
        folder = self.home / "data" / "exifcard"
        catalogue = folder / "library.sqlite"

        def execute(statement):
            database = sqlite3.connect(catalogue)
            database.execute(statement)
            database.close()

        def content():
            return {path.name: path.is_dir() or path.read_bytes() for path in folder.iterdir()
                    if not path.name.endswith((".lock", "-shm"))}

        for cause, spoil in (
                ("cannot be opened; check the rights of the file and its folder (Is a directory)", catalogue.mkdir),
                ("was written by a newer version", lambda: execute("PRAGMA user_version = 99")),
                ("is not this program's", lambda: execute("CREATE TABLE roots (other)"))):
            for path in folder.glob("library.sqlite*"):
                path.rename(folder / "kept") if path == catalogue else path.unlink()
            if "newer" in cause:
                shutil.copy(folder / "kept", catalogue)
            spoil()
            before = content()
            for command in (["list"], ["albums"], ["import", str(self.photos)], ["doctor"],
                            ["import", "--dry-run", str(self.photos)], ["favourite", "on", asset],
                            ["album", "create", "New"], ["album", "add", "New", asset], ["rows", asset],
                            ["share", asset], ["send", asset, "--to", "Ann"],
                            ["thumbnail", asset, "-o", str(self.home / "small.jpg")]):
                with self.subTest(cause=cause, command=command):
                    result = self.run_exifcard(*command)
                    said = result.output if command == ["doctor"] else result.errors
                    self.assertEqual((result.status, said.decode().count(f"{catalogue} {cause}")), (1, 1))
                    self.assertEqual(len(result.error_lines), 0 if command == ["doctor"] else 1)
            told = self.run_exifcard("--json", "rows", asset)
            self.assertEqual((told.status, told.errors), (1, b""))
            self.assertTrue(told.objects[0]["error"].startswith(f"{catalogue} {cause}"), told.objects)
            self.assertEqual(content(), before)
            if catalogue.is_dir():
                catalogue.rmdir()

    def test_a_dry_run_writes_nothing(self):
        self.put("canon-6d-elephants.jpg", "a.jpg")
        found = self.answer("import", "--dry-run", str(self.photos))
        self.assertEqual(found, [{"file": str(self.photos / "a.jpg"), "action": "new"}])
        self.assertFalse((self.home / "data").exists())

    def test_what_is_no_folder_is_told_apart_from_what_is_missing(self):
        file = self.put("canon-6d-elephants.jpg", "a.jpg")
        for path, cause in ((file, "is no folder"), (self.photos / "b", "no such folder")):
            for arguments in ([], ["--dry-run"]):
                with self.subTest(path=path, arguments=arguments):
                    result = self.run_exifcard("import", *arguments, str(path))
                    self.assertEqual(result.status, 1)
                    self.assertEqual(result.error_lines, [f"exifcard: cannot read {path}: {cause}"])

    def test_a_second_import_waits_for_the_first(self):
        self.put("canon-6d-elephants.jpg", "a.jpg")
        folder = self.home / "data" / "exifcard"
        folder.mkdir(parents=True)
        with open(folder / "import.lock", "w") as lock:
            fcntl.flock(lock, fcntl.LOCK_EX)
            second = subprocess.Popen([PROGRAM, "import", str(self.photos)], env=self.environment,
                                      stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
            self.assertIn("waiting for it to end", second.stderr.readline())
            self.assertIsNone(second.poll())
        self.assertEqual(second.communicate()[0], "1 added\n")

    def test_a_watch_sees_what_comes(self):
        self.take_in()
        watch = subprocess.Popen([PROGRAM, "--json", "watch"], env=self.environment,
                                 stdout=subprocess.PIPE, text=True)
        self.assertIn('"added":0', watch.stdout.readline())
        self.put("canon-6d-elephants.jpg", "new/a.jpg")
        self.assertIn('"added":1', watch.stdout.readline())
        (self.photos / "new").rename(self.photos / "old")
        self.assertIn('"moved":1', watch.stdout.readline())
        watch.terminate()
        self.assertEqual(watch.wait(), 0)
        watch.stdout.close()


class ListTest(LibraryTest):
    def test_lists_what_is_asked_for_in_that_order(self):
        self.put("canon-6d-elephants.jpg", "2013.jpg")
        self.put("apple-iphone4s-lens.jpg", "2014.jpg")
        self.put("videos/sample.3gp", "2005.3gp")
        self.take_in()
        for arguments, names in [
            ([], ["2014.jpg", "2013.jpg", "2005.3gp"]),
            (["--ascending"], ["2005.3gp", "2013.jpg", "2014.jpg"]),
            (["--where", "mediaType = 1 AND latitude < 0"], ["2013.jpg"]),
            (["--where", "location == NULL"], ["2005.3gp"]),
            (["--favourites"], []),
        ]:
            with self.subTest(arguments):
                self.assertEqual(list(self.assets(*arguments)), names)
        shown, = self.answer("list", "--rows", "--where", "filename = '2013.jpg'")
        self.assertEqual(shown["rows"]["record"]["cameraModel"], "Canon EOS 6D")

    def test_a_bad_condition_is_refused_with_its_place(self):
        self.take_in()
        result = self.run_exifcard("list", "--where", "mediaType = = 2")
        self.assertEqual(result.status, 2)
        self.assertEqual(result.error_lines[1:], ["  mediaType = = 2", "              ^"])
        for arguments in (["--where", "nothing = 3"], ["--page", "2"], ["--album", "None"], ["--sort", "size"]):
            with self.subTest(arguments):
                self.assertEqual(self.run_exifcard("list", *arguments).status, 2)

    def test_an_asset_stands_for_its_file(self):
        self.put("canon-6d-elephants.jpg", "a.jpg")
        self.take_in()
        identifier = self.identifier("a.jpg")
        for name in (identifier, identifier[:36], identifier[:8], identifier[:13].lower()):
            with self.subTest(name):
                rows, = self.answer("rows", "--keys", "Model", name)
                self.assertEqual(rows["file"], str(self.photos / "a.jpg"))
        sent, = self.answer("send", identifier, "--to", "Ann")
        self.assertEqual(sent["conversation"], "Ann")
        self.assertEqual(self.run_exifcard("favourite", "on", "00000000").status, 1)


class KillTest(LibraryTest):
    FILES = 300
    KILLS = 50
    LONGEST_RUN_IN_SECONDS = 0.15

    def setUp(self):
        super().setUp()
        picture = (DATA / "mwg.jpg").read_bytes()
        for number in range(self.FILES):
            folder = self.photos / str(number % 7)
            folder.mkdir(exist_ok=True)
            (folder / f"{number}.jpg").write_bytes(picture + b"%d" % number)

    def check_catalogue(self):
        catalogue = self.home / "data" / "exifcard" / "library.sqlite"
        if not catalogue.exists() or catalogue.stat().st_size == 0:
            return
        with sqlite3.connect(catalogue) as database:
            self.assertEqual(database.execute("PRAGMA integrity_check").fetchall(), [("ok",)])
            if database.execute("SELECT 1 FROM sqlite_master WHERE name = 'files'").fetchone() is None:
                return  # It has not even begun.
            lonely = "SELECT count(*) FROM assets WHERE id NOT IN (SELECT asset FROM files) AND vanished = 0"
            self.assertEqual(database.execute(lonely).fetchone(), (0,))
        database.close()

    def test_a_kill_at_any_moment_leaves_a_whole_catalogue(self):
        chance = random.Random(20240506)
        for _ in range(self.KILLS):
            process = subprocess.Popen([PROGRAM, "import", str(self.photos)], env=self.environment,
                                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            try:
                process.wait(chance.uniform(0, self.LONGEST_RUN_IN_SECONDS))
                victim = self.photos / str(chance.randrange(7))
                victim.rename(victim.with_suffix(".moved")).rename(victim)
                for photo in list(victim.iterdir())[:20]:
                    photo.rename(photo.with_suffix(".jpeg" if photo.suffix == ".jpg" else ".jpg"))
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
            self.check_catalogue()
        self.run_exifcard("import", str(self.photos))
        self.check_catalogue()
        self.assertEqual(self.take_in(), {})
        recents, = [album for album in self.answer("albums") if album["title"] == "Recents"]
        self.assertEqual(recents["count"], self.FILES)


if __name__ == "__main__":
    unittest.main()
