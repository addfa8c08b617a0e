#include "workbench/hosting/NewTable.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <new>
#include <string_view>
#include <utility>

#include "workbench/data/MissingReasons.h"
#include "workbench/hosting/LongTexts.h"

namespace quillara {
namespace {

/// A variable without its values.
Variable DictionaryEntryOf(const Variable& source) {
    Variable entry;
    entry.Name = source.Name;
    entry.LongName = source.LongName;
    entry.Kind = source.Kind;
    entry.Format = source.Format;
    entry.MissingCode = source.MissingCode;
    entry.Texts = source.Texts;
    entry.Labels = source.Labels;
    return entry;
}

/// Which of some cases the rows of a table are, whose variables come from these sources; fewer when they don't fit. An
/// analysis may pass over cases that are equal in none of the variables to one that it takes.
std::vector<std::size_t> RowsFrom(const DataTable& table, const DataTable& input,
                                  const std::vector<std::size_t>& sources, const RowSet& cases) {
    std::vector<std::size_t> rows;
    const auto count = static_cast<std::size_t>(table.Cases);
    cases.ForEach([&](std::size_t row) {
        bool isNext = rows.size() < count;
        for (std::size_t i = 0; i < sources.size() && isNext; ++i) {
            isNext = std::bit_cast<std::uint64_t>(table.Variables[i].Values[rows.size()]) ==
                     std::bit_cast<std::uint64_t>(input.Variables[sources[i]].Values[row]);
        }
        if (isNext) {
            rows.push_back(row);
        }
    });
    return rows;
}

/// The text in a field that is padded with blanks or zeros, and may hold the key of a long text.
std::string TextInField(std::string_view field) {
    constexpr std::string_view padding(" \0", 2);
    return LongTextOf(field.substr(0, field.find_last_not_of(padding) + 1));
}

}  // namespace

NewTable::NewTable(const DataTable& input, const NewTableRequest& request)
    : Table(std::make_shared<DataTable>()),
      NameWidth(request.CaseNameWidth),
      Row(NameWidth + sizeof(double) * request.Sources.size()) {
    Table->FileName = request.FileName;
    Table->Header = request.Header;
    const auto cases = static_cast<std::size_t>(std::clamp(request.Cases, 0, input.Cases));
    for (const short number : request.Sources) {
        AddColumn(input, number, cases);
    }
    if (NameWidth > 0) {
        Table->CaseNames.reserve(cases);
    }
}

void NewTable::AddColumn(const DataTable& input, int number, std::size_t cases) {
    const auto source = static_cast<std::size_t>(number) - 1;
    if (number < 1 || source >= input.Variables.size()) {
        Columns.emplace_back();
        return;
    }
    Columns.emplace_back(Table->Variables.size());
    if (input.Weight == source) {
        Table->Weight = Table->Variables.size();
    }
    Table->Variables.push_back(DictionaryEntryOf(input.Variables[source]));
    Sources.push_back(source);
    Values.emplace_back(input.Variables[source].Values.Stored().Form).Reserve(cases);
}

bool NewTable::Write(std::span<const char> bytes, std::uint32_t position) noexcept {
    if (IsEnded || position != NextPosition) {
        return false;
    }
    try {
        TakeBytes(bytes);
    } catch (const std::bad_alloc&) {
        IsEnded = true;
        return false;
    }
    NextPosition += static_cast<std::uint32_t>(bytes.size());
    return true;
}

void NewTable::TakeBytes(std::span<const char> bytes) {
    while (!bytes.empty()) {
        const std::size_t count = std::min(bytes.size(), Row.size() - RowFilled);
        std::memcpy(Row.data() + RowFilled, bytes.data(), count);
        RowFilled += count;
        bytes = bytes.subspan(count);
        if (RowFilled == Row.size()) {
            TakeRow();
            RowFilled = 0;
        }
    }
}

void NewTable::TakeRow() {
    if (NameWidth > 0) {
        Table->CaseNames.push_back(TextInField({Row.data(), NameWidth}));
    }
    const char* field = Row.data() + NameWidth;
    for (const std::optional<std::size_t>& column : Columns) {
        if (column) {
            double value = 0.0;
            std::memcpy(&value, field, sizeof(value));
            Values[*column].Append(value);
        }
        field += sizeof(double);
    }
    ++Table->Cases;
}

void NewTable::TakeReasons(const DataTable& input, const RowSet& cases) {
    const auto hasReasons = [&](std::size_t source) { return input.Variables[source].Reasons != nullptr; };
    if (std::ranges::none_of(Sources, hasReasons)) {
        return;
    }
    const std::vector<std::size_t> rows = RowsFrom(*Table, input, Sources, cases);
    for (std::size_t i = 0; i < Sources.size() && rows.size() == static_cast<std::size_t>(Table->Cases); ++i) {
        Table->Variables[i].Reasons = ReasonsOfRows(input.Variables[Sources[i]].Reasons, rows);
    }
}

std::shared_ptr<const DataTable> NewTable::Finish(const DataTable& input, const RowSet* cases) {
    IsEnded = true;
    const auto count = static_cast<std::size_t>(Table->Cases);
    for (std::size_t i = 0; i < Values.size(); ++i) {
        Values[i].Shorten(count);  // a row that wasn't whole
        Table->Variables[i].Values = Values[i].Finish();
    }
    Table->CaseNames.resize(std::min(count, Table->CaseNames.size()));
    if (cases != nullptr) {
        TakeReasons(input, *cases);
    }
    return std::move(Table);
}

}  // namespace quillara
