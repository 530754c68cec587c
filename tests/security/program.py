"""Runs vornsim for the tests of security. VORN_SIM names the program. A start takes a second under sanitizers: few of
them, each with a limit of time, and of memory where sanitizers let it be limited."""

import json
import os
import pathlib
import re
import subprocess
import tempfile
import unittest

PROGRAM = os.environ["VORN_SIM"]
SOURCE = pathlib.Path(os.environ["VORN_SOURCE"])
SECONDS = 60


def run(*arguments, folder=None):
    """Runs the program. Returns its exit status, its output and its errors, the last two as bytes."""
    done = subprocess.run([PROGRAM, *arguments], capture_output=True, timeout=SECONDS, cwd=folder,
                          stdin=subprocess.DEVNULL, check=False)
    return done.returncode, done.stdout, done.stderr


class SecurityTest(unittest.TestCase):
    """Has a folder of its own for each test."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="vornsim-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def write(self, name, content):
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content if isinstance(content, bytes) else content.encode())
        return path

    def world(self, steps, name="test", **more):
        world = {"question": "test?", "steps": steps} | more
        return self.write(name + ".world.json", json.dumps(world))

    def assert_harmless_text(self, output):
        """That it is UTF-8 and has no control characters but line feeds, nor any that turns the direction of writing."""
        found = re.search("[\x00-\x09\x0b-\x1f\x7f-\x9f\u061c\u200e\u200f\u202a-\u202e\u2066-\u2069]", output.decode())
        self.assertIsNone(found, output)
