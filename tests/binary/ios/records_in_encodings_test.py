"""Records inside type encodings: the core and the plugin must spell the fields of one alike."""

import re
import unittest

from slices import SliceTest, on_every_slice
from type_encodings import BASE_RET, FRIEND_REQ_INFO, STRING

# The methods that take a result.
BASE_RET_METHODS = ["handleInnerCallbacks:", "handleInnerCallbacks:params:"]
# What the content builders call: an object of Facebook's and the result.
CONTENT_COMPLETION = f'v80@?0@"<FBSDKSharingContent>"8{BASE_RET}16'

RECORDS = {"InnerBaseRet": BASE_RET, "VornFriendReqInfo": FRIEND_REQ_INFO, "String": STRING}


class RecordsInEncodingsTest(SliceTest):
    @on_every_slice
    def test_a_record_is_spelt_with_its_fields_wherever_it_stands(self, tested):
        encodings = [text for text in tested.image.texts() if any("{" + name + "=" in text for name in RECORDS)]
        for name, expected in RECORDS.items():
            found = {
                text[start : start + len(expected)]
                for text in encodings
                for start in (match.start() for match in re.finditer(r"\{" + name + r"\b", text))
            }
            self.assert_same(
                found, {expected}, f"the fields of {name} lie elsewhere for the plugin than for the core"
            )

    @on_every_slice
    def test_the_result_crosses_the_border_of_two_methods_by_pointer(self, tested):
        methods = tested.metadata.class_named("VornFriendFacebook").methods
        self.assert_same(
            sorted(method.name for method in methods if "^" + BASE_RET in method.types),
            BASE_RET_METHODS,
            "a result is handed on in another form than the methods read it",
        )

    @on_every_slice
    def test_the_completion_of_the_content_takes_the_result_by_value(self, tested):
        signatures = {text for text in tested.image.texts() if "@?0" in text and "{InnerBaseRet" in text}
        self.assert_same(signatures, {CONTENT_COMPLETION}, "the completion reads its result from another place")


if __name__ == "__main__":
    unittest.main()
