#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "workbench/documents/StepTaken.h"
#include "workbench/scripting/CategoryAnswer.h"
#include "workbench/scripting/SubsetStatistics.h"

namespace quillara {

/// Takes drill steps of an analysis, on variables by their numbers.
class StepTaker {
  public:
    StepTaker() = default;
    StepTaker(const StepTaker&) = delete;
    StepTaker& operator=(const StepTaker&) = delete;
    virtual ~StepTaker() = default;

    [[nodiscard]] virtual bool CanGoDown(short variable) const = 0;
    virtual void Down(short variable, const RowChooser& chooseRow) = 0;
    virtual void Up(short variable) = 0;
};

/// The code of the remark on groups without cases.
inline constexpr const char* EmptyGroupsCode = "group-without-cases";

/// How many intervals variables are cut into, by their names, as far as that is known.
using IntervalCounts = std::map<std::string, std::size_t>;

/// A walk into every category of a variable and up again, or of a second one within each category of the first. What
/// has no cases is passed over.
class GroupWalk {
  public:
    /// Steps and analysis outlive it. Throws DataError when a variable isn't there or can't be drilled on.
    GroupWalk(StepTaker& steps, AnalysisDocument& document, std::vector<std::string> variables);

    /// Called in each group, with its categories, from the outside, and what is known of it.
    std::function<void(const std::vector<std::string>& categories, const SubsetStatistics& found)> Arrived;
    /// Called behind each step, down and up. May be empty.
    std::function<void(StepTaken step)> Stepped;

    /// Walks. When it throws, the steps that were in force before are in force again, if they can be.
    void Run();

    /// Behind the walk: the groups that it has arrived in, and all that there could be, each category of the second
    /// variable within each of the first. Intervals without cases are in no category list, and count by `intervals`.
    struct GroupCounts {
        std::size_t Arrived = 0;
        std::size_t All = 0;
    };
    [[nodiscard]] GroupCounts Counted(const IntervalCounts& intervals) const;

  private:
    /// What the category lists of a variable have shown.
    struct ShownCategories {
        std::set<std::string> Names;
        std::set<std::string> Intervals;  ///< of these, those that stand for values
    };

    void Descend();
    [[nodiscard]] bool GoDown(short variable, std::size_t row, std::size_t& rows);
    void NoteShown(const CategoryList& list);
    void GoUp();
    void Arrive();
    [[nodiscard]] std::string Where() const;

    StepTaker& Steps;
    AnalysisDocument& Document;
    const std::vector<std::string> Variables;
    std::vector<std::string> Categories;  // of the steps that are taken
    std::vector<ShownCategories> Shown;  // by variable
    std::size_t Groups = 0;
};

/// The tables of such groups, of the variables that are open beside them, as GroupTables makes them. The steps of the
/// walk are no part of the history. Cases that are in no group are remarked, and groups without cases.
[[nodiscard]] std::vector<SpreadsheetDocument> GroupsSideBySide(StepTaker& steps, AnalysisDocument& document,
                                                                const std::vector<std::string>& variables,
                                                                const IntervalCounts& intervals);

}  // namespace quillara
