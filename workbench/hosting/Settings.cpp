// The settings of an analysis that outlive it.

#include "host/AnalysisSupport.h"
#include "workbench/hosting/DocumentSettings.h"
#include "workbench/hosting/SettingsStore.h"
#include "workbench/hosting/Surroundings.h"

namespace {

std::int32_t SettingOf(CAnalysisDoc* document, const std::string& key) {
    if (const quillara::SettingsStore* store = quillara::SurroundingsOf(document).Services.Settings) {
        return store->Get(key);
    }
    const quillara::DocumentSettings& settings = quillara::SettingsOf(document);
    const auto found = settings.find(key);
    return found == settings.end() ? 0 : found->second;
}

}  // namespace

void CAnalysisSupport::GetInitKeyword(int /*section*/, const char* key, const std::int32_t* /*reserved*/,
                                      std::int32_t* value) {
    *value = Document == nullptr ? 0 : SettingOf(Document, key);
}

void CAnalysisSupport::PutInitKeyword(int /*section*/, const char* key, const std::int32_t* /*reserved*/,
                                      const std::int32_t* value) {
    if (Document == nullptr) {
        return;
    }
    const quillara::Surroundings& around = quillara::SurroundingsOf(Document);
    around.Trace("PutInitKeyword " + std::string(key) + " " + std::to_string(*value));
    if (around.Services.Settings != nullptr) {
        around.Services.Settings->Put(key, *value);
    } else {
        quillara::SettingsOf(Document)[key] = *value;
    }
}
