#include "workbench/command/NamedVariables.h"

#include <algorithm>
#include <set>

#include "workbench/data/DefaultRole.h"
#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/data/VariableIndex.h"
#include "workbench/formats/DelimitedText.h"

namespace quillara {
namespace {

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

void AddByRole(VariableLists& lists, std::size_t index, DefaultRole role) {
    (role == DefaultRole::Continuous ? lists.Continuous : lists.Categorical).push_back(NumberOf(index));
}

bool Holds(const std::vector<short>& list, short number) {
    return std::ranges::find(list, number) != list.end();
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

void AddCategorized(const DataTable& table, const std::vector<std::string>& names, bool areNamed,
                    VariableLists& drill) {
    for (const std::string& name : names) {
        const std::size_t index = table.IndexOf(name);
        const short number = NumberOf(index);
        const bool isFixed = table.Variables[index].Kind == ValueKind::Text || Holds(drill.Continuous, number) ||
                             (areNamed && Holds(drill.Categorical, number));
        if (!isFixed) {
            std::erase(drill.Categorical, number);
            drill.Continuous.push_back(number);
        }
    }
    if (!areNamed) {
        std::ranges::sort(drill.Continuous);
    }
}

void AddDrilled(const DataTable& table, const std::vector<std::string>& names, VariableLists& drill) {
    for (const std::string& name : names) {
        const std::optional<std::size_t> index = table.Find(name);
        if (index && !Holds(drill.Categorical, NumberOf(*index)) && !Holds(drill.Continuous, NumberOf(*index))) {
            AddByRole(drill, *index, DefaultRoleOf(table.Variables[*index]));
        }
    }
}

}  // namespace quillara
