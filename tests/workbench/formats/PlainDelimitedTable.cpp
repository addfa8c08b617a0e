#include "tests/workbench/formats/PlainDelimitedTable.h"

#include <algorithm>
#include <deque>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

#include "workbench/data/Calendar.h"
#include "workbench/data/DateTimes.h"
#include "workbench/data/Errors.h"
#include "workbench/formats/Encoding.h"
#include "workbench/formats/FileBytes.h"
#include "workbench/formats/RecordScanner.h"
#include "workbench/formats/TextFaults.h"
#include "workbench/formats/TextOfFile.h"
#include "workbench/formats/TitleRecords.h"
#include "workbench/formats/VariableNames.h"
#include "workbench/numbers/DecimalNumber.h"

namespace quillara {
namespace {

constexpr double NoValue = std::numeric_limits<double>::quiet_NaN();

/// Cuts text into records, a character at a time.
class PlainScanner {
  public:
    PlainScanner(std::string_view text, std::optional<char> separator) : Text(text), Separator(separator) {}

    bool Next(std::vector<std::string_view>& fields) {
        fields.clear();
        if (Place >= Text.size()) {
            return false;
        }
        const std::size_t begin = Place;
        Line = NextLine;
        do {
            const bool isQuoted = Place < Text.size() && Text[Place] == '"';
            fields.push_back(WithoutBlanks(isQuoted ? ReadQuoted() : ReadUnquoted()));
        } while (!PassRecordEnd());
        IsEmpty = fields.size() == 1 && fields[0].empty() && Text[begin] != '"';
        return true;
    }

    std::size_t Line = 0;
    bool IsEmpty = false;
    bool EndsInQuotes = false;

  private:
    std::string_view ReadUnquoted() {
        const std::size_t begin = Place;
        while (Place < Text.size() && Text[Place] != Separator && Text[Place] != '\n' && Text[Place] != '\r') {
            ++Place;
        }
        return Text.substr(begin, Place - begin);
    }

    std::string_view ReadToQuote() {
        const std::size_t begin = Place;
        Place = std::min(Text.find('"', Place), Text.size());
        EndsInQuotes = Place == Text.size();
        const std::string_view piece = Text.substr(begin, Place - begin);
        Place += EndsInQuotes ? 0 : 1;
        NextLine += CountLineBreaks(piece);
        return piece;
    }

    std::string_view ReadQuoted() {
        ++Place;
        std::string& field = Joined.emplace_back(ReadToQuote());
        while (Place < Text.size() && Text[Place] == '"') {
            ++Place;
            field += '"';
            field += ReadToQuote();
        }
        field += ReadUnquoted();
        return field;
    }

    bool PassRecordEnd() {
        if (Place == Text.size()) {
            return true;
        }
        const char character = Text[Place++];
        if (character == Separator) {
            return false;
        }
        Place += character == '\r' && Place < Text.size() && Text[Place] == '\n' ? 1 : 0;
        ++NextLine;
        return true;
    }

    std::string_view Text;
    std::optional<char> Separator;
    std::size_t Place = 0;
    std::size_t NextLine = 1;
    std::deque<std::string> Joined;
};

std::optional<char> SeparatorIn(std::string_view text, std::string_view candidates) {
    std::optional<char> best;
    std::size_t most = 0;
    for (const char candidate : candidates) {
        PlainScanner scanner(text, candidate);
        std::map<std::size_t, std::size_t> recordsByFields;
        std::size_t records = 0;
        std::size_t agreeing = 0;
        for (std::vector<std::string_view> fields; records < 1000 && scanner.Next(fields);) {
            records += scanner.IsEmpty ? 0 : 1;
            if (fields.size() > 1) {
                agreeing = std::max(agreeing, ++recordsByFields[fields.size()]);
            }
        }
        if (2 * agreeing > records && agreeing > most) {
            best = candidate;
            most = agreeing;
        }
    }
    return best;
}

/// All fields of a text, and its table.
class PlainReader {
  public:
    PlainReader(const std::string& path, const ReadOptions& options) : Path(path), Options(options) {
        if (options.MissingTexts) {
            MissingTexts = *options.MissingTexts;
        }
        WorkMonitor monitor;
        Text = TextOfFile(path, options.Encoding, monitor);
        const bool isGerman = options.Decimal == ',';
        Separator = options.Separator ? options.Separator : SeparatorIn(Text, isGerman ? ";\t|," : ",;\t|");
        if (Separator && !CanSeparate(*Separator)) {
            RefuseSeparator();
        }
    }

    DataTable Read() {
        std::vector<std::string> names = ReadCells();
        CheckSize(Columns.size(), Lines.size());
        DataTable table;
        table.FileName = NameOfFile(Path);
        table.Cases = static_cast<std::int32_t>(Lines.size());
        names = VariableNames(std::move(names));
        for (std::size_t i = 0; i < names.size(); ++i) {
            table.Variables.push_back(ReadVariable(i, names[i]));
        }
        return table;
    }

  private:
    using Fields = std::vector<std::string>;

