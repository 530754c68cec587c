"""Every result that the plugin can make, in the order of its sources, and by what a played world shows it."""

from dataclasses import dataclass, field

REQUEST = "request"  # methodNameID: the request's own.
PARKED = "parked"  # methodNameID: that of the last message or share, which is another than the request's.
NONE = "none"  # methodNameID: 0.


@dataclass(frozen=True)
class Row:
    """A result of the plugin. `log` is a text that the plugin logs on the way to it, in the same request."""

    method: str
    statement: str
    log: str = ""
    method_id: str = REQUEST
    fields: dict = field(default_factory=dict)
    record: str = "InnerBaseRet"
    unreachable: str = ""  # Why no world can show it.


def _refusal(method, code, name, text, log):
    return Row(method, f'Refusal(RetCode::{name}, "{text}")', log,
               fields={"retCode": code, "thirdCode": code, "thirdMsg": text})


_CONTENT = "createFacebookLinkOrImageContent"
_SHOW = "sendOrShareLinkOrIMG"
_SAVE = "saveVideoAndShare"
_NO_TEXT = {"thirdCode": 0, "thirdMsg": ""}

FRIEND_ROWS = [
    _refusal("sendMessage", 7, "kNotSupported", "not support the sendMessage type", "sendMessage type is error!"),
    _refusal("share", 7, "kNotSupported", "not support the share type", "share type is error!"),
    Row("addFriend", "InnerBaseRet(RetCode::kSuccess)", "facebook game player finder successed", PARKED,
        {"retCode": 0}),
    Row("addFriend", "InnerBaseRet(RetCode::kCancelled)", "facebook game player finder cancel", PARKED,
        {"retCode": 2}),
    Row("addFriend", 'SdkFailure(error, "")', "facebook game player finder error", PARKED,
        {"retCode": 9999, "thirdCode": 13}),
    Row("addFriend", "InnerBaseRet(RetCode::kNotInGamingMode)", "", fields={"retCode": 10, **_NO_TEXT}),
    Row("addFriend", "InnerBaseRet(RetCode::kNotSupported)", "no support, observerID",
        fields={"retCode": 7, **_NO_TEXT}),
    Row("queryFriends", "InnerFriendRet(RetCode::kNotSupported)", "no support", record="InnerFriendRet",
        fields={"retCode": 7, **_NO_TEXT}),
    Row("sharer", "InnerBaseRet(RetCode::kSuccess)", "  results : ", fields={"retCode": 0, **_NO_TEXT}),
    Row("sharer", "InnerBaseRet(RetCode::kThirdPartyError)",
        unreachable="the next line replaces the code before the result goes out"),
    Row("sharer", "ret.retCode = static_cast<int32_t>([error code])", "]error : ", fields={"retCode": 202, **_NO_TEXT}),
    Row("sharerDidCancel", "InnerBaseRet(RetCode::kCancelled)", "sharerDidCancel:]: ",
        fields={"retCode": 2, **_NO_TEXT}),
    Row("gameRequestDialog", "InnerBaseRet(RetCode::kSuccess)", "facebook gameRequestDialog success",
        fields={"retCode": 0, "extraJson": '{"RequestRecipients":["111","222"]}'}),
    Row("gameRequestDialog", "InnerBaseRet(RetCode::kThirdPartyError)", "facebook gameRequestDialog error",
        fields={"retCode": 9999, "thirdCode": 203}),
    Row("gameRequestDialogDidCancel", "InnerBaseRet(RetCode::kCancelled)", "facebook gameRequestDialog cancel",
        fields={"retCode": 2, **_NO_TEXT}),
    _refusal("invite", 11, "kInvalidArgument", "title or desc in reqInfo is empty", "title or desc"),
    _refusal("invite", 11, "kInvalidArgument", "user list is not a array or is empty", "user list is not a array"),
    Row(_SHOW, 'InnerBaseRet(RetCode::kSuccess, 0, "load image success")', "load image successed",
        fields={"retCode": 0, "thirdCode": 0, "thirdMsg": "load image success"}),
    Row(_SHOW, 'SdkFailure(error, "load image error")', "load image error", fields={"retCode": 9999, "thirdCode": 8}),
    Row(_SHOW, 'InnerBaseRet(RetCode::kSuccess, 0, "load image success")', "load video successed",
        fields={"retCode": 0, "thirdCode": 0, "thirdMsg": "load image success"}),
    Row(_SHOW, 'SdkFailure(error, "load video error")', "load video error", fields={"retCode": 9999, "thirdCode": 3}),
    _refusal(_SHOW, 15, "kAppNotInstalled", "Facebook share video need app installed",
             "Facebook share vedio need app installed"),
    _refusal(_SHOW, 15, "kAppNotInstalled", "Facebook share image need app installed",
             "Facebook share image need app installed"),
    Row(_SHOW, "InnerBaseRet(RetCode::kNotSupported)", unreachable="no content is made for another type"),
    _refusal(_SHOW, 15, "kAppNotInstalled", "Messenger isn't installed", "Messenger isn't installed"),
    Row(_SHOW, "InnerBaseRet(RetCode::kNotSupported)", "not support methodID", fields={"retCode": 7, **_NO_TEXT}),
    _refusal(_CONTENT, 11, "kInvalidArgument", "the link is null when share/send link, please check!",
             "the link is null"),
    _refusal(_CONTENT, 11, "kInvalidArgument", "illegal image data", "illegal image data"),
    Row(_CONTENT, "InnerBaseRet(RetCode::kInvalidArgument)", "mediaPath is empty", NONE, {"retCode": 11, **_NO_TEXT}),
    Row(_CONTENT, "InnerBaseRet(RetCode::kInvalidArgument)", "mediaPath is not a URL", NONE,
        {"retCode": 11, **_NO_TEXT}),
    Row(_CONTENT, "InnerBaseRet(RetCode::kNeedSystemPermission)", "need system permission", NONE,
        {"retCode": 12, **_NO_TEXT}),
    Row(_CONTENT, "InnerBaseRet(RetCode::kNeedSystemPermission)", "not authorized to access photo data", NONE,
        {"retCode": 12, **_NO_TEXT}),
    Row(_CONTENT, "InnerBaseRet(RetCode::kNeedSystemPermission)", "denied to access photo data", NONE,
        {"retCode": 12, **_NO_TEXT}),
    Row(_CONTENT, "InnerBaseRet(RetCode::kNotSupported)", unreachable="share: and sendMessage: refuse other types"),
    Row(_SAVE, "InnerBaseRet(RetCode::kInvalidArgument)", unreachable="a video without a path is refused before"),
    Row(_SAVE, "InnerBaseRet(RetCode::kInvalidArgument)", unreachable="texts of a world are UTF-8"),
    Row(_SAVE, "InnerBaseRet(RetCode::kSystemRefused)", "video cant be written to the saved photos album", NONE,
        {"retCode": 8, **_NO_TEXT}),
    Row(_SAVE, "InnerBaseRet(RetCode::kSystemRefused)", "save video failed", NONE, {"retCode": 8, **_NO_TEXT}),
    Row(_SAVE, "InnerBaseRet(RetCode::kInvalidArgument)", "the asset of mediaPath has no URL", NONE,
        {"retCode": 11, **_NO_TEXT}),
]

LOGIN_ROWS = [
    Row("login", "ret.retCode = RetCode::kThirdPartyError", "login facebook error", record="InnerLoginRet",
        fields={"retCode": 9999, "thirdCode": 301, "channelID": 4, "channel": "Facebook"}),
    Row("login", "ret.retCode = RetCode::kCancelled", "login facebook cancel", record="InnerLoginRet",
        fields={"retCode": 2, "channelID": 4, "channel": "Facebook"}),
    Row("login", "InnerLoginPluginRet reply", "", record="InnerLoginPluginRet",
        fields={"channelID": 4, "channel": "Facebook"}),
    Row("logout", "InnerBaseRet(RetCode::kSuccess)", "logout facebook success", NONE, {"retCode": 0, **_NO_TEXT}),
]
