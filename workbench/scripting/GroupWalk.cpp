#include "workbench/scripting/GroupWalk.h"

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

void TellOfRest(AnalysisDocument& document, const std::vector<std::string>& variables, std::int64_t left,
                std::int64_t cases) {
    if (left == 0) {
        return;
    }
    std::string names;
    for (const std::string& name : variables) {
        names += (names.empty() ? "" : " and ") + Quoted(name);
    }
    Notice(&document, {"groups-leave-out", std::to_string(left) + " of " + std::to_string(cases) +
                                               " cases are in no category of " + names + " and so in no group."});
}

}  // namespace

GroupWalk::GroupWalk(StepTaker& steps, AnalysisDocument& document, std::vector<std::string> variables)
    : Steps(steps), Document(document), Variables(std::move(variables)) {
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
        Notice(&Document, {"group-without-cases", "No case is left" + Where() + "; that is passed over."});
    } else if (Categories.size() < Variables.size()) {
        Descend();
    } else {
        Arrived(Categories, found);
    }
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
                                                  const std::vector<std::string>& variables) {
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
    return tables.Documents();
}

}  // namespace quillara
