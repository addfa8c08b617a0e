#include "workbench/formats/ColumnFileReader.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <numeric>
#include <optional>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "workbench/data/Errors.h"
#include "workbench/data/MissingReasons.h"
#include "workbench/formats/Checksum.h"
#include "workbench/formats/ColumnFileLayout.h"
#include "workbench/formats/FileBytes.h"
#include "workbench/formats/MappedFile.h"
#include "workbench/formats/WorkCrew.h"

namespace quillara {
namespace {

[[noreturn]] void RefuseColumnFile(const std::string& path, const std::string& reason) {
    throw DataError("\"" + path + "\" can't be read; it is damaged, cut short or no qtable file: " + reason + ".");
}

/// Throws DataError, with nothing but the reason, unless `holds`.
void Demand(bool holds, const char* reason) {
    if (!holds) {
        throw DataError(reason);
    }
}

constexpr const char* OutOfPlace = "a part of it isn't where its dictionary says";

ColumnFileHeader HeaderOf(std::string_view bytes) {
    ColumnFileHeader header;
    Demand(bytes.size() >= sizeof(header), "it has no whole header");
    std::memcpy(&header, bytes.data(), sizeof(header));
    Demand(std::string_view(header.Mark.data(), header.Mark.size()) == ColumnFileMark, "it doesn't begin like one");
    Demand(header.Checksum == ChecksumOf(bytes.substr(0, offsetof(ColumnFileHeader, Checksum))),
           "its header isn't what was written");
    Demand(header.Version == ColumnFileVersion, "it was written by a later version of this program");
    Demand(header.FileBytes == bytes.size(), "it hasn't the length that it was written with");
    const std::uint64_t room = bytes.size() - sizeof(header);
    Demand(header.DictionaryBytes <= room, OutOfPlace);
    return header;
}

/// The sections of a file, whose dictionary may say anything.
class Sections {
  public:
    explicit Sections(std::string_view bytes) {
        const ColumnFileHeader header = HeaderOf(bytes);
        Dictionary = bytes.substr(sizeof(header), header.DictionaryBytes);
        Demand(ChecksumOf(Dictionary) == header.DictionaryChecksum, "its dictionary isn't what was written");
        bytes.remove_prefix(sizeof(header));
        Behind = RequireFilling(bytes, header.DictionaryBytes);
    }

    [[nodiscard]] std::string_view DictionaryBytes() const { return Dictionary; }

    /// The bytes of a section that holds so many numbers of so many bytes.
    [[nodiscard]] std::string_view At(const FileSection& section, std::uint64_t numbers,
                                      std::uint64_t bytesEach) const {
        const bool isWithin = section.Offset % SectionAlignment == 0 && section.Offset <= Behind.size() &&
                              section.Bytes <= Behind.size() - section.Offset;
        Demand(isWithin && section.Bytes / bytesEach == numbers && section.Bytes % bytesEach == 0, OutOfPlace);
        RequireFilling(Behind.substr(section.Offset), section.Bytes);
        return Behind.substr(section.Offset, section.Bytes);
    }

    [[nodiscard]] std::vector<std::string> Texts(const TextSection& texts) const {
        const std::string_view bytes = At(texts.Where, texts.Where.Bytes, 1);
        RequireSound(bytes, texts.Where);
        const std::uint64_t numbers = bytes.size() / sizeof(std::uint64_t);
        Demand(texts.Count < numbers, OutOfPlace);
        const std::span<const std::uint64_t> offsets(reinterpret_cast<const std::uint64_t*>(bytes.data()),
                                                     texts.Count + 1);
        const std::string_view all = bytes.substr(offsets.size_bytes());
        std::vector<std::string> read;
        read.reserve(texts.Count);
        for (std::uint64_t i = 0; i < texts.Count; ++i) {
            Demand(offsets[i] <= offsets[i + 1] && offsets[i + 1] <= all.size(), OutOfPlace);
            read.emplace_back(all.substr(offsets[i], offsets[i + 1] - offsets[i]));
        }
        return read;
    }

    static void RequireSound(std::string_view bytes, const FileSection& section) {
        Demand(ChecksumOf(bytes) == section.Checksum, "a part of it isn't what was written");
    }

