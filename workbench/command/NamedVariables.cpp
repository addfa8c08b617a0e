#include "workbench/command/NamedVariables.h"

#include <algorithm>
#include <set>
#include <unordered_set>

#include "platform/OrderedBits.h"
#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/data/VariableIndex.h"
#include "workbench/formats/DelimitedText.h"

namespace quillara {
namespace {

constexpr std::size_t MostCategories = 100;

short NumberOf(std::size_t index) {
    return static_cast<short>(index + 1);
}

std::vector<short> NumbersOf(const VariableIndex& variables, const std::vector<std::string>& names) {
    std::vector<short> numbers;
    for (const std::string& name : names) {
        numbers.push_back(NumberOf(variables.IndexOf(name)));
    }
    return numbers;
}

void CheckBothLists(const std::vector<std::string>& categorical, const std::vector<std::string>& continuous) {
    std::set<std::string_view> seen;
    for (const auto* names : {&categorical, &continuous}) {
        for (const std::string& name : *names) {
            if (!seen.insert(name).second) {
                throw UsageError("The variable " + Quoted(name) + " is given twice.");
            }
        }
    }
}

bool HasFewValues(const Variable& variable) {
    const NearlyEqualRange missing = RangeNearlyEqualTo(variable.MissingCode);
    std::unordered_set<double> distinct;
    return HoldsForAll(variable.Values, [&](double value) {
        return missing.Contains(value) || !distinct.insert(value).second || distinct.size() <= MostCategories;
    });
}

}  // namespace

std::vector<std::string> ParseNames(std::string_view text) {
    std::vector<std::string> names = SplitRecord(text);
    const bool isEmpty = names.size() == 1 && names.front().empty();
    if (isEmpty) {
        return {};
    }
    if (std::ranges::find(names, "") != names.end()) {
        throw UsageError("A name is missing in " + Quoted(text) + "; a list with blanks stands in quotes: \"a, b\".");
    }
    return names;
}

void CheckForRepeats(const VariableNames& names) {
    CheckBothLists(names.Categorical, names.Continuous);
    CheckBothLists(names.ReviewCategorical, names.ReviewContinuous);
}

VariableChoice ChooseByName(const DataTable& table, const VariableNames& names) {
    const VariableIndex variables(table);
    return {{NumbersOf(variables, names.Categorical), NumbersOf(variables, names.Continuous)},
            {NumbersOf(variables, names.ReviewCategorical), NumbersOf(variables, names.ReviewContinuous)}};
}

VariableChoice ChooseByContent(const DataTable& table) {
    VariableChoice choice;
    for (std::size_t index = 0; index < table.Variables.size(); ++index) {
        const Variable& variable = table.Variables[index];
        if (variable.HasLabels() && HasFewValues(variable)) {
            choice.Drill.Categorical.push_back(NumberOf(index));
        } else if (variable.Kind != ValueKind::Text) {
            choice.Drill.Continuous.push_back(NumberOf(index));
        }
    }
    return choice;
}

}  // namespace quillara
