#!/usr/bin/env python3
"""The schema that editors use judges worlds as the program does. cases.json has good and bad ones."""

import json
import pathlib
import re
import tempfile
import unittest

from jsonschema import Draft202012Validator

import vornsim

_CASES = json.loads(pathlib.Path(__file__).with_name("cases.json").read_text())
_BAD_INPUT = 2


_READERS = ("AnswerMakers.cc", "Audit.cc", "ExpectationReader.cc", "FriendStepMakers.cc", "ResultFields.cc",
            "StepMakers.cc", "World.cc")


def _words_of_the_readers():
    """Every key and every word that the program's readers know, as their sources have them."""
    words = set()
    for name in _READERS:
        source = (vornsim.SOURCE / "simulator" / name).read_text()
        words.update(re.findall(r'\{"(\w[\w.-]*)", (?:&|\w+::|true|false|")', source))
        words.update(re.findall(r'constexpr std::string_view k\w+ = "([a-z-]+)";', source))
        for keys in re.findall(r'Known\w*\(\w+, (?:\w+, )?\{([^}]*)\}', source):
            words.update(re.findall(r'"([^"]+)"', keys))
        for keys in re.findall(r'std::vector<std::string_view> keys\{([^}]*)\}', source):
            words.update(re.findall(r'"([^"]+)"', keys))
    return words


def _words_of(schema):
    """Every key and every word that a schema knows."""
    words = set(schema.get("properties", {})) | {word for word in schema.get("enum", []) if isinstance(word, str)}
    if isinstance(schema.get("const"), str):
        words.add(schema["const"])
    for value in schema.values():
        for node in value if isinstance(value, list) else value.values() if isinstance(value, dict) else ():
            if isinstance(node, dict):
                words |= _words_of(node)
        if isinstance(value, dict):
            words |= _words_of(value)
    return words


def _world_of(case):
    """A case is a whole world, or one step for which the steps before it make it possible."""
    if "world" in case:
        return case["world"]
    return {"question": "test?", "steps": [*_CASES["before"], case["step"]]}


class Schema(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        schema = json.loads((vornsim.SOURCE / "simulator/world.schema.json").read_text())
        Draft202012Validator.check_schema(schema)
        cls.schema = schema
        cls.validator = Draft202012Validator(schema)
        cls.folder = tempfile.TemporaryDirectory()

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def _written(self, name, text):
        path = pathlib.Path(self.folder.name) / (name + ".world.json")
        path.write_text(text)
        return str(path)

    def _taken(self, texts):
        """Of worlds by name, the names of those that the program can use."""
        paths = {self._written(name, text): name for name, text in texts.items()}
        verdicts = vornsim.judge(paths)
        self.assertEqual(len(verdicts), len(paths))
        return [paths[path] for path in verdicts if verdicts[path]]

    def test_every_shipped_world_is_valid(self):
        for name in vornsim.shipped_names():
            with self.subTest(world=name):
                self.assertEqual([error.message for error in self.validator.iter_errors(vornsim.read_world(name))], [])

    def test_the_world_of_the_command_new_is_valid(self):
        path = str(pathlib.Path(self.folder.name) / "fresh")

        self.assertEqual(vornsim.run("new", path)[0], 0)

        fresh = json.loads(pathlib.Path(path + ".world.json").read_text())
        self.assertEqual([error.message for error in self.validator.iter_errors(fresh)], [])

    def test_good_worlds_are_good_to_both(self):
        worlds = {name: _world_of(case) for name, case in _CASES["good"].items()}

        taken = self._taken({name: json.dumps(world) for name, world in worlds.items()})

        self.assertEqual([name for name in worlds if name not in taken], [], "the program refuses these")
        self.assertEqual([name for name, world in worlds.items() if not self.validator.is_valid(world)], [],
                         "the schema refuses these")

    def test_the_command_run_judges_by_its_exit_status(self):
        good = self._written("good", json.dumps(_world_of(_CASES["good"]["Notes"])))
        bad = self._written("bad", json.dumps(_world_of(_CASES["bad"]["UnknownStep"])))

        self.assertNotEqual(vornsim.run("run", "--format", "none", good)[0], _BAD_INPUT)
        self.assertEqual(vornsim.run("run", "--format", "none", bad)[0], _BAD_INPUT)

    def test_bad_worlds_are_bad_to_both(self):
        worlds = {name: _world_of(case) for name, case in _CASES["bad"].items()}

        taken = self._taken({name: json.dumps(world) for name, world in worlds.items()})

        self.assertEqual(taken, [], "the program takes these")
        self.assertEqual([name for name, world in worlds.items() if self.validator.is_valid(world)], [],
                         "the schema takes these")

    def test_what_a_schema_cannot_say_is_left_to_the_program(self):
        texts = {name: case.get("text") or json.dumps(_world_of(case)) for name, case in _CASES["beyond"].items()}

        taken = self._taken(texts)

        self.assertEqual(taken, [], "the program takes these")
        for name, text in texts.items():
            with self.subTest(case=name):
                self.assertTrue(self.validator.is_valid(json.loads(text)), "the schema refuses it: move it to \"bad\"")

    def test_every_word_of_the_program_is_in_the_schema(self):
        words = _words_of_the_readers()

        self.assertGreater(len(words), 150)
        self.assertEqual(words - _words_of(self.schema), set())

    def test_every_word_of_the_schema_is_in_the_manual(self):
        manual = (vornsim.SOURCE / "docs/worlds.md").read_text()
        marked = " ".join(re.findall(r"`([^`\n]+)`", manual))
        named = set(re.findall(r"[\w.$-]+", marked))

        self.assertEqual(_words_of(self.schema) - named, set())

    def test_every_key_of_a_world_is_described(self):
        def undescribed(node, place):
            for name, value in node.get("properties", {}).items():
                if isinstance(value, dict) and "const" not in value:
                    target = self._resolved(value)
                    if "description" not in value and "description" not in target:
                        yield f"{place}/{name}"
            for key, value in node.items():
                if isinstance(value, dict) and key not in ("if", "then"):
                    yield from undescribed(value, f"{place}/{key}")

        self.assertEqual(list(undescribed(self.schema, "#")), [])

    def _resolved(self, node):
        """The schema that a reference leads to; of several the first."""
        while "$ref" in node or "allOf" in node:
            if "allOf" in node and "description" in node:
                return node
            reference = node.get("$ref") or node["allOf"][0]["$ref"]
            node = self.schema
            for part in reference.removeprefix("#/").split("/"):
                node = node[part]
            if "description" in node:
                return node
        return node


if __name__ == "__main__":
    unittest.main()
