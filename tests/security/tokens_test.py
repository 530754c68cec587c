"""The access token appears nowhere unless it is asked for: every form of output of every way in which a token comes
through a run is searched for it, whole, in part and encoded."""

import base64
import json
import unittest
import urllib.parse

from program import SecurityTest, run

TOKEN = 'EAABtoken/with"everything+&<it>=ZD'
FORMS = ["text", "json", "html", "none"]


def traces_of(token):
    """What would give the token away: itself, its beginning and its end, and the forms that it may be written in."""
    whole = token.encode()
    encoded = base64.b64encode(whole).decode().rstrip("=")
    quoted = urllib.parse.quote(token, safe="")
    traces = [token, token[:12], token[-12:], json.dumps(token)[1:-1], quoted, quoted[:12],
              token.replace("&", "&amp;").replace("<", "&lt;"), encoded[:-1], whole.hex(), token[::-1]]
    return [trace.encode() for trace in traces]


LOGIN = {"login": {"methodID": 111, "seqID": "s1", "permissions": "email"}}
SUCCESS = {"answer-login": {"outcome": "success", "token": TOKEN, "graphDomain": "gaming"}}
GAMING = [  # What a gaming login does with its token.
    {"add-friend": {"methodID": 213, "seqID": "s2", "observer": 31}},
    {"answer-friend-finder": {"outcome": "returned"}},
    {"share": {"methodID": 211, "seqID": "s3", "observer": 31, "type": "link", "link": "https://example.com"}},
    {"answer-share": {"outcome": "completed"}},
    {"logout": {"methodID": 112, "seqID": "s4"}},
]


class TokensTest(SecurityTest):
    def worlds(self):
        """Ways of a token: delivered, kept for later, lost, not as expected, with a fault, answered twice."""
        info = json.dumps({"access_token": TOKEN}, separators=(",", ":"))
        other = json.dumps({"access_token": TOKEN[::-1]}, separators=(",", ":"))
        record = {"record": "InnerLoginPluginRet", "observer": 109}
        return [
            self.world([LOGIN, SUCCESS, *GAMING], "delivered"),
            self.world([LOGIN, SUCCESS, {"observe": record}, {"collect": {}}], "collected", observers=[]),
            self.world([LOGIN, SUCCESS, LOGIN, SUCCESS], "lost", observers=[]),
            self.world([LOGIN, SUCCESS], "unexpected", expect={"results": []}),
            self.world([LOGIN, SUCCESS], "other", expect={"results": [record | {"channelInfo": other}]}),
            self.world([LOGIN, SUCCESS], "code", expect={"results": [record | {"channelInfo": info, "channelID": 7}]}),
            self.world([LOGIN], "missing", expect={"results": [{"channelInfo": info}]}),
            self.world([LOGIN, {"answer-login": SUCCESS["answer-login"] | {"times": 2}}], "twice"),
            self.world([{"throw": {"call": "FBSDKLoginManager logOut"}}, LOGIN], "throwing"),
            self.world([{"login": LOGIN["login"] | {"answers": [SUCCESS, SUCCESS]}}], "planned"),
        ]

    def test_no_form_of_output_has_the_token_or_a_part_of_it(self):
        worlds = self.worlds()
        for form in FORMS:
            for order in ["request", "time"]:
                _, output, errors = run("run", "--format", form, "--order", order, *worlds)
                for trace in traces_of(TOKEN):
                    self.assertNotIn(trace, output, form)
                    self.assertNotIn(trace, errors, form)

    def test_it_is_shown_in_every_form_where_it_is_asked_for(self):
        world = self.world([LOGIN, SUCCESS])
        for form in ["text", "json", "html"]:
            self.assertIn(b"EAABtoken/with", run("run", "--show-tokens", "--format", form, world)[1], form)

    def test_an_expectation_compares_the_token_whether_it_is_shown_or_not(self):
        def expecting(name, token):
            info = json.dumps({"access_token": token}, separators=(",", ":"))
            return self.world([LOGIN, SUCCESS], name, expect={"results": [{"channelInfo": info}]})

        same, shown = expecting("same", TOKEN), expecting("shown", f"<{len(TOKEN)} bytes>")
        other = expecting("other", TOKEN[:-1] + "C")
        for options in [[], ["--show-tokens"]]:
            self.assertEqual(run("run", *options, same, shown)[0], 0)
            self.assertEqual(run("run", *options, other)[0], 1)
        self.assertIn(b"with another token", run("run", other)[1])

    def test_a_bad_world_is_told_without_its_token(self):
        bad = dict(SUCCESS["answer-login"], graphDomain=7)
        status, output, errors = run("run", self.world([LOGIN, {"answer-login": bad}]))

        self.assertEqual(status, 2)
        for trace in traces_of(TOKEN):
            self.assertNotIn(trace, output + errors)

    def test_a_token_of_another_kind_is_hidden_too(self):
        for token in ["x" * 100_000, "\u0000-behind-a-nul", "\ufeffwith-a-mark", "</script>-and-markup", "\\u0041\\\\\"{}[]"]:
            answer = {"answer-login": {"outcome": "success", "token": token}}
            _, output, errors = run("run", "--format", "json", self.world([LOGIN, answer]))
            for text in [token[-12:].encode(), json.dumps(token)[-12:-1].encode()]:
                self.assertNotIn(text, output + errors, token[:30])


if __name__ == "__main__":
    unittest.main()
