#include "workbench/formats/DatesInTexts.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <utility>

#include "workbench/data/Calendar.h"
#include "workbench/data/DateTimes.h"
#include "workbench/data/QuotedText.h"

namespace quillara {
namespace {

struct Candidate {
    Variable* Texts;
    FoundDates Found;
};

/// The order that the texts themselves tell; nothing where either would do.
std::optional<DateOrder> OwnOrder(const FoundDates& found) {
    if (found.CanHaveDayFirst && (!found.CanHaveMonthFirst || !found.DependOnOrder || found.Sign == '.')) {
        return DateOrder::DayFirst;
    }
    return found.CanHaveMonthFirst && !found.CanHaveDayFirst ? std::optional(DateOrder::MonthFirst) : std::nullopt;
}

/// Whether the texts decide between two orders.
bool Decides(const Candidate& candidate) {
    return candidate.Found.AreAlike && candidate.Found.CanHaveDayFirst != candidate.Found.CanHaveMonthFirst;
}

double ValueOf(const std::string& iso, bool withTime) {
    return withTime ? SecondsFromDateTime(iso).value() : DaysFromText(iso).value();
}

void MakeDates(Variable& variable, const FoundDates& found, DateOrder order) {
    std::vector<double> numbers;
    std::ranges::transform(variable.Texts, std::back_inserter(numbers), [&](const std::string& text) {
        return ValueOf(IsoText(text, order).value(), found.HaveTimes);
    });
    std::vector<double> values;
    values.reserve(variable.Values.size());
    for (const double code : variable.Values) {
        values.push_back(variable.IsMissing(code) ? std::numeric_limits<double>::quiet_NaN()
                                                  : numbers[static_cast<std::size_t>(code) - 1]);
    }
    variable.Texts.clear();
    variable.Kind = found.HaveTimes ? ValueKind::DateTime : ValueKind::Date;
    EncodeNumbers(variable, std::move(values));
}

/// The text that tells most: one that is no day the other way round.
const std::string& ExampleOf(const std::vector<std::string>& texts, DateOrder order) {
    const DateOrder other = order == DateOrder::DayFirst ? DateOrder::MonthFirst : DateOrder::DayFirst;
    const auto found = std::ranges::find_if(texts, [&](const std::string& text) { return !IsoText(text, other); });
    return found == texts.end() ? texts.front() : *found;
}

/// Variables that are read in one way.
struct ReadVariables {
    char Sign;
    DateOrder Order;
    bool HaveTimes;
    bool HaveShortYears;
    std::vector<std::string> Names{};
    std::string Example{};  // "31.12.2024" is 2024-12-31

    [[nodiscard]] bool IsSameWay(const ReadVariables& other) const {
        return Sign == other.Sign && Order == other.Order && HaveTimes == other.HaveTimes &&
               HaveShortYears == other.HaveShortYears;
    }
};

Remark OnReading(const ReadVariables& done) {
    const std::string years = done.HaveShortYears ? "; years of two digits are 1969 to 2068" : "";
    return {"texts-as-dates",
            "The texts of " + QuotedList(done.Names) + " are read as dates" + (done.HaveTimes ? " with times" : "") +
                ": " + done.Example + years + ".",
            "--keep-texts (keep_texts=True in Python) leaves them texts."};
}

Remark OnStaying(const Candidate& candidate) {
    const auto& [variable, found] = candidate;
    const std::string begin =
        "The texts of " + Quoted(variable->Name) + " such as " + Quoted(variable->Texts.front()) + " are dates ";
    const std::string plain = "Write them as YYYY-MM-DD to have them as dates.";
    if (!found.AreAlike || (!found.CanHaveDayFirst && !found.CanHaveMonthFirst)) {
        return {"text-dates", begin + "written in several ways, so that they stay texts.", plain};
    }
    return {"text-dates", begin + "with either the day or the month first, so that they stay texts.",
            "Say which with --dates day-first or --dates month-first (dates=\"day-first\" in Python)."};
}

class TextDates {
  public:
    TextDates(DataTable& table, std::optional<DateOrder> order, const std::vector<std::string>& kept) : Told(order) {
        for (Variable& variable : table.Variables) {
            const bool isKept = std::ranges::find(kept, variable.Name) != kept.end();
            if (variable.Kind != ValueKind::Text || variable.Texts.empty() || isKept) {
                continue;
            }
            if (const FoundDates found = FindDates(variable.Texts); found.AreDates) {
                Candidates.push_back({&variable, found});
            }
        }
    }

    std::vector<Remark> Read() {
        std::vector<Remark> stayed;
        for (const Candidate& candidate : Candidates) {
            const std::optional<DateOrder> order = OrderOf(candidate);
            if (order) {
                MakeDatesOf(candidate, *order);
            } else {
                stayed.push_back(OnStaying(candidate));
            }
        }
        std::vector<Remark> remarks;
        std::ranges::transform(Done, std::back_inserter(remarks), OnReading);
        std::ranges::move(stayed, std::back_inserter(remarks));
        return remarks;
    }

  private:
    [[nodiscard]] std::optional<DateOrder> OrderOf(const Candidate& candidate) const {
        if (!candidate.Found.AreAlike) {
            return std::nullopt;
        }
        if (Told && candidate.Found.CanHave(*Told)) {
            return Told;
        }
        const std::optional<DateOrder> own = OwnOrder(candidate.Found);
        return own || !candidate.Found.CanHaveDayFirst ? own : OrderOfOthers(candidate);
    }

    /// Nothing where none decides, or they differ.
    [[nodiscard]] std::optional<DateOrder> OrderOfOthers(const Candidate& candidate) const {
        bool areDayFirst = false;
        bool areMonthFirst = false;
        for (const Candidate& other : Candidates) {
            const bool counts = Decides(other) && other.Found.Sign == candidate.Found.Sign;
            areDayFirst = areDayFirst || (counts && other.Found.CanHaveDayFirst);
            areMonthFirst = areMonthFirst || (counts && other.Found.CanHaveMonthFirst);
        }
        if (areDayFirst == areMonthFirst) {
            return std::nullopt;
        }
        return areDayFirst ? DateOrder::DayFirst : DateOrder::MonthFirst;
    }

    void MakeDatesOf(const Candidate& candidate, DateOrder order) {
        ReadVariables way{candidate.Found.Sign, order, candidate.Found.HaveTimes, candidate.Found.HaveShortYears};
        auto done = std::ranges::find_if(Done, [&](const ReadVariables& each) { return each.IsSameWay(way); });
        if (done == Done.end()) {
            const std::string& example = ExampleOf(candidate.Texts->Texts, order);
            way.Example = Quoted(example) + " is " + IsoText(example, order).value();
            done = Done.insert(Done.end(), std::move(way));
        }
        done->Names.push_back(candidate.Texts->Name);
        MakeDates(*candidate.Texts, candidate.Found, order);
    }

    std::optional<DateOrder> Told;
    std::vector<Candidate> Candidates;
    std::vector<ReadVariables> Done;
};

}  // namespace

std::vector<Remark> ReadDatesInTexts(DataTable& table, std::optional<DateOrder> order,
                                     const std::vector<std::string>& kept) {
    return TextDates(table, order, kept).Read();
}

}  // namespace quillara
