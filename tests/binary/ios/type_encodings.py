"""The type encodings of what crosses the border between the core and the plugin."""

from objcmeta import STRING_BY_VALUE

STRING = "{String=*Q}"
BASE_RET = "{InnerBaseRet=ii{String=*Q}i{String=*Q}{String=*Q}}"
FRIEND_REQ_INFO = "{VornFriendReqInfo=i" + 8 * STRING + "}"
# Five texts: the base's four and the permissions.
LOGIN_PARAMS = "{VornLoginParams=i" + 5 * STRING_BY_VALUE + "}"

# A record with a std::string is a pointer to nothing known.
BASE_PARAMS_POINTER = "^v"
CONST_BASE_PARAMS_POINTER = "r^v"
CONST_FRIEND_REQ_INFO_POINTER = "r^" + FRIEND_REQ_INFO
BASE_RET_POINTER = "^" + BASE_RET
ZONE_POINTER = "^{_NSZone=}"
