"""Finds in the plugin's sources where a result is made, so that a table of results can be compared with them."""

import re

# Where a result begins. Members that are assigned later are the business of the row.
_RESULT = re.compile(
    r"""(?P<given>complete\(content\.get\(\),\s*)?   # No result: the content goes on, and the record is not used.
        (?P<made>Refusal\(RetCode::\w+,\s*"[^"]*"\)
          | SdkFailure\(error,\s*"[^"]*"\)
          | Inner\w+Ret(?:\s+ret)?\(RetCode::\w+(?:,\s*\d+,\s*"[^"]*")?\)
          | ret\.retCode\s*=\s*[^;]+
          | InnerLoginPluginRet\s+reply)""",
    re.VERBOSE,
)
_METHOD = re.compile(r"^[-+] \([^)]*\)(\w+)", re.MULTILINE)


def results_in(source):
    """[(method, statement)] in the order of the source. Comments count as code; white space as one blank."""
    methods = [(match.start(), match.group(1)) for match in _METHOD.finditer(source)]
    found = []
    for match in _RESULT.finditer(source):
        inside = [name for start, name in methods if start < match.start()]
        if inside and not match.group("given"):
            found.append((inside[-1], " ".join(match.group("made").split())))
    return found
