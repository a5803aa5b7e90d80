#!/usr/bin/env python3
"""Checks what the table says of figures: medians, ratios, intervals and goals."""

import pathlib
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "scripts"))

from benchmarks.rows import FASTER, Row, at_most, at_most_times  # noqa: E402
from benchmarks.table import evaluate, interval_of_median  # noqa: E402


def result(row, ours, peer=()):
    return evaluate(row, {(row.key, "ours"): list(ours), (row.key, "peer"): list(peer)})


class Table(unittest.TestCase):
    def test_the_interval_of_15_values_runs_from_the_4th_to_the_12th(self):
        self.assertEqual(interval_of_median(range(15, 0, -1)), [4, 12])

    def test_the_interval_of_few_values_is_all_of_them(self):
        self.assertEqual(interval_of_median([3, 1, 2]), [1, 3])
        self.assertEqual(interval_of_median([7]), [7, 7])

    def test_a_ratio_is_the_median_of_those_within_the_runs(self):
        row = Row("r", "r", "µs", "peer", at_most_times(2))
        self.assertEqual(result(row, [1, 3, 100], [2, 1, 50])["ratio"], {"median": 2, "lowest": 0.5, "highest": 3})
        self.assertIs(result(row, [4], [2])["met"], True)
        self.assertIs(result(row, [5], [2])["met"], False)

    def test_a_small_difference_is_as_good_as_a_small_ratio(self):
        row = Row("r", "r", "µs", "peer", at_most_times(1.15, or_more_by=120))
        self.assertIs(result(row, [200], [100])["met"], True)
        self.assertIs(result(row, [1140], [1000])["met"], True)
        self.assertIs(result(row, [1160], [1000])["met"], False)

    def test_pairs_miss_a_goal_only_with_their_whole_interval(self):
        row = Row("r", "r", "ms", "peer", at_most_times(1.05), in_pairs=True)
        tens = [10] * 15
        self.assertIs(result(row, [10.4] * 4 + [11] * 11, tens)["met"], True)
        self.assertIs(result(row, [10.4] * 3 + [11] * 12, tens)["met"], False)
        self.assertAlmostEqual(result(row, [10.4] * 3 + [11] * 12, tens)["ratio"]["median"], 1.1)

    def test_pairs_are_compared_two_by_two(self):
        row = Row("r", "r", "ms", "peer", at_most_times(1.05), in_pairs=True)
        self.assertEqual(result(row, [10, 200, 30], [10, 100, 30])["interval"], [1, 2])

    def test_more_is_better_where_the_goal_says_so(self):
        self.assertIs(result(Row("r", "r", "lines/s", "peer", FASTER), [30], [20])["met"], True)
        self.assertIs(result(Row("r", "r", "lines/s", "peer", FASTER), [29], [20])["met"], False)

    def test_a_figure_alone_has_its_own_goal_or_none(self):
        self.assertIs(result(Row("r", "r", "ms", None, at_most(5)), [4, 5, 9])["met"], True)
        self.assertIsNone(result(Row("r", "r", "ms"), [4])["met"])


if __name__ == "__main__":
    unittest.main()
