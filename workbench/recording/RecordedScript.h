#pragma once

#include <list>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "workbench/data/DerivedVariables.h"
#include "workbench/data/ValidCodes.h"
#include "workbench/formats/ReadOptions.h"

namespace quillara {

/// What an analysis has begun with.
struct ScriptOpening {
    std::string File;
    ReadOptions Reading{};
    std::vector<ValidCodes> Valid{};
    std::optional<std::string> DictionaryFile{};
    std::vector<DerivedVariable> Derived{};
    std::string Formula{};  ///< of the case selection; empty: all cases
    std::string Weight{};  ///< name of the weight variable; empty: none
};

/// A script that grows line by line.
class RecordedScript {
  public:
    explicit RecordedScript(ScriptOpening opening) : Begins(std::move(opening)) {}

    struct Line {
        std::string Text;
        bool IsWritten = true;
        std::string Result{};  ///< what the script calls what the line gives; empty: nothing
    };

    /// A line that has been written stays where it is.
    Line& Write(std::string text) { return Lines.emplace_back(Line{std::move(text)}); }
    void Write(const std::vector<std::string>& lines);
    /// Lines that are written here only when it turns out that they matter.
    void Offer(const std::vector<std::string>& lines);
    /// All lines that have been offered matter, or none.
    void Accept();
    void Drop() {
        std::erase_if(Lines, [](const Line& line) { return !line.IsWritten; });
    }
    /// Chooses the drill variables: as the analysis begins, when nothing has been written yet. The first two are
    /// arguments as Python writes them, the second may be empty.
    void ChooseVariables(const std::string& first, const std::string& second, const std::string& both);
    /// A name that no other result has: "summary", "summary_2", ...
    [[nodiscard]] std::string NameResult(const std::string& name);

    [[nodiscard]] std::string Text() const;

  private:
    ScriptOpening Begins;
    std::string DrillArguments;
    bool HasVariables = false;
    std::list<Line> Lines;
    std::map<std::string, int> Results;  // how many by name
};

}  // namespace quillara
