"""What commands cost, and the parts that they are made of: search, lookup, script."""

from .programs import check_nothing, require_count
from .rows import ROWS

FOUND = b"\nWindow::Window: Window found successfully"
# The programs count in microseconds.
PER_MICROSECOND = {"µs": 1, "ms": 1e-3, "s": 1e-6}
UNITS = {row.key: row.unit for row in ROWS}


def check_commands(figures, folder, _output):
    """Both sides have written the same: a window found, once for each command."""
    text = b"\n" + (folder / "output.txt").read_bytes()
    require_count("windows found in output.txt", text.count(FOUND), figures["written"])


def values_of(figures, unit_of):
    for key, sides in figures["rows"].items():
        for side, values in sides.items():
            for value in values:
                yield key, side, value * PER_MICROSECOND[unit_of(key)]


def measure_commands(programs, sizes):
    figures = programs.run("bench_commands", "--pairs", str(sizes.command_pairs), "--typing-pairs",
                           str(sizes.typing_pairs), "--characters", str(sizes.characters), check=check_commands)
    yield from values_of(figures, UNITS.get)


def run_parts(programs, pairs, windows, children, depth):
    return programs.run("bench_parts", "--windows", str(windows), "--children", str(children), "--depth", str(depth),
                        "--pairs", str(pairs), check=check_nothing)


def run_script(programs, what, lines, times):
    return programs.run("bench_script", "--measure", what, "--lines", str(lines), "--times", str(times),
                        check=check_nothing)


def measure_parts(programs, sizes):
    figures = run_parts(programs, sizes.part_pairs, sizes.windows, sizes.children, sizes.depth)
    yield from values_of(figures, UNITS.get)


def measure_script(programs, sizes):
    yield from values_of(run_script(programs, "script", sizes.validated_lines, sizes.script_pairs), UNITS.get)
    yield from values_of(run_script(programs, "refused", 1, sizes.refusals), UNITS.get)
