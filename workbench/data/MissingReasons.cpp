#include "workbench/data/MissingReasons.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "workbench/data/QuotedText.h"
#include "workbench/data/ValueText.h"
#include "workbench/data/WrittenValue.h"
#include "workbench/numbers/ExactNumbers.h"

namespace quillara {
namespace {

constexpr std::size_t WidestCode = 2;  // bytes, in a column of codes

/// A copy of the reasons for a change, which takes their place.
MissingReasons& Changed(Variable& variable) {
    auto copy = std::make_shared<MissingReasons>(*variable.Reasons);
    MissingReasons& changed = *copy;
    variable.Reasons = std::move(copy);
    return changed;
}

template <typename IsIt>
std::optional<std::size_t> PlaceWhere(const Variable& variable, IsIt isIt) {
    if (!variable.Reasons) {
        return std::nullopt;
    }
    const auto& reasons = variable.Reasons->Reasons;
    const auto found = std::ranges::find_if(reasons, isIt);
    return found == reasons.end() ? std::nullopt : std::optional<std::size_t>(found - reasons.begin());
}

}  // namespace

bool MissingReasons::Declares(double value) const {
    return std::ranges::any_of(Ranges, [value](const MissingRange& range) { return range.Contains(value); });
}

std::vector<std::size_t> MissingReasons::Counts() const {
    std::vector<std::size_t> counts(Reasons.size() + 1);
    for (std::size_t row = 0; row < Places.size(); ++row) {
        ++counts[PlaceAt(row)];
    }
    return counts;
}

Column ReasonPlaces::Finish(std::vector<double> valuesOfCodes) {
    if (!HasAny) {
        return {};
    }
    if (Rows.BytesEach() <= WidestCode) {
        // A column of codes has no more values than there may be codes.
        valuesOfCodes.resize(std::min(valuesOfCodes.size(), std::size_t{1} << 8 * Rows.BytesEach()));
        return Rows.TakeColumn(std::move(valuesOfCodes));
    }
    ColumnBuilder column;
    for (std::size_t row = 0; row < Rows.Size(); ++row) {
        column.Append(valuesOfCodes[Rows.At(row)]);
    }
    return column.Finish();
}

Column ReasonPlaces::Finish(std::size_t reasons) {
    std::vector<double> places(reasons + 1);
    std::iota(places.begin(), places.end(), 0.0);
    return Finish(std::move(places));
}

std::string CodeOfReason(const Variable& variable, const MissingReason& reason) {
    if (!reason.Number) {
        return reason.Text;
    }
    return variable.Kind == ValueKind::Number ? ExactNumberText(*reason.Number)
                                              : TextOfValue(variable.Kind, *reason.Number);
}

std::size_t ReasonNamed(const Variable& variable, std::string_view text) {
    const std::optional<WrittenValue> written = ReadWrittenValue(text);
    const bool isOfKind = written && written->Kind == variable.Kind;
    auto found = PlaceWhere(variable, [&](const MissingReason& reason) {
        return reason.Number ? isOfKind && *reason.Number == written->Value : reason.Text == text;
    });
    if (!found) {
        found = PlaceWhere(variable, [&](const MissingReason& reason) { return reason.Label == text; });
    }
    return found && !text.empty() ? *found + 1 : 0;
}

std::string ListOfReasons(const Variable& variable) {
    constexpr std::size_t most = 10;
    if (!variable.Reasons) {
        return {};
    }
    const std::vector<MissingReason>& reasons = variable.Reasons->Reasons;
    std::string list;
    for (std::size_t place = 0; place < std::min(reasons.size(), most); ++place) {
        const MissingReason& reason = reasons[place];
        list += (list.empty() ? "" : ", ") + Shortened(CodeOfReason(variable, reason)) +
                (reason.Label.empty() ? "" : " " + Quoted(reason.Label));
    }
    return reasons.size() > most ? list + ", and " + std::to_string(reasons.size() - most) + " more" : list;
}

bool LabelReason(Variable& variable, double number, const std::string& label) {
    if (!variable.Reasons || !variable.Reasons->Declares(number)) {
        return false;
    }
    const auto place = PlaceWhere(variable, [&](const MissingReason& reason) { return reason.Number == number; });
    std::vector<MissingReason>& reasons = Changed(variable).Reasons;
    (place ? reasons[*place] : reasons.emplace_back(MissingReason{.Number = number})).Label = label;
    return true;
}

bool LabelReason(Variable& variable, std::string_view text, const std::string& label) {
    const auto place =
        PlaceWhere(variable, [&](const MissingReason& reason) { return !reason.Number && reason.Text == text; });
    if (place) {
        Changed(variable).Reasons[*place].Label = label;
    }
    return place.has_value();
}

std::shared_ptr<const MissingReasons> ReasonsOfRows(const std::shared_ptr<const MissingReasons>& reasons,
                                                    const std::vector<std::size_t>& rows) {
    if (!reasons || reasons->Places.empty()) {
        return reasons;
    }
    ReasonPlaces places;
    for (const std::size_t row : rows) {
        places.Append(reasons->PlaceAt(row));
    }
    auto taken = std::make_shared<MissingReasons>(*reasons);
    taken->Places = places.Finish(reasons->Reasons.size());
    return taken;
}

}  // namespace quillara
