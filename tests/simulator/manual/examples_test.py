"""The examples of docs/simulator.md and docs/vornsim.1 do what is written beside them."""

import os
import pathlib
import re
import subprocess
import tempfile
import unittest

import program

# What the examples' doctor is shown: an Info.plist without anything that the plugin needs.
_INFO_PLIST = """<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0"><dict><key>CFBundleIdentifier</key><string>com.example.game</string></dict></plist>
"""


def _examples_of_the_manual():
    """The lines of the blocks in which vornsim is called, each with its exit status."""
    blocks = re.findall(r"^```sh\n(.*?)^```$", program.MANUAL, re.DOTALL | re.MULTILINE)
    lines = [line for block in blocks if re.search(r"^vornsim", block, re.MULTILINE) for line in block.splitlines()]
    told = [(line, re.search(r"# status (\d)", line)) for line in lines]
    return [(line, int(status.group(1)) if status else 0) for line, status in told]


def _examples_of_the_page():
    page = (program.SOURCE / "docs/vornsim.1").read_text().replace("\\-", "-")
    return re.findall(r"^\.B (vornsim .*)$", page.split(".SH EXAMPLES")[1].split(".SH")[0], re.MULTILINE)


class Examples(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        (self.folder / "Game").mkdir()
        (self.folder / "Game/Info.plist").write_text(_INFO_PLIST)

    def status_of(self, line):
        environment = {**os.environ, "PATH": f"{program.PROGRAM.parent}:{os.environ['PATH']}"}
        done = subprocess.run(["bash", "-c", line], cwd=self.folder, env=environment, capture_output=True, check=False)
        return done.returncode

    def test_those_of_the_manual_end_with_the_status_beside_them(self):
        examples = _examples_of_the_manual()

        self.assertGreater(len(examples), 10)
        for line, status in examples:
            with self.subTest(line):
                self.assertEqual(self.status_of(line), status)

    def test_each_command_has_an_example_in_the_manual(self):
        lines = [line for line, _ in _examples_of_the_manual()]

        for command in program.commands():
            self.assertTrue(any(line.startswith(f"vornsim {command}") for line in lines), command)

    def test_those_of_the_man_page_are_understood(self):
        examples = _examples_of_the_page()

        self.assertGreater(len(examples), 2)
        for line in examples:
            with self.subTest(line):
                self.assertIn(self.status_of(line), (0, 1))


if __name__ == "__main__":
    unittest.main()
