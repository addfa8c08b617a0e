#include "workbench/formats/PointsOfNumbers.h"

#include <algorithm>
#include <utility>

#include "workbench/data/QuotedText.h"
#include "workbench/formats/ColumnAssembly.h"

namespace quillara {
namespace {

bool HasDecimalPoints(const GatheredColumn& column, const FieldRules& rules) {
    return std::ranges::any_of(column.Workers, [&](const ColumnGatherer& worker) {
        return std::ranges::any_of(worker.Texts().Texts(), [&](std::string_view field) {
            return !rules.IsMissing(field) && PointUseOf(field) == PointUse::Decimal;
        });
    });
}

Remark OnDoubt(const std::vector<std::string>& names) {
    return {"points-in-doubt",
            "Points in numbers of " + QuotedList(names) +
                " are read as decimal points, 1.234 as less than 2, but may stand between thousands.",
            "Say which with --decimal , or --decimal ."};
}

}  // namespace

PointsOfNumbers::PointsOfNumbers(const TextSource& source, const TextLayout& layout, const FieldRules& rules,
                                 const WorkCrew& crew, std::vector<PointUse> uses)
    : Source(source), Layout(layout), Rules(rules), Crew(crew), Uses(std::move(uses)) {}

bool PointsOfNumbers::HaveDecimals(const DataTable& table) const {
    for (std::size_t variable = 0; variable < Uses.size(); ++variable) {
        if (table.Variables[variable].Kind == ValueKind::Number && Uses[variable] == PointUse::Decimal) {
            return true;
        }
    }
    return false;
}

std::vector<Remark> PointsOfNumbers::Read(DataTable& table, NumberSurroundings& surroundings) const {
    const bool hasCommas = HaveDecimalCommas(table, surroundings);
    if (hasCommas && !surroundings.HasDecimalPoints && TakeTexts(table)) {
        return {};
    }
    surroundings.HasDecimalPoints = surroundings.HasDecimalPoints || hasCommas;
    const bool isOpen = hasCommas || (surroundings.Separator == ';' && !surroundings.HasDecimalPoints);
    const std::vector<std::string> names = isOpen ? NamesInDoubt(table) : std::vector<std::string>();
    return names.empty() ? std::vector<Remark>() : std::vector{OnDoubt(names)};
}

/// False where one of all numbers has a decimal point: then nothing is changed.
bool PointsOfNumbers::TakeTexts(DataTable& table) const {
    std::vector<std::size_t> variables;
    for (std::size_t variable = 0; variable < table.Variables.size(); ++variable) {
        if (table.Variables[variable].Kind == ValueKind::Number && !table.Variables[variable].Values.empty()) {
            variables.push_back(variable);
        }
    }
    if (variables.empty()) {
        return true;
    }
    FieldRules commas = Rules;
    commas.TakeDecimal(',');
    TableGathering gathering(Source, Layout, commas, Crew);
    std::vector<FieldKind> kinds(table.Variables.size(), FieldKind::Number);
    gathering.Gather(variables, kinds);
    std::erase_if(variables, [&](std::size_t variable) { return gathering.Columns()[variable].IsOfKind; });
    if (variables.empty()) {
        return true;
    }
    std::ranges::fill(kinds, FieldKind::Text);
    gathering.Gather(variables, kinds);
    const auto hasDecimals = [&](std::size_t variable) {
        return HasDecimalPoints(gathering.Columns()[variable], commas);
    };
    if (std::ranges::any_of(variables, hasDecimals)) {
        return false;
    }
    for (const std::size_t variable : variables) {
        Assemble(std::move(gathering.Columns()[variable]), commas, table.Variables[variable]);
    }
    return true;
}

std::vector<std::string> PointsOfNumbers::NamesInDoubt(const DataTable& table) const {
    std::vector<std::string> names;
    for (std::size_t variable = 0; variable < Uses.size(); ++variable) {
        if (table.Variables[variable].Kind == ValueKind::Number && Uses[variable] == PointUse::MayGroup) {
            names.push_back(table.Variables[variable].Name);
        }
    }
    return names;
}

}  // namespace quillara
