"""The single changes that a source is tried with. Each is small enough that a test should notice it."""

import dataclasses
import re

import tokens as reading

_COMPARISONS = {"==": "!=", "!=": "==", "<": "<=", "<=": "<", ">": ">=", ">=": ">"}
_CONNECTIVES = {"&&": "||", "||": "&&"}
_NOTHING = ("nil", "nullptr", "NULL", "Nil")
_ANSWERS = {"YES": "NO", "NO": "YES", "true": "false", "false": "true"}
_LEVELS = {
    "VORN_LOG_DEBUG": "VORN_LOG_ERROR",
    "VORN_LOG_ERROR": "VORN_LOG_DEBUG",
    "kLogDebug": "kLogError",
    "kLogError": "kLogDebug",
}
# The names of VornCodes.h by their group; each is changed to the one behind it.
_CODES = {
    "RetCode": ("kSuccess", "kCancelled", "kNotSupported", "kSystemRefused", "kNotInGamingMode", "kInvalidArgument",
                "kNeedSystemPermission", "kAppNotInstalled", "kThirdPartyError"),
    "MethodID": ("kShare", "kSendMessage", "kShareByPipeline"),
    "RequestType": ("kLink", "kImage", "kInvite", "kVideo"),
    "ObserverID": ("kLogin", "kDirect", "kLogout", "kLoginPlugin", "kQueryFriends"),
}
_CONVERSION = r"%[-+ #0]*\d*(?:\.\d+)?(?:hh|h|ll|l|z)?[A-Za-z@%]"
# A call, an assignment, a return or a throw; declarations do not look so.
_DROPPABLE = re.compile(
    r"""\[ | (?:return|throw)\b
      | (?:::)?\w+(?:<[^;=()]*?>)?(?:(?:::|\.|->)\w+(?:<[^;=()]*?>)?)*\s*(?:\(|\[|[-+*/]?=(?!=))""", re.VERBOSE)
_NOT_DROPPABLE = ("if", "for", "while", "switch", "do", "case", "default", "catch", "void")


@dataclasses.dataclass(frozen=True)
class Change:
    """Replaces the characters from `start` to `end` of a source by `text`."""

    operator: str
    start: int
    end: int
    text: str


def _changed_text(literal):
    """The literal with one character changed: the first letter that no conversion and no escape needs."""
    inner = literal[1:-1]
    if not inner:
        return literal[0] + "x" + literal[-1]
    untouchable = [match.span() for match in re.finditer(_CONVERSION + r"|\\.", inner)]
    free = [place for place in range(len(inner)) if not any(begin <= place < end for begin, end in untouchable)]
    letters = [place for place in free if inner[place].isalpha()]
    if not free:
        return None
    place = (letters or free)[0]
    other = "#" if not letters else chr(ord(inner[place]) + (-1 if inner[place] in "zZ" else 1))
    return literal[0] + inner[:place] + other + inner[place + 1:] + literal[-1]


def _changed_character(literal):
    return {"'\\0'": "'\\1'"}.get(literal, "'#'")


def _changed_number(literal):
    match = re.fullmatch(r"(\d+)((?:\.\d+)?[uUlLfF]*)", literal)
    return f"{int(match.group(1)) + 1}{match.group(2)}" if match else None


def _spaced(source, token):
    """Whether an operator stands between blanks: angle brackets and references do not."""
    return source[token.start - 1].isspace() and source[token.end].isspace()


def _literals(source, code):
    makers = {"text": _changed_text, "character": _changed_character, "number": _changed_number}
    operators = {"text": "text", "character": "constant", "number": "constant"}
    for index, token in enumerate(code):
        if token.kind not in makers or (index > 0 and code[index - 1].text == "extern"):
            continue
        changed = makers[token.kind](token.text)
        if changed is not None:
            yield Change(operators[token.kind], token.start, token.end, changed)


def _comparisons(source, code):
    for index, token in enumerate(code):
        if token.text not in _COMPARISONS or not _spaced(source, token) or code[index - 1].text == "operator":
            continue
        beside_nothing = code[index - 1].text in _NOTHING or code[index + 1].text in _NOTHING
        yield Change("nil-check" if beside_nothing else "comparison", token.start, token.end, _COMPARISONS[token.text])


