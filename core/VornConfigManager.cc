#include "VornConfig.h"
#include "VornJsonDocument.h"
#include "VornServices.h"

#include <map>
#include <mutex>
#include <utility>

namespace Tarvik::Vorn {
namespace {

using Values = std::map<std::string, std::string>;

struct ConfigState {
    std::mutex mutex;
    Values values; // Guarded by `mutex`.
};

ConfigState& State() {
    static auto& state = *new ConfigState; // Never destroyed: threads may read until the process ends.
    return state;
}

} // namespace

// An image that uses the singleton defines its statics: with this the core has them too.
template class VornSingleton<VornConfigManager>;

// Every manager shows the one configuration of the process, so that the functions of VornConfig.h need none.
VornConfigManager::VornConfigManager() : mState(&State()) {}

VornConfigManager::~VornConfigManager() {} // The configuration outlives every manager; callers need the symbol.

std::string VornConfigManager::Get(const std::string& key, const char* defaultValue) {
    auto& state = *static_cast<ConfigState*>(mState);
    const std::lock_guard<std::mutex> lock(state.mutex);
    const auto found = state.values.find(key);
    if (found != state.values.end()) {
        return found->second;
    }
    return defaultValue == nullptr ? "" : defaultValue;
}

std::optional<LocatedError> LoadConfigFile(const std::string& path) {
    LocatedError error;
    const auto document = JsonDocument::Load(path, error);
    if (!document || !document->Expect(document->root(), JsonKind::kObject, "the configuration", error) ||
        !document->ExpectUniqueKeys(document->root(), error)) {
        return error;
    }
    Values values;
    for (const JsonMember& member : *document->root().AsObject()) {
        if (!document->Expect(member.value, JsonKind::kString, "\"" + member.key + "\"", error)) {
            return error;
        }
        values[member.key] = *member.value.AsString();
    }
    const std::lock_guard<std::mutex> lock(State().mutex);
    State().values.swap(values);
    return std::nullopt;
}

void SetConfigValue(const std::string& key, const std::string& value) {
    const std::lock_guard<std::mutex> lock(State().mutex);
    State().values[key] = value;
}

void RemoveConfigValue(const std::string& key) {
    const std::lock_guard<std::mutex> lock(State().mutex);
    State().values.erase(key);
}

void ResetConfig() {
    const std::lock_guard<std::mutex> lock(State().mutex);
    State().values.clear();
}

} // namespace Tarvik::Vorn
