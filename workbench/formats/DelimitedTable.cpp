#include "workbench/formats/DelimitedTable.h"

#include <algorithm>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <string_view>
#include <utility>

#include "workbench/data/Calendar.h"
#include "workbench/data/Errors.h"
#include "workbench/formats/FileBytes.h"
#include "workbench/formats/RecordReader.h"
#include "workbench/numbers/DecimalNumber.h"

namespace quillara {
namespace {

constexpr double Missing = std::numeric_limits<double>::quiet_NaN();

/// The fields of one variable, one per case.
using Fields = std::vector<std::string_view>;

/// The fields of all cases, and the line on which each begins.
struct Cells {
    std::vector<Fields> Columns;
    std::vector<std::size_t> Lines;

    void Append(const std::vector<std::string_view>& fields, std::size_t line) {
        for (std::size_t i = 0; i < fields.size(); ++i) {
            Columns[i].push_back(fields[i]);
        }
        Lines.push_back(line);
    }
};

std::vector<std::string> DefaultMissingTexts() {
    return {"NA", "N/A", "NaN", "nan", "null", "NULL", "None", ".", "?"};
}

/// Turns the fields of a variable into its values.
class ColumnReader {
  public:
    ColumnReader(const Cells& cells, const ReadOptions& options, const RecordReader& reader, WorkMonitor& monitor)
        : All(cells), Reader(reader), Monitor(monitor), Decimal(options.Decimal) {
        MissingTexts = options.MissingTexts.value_or(DefaultMissingTexts());
    }

    [[nodiscard]] Variable Read(std::size_t index, std::string name) const {
        constexpr double begin = 0.5;  // where reading the records ends
        const double perColumn = (1 - begin) / static_cast<double>(All.Columns.size());
        const double share = begin + perColumn * static_cast<double>(index);
        Monitor.Enter(share, share + perColumn, All.Lines.size());
        Variable variable;
        variable.Name = std::move(name);
        std::vector<double> values;
        if (ReadNumbers(index, values)) {
            EncodeNumbers(variable, std::move(values));
        } else if (ReadDates(All.Columns[index], values)) {
            variable.Kind = ValueKind::Date;
            EncodeNumbers(variable, std::move(values));
        } else {
            variable.Kind = ValueKind::Text;
            EncodeTexts(variable, ReadTexts(All.Columns[index]));
        }
        return variable;
    }

  private:
    [[nodiscard]] bool IsMissing(std::string_view field) const {
        return field.empty() || std::ranges::find(MissingTexts, field) != MissingTexts.end();
    }

    /// False when a field is no number. A number too large counts against the file only when all are numbers.
    [[nodiscard]] bool ReadNumbers(std::size_t index, std::vector<double>& values) const {
        const Fields& column = All.Columns[index];
        std::optional<std::size_t> tooLarge;
        values.assign(column.size(), Missing);
        for (std::size_t row = 0; row < column.size(); ++row) {
            Monitor.Advance();
            if (IsMissing(column[row])) {
                continue;
            }
            const DecimalOutcome outcome = ReadDecimal(column[row], Decimal, values[row]);
            if (outcome == DecimalOutcome::NoNumber) {
                return false;
            }
            if (outcome == DecimalOutcome::TooLarge && !tooLarge) {
                tooLarge = row;
            }
        }
        if (tooLarge) {
            Reader.Fail(LineOf(*tooLarge, index), "a number is too large: " + std::string(column[*tooLarge]));
        }
        return true;
    }

    [[nodiscard]] bool ReadDates(const Fields& column, std::vector<double>& values) const {
        values.assign(column.size(), Missing);
        for (std::size_t row = 0; row < column.size(); ++row) {
            Monitor.Advance();
            if (IsMissing(column[row])) {
                continue;
            }
            const std::optional<double> days = DaysFromText(column[row]);
            if (!days) {
                return false;
            }
            values[row] = *days;
        }
        return true;
    }

    [[nodiscard]] std::vector<std::optional<std::string>> ReadTexts(const Fields& column) const {
        std::vector<std::optional<std::string>> texts(column.size());
        for (std::size_t row = 0; row < column.size(); ++row) {
            Monitor.Advance();
            if (!IsMissing(column[row])) {
                texts[row] = column[row];
            }
        }
        return texts;
    }

