#include "tests/workbench/command/DocumentsInShort.h"

#include <cmath>
#include <map>
#include <vector>

namespace {

using nlohmann::json;

/// The bars of a histogram or the slices of a pie with their counts: "Female 3, Male 2".
std::string Categories(const json& chart) {
    std::string text;
    const json& series = chart["series"][0];
    for (std::size_t i = 0; i < series["points"].size(); ++i) {
        const json& point = series["points"][i];
        const bool isPie = chart["chart"] == "pie";
        if (!isPie || point[0] != 0) {
            text += (text.empty() ? "" : ", ") +
                    (isPie ? series["labels"][i].get<std::string>() : LabelAt(chart["x"], point[0])) + " " +
                    point[1].dump();
        }
    }
    return text;
}

/// The bounds of the layers of each column: "sex 100 50 0".
std::string Columns(const json& chart) {
    std::string text;
    for (std::size_t i = 0; i < chart["series"][0]["points"].size(); ++i) {
        text += (text.empty() ? "" : ", ") + LabelAt(chart["x"], i + 1);
        for (const json& series : chart["series"]) {
            text += " " + json(std::lround(series["points"][i][1].get<double>())).dump();
        }
    }
    return text;
}

/// Of each element the members with these names, as far as it has them: "age 6 45".
std::string Members(const json& chart, const std::vector<std::string>& names) {
    std::string text;
    for (const json& element : chart["series"]) {
        text += text.empty() ? "" : ",";
        for (const std::string& name : names) {
            const json member = element.value(name, json());
            if (!member.is_null()) {
                text += (text.empty() ? "" : " ") + (member.is_string() ? member.get<std::string>() : member.dump());
            }
        }
    }
    return text;
}

std::string ContentInShort(const json& chart) {
    const std::map<std::string, std::vector<std::string>> members = {
        {"box", {"kind", "variable", "cases", "middle", "box", "whiskers"}},
        {"scatter", {"variable", "x", "y", "cases", "mean", "slope"}},
        {"hist3d", {"cases", "counts"}},
    };
    const std::string kind = chart["chart"];
    const auto found = members.find(kind);
    return found != members.end() ? Members(chart, found->second)
           : kind == "stacked"    ? Columns(chart)
                                  : Categories(chart);
}

std::string RowsInShort(const json& table) {
    std::string text;
    for (const json& row : table["rows"]) {
        const json& cell = row["cells"][0];
        text += (text.empty() ? "" : ", ") + row["name"].get<std::string>() + " " +
                (cell.is_string() ? cell.get<std::string>() : cell.dump());
    }
    return text;
}

}  // namespace

std::string LabelAt(const nlohmann::json& axis, const nlohmann::json& at) {
    for (const nlohmann::json& label : axis["labels"]) {
        if (label["at"] == at) {
            return label["text"];
        }
    }
    return "?";
}

std::string InShort(const nlohmann::json& document) {
    const bool isChart = document["kind"] == "graph";
    const std::string title = document["title"][0];
    const std::string name = isChart ? document["chart"].get<std::string>() : title.substr(title.rfind(' ') + 1);
    return document["command"].dump() + "." + document["sequence"].dump() + "@" + document["step"].dump() + " " + name +
           ": " + (isChart ? ContentInShort(document) : RowsInShort(document));
}
