"""Runs vornsim for the tests of the worlds. VORN_SIM names the program, VORN_JUDGE the one that judges many worlds, and
VORN_SOURCE the project's folder. A start takes a second under sanitizers: few of them, with many worlds each."""

import json
import os
import pathlib
import subprocess

PROGRAM = os.environ["VORN_SIM"]
JUDGE = os.environ["VORN_JUDGE"]
SOURCE = pathlib.Path(os.environ["VORN_SOURCE"])
WORLDS = SOURCE / "simulator" / "worlds"
ENDING = ".world.json"


def shipped_names():
    """The names of the shipped worlds, sorted."""
    return sorted(path.name.removesuffix(ENDING) for path in WORLDS.glob("*" + ENDING))


def read_world(name):
    return json.loads((WORLDS / (name + ENDING)).read_text())


def run(*arguments):
    """Runs the program. Returns its exit status, its output and its errors."""
    done = subprocess.run([PROGRAM, *arguments], capture_output=True, text=True, timeout=300, check=False)
    return done.returncode, done.stdout, done.stderr


def judge(paths):
    """Whether the program can use each of these files as a world: {path: True or False}."""
    done = subprocess.run([JUDGE, *paths], capture_output=True, text=True, timeout=300, check=True)
    return {path: f"taken {path}" in done.stdout.splitlines() for path in paths}


_report = None


def report():
    """What a run of all shipped worlds says in JSON; they are played once."""
    global _report
    if _report is None:
        _report = json.loads(run("run", "--format", "json", *shipped_names())[1])
    return _report
