#!/usr/bin/env python3
"""The shipped worlds show every result that the plugin can make, and no result is missing from the table of them."""

import unittest

import vornsim
from plugin_results import results_in
from result_rows import FRIEND_ROWS, LOGIN_ROWS, NONE, PARKED, REQUEST


def _is_shown_by(row, request, entry):
    """Whether the result of an entry is the row's, for what is seen of the result itself."""
    result = entry["result"]
    fields = result["fields"]
    method_id = fields.get("methodNameID")
    if row.method_id == REQUEST and method_id != request["method"]:
        return False
    if row.method_id == NONE and method_id != 0:
        return False
    if row.method_id == PARKED and method_id == request["method"]:
        return False
    return result["record"] == row.record and all(fields.get(key) == value for key, value in row.fields.items())


def _shows(row, run):
    """Whether a run has a request with the row's log line and, behind it, the row's result."""
    logged = set()
    for entry in run["entries"]:
        if entry["request"] is None:
            continue
        if entry["kind"] in ("log", "log error") and row.log in entry["text"]:
            logged.add(entry["request"])
        if entry["kind"] == "record" and entry["request"] in logged:
            if _is_shown_by(row, run["requests"][entry["request"]], entry):
                return True
    return False


class ResultRows(unittest.TestCase):
    def test_every_result_of_the_friend_plugin_is_in_the_table(self):
        source = (vornsim.SOURCE / "VornFacebook/VornFriendFacebook.mm").read_text()

        self.assertEqual([(row.method, row.statement) for row in FRIEND_ROWS], results_in(source))

    def test_every_result_of_the_login_plugin_is_in_the_table(self):
        source = (vornsim.SOURCE / "VornFacebook/VornLoginFacebook.mm").read_text()

        self.assertEqual([(row.method, row.statement) for row in LOGIN_ROWS], results_in(source))

    def test_some_world_shows_each_of_them(self):
        runs = vornsim.report()["runs"]

        for row in FRIEND_ROWS + LOGIN_ROWS:
            if not row.unreachable:
                with self.subTest(method=row.method, statement=row.statement, log=row.log):
                    self.assertTrue(any(_shows(row, run) for run in runs), "no shipped world shows this result")


if __name__ == "__main__":
    unittest.main()
