#include <gtest/gtest.h>

#include <cmath>
#include <map>

#include "tests/Locations.h"
#include "tests/workbench/command/Program.h"

namespace {

using nlohmann::json;

// sex: Female 3, Male 2, 1 missing; city: Oslo 3, Rome 3; age 20 to 70, height with one case missing.
constexpr const char* People =
    "sex,age,city,height\n"
    "Female,20,Rome,1\n"
    "Male,30,Rome,2\n"
    "Female,40,Oslo,3\n"
    "Male,50,Oslo,4\n"
    ",60,Rome,5\n"
    "Female,70,Oslo,\n";

/// The documents of a drill in JSON.
json Documents(const TemporaryFolder& folder, const std::string& drill) {
    const Outcome outcome = Quillara(folder, "drill " + drill + " --format json");
    EXPECT_EQ(outcome.Status, 0) << drill << outcome.Errors;
    EXPECT_EQ(outcome.Errors, "") << drill;
    return json::parse(outcome.Out)["documents"];
}

struct ChartSession : testing::Test {
    ChartSession() { Folder.Put("people.csv", People); }
    const TemporaryFolder Folder;
};

std::string LabelAt(const json& axis, const json& at) {
    for (const json& label : axis["labels"]) {
        if (label["at"] == at) {
            return label["text"];
        }
    }
    return "?";
}

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

/// "9061.1@0 histogram: Female 3, Male 2"
std::string ChartInShort(const json& chart) {
    const std::string kind = chart["chart"];
    const std::map<std::string, std::vector<std::string>> members = {
        {"box", {"kind", "variable", "cases", "middle", "box", "whiskers"}},
        {"scatter", {"variable", "x", "y", "cases", "mean", "slope"}},
        {"hist3d", {"cases", "counts"}},
    };
    const auto found = members.find(kind);
    const std::string content = found != members.end() ? Members(chart, found->second)
                                : kind == "stacked"    ? Columns(chart)
                                                       : Categories(chart);
    return chart["command"].dump() + "." + chart["sequence"].dump() + "@" + chart["step"].dump() + " " + kind + ": " +
           content;
}

// clang-format off
constexpr std::pair<const char*, const char*> Sessions[] = {
    {"--categorical sex,city --show histograms", "9061.1@0 histogram: Female 3, Male 2, Missing 1 | 9061.2@0 histogram: Oslo 3, Rome 3"},
    {"--categorical sex --no-count-missing --show pies,histograms", "9119.1@0 pie: Female 3, Male 2 | 9061.1@0 histogram: Female 3, Male 2"},
    {"--categorical city,sex --down sex=Male --show pies --after each", "9119.1@1 pie: Oslo 1, Rome 1"},
    {"--categorical sex,city --show stacked", "9121.1@0 stacked: sex 100 83 50 0, city 100 50 0 0"},
    {"--categorical sex --down sex=Male --show histograms,pies,stacked", ""},
    {"--review-categorical sex --show review-stacked,review-pies,review-histograms",
     "9124.1@0 stacked: sex 100 83 50 0 | 9122.1@0 pie: Female 3, Male 2, Missing 1 | 9083.1@0 histogram: Female 3, Male 2, Missing 1"},
    {"--categorical sex --show review-stacked,review-pies,review-histograms,box,scatter", ""},
    {"--categorical sex --review-continuous age --down sex=Female --box-type sd,median --show scatter",
     "9084.1@1 box: 52 age 3 40 [30,55] [20,70] | 9084.2@1 box: 53 age 3 43.333333333333336 [18.167218549097505,68.49944811756916] [-5.992251643768888,92.65891831043555]"},
    {"--categorical sex --review-continuous age --down sex=Missing --show box", "9084.1@1 box: 54 age 0"},
    {"--review-continuous age --box --show descriptives --select 'age > 50'", "9084.1@0 box: 54 age 2 65 [60,70] [57.928932188134524,72.07106781186548]"},
    {"--review-continuous age,height --show scatter", "9100.1@0 scatter: age 6 45, height 5 3, height age 5 10, age height 5 0.1"},
    {"--review-categorical sex,city --hist3d sex,city:city --show hist3d", "9123.1@0 hist3d: 5 [[2,1],[1,1]] | 9123.2@0 hist3d: 6 [[3,0],[0,3]]"},
};
// clang-format on

TEST_F(ChartSession, Shows) {
    for (const auto& [options, charts] : Sessions) {
        std::string shown;
        for (const json& document : Documents(Folder, std::string("people.csv ") + options)) {
            shown += (shown.empty() ? "" : " | ") + ChartInShort(document);
        }
        EXPECT_EQ(shown, charts) << options;
    }
}

/// The documents of a step by "command.sequence".
std::map<std::string, json> ByPlace(const json& documents, const json& step) {
    std::map<std::string, json> places;
    for (const json& document : documents) {
        if (document["step"] == step) {
            places[document["command"].dump() + "." + document["sequence"].dump()] = document;
        }
    }
    return places;
}

/// The commands that show the same variables.
struct Twins {
    const char* Table;
    const char* Histogram;
    const char* Pie;
    const char* Stacked;
};
constexpr Twins BothSets[] = {{"9060", "9061", "9119", "9121"}, {"9082", "9083", "9122", "9124"}};

void ExpectCounts(const json& table, const json& chart, std::size_t slices) {
    const json& points = chart["series"][0]["points"];
    ASSERT_EQ(slices, table["rows"].size()) << table["title"];
    for (std::size_t row = 0; row < slices; ++row) {
        EXPECT_EQ(points[row][1], table["rows"][row]["cells"][0]) << chart["title"] << row;
    }
}

void ExpectLabels(const json& table, const json& histogram) {
    constexpr std::size_t cutWidth = 20;
    for (std::size_t row = 0; row < table["rows"].size(); ++row) {
        const std::string name = table["rows"][row]["name"];
        const std::string label = LabelAt(histogram["x"], row + 1);
        EXPECT_EQ(label, name.size() < cutWidth ? name : label) << histogram["title"];
    }
}

/// The layers of a column from below: the categories, then the missing data.
void ExpectShares(const json& table, const json& stacked, std::size_t column) {
    const std::size_t layers = table["rows"].size();
    for (std::size_t row = 0; row < layers; ++row) {
        const json& series = stacked["series"];
        const double upper = series[layers - row - 1]["points"][column][1];
        const double lower = series[layers - row]["points"][column][1];
        EXPECT_NEAR(upper - lower, table["rows"][row]["cells"][2].get<double>(), 1e-9) << table["title"] << row;
    }
}

/// Compares every chart of a drill with the frequency table of its variable; gives how many were compared.
int CompareCharts(const TemporaryFolder& folder, const std::string& drill) {
    int compared = 0;
    const json documents = Documents(folder, drill +
                                                 " --after each --show frequencies,histograms,pies,stacked,"
                                                 "review-frequencies,review-histograms,review-pies,review-stacked");
    for (const int step : {0, 1, 2, 3}) {
        const std::map<std::string, json> places = ByPlace(documents, step);
        for (const Twins& twins : BothSets) {
            std::size_t column = 0;
            for (std::string place = ".1"; places.contains(twins.Table + place);
                 place = "." + std::to_string(++column + 1)) {
                const json& table = places.at(twins.Table + place);
                const json& histogram = places.at(twins.Histogram + place);
                const json& pie = places.at(twins.Pie + place);
                ExpectCounts(table, histogram, histogram["series"][0]["points"].size());
                ExpectCounts(table, pie, pie["series"][0]["points"].size() - 1);
                ExpectLabels(table, histogram);
                ExpectShares(table, places.at(twins.Stacked + std::string(".1")), column);
                ++compared;
            }
        }
    }
    return compared;
}

TEST_F(ChartSession, EveryNumberIsThatOfTheFrequencyTable) {
    const std::string survey =
        testing_locations::Sample("survey.sav") + " --review-categorical commute,genre --review-continuous income ";
    EXPECT_EQ(CompareCharts(Folder, survey + "--categorical sex,region,satisfaction --continuous age "
                                             "--down satisfaction=#2 --down age=#3 --up satisfaction"),
              3 * 3 + 2 + 2 * 3);
    EXPECT_EQ(CompareCharts(Folder, survey + "--categorical commute --continuous hours --weight weight "
                                             "--weighted-moments --categorize hours=exact:7 --down commute=Missing"),
              1 + 3);
}

TEST_F(RealData, EveryNumberIsThatOfTheFrequencyTable) {
    const TemporaryFolder folder;
    const std::string weighted = " --weight fnlwgt --weighted-moments --review-continuous age --down sex=Female";
    EXPECT_EQ(CompareCharts(folder, File("adult.csv") + " --categorical workclass,sex,race --continuous age "
                                                        "--review-categorical occupation --down workclass=Missing"),
              3 + 1);
    EXPECT_EQ(CompareCharts(folder, File("adult.sav") + " --categorical sex,education --continuous age" + weighted), 3);
}

/// Whether the chart library was built beside the core; tests that paint are skipped without it.
bool CanPaint() {
    const std::filesystem::path library = testing_locations::Library("libquillaracharts.so");
    return std::filesystem::exists(library);
}

TEST_F(ChartSession, PlotsAreFilesOfTheirOwn) {
    if (!CanPaint()) {
        GTEST_SKIP() << "the chart library isn't built";
    }
    const std::string other = Folder.Put("notes", "kept");
    const std::string drill =
        "drill people.csv --categorical sex --continuous age --review-continuous age,height "
        "--show summary,histograms,stacked,scatter --hist3d age:height --box-type median --down sex=Male ";
    const std::pair<const char*, const char*> formats[] = {{"svg", "<?xml"}, {"png", "\x89PNG"}, {"pdf", "%PDF-"}};
    for (const auto& [format, front] : formats) {
        const std::string end = std::string(".") + format;
        const Outcome outcome = Quillara(Folder, drill + "--plots deep/er/" + format + " --plot-format " + format);
        ASSERT_EQ(outcome.Status, 0) << outcome.Errors;
        EXPECT_EQ(outcome.Errors, "");
        for (const char* name :
             {"histogram-01-age", "stacked-01", "scatter-01", "hist3d-01-age-height", "box-01-median"}) {
            const std::string path = Folder.Path(std::string("deep/er/") + format + "/step1-" + name + end);
            EXPECT_TRUE(ContentOf(path).starts_with(front)) << path;
        }
    }
    EXPECT_EQ(Quillara(Folder, drill + "--plots . --size 640x480").Status, 0);
    EXPECT_NE(ContentOf(Folder.Path("step1-scatter-01.svg")).find("0 0 640 480"), std::string::npos);
    EXPECT_EQ(ContentOf(other), "kept");
    EXPECT_EQ(Folder.Files(), 8U);
    EXPECT_EQ(Quillara(Folder, drill + "--plots new --up age").Status, 1);
    EXPECT_EQ(Folder.Files(), 8U);
}

TEST_F(ChartSession, TheReportHasPicturesBesideTables) {
    if (!CanPaint()) {
        GTEST_SKIP() << "the chart library isn't built";
    }
    const Outcome outcome = Quillara(Folder,
                                     "drill people.csv --categorical sex,city --format html --show "
                                     "frequencies,pies");
    const std::size_t place = outcome.Out.find("<div class=\"beside\">\n<div class=\"result\" id=\"table-2\"");
    ASSERT_NE(place, std::string::npos);
    EXPECT_EQ(outcome.Out.substr(outcome.Out.find("<figure", place)).find("<figure class=\"chart\" id=\"chart-4\">"),
              0U);
    EXPECT_EQ(outcome.Out.find("http"), std::string::npos);
}

TEST_F(ChartSession, WithoutTheLibraryOnlyPaintingIsRefused) {
    // The library is looked for beside the core.
    const std::string copies = "for part in libquillara.so libqladrilldown.so; do cp " +
                               testing_locations::Library("$part") + " " + Folder.Path("") + "; done";
    ASSERT_EQ(std::system(copies.c_str()), 0);
    const std::string before = "LD_LIBRARY_PATH=" + Folder.Path("");
    const std::string drill = "drill people.csv --categorical sex --show histograms ";
    EXPECT_EQ(Quillara(Folder, drill, before).Status, 0);
    const Outcome outcome = Quillara(Folder, drill + "--plots new --output results", before);
    EXPECT_EQ(outcome.Status, 1);
    EXPECT_NE(outcome.Errors.find("Charts can't be painted here"), std::string::npos) << outcome.Errors;
    EXPECT_EQ(Folder.Files(), 3U);
}

}  // namespace
