// One table of observers, one cache and one configuration per process, although the core, the plugin and this program
// each define the statics of those templates: the loader makes one of each. Checked three ways: the libraries' symbol
// tables, the addresses that the loader has given each library, and what a request shows.

#include "LoadedLibrary.h"
#include "PluginTest.h"
#include "RunProgram.h"
#include "Runner.h"
#include "ShippedBinary.h"
#include "VornConfig.h"
#include "VornDefine.h"
#include "VornObservers.h"
#include "VornPlugins.h"

#import <Foundation/Foundation.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <dlfcn.h>
#include <ostream>
#include <string>
#include <vector>

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::AllOf;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

// A static that must be one per process.
struct SharedStatic {
    const char* name;    // For the test's name.
    const char* symbol;  // Its linker name.
    const void* address; // Where it is for this program.
};

void PrintTo(const SharedStatic& shared, std::ostream* out) {
    *out << shared.symbol;
}

template <class T>
using Holder = VornInnerObserverHolder<T>;
using Config = VornSingleton<VornConfigManager>;

// Those that the core and the plugin both use.
std::vector<SharedStatic> StaticsOfBoth() {
    return {
        {"BaseObservers", "_ZN6Tarvik4Vorn23VornInnerObserverHolderINS0_12InnerBaseRetEE15mObserverHolderE",
         &Holder<InnerBaseRet>::mObserverHolder},
        {"BaseCache", "_ZN6Tarvik4Vorn23VornInnerObserverHolderINS0_12InnerBaseRetEE17mTaskParamsHolderE",
         &Holder<InnerBaseRet>::mTaskParamsHolder},
        {"BaseObserversGuard", "_ZGVN6Tarvik4Vorn23VornInnerObserverHolderINS0_12InnerBaseRetEE15mObserverHolderE",
         nullptr},
        {"FriendObservers", "_ZN6Tarvik4Vorn23VornInnerObserverHolderINS0_14InnerFriendRetEE15mObserverHolderE",
         &Holder<InnerFriendRet>::mObserverHolder},
        {"FriendCache", "_ZN6Tarvik4Vorn23VornInnerObserverHolderINS0_14InnerFriendRetEE17mTaskParamsHolderE",
         &Holder<InnerFriendRet>::mTaskParamsHolder},
        {"LoginObservers", "_ZN6Tarvik4Vorn23VornInnerObserverHolderINS0_13InnerLoginRetEE15mObserverHolderE",
         &Holder<InnerLoginRet>::mObserverHolder},
        {"LoginCache", "_ZN6Tarvik4Vorn23VornInnerObserverHolderINS0_13InnerLoginRetEE17mTaskParamsHolderE",
         &Holder<InnerLoginRet>::mTaskParamsHolder},
        {"LoginReplyObservers",
         "_ZN6Tarvik4Vorn23VornInnerObserverHolderINS0_19InnerLoginPluginRetEE15mObserverHolderE",
         &Holder<InnerLoginPluginRet>::mObserverHolder},
        {"LoginReplyCache", "_ZN6Tarvik4Vorn23VornInnerObserverHolderINS0_19InnerLoginPluginRetEE17mTaskParamsHolderE",
         &Holder<InnerLoginPluginRet>::mTaskParamsHolder},
        {"ConfigInstance", "_ZN6Tarvik4Vorn13VornSingletonINS0_17VornConfigManagerEE9mInstanceE", &Config::mInstance},
        {"ConfigMutex", "_ZN6Tarvik4Vorn13VornSingletonINS0_17VornConfigManagerEE6mMutexE", &Config::mMutex},
    };
}

class SharedStatics : public ::testing::TestWithParam<SharedStatic> {
protected:
    SharedStatics() { LoadSubject(); }

    // The addresses through which the plugin refers to the symbol.
    static std::vector<const void*> PluginReferences() {
        return SubjectIsShippedBinary() ? Runner::ImageReferencesTo(GetParam().symbol)
                                        : LoadedLibrary::ReferencesTo("libVornFacebook", GetParam().symbol);
    }

