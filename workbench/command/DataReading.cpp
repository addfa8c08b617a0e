#include "workbench/command/DataReading.h"

#include <filesystem>

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

}  // namespace

DataTable ReadDataWithProgress(const std::string& path, ReadOptions options) {
    ProgressBar progress;
    if (IsRegularFile(path) && ProgressBar::IsWanted()) {
        progress.Start("Reading data ", ProgressUnits);
        options.Progress = [&progress](double share) {
            progress.Advance(static_cast<std::int32_t>(share * ProgressUnits));
        };
    }
    return ReadDataFile(path, options);
}

void SaveDataFile(const DataTable& table, const std::string& path) {
    const FileWriting writing(path);
    for (const std::string& loss : WriteDataFile(table, path, IsInterrupted)) {
        WriteMessage(loss);
    }
}

void CheckOutputIsAnother(const std::string& option, const std::string& output, const std::string& role,
                          const std::string& input) {
    if (IsRegularFile(input) && NameOneFile(output, input)) {
        throw UsageError(option + " names the " + role + " file " + Quoted(output) + " itself; choose another file.");
    }
}

}  // namespace quillara
