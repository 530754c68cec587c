"""The protocols that the image brings along. At run time the first image's definition of a name is everybody's, so they
must say what the core's and the kits' own say."""

import unittest
from dataclasses import dataclass, field

from objcmeta import STRING_BY_VALUE, without_string_layout
from slices import SliceTest, on_every_slice
from type_encodings import (
    BASE_PARAMS_POINTER,
    CONST_BASE_PARAMS_POINTER,
    CONST_FRIEND_REQ_INFO_POINTER,
    LOGIN_PARAMS,
)


@dataclass
class ExpectedProtocol:
    """Methods by name: their types, and with the classes of objects where those add something."""

    inherited: list
    required: dict
    optional: dict = field(default_factory=dict)
    properties: list = field(default_factory=list)


REQUEST = f"v36@0:8{CONST_FRIEND_REQ_INFO_POINTER}16{BASE_PARAMS_POINTER}24I32"

PROTOCOLS = {
    "VornLoginDelegate": ExpectedProtocol(
        inherited=["NSObject"],
        required={
            "login:": f"v144@0:8{LOGIN_PARAMS}16",
            "logout:": f"v24@0:8{CONST_BASE_PARAMS_POINTER}16",
        },
    ),
    "VornFriendDelegate": ExpectedProtocol(
        inherited=["NSObject"],
        required={
            "sendMessage:params:observerID:": REQUEST,
            "share:params:observerID:": REQUEST,
        },
        optional={
            "queryFriends:params:": f"v32@0:8r^v16{BASE_PARAMS_POINTER}24",
            "addFriend:params:observerID:": REQUEST,
            "isBackendSupported:type:seqId:": ("B32@0:8i16i20@24", 'B32@0:8i16i20@"NSString"24'),
            "needOpenid2Uid:reqInfo:seqId:": (
                f"B36@0:8i16{CONST_FRIEND_REQ_INFO_POINTER}20@28",
                f'B36@0:8i16{CONST_FRIEND_REQ_INFO_POINTER}20@"NSString"28',
            ),
        },
    ),
    "VornReportDelegate": ExpectedProtocol(
        inherited=["NSObject"],
        required={
            "initStat": "B16@0:8",
            "reportEvent:params:isRealtime:seqID:extra:": (
                "v52@0:8@16@24B32@36@44",
                'v52@0:8@"NSString"16@"NSDictionary"24B32@"NSString"36@"NSString"44',
            ),
        },
        optional={
            "setPushToken:": ("v24@0:8@16", 'v24@0:8@"NSString"16'),
            "getInstanceID:": (f"{STRING_BY_VALUE}24@0:8@16", f'{STRING_BY_VALUE}24@0:8@"NSString"16'),
        },
    ),
    "FBSDKSharingDelegate": ExpectedProtocol(
        inherited=[],
        required={
            "sharer:didCompleteWithResults:": (
                "v32@0:8@16@24",
                'v32@0:8@"<FBSDKSharing>"16@"NSDictionary"24',
            ),
            "sharer:didFailWithError:": ("v32@0:8@16@24", 'v32@0:8@"<FBSDKSharing>"16@"NSError"24'),
            "sharerDidCancel:": ("v24@0:8@16", 'v24@0:8@"<FBSDKSharing>"16'),
        },
    ),
    "FBSDKGameRequestDialogDelegate": ExpectedProtocol(
        inherited=[],
        required={
            "gameRequestDialog:didCompleteWithResults:": (
                "v32@0:8@16@24",
                'v32@0:8@"FBSDKGameRequestDialog"16@"NSDictionary"24',
            ),
            "gameRequestDialog:didFailWithError:": (
                "v32@0:8@16@24",
                'v32@0:8@"FBSDKGameRequestDialog"16@"NSError"24',
            ),
            "gameRequestDialogDidCancel:": ("v24@0:8@16", 'v24@0:8@"FBSDKGameRequestDialog"16'),
        },
    ),
    "NSObject": ExpectedProtocol(
        inherited=[],
        required={
            "isEqual:": "B24@0:8@16",
            "hash": "Q16@0:8",
            "superclass": "#16@0:8",
            "class": "#16@0:8",
            "self": "@16@0:8",
            "performSelector:": "@24@0:8:16",
            "performSelector:withObject:": "@32@0:8:16@24",
            "performSelector:withObject:withObject:": "@40@0:8:16@24@32",
            "isProxy": "B16@0:8",
            "isKindOfClass:": "B24@0:8#16",
            "isMemberOfClass:": "B24@0:8#16",
            "conformsToProtocol:": ("B24@0:8@16", 'B24@0:8@"Protocol"16'),
            "respondsToSelector:": "B24@0:8:16",
            "retain": "@16@0:8",
            "release": "Vv16@0:8",
            "autorelease": "@16@0:8",
            "retainCount": "Q16@0:8",
            "zone": "^{_NSZone=}16@0:8",
            "description": ("@16@0:8", '@"NSString"16@0:8'),
        },
        optional={"debugDescription": ("@16@0:8", '@"NSString"16@0:8')},
        properties=[
            ("hash", "TQ,R"),
            ("superclass", "T#,R"),
            ("description", 'T@"NSString",R,C'),
            ("debugDescription", 'T@"NSString",R,C'),
        ],
    ),
}


