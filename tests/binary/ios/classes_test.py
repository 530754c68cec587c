"""The plugin classes as the Objective-C runtime finds them in the image."""

import unittest
from dataclasses import dataclass, field

from objcmeta import STRING_BY_VALUE, without_string_layout
from slices import SliceTest, on_every_slice
from type_encodings import (
    BASE_PARAMS_POINTER,
    BASE_RET_POINTER,
    CONST_BASE_PARAMS_POINTER,
    CONST_FRIEND_REQ_INFO_POINTER,
    LOGIN_PARAMS,
    ZONE_POINTER,
)


@dataclass
class ExpectedClass:
    protocols: list
    methods: dict
    class_methods: dict
    own_properties: list = field(default_factory=list)
    ivars: list = field(default_factory=list)  # Name, type, offset, size.
    instance_size: int = 8


# Those of the protocol NSObject, which the compiler lists with every class that adopts it through another protocol.
ROOT_PROPERTIES = [
    ("hash", "TQ,R"),
    ("superclass", "T#,R"),
    ("description", 'T@"NSString",R,C'),
    ("debugDescription", 'T@"NSString",R,C'),
]

SINGLETON_FAMILY = {
    "sharedInstance": "@16@0:8",
    "sharedInstanceSynch": "@16@0:8",
    "sharedInstanceNoSynch": "@16@0:8",
    "allocWithZone:": f"@24@0:8{ZONE_POINTER}16",
    "purgeSharedInstance": "v16@0:8",
}

CLASSES = {
    "VornLoginFacebook": ExpectedClass(
        protocols=["VornLoginDelegate"],
        methods={
            "login:": f"v144@0:8{LOGIN_PARAMS}16",
            "logout:": f"v24@0:8{CONST_BASE_PARAMS_POINTER}16",
            "copyWithZone:": f"@24@0:8{ZONE_POINTER}16",
        },
        class_methods=SINGLETON_FAMILY,
    ),
    "VornReportFacebook": ExpectedClass(
        protocols=["VornReportDelegate"],
        methods={
            "initStat": "B16@0:8",
            "reportEvent:params:isRealtime:seqID:extra:": "v52@0:8@16@24B32@36@44",
            "copyWithZone:": f"@24@0:8{ZONE_POINTER}16",
        },
        class_methods=SINGLETON_FAMILY,
    ),
    "VornFriendFacebook": ExpectedClass(
        protocols=["VornFriendDelegate", "FBSDKSharingDelegate", "FBSDKGameRequestDialogDelegate"],
        methods={
            "sendMessage:params:observerID:": f"v36@0:8{CONST_FRIEND_REQ_INFO_POINTER}16{BASE_PARAMS_POINTER}24I32",
            "share:params:observerID:": f"v36@0:8{CONST_FRIEND_REQ_INFO_POINTER}16{BASE_PARAMS_POINTER}24I32",
            "addFriend:params:observerID:": f"v36@0:8{CONST_FRIEND_REQ_INFO_POINTER}16{BASE_PARAMS_POINTER}24I32",
            "queryFriends:params:": f"v32@0:8r^v16{BASE_PARAMS_POINTER}24",
            "isBackendSupported:type:seqId:": "B32@0:8i16i20@24",
            "needOpenid2Uid:reqInfo:seqId:": f"B36@0:8i16{CONST_FRIEND_REQ_INFO_POINTER}20@28",
            "isInGameMode": "B16@0:8",
            "handleInnerCallbacks:": f"v24@0:8{BASE_RET_POINTER}16",
            "handleInnerCallbacks:params:": f"v32@0:8{BASE_RET_POINTER}16{CONST_BASE_PARAMS_POINTER}24",
            "sharer:didCompleteWithResults:": "v32@0:8@16@24",
            "sharer:didFailWithError:": "v32@0:8@16@24",
            "sharerDidCancel:": "v24@0:8@16",
            "gameRequestDialog:didCompleteWithResults:": "v32@0:8@16@24",
            "gameRequestDialog:didFailWithError:": "v32@0:8@16@24",
            "gameRequestDialogDidCancel:": "v24@0:8@16",
            "invite:params:": f"v32@0:8{CONST_FRIEND_REQ_INFO_POINTER}16{CONST_BASE_PARAMS_POINTER}24",
            "isBatchInvite:seqID:": f"B48@0:8@16{STRING_BY_VALUE}24",
            "getInviteUserList:seqID:": f"@48@0:8@16{STRING_BY_VALUE}24",
            "setShareTaggablePeople:reqInfo:seqID:":
                f"v56@0:8@16{CONST_FRIEND_REQ_INFO_POINTER}24{STRING_BY_VALUE}32",
            "sendOrShareLinkOrIMG:methodID:seqID:observerID:":
                f"v56@0:8{CONST_FRIEND_REQ_INFO_POINTER}16i24{STRING_BY_VALUE}28i52",
            "createFacebookLinkOrImageContent:methodID:seqID:complete:":
                f"v60@0:8{CONST_FRIEND_REQ_INFO_POINTER}16i24{STRING_BY_VALUE}28@?52",
            "saveVideoAndShare:methodID:seqID:complete:":
                f"v60@0:8{CONST_FRIEND_REQ_INFO_POINTER}16i24{STRING_BY_VALUE}28@?52",
            "methodNameID": "i16@0:8",
            "setMethodNameID:": "v20@0:8i16",
            "seqID": "@16@0:8",
            "setSeqID:": "v24@0:8@16",
            "observerID": "I16@0:8",
            "setObserverID:": "v20@0:8I16",
            "initSingleton": "@16@0:8",
            "copyWithZone:": f"@24@0:8{ZONE_POINTER}16",
        },
        class_methods={
            "sharedInstance": "@16@0:8",
            "allocWithZone:": f"@24@0:8{ZONE_POINTER}16",
        },
        own_properties=[
            ("methodNameID", "Ti,N,V_methodNameID"),
            ("seqID", 'T@"NSString",&,N,V_seqID'),
            ("observerID", "TI,N,V_observerID"),
        ],
        ivars=[
            ("_methodNameID", "i", 8, 4),
            ("_observerID", "I", 12, 4),
            ("_seqID", '@"NSString"', 16, 8),
        ],
        instance_size=24,
    ),
}


