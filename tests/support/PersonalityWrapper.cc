// Lets C++ exceptions be caught in Objective-C++ frames of the tests (EXPECT_THROW in a .mm file).
//
// clang gives every such frame the Objective-C personality, which knows no C++ handler. The test programs are linked
// with --wrap, so that their frames come here: Objective-C exceptions go to that personality, all others to C++'s.

#include <cstdint>
#include <unwind.h>

extern "C" {

_Unwind_Reason_Code __real___gnu_objc_personality_v0(int version, _Unwind_Action actions, _Unwind_Exception_Class kind,
                                                     _Unwind_Exception* exception, _Unwind_Context* context);
_Unwind_Reason_Code __gxx_personality_v0(int version, _Unwind_Action actions, _Unwind_Exception_Class kind,
                                         _Unwind_Exception* exception, _Unwind_Context* context);
__attribute__((visibility("default"))) _Unwind_Reason_Code
__wrap___gnu_objc_personality_v0(int version, _Unwind_Action actions, _Unwind_Exception_Class kind,
                                 _Unwind_Exception* exception, _Unwind_Context* context);

_Unwind_Reason_Code __wrap___gnu_objc_personality_v0(int version, _Unwind_Action actions, _Unwind_Exception_Class kind,
                                                     _Unwind_Exception* exception, _Unwind_Context* context) {
    constexpr uint64_t kObjectiveC = 0x474E55434F424A43; // "GNUCOBJC"
    if (kind == kObjectiveC) {
        return __real___gnu_objc_personality_v0(version, actions, kind, exception, context);
    }
    return __gxx_personality_v0(version, actions, kind, exception, context);
}

} // extern "C"