def both_types(methods):
    """Every method with its types and those with classes."""
    return {name: types if isinstance(types, tuple) else (types, types) for name, types in methods.items()}


def as_table(methods):
    return {
        name: (without_string_layout(types), None if extended is None else without_string_layout(extended))
        for name, types, extended in methods
    }


class ProtocolsTest(SliceTest):
    def assert_for_each_protocol(self, tested, actual_of, expected_of, breaks):
        for name, expected in PROTOCOLS.items():
            with self.subTest(name=name):
                found = tested.metadata.protocol_named(name)
                self.assertIsNotNone(found, f"{name} is missing")
                self.assert_same(actual_of(found), expected_of(expected), breaks.format(name))

    @on_every_slice
    def test_the_image_brings_the_protocols_of_its_classes_and_no_other(self, tested):
        self.assert_same(
            sorted(found.name for found in tested.metadata.protocols),
            sorted(PROTOCOLS),
            "the runtime does not know a protocol that a plugin adopts, or gets a foreign one from here",
        )

    @on_every_slice
    def test_the_protocols_build_upon_the_ones_they_are_declared_with(self, tested):
        self.assert_for_each_protocol(
            tested,
            lambda found: found.inherited,
            lambda expected: expected.inherited,
            "conformsToProtocol: answers otherwise for what {} builds upon",
        )

    @on_every_slice
    def test_the_required_methods_have_their_names_and_types(self, tested):
        self.assert_for_each_protocol(
            tested,
            lambda found: as_table(found.required),
            lambda expected: both_types(expected.required),
            "{} promises other methods than the callers send",
        )

    @on_every_slice
    def test_the_optional_methods_are_optional_and_have_their_names_and_types(self, tested):
        self.assert_for_each_protocol(
            tested,
            lambda found: as_table(found.optional),
            lambda expected: both_types(expected.optional),
            "a caller of {} relies on a method that need not be there, or misses one that may be",
        )

    @on_every_slice
    def test_no_protocol_has_class_methods(self, tested):
        self.assert_for_each_protocol(
            tested,
            lambda found: found.required_class + found.optional_class,
            lambda _: [],
            "{} has class methods, which nobody declared",
        )

    @on_every_slice
    def test_only_the_root_protocol_has_properties(self, tested):
        self.assert_for_each_protocol(
            tested, lambda found: found.properties, lambda expected: expected.properties, "{} has other properties"
        )


if __name__ == "__main__":
    unittest.main()
