#include "workbench/formats/DataFile.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <functional>
#include <iterator>
#include <optional>
#include <string_view>
#include <utility>

#include "workbench/data/Errors.h"
#include "workbench/data/MissingReasons.h"
#include "workbench/data/QuotedText.h"
#include "workbench/formats/ColumnFileLayout.h"
#include "workbench/formats/ColumnFileReader.h"
#include "workbench/formats/ColumnFileWriter.h"
#include "workbench/formats/DelimitedLosses.h"
#include "workbench/formats/DelimitedTable.h"
#include "workbench/formats/DelimitedWriter.h"
#include "workbench/formats/FileBytes.h"
#include "workbench/formats/FileFormats.h"
#include "workbench/formats/FileReplacement.h"
#include "workbench/formats/FileSignature.h"
#include "workbench/formats/OdbcReader.h"
#include "workbench/formats/ParquetReader.h"
#include "workbench/formats/ReadBack.h"
#include "workbench/formats/ReasonLosses.h"
#include "workbench/formats/SourceName.h"
#include "workbench/formats/SqliteReader.h"
#include "workbench/formats/StatisticalFile.h"
#include "workbench/formats/StatisticalLayout.h"
#include "workbench/formats/StatisticalRules.h"
#include "workbench/formats/StatisticalWriter.h"
#include "workbench/formats/WorkbookReader.h"
#include "workbench/formats/WorkbookTable.h"

