#include "workbench/command/DataReading.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <utility>

#include "workbench/command/Interruption.h"
#include "workbench/command/ProgressBar.h"
#include "workbench/command/StandardStreams.h"
#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/formats/DataFile.h"
#include "workbench/formats/FileReplacement.h"

namespace quillara {
namespace {

constexpr int ProgressUnits = 1000;

bool IsRegularFile(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error);
}

/// Starts a bar, and gives what moves it.
ProgressTaker SharesFor(ProgressBar& bar, std::string_view text) {
    bar.Start(text, ProgressUnits);
    return [&bar](double share) { bar.Advance(static_cast<std::int32_t>(share * ProgressUnits)); };
}

DataTable ReadWithBar(const std::string& path, ReadOptions options) {
    ProgressBar progress;
    options.Progress = SharesFor(progress, "Reading data ");
    options.Received = [&progress](std::size_t bytes) { progress.AdvanceTo(std::to_string(bytes >> 20U) + " MiB"); };
    return ReadDataFile(path, options);
}

}  // namespace

DataTable ReadDataWithProgress(const std::string& path, ReadOptions options, std::vector<Remark>& noticed) {
    options.Noticed = [&noticed](const Remark& remark) { noticed.push_back(remark); };
    return ReadWithBar(path, std::move(options));
}

void SaveDataFile(const DataTable& table, const std::string& path, const std::optional<std::string>& format) {
    const FileWriting writing(path);
    std::vector<std::string> losses;
    {
        ProgressBar progress;
        const ProgressTaker shares = SharesFor(progress, "Writing data ");
        losses = path == StandardOutputPath && format ? WriteDataFileAs(*format, table, path, IsInterrupted, shares)
                                                      : WriteDataFile(table, path, IsInterrupted, shares);
    }
    std::ranges::for_each(losses, WriteMessage);
}

void RequireNoTerminal(const std::string& option, const std::string& format) {
    if (format != "csv" && IsTerminal()) {
        throw UsageError(option + ": " + format + " isn't for a terminal; send it on with > or |, or name a file.");
    }
}

void CheckOutputIsAnother(const std::string& option, const std::string& output, const std::string& role,
                          const std::string& input) {
    if (IsRegularFile(input) && NameOneFile(output, input)) {
        throw UsageError(option + " names the " + role + " file " + Quoted(output) + " itself; choose another file.");
    }
}

}  // namespace quillara
