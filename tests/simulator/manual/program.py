"""What vornsim itself says about its commands and options. VORN_SIM names the program, VORN_SOURCE the project. A start
takes a second under sanitizers: nothing is asked twice.
"""

import dataclasses
import functools
import os
import pathlib
import re
import subprocess

PROGRAM = pathlib.Path(os.environ["VORN_SIM"])
SOURCE = pathlib.Path(os.environ["VORN_SOURCE"])
MANUAL = (SOURCE / "docs/simulator.md").read_text()
COMPLETIONS = SOURCE / "simulator/completions"


@dataclasses.dataclass
class Help:
    usage: str  # "vornsim new [OPTIONS] NAME"
    options: dict  # Each spelling, with the word for its value or "": {"--seed": "SEED", "-h": ""}
    values: dict  # The words that an option's value may be: {"--order": ["request", "time"], "--seed": ["random"]}
    exit_statuses: dict  # {"0": "all is as expected"}
    commands: list  # Those that it lists.


@functools.cache
def run(*arguments):
    """Runs the program. Returns its exit status, its output and its errors."""
    done = subprocess.run([PROGRAM, *arguments], capture_output=True, text=True, timeout=300, check=False)
    return done.returncode, done.stdout, done.stderr


@functools.cache
def help_of(*command):
    """What is printed for --help, of one command or of the program."""
    _, text, _ = run(*command, "--help")
    options, values = {}, {}
    for names, value, meaning in re.findall(r"^  (-[\w,-]+)(?: ([A-Z]+))? {2,}(.*)$", text, re.MULTILINE):
        for name in names.split(","):
            options[name] = value
        words = re.match(r"[^:]*: ([a-z, ]+ or [a-z]+);", meaning)
        if words:
            values[name] = [word for word in re.split(r",? or |, ", words.group(1)) if " " not in word]
    statuses = re.search(r"^Exit status: .*$", text, re.MULTILINE).group()
    commands = re.search(r"^Subcommands:\n((?:  .*\n)*)", text, re.MULTILINE)
    return Help(
        usage=re.search(r"^Usage: (.*)$", text, re.MULTILINE).group(1),
        options=options,
        values=values,
        exit_statuses=dict(re.findall(r"(\d) ([^,.]+)[,.]", statuses)),
        commands=re.findall(r"^  (\S+)", commands.group(1), re.MULTILINE) if commands else [],
    )


def commands():
    return help_of().commands


def all_options():
    """Every option of the program or of one of its commands."""
    return set(help_of().options).union(*(help_of(command).options for command in commands()))


def options_of_its_own(command):
    """The options of a command that not every command has."""
    return set(help_of(command).options) - {"-h", "--help"}


def options_with_a_value(*of):
    """The options of these commands that have a value; of the program and of all commands when none is named."""
    helps = [help_of(command) for command in of or commands()] + ([] if of else [help_of()])
    return {name for each in helps for name, value in each.options.items() if value}


def options_in(text):
    """Every option that a text names."""
    return set(re.findall(r"(?<![\w-])(?:--[a-z][a-z-]*|-[a-z])(?![\w-])", text))


def request_names():
    """The names that `vornsim explain` takes for METHOD."""
    _, _, errors = run("explain", "?", "0")
    return errors.rsplit("use one of ", 1)[1].strip().split(", ")