namespace quillara {
namespace {

// How much of writing a table is done when its bytes are there, and when they are read back.
constexpr double ShareOfWriting = 0.4;
constexpr double ShareOfReading = 0.9;

/// What a file holds. A pipe isn't looked at: what is read from it is gone.
FileContent LookInto(const std::string& path, std::string_view extension) {
    std::error_code error;
    const std::filesystem::file_type type = std::filesystem::status(path, error).type();
    if (type == std::filesystem::file_type::fifo || type == std::filesystem::file_type::character) {
        return {};
    }
    WorkMonitor monitor;
    return FileContentOf(ReadBytes(path, monitor, SignatureLength), extension);
}

[[noreturn]] void RefuseForeign(const std::string& path, const FileContent& content) {
    throw DataError("\"" + path + "\" is " + std::string(content.ForeignKind) + ", which can't be read; " +
                    std::string(content.Advice) + ".");
}

/// Whether one reader takes both formats and looks by itself which it is.
bool AreTwins(std::string_view extension, std::string_view other) {
    const FileFormat* format = FindFileFormat(extension);
    const FileFormat* otherFormat = FindFileFormat(other);
    if (format == nullptr || otherFormat == nullptr || format->Kind != otherFormat->Kind) {
        return false;
    }
    return format->Kind == FormatKind::Statistical ? extension.ends_with("sav") && other.ends_with("sav")
                                                   : format->Kind != FormatKind::DelimitedText;
}

/// The extension of the format in which a file is to be read.
std::string FormatOf(const std::string& path) {
    std::string extension = ExtensionOf(path);
    const FileContent content = LookInto(path, extension);
    if (!content.ForeignKind.empty()) {
        RefuseForeign(path, content);
    }
    const bool isNamed = FindFileFormat(extension) != nullptr;
    if (content.Extension.empty() && isNamed && FindFileFormat(extension)->Kind == FormatKind::PackedText &&
        !IsDeviceOrPipe(path)) {
        throw DataError("\"" + path + "\" can't be read; it is damaged or cut short.");
    }
    if (!isNamed && !content.Extension.empty()) {
        return std::string(content.Extension);
    }
    if (!content.Extension.empty() && content.Extension != extension && !AreTwins(content.Extension, extension)) {
        const std::string renamed = std::filesystem::path(path).replace_extension(content.Extension).filename();
        throw DataError("\"" + path + "\" isn't what its name says: it holds a " + std::string(content.Extension) +
                        " file; rename it to \"" + renamed + "\".");
    }
    return extension;
}

/// The extension of the format in which a path is written.
std::string WrittenExtension(const std::string& path) {
    return path == StandardOutputPath ? "csv" : ExtensionOf(path);
}

/// The rules of the statistical format that is written under an extension; null for any other.
const StatisticalRules* FindRules(std::string_view extension) {
    const auto found = std::ranges::find(RulesOfFormats, extension, &StatisticalRules::Extension);
    return found == RulesOfFormats.end() ? nullptr : &*found;
}

ReadOptions ReadingBack(ProgressTaker progress, const std::function<bool()>& cancelled) {
    return {.MaxMemory = MemoryLimit::Unlimited, .Progress = std::move(progress), .Cancelled = cancelled};
}

std::size_t FieldsOf(const DataTable& table) {
    return (table.Variables.size() + 1) * static_cast<std::size_t>(table.Cases);
}

/// How many bytes columns have as they are written.
std::size_t BytesOfColumns(const DataTable& table) {
    std::size_t bytes = 0;
    for (const Variable& variable : table.Variables) {
        bytes += variable.Values.size() * BytesOfEntry(variable.Values.Stored().Form);
        bytes += variable.Reasons ? variable.Reasons->Places.size() : 0;
    }
    return bytes;
}

/// What `read` gives of the file that was written under a temporary name.
template <typename Read>
auto ReadBackFor(const std::string& path, Read read) {
    try {
        return read();
    } catch (const ReadBackDifference&) {
        throw;
    } catch (const DataError&) {
        throw DataError("\"" + path +
                        "\" can't be written: what it would hold can't be read back; choose another format.");
    }
}

/// Throws DataError when it can't be written, and leaves the monitor where the writing ends.
using FileWriter = std::function<void(const ByteSink& write)>;

/// Replaces a file by one that keeps all of a table, and compares what `read` gives of it under its temporary name with
/// what it must hold.
template <typename Read>
void WriteWhole(const std::string& path, const ExpectedTable& expected, const FileWriter& writer, WorkMonitor& monitor,
                const std::function<bool()>& cancelled, Read read) {
    const auto cases = static_cast<std::size_t>(expected.Table.Cases);
    ReplaceFile(path, writer, cancelled, [&](const std::string& temporary) {
        const DataTable readBack = ReadBackFor(path, [&] { return read(temporary); });
        monitor.Enter(ShareOfReading, 1, cases * expected.Variables.size());
        CheckReadBack(expected, readBack, monitor);
    });
}

/// Gives what is lost.
std::vector<std::string> WriteStatistical(const DataTable& table, const std::string& path,
                                          const StatisticalRules& rules, const std::function<bool()>& cancelled,
                                          const ProgressTaker& progress) {
    WorkMonitor monitor(progress, cancelled);
    const StatisticalLayout layout = LayOut(table, rules);
    monitor.Enter(0, ShareOfWriting, static_cast<std::size_t>(table.Cases) * layout.Columns.size());
    ExpectedTable expected{.Table = table, .Variables = {}, .KeepsNegativeZero = rules.KeepsNegativeZero};
    for (std::size_t i = layout.HasCaseNames ? 1 : 0; i < layout.Columns.size(); ++i) {
        expected.Variables.push_back(layout.Columns[i].Content);
        expected.Reasons.push_back(layout.Columns[i].Reasons);
    }
    WriteWhole(
        path, expected, [&](const ByteSink& write) { WriteStatisticalFile(layout, rules, write, monitor); }, monitor,
        cancelled,
        [&](const std::string& temporary) {
            return ReadStatisticalFile(temporary, rules.Extension,
                                       ReadingBack(PartOf(progress, ShareOfWriting, ShareOfReading), cancelled));
        });
    return layout.Losses;
}

void WriteColumns(const DataTable& table, const std::string& path, const std::function<bool()>& cancelled,
                  const ProgressTaker& progress) {
    WorkMonitor monitor(progress, cancelled);
    monitor.Enter(0, ShareOfWriting, BytesOfColumns(table));
    ExpectedTable expected{.Table = table, .Variables = {}};
    std::ranges::transform(table.Variables, std::back_inserter(expected.Variables),
                           [](const Variable& variable) { return &variable; });
    std::ranges::transform(table.Variables, std::back_inserter(expected.Reasons),
                           [](const Variable& variable) { return variable.Reasons.get(); });
    WriteWhole(
        path, expected, [&](const ByteSink& write) { WriteColumnFile(table, write, monitor); }, monitor, cancelled,
        [&](const std::string& temporary) {
            return ReadColumnFile(temporary, ReadingBack(PartOf(progress, ShareOfWriting, ShareOfReading), cancelled));
        });
}

/// What a file without labels and declared missing values loses.
std::vector<std::string> LossesOf(const DataTable& table, const DataTable& readBack, const std::string& path,
                                  WorkMonitor& monitor) {
    std::vector<std::string> losses = DelimitedLosses(table, readBack, path, monitor);
    std::ranges::move(LostReasonsOf(table, "this format"), std::back_inserter(losses));
    return losses;
}

/// To a device or pipe: the text can't be read there, so it is read in memory.
std::vector<std::string> WriteDelimitedToDevice(const DataTable& table, const std::string& path, WorkMonitor& monitor,
                                                const ReadOptions& readingBack) {
    const std::string text = TextOfTable(table, monitor);
    const DataTable readBack = ReadBackFor(path, [&] { return TableOfDelimitedText(text, readingBack); });
    monitor.Enter(ShareOfReading, 1, readBack.Variables.size() * static_cast<std::size_t>(table.Cases));
    std::vector<std::string> losses = LossesOf(table, readBack, path, monitor);
    ReplaceFile(path, text, readingBack.Cancelled);
    return losses;
}

/// Replaces a file by one of a format that is read by the rules of delimited text; gives what is lost.
template <typename Read>
std::vector<std::string> WriteShown(const DataTable& table, const std::string& path, const FileWriter& writer,
                                    WorkMonitor& monitor, const std::function<bool()>& cancelled, Read read) {
    std::vector<std::string> losses;
    ReplaceFile(path, writer, cancelled, [&](const std::string& temporary) {
        const DataTable readBack = ReadBackFor(path, [&] { return read(temporary); });
        monitor.Enter(ShareOfReading, 1, FieldsOf(table));
        losses = LossesOf(table, readBack, path, monitor);
    });
    return losses;
}

std::vector<std::string> WriteDelimited(const DataTable& table, const std::string& path,
                                        const std::function<bool()>& cancelled, const ProgressTaker& progress) {
    WorkMonitor monitor(progress, cancelled);
    monitor.Enter(0, ShareOfWriting, FieldsOf(table));
    const ReadOptions readingBack = ReadingBack(PartOf(progress, ShareOfWriting, ShareOfReading), cancelled);
    if (IsDeviceOrPipe(path)) {
        return WriteDelimitedToDevice(table, path, monitor, readingBack);
    }
    return WriteShown(
        table, path, [&](const ByteSink& write) { WriteDelimitedText(table, write, monitor); }, monitor, cancelled,
        [&](const std::string& temporary) { return ReadDelimitedTable(temporary, readingBack); });
}

std::vector<std::string> WriteSheet(const DataTable& table, const std::string& path,
                                    const std::function<bool()>& cancelled, const ProgressTaker& progress) {
    WorkMonitor monitor(progress, cancelled);
    monitor.Enter(0, ShareOfWriting, FieldsOf(table));
    const ReadOptions readingBack = ReadingBack(PartOf(progress, ShareOfWriting, ShareOfReading), cancelled);
    return WriteShown(
        table, path, [&](const ByteSink& write) { write(WorkbookOfTable(table, monitor)); }, monitor, cancelled,
        [&](const std::string& temporary) { return ReadWorkbook(temporary, readingBack); });
}

DataTable ReadDatabase(const DatabaseSource& source, const ReadOptions& options) {
    switch (source.Kind) {
        case DatabaseKind::Parquet:
            return ReadParquet(source.Place, options);
        case DatabaseKind::Odbc:
            return ReadOdbc(source, options);
        case DatabaseKind::Sqlite:
            break;
    }
    return ReadSqlite(source, options);
}

}  // namespace

namespace {

DataTable ReadAsItIs(const std::string& path, const ReadOptions& options) {
    if (const std::optional<DatabaseSource> source = DatabaseSourceOf(path)) {
        return ReadDatabase(*source, options);
    }
    const std::string format = FormatOf(path);
    const FileFormat* found = FindFileFormat(format);
    switch (found == nullptr ? FormatKind::DelimitedText : found->Kind) {
        case FormatKind::Statistical:
            return ReadStatisticalFile(path, format, options);
        case FormatKind::Columns:
            return ReadColumnFile(path, options);
        case FormatKind::Workbook:
            return ReadWorkbook(path, options);
        case FormatKind::Database: {
            const DatabaseKind kind = format == "parquet" ? DatabaseKind::Parquet : DatabaseKind::Sqlite;
            return ReadDatabase({.Kind = kind, .Place = path, .Name = NameOfFile(path)}, options);
        }
        case FormatKind::DelimitedText:
        case FormatKind::PackedText:
            break;
    }
    return ReadDelimitedTable(path, options);
}

}  // namespace

DataTable ReadDataFile(const std::string& path, const ReadOptions& options) {
    if (options.MissingValues.empty()) {
        return ReadAsItIs(path, options);
    }
    ReadOptions reading = options;
    reading.ChecksColumns = true;
    DataTable table = ReadAsItIs(path, reading);
    for (const DeclaredMissing& declared : options.MissingValues) {
        if (DeclareMissing(table, declared) == 0 && options.Noticed) {
            options.Noticed({"missing-not-found", "No case has a value of " + Quoted(declared.Variable) +
                                                      " that --missing declares as missing data."});
        }
    }
    return table;
}

void CheckCanBeWritten(const std::string& path) {
    const FileFormat* format = FindFileFormat(WrittenExtension(path));
    if (format == nullptr || !format->IsWritten) {
        throw DataError("\"" + path + "\" can't be written: data files can be written as " + WrittenFormats() +
                        "; give it one of these extensions.");
    }
}

std::vector<std::string> WriteDataFile(const DataTable& table, const std::string& path,
                                       const std::function<bool()>& cancelled, const ProgressTaker& progress) {
    CheckCanBeWritten(path);
    return WriteDataFileAs(WrittenExtension(path), table, path, cancelled, progress);
}

std::vector<std::string> WriteDataFileAs(std::string_view format, const DataTable& table, const std::string& path,
                                         const std::function<bool()>& cancelled, const ProgressTaker& progress) {
    if (table.Variables.empty()) {
        throw DataError("\"" + path + "\" can't be written: the table has no variables.");
    }
    if (const StatisticalRules* rules = FindRules(format)) {
        return WriteStatistical(table, path, *rules, cancelled, progress);
    }
    if (FindFileFormat(format)->Kind == FormatKind::Columns) {
        WriteColumns(table, path, cancelled, progress);
        return {};
    }
    const bool isWorkbook = FindFileFormat(format)->Kind == FormatKind::Workbook;
    return isWorkbook ? WriteSheet(table, path, cancelled, progress) : WriteDelimited(table, path, cancelled, progress);
}

}  // namespace quillara
