#include "workbench/formats/ReadBack.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

#include "workbench/data/MissingReasons.h"

namespace quillara {
namespace {

const std::string& TextOf(const Variable& variable, double value) {
    return variable.Texts.at(static_cast<std::size_t>(value) - 1);
}

const std::string& OrNone(const std::string* text) {
    static const std::string none;
    return text == nullptr ? none : *text;
}

/// Compares one variable with what was read.
class VariableComparison {
  public:
    VariableComparison(const Variable& expected, const MissingReasons* reasons, const Variable& readBack,
                       bool keepsNegativeZero)
        : Expected(expected), Reasons(reasons), ReadBack(readBack), KeepsNegativeZero(keepsNegativeZero) {}

    void Check(WorkMonitor& monitor) const {
        Require(Expected.Name == ReadBack.Name, "its name");
        Require(Expected.LongName == ReadBack.LongName, "its long name");
        Require(Expected.Kind == ReadBack.Kind, "what kind of values it has");
        for (std::size_t row = 0; row < Expected.Values.size(); ++row) {
            monitor.Advance();
            if (!IsSame(Expected.Values[row], ReadBack.Values[row])) {
                Require(false, "the value of case " + std::to_string(row + 1));
            }
        }
        if (Expected.Kind == ValueKind::Text) {
            CheckLabelsOfTexts();
        } else {
            CheckLabelsOf(Expected);
            CheckLabelsOf(ReadBack);
        }
        if (Reasons != nullptr) {
            CheckReasons();
        }
    }

  private:
    void Require(bool isSame, const std::string& what) const {
        if (!isSame) {
            throw ReadBackDifference("Variable \"" + Expected.Name + "\"", ": " + what + " would change");
        }
    }

    [[nodiscard]] bool IsSame(double expected, double readBack) const {
        const bool isMissing = Expected.IsMissing(expected);
        if (isMissing || ReadBack.IsMissing(readBack)) {
            return isMissing == ReadBack.IsMissing(readBack);
        }
        if (Expected.Kind == ValueKind::Text) {
            return TextOf(Expected, expected) == TextOf(ReadBack, readBack);
        }
        const bool isSameZero = !KeepsNegativeZero && expected == 0 && readBack == 0;
        return isSameZero || std::bit_cast<std::uint64_t>(expected) == std::bit_cast<std::uint64_t>(readBack);
    }

    void CheckLabels(double expected, double readBack) const {
        const bool isSame = OrNone(Expected.LabelOf(expected)) == OrNone(ReadBack.LabelOf(readBack)) &&
                            OrNone(Expected.DescriptionOf(expected)) == OrNone(ReadBack.DescriptionOf(readBack));
        Require(isSame, "a value label");
    }

    void CheckLabelsOf(const Variable& labelled) const {
        for (const auto& [value, texts] : labelled.Labels) {
            if (std::isfinite(value) && !Expected.IsMissing(value) && !ReadBack.IsMissing(value)) {
                CheckLabels(value, value);
            }
        }
    }

    void CheckLabelsOfTexts() const {
        std::vector<bool> isChecked(ReadBack.Texts.size());
        for (std::size_t row = 0; row < Expected.Values.size(); ++row) {
            if (Expected.IsMissing(Expected.Values[row])) {
                continue;
            }
            const auto place = static_cast<std::size_t>(ReadBack.Values[row]) - 1;
            if (!isChecked.at(place)) {
                CheckLabels(Expected.Values[row], ReadBack.Values[row]);
                isChecked[place] = true;
            }
        }
    }

    void CheckReasons() const {
        static const MissingReasons none;
        const MissingReasons& readBack = ReadBack.Reasons ? *ReadBack.Reasons : none;
        Require(Reasons->Ranges == readBack.Ranges, "which values are declared missing");
        for (std::size_t row = 0; row < Expected.Values.size() && !Reasons->Places.empty(); ++row) {
            const MissingReason* reason = Reasons->At(row);
            const MissingReason* same = readBack.At(row);
            const bool isSame =
                (reason == nullptr) == (same == nullptr) && (reason == nullptr || reason->IsSameValue(*same));
            Require(isSame || !Expected.IsMissing(Expected.Values[row]), "a missing value");
        }
        for (const MissingReason& reason : Reasons->Reasons) {
            const auto isIt = [&](const MissingReason& other) {
                return reason.IsSameValue(other) && reason.Label == other.Label;
            };
            Require(reason.Label.empty() || std::ranges::any_of(readBack.Reasons, isIt),
                    "the label of a missing value");
        }
    }

    const Variable& Expected;
    const MissingReasons* Reasons;
    const Variable& ReadBack;
    bool KeepsNegativeZero;
};

void Require(bool isSame, const std::string& what) {
    if (!isSame) {
        throw ReadBackDifference("The " + what, "");
    }
}

}  // namespace

void CheckReadBack(const ExpectedTable& expected, const DataTable& readBack, WorkMonitor& monitor) {
    Require(expected.Table.Cases == readBack.Cases, "number of cases");
    Require(expected.Variables.size() == readBack.Variables.size(), "number of variables");
    for (std::size_t i = 0; i < expected.Variables.size(); ++i) {
        const MissingReasons* reasons = i < expected.Reasons.size() ? expected.Reasons[i] : nullptr;
        VariableComparison(*expected.Variables[i], reasons, readBack.Variables[i], expected.KeepsNegativeZero)
            .Check(monitor);
    }
    Require(expected.Table.Weight == readBack.Weight, "weight variable");
    Require(expected.Table.CaseNames == readBack.CaseNames, "names of the cases");
    Require(expected.Table.Header == readBack.Header, "title text of the table");
}

}  // namespace quillara
