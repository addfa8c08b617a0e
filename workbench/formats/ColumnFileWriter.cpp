#include "workbench/formats/ColumnFileWriter.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "workbench/data/MissingReasons.h"
#include "workbench/formats/Checksum.h"
#include "workbench/formats/ColumnFileLayout.h"

namespace quillara {
namespace {

constexpr std::size_t PieceBytes = 4 << 20;

template <typename Value>
std::string_view BytesOf(std::span<const Value> values) {
    return {reinterpret_cast<const char*>(values.data()), values.size_bytes()};
}

/// Texts as they stand in the file.
std::string PackedTexts(const std::vector<std::string>& texts) {
    std::vector<std::uint64_t> offsets = {0};
    for (const std::string& text : texts) {
        offsets.push_back(offsets.back() + text.size());
    }
    std::string packed(BytesOf(std::span<const std::uint64_t>(offsets)));
    packed.reserve(packed.size() + offsets.back());
    for (const std::string& text : texts) {
        packed += text;
    }
    return packed;
}

std::string_view EntriesOf(const Column& column) {
    const TableColumn& stored = column.Stored();
    return {static_cast<const char*>(stored.Entries), column.size() * BytesOfEntry(stored.Form)};
}

/// Lays the sections of a table one behind the other, and writes them in the same order.
class ColumnFileWriter {
  public:
    explicit ColumnFileWriter(const DataTable& table) : Table(table) {
        Stored.Words.Header = table.Header;
        Stored.Words.Cases = table.Cases;
        Stored.Words.Weight = table.Weight;
        if (!table.CaseNames.empty()) {
            Stored.CaseNames = TextsOf(table.CaseNames);
        }
        for (const Variable& variable : table.Variables) {
            Add(variable);
        }
    }

    void Write(const ByteSink& write, WorkMonitor& monitor) const {
        const std::string dictionary = DictionaryText(Stored);
        ColumnFileHeader header;
        std::ranges::copy(ColumnFileMark, header.Mark.begin());
        header.FileBytes = Aligned(sizeof(header) + dictionary.size()) + End;
        header.DictionaryBytes = dictionary.size();
        header.DictionaryChecksum = ChecksumOf(dictionary);
        const std::string_view bytes = BytesOf(std::span<const ColumnFileHeader>(&header, 1));
        header.Checksum = ChecksumOf(bytes.substr(0, offsetof(ColumnFileHeader, Checksum)));
        write(bytes);
        WriteSection(dictionary, write, monitor, sizeof(header));
        if (!Table.CaseNames.empty()) {
            WriteSection(PackedTexts(Table.CaseNames), write, monitor);
        }
        for (const Variable& variable : Table.Variables) {
            WriteColumn(variable.Values, write, monitor);
            if (HasPlaces(variable)) {
                WriteColumn(variable.Reasons->Places, write, monitor);
            }
            if (!variable.Texts.empty()) {
                WriteSection(PackedTexts(variable.Texts), write, monitor);
            }
        }
    }

  private:
    void Add(const Variable& variable) {
        StoredVariable& stored = Stored.Variables.emplace_back();
        stored.Words.Name = variable.Name;
        stored.Words.LongName = variable.LongName;
        stored.Words.Kind = variable.Kind;
        stored.Words.Format = variable.Format;
        stored.Words.MissingCode = variable.MissingCode;
        stored.Words.Labels = variable.Labels;
        stored.Words.Reasons = variable.Reasons;
        stored.Values = PlaceOf(variable.Values);
        if (HasPlaces(variable)) {
            stored.Places = PlaceOf(variable.Reasons->Places);
        }
        if (!variable.Texts.empty()) {
            stored.Texts = TextsOf(variable.Texts);
        }
    }

    static bool HasPlaces(const Variable& variable) { return variable.Reasons && !variable.Reasons->Places.empty(); }

    StoredColumn PlaceOf(const Column& column) {
        const std::span<const double> values = column.ValuesOfCodes();
        StoredColumn stored;
        stored.Form = column.Stored().Form;
        stored.Entries = SectionOf(EntriesOf(column));
        stored.ValueCount = values.size();
        stored.Values = SectionOf(BytesOf(values));
        return stored;
    }

    static void WriteColumn(const Column& column, const ByteSink& write, WorkMonitor& monitor) {
        WriteSection(EntriesOf(column), write, monitor);
        WriteSection(BytesOf(column.ValuesOfCodes()), write, monitor);
    }

    FileSection SectionOf(std::string_view bytes) {
        const FileSection section{.Offset = End, .Bytes = bytes.size(), .Checksum = ChecksumOf(bytes)};
        End += Aligned(bytes.size());
        return section;
    }

    TextSection TextsOf(const std::vector<std::string>& texts) {
        return {.Count = texts.size(), .Where = SectionOf(PackedTexts(texts))};
    }

    /// Writes bytes and what fills them up; `before` bytes stand before them since the last multiple.
    static void WriteSection(std::string_view bytes, const ByteSink& write, WorkMonitor& monitor,
                             std::size_t before = 0) {
        const std::string filling(Aligned(before + bytes.size()) - before - bytes.size(), '\0');
        while (!bytes.empty()) {
            const std::string_view piece = bytes.substr(0, PieceBytes);
            write(piece);
            monitor.Advance(piece.size());
            bytes.remove_prefix(piece.size());
        }
        write(filling);
    }

    const DataTable& Table;
    StoredTable Stored;
    std::uint64_t End = 0;  // of the sections so far
};

}  // namespace

void WriteColumnFile(const DataTable& table, const ByteSink& write, WorkMonitor& monitor) {
    ColumnFileWriter(table).Write(write, monitor);
}

}  // namespace quillara
