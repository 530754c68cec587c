"""The compiler refuses a log line whose format is no literal. VORN_COMMANDS names the build's compile commands: the file
that must compile is a part of it, and its twin is compiled with the same flags."""

import json
import os
import pathlib
import shlex
import subprocess
import unittest

HERE = pathlib.Path(__file__).parent


def compile_command():
    """How the build compiles FormatIsLiteral.cc, without the output file and the compiler's cache."""
    for entry in json.loads(pathlib.Path(os.environ["VORN_COMMANDS"]).read_text()):
        if pathlib.Path(entry["file"]) == HERE / "FormatIsLiteral.cc":
            words = shlex.split(entry["command"])
            start = next(i for i, word in enumerate(words) if "clang" in pathlib.Path(word).name)
            return words[start:words.index("-o")] + ["-fsyntax-only"], entry["directory"]
    raise AssertionError("FormatIsLiteral.cc is not built")


def compile_file(name):
    command, folder = compile_command()
    return subprocess.run([*command, HERE / name], capture_output=True, text=True, cwd=folder, timeout=60, check=False)


class FormatsTest(unittest.TestCase):
    def test_a_literal_compiles(self):
        done = compile_file("FormatIsLiteral.cc")

        self.assertEqual(done.returncode, 0, done.stderr)

    def test_a_text_of_a_request_is_no_format(self):
        done = compile_file("FormatIsARequestsText.cc")

        self.assertNotEqual(done.returncode, 0)
        self.assertEqual(done.stderr.count("error: format string is not a string literal"), 3, done.stderr)
        self.assertIn("-Werror,-Wformat", done.stderr)

    def test_arguments_of_another_type_than_the_format_says_are_refused(self):
        done = compile_file("FormatOfAnotherType.cc")

        self.assertNotEqual(done.returncode, 0)
        self.assertEqual(done.stderr.count("error: "), 2, done.stderr)


if __name__ == "__main__":
    unittest.main()
