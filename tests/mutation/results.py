"""What a run found: the table, the file with every mutant, and whether the run is good."""

import collections
import dataclasses
import json

DOES_NOT_COMPILE, KILLED, SURVIVED = "does not compile", "killed", "survived"
REQUIRED_PERCENTAGE = 95.0


@dataclasses.dataclass(frozen=True)
class Outcome:
    mutant: object
    status: str
    program: str  # Which one notices, and how.


def read_survivors(path):
    """The known survivors: {key of a mutant: reason}. Raises ValueError for an entry that is no use."""
    known = {}
    for entry in json.loads(path.read_text()):
        key = (entry["file"], entry["operator"], entry["code"], entry["change"], entry.get("occurrence", 1))
        if key in known:
            raise ValueError(f"{path} lists a mutant twice: {entry}")
        if not entry.get("reason", "").strip():
            raise ValueError(f"{path} gives no reason for: {entry}")
        known[key] = entry["reason"]
    return known


def as_survivor(mutant):
    """The mutant as an entry of the list, with the reason left to write."""
    entry = {"file": mutant.file, "operator": mutant.operator, "code": mutant.code, "change": mutant.change}
    if mutant.occurrence > 1:
        entry["occurrence"] = mutant.occurrence
    return entry | {"reason": ""}


def percentage(outcomes):
    """How many of those that compile were killed, in percent; 100 when none compiles."""
    counts = collections.Counter(outcome.status for outcome in outcomes)
    judged = counts[KILLED] + counts[SURVIVED]
    return 100.0 * counts[KILLED] / judged if judged else 100.0


def faults_of(outcomes, every, known, whole):
    """What is wrong with a run, one line each. `every` holds all mutants of the tree, also those that were not tried.
    The percentage is asked for where the run is of the whole tree."""
    faults = []
    for outcome in outcomes:
        if outcome.status == SURVIVED and outcome.mutant.key() not in known:
            faults.append(f"{outcome.mutant.name} survived: {outcome.mutant.change}")
        if outcome.status != SURVIVED and outcome.mutant.key() in known:
            faults.append(f"{outcome.mutant.name} is listed as a survivor, but: {outcome.status}")
    existing = {mutant.key() for mutant in every}
    faults.extend(f"a listed survivor no longer exists: {key}" for key in known if key not in existing)
    if whole and percentage(outcomes) < REQUIRED_PERCENTAGE:
        faults.append(f"{percentage(outcomes):.1f} % were killed, at least {REQUIRED_PERCENTAGE} % must be")
    return faults


def _row(name, outcomes):
    counts = collections.Counter(outcome.status for outcome in outcomes)
    numbers = (len(outcomes), counts[DOES_NOT_COMPILE], counts[KILLED], counts[SURVIVED])
    return f"{name:<52}" + "".join(f"{number:>10}" for number in numbers) + f"{percentage(outcomes):>9.1f} %"


def table(outcomes):
    """The figures by file and by operator, as text."""
    lines = [f"{'':<52}{'made':>10}{'no build':>10}{'killed':>10}{'survived':>10}{'killed':>11}"]
    for title, group_of in (("by file", lambda outcome: outcome.mutant.file),
                            ("by operator", lambda outcome: outcome.mutant.operator)):
        groups = collections.defaultdict(list)
        for outcome in outcomes:
            groups[group_of(outcome)].append(outcome)
        lines.append(title)
        lines.extend(_row("  " + name, groups[name]) for name in sorted(groups))
    return "\n".join([*lines, _row("all", outcomes)])


def write_json(path, outcomes, known):
    """Every mutant with what became of it."""
    listed = [{"name": outcome.mutant.name, "status": outcome.status, "program": outcome.program,
               **as_survivor(outcome.mutant), "reason": known.get(outcome.mutant.key(), "")} for outcome in outcomes]
    path.write_text(json.dumps(listed, indent=1) + "\n")