  private:
    /// What follows the zeros that fill up the first bytes to a multiple of the alignment.
    static std::string_view RequireFilling(std::string_view bytes, std::uint64_t filled) {
        const std::uint64_t end = std::min<std::uint64_t>(Aligned(filled), bytes.size());
        const std::string_view filling = bytes.substr(filled, end - filled);
        Demand(filling.find_first_not_of('\0') == std::string_view::npos, "a part of it isn't what was written");
        return bytes.substr(end);
    }

    std::string_view Dictionary;
    std::string_view Behind;
};

/// Room for the value of every code that there may be: entries that are damaged mean a value too. What isn't filled is
/// zero, and takes no memory as long as nothing asks for it.
std::shared_ptr<double> ValuesOfAllCodes(std::span<const double> values, std::size_t codes) {
    void* const room = std::calloc(codes, sizeof(double));
    if (room == nullptr) {
        throw std::bad_alloc();
    }
    std::shared_ptr<double> all(static_cast<double*>(room), std::free);
    std::ranges::copy(values, all.get());
    return all;
}

std::size_t MostCodesOf(ColumnForm form) {
    return form == ColumnForm::Codes8    ? 1U + std::numeric_limits<std::uint8_t>::max()
           : form == ColumnForm::Codes16 ? 1U + std::numeric_limits<std::uint16_t>::max()
                                         : 0;
}

/// A column as it stands in the file, and with it all that keeps it there.
struct ColumnOfFile {
    FileSection Section;
    std::string_view Entries;
    ColumnForm Form = ColumnForm::Doubles;
    std::span<const double> Values{};
    std::shared_ptr<const void> Owner;

    /// A column that any entries make; of codes it has a value for each that there may be.
    [[nodiscard]] Column Unchecked(std::size_t cases) const {
        TableColumn stored{.Form = Form, .Entries = Entries.data()};
        if (MostCodesOf(Form) == 0) {
            return Column::Borrowed(stored, cases, Owner);
        }
        const std::shared_ptr<double> values = ValuesOfAllCodes(Values, MostCodesOf(Form));
        stored.Values = values.get();
        stored.ValueCount = static_cast<std::int32_t>(MostCodesOf(Form));
        using Owners = std::pair<std::shared_ptr<const void>, std::shared_ptr<double>>;
        return Column::Borrowed(stored, cases, std::make_shared<const Owners>(Owner, values));
    }

    /// The column, once its entries are found to be what was written.
    [[nodiscard]] Column Checked(std::size_t cases) const {
        Sections::RequireSound(Entries, Section);
        Demand(LargestCode() < std::max<std::size_t>(Values.size(), 1), OutOfPlace);
        const TableColumn stored{.Form = Form,
                                 .Entries = Entries.data(),
                                 .Values = Values.data(),
                                 .ValueCount = static_cast<std::int32_t>(Values.size())};
        return Column::Borrowed(stored, cases, Owner);
    }

  private:
    template <typename Code>
    [[nodiscard]] std::size_t LargestOf() const {
        const std::span<const Code> codes(reinterpret_cast<const Code*>(Entries.data()), Entries.size() / sizeof(Code));
        Code largest = 0;
        for (const Code code : codes) {
            largest = std::max(largest, code);
        }
        return largest;
    }

    [[nodiscard]] std::size_t LargestCode() const {
        return Form == ColumnForm::Codes8    ? LargestOf<std::uint8_t>()
               : Form == ColumnForm::Codes16 ? LargestOf<std::uint16_t>()
                                             : 0;
    }
};

ColumnOfFile ColumnOf(const StoredColumn& stored, const Sections& sections, std::uint64_t cases,
                      std::shared_ptr<const void> owner) {
    ColumnOfFile column{.Section = stored.Entries,
                        .Entries = sections.At(stored.Entries, cases, BytesOfEntry(stored.Form)),
                        .Form = stored.Form,
                        .Owner = std::move(owner)};
    const std::size_t most = MostCodesOf(stored.Form);
    if (most > 0) {
        Demand(stored.ValueCount <= most && (stored.ValueCount > 0 || cases == 0), OutOfPlace);
        const std::string_view values = sections.At(stored.Values, stored.ValueCount, sizeof(double));
        if (stored.ValueCount > 0) {
            Sections::RequireSound(values, stored.Values);
        }
        column.Values = {reinterpret_cast<const double*>(values.data()), stored.ValueCount};
    }
    return column;
}

/// The values of a variable, and the places of its reasons for missing data.
using ColumnsOfVariable = std::pair<ColumnOfFile, std::optional<ColumnOfFile>>;

std::shared_ptr<const MissingReasons> WithPlaces(MissingReasons reasons, Column places) {
    reasons.Places = std::move(places);
    return std::make_shared<const MissingReasons>(std::move(reasons));
}

/// Checks columns of a file before their first use.
class ColumnChecks : public ColumnGuard {
  public:
    ColumnChecks(std::string path, std::vector<ColumnsOfVariable> columns)
        : Path(std::move(path)), Columns(std::move(columns)) {}

