#include "workbench/formats/LeadingZeros.h"

#include <algorithm>

#include "workbench/data/QuotedText.h"
#include "workbench/formats/FieldRules.h"
#include "workbench/formats/TableGathering.h"

namespace quillara {
namespace {

bool AreDigits(std::string_view field) {
    return std::ranges::all_of(field, [](char sign) { return '0' <= sign && sign <= '9'; });
}

}  // namespace

std::optional<LeadingZeros> FindLeadingZeros(const GatheredColumn& column, const FieldRules& rules) {
    std::optional<LeadingZeros> found;
    std::optional<std::size_t> length;
    bool areAlike = true;
    for (const ColumnGatherer& worker : column.Workers) {
        for (const std::string_view field : worker.Texts().Texts()) {
            if (rules.IsMissing(field)) {
                continue;
            }
            length = length.value_or(field.size());
            areAlike = areAlike && AreDigits(field) && field.size() == *length;
            if (BeginsWithSpareZero(field) && (!found || field < found->Example)) {
                found = {.Example = std::string(field)};
            }
        }
    }
    if (found) {
        found->AreIdentifiers = areAlike;
    }
    return found;
}

std::vector<Remark> RemarksOnZeros(const std::vector<VariableWithZeros>& variables) {
    std::vector<Remark> remarks;
    for (const bool areIdentifiers : {true, false}) {
        std::vector<std::string> names;
        std::string example;
        for (const auto& [name, zeros] : variables) {
            if (zeros.AreIdentifiers == areIdentifiers) {
                names.push_back(name);
                example = example.empty() ? Quoted(zeros.Example) : example;
            }
        }
        if (!names.empty() && areIdentifiers) {
            remarks.push_back({"leading-zeros",
                               "The values of " + QuotedList(names) + " have leading zeros, such as " + example +
                                   ", and one length: they stay texts.",
                               "--numbers NAMES (numbers=[...] in Python) reads them as numbers."});
        } else if (!names.empty()) {
            remarks.push_back(
                {"leading-zeros",
                 "Numbers of " + QuotedList(names) + " have leading zeros, such as " + example + ", which are lost.",
                 "--texts NAMES (texts=[...] in Python) keeps them as texts."});
        }
    }
    return remarks;
}

}  // namespace quillara
