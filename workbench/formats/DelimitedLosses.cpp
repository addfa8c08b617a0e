#include "workbench/formats/DelimitedLosses.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <set>
#include <string_view>

#include "workbench/formats/DelimitedColumns.h"
#include "workbench/formats/ReadBack.h"
#include "workbench/formats/RecordScanner.h"
#include "workbench/formats/TextRoom.h"

namespace quillara {
namespace {

enum class Loss { Name, Missing, NoText, Blanks, BlanksBehind, Fraction, Kind };

/// How a loss is told behind the values that suffer it, and what keeps them.
struct LossText {
    std::string_view Happening;
    std::string_view Keeper;
};

// clang-format off
constexpr auto LossTexts = std::to_array<LossText>({  // in the order of Loss
    {"its name becomes ",                           "write sav"},
    {"become missing data",                         "read it with --missing \"\", or write sav"},
    {"values without a text become missing data",   "no format keeps them"},
    {"lose the blanks around them",                 "write sav"},
    {"lose the blanks behind them",                 "no format keeps them"},
    {"parts of a day or second are dropped",        "write sav"},
    {"become ",                                     "write sav"},
});
constexpr auto KindNames = std::to_array<std::string_view>({"numbers", "dates", "times of day", "dates with times", "texts"});  // of ValueKind
// clang-format on

std::string_view NameOf(ValueKind kind) {
    return KindNames[static_cast<std::size_t>(kind)];
}

/// The first few texts, in quotes and cut where they are long: "None", "N/A" and 3 more.
std::string Listed(const std::set<std::string>& texts) {
    constexpr std::size_t mostListed = 3;
    constexpr std::size_t longest = 40;
    std::string list;
    std::size_t listed = 0;
    for (auto text = texts.begin(); text != texts.end() && listed < mostListed; ++text, ++listed) {
        const std::string shown = text->size() > longest ? Fitted(*text, {longest, longest}) + "..." : *text;
        list += (listed == 0 ? "\"" : ", \"") + shown + "\"";
    }
    return listed == texts.size() ? list : list + " and " + std::to_string(texts.size() - listed) + " more";
}

bool IsSameNumber(double number, double other) {
    return std::bit_cast<std::uint64_t>(number) == std::bit_cast<std::uint64_t>(other);
}

/// Compares one column with what it is read back as.
class ColumnComparison {
  public:
    ColumnComparison(ShownColumn& column, const Variable& readBack) : Column(column), ReadBack(readBack) {
        if (Column.Name() != ReadBack.Name) {
            Lost[Index(Loss::Name)].insert(ReadBack.Name);
        }
    }

    void Compare(std::size_t row) {
        const bool isMissing = ReadBack.IsMissing(ReadBack.Values[row]);
        if (Column.IsMissing(row)) {
            Require(isMissing);
        } else if (isMissing) {
            const std::string& field = Column.Field(row);
            Lost[Index(WithoutBlanks(field).empty() ? Loss::NoText : Loss::Missing)].insert(field);
        } else if (ReadBack.Kind == ValueKind::Text) {
            CompareText(row);
        } else {
            CompareNumber(row);
        }
    }

    /// What is lost, in one line; empty: nothing.
    [[nodiscard]] std::string Line(const std::string& file) const {
        std::string line;
        for (std::size_t loss = 0; loss < Lost.size(); ++loss) {
            if (!Lost[loss].empty()) {
                line += (line.empty() ? "" : "; ") + Told(static_cast<Loss>(loss)) + " (" +
                        std::string(LossTexts[loss].Keeper) + ")";
            }
        }
        return line.empty() ? ""
                            : "Variable \"" + Column.Name() + "\" of \"" + file + "\": when it is read, " + line + ".";
    }

  private:
    static std::size_t Index(Loss loss) { return static_cast<std::size_t>(loss); }

