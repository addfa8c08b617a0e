#include "workbench/scripting/FolderFiles.h"

#include <algorithm>
#include <filesystem>

#include "workbench/data/Errors.h"
#include "workbench/data/LetterCase.h"
#include "workbench/data/QuotedText.h"
#include "workbench/hosting/LongTexts.h"

namespace quillara {
namespace {

void MakeFolder(const std::string& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    std::error_code ignored;
    if (!std::filesystem::is_directory(folder, ignored)) {
        const std::string reason = error ? error.message() : "a file has this name";
        throw DataError("The folder " + Quoted(folder) + " can't be made: " + reason + ".");
    }
}

}  // namespace

std::string PlainFileName(std::string_view text) {
    constexpr std::size_t longest = 40;
    constexpr unsigned char firstOfOtherScripts = 0x80;
    constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyz0123456789";
    std::string name;
    for (const char character : text) {
        const char small = SmallLetter(character);
        const bool isOfOtherScript = static_cast<unsigned char>(character) >= firstOfOtherScripts;
        if (isOfOtherScript || letters.find(small) != std::string_view::npos) {
            name += small;
        } else if (!name.empty() && name.back() != '-') {
            name += '-';
        }
    }
    name = WithoutBrokenTail(name.substr(0, longest));
    name.erase(name.find_last_not_of('-') + 1);
    return name;
}

std::string GroupEnding(const OutputCollection& outputs, int step) {
    constexpr std::size_t longest = 120;  // beside the other parts of a name that is to have room in any folder
    const std::size_t taken = std::min(static_cast<std::size_t>(step), outputs.Steps.size());
    std::string ending;
    for (const StepTaken& down : StepsInForce(outputs.Steps, taken)) {
        const std::string category = down.IsOfGroup ? PlainFileName(down.Category) : "";
        ending += category.empty() ? "" : '-' + category;
    }
    if (ending.size() > longest) {
        ending = WithoutBrokenTail(ending.substr(0, longest));
    }
    return ending;
}

std::string TwoDigits(int number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

void WriteFolder(const std::string& folder, const std::vector<FolderFile>& files, const FileWriter& write) {
    MakeFolder(folder);
    for (const FolderFile& file : files) {
        write((std::filesystem::path(folder) / file.Name).string(), file.Bytes);
    }
}

}  // namespace quillara
