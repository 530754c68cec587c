#include "History.h"

#include <atomic>

namespace Tarvik::Vorn::Host {

namespace {

std::atomic<bool> sIsKept{true};

} // namespace

void SetHistoryKept(bool kept) {
    sIsKept.store(kept);
}

bool IsHistoryKept() {
    return sIsKept.load();
}

} // namespace Tarvik::Vorn::Host