class ClassesTest(SliceTest):
    def assert_for_each_class(self, tested, actual_of, expected_of, breaks):
        """Compares what the functions give for every class; `breaks` gets the class's name."""
        for name, expected in CLASSES.items():
            found = tested.metadata.class_named(name)
            self.assertIsNotNone(found, f"{name} is missing: the core finds no such plugin")
            with self.subTest(name=name):
                self.assert_same(actual_of(found), expected_of(expected), breaks.format(name))

    @on_every_slice
    def test_the_image_has_the_three_plugins_and_no_other_class(self, tested):
        self.assert_same(
            sorted(found.name for found in tested.metadata.classes),
            sorted(CLASSES),
            "the core does not find a plugin by its class's name, or the app gets a class that nobody wrote",
        )

    @on_every_slice
    def test_the_plugins_are_plain_objects_of_the_system_root_class(self, tested):
        self.assert_for_each_class(
            tested,
            lambda found: (found.superclass, found.metaclass_isa, found.metaclass_superclass),
            lambda _: ("_OBJC_CLASS_$_NSObject", "_OBJC_METACLASS_$_NSObject", "_OBJC_METACLASS_$_NSObject"),
            "{} inherits from another class, and retain, release or alloc are not NSObject's",
        )

    @on_every_slice
    def test_the_plugins_adopt_the_protocols_by_which_core_and_kits_call_them(self, tested):
        self.assert_for_each_class(
            tested,
            lambda found: found.protocols,
            lambda expected: expected.protocols,
            "conformsToProtocol: says no for {}, and the core or a Facebook dialog refuses it",
        )

    @on_every_slice
    def test_the_instance_methods_have_their_names_and_argument_types(self, tested):
        self.assert_for_each_class(
            tested,
            lambda found: {method.name: without_string_layout(method.types) for method in found.methods},
            lambda expected: expected.methods,
            "a caller of {} reaches no method, or hands over arguments where the method does not look for them",
        )

    @on_every_slice
    def test_the_class_methods_have_their_names_and_argument_types(self, tested):
        self.assert_for_each_class(
            tested,
            lambda found: {method.name: without_string_layout(method.types) for method in found.class_methods},
            lambda expected: expected.class_methods,
            "the core gets no instance of {}, or more than one",
        )

    @on_every_slice
    def test_no_method_stands_in_a_class_twice(self, tested):
        for found in tested.metadata.classes:
            for methods in (found.methods, found.class_methods):
                names = [method.name for method in methods]
                self.assert_same(
                    sorted(names), sorted(set(names)), f"it is chance which of two methods of {found.name} runs"
                )

    @on_every_slice
    def test_the_properties_have_their_attributes(self, tested):
        self.assert_for_each_class(
            tested,
            lambda found: found.properties,
            lambda expected: expected.own_properties + ROOT_PROPERTIES,
            "who looks at properties of {} at run time sees other ones",
        )

    @on_every_slice
    def test_the_classes_themselves_have_no_properties(self, tested):
        self.assert_for_each_class(
            tested,
            lambda found: found.class_properties,
            lambda _: [],
            "{} has class properties, which nothing declares",
        )

    @on_every_slice
    def test_the_instance_variables_lie_where_they_must(self, tested):
        self.assert_for_each_class(
            tested,
            lambda found: [(ivar.name, ivar.type, ivar.offset, ivar.size) for ivar in found.ivars],
            lambda expected: expected.ivars,
            "the properties of {} are read from and written to other places",
        )

    @on_every_slice
    def test_an_instance_is_as_large_as_its_variables(self, tested):
        self.assert_for_each_class(
            tested,
            lambda found: (found.instance_start, found.instance_size),
            lambda expected: (8, expected.instance_size),
            "an instance of {} gets too little memory, and its variables are its neighbour's",
        )

    @on_every_slice
    def test_the_classes_are_built_for_manual_reference_counting(self, tested):
        self.assert_for_each_class(
            tested,
            lambda found: found.flags,
            lambda _: 0,
            "the runtime runs destructors or weak layouts that {} does not have",
        )

    @on_every_slice
    def test_every_method_has_code_of_its_own(self, tested):
        for found in tested.metadata.classes:
            methods = found.methods + found.class_methods
            outside = [
                method.name for method in methods if not tested.image.in_section(method.implementation, "__text")
            ]
            self.assert_none(outside, f"these methods of {found.name} run what is no code")
            self.assert_same(
                len({method.implementation for method in methods}),
                len(methods),
                f"two methods of {found.name} share code, which a switch of one's implementation would confuse",
            )


if __name__ == "__main__":
    unittest.main()