    // The line about the symbol in the library's table of exported definitions, without its address; empty when there
    // is none.
    static std::string Definition(const std::string& library) {
        const ProgramResult nm = RunProgram({VORN_LLVM_NM, "-D", "--defined-only", library});
        EXPECT_EQ(nm.exitStatus, 0) << ::testing::PrintToString(nm);
        const size_t name = nm.output.find(std::string(" ") + GetParam().symbol + "\n");
        return name == std::string::npos ? "" : nm.output.substr(name - 1, 1);
    }
};

std::string NameOfStatic(const ::testing::TestParamInfo<SharedStatic>& info) {
    return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(CoreAndPlugin, SharedStatics, ::testing::ValuesIn(StaticsOfBoth()), NameOfStatic);

TEST_P(SharedStatics, AreDefinedWeakByBothLibraries) {
    SKIP_FOR_SHIPPED_BINARY("its symbol table is read by tests/binary/ios");
    const std::string plugin = LoadedLibrary::Path("libVornFacebook");
    const std::string core = LoadedLibrary::Path("libVornCore");

    // V: a weak object.
    EXPECT_EQ(Definition(core), "V") << core;
    EXPECT_EQ(Definition(plugin), "V") << plugin;
}

TEST_P(SharedStatics, AreTheSameForBothLibrariesAndThisProgram) {
    const void* const address = dlsym(RTLD_DEFAULT, GetParam().symbol);

    ASSERT_NE(address, nullptr);
    if (GetParam().address != nullptr) {
        EXPECT_EQ(address, GetParam().address);
    }
    EXPECT_THAT(LoadedLibrary::ReferencesTo("libVornCore", GetParam().symbol), ElementsAre(address));
    EXPECT_THAT(PluginReferences(), AllOf(Not(IsEmpty()), Each(address)));
}

// ---- What a request shows

std::vector<std::string> sSeqIDs;

void NoteLogout(const InnerBaseRet& /*result*/, const char* seqID) {
    sSeqIDs.emplace_back(seqID);
}

class SharedStaticsInUse : public PluginTest {
protected:
    SharedStaticsInUse() {
        std::string error;
        mPlugin = FindLoginPlugin("Facebook", error);
        EXPECT_NE(mPlugin, nil) << error;
        sSeqIDs.clear();
    }

    void Logout(const std::string& seqID) const {
        VornBaseParams params;
        params.seqID = seqID;
        [mPlugin logout:&params];
        DrainMainQueue();
    }

private:
    id<VornLoginDelegate> mPlugin;
};

TEST_F(SharedStaticsInUse, ObserverRegisteredInTheCoreIsCalledByThePlugin) {
    RegisterObserver<InnerBaseRet>(ObserverID::kLogout, &NoteLogout);

    Logout("s1");

    EXPECT_THAT(sSeqIDs, ElementsAre("s1"));
}

TEST_F(SharedStaticsInUse, ObserverRemovedInTheCoreIsGoneForThePlugin) {
    RegisterObserver<InnerBaseRet>(ObserverID::kLogout, &NoteLogout);
    RemoveObserver<InnerBaseRet>(ObserverID::kLogout);

    Logout("s1");

    EXPECT_THAT(sSeqIDs, IsEmpty());
}

TEST_F(SharedStaticsInUse, ResultCachedByThePluginIsTakenByTheCore) {
    Logout("s1");

    const auto taken = TakeCachedResult<InnerBaseRet>("s1");

    ASSERT_TRUE(taken);
    EXPECT_EQ(taken->mObserverID, ObserverID::kLogout);
    EXPECT_EQ(CachedResultCount<InnerBaseRet>(), 0u);
}

TEST_F(SharedStaticsInUse, ConfigurationIsMadeOnce) {
    VornConfigManager* const mine = VornSingleton<VornConfigManager>::GetInstance();

    Logout("s1");

    EXPECT_EQ(VornSingleton<VornConfigManager>::GetInstance(), mine);
    EXPECT_EQ(*static_cast<VornConfigManager**>(
                  dlsym(RTLD_DEFAULT, "_ZN6Tarvik4Vorn13VornSingletonINS0_17VornConfigManagerEE9mInstanceE")),
              mine);
}

} // namespace
} // namespace Tarvik::Vorn::Test
