"""What people and programs see of the totals."""

import json


def line_of(outcome):
    each = outcome.executions / outcome.seconds if outcome.seconds else 0
    found = f"  FOUND {outcome.finding['what']}" if outcome.finding else ""
    return f"{outcome.target:<16}{outcome.executions:>12,} in {outcome.seconds:6.1f} s{each:>12,.0f} /s{found}"


def rows_of(targets, totals):
    for target in sorted((t for t in targets if not t.is_hidden), key=lambda t: t.name):
        sums = totals.of(target.name)
        yield target, sums["executions"], sums["seconds"], len(sums["findings"])


def table(targets, totals):
    text = f"{'target':<16}{'executions':>14}{'seconds':>10}{'findings':>10}\n"
    for target, executions, seconds, findings in rows_of(targets, totals):
        text += f"{target.name:<16}{executions:>14,}{seconds:>10,.0f}{findings:>10}\n"
    sums = totals.as_json()
    return text + f"{'all':<16}{sums['executions']:>14,}{sums['seconds']:>10,.0f}{sums['findings']:>10}\n"


def markdown(targets, totals):
    text = "| target | what is fuzzed | what must hold | executions | minutes |\n|---|---|---|---:|---:|\n"
    for target, executions, seconds, _ in rows_of(targets, totals):
        text += f"| `{target.name}` | {target.what} | {target.holds} | {executions:,} | {seconds / 60:,.0f} |\n"
    sums = totals.as_json()
    return text + f"| all | | | {sums['executions']:,} | {sums['seconds'] / 60:,.0f} |\n"


def json_text(totals):
    return json.dumps(totals.as_json(), indent=2) + "\n"
