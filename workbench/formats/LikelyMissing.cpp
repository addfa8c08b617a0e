#include "workbench/formats/LikelyMissing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <span>
#include <string>

#include "platform/OrderedBits.h"
#include "workbench/data/QuotedText.h"
#include "workbench/formats/DelimitedText.h"
#include "workbench/formats/NumberNotation.h"
#include "workbench/formats/OddCases.h"
#include "workbench/numbers/DecimalNumber.h"

namespace quillara {
namespace {

constexpr auto NegativeCodes =
    std::to_array<double>({-7, -8, -9, -77, -88, -99, -777, -888, -999, -7777, -8888, -9999, -99999, -999999});
constexpr auto PositiveCodes = std::to_array<double>({99, 999, 9999, 99999, 999999});
constexpr double TimesAsLarge = 5.0;  // that a code is than all values
constexpr std::size_t FewestOthers = 10;

struct CountedCode {
    double Code = 0.0;
    std::size_t Cases = 0;
};

/// The values of a variable, with codes and others apart.
struct Tally {
    std::vector<CountedCode> Codes{};
    double Smallest = std::numeric_limits<double>::infinity();  // of the others
    double Largest = -Smallest;
    std::size_t Others = 0;

    void Take(double value) {
        const bool mayBeCode = value == -1.0 || value <= -7.0 || value >= PositiveCodes.front();
        if (mayBeCode && TakeCode(value)) {
            return;
        }
        Smallest = std::min(Smallest, value);
        Largest = std::max(Largest, value);
        ++Others;
    }
    bool TakeCode(double value) {
        const auto known = std::ranges::find(Codes, value, &CountedCode::Code);
        if (known != Codes.end()) {
            ++known->Cases;
            return true;
        }
        const bool isCode = value == -1.0 || std::ranges::find(NegativeCodes, value) != NegativeCodes.end() ||
                            std::ranges::find(PositiveCodes, value) != PositiveCodes.end();
        if (isCode) {
            Codes.push_back({value, 1});
        }
        return isCode;
    }
};

bool StandsApart(const Tally& tally, const CountedCode& code) {
    if (code.Code == -1.0) {
        return tally.Smallest >= 1.0 && code.Cases > 1;
    }
    const bool isFar = code.Code < 0.0 || (code.Code + 1) >= TimesAsLarge * tally.Largest;
    return tally.Smallest >= 0.0 && isFar;
}

/// What may be a code but doesn't stand apart is a value as any other.
std::vector<CountedCode> CodesOf(Tally tally) {
    std::ranges::sort(tally.Codes, {}, [](const CountedCode& code) { return std::fabs(code.Code); });
    std::vector<CountedCode> codes;
    for (const CountedCode& code : tally.Codes) {
        if (tally.Others >= FewestOthers && StandsApart(tally, code)) {
            codes.push_back(code);
        } else {
            tally.Smallest = std::min(tally.Smallest, code.Code);
            tally.Largest = std::max(tally.Largest, code.Code);
            tally.Others += code.Cases;
        }
    }
    std::erase_if(codes, [&](const CountedCode& code) { return !StandsApart(tally, code); });
    return codes;
}

Tally TallyOf(const Variable& variable) {
    const NearlyEqualRange missing = RangeNearlyEqualTo(variable.MissingCode);
    Tally tally;
    VisitRuns(variable.Values, [&](std::span<const double> run) {
        for (const double value : run) {
            if (!missing.Contains(value)) {
                tally.Take(value);
            }
        }
    });
    return tally;
}

Remark OnCodes(const Variable& variable, const std::vector<CountedCode>& codes) {
    std::string list;
    std::string option;
    std::size_t cases = 0;
    for (const CountedCode& code : codes) {
        const std::string number = std::to_string(static_cast<long>(code.Code));
        list += (list.empty() ? "" : ", ") + number;
        option += (option.empty() ? "" : ",") + number;
        cases += code.Cases;
    }
    return {"likely-missing",
            list + " of " + Quoted(variable.Name) + (codes.size() == 1 ? " looks like a code" : " look like codes") +
                " of missing data, but " + (codes.size() == 1 ? "counts as a value" : "count as values") + " in " +
                std::to_string(cases) + (cases == 1 ? " case." : " cases."),
            "If so, read the file with --missing '" + variable.Name + "=" + option + "'."};
}

/// The texts of a variable that are no numbers, where nearly all others are.
std::vector<std::string> OddOnesAmongNumbers(const std::vector<std::string>& texts) {
    constexpr std::size_t most = 3;
    constexpr std::size_t numbersForEach = 10;
    std::vector<std::string> odd;
    for (const std::string& text : texts) {
        const bool isNumber = DecimalNumber(text) || FindNotation({text}, '.').Finding != NotationFinding::None;
        if (!isNumber) {
            odd.push_back(text);
        }
        if (odd.size() > most) {
            return {};
        }
    }
    return texts.size() > (numbersForEach + 1) * odd.size() - 1 ? odd : std::vector<std::string>();
}

/// Totals that become missing would count as a case all the same.
std::string AdviceOnOdd(const std::string& variable, const std::vector<std::string>& odd, const std::string& list) {
    const std::string missing = " the file with --missing '+" + list + "'";
    return std::ranges::any_of(odd, IsWordOfTotals)
               ? "Read" + missing + ", and leave the totals out with --select 'not missing([" + variable + "])'."
               : "If that means missing data, read" + missing + ".";
}

}  // namespace

std::vector<Remark> RemarksOnLikelyMissing(const DataTable& table, const std::vector<DeclaredMissing>& declared) {
    std::vector<Remark> remarks;
    for (const Variable& variable : table.Variables) {
        const bool isKnown = variable.Reasons || !variable.Labels.empty() ||
                             std::ranges::find(declared, variable.Name, &DeclaredMissing::Variable) != declared.end();
        if (variable.Kind != ValueKind::Number || isKnown) {
            continue;
        }
        if (const std::vector<CountedCode> codes = CodesOf(TallyOf(variable)); !codes.empty()) {
            remarks.push_back(OnCodes(variable, codes));
        }
    }
    return remarks;
}

std::vector<Remark> RemarksOnNearNumbers(const DataTable& table, const std::vector<std::string>& kept) {
    std::vector<Remark> remarks;
    for (const Variable& variable : table.Variables) {
        const bool isKept = std::ranges::find(kept, variable.Name) != kept.end();
        const std::vector<std::string> odd = variable.Kind != ValueKind::Text || isKept
                                                 ? std::vector<std::string>()
                                                 : OddOnesAmongNumbers(variable.Texts);
        if (!odd.empty()) {
            std::string list;
            for (const std::string& text : odd) {
                list += (list.empty() ? "" : ",") + QuotedField(text);
            }
            remarks.push_back({"near-numbers",
                               "The texts of " + Quoted(variable.Name) + " are numbers but for " + QuotedList(odd) +
                                   ", so that they stay texts.",
                               AdviceOnOdd(variable.Name, odd, list)});
        }
    }
    return remarks;
}

}  // namespace quillara
