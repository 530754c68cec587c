"""Figures that were accepted once and are kept beside the tests: by how much others may depart from them."""

import json

# Less than one of a small count is never within it.
TOLERANCE = 0.02


def departures(figures, accepted):
    """What differs too much from the accepted figures, in words; a figure that only one of the two has is named too."""
    found = [f"{name}: {accepted[name]} is not measured any more" for name in accepted if name not in figures]
    for name, figure in figures.items():
        if name not in accepted:
            found.append(f"{name}: {figure} was never accepted")
        elif abs(figure - accepted[name]) > TOLERANCE * accepted[name]:
            found.append(f"{name}: {figure} instead of {accepted[name]} ({figure / accepted[name] - 1:+.1%})")
    return found


def read(path):
    return json.loads(path.read_text())


def write(path, figures):
    path.write_text(json.dumps(figures, indent=2) + "\n")
