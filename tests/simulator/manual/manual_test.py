"""docs/simulator.md and docs/vornsim.1 name what the program has, and nothing else."""

import re
import shutil
import subprocess
import unittest

import program

_PAGE_FILE = program.SOURCE / "docs/vornsim.1"
_PAGE = re.sub(r'^\.\\".*\n', "", _PAGE_FILE.read_text(), flags=re.MULTILINE).replace("\\-", "-")


def _sections(text, heading):
    """The parts of a text by the words of their headings: {"run": "..."}."""
    parts = re.split(heading, text, flags=re.MULTILINE)
    return dict(zip(parts[1::2], parts[2::2]))


def _rows(text):
    """The cells of the tables' rows, without those of their heads."""
    lines = re.findall(r"^\| [`\d].*\|$", text, re.MULTILINE)
    return [[cell.strip() for cell in line.strip("|").split("|")] for line in lines]


def _tagged(text):
    """What a part of the page describes: each tag of .TP without its macro and quotes, with the text below it."""
    return {
        re.sub(r"^\.[A-Z]+ ", "", tag).replace('"', ""): body.replace("\n", " ")
        for tag, body in re.findall(r"^\.TP\n(.*)\n((?:(?!\.TP|\.PP|\.S[SH]).*\n)*)", text, re.MULTILINE)
    }


def _usages_of_the_page(synopsis):
    """The lines of the synopsis as words."""
    usages = []
    for macro, words in re.findall(r"^\.(SY|RI|I) (.*)$", synopsis, re.MULTILINE):
        if macro == "SY":
            usages.append(words.strip('"'))
        else:
            usages[-1] += " " + words.replace(" ", "")
    return usages


def _variables_of_the_sources():
    """The environment variables that the program asks for."""
    found = set()
    for path in (program.SOURCE / "simulator").rglob("*"):
        if path.suffix in (".cc", ".mm", ".h"):
            found |= set(re.findall(r'getenv\("(\w+)"\)', path.read_text()))
    return found


class Manual(unittest.TestCase):
    def setUp(self):
        self.chapters = _sections(program.MANUAL, r"^## (.*)$")
        self.commands = _sections(self.chapters["Commands"], r"^### (.*)$")

    def test_it_has_a_section_for_each_command_in_their_order(self):
        self.assertEqual(list(self.commands), program.commands())

    def test_its_table_shows_how_each_command_is_called(self):
        usages = [row[0].strip("`") for row in _rows(self.chapters["Commands"].split("###")[0]) if "vornsim" in row[0]]

        self.assertEqual(usages, [program.help_of(command).usage for command in program.commands()])

    def test_each_command_has_a_table_of_its_own_options(self):
        for command, text in self.commands.items():
            with self.subTest(command=command):
                spelled = {f"{name} {value}".strip() for name, value in program.help_of(command).options.items()}

                self.assertEqual({row[0].strip("`") for row in _rows(text)}, spelled - {"-h", "--help"})

    def test_each_value_that_an_option_can_have_is_in_its_row(self):
        for command, text in self.commands.items():
            for option, values in program.help_of(command).values.items():
                with self.subTest(command=command, option=option):
                    (row,) = [row for row in _rows(text) if row[0].startswith(f"`{option} ")]

                    for value in values:
                        self.assertIn(f"`{value}`", row[1])

    def test_the_options_of_the_program_are_in_the_first_table(self):
        first = self.chapters["Commands"].split("###")[0]
        options = [row[0] for row in _rows(first) if row[0].startswith("`-")]

        self.assertEqual(program.options_in(" ".join(options)), set(program.help_of().options))

    def test_every_name_of_a_request_is_told(self):
        for name in program.request_names():
            self.assertIn(f"`{name}`", self.commands["explain"])

    def test_it_names_no_option_and_no_command_that_is_not_there(self):
        self.assertLessEqual(program.options_in(program.MANUAL), program.all_options())
        self.assertLessEqual(set(re.findall(r"\bvornsim ([a-z]+)", program.MANUAL)), set(program.commands()))

    def test_it_tells_the_exit_statuses_in_the_programs_words(self):
        rows = {row[0]: row[1].lower() for row in _rows(self.chapters["Exit status"])}

        self.assertEqual(set(rows), set(program.help_of().exit_statuses))
        for status, meaning in program.help_of().exit_statuses.items():
            self.assertTrue(rows[status].startswith(meaning.split(" or ")[0]), rows[status])

    def test_it_tells_every_variable_that_the_program_asks_for(self):
        rows = {row[0].strip("`") for row in _rows(self.chapters["Environment and terminal"])}

        self.assertEqual(rows, _variables_of_the_sources())

    def test_the_files_that_it_links_to_are_there(self):
        for link in re.findall(r"\]\(([^)#]+)", program.MANUAL):
            with self.subTest(link=link):
                self.assertTrue((program.SOURCE / "docs" / link).is_file())


