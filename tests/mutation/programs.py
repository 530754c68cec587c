"""Which test programs are tried on a mutant, and in which order: those that most likely notice first."""

import dataclasses


@dataclasses.dataclass(frozen=True)
class Program:
    test: str  # As CTest calls it.
    target: str  # What is built for it.
    loads: bool  # Whether it loads the plugin and need not be built again when only the plugin has changed.


def _loading(test, target=None):
    return Program(test, target or test, True)


PLUGIN = "VornFacebook"

COMMON = _loading("VornCommonTests")
LOGIN = _loading("VornLoginFacebookTests")
FRIEND = _loading("VornFriendFacebookTests")
SHARE = _loading("VornFriendShareTests")
LISTS = _loading("VornFriendListTests")
FIRST_USE = _loading("VornFriendFirstUseTests")
REPORT = _loading("VornReportFacebookTests")
HOOKS = _loading("VornApplicationDelegateTests")
HOOKS_FIRST = _loading("HookOrderTests")
HOOKS_LAST = _loading("HookOrderTests.OtherLast", "HookOrderTests")
SCENES = _loading("SceneDelegateTests")
HOLDER = _loading("ObserverHolderTests")
FAMILY = _loading("SingletonFamilyTests")
TEMPLATE = _loading("SingletonTemplateTests")
EXPORTS = _loading("ExportsTests")
STATICS = _loading("SharedStaticsTests")
ALLOCATION = _loading("AllocationFailureTests")
OTHER_CORE = Program("OtherCoreTests", "OtherCoreTests", False)

_REST = (LOGIN, FRIEND, REPORT, HOOKS, FIRST_USE, HOLDER, EXPORTS, SHARE, FAMILY, TEMPLATE, HOOKS_FIRST, HOOKS_LAST,
         SCENES, STATICS, LISTS, COMMON, ALLOCATION, OTHER_CORE)
# A changed header has every program compiled again that includes it, so not all of them are tried on it.
_REST_OF_HEADERS = (LOGIN, HOLDER, EXPORTS, STATICS, COMMON, OTHER_CORE)
# The programs that are about a file; the others follow them.
_FIRST = {
    "VornApplicationDelegate+Facebook.mm": (HOOKS, HOOKS_FIRST, HOOKS_LAST, SCENES),
    "VornFacebookExports.mm": (EXPORTS,),
    "VornFriendFacebook.mm": (FRIEND, SHARE, FIRST_USE, LISTS),
    "VornLoginFacebook.mm": (LOGIN,),
    "VornReportFacebook.mm": (REPORT,),
    "VornCodes.h": (COMMON,),
    "VornDefine.h": (HOLDER, ALLOCATION),
    "VornExport.h": (EXPORTS, STATICS),
    "VornFacebookVersion.h": (EXPORTS,),
    "VornLog.h": (COMMON, LOGIN),
    "VornRecords.h": (COMMON, ALLOCATION, HOLDER),
    "VornRetainPtr.h": (COMMON,),
    "VornServices.h": (TEMPLATE, FRIEND),
    "VornSingletonFamily.h": (FAMILY,),
    "VornText.h": (COMMON,),
}


def programs_for(file):
    """The programs for a mutant of `file`, in the order in which they are tried."""
    first = _FIRST.get(file.rsplit("/", 1)[-1], ())
    rest = _REST if file.endswith(".mm") else _REST_OF_HEADERS
    return first + tuple(program for program in rest if program not in first)


def all_programs():
    return _REST


def targets_before(file, program):
    """What must be built before `program` can judge a mutant of `file`: for a source of the plugin, that alone."""
    if file.endswith(".mm") and program.loads:
        return (PLUGIN,)
    return (PLUGIN, program.target)
