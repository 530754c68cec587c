"""The texts that log lines are made of: formats, function names and file names, by which log tools find their lines."""

import re
import unittest

from slices import SOURCE, SliceTest, on_every_slice

LOGGING_SOURCES = [
    "VornFacebook/VornApplicationDelegate+Facebook.mm",
    "VornFacebook/VornFriendFacebook.mm",
    "VornFacebook/VornLoginFacebook.mm",
    "VornFacebook/VornReportFacebook.mm",
    "ShareDir/Common/VornDefine.h",
]

_FRIEND = "-[VornFriendFacebook {}]"
_SEND_OR_SHARE = _FRIEND.format("sendOrShareLinkOrIMG:methodID:seqID:observerID:")
_CREATE = _FRIEND.format("createFacebookLinkOrImageContent:methodID:seqID:complete:")
_SAVE = _FRIEND.format("saveVideoAndShare:methodID:seqID:complete:")

# Every method or block that writes a line to the log or a trace. Numbers count how deep a block lies in others.
FUNCTIONS = [
    "-[VornApplicationDelegate(Facebook) fb_application:options:]",
    "-[VornLoginFacebook login:]",
    "-[VornLoginFacebook login:]_block_invoke",
    "-[VornLoginFacebook logout:]",
    "-[VornReportFacebook initStat]",
    "-[VornReportFacebook reportEvent:params:isRealtime:seqID:extra:]",
    _FRIEND.format("sendMessage:params:observerID:"),
    _FRIEND.format("share:params:observerID:"),
    _FRIEND.format("addFriend:params:observerID:"),
    _FRIEND.format("addFriend:params:observerID:") + "_block_invoke",
    _FRIEND.format("queryFriends:params:"),
    _FRIEND.format("isBackendSupported:type:seqId:"),
    _FRIEND.format("isInGameMode"),
    _FRIEND.format("sharer:didCompleteWithResults:"),
    _FRIEND.format("sharer:didFailWithError:"),
    _FRIEND.format("sharerDidCancel:"),
    _FRIEND.format("gameRequestDialog:didCompleteWithResults:"),
    _FRIEND.format("gameRequestDialog:didFailWithError:"),
    _FRIEND.format("gameRequestDialogDidCancel:"),
    _FRIEND.format("invite:params:"),
    _FRIEND.format("isBatchInvite:seqID:"),
    _FRIEND.format("getInviteUserList:seqID:"),
    _FRIEND.format("setShareTaggablePeople:reqInfo:seqID:"),
    _SEND_OR_SHARE,
    _SEND_OR_SHARE + "_block_invoke",
    _SEND_OR_SHARE + "_block_invoke_2",
    _CREATE,
    _CREATE + "_block_invoke",
    _SAVE,
    _SAVE + "_block_invoke",
]
# Of the holder, whose lines carry plain names.
PLAIN_FUNCTIONS = ["CommitToTaskQueue", "cacheTask", "CallbackOnMainThread"]

_LITERAL = r'"((?:[^"\\]|\\.)*)"'


def source(path):
    return (SOURCE / path).read_text()


def formats(text):
    """The formats of a source's log statements."""
    statements = re.findall(rf"VORN_LOG_(?:DEBUG|ERROR)\(\s*((?:{_LITERAL}\s*)+)", text)
    return [
        "".join(re.findall(_LITERAL, statement[0])).encode().decode("unicode_escape") for statement in statements
    ]


def logging_methods(text):
    """The methods of a source in which, blocks included, a log statement stands, as "-[Class(Category) selector"."""
    methods = set()
    owner = None
    for part in re.split(r"^(?=@implementation|@end|[-+] ?\(|#define)", text, flags=re.MULTILINE):
        implementation = re.match(r"@implementation (\w+)(?: (\(\w+\)))?", part)
        if implementation:
            owner = implementation[1] + (implementation[2] or "")
        declaration = re.match(r"([-+]) ?\(.*?\)\s*(\w.*?)\s*\{", part, re.DOTALL)
        if owner is None or declaration is None or "VORN_LOG_" not in part and "VORN_TRACE(" not in part:
            continue
        arguments = re.findall(r"(\w+:)\s*\(", declaration[2])
        method = "".join(arguments) or declaration[2]
        methods.add(f"{declaration[1]}[{owner} {method}]")
    return methods


class LogTextsTest(SliceTest):
    def test_every_log_statement_of_the_sources_is_read(self):
        for path in LOGGING_SOURCES:
            statements = source(path).count("VORN_LOG_DEBUG(") + source(path).count("VORN_LOG_ERROR(")
            self.assertGreater(statements, 0, path)
            self.assertEqual(len(formats(source(path))), statements, f"{path}: a format is no plain literal")

    def test_no_other_source_logs(self):
        every = [*(SOURCE / "VornFacebook").glob("*.mm"), *(SOURCE / "VornFacebook").glob("*.h")]
        others = [path for path in every if f"VornFacebook/{path.name}" not in LOGGING_SOURCES]
        self.assert_none([path.name for path in others if "VORN_LOG_" in path.read_text()], "its lines are not checked")

    def test_the_table_has_every_method_that_logs(self):
        logging = set().union(*(logging_methods(source(path)) for path in LOGGING_SOURCES))
        in_table = {re.sub(r"_block_invoke.*", "", name) for name in FUNCTIONS}
        self.assert_same(sorted(in_table), sorted(logging), "this test does not know a method that logs")

    @on_every_slice
    def test_the_formats_of_the_sources_are_in_the_image(self, tested):
        texts = set(tested.image.texts())
        for path in LOGGING_SOURCES:
            missing = sorted(set(formats(source(path))) - texts)
            self.assert_none(missing, f"log tools look in vain for these lines of {path}")

    @on_every_slice
    def test_the_names_of_methods_and_blocks_are_those_that_log(self, tested):
        names = [text for text in tested.image.texts() if re.match(r"[-+]\[", text)]
        self.assert_same(sorted(names), sorted(FUNCTIONS), "log lines carry other names than log tools know")

    @on_every_slice
    def test_the_holder_logs_under_plain_names(self, tested):
        missing = sorted(set(PLAIN_FUNCTIONS) - set(tested.image.texts()))
        self.assert_none(missing, "log lines of the results' way carry other names")

    @on_every_slice
    def test_the_names_of_the_files_stand_without_a_folder(self, tested):
        names = [text for text in tested.image.texts() if re.search(r"\.(mm?|cc?|cpp|h)$", text)]
        self.assert_same(
            sorted(names),
            sorted(path.rsplit("/", 1)[-1] for path in LOGGING_SOURCES),
            "every line of the log works its file's name out of a path, and the build's folders are shown to the world",
        )


if __name__ == "__main__":
    unittest.main()
