#include "workbench/scripting/GroupWalk.h"

#include <algorithm>
#include <utility>

#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/hosting/AnalysisDocument.h"
#include "workbench/hosting/AnalysisRemarks.h"
#include "workbench/hosting/RemainingCases.h"
#include "workbench/hosting/StepHistory.h"
#include "workbench/scripting/CategoryLookup.h"

namespace quillara {
namespace {

/// A list of categories is empty.
struct NoCategories {};

short NumberOf(AnalysisDocument& document, const std::string& name) {
    return static_cast<short>(document.Table().IndexOf(name) + 1);
}

/// "a" and "b"
std::string Listed(const std::vector<std::string>& variables) {
    std::string names;
    for (const std::string& name : variables) {
        names += (names.empty() ? "" : " and ") + Quoted(name);
    }
    return names;
}

void TellOfRest(AnalysisDocument& document, const std::vector<std::string>& variables, std::int64_t left,
                std::int64_t cases) {
    if (left > 0) {
        const bool rounds = WeightUseNow(&document) == WeightUse::Rounded;
        Notice(&document,
               {"groups-leave-out",
                std::to_string(left) + " of " + std::to_string(cases) + " cases are in no category of " +
                    Listed(variables) + (rounds ? " that has a case once weights are rounded," : "") +
                    " and so in no group.",
                rounds ? "--weighted-moments (WeightedMoments in scripts) takes fractions as they are." : ""});
    }
}

void TellOfEmpty(AnalysisDocument& document, const std::vector<std::string>& variables,
                 const GroupWalk::GroupCounts& groups) {
    const std::size_t empty = groups.All - groups.Arrived;
    if (empty > 0) {
        Notice(&document,
               {EmptyGroupsCode, std::to_string(empty) + " of " + std::to_string(groups.All) +
                                     (variables.size() > 1 ? " pairs of categories of " : " categories of ") +
                                     Listed(variables) + (empty == 1 ? " has" : " have") + " no case and so no row."});
    }
}

}  // namespace

GroupWalk::GroupWalk(StepTaker& steps, AnalysisDocument& document, std::vector<std::string> variables)
    : Steps(steps), Document(document), Variables(std::move(variables)), Shown(Variables.size()) {
    for (const std::string& name : Variables) {
        if (!Steps.CanGoDown(NumberOf(Document, name))) {
            throw DataError(
                "The variable " + Quoted(name) + " has no categories to go through: it " +
                (ConditionOn(Document, NumberOf(Document, name)) ? "has a step already." : "is no drill variable."));
        }
    }
}

void GroupWalk::Run() {
    try {
        Descend();
    } catch (...) {
        while (!Categories.empty()) {
            GoUp();
        }
        throw;
    }
}

void GroupWalk::Descend() {
    const std::string& name = Variables[Categories.size()];
    const short variable = NumberOf(Document, name);
    std::size_t rows = 1;
    for (std::size_t row = 0; row < rows; ++row) {
        if (!GoDown(variable, row, rows)) {
            Notice(&Document,
                   {"group-without-categories", "The variable " + Quoted(name) + " has no category with cases" +
                                                    Where() + "; that is passed over."});
            return;
        }
        Arrive();
        GoUp();
    }
}

/// False where there is no row. `rows` becomes their number.
bool GroupWalk::GoDown(short variable, std::size_t row, std::size_t& rows) {
    std::string category;
    try {
        Steps.Down(variable, [&](const CategoryList& list) {
            rows = list.Rows.size();
            if (rows == 0) {
                throw NoCategories();
            }
            category = NameForPeople(list, list.Rows[row]);
            NoteShown(list);
            return row;
        });
    } catch (const NoCategories&) {
        return false;
    }
    Categories.push_back(category);
    if (Stepped) {
        Stepped({StepKind::Down, Variables[Categories.size() - 1], category, CountRemaining(Document)});
    }
    return true;
}

void GroupWalk::GoUp() {
    Categories.pop_back();
    const std::string& name = Variables[Categories.size()];
    Steps.Up(NumberOf(Document, name));
    if (Stepped) {
        Stepped({StepKind::Up, name, {}, CountRemaining(Document)});
    }
}

/// A category may be shown with cases that its own step leaves out.
void GroupWalk::Arrive() {
    const SubsetStatistics found(Document);
    if (found.Subset().IsEmpty()) {
        return;
    }
    if (Categories.size() < Variables.size()) {
        Descend();
    } else {
        ++Groups;
        Arrived(Categories, found);
    }
}

void GroupWalk::NoteShown(const CategoryList& list) {
    ShownCategories& shown = Shown[Categories.size()];
    for (const CategoryRow& row : list.Rows) {
        shown.Names.insert(row.Name);
        if (row.Range) {
            shown.Intervals.insert(row.Name);
        }
    }
}

GroupWalk::GroupCounts GroupWalk::Counted(const IntervalCounts& intervals) const {
    GroupCounts counts{Groups, 1};
    for (std::size_t place = 0; place < Variables.size(); ++place) {
        const auto known = intervals.find(Variables[place]);
        const std::size_t shown = Shown[place].Intervals.size();
        const std::size_t unseen = known == intervals.end() ? 0 : std::max(known->second, shown) - shown;
        counts.All *= Shown[place].Names.size() + unseen;
    }
    return counts;
}

/// " where cut = Fair and color = D"; nothing without a step.
std::string GroupWalk::Where() const {
    std::string text;
    for (std::size_t i = 0; i < Categories.size(); ++i) {
        text += (text.empty() ? " where " : " and ") + Variables[i] + " = " + Categories[i];
    }
    return text;
}

std::vector<SpreadsheetDocument> GroupsSideBySide(StepTaker& steps, AnalysisDocument& document,
                                                  const std::vector<std::string>& variables,
                                                  const IntervalCounts& intervals) {
    GroupWalk walk(steps, document, variables);
    const SubsetStatistics whole(document);
    GroupTables tables = whole.GroupsBy(variables);
    const std::int64_t cases = whole.Counted().Cases;
    std::int64_t left = cases;
    walk.Arrived = [&](const std::vector<std::string>& categories, const SubsetStatistics& found) {
        tables.Add(categories, found.Subset());
        left -= found.Counted().Cases;
    };
    {
        const StepsAside aside(document);
        walk.Run();
    }
    TellOfRest(document, variables, left, cases);
    TellOfEmpty(document, variables, walk.Counted(intervals));
    return tables.Documents();
}

}  // namespace quillara
