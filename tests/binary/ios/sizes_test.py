"""What the library costs a game stays what was accepted. scripts/ios-sizes shows the figures and accepts new ones."""

import unittest

import sizes
from slices import SliceTest, all_slices, on_every_slice

_ACCEPTED = {"code": 1000, "initialisers": 10}


class SizesTest(SliceTest):
    @on_every_slice
    def test_no_figure_departs_from_the_accepted_one_by_two_percent(self, tested):
        self.assert_none(
            sizes.departures(sizes.figures_of(tested), sizes.read_baseline()[tested.name]),
            "every game pays for it. Find what it is that changed; where it is worth that, run scripts/ios-sizes "
            "--accept and commit tests/binary/ios/sizes_baseline.json",
        )

    def test_every_slice_has_accepted_figures_and_nothing_else_has(self):
        self.assertEqual(sorted(sizes.read_baseline()), sorted(tested.name for tested in all_slices()))

    @on_every_slice
    def test_the_methods_of_every_class_are_counted(self, tested):
        counted = {name[len("code of ") :] for name in sizes.figures_of(tested) if name.startswith("code of ")}
        self.assertEqual(
            counted,
            {"VornApplicationDelegate(Facebook)", "VornFriendFacebook", "VornLoginFacebook", "VornReportFacebook"},
        )

    def test_two_percent_are_accepted_and_one_byte_more_is_not(self):
        self.assertEqual(sizes.departures({"code": 1020, "initialisers": 10}, _ACCEPTED), [])
        self.assertEqual(sizes.departures({"code": 980, "initialisers": 10}, _ACCEPTED), [])
        self.assertEqual(
            sizes.departures({"code": 1021, "initialisers": 10}, _ACCEPTED), ["code: 1021 instead of 1000 (+2.1%)"]
        )

    def test_a_gain_has_to_be_accepted_as_well_so_that_it_is_not_lost_again(self):
        self.assertEqual(
            sizes.departures({"code": 970, "initialisers": 10}, _ACCEPTED), ["code: 970 instead of 1000 (-3.0%)"]
        )

    def test_one_initialiser_more_is_too_many(self):
        self.assertEqual(
            sizes.departures({"code": 1000, "initialisers": 11}, _ACCEPTED),
            ["initialisers: 11 instead of 10 (+10.0%)"],
        )

    def test_figures_that_come_and_go_are_named(self):
        self.assertEqual(
            sizes.departures({"code": 1000, "imports": 3}, _ACCEPTED),
            ["initialisers: 10 is not measured any more", "imports: 3 was never accepted"],
        )


if __name__ == "__main__":
    unittest.main()
