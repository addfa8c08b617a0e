#include "workbench/formats/NumbersInTexts.h"

#include <algorithm>
#include <array>
#include <functional>
#include <iterator>
#include <limits>
#include <optional>
#include <utility>

#include "workbench/data/QuotedText.h"
#include "workbench/formats/NumberNotation.h"
#include "workbench/numbers/DecimalNumber.h"
#include "workbench/numbers/ExactNumbers.h"

namespace quillara {
namespace {

/// A text variable that may hold numbers.
struct Candidate {
    Variable* Texts;
    FoundNotation Found;
};

bool IsCertainComma(const Candidate& candidate) {
    return candidate.Found.Finding == NotationFinding::Certain && candidate.Found.Notation.Point == ',';
}

/// Variables that are read in one notation.
struct ReadVariables {
    NumberNotation Notation;
    std::vector<std::string> Names;
    std::string Example;  // "1,234" is 1234
};

/// The first text, without a sign if there is one, that a plain reader takes for no number, or for another one; with
/// thousands where there are such.
const std::string& ExampleOf(const std::vector<std::string>& texts, const NumberNotation& notation) {
    const auto isOther = [&](const std::string& text) {
        return !DecimalNumber(text) || DecimalNumber(text) != ReadInNotation(text, notation);
    };
    const std::array<std::function<bool(const std::string&)>, 3> wishes = {
        [&](const std::string& text) {
            const bool hasThousands = notation.Thousands == '\0' || text.find(notation.Thousands) != std::string::npos;
            return hasThousands && text.find('-') == std::string::npos && isOther(text);
        },
        [&](const std::string& text) { return text.find('-') == std::string::npos && isOther(text); }, isOther};
    for (const auto& wish : wishes) {
        if (const auto found = std::ranges::find_if(texts, wish); found != texts.end()) {
            return *found;
        }
    }
    return texts.front();
}

/// False when one is too large for a number: the variable stays then.
bool MakeNumbers(Variable& variable, const NumberNotation& notation) {
    std::vector<double> numbers;
    numbers.reserve(variable.Texts.size());
    for (const std::string& text : variable.Texts) {
        const std::optional<double> number = ReadInNotation(text, notation);
        if (!number) {
            return false;
        }
        numbers.push_back(*number);
    }
    std::vector<double> values;
    values.reserve(variable.Values.size());
    for (const double code : variable.Values) {
        const bool isMissing = variable.IsMissing(code);
        values.push_back(isMissing ? std::numeric_limits<double>::quiet_NaN()
                                   : numbers[static_cast<std::size_t>(code) - 1]);
    }
    variable.Texts.clear();
    variable.Kind = ValueKind::Number;
    EncodeNumbers(variable, std::move(values));
    return true;
}

/// A variable whose texts stay, and why.
Remark OnStaying(const Candidate& candidate, const NumberSurroundings& surroundings) {
    const auto& [variable, found] = candidate;
    const std::string begin = "The texts of " + Quoted(variable->Name) + " such as " +
                              Quoted(ExampleOf(variable->Texts, found.Notation)) + " are numbers ";
    const std::string plain = "Write them as plain numbers to have their statistics.";
    if (found.Finding == NotationFinding::Mixed) {
        return {"text-numbers", begin + "written in several ways, so that they stay texts.", plain};
    }
    const std::string advice = surroundings.TakesDecimal ? "Read the file with --decimal ," : plain;
    if (found.Finding == NotationFinding::Unsure) {
        return {"text-numbers", begin + "with a comma between thousands or before decimals, so that they stay texts.",
                surroundings.TakesDecimal ? "If it is before decimals, read the file with --decimal ," : plain};
    }
    return {"text-numbers", begin + "with a decimal comma.", advice};
}

/// What the decimals of a file are, told by all of its variables together.
struct DecimalsOfFile {
    bool HasCommas = false;
    bool HasPoints = false;

