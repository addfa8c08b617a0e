#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/command/ChartOptions.h"
#include "workbench/command/GroupOptions.h"
#include "workbench/command/NamedVariables.h"
#include "workbench/command/SubsetColumns.h"
#include "workbench/data/DerivedVariables.h"
#include "workbench/data/ValidCodes.h"
#include "workbench/formats/ReadOptions.h"
#include "workbench/scripting/CategorizationOption.h"
#include "workbench/views/DocumentViews.h"

namespace quillara {

/// A step down into a category of a variable, or back up from it.
struct DrillStep {
    std::string Variable;
    std::optional<std::string> Category;  ///< nothing: a step up
};

/// When results are shown.
enum class ShownAfter {
    Last,  ///< after the last step
    Each,  ///< after each of them
    All,  ///< the same, and before the first
};

struct CategorizedVariable {
    std::string Variable;
    Categorization How;
    std::string Text{};  ///< how it is written: "neat:5"
};

/// What `quillara drill` is asked to do.
struct DrillOptions {
    std::string File;
    ReadOptions Reading;
    std::vector<ValidCodes> Valid;
    std::optional<std::string> DictionaryFile;
    std::vector<DerivedVariable> Derived;
    std::optional<std::string> Formula;  ///< of the case selection; nothing: all cases
    std::optional<std::string> Weight;  ///< name of the weight variable; nothing: no weight is in force

    std::optional<VariableNames> Names;  ///< nothing: chosen by their content
    bool WeightedMoments = false;
    bool Casewise = false;
    bool ReviewCasewise = false;
    bool NoCountMissing = false;
    std::vector<CategorizedVariable> Categorizations;
    std::vector<DrillStep> Steps;
    bool SkipImpossible = false;  ///< steps that can't be taken are passed over

    std::vector<int> Results;  ///< buttons, in the order of their documents
    std::size_t DefaultResults = 0;  ///< how many at their front nobody has asked for
    GroupOptions Groups;
    ChartOptions Charts;
    std::string Call;  ///< of the program, as a shell takes it
    bool Quiet = false;  ///< remarks aren't told on standard error
    ShownAfter After = ShownAfter::Last;
    OutputFormat Format = OutputFormat::Text;
    bool IsFormatNamed = false;  ///< else it goes by the name of the output
    std::optional<std::string> OutputFile;  ///< nothing: standard output
    std::optional<std::string> RecordFile;  ///< for a script that does the same; nothing: it isn't written
    bool IsOutputStandard = false;  ///< whether the results are asked for on the standard output
    std::optional<std::string> SaveFormat;  ///< of what --save writes to the standard output; nothing: csv
    std::optional<std::string> SaveFile;  ///< for the cases left at the end; nothing: they aren't saved
    std::optional<SavedVariables> SavedNames;  ///< nothing: all drill and review variables
};

/// VAR alone: in double quotes as in NAMES, or as it stands.
[[nodiscard]] std::string ParseName(std::string_view text);

/// Each throws UsageError saying what is wrong with the text.
[[nodiscard]] CategorizedVariable ParseCategorizedVariable(std::string_view text);  ///< VAR=METHOD
[[nodiscard]] DerivedVariable ParseDerived(std::string_view text);  ///< NAME=FORMULA
/// VAR=CODES; nothing for a text without an equals sign behind a name.
[[nodiscard]] std::optional<DeclaredMissing> ParseDeclaredMissing(std::string_view text);
[[nodiscard]] ValidCodes ParseValid(std::string_view text);  ///< VAR, or VAR=CODES as NAMES
[[nodiscard]] DrillStep ParseDown(std::string_view text);  ///< VAR=CATEGORY
[[nodiscard]] ShownAfter ParseAfter(std::string_view text);  ///< last, each or all

}  // namespace quillara
