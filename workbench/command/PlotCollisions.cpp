#include "workbench/command/PlotCollisions.h"

#include <algorithm>
#include <filesystem>
#include <string_view>

#include "workbench/command/ResultList.h"
#include "workbench/data/Errors.h"
#include "workbench/data/QuotedText.h"
#include "workbench/formats/FileReplacement.h"

namespace quillara {
namespace {

using Path = std::filesystem::path;

bool SkipDigits(std::string_view& text) {
    const std::size_t end = std::min(text.find_first_not_of("0123456789"), text.size());
    text.remove_prefix(end);
    return end > 0;
}

bool Skip(std::string_view& text, std::string_view front) {
    const bool isThere = text.starts_with(front);
    text.remove_prefix(isThere ? front.size() : 0);
    return isThere;
}

/// Whether a chart of these could get this name: step1-histogram-02-age.svg.
bool CouldBePlot(std::string_view name, const DrillOptions& options) {
    if (!name.ends_with("." + std::string(FileEndOf(options.Charts.Format))) || !Skip(name, "step") ||
        !SkipDigits(name) || !Skip(name, "-")) {
        return false;
    }
    if (std::string_view rest = name; Skip(rest, "mosaic-") && SkipDigits(rest)) {
        return !options.Groups.Crosses.empty();
    }
    if (std::string_view rest = name; Skip(rest, "box-by-group-") && SkipDigits(rest)) {
        return !options.Groups.Boxes.empty();
    }
    return std::ranges::any_of(options.Results, [name](int button) {
        std::string_view rest = name;
        return Skip(rest, ChartFileName(button)) && Skip(rest, "-") && SkipDigits(rest);
    });
}

/// The file at the end of a chain of links, there or not.
Path WithoutLinks(Path path) {
    constexpr int longestChain = 40;  // as the system follows
    std::error_code error;
    for (int link = 0; link < longestChain && std::filesystem::is_symlink(path, error); ++link) {
        path = path.parent_path() / std::filesystem::read_symlink(path, error);
    }
    return path;
}

/// Whether a chart of the folder could get the name of a file, or has been linked to it, or they have one name.
bool CouldBeHit(const std::string& file, const DrillOptions& options) {
    std::error_code error;
    const Path folder = std::filesystem::weakly_canonical(std::filesystem::absolute(*options.Charts.Folder), error);
    const Path target = std::filesystem::absolute(WithoutLinks(file));
    const bool areOne = NameOneFile(file, folder) && !std::filesystem::is_regular_file(folder, error);
    const bool isInside = NameOneFile(target.parent_path(), folder);
    if (areOne || (isInside && CouldBePlot(target.filename().string(), options))) {
        return true;
    }
    const std::filesystem::directory_iterator entries(folder, error);
    return std::any_of(begin(entries), end(entries), [&](const auto& entry) {
        return CouldBePlot(entry.path().filename().string(), options) && NameOneFile(entry.path(), file);
    });
}

}  // namespace

void CheckPlotsHitNoOther(const DrillOptions& options) {
    struct Other {
        const char* Role;
        const std::string* File;
    };
    const auto at = [](const std::optional<std::string>& file) { return file ? &*file : nullptr; };
    const Other others[] = {{"the data file", &options.File},
                            {"the dictionary file", at(options.DictionaryFile)},
                            {"the file of --output", at(options.OutputFile)},
                            {"the file of --record", at(options.RecordFile)},
                            {"the file of --save", at(options.SaveFile)}};
    for (const auto& [role, file] : others) {
        if (options.Charts.Folder && file != nullptr && CouldBeHit(*file, options)) {
            throw UsageError("--plots: a chart in " + Quoted(*options.Charts.Folder) + " could overwrite " + role +
                             " " + Quoted(*file) + "; choose another folder.");
        }
    }
}

}  // namespace quillara
