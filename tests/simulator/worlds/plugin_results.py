"""Finds in the plugin's sources where a result is made, so that a table of results can be compared with them."""

import re

# Where a result begins. Members that are assigned later are the business of the row.
_RESULT = re.compile(
    r"""Refus(?:al|e)\((?:self,\s*|\*job,\s*)?(?P<refusal>RetCode::\w+,\s*"[^"]*")
      | (?:Answer\(self|Fail\(complete),\s*(?P<code>RetCode::\w+)
      | (?P<record>Inner\w+Ret)(?:\s+ret)?(?P<values>\(RetCode::\w+(?:,\s*\d+,\s*"[^"]*")?\))
      | (?P<other>SdkFailure\(error,\s*"[^"]*"\) | ret\.retCode\s*=\s*[^;]+ | InnerLoginPluginRet\s+reply)""",
    re.VERBOSE,
)
_METHOD = re.compile(r"^[-+] \([^)]*\)(\w+)", re.MULTILINE)


def _statement(match):
    """The result by the record that is made, however the source writes it down."""
    if match["refusal"]:
        made = f"Refusal({match['refusal']})"
    elif match["code"]:
        made = f"InnerBaseRet({match['code']})"
    elif match["record"]:
        made = match["record"] + match["values"]
    else:
        made = match["other"]
    return " ".join(made.split())


def results_in(source):
    """[(method, statement)] in the order of the source. Comments count as code; white space as one blank."""
    methods = [(match.start(), match.group(1)) for match in _METHOD.finditer(source)]
    found = []
    for match in _RESULT.finditer(source):
        inside = [name for start, name in methods if start < match.start()]
        if inside:
            found.append((inside[-1], _statement(match)))
    return found