def _logic(source, code):
    for token in code:
        if token.text in _CONNECTIVES and _spaced(source, token):
            yield Change("logic", token.start, token.end, _CONNECTIVES[token.text])
        elif token.text == "!":
            yield Change("logic", token.start, token.end, "")


def _names(source, code):
    for index, token in enumerate(code):
        if token.text in _LEVELS and not (index + 1 < len(code) and code[index + 1].text == "="):
            yield Change("level", token.start, token.end, _LEVELS[token.text])
        elif token.text in _ANSWERS:
            yield Change("answer", token.start, token.end, _ANSWERS[token.text])
        elif index >= 2 and code[index - 1].text == "::" and token.text in _CODES.get(code[index - 2].text, ()):
            group = _CODES[code[index - 2].text]
            yield Change("code", token.start, token.end, group[(group.index(token.text) + 1) % len(group)])


def _branches(source, code):
    """Conditions that always or never hold. What stood there is still computed, so that nothing becomes unused."""
    for index, token in enumerate(code):
        if token.text == "if" and code[index + 1].text == "(":
            opened, closed = code[index + 1], code[reading.closing_of(code, index + 1)]
            condition = source[opened.end:closed.start]
            for operator, rest in (("branch-always", "|| true"), ("branch-never", "&& false")):
                yield Change(operator, opened.end, closed.start, f"static_cast<bool>({condition}) {rest}")
        elif token.text == "?":
            yield Change("branch-always", token.start, token.end, "|| true ?")
            yield Change("branch-never", token.start, token.end, "&& false ?")


def _statement_end(code, begin):
    """The index of the semicolon that ends the statement at `begin`; nothing where it is not a simple statement."""
    index = begin
    while index < len(code):
        if code[index].text in ("(", "[", "{"):
            index = reading.closing_of(code, index)
        elif code[index].text == ";":
            return index
        elif code[index].text in (")", "]", "}"):
            return None
        index += 1
    return None


def _begins_statement(code, index):
    before = code[index - 1].text if index > 0 else ""
    if before != ":":
        return before in (";", "{", "}")
    place = index - 1
    while place > 0 and code[place].text not in (";", "{", "}"):
        place -= 1
        if code[place].text in ("case", "default"):
            return True
    return False


def _ends_its_function(code, index, end):
    """Whether the return from `index` to `end` is the last of its function or block. Without one that gives a value
    nothing compiles; without one that gives none nothing changes."""
    if code[index].text != "return":
        return False
    closing = end + 1
    while code[closing].text == "}":
        opened = next(place for place in range(index, -1, -1)
                      if code[place].text == "{" and reading.closing_of(code, place) == closing)
        head = opened
        while head > 0 and code[head - 1].text not in (";", "{", "}"):
            head -= 1
        if code[head].text in ("for", "while", "do"):
            return False
        if code[head].text not in ("if", "else", "switch", "case", "default"):
            return True
        if end > index + 1:
            return False  # Behind a condition other ways lead on.
        closing += 1
    return False


def _statements(source, code):
    """Statements that never run, and cases that run into the next one."""
    inside = reading.in_bodies(code)
    for index, token in enumerate(code):
        if not inside[index] or not _begins_statement(code, index) or token.text in _NOT_DROPPABLE:
            continue
        end = _statement_end(code, index)
        if end is None or _ends_its_function(code, index, end):
            continue
        statement = source[token.start:code[end].end]
        behind = [other.text for other in code[end + 1:end + 3]]
        runs_on = behind[0] in ("case", "default") or behind in (["}", "case"], ["}", "default"])
        if runs_on and token.text in ("break", "return"):
            yield Change("fall-through", token.start, code[end].end, "[[fallthrough]];")
        elif _DROPPABLE.match(statement):
            yield Change("statement", token.start, code[end].end, f"if (false) {{ {statement} }}")


def changes_of(source):
    """Every change of a source, in the order of the source."""
    code = reading.outside_assertions(reading.tokens_of(source))
    found = []
    for operator in (_literals, _comparisons, _logic, _names, _branches, _statements):
        found.extend(operator(source, code))
    return sorted(found, key=lambda change: (change.start, change.end, change.operator, change.text))
