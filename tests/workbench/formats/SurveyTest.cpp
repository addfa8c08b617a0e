#include <gtest/gtest.h>

#include <algorithm>

#include "tests/workbench/formats/FormatsTesting.h"
#include "workbench/formats/DelimitedText.h"

namespace quillara {
namespace {

TEST(Survey, BothFilesHoldTheSameCases) {
    const TemporaryFolder folder;
    const std::string samples = QUILLARA_SAMPLES;
    const DataTable sav = ReadDataFile(samples + "/survey.sav");
    ASSERT_EQ(sav.Cases, 2000);
    WriteDataFile(sav, folder.Path("survey.csv"));
    EXPECT_EQ(ContentOf(folder.Path("survey.csv")), ContentOf(samples + "/survey.csv"));
    EXPECT_NE(sav.Header.find("our own generator"), std::string::npos);

    ASSERT_EQ(sav.Weight, sav.IndexOf("weight"));
    double sum = 0;
    for (const double weight : sav.Variables[*sav.Weight].Values) {
        sum += weight;
    }
    EXPECT_NEAR(sum, 2000, 0.5);
}

TEST(Survey, DictionaryNamesWhatTheDelimitedFileHolds) {
    const std::string samples = QUILLARA_SAMPLES;
    const DataTable survey = ReadDataFile(samples + "/survey.csv");
    const DataTable sav = ReadDataFile(samples + "/survey.sav");
    const auto records = ReadDelimitedRecords(samples + "/survey-dictionary.csv");
    for (std::size_t i = 1; i < records.size(); ++i) {
        const std::vector<std::string>& fields = records[i].Fields;
        const Variable& variable = survey.Variables[survey.IndexOf(fields[0])];
        if (fields[1].empty()) {
            EXPECT_EQ(fields[2], sav.Variables[sav.IndexOf(fields[0])].LongName);
        } else {
            EXPECT_EQ(std::count(variable.Texts.begin(), variable.Texts.end(), fields[1]), 1) << records[i].Line;
        }
    }
}

}  // namespace
}  // namespace quillara