class ManPage(unittest.TestCase):
    def setUp(self):
        self.chapters = _sections(_PAGE, r"^\.SH (.*)$")
        self.commands = _sections(self.chapters["COMMANDS"], r"^\.SS (.*)$")

    def test_it_has_a_section_for_each_command_in_their_order(self):
        self.assertEqual(list(self.commands), program.commands())

    def test_its_synopsis_shows_how_each_command_is_called(self):
        usages = _usages_of_the_page(self.chapters["SYNOPSIS"])

        self.assertEqual(usages, [program.help_of(command).usage for command in program.commands()])

    def test_each_command_describes_its_own_options(self):
        for command, text in self.commands.items():
            with self.subTest(command=command):
                spelled = {f"{name} {value}".strip() for name, value in program.help_of(command).options.items()}

                self.assertEqual({" ".join(tag.split()) for tag in _tagged(text)}, spelled - {"-h", "--help"})

    def test_each_value_that_an_option_can_have_is_described(self):
        for command, text in self.commands.items():
            for option, values in program.help_of(command).values.items():
                with self.subTest(command=command, option=option):
                    (meaning,) = [meaning for tag, meaning in _tagged(text).items() if tag.startswith(option)]

                    for value in values:
                        self.assertRegex(meaning, rf"\.BR? {value}\b")

    def test_the_options_of_the_program_are_described(self):
        tags = " ".join(_tagged(self.chapters["OPTIONS"]))

        self.assertEqual(program.options_in(tags), set(program.help_of().options))

    def test_every_name_of_a_request_is_told(self):
        for name in program.request_names():
            self.assertRegex(self.commands["explain"], rf"\.BR {name} ")

    def test_it_names_no_option_and_no_command_that_is_not_there(self):
        self.assertLessEqual(program.options_in(_PAGE), program.all_options())
        self.assertLessEqual(set(re.findall(r"\bvornsim ([a-z]+)", _PAGE)), set(program.commands()))

    def test_it_tells_the_exit_statuses_in_the_programs_words(self):
        statuses = {status: meaning.lower() for status, meaning in _tagged(self.chapters["EXIT STATUS"]).items()}

        self.assertEqual(set(statuses), set(program.help_of().exit_statuses))
        for status, meaning in program.help_of().exit_statuses.items():
            self.assertTrue(statuses[status].startswith(meaning.split(" or ")[0]), statuses[status])

    def test_it_tells_every_variable_that_the_program_asks_for(self):
        self.assertEqual(set(_tagged(self.chapters["ENVIRONMENT"])), _variables_of_the_sources())

    @unittest.skipUnless(shutil.which("groff"), "groff is not installed")
    def test_it_is_rendered_without_warnings(self):
        groff = ["groff", "-man", "-ww", "-Tutf8", _PAGE_FILE]

        done = subprocess.run(groff, capture_output=True, text=True, check=True)

        self.assertEqual(done.stderr, "")
        self.assertIn("try the Facebook channel", done.stdout)


class Help(unittest.TestCase):
    def test_every_command_tells_the_same_exit_statuses(self):
        for command in program.commands():
            self.assertEqual(program.help_of(command).exit_statuses, program.help_of().exit_statuses)

    def test_they_are_the_ones_of_the_sources(self):
        header = (program.SOURCE / "simulator/CommandLine.h").read_text()

        self.assertEqual(re.findall(r"constexpr int k\w+ = (\d);", header), list(program.help_of().exit_statuses))


if __name__ == "__main__":
    unittest.main()
