#pragma once

#include <optional>
#include <string>
#include <vector>

namespace quillara {

class AnalysisDocument;
class Window;

/// What is in force while results are made.
struct SettingsInForce {
    std::optional<std::string> Weight;  ///< name of the variable
    bool WeightedMoments = false;
    std::optional<std::string> Formula;  ///< of the case selection
    bool Casewise = false;
    bool ReviewCasewise = false;
    bool MissingNotCounted = false;
};

/// Those of an analysis with its startup dialog.
[[nodiscard]] SettingsInForce SettingsOf(AnalysisDocument& analysis, Window& startup);

/// The same for people, a line each ("Selection: age > 30").
[[nodiscard]] std::vector<std::string> SettingTexts(const SettingsInForce& settings);

}  // namespace quillara
