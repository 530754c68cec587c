#!/usr/bin/env python3
"""The worlds that come with the program: they hold, they ask, and they are told apart."""

import json
import re
import unittest

import vornsim

# Whose logins and players have tokens.
_WITH_TOKENS = ("image-upload-done", "login-app", "login-replaced", "logout", "share-completed", "token-expired-upload-fails",
                "url-opened-during-login")


def _tokens_of(node):
    """Every access token that a world gives to a login."""
    if isinstance(node, dict):
        login = node.get("answer-login")
        if isinstance(login, dict) and "token" in login:
            yield login["token"]
        for value in node.values():
            yield from _tokens_of(value)
    elif isinstance(node, list):
        for value in node:
            yield from _tokens_of(value)


def _tour():
    header = (vornsim.SOURCE / "simulator/ShippedWorlds.h").read_text()
    names = re.search(r"kTour\{(.*?)\}", header, re.DOTALL).group(1)
    return re.findall(r'"([^"]+)"', names)


class ShippedWorlds(unittest.TestCase):
    def test_all_of_them_hold(self):
        status, _, errors = vornsim.run("run", "--format", "none", *vornsim.shipped_names())

        self.assertEqual((status, errors), (0, ""))

    def test_the_first_line_of_each_is_a_question(self):
        for path in sorted(vornsim.WORLDS.iterdir()):
            with self.subTest(world=path.name):
                first = path.read_text().splitlines()[0]
                self.assertRegex(first, r'^\{ "question": "[A-Z](\\"|[^"\\])*\?",$')

    def test_no_two_ask_the_same(self):
        questions = [vornsim.read_world(name)["question"] for name in vornsim.shipped_names()]

        self.assertEqual(len(questions), len(set(questions)))

    def test_each_says_what_it_expects_to_the_end(self):
        for name in vornsim.shipped_names():
            with self.subTest(world=name):
                expected = set(vornsim.read_world(name)["expect"])
                self.assertLessEqual({"results", "unanswered", "cached", "audit"}, expected)

    def test_those_of_the_tour_are_there_and_speak_to_the_reader(self):
        self.assertEqual(len(_tour()), 6)
        for name in _tour():
            with self.subTest(world=name):
                notes = [step for step in vornsim.read_world(name)["steps"] if "note" in step]
                self.assertGreaterEqual(len(notes), 3)

    def test_the_manual_lists_them_with_their_questions(self):
        manual = (vornsim.SOURCE / "docs/worlds.md").read_text()
        listed = re.findall(r"^\| `([a-z0-9-]+)` \| (.*\?) \|$", manual, re.MULTILINE)

        self.assertEqual(listed, [(name, vornsim.read_world(name)["question"]) for name in vornsim.shipped_names()])

    def test_they_show_every_remark_of_the_audit(self):
        audit = (vornsim.SOURCE / "simulator/Audit.cc").read_text()
        known = set(re.findall(r'constexpr std::string_view k\w+ = "([a-z-]+)";', audit))

        self.assertEqual({remark["id"] for run in vornsim.report()["runs"] for remark in run["audit"]}, known)

    def test_no_access_token_is_shown(self):
        tokens = {"access-token"}
        for name in vornsim.shipped_names():
            tokens.update(_tokens_of(vornsim.read_world(name)))
        outputs = {form: vornsim.run("run", "--format", form, *_WITH_TOKENS)[1] for form in ("text", "html")}
        outputs["json"] = json.dumps(vornsim.report(), ensure_ascii=False)

        self.assertGreater(len(tokens), 1)
        for form, output in outputs.items():
            for token in tokens:
                with self.subTest(format=form, token=token):
                    self.assertNotEqual(output, "")
                    self.assertNotIn(token, output)

    def test_access_tokens_are_shown_on_demand(self):
        (token,) = _tokens_of(vornsim.read_world("login-app"))

        self.assertIn(token, vornsim.run("run", "--show-tokens", "login-app")[1])


class Seeds(unittest.TestCase):
    def test_a_seed_decides_to_the_byte_and_another_otherwise(self):
        first, again, other = (
            vornsim.run("run", "--format", "json", "--seed", seed, "random-answers") for seed in ("42", "42", "43")
        )

        self.assertEqual(first, again)
        self.assertEqual((first[0], other[0]), (0, 0))
        self.assertNotEqual(json.loads(first[1])["runs"][0]["entries"], json.loads(other[1])["runs"][0]["entries"])


if __name__ == "__main__":
    unittest.main()
