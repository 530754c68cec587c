"""The command line: draws the mutants, has them judged, and says what was found."""

import argparse
import concurrent.futures
import fcntl
import os
import pathlib
import queue
import sys

import mutants
import programs
import results
import workspace

CHECKOUT = pathlib.Path(__file__).resolve().parents[2]
SURVIVORS = CHECKOUT / "tests" / "mutation" / "survivors.json"


def _arguments(words):
    parser = argparse.ArgumentParser(
        prog="scripts/mutate",
        description="Changes the plugin's sources one place at a time, in copies of the tree, and sees whether a test "
                    "notices.",
        epilog="The exit status is 1 when a mutant survives that tests/mutation/survivors.json does not list, when a "
               "listed one no longer survives or exists, or when too few are killed; 2 when the tree itself is broken.")
    parser.add_argument("--list", action="store_true", help="print the mutants and do no more")
    parser.add_argument("--file", action="append", default=[], metavar="NAME",
                        help="only mutants of this file; may be repeated")
    parser.add_argument("--only", action="append", default=[], metavar="MUTANT",
                        help="only this mutant; may be repeated")
    parser.add_argument("--limit", type=int, default=330, help="how many to draw at most; 0 for all (%(default)s)")
    parser.add_argument("--seed", type=int, default=1, help="what the draw begins with (%(default)s)")
    parser.add_argument("--jobs", type=int, default=os.cpu_count(), help="how many copies to work in (%(default)s)")
    parser.add_argument("--json", type=pathlib.Path, default=CHECKOUT / "build" / "mutation.json",
                        help="where every mutant is written (build/mutation.json)")
    return parser.parse_args(words)


def chosen(every, arguments):
    """The mutants that the arguments ask for. Raises ValueError for a file or a mutant that does not exist."""
    for name in arguments.file:
        if all(mutant.file.rsplit("/", 1)[-1] != name.rsplit("/", 1)[-1] for mutant in every):
            raise ValueError(f"no mutant is in {name}")
    for name in arguments.only:
        if all(mutant.name != name for mutant in every):
            raise ValueError(f"there is no mutant {name}")
    files = {name.rsplit("/", 1)[-1] for name in arguments.file}
    kept = [mutant for mutant in every
            if (not files or mutant.file.rsplit("/", 1)[-1] in files)
            and (not arguments.only or mutant.name in arguments.only)]
    return mutants.sample(kept, arguments.limit, arguments.seed)


def _tell(outcome):
    print(f"{outcome.status:<16} {outcome.mutant.name:<50} {outcome.program or outcome.mutant.change}", flush=True)


def judge_all(drawn, spaces, tell):
    """Has the mutants judged, each in the first copy that is free. The outcomes are in the order of the mutants."""
    free = queue.SimpleQueue()
    for space in spaces:
        free.put(space)

    def judge(mutant):
        space = free.get()
        try:
            outcome = results.Outcome(mutant, *workspace.judge(space, mutant))
        finally:
            free.put(space)
        tell(outcome)
        return outcome

    with concurrent.futures.ThreadPoolExecutor(len(spaces)) as pool:
        return list(pool.map(judge, drawn))


def _run(arguments):
    every = mutants.all_mutants(CHECKOUT)
    drawn = chosen(every, arguments)
    if arguments.list:
        for mutant in drawn:
            print(f"{mutant.name}: {mutant.change}")
        return 0
    known = results.read_survivors(SURVIVORS)
    spaces = [workspace.Workspace(CHECKOUT, number + 1) for number in range(max(1, arguments.jobs))]
    for space in spaces:
        print(f"{space.folder}: copying, building and testing what is to be changed", flush=True)
        space.prepare(programs.all_programs())
    outcomes = judge_all(drawn, spaces, _tell)
    results.write_json(arguments.json, outcomes, known)
    print(results.table(outcomes))
    faults = results.faults_of(outcomes, every, known, whole=not (arguments.file or arguments.only))
    for fault in faults:
        print(f"mutate: {fault}", file=sys.stderr)
    return 1 if faults else 0


def main(words):
    arguments = _arguments(words)
    (CHECKOUT / "build").mkdir(exist_ok=True)
    with (CHECKOUT / "build" / "mutation.lock").open("w") as lock:
        try:
            if not arguments.list:
                fcntl.flock(lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
            return _run(arguments)
        except BlockingIOError:
            problem = "another run is under way"
        except (workspace.Broken, ValueError) as broken:
            problem = broken
    print(f"mutate: {problem}", file=sys.stderr)
    return 2
