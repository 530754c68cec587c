"""The completions offer what the program has, and nothing else. bash is asked; of zsh and fish the text is read."""

import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

import program

_BASH_FILE = program.COMPLETIONS / "vornsim.bash"
_ZSH = (program.COMPLETIONS / "_vornsim").read_text()
_FISH = (program.COMPLETIONS / "vornsim.fish").read_text()

# Completes the last of the words, as bash does when tab is pressed behind it. The program's list of worlds is asked for
# once, for all tests.
_ASK_BASH = """
vornsim() { [[ $* == worlds ]] && printf '%s' "$WORLDS"; }
source "$1"
shift
COMP_WORDS=("$@")
COMP_CWORD=$(($# - 1))
"$(complete -p vornsim | sed 's/.*-F \\([^ ]*\\).*/\\1/')" "$1"
printf '%s\\n' "${COMPREPLY[@]}"
"""


class Bash(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def offered(self, *words):
        done = subprocess.run(["bash", "-c", _ASK_BASH, "bash", _BASH_FILE, "vornsim", *words], cwd=self.folder,
                              env={**os.environ, "WORLDS": program.run("worlds")[1]}, capture_output=True, text=True,
                              check=True)
        self.assertEqual(done.stderr, "")
        return [line for line in done.stdout.splitlines() if line]

    def test_commands_come_first(self):
        self.assertEqual(self.offered(""), program.commands())
        self.assertEqual(self.offered("wo"), ["worlds"])

    def test_options_are_those_of_the_program_and_of_the_command(self):
        self.assertEqual(set(self.offered("-")), set(program.help_of().options))
        for command in program.commands():
            with self.subTest(command=command):
                self.assertEqual(set(self.offered(command, "-")), set(program.help_of(command).options))

    def test_an_option_has_its_values(self):
        for command in program.commands():
            for option, values in program.help_of(command).values.items():
                with self.subTest(command=command, option=option):
                    self.assertEqual(self.offered(command, option, ""), values)

    def test_a_value_may_follow_an_equals_sign(self):
        self.assertEqual(self.offered("run", "--format", "="), ["text", "json", "html", "none"])
        self.assertEqual(self.offered("run", "--format", "=", "j"), ["json"])

    def test_options_and_their_values_are_no_arguments(self):
        self.assertEqual(self.offered("--version", ""), program.commands())
        self.assertEqual(self.offered("explain", "--format", "json", "share", ""), ["none"])
        self.assertEqual(self.offered("explain", "--format", "=", "json", "share", ""), ["none"])

    def test_options_whose_values_are_skipped_are_those_that_have_one(self):
        skipped = re.search(r"=~ \^--\(([a-z|-]*)\)\$", _BASH_FILE.read_text()).group(1)

        self.assertEqual({"--" + name for name in skipped.split("|")}, program.options_with_a_value())

    def test_options_that_name_a_file_offer_files_of_their_kind_and_folders(self):
        for name in ("a.json", "b.so", "c.txt"):
            (self.folder / name).touch()
        (self.folder / "folder").mkdir()

        self.assertEqual(sorted(self.offered("run", "--config", "")), ["a.json", "folder"])
        self.assertEqual(sorted(self.offered("run", "--plugin", "")), ["b.so", "folder"])

    def test_run_offers_the_shipped_worlds_and_files_of_worlds(self):
        (self.folder / "share-my own.world.json").touch()
        (self.folder / "share-notes.txt").touch()

        self.assertEqual(self.offered("run", "share-co"), ["share-completed", "share-content-refused"])
        self.assertEqual(self.offered("run", "login-app", "--seed", "7", "share-my"), ["share-my own.world.json"])
        self.assertEqual(self.offered("run", "share-n"), ["share-network-error"])

    def test_the_worlds_are_those_that_the_program_lists(self):
        _, listed, _ = program.run("worlds")

        self.assertEqual(self.offered("run", ""), [line.split()[0] for line in listed.splitlines()])

    def test_explain_offers_requests_and_then_the_code_for_nothing(self):
        self.assertEqual(self.offered("explain", ""), program.request_names())
        self.assertEqual(self.offered("explain", "share", ""), ["none"])
        self.assertEqual(self.offered("explain", "share", "2", ""), [])

    def test_doctor_offers_one_path(self):
        (self.folder / "Info.plist").touch()

        self.assertEqual(self.offered("doctor", ""), ["Info.plist"])
        self.assertEqual(self.offered("doctor", "Info.plist", ""), [])

    def test_new_offers_nothing(self):
        self.assertEqual(self.offered("new", ""), [])

    def test_behind_two_dashes_there_are_no_options(self):
        self.assertEqual(self.offered("run", "--", "--f"), [])
        self.assertEqual(self.offered("run", "--", "share-comp"), ["share-completed"])


class Zsh(unittest.TestCase):
    def setUp(self):
        functions = dict(re.findall(r"^(_vornsim\w*)\(\) \{\n(.*?)^\}$", _ZSH, re.DOTALL | re.MULTILINE))
        self.main = functions["_vornsim"]
        self.functions = {name: functions[function] for name, function in
                          re.findall(r"^ +([a-z]+)\) (_vornsim_\w+) ;;$", self.main, re.MULTILINE)}

    @staticmethod
    def options_of(function):
        """The options among what a function gives to _arguments."""
        option_texts = re.search(r"_arguments -\w (.*?)(?:\n\n|\Z)", function, re.DOTALL).group(1)
        return program.options_in(re.sub(r"=?\[[^]]*\].*", " ", option_texts))

    def test_it_has_the_commands_of_the_program(self):
        self.assertEqual(re.findall(r"^ +'([a-z]+):[^:]*'$", self.main, re.MULTILINE), program.commands())
        self.assertEqual(list(self.functions), program.commands())

    def test_options_are_those_of_the_program_and_of_the_command(self):
        self.assertEqual(self.options_of(self.main), set(program.help_of().options))
        for command, text in self.functions.items():
            with self.subTest(command=command):
                self.assertEqual(self.options_of(text), set(program.help_of(command).options))

    def test_an_option_has_its_values(self):
        for command, text in self.functions.items():
            for option, values in program.help_of(command).values.items():
                with self.subTest(command=command, option=option):
                    self.assertRegex(text, rf"'{option}=\[[^]]*\]:\w+:\({' '.join(values)}\)'")

    def test_an_option_asks_for_a_value_where_it_has_one(self):
        for command, text in self.functions.items():
            with self.subTest(command=command):
                self.assertEqual(set(re.findall(r"'(--[a-z-]+)=", text)), program.options_with_a_value(command))

    def test_explain_has_the_requests(self):
        self.assertIn(f"'1:method:({' '.join(program.request_names())})'", self.functions["explain"])

    @unittest.skipUnless(shutil.which("zsh"), "zsh is not installed")
    def test_zsh_can_read_it(self):
        subprocess.run(["zsh", "-n", program.COMPLETIONS / "_vornsim"], check=True)


class Fish(unittest.TestCase):
    @staticmethod
    def lines_of(condition):
        return re.findall(rf"^complete -c vornsim -n {re.escape(condition)} (.*)$", _FISH, re.MULTILINE)

    @staticmethod
    def options_of(lines):
        found = set()
        for line in lines:
            found |= {"-" + short for short in re.findall(r"-s (\S+)", line)}
            found |= {"--" + long for long in re.findall(r"-l (\S+)", line)}
        return found

    def test_it_has_the_commands_of_the_program(self):
        lines = self.lines_of("__vornsim_without_command")

        self.assertEqual(re.findall(r"^-a (\S+)", "\n".join(lines), re.MULTILINE), program.commands())
        self.assertEqual(set(re.findall(r"'__vornsim_in (\w+)", _FISH)), set(program.commands()))

    def test_options_are_those_of_the_program_and_of_the_command(self):
        self.assertEqual(self.options_of(self.lines_of("__vornsim_without_command")), set(program.help_of().options))
        for command in program.commands():
            with self.subTest(command=command):
                lines = self.lines_of(f"'__vornsim_in {command}'")

                self.assertEqual(self.options_of(lines), set(program.help_of(command).options))

    def test_an_option_has_its_values(self):
        for command in program.commands():
            for option, values in program.help_of(command).values.items():
                with self.subTest(command=command, option=option):
                    lines = self.lines_of(f"'__vornsim_in {command}'")
                    (line,) = [line for line in lines if f"-l {option[2:]} " in line]

                    self.assertIn(f"-x -a '{' '.join(values)}'", line)

    def test_options_whose_values_are_skipped_are_those_that_have_one(self):
        skipped = program.options_in(re.search(r"contains -- \$word (.*)", _FISH).group(1))

        self.assertEqual(skipped, program.options_with_a_value())

    def test_an_option_asks_for_a_value_where_it_has_one(self):
        for command in program.commands():
            with self.subTest(command=command):
                lines = [line for line in self.lines_of(f"'__vornsim_in {command}'") if re.search(r" -[xr] ", line)]

                self.assertEqual(self.options_of(lines), program.options_with_a_value(command))

    def test_explain_has_the_requests(self):
        self.assertEqual(self.lines_of("'__vornsim_in explain 0'"), [f"-a '{' '.join(program.request_names())}'"])

    @unittest.skipUnless(shutil.which("fish"), "fish is not installed")
    def test_fish_can_read_it(self):
        subprocess.run(["fish", "-n", program.COMPLETIONS / "vornsim.fish"], check=True)


if __name__ == "__main__":
    unittest.main()
