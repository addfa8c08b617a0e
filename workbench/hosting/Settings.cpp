// The settings of an analysis that outlive it.

#include "host/AnalysisSupport.h"
#include "workbench/hosting/AnalysisState.h"
#include "workbench/hosting/SettingsStore.h"

using quillara::AnalysisState;

namespace {

std::int32_t SettingOf(const AnalysisState& state, const std::string& key) {
    if (state.Services.Settings != nullptr) {
        return state.Services.Settings->Get(key);
    }
    const auto found = state.Settings.find(key);
    return found == state.Settings.end() ? 0 : found->second;
}

}  // namespace

void CAnalysisSupport::GetInitKeyword(int /*section*/, const char* key, const std::int32_t* /*reserved*/,
                                      std::int32_t* value) {
    *value = Document == nullptr ? 0 : SettingOf(quillara::StateOf(Document), key);
}

void CAnalysisSupport::PutInitKeyword(int /*section*/, const char* key, const std::int32_t* /*reserved*/,
                                      const std::int32_t* value) {
    if (Document == nullptr) {
        return;
    }
    AnalysisState& state = quillara::StateOf(Document);
    state.Trace("PutInitKeyword " + std::string(key) + " " + std::to_string(*value));
    if (state.Services.Settings != nullptr) {
        state.Services.Settings->Put(key, *value);
    } else {
        state.Settings[key] = *value;
    }
}
