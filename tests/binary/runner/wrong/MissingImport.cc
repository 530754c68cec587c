// Calls what nobody has.
extern "C" void VornNobodyHasThis();

__attribute__((visibility("default"))) extern "C" void VornCallsNobody();

void VornCallsNobody() {
    VornNobodyHasThis();
}
