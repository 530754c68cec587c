"""Files that a world or a command names are read and never written, and what is no file ends in a message: a pipe, a
folder, a device, an endless or an unreadable file."""

import hashlib
import json
import os
import shutil
import unittest

from program import SOURCE, SecurityTest, run

HUGE = 1 << 40  # Bytes of a file without a single block.


def picture_of(folder):
    """Everything that a change of a file would change."""
    return {path: (path.lstat().st_mode, path.lstat().st_mtime_ns, path.lstat().st_size,
                   hashlib.sha256(path.read_bytes()).hexdigest() if path.is_file() else "")
            for path in sorted(folder.rglob("*"))}


class FilesTest(SecurityTest):
    def share(self, path):
        """Steps that read the file in every way in which the plugin reads files."""
        request = {"methodID": 211, "observer": 31, "imagePath": str(path), "thumbPath": str(path),
                   "mediaPath": str(path), "extraJson": "{\"isAssetURL\":false}"}
        return [{"share": request | {"seqID": "image", "type": "image"}},
                {"share": request | {"seqID": "video", "type": "video"}},
                {"player": "gaming"},
                {"share": request | {"seqID": "upload", "type": "image"}},
                {"share": request | {"seqID": "upload-url", "type": "video", "extraJson": "",
                                     "mediaPath": f"file://{self.folder}/{path}"}},
                {"player": "nobody"}]

    def strange_files(self):
        """What no world should name."""
        os.mkfifo(self.folder / "pipe")
        os.symlink("loop", self.folder / "loop")
        with open(self.folder / "huge", "wb") as huge:
            huge.truncate(HUGE)
        (self.folder / "folder").mkdir()
        self.write("unreadable", "text").chmod(0)
        strange = ["pipe", "loop", "huge", "folder", "missing", "../" * 40 + "dev/zero", "/dev/full", "/proc/self/mem"]
        return strange + ([] if os.geteuid() == 0 else ["unreadable"])

    def test_media_and_their_folders_are_left_as_they_are(self):
        media = self.folder / "media"
        shutil.copytree(SOURCE / "simulator/media", media)
        steps = [step for path in media.iterdir() for step in self.share(path)]
        world = self.world(steps + self.share("media/../../" + self.folder.name + "/media/picture.png"))
        before = picture_of(self.folder)
        for path in [media, *media.iterdir()]:
            path.chmod(path.stat().st_mode & ~0o222)
        read_only = picture_of(self.folder)

        status, _, errors = run("run", world)

        self.assertEqual((status, errors), (0, b""))
        self.assertEqual(picture_of(self.folder), read_only)
        self.assertEqual([entry[1:] for entry in before.values()], [entry[1:] for entry in read_only.values()])

    def test_no_strange_file_is_waited_for_or_read_without_end(self):
        steps = [step for path in self.strange_files() for step in self.share(path)]

        status, output, errors = run("run", self.world(steps))

        self.assertEqual((status, errors), (0, b""))
        self.assertIn(b"illegal image data", output)
        self.assertIn(b"video cant be written to the saved photos album", output)

    def test_a_strange_file_is_no_world_and_no_configuration(self):
        for path in self.strange_files():
            for arguments in [["run", path], ["run", "--config", path, "login-app"]]:
                status, output, errors = run(*arguments, folder=self.folder)
                self.assertEqual((status, output), (2, b""), arguments)
                self.assertRegex(errors.decode(), r"^vornsim: .*; .*\n$")

    def test_a_strange_file_is_no_property_list_of_a_world(self):
        for path in self.strange_files():
            status, output, errors = run("run", self.world([], setting={"info-plist": path}))
            if status == 1:  # It could be opened, and had nothing in it.
                self.assertIn(b"is no property list with a dictionary", output)
            else:
                self.assertEqual((status, output), (2, b""), path)
                self.assertRegex(errors.decode(), r"^vornsim: .*; .*\n$")

    def test_the_doctor_refuses_strange_files(self):
        for path in self.strange_files():
            status, output, errors = run("doctor", path, folder=self.folder)
            self.assertEqual((status, output), (2, b""), path)
            self.assertRegex(errors.decode(), r"^vornsim: .*; .*\n$")

    def test_a_new_world_follows_no_link_and_replaces_nothing(self):
        (self.folder / "link.world.json").symlink_to(self.folder / "target")
        os.mkfifo(self.folder / "pipe.world.json")
        for name in ["link", "pipe", "no-such-folder/x", "/dev/full/x"]:
            self.assertEqual(run("new", name, folder=self.folder)[0], 2, name)
        self.assertFalse((self.folder / "target").exists())


if __name__ == "__main__":
    unittest.main()
