#pragma once

#include <sys/wait.h>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <string>

#include "tests/Locations.h"
#include "tests/workbench/Files.h"

/// What one run of the program left behind.
struct Outcome {
    int Status = -1;  ///< as a shell tells it: 128 and the signal for a run that a signal ended
    std::string Out;
    std::string Errors;
};

/// Runs the program in a folder and waits for its end. Arguments are written, and what stands before the program is
/// read, as a shell reads them.
inline Outcome Quillara(const TemporaryFolder& folder, const std::string& arguments, const std::string& before = "") {
    const TemporaryFolder results;
    const std::string out = results.Path("out");
    const std::string errors = results.Path("errors");
    const std::string line =
        "cd " + folder.Path("") + "; " + before + " " + testing_locations::Program() + " " + arguments;
    const int status = std::system(("(" + line + ") >" + out + " 2>" + errors).c_str());
    return {WEXITSTATUS(status), ContentOf(out), ContentOf(errors)};
}

/// A document in short: "9060.1@0 sex: Female 3, Male 2, Missing 1" - button, sequence, step, the last word of the
/// title, then each row with its first cell.
inline std::string InShort(const nlohmann::json& document) {
    const auto title = document["title"][0].get<std::string>();
    std::string text = document["command"].dump() + "." + document["sequence"].dump() + "@" + document["step"].dump() +
                       " " + title.substr(title.rfind(' ') + 1) + ":";
    for (const nlohmann::json& row : document["rows"]) {
        const nlohmann::json& cell = row["cells"][0];
        text += (text.back() == ':' ? " " : ", ") + row["name"].get<std::string>() + " " +
                (cell.is_string() ? cell.get<std::string>() : cell.dump());
    }
    return text;
}
