#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>

#include "tests/Locations.h"
#include "tests/workbench/command/DocumentsInShort.h"
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
    const Outcome outcome = Quillara(folder, "drill " + drill + " --quiet --format json");
    EXPECT_EQ(outcome.Status, 0) << drill << outcome.Errors;
    EXPECT_EQ(outcome.Errors, "") << drill;
    return json::parse(outcome.Out)["documents"];
}

struct ChartSession : testing::Test {
    ChartSession() { Folder.Put("people.csv", People); }
    const TemporaryFolder Folder;
};

/// The commands that show the same variables.
struct Twins {
    int Table;
    int Histogram;
    int Pie;
    int Stacked;
};
constexpr Twins BothSets[] = {{9060, 9061, 9119, 9121}, {9082, 9083, 9122, 9124}};

/// "Female 3, Male 2, Missing 1" of a table, a histogram or a pie.
std::string Counts(const json& document) {
    const std::string text = InShort(document);
    return text.substr(text.find(": "));
}

/// Each layer of a column ends at the cumulative percentage of its category.
void ExpectShares(const json& table, const json& stacked, std::size_t column) {
    const std::size_t layers = table["rows"].size();
    for (std::size_t row = 0; row < layers; ++row) {
        const json& upper = stacked["series"][layers - row - 1]["points"][column][1];
        EXPECT_NEAR(upper.get<double>(), table["rows"][row]["cells"][3].get<double>(), 1e-9) << table["title"] << row;
    }
}

/// Compares every chart of a drill with the frequency table of its variable; gives how many were compared.
int CompareCharts(const TemporaryFolder& folder, const std::string& drill) {
    const json documents = Documents(folder, drill +
                                                 " --after each --show frequencies,histograms,pies,stacked,"
                                                 "review-frequencies,review-histograms,review-pies,review-stacked");
    std::map<std::array<int, 3>, json> charts;  // by step, command and sequence
    for (const json& document : documents) {
        charts[{document["step"], document["command"], document["sequence"]}] = document;
    }
    int compared = 0;
    for (const json& table : documents) {
        const auto* const twins = std::ranges::find(BothSets, table["command"].get<int>(), &Twins::Table);
        if (twins != std::end(BothSets)) {
            const int step = table["step"];
            const int sequence = table["sequence"];
            EXPECT_EQ(Counts(charts.at({step, twins->Histogram, sequence})), Counts(table));
            EXPECT_EQ(Counts(charts.at({step, twins->Pie, sequence})), Counts(table));
            ExpectShares(table, charts.at({step, twins->Stacked, 1}), static_cast<std::size_t>(sequence) - 1);
            ++compared;
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
        EXPECT_EQ(outcome.Errors, "The step \"sex = Male\" leaves out 1 case without a value of \"sex\".\n");
        for (const char* name :
             {"histogram-01-age", "stacked-01", "scatter-01", "hist3d-01-height-by-age", "box-01-median"}) {
            const std::string path = Folder.Path(std::string("deep/er/") + format + "/step1-" + name + end);
            EXPECT_TRUE(ContentOf(path).starts_with(front)) << path;
        }
    }
    EXPECT_EQ(Quillara(Folder, drill + "--plots . --size 640x480").Status, 0);
    EXPECT_NE(ContentOf(Folder.Path("step1-scatter-01.svg")).find("0 0 640 480"), std::string::npos);
    EXPECT_EQ(ContentOf(other), "kept");
    EXPECT_EQ(Folder.Files(), 8U);
    Folder.Put("wide.csv", "Größe (cm)/変数変数変数変数\n1\n2\n");
    EXPECT_EQ(Quillara(Folder, "drill wide.csv --show pies --plots wide").Status, 0);
    EXPECT_NE(ContentOf(Folder.Path("wide/step0-pie-01-größe-cm-変数変数変数変数.svg")), "");
    EXPECT_EQ(Quillara(Folder, drill + "--plots new --up age").Status, 1);
    EXPECT_EQ(Folder.Files(), 10U);
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
    EXPECT_EQ(outcome.Out.find("://"), std::string::npos);
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
