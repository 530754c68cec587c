"""Splits a C++ or Objective-C++ source into tokens, as far as finding places to change needs it."""

import dataclasses
import re

_TOKEN = re.compile(
    r"""(?P<comment>//[^\n]*|/\*.*?\*/)
      | (?P<directive>^[ \t]*\#[ \t]*(?!define\b)(?:\\\n|[^\n])*)
      | (?P<define>^[ \t]*\#[ \t]*define[ \t]+\w+(?:\([^)]*\))?)
      | (?P<space>(?:\s|\\\n)+)
      | (?P<text>"(?:\\.|[^"\\\n])*")
      | (?P<character>'(?:\\.|[^'\\\n])*')
      | (?P<number>\.?\d(?:[\w.]|[eE][+-])*)
      | (?P<name>[A-Za-z_]\w*)
      | (?P<sign><<=|>>=|->|\+\+|--|&&|\|\||::|\.\.\.|[=!<>+\-*/%&|^]=|.)""",
    re.VERBOSE | re.DOTALL | re.MULTILINE,
)

_OPENING = {"(": ")", "[": "]", "{": "}"}


@dataclasses.dataclass(frozen=True)
class Token:
    kind: str
    text: str
    start: int

    @property
    def end(self):
        return self.start + len(self.text)


def tokens_of(source):
    """The tokens that are code: no comments, no white space, no preprocessor lines but what a #define stands for."""
    found = [Token(match.lastgroup, match.group(), match.start()) for match in _TOKEN.finditer(source)]
    return [token for token in found if token.kind not in ("comment", "directive", "define", "space")]


def line_of(source, position):
    return source.count("\n", 0, position) + 1


def closing_of(tokens, index):
    """The index of the bracket that closes the one at `index`."""
    depth = 0
    for other in range(index, len(tokens)):
        if tokens[other].text in _OPENING:
            depth += 1
        elif tokens[other].text in _OPENING.values():
            depth -= 1
        if depth == 0:
            return other
    raise ValueError("a bracket is never closed")


def outside_assertions(tokens):
    """The tokens without static_assert(...): a changed assertion fails the build and tells nothing of the tests."""
    kept = []
    index = 0
    while index < len(tokens):
        if tokens[index].text == "static_assert":
            index = closing_of(tokens, index + 1)
        else:
            kept.append(tokens[index])
        index += 1
    return kept


def _opens_code(tokens, index, inside_code):
    """Whether the brace at `index` opens a body, rather than a namespace, a type or a list of declarations."""
    begin = index
    while begin > 0 and tokens[begin - 1].text not in (";", "{", "}"):
        begin -= 1
    head = tokens[begin:index]
    for place, token in enumerate(head):
        declares = token.text in ("struct", "class", "namespace", "enum", "union", "extern")
        if declares and (place == 0 or head[place - 1].text in (">", "inline")):
            return False
    return inside_code or any(token.text == ")" for token in head)


def in_bodies(tokens):
    """For each token whether it stands in the body of a function, method or block."""
    answers = []
    stack = [False]
    for index, token in enumerate(tokens):
        if token.text == "}" and len(stack) > 1:
            stack.pop()
        answers.append(stack[-1])
        if token.text == "{":
            stack.append(_opens_code(tokens, index, stack[-1]))
    return answers
