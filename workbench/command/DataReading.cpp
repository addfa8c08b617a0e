#include "workbench/command/DataReading.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <vector>

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

DataTable ReadDataWithProgress(const std::string& path, ReadOptions options) {
    std::vector<std::string> noticed;
    options.Noticed = [&noticed](const std::string& line) { noticed.push_back(line); };
    DataTable table = ReadWithBar(path, options);
    std::ranges::for_each(noticed, WriteMessage);
    return table;
}

void SaveDataFile(const DataTable& table, const std::string& path) {
    const FileWriting writing(path);
    std::vector<std::string> losses;
    {
        ProgressBar progress;
        losses = WriteDataFile(table, path, IsInterrupted, SharesFor(progress, "Writing data "));
    }
    std::ranges::for_each(losses, WriteMessage);
}

void CheckOutputIsAnother(const std::string& option, const std::string& output, const std::string& role,
                          const std::string& input) {
    if (IsRegularFile(input) && NameOneFile(output, input)) {
        throw UsageError(option + " names the " + role + " file " + Quoted(output) + " itself; choose another file.");
    }
}

}  // namespace quillara
