"""No path takes more machine instructions than were accepted. scripts/instruction-counts shows them and accepts new ones."""

import sys
import unittest

import counts

sys.path.insert(0, str(counts.SOURCE / "tests" / "support" / "python"))
import baselines  # noqa: E402

_DUMP = """desc: Trigger: Client Request: InnerBaseRet, direct

fn=(1) main
16 2

totals: 123450
"""


class CountsTest(unittest.TestCase):
    maxDiff = None

    def test_no_path_departs_from_the_accepted_instructions_by_two_percent(self):
        departed = baselines.departures(counts.count(), baselines.read(counts.BASELINE))
        if departed:
            self.fail(
                "\n".join(departed)
                + "\nFind what it is that changed (callgrind_annotate); where it is worth that, run "
                "scripts/instruction-counts --accept and commit benchmarks/instructions/baseline.json"
            )


class ReadDumpTest(unittest.TestCase):
    def test_a_dump_has_the_name_that_the_program_gave_it(self):
        self.assertEqual(counts.read_dump(_DUMP), ("InnerBaseRet, direct", 123450))

    def test_the_dump_at_the_end_of_the_program_is_none_of_its_paths(self):
        self.assertIsNone(counts.read_dump("desc: Trigger: Program termination\n\ntotals: 0\n"))

    def test_a_path_without_instructions_is_an_error(self):
        with self.assertRaisesRegex(counts.CountError, "nothing for logout"):
            counts.read_dump("desc: Trigger: Client Request: logout\n")


if __name__ == "__main__":
    unittest.main()
