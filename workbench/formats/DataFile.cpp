#include "workbench/formats/DataFile.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>

#include "workbench/data/Errors.h"
#include "workbench/formats/DelimitedLosses.h"
#include "workbench/formats/DelimitedTable.h"
#include "workbench/formats/DelimitedWriter.h"
#include "workbench/formats/FileBytes.h"
#include "workbench/formats/FileFormats.h"
#include "workbench/formats/FileReplacement.h"
#include "workbench/formats/FileSignature.h"
#include "workbench/formats/ReadBack.h"
#include "workbench/formats/StatisticalFile.h"
#include "workbench/formats/StatisticalLayout.h"
#include "workbench/formats/StatisticalRules.h"
#include "workbench/formats/StatisticalWriter.h"

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

/// The extension of the format in which a file is to be read.
std::string FormatOf(const std::string& path) {
    std::string extension = ExtensionOf(path);
    const FileContent content = LookInto(path, extension);
    if (!content.ForeignKind.empty()) {
        RefuseForeign(path, content);
    }
    const bool isNamed = FindFileFormat(extension) != nullptr;
    if (!isNamed && !content.Extension.empty()) {
        return std::string(content.Extension);
    }
    // sav and zsav are one format to their reader.
    const bool areTwins = extension.ends_with("sav") && content.Extension.ends_with("sav");
    if (!content.Extension.empty() && content.Extension != extension && !areTwins) {
        const std::string renamed = std::filesystem::path(path).replace_extension(content.Extension).filename();
        throw DataError("\"" + path + "\" isn't what its name says: it holds a " + std::string(content.Extension) +
                        " file; rename it to \"" + renamed + "\".");
    }
    return extension;
}

/// The rules of the statistical format that is written under an extension; null for any other.
const StatisticalRules* FindRules(std::string_view extension) {
    const auto found = std::ranges::find(RulesOfFormats, extension, &StatisticalRules::Extension);
    return found == RulesOfFormats.end() ? nullptr : &*found;
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

void WriteStatistical(const DataTable& table, const std::string& path, const StatisticalRules& rules,
                      const std::function<bool()>& cancelled, const ProgressTaker& progress) {
    WorkMonitor monitor(progress, cancelled);
    const StatisticalLayout layout = LayOut(table, rules);
    const auto cases = static_cast<std::size_t>(table.Cases);
    monitor.Enter(0, ShareOfWriting, cases * layout.Columns.size());
    const auto check = [&](const std::string& temporary) {
        const DataTable readBack = ReadBackFor(path, [&] {
            return ReadStatisticalFile(temporary, rules.Extension,
                                       {.MaxMemory = MemoryLimit::Unlimited,
                                        .Progress = PartOf(progress, ShareOfWriting, ShareOfReading),
                                        .Cancelled = cancelled});
        });
        monitor.Enter(ShareOfReading, 1, cases * layout.Columns.size());
        ExpectedTable expected{.Table = table, .Variables = {}, .KeepsNegativeZero = rules.KeepsNegativeZero};
        for (std::size_t i = layout.HasCaseNames ? 1 : 0; i < layout.Columns.size(); ++i) {
            expected.Variables.push_back(layout.Columns[i].Content);
        }
        CheckReadBack(expected, readBack, monitor);
    };
    ReplaceFile(path, StatisticalFileBytes(layout, cases, rules, monitor), cancelled, check);
}

std::vector<std::string> WriteDelimited(const DataTable& table, const std::string& path,
                                        const std::function<bool()>& cancelled, const ProgressTaker& progress) {
    WorkMonitor monitor(progress, cancelled);
    const std::string text = TextOfTable(table, cancelled, PartOf(progress, 0, ShareOfWriting));
    const DataTable readBack = ReadBackFor(path, [&] {
        return TableOfDelimitedText(text, {.MaxMemory = MemoryLimit::Unlimited,
                                           .Progress = PartOf(progress, ShareOfWriting, ShareOfReading),
                                           .Cancelled = cancelled});
    });
    monitor.Enter(ShareOfReading, 1, readBack.Variables.size() * static_cast<std::size_t>(table.Cases));
    std::vector<std::string> losses = DelimitedLosses(table, readBack, path, monitor);
    ReplaceFile(path, text, cancelled, [&](const std::string& temporary) {
        if (ReadBytes(temporary, monitor, text.size() + 1) != text) {
            throw ReadBackDifference("\"" + path + "\"", "");
        }
    });
    return losses;
}

}  // namespace

DataTable ReadDataFile(const std::string& path, const ReadOptions& options) {
    const std::string format = FormatOf(path);
    return IsStatisticalFile(format) ? ReadStatisticalFile(path, format, options) : ReadDelimitedTable(path, options);
}

void CheckCanBeWritten(const std::string& path) {
    const FileFormat* format = FindFileFormat(ExtensionOf(path));
    if (format == nullptr || !format->IsWritten) {
        throw DataError("\"" + path + "\" can't be written: data files can be written as " + WrittenFormats() +
                        "; give it one of these extensions.");
    }
}

std::vector<std::string> WriteDataFile(const DataTable& table, const std::string& path,
                                       const std::function<bool()>& cancelled, const ProgressTaker& progress) {
    CheckCanBeWritten(path);
    if (table.Variables.empty()) {
        throw DataError("\"" + path + "\" can't be written: the table has no variables.");
    }
    if (const StatisticalRules* rules = FindRules(ExtensionOf(path))) {
        WriteStatistical(table, path, *rules, cancelled, progress);
        return {};
    }
    return WriteDelimited(table, path, cancelled, progress);
}

}  // namespace quillara