    [[nodiscard]] bool AreCommas() const { return HasCommas && !HasPoints; }
    [[nodiscard]] bool ArePoints() const { return HasPoints && !HasCommas; }
};

class TextNumbers {
  public:
    TextNumbers(DataTable& table, const NumberSurroundings& surroundings) : Surroundings(surroundings) {
        for (Variable& variable : table.Variables) {
            if (variable.Kind == ValueKind::Text && !variable.Texts.empty() && !surroundings.IsKept(variable.Name)) {
                Take(variable);
            }
        }
        Decimals.HasPoints = surroundings.HasDecimalPoints;
        for (const Candidate& candidate : Candidates) {
            Decimals.HasCommas = Decimals.HasCommas || (IsCertainComma(candidate) && IsToBeRead(candidate));
        }
        if (!surroundings.Decimal && Decimals.AreCommas()) {
            TakeCommas();
        }
    }

    [[nodiscard]] bool HasDecimalCommas() const { return Decimals.HasCommas; }

    std::vector<Remark> Read() {
        for (const Candidate& candidate : Candidates) {
            if (IsToBeRead(candidate)) {
                MakeNumbersOf(candidate);
            } else if (candidate.Found.Finding != NotationFinding::None) {
                Stayed.push_back(OnStaying(candidate, Surroundings));
            }
        }
        std::vector<Remark> remarks;
        std::ranges::transform(Done, std::back_inserter(remarks), OnReading);
        remarks.insert(remarks.end(), Stayed.begin(), Stayed.end());
        return remarks;
    }

  private:
    void Take(Variable& variable) {
        const FoundNotation found = FindNotation(variable.Texts, Surroundings.Decimal.value_or('.'));
        const bool isOther = Surroundings.Decimal == '.' && found.Notation.Point == ',';
        Candidates.push_back({&variable, isOther ? FoundNotation() : found});
    }

    /// What may be read either way, "1.234" too, is read with decimal commas.
    void TakeCommas() {
        for (Candidate& candidate : Candidates) {
            if (candidate.Found.Finding == NotationFinding::Unsure ||
                candidate.Found.Finding == NotationFinding::None) {
                candidate.Found = FindNotation(candidate.Texts->Texts, ',');
            }
        }
    }

    /// Where commas separate fields: "1,5".
    static bool MayBeTwoNumbers(const NumberNotation& notation) { return notation == NumberNotation{.Point = ','}; }

    [[nodiscard]] bool IsToBeRead(const Candidate& candidate) const {
        switch (candidate.Found.Finding) {
            case NotationFinding::Certain:
                return Surroundings.Separator != ',' || !MayBeTwoNumbers(candidate.Found.Notation);
            case NotationFinding::Unsure:
                return Surroundings.Decimal || Decimals.ArePoints() ||
                       (Surroundings.Separator != ';' && !Decimals.HasCommas);
            case NotationFinding::None:
            case NotationFinding::Mixed:
                break;
        }
        return false;
    }

    void MakeNumbersOf(const Candidate& candidate) {
        const NumberNotation& notation = candidate.Found.Notation;
        const std::string example = ExampleOf(candidate.Texts->Texts, notation);
        if (!MakeNumbers(*candidate.Texts, notation)) {
            return;
        }
        auto done = std::ranges::find(Done, notation, &ReadVariables::Notation);
        if (done == Done.end()) {
            const std::string number = ExactNumberText(*ReadInNotation(example, notation));
            done = Done.insert(Done.end(), {notation, {}, Quoted(example) + " is " + number});
        }
        done->Names.push_back(candidate.Texts->Name);
    }

    static Remark OnReading(const ReadVariables& done) {
        return {"texts-as-numbers",
                "The texts of " + QuotedList(done.Names) + " are read as numbers: " + done.Example + ".",
                "--keep-texts (keep_texts=True in Python) leaves them texts."};
    }

    const NumberSurroundings& Surroundings;
    std::vector<Candidate> Candidates;
    DecimalsOfFile Decimals;
    std::vector<ReadVariables> Done;
    std::vector<Remark> Stayed;
};

}  // namespace

bool NumberSurroundings::IsKept(const std::string& name) const {
    return std::ranges::find(Kept, name) != Kept.end();
}

bool HaveDecimalCommas(DataTable& table, const NumberSurroundings& surroundings) {
    return TextNumbers(table, surroundings).HasDecimalCommas();
}

std::vector<Remark> ReadNumbersInTexts(DataTable& table, const NumberSurroundings& surroundings) {
    return TextNumbers(table, surroundings).Read();
}

}  // namespace quillara
