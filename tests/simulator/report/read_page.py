"""Reads a page strictly and prints its elements with their attributes, one a line, or with --text its text.

Called by: HtmlReportTest. Exit status 1 and a message when elements are not nested properly.
"""
import html.parser
import sys

EMPTY = {"meta", "input"}


class Reader(html.parser.HTMLParser):
    def __init__(self):
        super().__init__(convert_charrefs=True)
        self.open = []
        self.elements = []
        self.text = []

    def handle_starttag(self, tag, attrs):
        self.elements.append("<" + tag + " " + " ".join(f"{name}={value!r}" for name, value in attrs) + ">")
        if tag not in EMPTY:
            self.open.append(tag)

    def handle_startendtag(self, tag, attrs):
        sys.exit(f"<{tag}/> at {self.getpos()}")

    def handle_endtag(self, tag):
        if not self.open or self.open[-1] != tag:
            sys.exit(f"</{tag}> at {self.getpos()} inside of {self.open}")
        self.open.pop()
        self.elements.append(f"</{tag}>")

    def handle_data(self, data):
        self.text.append(data)

    def handle_comment(self, data):
        self.elements.append("<!-- -->")

    def handle_decl(self, decl):
        self.elements.append(f"<!{decl}>")

    def unknown_decl(self, data):
        self.elements.append("<![ ]>")

    def handle_pi(self, data):
        self.elements.append("<? ?>")


reader = Reader()
with open(sys.argv[-1], encoding="utf-8") as page:
    reader.feed(page.read())
reader.close()
if reader.open:
    sys.exit(f"open at the end: {reader.open}")
sys.stdout.write("".join(reader.text) if "--text" in sys.argv else "\n".join(reader.elements))
