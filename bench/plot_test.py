#!/usr/bin/env python3
"""Checks the plots of how cost grows: the same figures make the same bytes, and every size and curve is in them."""

import pathlib
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "scripts"))

from benchmarks.growth import GROWTHS  # noqa: E402
from benchmarks.plot import draw_growth  # noqa: E402

MEASURED = {growth.key: {"sizes": list(growth.sizes),
                         "curves": {curve.title: [size * (number + 1) / 100 for size in growth.sizes]
                                    for number, curve in enumerate(growth.curves)}}
            for growth in GROWTHS}


def drawn(measured=MEASURED):
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        draw_growth(measured, folder)
        return {path.name: path.read_text() for path in folder.iterdir()}


class Plots(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.plots = drawn()

    def test_the_same_figures_make_the_same_bytes(self):
        self.assertEqual(self.plots, drawn())

    def test_other_figures_make_other_bytes(self):
        other = {key: one | {"curves": {title: [value * value for value in values]
                                        for title, values in one["curves"].items()}}
                 for key, one in MEASURED.items()}
        for name, text in drawn(other).items():
            self.assertNotEqual(text, self.plots[name], name)

    def test_a_plot_names_its_sizes_and_its_curves(self):
        for growth in GROWTHS:
            text = self.plots[f"growth-{growth.key}.svg"]
            for word in (growth.title, growth.what, *(f"{size:,}" for size in growth.sizes),
                         *(curve.title for curve in growth.curves)):
                self.assertIn(f">{word}<", text)

    def test_cost_is_measured_at_four_sizes_at_least(self):
        for growth in GROWTHS:
            self.assertGreaterEqual(len(growth.sizes), 4, growth.key)


if __name__ == "__main__":
    unittest.main()