    /// The line of a field: quoted fields before it in its record may hold line breaks.
    [[nodiscard]] std::size_t LineOf(std::size_t row, std::size_t index) const {
        std::size_t line = All.Lines[row];
        for (std::size_t before = 0; before < index; ++before) {
            line += CountLineBreaks(All.Columns[before][row]);
        }
        return line;
    }

    const Cells& All;
    const RecordReader& Reader;
    WorkMonitor& Monitor;
    char Decimal;
    std::vector<std::string> MissingTexts;
};

/// Reads the records behind the first, and with it the empty ones before it, when it holds no names.
Cells ReadCells(RecordReader& reader, std::vector<std::string_view> first, bool firstIsCase) {
    Cells cells;
    cells.Columns.resize(first.size());
    if (firstIsCase) {
        for (std::size_t line = 1; first.size() == 1 && line <= reader.EmptyBefore(); ++line) {
            cells.Append({""}, line);
        }
        cells.Append(first, reader.Line());
    }
    std::vector<std::string_view> fields;
    while (reader.Next(fields)) {
        cells.Append(fields, reader.Line());
    }
    return cells;
}

RecordOptions RecordsOf(const ReadOptions& options) {
    RecordOptions records{
        .Separator = options.Separator, .Encoding = options.Encoding, .SeparatorOption = "--separator"};
    if (options.Decimal == ',') {
        records.Separators = ";\t|,";
    }
    return records;
}

std::vector<std::string> NamesFrom(const std::vector<std::string_view>& first, bool hasHeader) {
    std::vector<std::string> names(first.size());
    if (hasHeader) {
        names.assign(first.begin(), first.end());
    }
    return VariableNames(std::move(names));
}

DataTable TableOfRecords(RecordReader& reader, const std::string& path, const ReadOptions& options,
                         WorkMonitor& monitor) {
    std::vector<std::string_view> first;
    if (!reader.Next(first)) {
        throw DataError("\"" + path + "\" is empty.");
    }
    CheckSize(first.size(), 0);
    const Cells cells = ReadCells(reader, first, !options.HasHeader);
    CheckSize(first.size(), cells.Lines.size());
    std::vector<std::string> names = NamesFrom(first, options.HasHeader);
    const ColumnReader columns(cells, options, reader, monitor);
    DataTable table;
    table.FileName = NameOfFile(path);
    table.Cases = static_cast<std::int32_t>(cells.Lines.size());
    for (std::size_t i = 0; i < names.size(); ++i) {
        table.Variables.push_back(columns.Read(i, std::move(names[i])));
    }
    monitor.Finish();
    return table;
}

}  // namespace

std::vector<std::string> VariableNames(std::vector<std::string> fields) {
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (fields[i].empty()) {
            fields[i] = "Var" + std::to_string(i + 1);
        }
    }
    // A name that stands in the file itself is not given to another variable.
    std::set<std::string> taken(fields.begin(), fields.end());
    std::map<std::string, int> timesMet;
    for (std::string& name : fields) {
        int& number = timesMet[name];
        if (++number == 1) {
            continue;
        }
        while (!taken.insert(name + "_" + std::to_string(number)).second) {
            ++number;
        }
        name += "_" + std::to_string(number);
    }
    return fields;
}

DataTable ReadDelimitedTable(const std::string& path, const ReadOptions& options) {
    WorkMonitor monitor(options.Progress, options.Cancelled, MemoryLimit(options.MaxMemory));
    monitor.TellCountsTo(options.Received);
    RecordReader reader(path, RecordsOf(options), monitor);
    return TableOfRecords(reader, path, options, monitor);
}

DataTable TableOfDelimitedText(std::string bytes, const ReadOptions& options) {
    WorkMonitor monitor(options.Progress, options.Cancelled, MemoryLimit(options.MaxMemory));
    RecordReader reader("", std::move(bytes), RecordsOf(options), monitor);
    return TableOfRecords(reader, "", options, monitor);
}

}  // namespace quillara
