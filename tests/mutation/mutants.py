"""The mutants of the tree: the plugin's sources and the headers that it shares with the core, each with one change."""

import collections
import dataclasses
import random

import operators
import tokens

FOLDERS = ("VornFacebook", "ShareDir/Common")


@dataclasses.dataclass(frozen=True)
class Mutant:
    """A file with one change. `code`, `change` and `occurrence` name it for as long as its line is not edited."""

    name: str  # File, line and operator, with a number where a line has several: for people and --only.
    file: str
    line: int
    operator: str
    code: str
    change: str
    occurrence: int
    edit: operators.Change

    def apply(self, source):
        return source[:self.edit.start] + self.edit.text + source[self.edit.end:]

    def key(self):
        return (self.file, self.operator, self.code, self.change, self.occurrence)


def _one_line(text):
    return " ".join(text.replace("\\\n", " ").split())


def mutants_of(file, source):
    """The mutants of one file, in its order."""
    lines = source.split("\n")
    names = collections.Counter()
    keys = collections.Counter()
    made = []
    for edit in operators.changes_of(source):
        line = tokens.line_of(source, edit.start)
        code = lines[line - 1].rstrip("\\").strip()
        change = f"{_one_line(source[edit.start:edit.end])} -> {_one_line(edit.text)}"
        name = f"{file.rsplit('/', 1)[-1]}:{line}:{edit.operator}"
        names[name] += 1
        keys[(edit.operator, code, change)] += 1
        number = f":{names[name]}" if names[name] > 1 else ""
        occurrence = keys[(edit.operator, code, change)]
        made.append(Mutant(name + number, file, line, edit.operator, code, change, occurrence, edit))
    return made


def all_mutants(root):
    """The mutants of the tree below `root`, file by file."""
    paths = [path for folder in FOLDERS for path in sorted((root / folder).glob("*.*"))]
    found = []
    for path in paths:
        if path.suffix not in (".h", ".mm"):
            continue
        found.extend(mutants_of(path.relative_to(root).as_posix(), path.read_text()))
    return found


def sample(mutants, limit, seed):
    """At most `limit` of them, drawn with `seed`, in their order. 0 draws all. Each draws a lot of its own, so that a
    change of the sources leaves the others' as they are."""
    if limit == 0 or len(mutants) <= limit:
        return mutants
    lots = {mutant.key(): random.Random(repr((seed, mutant.key()))).random() for mutant in mutants}
    drawn = set(sorted(lots, key=lots.get)[:limit])
    return [mutant for mutant in mutants if mutant.key() in drawn]
