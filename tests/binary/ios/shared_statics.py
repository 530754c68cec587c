"""The statics of the record templates that core and plugin share, by the symbols that they have in an image."""

_PREFIX = "N6Tarvik4Vorn"
_HOLDER = "23VornInnerObserverHolder"

RESULTS = ("InnerBaseRet", "InnerFriendRet", "InnerLoginRet", "InnerLoginPluginRet")
MAPS = ("mObserverHolder", "mTaskParamsHolder")


def _sized(name):
    return f"{len(name)}{name}"


def holder_map(result, name):
    return f"__Z{_PREFIX}{_HOLDER}INS0_{_sized(result)}EE{_sized(name)}E"


def holder_guard(result, name):
    return holder_map(result, name).replace("__ZN", "__ZGVN", 1)


def holder_statics(result):
    """The two maps of a result and the guards of their initialisation."""
    return [symbol(result, name) for symbol in (holder_map, holder_guard) for name in MAPS]


SINGLETON_STATICS = [
    f"__Z{_PREFIX}13VornSingletonINS0_17VornConfigManagerEE{_sized(name)}E" for name in ("mInstance", "mMutex")
]

ALL = [symbol for result in RESULTS for symbol in holder_statics(result)] + SINGLETON_STATICS