    void Require(bool isSame) const {
        if (!isSame) {
            throw ReadBackDifference("Variable \"" + Column.Name() + "\"", " from such a file");
        }
    }

    /// Labels are kept elsewhere with the blanks behind them, unlike texts.
    [[nodiscard]] bool HasOwnLabels() const { return Column.Source() != nullptr && !Column.Source()->Labels.empty(); }

    void CompareText(std::size_t row) {
        const std::string& field = Column.Field(row);
        const std::string& text = ReadBack.Texts.at(static_cast<std::size_t>(ReadBack.Values[row]) - 1);
        CompareKind();
        if (text != field) {
            Require(text == WithoutBlanks(field));
            const bool isKept = !field.ends_with(' ') || HasOwnLabels();
            Lost[Index(isKept ? Loss::Blanks : Loss::BlanksBehind)].insert(field);
        } else if (Column.Kind() == ValueKind::TimeOfDay) {
            CompareWhole(row);
        }
    }

    void CompareNumber(std::size_t row) {
        CompareKind();
        const double number = ReadBack.Values[row];
        if (Column.Kind() == ValueKind::Date && ReadBack.Kind == ValueKind::Date) {
            Require(number == std::floor(Column.Source()->Values[row]));
            CompareWhole(row);
        } else if (Column.Kind() == ValueKind::DateTime && ReadBack.Kind == ValueKind::DateTime) {
            CompareDateTime(number, Column.Source()->Values[row]);
        } else if (Column.Kind() == ReadBack.Kind) {
            Require(IsSameNumber(number, Column.Source()->Values[row]));
        } else {
            Require(Column.Kind() == ValueKind::Text);
        }
    }

    void CompareKind() {
        if (Column.Kind() != ReadBack.Kind) {
            Lost[Index(Loss::Kind)].insert("");
        }
    }

    /// What a sheet counts in days loses what is shorter than a thousandth of a second.
    void CompareDateTime(double number, double value) {
        constexpr double mostLost = 0.0006;
        Require(std::fabs(number - value) <= mostLost);
        if (number != value) {
            Lost[Index(Loss::Fraction)].insert("");
        }
    }

    void CompareWhole(std::size_t row) {
        const double value = Column.Source()->Values[row];
        if (std::floor(value) != value) {
            Lost[Index(Loss::Fraction)].insert("");
        }
    }

    [[nodiscard]] std::string Told(Loss loss) const {
        std::string happening(LossTexts[Index(loss)].Happening);
        switch (loss) {
            case Loss::Name:
                return happening + Listed(Lost[Index(loss)]);
            case Loss::NoText:
            case Loss::Fraction:
                return happening;
            case Loss::Kind:
                return "its " + (HasOwnLabels() ? "labels" : std::string(NameOf(Column.Kind()))) + " " + happening +
                       std::string(NameOf(ReadBack.Kind));
            case Loss::Missing:
            case Loss::Blanks:
            case Loss::BlanksBehind:
                break;
        }
        return Listed(Lost[Index(loss)]) + " " + happening;
    }

    ShownColumn& Column;
    const Variable& ReadBack;
    std::array<std::set<std::string>, LossTexts.size()> Lost;
};

}  // namespace

std::vector<std::string> DelimitedLosses(const DataTable& table, const DataTable& readBack, const std::string& file,
                                         WorkMonitor& monitor) {
    std::vector<ShownColumn> columns = ShownColumns(table);
    if (readBack.Cases != table.Cases || readBack.Variables.size() != columns.size()) {
        throw ReadBackDifference("The number of cases or variables", " from such a file");
    }
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        ColumnComparison comparison(columns[i], readBack.Variables[i]);
        for (std::size_t row = 0; row < static_cast<std::size_t>(table.Cases); ++row) {
            comparison.Compare(row);
            monitor.Advance();
        }
        if (std::string line = comparison.Line(file); !line.empty()) {
            lines.push_back(std::move(line));
        }
    }
    return lines;
}

}  // namespace quillara
