"""Markup, control characters and format characters in every text of a world: the page has no element and no attribute
that a harmless world does not give it, JSON is valid and holds the texts, and text has no control characters."""

import html.parser
import json
import unittest

from program import SecurityTest, run

MARKUP = "\"'><img src=x onerror=alert(1)></script></style></title><!--]]>&lt;%s%n%@\x1b[31m\x07\u202e\u0085"
HARMLESS = "text"


def world_of(text):
    """A world with this text wherever a text may be."""
    params = {"methodID": 111, "seqID": text, "channel": text, "subChannel": text, "extraJson": text}
    request = params | {"observer": 31, "title": text, "desc": text, "user": text, "imagePath": text,
                        "thumbPath": text, "mediaPath": text}
    return {
        "question": text,
        "setting": {"configure": {"FACEBOOK_APP_ID": text, "FACEBOOK_DISPLAYNAME": text}, "sdk-version": text},
        "steps": [
            {"note": text},
            {"launch": {}},
            {"open-url": {"url": "fb1234://x", "source": text, "method": "source"}},
            {"login": params | {"permissions": text}},
            {"login": params | {"permissions": "email"}},
            {"answer-login": {"outcome": "error", "domain": text, "code": 3, "message": text}},
            {"login": params | {"permissions": "email"}},
            {"answer-login": {"outcome": "success", "token": text, "graphDomain": text}},
            {"report": {"event": text, "seqID": text, "extra": text, "params": {text: text}}},
            {"share": request | {"methodID": 211, "type": "link", "link": "https://example.com"}},
            {"answer-share": {"outcome": "error", "domain": text, "code": 3, "message": text}},
            {"share": request | {"methodID": 211, "type": "image", "link": text}},
            {"send-message": request | {"methodID": 212, "type": "invitation"}},
            {"answer-game-request": {"outcome": "sent", "request": text, "recipients": [text]}},
            {"commit": {"observer": 31, "seqID": text, "code": 3}},
            {"throw": {"call": "FBSDKLoginManager logOut", "name": text, "reason": text}},
            {"logout": params},
        ],
        "expect": {"results": [{"seqID": text, "retMsg": text, "channelInfo": text}], "unanswered": [text],
                   "cached": [text], "lines": [text, "not there " + text]},
    }


class Elements(html.parser.HTMLParser):
    """The elements and attributes of a page, and whether they are nested properly."""

    def __init__(self, page):
        super().__init__()
        self.found, self.open, self.text = set(), [], []
        self.feed(page)
        self.close()

    def handle_starttag(self, tag, attrs):
        names = tuple(name for name, _ in attrs)
        self.found.add((tag, names))
        if tag not in ("meta", "input"):
            self.open.append(tag)

    def handle_endtag(self, tag):
        assert self.open and self.open.pop() == tag, tag

    def handle_data(self, data):
        self.text.append(data)

    def handle_comment(self, data):
        self.found.add(("comment", ()))

    def unknown_decl(self, data):
        self.found.add(("declaration", ()))

    def handle_pi(self, data):
        self.found.add(("instruction", ()))


class PagesTest(SecurityTest):
    def play(self, form, text, order="request"):
        name = "harmless" if text == HARMLESS else "a<b>&'%s%n"
        path = self.write(name + ".world.json", json.dumps(world_of(text)))
        status, output, errors = run("run", "--order", order, "--format", form, path)
        self.assertIn(status, (0, 1), errors)
        self.assertEqual(errors, b"")
        return output

    def test_no_text_of_a_world_becomes_an_element_or_an_attribute(self):
        page = Elements(self.play("html", MARKUP).decode())

        self.assertEqual(page.open, [])
        self.assertLessEqual(page.found, Elements(self.play("html", HARMLESS).decode()).found)
        self.assertIn("<img src=x onerror=alert(1)>", "".join(page.text))

    def test_json_is_valid_and_holds_the_texts(self):
        report = json.loads(self.play("json", MARKUP))

        self.assertEqual(report["runs"][0]["question"], MARKUP)
        self.assertIn(MARKUP, [request["seqID"] for request in report["runs"][0]["requests"]])

    def test_text_and_page_have_no_control_characters(self):
        for form, order in [("text", "request"), ("text", "time"), ("html", "request")]:
            output = self.play(form, MARKUP, order)
            self.assert_harmless_text(output)
            self.assertIn(b"%s%n%@", output)

    def test_what_is_told_without_a_timeline_has_none_either(self):
        path = self.write("t.world.json", json.dumps(world_of(MARKUP)))
        status, output, errors = run("run", "--format", "none", path)

        self.assertEqual((status, output), (1, b""))
        self.assertIn(b"%s%n%@", errors)
        self.assert_harmless_text(errors)

    def test_every_text_of_a_harmless_world_is_on_the_page(self):
        marked = json.dumps(world_of("MARK"))
        path = self.write("marked.world.json", marked)
        page = run("run", "--format", "html", path)[1].decode()

        self.assertGreater(page.count("MARK"), marked.count("MARK"))


if __name__ == "__main__":
    unittest.main()