    void Check(DataTable& table, std::size_t variable) const override {
        const auto cases = static_cast<std::size_t>(table.Cases);
        const auto& [values, places] = Columns[variable];
        Variable& checked = table.Variables[variable];
        try {
            checked.Values = values.Checked(cases);
            if (places && checked.Reasons) {
                checked.Reasons = WithPlaces(*checked.Reasons, places->Checked(cases));
            }
        } catch (const DataError& error) {
            RefuseColumnFile(Path, error.what());
        }
    }

  private:
    std::string Path;
    std::vector<ColumnsOfVariable> Columns;
};

DataTable TableOf(const FileImage& file, const std::string& path) {
    const Sections sections(file.Bytes);
    StoredTable stored = TableOfDictionary(sections.DictionaryBytes());
    DataTable table = std::move(stored.Words);
    table.FileName = NameOfFile(path);
    Demand(table.Cases >= 0 && (!table.Weight || *table.Weight < stored.Variables.size()), OutOfPlace);
    CheckSize(stored.Variables.size(), static_cast<std::size_t>(table.Cases));
    const auto cases = static_cast<std::uint64_t>(table.Cases);
    if (stored.CaseNames.Count > 0) {
        Demand(stored.CaseNames.Count == cases, OutOfPlace);
        table.CaseNames = sections.Texts(stored.CaseNames);
    }
    std::vector<ColumnsOfVariable> columns;
    for (StoredVariable& variable : stored.Variables) {
        auto& [values, places] =
            columns.emplace_back(ColumnOf(variable.Values, sections, cases, file.Owner), std::nullopt);
        Variable& read = table.Variables.emplace_back(std::move(variable.Words));
        read.Values = values.Unchecked(cases);
        if (variable.Places) {
            places = ColumnOf(*variable.Places, sections, cases, file.Owner);
            read.Reasons = WithPlaces(*read.Reasons, places->Unchecked(cases));
        }
        if (variable.Texts.Count > 0) {
            read.Texts = sections.Texts(variable.Texts);
        }
    }
    table.Unchecked = std::make_shared<const ColumnChecks>(path, std::move(columns));
    return table;
}

}  // namespace

DataTable ReadColumnFile(const std::string& path, const ReadOptions& options) {
    WorkMonitor monitor(options.Progress, options.Cancelled);
    monitor.Check();
    const FileImage file = MapFile(path);
    DataTable table;
    try {
        table = TableOf(file, path);
    } catch (const DataError& error) {
        RefuseColumnFile(path, error.what());
    }
    if (options.ChecksColumns) {
        monitor.Enter(0, 1, file.Bytes.size());
        CheckAllColumns(table, options.Threads, monitor);
    }
    monitor.Finish();
    return table;
}

void CheckAllColumns(DataTable& table, std::size_t threads, WorkMonitor& monitor) {
    std::vector<std::size_t> variables(table.Variables.size());
    std::iota(variables.begin(), variables.end(), std::size_t{0});
    CheckColumns(table, variables, threads, monitor);
}

void CheckColumns(DataTable& table, const std::vector<std::size_t>& variables, std::size_t threads,
                  WorkMonitor& monitor) {
    if (!table.Unchecked) {
        return;
    }
    const WorkCrew crew(threads, monitor);
    crew.Do(variables.size(), static_cast<std::size_t>(table.Cases),
            [&](std::size_t task, std::size_t /*worker*/) { table.Unchecked->Check(table, variables[task]); });
}

}  // namespace quillara
