"""Markup, control characters and format characters in arguments: they are refused in words, and nothing of them
reaches the terminal as it is."""

import unittest

from program import SecurityTest, run

HOSTILE = "a\x1b[31m<b>%s%n%@\x07\x7f\u202e\u009b\n'\"$(id)"
BYTES_THAT_ARE_NO_UTF8 = b"a\xff\xc0\xaf"


class ArgumentsTest(SecurityTest):
    def commands(self, text):
        return [
            [text],
            ["run", text],
            ["run", "--" + text],
            ["run", "--format", text],
            ["run", "--order", text],
            ["run", "--seed", text],
            ["run", "--config", text, "login-app"],
            ["run", "--plugin", text, "login-app"],
            ["worlds", "--format", text],
            ["worlds", text],
            ["new", "no-such-folder/" + text],
            ["explain", text, "2"],
            ["explain", "211", text],
            ["explain", "211", "2", text],
            ["doctor", text],
        ]

    def test_an_argument_that_cannot_be_used_is_refused_without_a_control_character(self):
        for command in self.commands(HOSTILE):
            status, output, errors = run(*command, folder=self.folder)
            self.assertEqual((status, output), (2, b""), command)
            self.assertNotEqual(errors, b"")
            self.assert_harmless_text(errors)

    def test_bytes_that_are_no_utf8_end_the_program_with_a_message(self):
        # GNUstep ends it before its main function has begun.
        for command in [[BYTES_THAT_ARE_NO_UTF8], ["run", BYTES_THAT_ARE_NO_UTF8], ["doctor", BYTES_THAT_ARE_NO_UTF8]]:
            status, output, errors = run(*command, folder=self.folder)
            self.assertEqual((status, output), (1, b""), command)
            self.assertIn(b"Uncaught exception NSInvalidArgumentException", errors)
            self.assert_harmless_text(errors)

    def test_a_format_in_an_argument_is_a_text(self):
        for command in [["run", "%s%n%d"], ["explain", "%s%n%d", "2"], ["doctor", "%s%n%d"], ["new", "no/%s%n%d"]]:
            self.assertIn(b"%s%n%d", run(*command, folder=self.folder)[2])

    def test_an_argument_that_can_be_used_is_printed_without_a_control_character(self):
        name = "a\x1b[31m\u202e"
        for command in [["new", name], ["run", name + ".world.json"], ["explain", "211", "2", "-", HOSTILE]]:
            status, output, errors = run(*command, folder=self.folder)
            self.assertEqual((status, errors), (0, b""), command)
            self.assert_harmless_text(output)


if __name__ == "__main__":
    unittest.main()
