"""What the library costs a game stays what was accepted. scripts/ios-sizes shows the figures and accepts new ones."""

import sys
import unittest

import sizes
from slices import SOURCE, SliceTest, all_slices, on_every_slice

sys.path.insert(0, str(SOURCE / "tests" / "support" / "python"))
import baselines  # noqa: E402


class SizesTest(SliceTest):
    @on_every_slice
    def test_no_figure_departs_from_the_accepted_one_by_two_percent(self, tested):
        self.assert_none(
            baselines.departures(sizes.figures_of(tested), baselines.read(sizes.BASELINE)[tested.name]),
            "every game pays for it. Find what it is that changed; where it is worth that, run scripts/ios-sizes "
            "--accept and commit tests/binary/ios/sizes_baseline.json",
        )

    def test_every_slice_has_accepted_figures_and_nothing_else_has(self):
        self.assertEqual(sorted(baselines.read(sizes.BASELINE)), sorted(tested.name for tested in all_slices()))

    @on_every_slice
    def test_the_methods_of_every_class_are_counted(self, tested):
        counted = {name[len("code of ") :] for name in sizes.figures_of(tested) if name.startswith("code of ")}
        self.assertEqual(
            counted,
            {"VornApplicationDelegate(Facebook)", "VornFriendFacebook", "VornLoginFacebook", "VornReportFacebook"},
        )


if __name__ == "__main__":
    unittest.main()
