#!/usr/bin/env python3
"""Survivors, known and unknown, and the copy of the tree."""

import pathlib
import subprocess
import tempfile
import unittest

import mutants
import programs
import results
import workspace

_MUTANT = mutants.mutants_of("VornFacebook/A.mm", "f(1);\n")[0]


def _outcome(status):
    return results.Outcome(_MUTANT, status, "")


class Faults(unittest.TestCase):
    def _faults(self, status, known, every=(_MUTANT,), whole=False):
        return results.faults_of([_outcome(status)], every, known, whole)

    def test_a_killed_mutant_is_none(self):
        self.assertEqual(self._faults("killed", {}), [])

    def test_a_known_survivor_is_none(self):
        self.assertEqual(self._faults("survived", {_MUTANT.key(): "why"}), [])

    def test_an_unknown_survivor_is_one(self):
        self.assertEqual(self._faults("survived", {}), ["A.mm:1:constant survived: 1 -> 2"])

    def test_a_known_survivor_that_is_killed_or_does_not_compile_is_one(self):
        for status in ("killed", "does not compile"):
            self.assertEqual(self._faults(status, {_MUTANT.key(): "why"}),
                             [f"A.mm:1:constant is listed as a survivor, but: {status}"])

    def test_a_known_survivor_that_no_longer_exists_is_one(self):
        self.assertEqual(len(self._faults("killed", {("gone",): "why"})), 1)

    def test_a_known_survivor_that_was_not_drawn_is_none(self):
        self.assertEqual(results.faults_of([], [_MUTANT], {_MUTANT.key(): "why"}, True), [])

    def test_too_few_killed_are_one_in_a_run_of_the_whole_tree(self):
        known = {_MUTANT.key(): "why"}

        self.assertEqual(self._faults("survived", known, whole=True), ["0.0 % were killed, at least 95.0 % must be"])
        self.assertEqual(self._faults("survived", known, whole=False), [])

    def test_what_does_not_compile_counts_for_nothing(self):
        self.assertEqual(results.percentage([_outcome("killed"), _outcome("does not compile")]), 100.0)
        self.assertEqual(results.percentage([_outcome("killed"), _outcome("survived")]), 50.0)


class Survivors(unittest.TestCase):
    def _read(self, text):
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder) / "survivors.json"
            path.write_text(text)
            return results.read_survivors(path)

    def test_are_read_by_their_keys(self):
        entry = ('{"file": "VornFacebook/A.mm", "operator": "constant", "code": "f(1);", "change": "1 -> 2", '
                 '"reason": "why"}')

        self.assertEqual(self._read(f"[{entry}]"), {_MUTANT.key(): "why"})
        with self.assertRaises(ValueError):
            self._read(f"[{entry}, {entry}]")

    def test_need_a_reason(self):
        with self.assertRaises(ValueError):
            self._read('[{"file": "A", "operator": "constant", "code": "f(1);", "change": "1 -> 2", "reason": " "}]')

    def test_of_the_project_exist_in_its_sources(self):
        root = pathlib.Path(__file__).resolve().parents[2]
        existing = {mutant.key() for mutant in mutants.all_mutants(root)}

        known = results.read_survivors(root / "tests" / "mutation" / "survivors.json")

        self.assertEqual([key for key in known if key not in existing], [])


class _Builds(workspace.Workspace):
    """A copy whose builds and tests are made up; keeps what the file held meanwhile."""

    def __init__(self, checkout, builds=True, noticing=None):
        super().__init__(checkout, 1)
        self._builds = builds
        self._noticing = noticing
        self.seen = []
        self.built = []

    def build(self, targets):
        self.seen.append((self.folder / _MUTANT.file).read_text())
        self.built.append(targets)
        return self._builds

    def failure(self, program):
        return "fails" if program == self._noticing else ""


class Judging(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self._root = pathlib.Path(folder.name)

    def _judge(self, space):
        self._file = space.folder / _MUTANT.file
        self._file.parent.mkdir(parents=True)
        self._file.write_text("f(1);\n")
        return workspace.judge(space, _MUTANT)

    def test_names_the_program_that_noticed_and_builds_the_library_alone_for_those_that_load_it(self):
        space = _Builds(self._root, noticing=programs.REPORT)

        self.assertEqual(self._judge(space), ("killed", "VornReportFacebookTests fails"))
        self.assertEqual(space.built, [("VornFacebook",)])

    def test_a_mutant_that_no_program_notices_survives(self):
        self.assertEqual(self._judge(_Builds(self._root)), ("survived", ""))

    def test_a_mutant_that_does_not_build_is_not_killed(self):
        self.assertEqual(self._judge(_Builds(self._root, builds=False)), ("does not compile", ""))

    def test_happens_in_a_changed_file_that_is_restored(self):
        space = _Builds(self._root, builds=False)

        self._judge(space)

        self.assertEqual((space.seen, self._file.read_text()), (["f(2);\n"], "f(1);\n"))

    def test_restores_the_file_when_it_is_interrupted(self):
        space = _Builds(self._root)
        space.build = lambda targets: (_ for _ in ()).throw(KeyboardInterrupt)

        with self.assertRaises(KeyboardInterrupt):
            self._judge(space)

        self.assertEqual(self._file.read_text(), "f(1);\n")


class Copying(unittest.TestCase):
    def test_brings_a_changed_copy_back_drops_what_is_gone_and_keeps_the_build(self):
        with tempfile.TemporaryDirectory() as name:
            checkout, copy = pathlib.Path(name) / "checkout", pathlib.Path(name) / "copy"
            (copy / "build").mkdir(parents=True)
            checkout.mkdir()
            subprocess.run(["git", "init", "--quiet"], cwd=checkout, check=True)
            (checkout / "A.mm").write_text("f(1);\n")
            (copy / "A.mm").write_text("f(2);\n")
            (copy / "Gone.mm").write_text("")
            (copy / "build" / "A.o").write_text("kept")

            workspace.copy_tree(checkout, copy)

            self.assertEqual((copy / "A.mm").read_text(), "f(1);\n")
            files = sorted(path.name for path in copy.rglob("*") if path.is_file())
            self.assertEqual(files, ["A.mm", "A.o"])


class Programs(unittest.TestCase):
    def test_are_all_tried_on_a_source_those_about_it_first(self):
        for file, first in (("VornFacebook/VornReportFacebook.mm", programs.REPORT), ("Other.mm", programs.LOGIN)):
            tried = programs.programs_for(file)

            self.assertEqual(tried[0], first)
            self.assertEqual((len(tried), set(tried)), (len(set(tried)), set(programs.all_programs())))

    def test_are_tried_once_each_on_a_header(self):
        for file in ("ShareDir/Common/VornRecords.h", "VornFacebook/Other.h"):
            tried = programs.programs_for(file)

            self.assertEqual(len(tried), len(set(tried)))
            self.assertLessEqual(set(tried), set(programs.all_programs()))

    def test_are_built_again_for_a_header_and_where_the_plugin_is_linked_into_them(self):
        self.assertEqual(programs.targets_before("A.mm", programs.LOGIN), ("VornFacebook",))
        self.assertEqual(programs.targets_before("A.mm", programs.OTHER_CORE), ("VornFacebook", "OtherCoreTests"))
        self.assertEqual(programs.targets_before("A.h", programs.HOOKS_LAST), ("VornFacebook", "HookOrderTests"))


if __name__ == "__main__":
    unittest.main()
