// What the rule of registration protects from, for the thread sanitizer: RegistrationRace WAY, where WAY is
//   register       an observer is registered while another thread commits a result for it
//   cache          two threads commit results without an observer at once
//   keep-the-rule  an observer is registered first; then two threads commit
// Without the sanitizer the first two may do anything at all, and nothing starts them then.

#include "VornDefine.h"
#include "VornLogSink.h"
#include "VornObservers.h"

#include <cstdio>
#include <string_view>
#include <thread>

namespace {

using namespace Tarvik::Vorn;
using Holder = VornInnerObserverHolder<InnerBaseRet>;

void Observe(const InnerBaseRet& /*result*/, const char* /*seqID*/) {}

void Commit(const char* seqID) {
    Holder::CommitToTaskQueue(InnerBaseRet(0), 31, seqID);
}

} // namespace

int main(int argc, char** argv) {
    const std::string_view way = argc == 2 ? argv[1] : "";
    // Nothing is printed: a lock for the log would put the threads in an order.
    SetMinimumLogLevel(static_cast<ILogLevel>(kLogError + 1));

    if (way == "register") {
        std::thread committing([] { Commit("s1"); });
        RegisterObserver<InnerBaseRet>(31, &Observe);
        committing.join();
    } else if (way == "cache") {
        std::thread committing([] { Commit("s1"); });
        Commit("s2");
        committing.join();
    } else if (way == "keep-the-rule") {
        RegisterObserver<InnerBaseRet>(31, &Observe);
        std::thread committing([] { Commit("s1"); });
        Commit("s2");
        committing.join();
    } else {
        std::fputs("usage: RegistrationRace register|cache|keep-the-rule\n", stderr);
        return 2;
    }
    return 0;
}