    /// Gives the names.
    Fields ReadCells() {
        PlainScanner scanner(Text, Separator);
        Fields names;
        std::size_t emptyBefore = 0;
        for (std::vector<std::string_view> views; scanner.Next(views);) {
            if (scanner.IsEmpty && Columns.size() != 1) {
                emptyBefore += Columns.empty() ? 1 : 0;
                continue;
            }
            if (scanner.EndsInQuotes) {
                FailAtLine(Path, scanner.Line, std::string(OpenQuote));
            }
            Fields fields;
            std::ranges::transform(views, std::back_inserter(fields), WithoutKeyMarks);
            if (Columns.empty()) {
                Columns.resize(fields.size());
                CheckSize(fields.size(), 0);
                names = Options.HasHeader ? fields : Fields(fields.size());
                for (std::size_t line = 1; !Options.HasHeader && fields.size() == 1 && line <= emptyBefore; ++line) {
                    Append({""}, line);
                }
                if (Options.HasHeader) {
                    continue;
                }
            }
            if (fields.size() != Columns.size()) {
                FailAtLine(Path, scanner.Line,
                           WrongCount({.Fields = fields.size(), .Expected = Columns.size(), .AboveNames = AboveNames()},
                                      Separator, {.SeparatorOption = "--separator"}));
            }
            Append(fields, scanner.Line);
        }
        if (Columns.empty()) {
            throw DataError("\"" + Path + "\" is empty.");
        }
        return names;
    }

    [[nodiscard]] std::size_t AboveNames() const {
        return RecordsAboveNames(TextSource(std::string(Text)),
                                 {.Separator = Separator, .SeparatorIsFound = !Options.Separator});
    }

    void Append(const Fields& fields, std::size_t line) {
        for (std::size_t i = 0; i < fields.size(); ++i) {
            Columns[i].push_back(fields[i]);
        }
        Lines.push_back(line);
    }

    Variable ReadVariable(std::size_t index, const std::string& name) const {
        Variable variable;
        variable.Name = name;
        std::vector<double> values;
        if (ReadNumbers(index, values) && !HasCodesWithZeros(index)) {
            EncodeNumbers(variable, std::move(values));
        } else if (ReadWith(DaysFromText, index, values)) {
            variable.Kind = ValueKind::Date;
            EncodeNumbers(variable, std::move(values));
        } else if (ReadWith(SecondsFromDateTime, index, values)) {
            variable.Kind = ValueKind::DateTime;
            EncodeNumbers(variable, std::move(values));
        } else {
            std::vector<std::optional<std::string>> texts;
            for (const std::string& field : Columns[index]) {
                texts.push_back(IsMissing(field) ? std::nullopt : std::optional(field));
            }
            EncodeTexts(variable, texts);
        }
        return variable;
    }

    [[nodiscard]] bool IsMissing(const std::string& field) const {
        return field.empty() || std::ranges::find(MissingTexts, field) != MissingTexts.end();
    }

    /// "01234" and "20095".
    [[nodiscard]] bool HasCodesWithZeros(std::size_t index) const {
        std::set<std::size_t> lengths;
        bool hasZeros = false;
        for (const std::string& field : Columns[index]) {
            if (!IsMissing(field)) {
                const bool isCode = field.find_first_not_of("0123456789") == std::string::npos;
                lengths.insert(isCode ? field.size() : 0);
                hasZeros = hasZeros || (field.front() == '0' && field.size() > 1);
            }
        }
        return hasZeros && lengths.size() == 1 && *lengths.begin() > 0;
    }

    bool ReadNumbers(std::size_t index, std::vector<double>& values) const {
        std::optional<std::size_t> tooLarge;
        for (std::size_t row = 0; row < Lines.size(); ++row) {
            const std::string& field = Columns[index][row];
            double value = NoValue;
            const DecimalOutcome outcome =
                IsMissing(field) ? DecimalOutcome::Number : ReadDecimal(field, Options.Decimal.value_or('.'), value);
            if (outcome == DecimalOutcome::NoNumber) {
                return false;
            }
            tooLarge = outcome == DecimalOutcome::TooLarge && !tooLarge ? row : tooLarge;
            values.push_back(value);
        }
        if (tooLarge) {
            std::size_t line = Lines[*tooLarge];
            for (std::size_t before = 0; before < index; ++before) {
                line += CountLineBreaks(Columns[before][*tooLarge]);
            }
            FailAtLine(Path, line, "a number is too large: " + Columns[index][*tooLarge]);
        }
        return true;
    }

    bool ReadWith(std::optional<double> (*read)(std::string_view), std::size_t index,
                  std::vector<double>& values) const {
        values.clear();
        for (const std::string& field : Columns[index]) {
            const std::optional<double> value = IsMissing(field) ? NoValue : read(field);
            if (!value) {
                return false;
            }
            values.push_back(*value);
        }
        return true;
    }

    std::string Path;
    ReadOptions Options;
    std::string Text;
    std::optional<char> Separator;
    std::vector<Fields> Columns;
    std::vector<std::size_t> Lines;
    Fields MissingTexts = {"NA", "N/A", "NaN", "nan", "null", "NULL", "None", ".", "?"};
};

}  // namespace

DataTable PlainDelimitedTable(const std::string& path, const ReadOptions& options) {
    return PlainReader(path, options).Read();
}

}  // namespace quillara
