"""How figures are compared with those that were accepted."""

import pathlib
import tempfile
import unittest

import baselines

_ACCEPTED = {"code": 1000, "initialisers": 10}


class DeparturesTest(unittest.TestCase):
    def test_two_percent_are_accepted_and_one_byte_more_is_not(self):
        self.assertEqual(baselines.departures({"code": 1020, "initialisers": 10}, _ACCEPTED), [])
        self.assertEqual(baselines.departures({"code": 980, "initialisers": 10}, _ACCEPTED), [])
        self.assertEqual(
            baselines.departures({"code": 1021, "initialisers": 10}, _ACCEPTED), ["code: 1021 instead of 1000 (+2.1%)"]
        )

    def test_a_gain_has_to_be_accepted_as_well_so_that_it_is_not_lost_again(self):
        self.assertEqual(
            baselines.departures({"code": 970, "initialisers": 10}, _ACCEPTED), ["code: 970 instead of 1000 (-3.0%)"]
        )

    def test_one_more_of_a_few_is_too_many(self):
        self.assertEqual(
            baselines.departures({"code": 1000, "initialisers": 11}, _ACCEPTED),
            ["initialisers: 11 instead of 10 (+10.0%)"],
        )

    def test_figures_that_come_and_go_are_named(self):
        self.assertEqual(
            baselines.departures({"code": 1000, "imports": 3}, _ACCEPTED),
            ["initialisers: 10 is not measured any more", "imports: 3 was never accepted"],
        )

    def test_what_is_written_is_read_again(self):
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder) / "baseline.json"
            baselines.write(path, _ACCEPTED)
            self.assertEqual(baselines.read(path), _ACCEPTED)


if __name__ == "__main__":
    unittest.main()
