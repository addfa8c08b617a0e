#include "workbench/formats/StatisticalFile.h"

#include <gtest/gtest.h>
#include <readstat.h>

#include <cmath>
#include <limits>
#include <memory>

#include "tests/workbench/formats/FormatsTesting.h"
#include "workbench/data/Errors.h"

namespace quillara {
namespace {

constexpr double missing = std::numeric_limits<double>::quiet_NaN();

ssize_t Append(const void* data, std::size_t length, void* context) {
    static_cast<std::string*>(context)->append(static_cast<const char*>(data), length);
    return static_cast<ssize_t>(length);
}

/// Makes the bytes of a small statistical file.
class Maker {
  public:
    explicit Maker(std::string extension) : Extension(std::move(extension)) {
        readstat_set_data_writer(Writer.get(), Append);
        readstat_writer_set_file_label(Writer.get(), "A label of the file");
        if (Extension == "zsav") {
            readstat_writer_set_compression(Writer.get(), READSTAT_COMPRESS_BINARY);
        }
    }

    readstat_variable_t* Number(const char* name, std::vector<double> values, const char* format = "") {
        Numbers.push_back(std::move(values));
        Texts.emplace_back();
        return Add(name, READSTAT_TYPE_DOUBLE, 8, format);
    }
    readstat_variable_t* Text(const char* name, std::vector<const char*> values, std::size_t width = 8) {
        Numbers.emplace_back();
        Texts.push_back(std::move(values));
        return Add(name, READSTAT_TYPE_STRING, width, "");
    }
    readstat_label_set_t* Labels(readstat_variable_t* variable, readstat_type_t type) {
        readstat_label_set_t* set = readstat_add_label_set(Writer.get(), type, variable->name);
        readstat_variable_set_label_set(variable, set);
        return set;
    }
    readstat_writer_t* Raw() { return Writer.get(); }

    std::string Bytes() {
        std::string bytes;
        const std::size_t cases = std::max(Numbers[0].size(), Texts[0].size());
        EXPECT_EQ(Begin(&bytes, static_cast<long>(cases)), READSTAT_OK);
        for (std::size_t row = 0; row < cases; ++row) {
            readstat_begin_row(Writer.get());
            for (std::size_t i = 0; i < Numbers.size(); ++i) {
                Insert(readstat_get_variable(Writer.get(), static_cast<int>(i)), i, row);
            }
            EXPECT_EQ(readstat_end_row(Writer.get()), READSTAT_OK);
        }
        EXPECT_EQ(readstat_end_writing(Writer.get()), READSTAT_OK);
        return bytes;
    }
    std::string Shown() {
        const TemporaryFolder folder;
        return ShowFile(folder.Put("t." + Extension, Bytes()));
    }
    DataTable Table() {
        const TemporaryFolder folder;
        return ReadDataFile(folder.Put("t." + Extension, Bytes()));
    }

  private:
    readstat_variable_t* Add(const char* name, readstat_type_t type, std::size_t width, const char* format) {
        readstat_variable_t* variable = readstat_add_variable(Writer.get(), name, type, width);
        readstat_variable_set_format(variable, format);
        return variable;
    }
    void Insert(readstat_variable_t* variable, std::size_t index, std::size_t row) {
        if (!Texts[index].empty()) {
            readstat_insert_string_value(Writer.get(), variable, Texts[index][row]);
        } else if (std::isnan(Numbers[index][row])) {
            readstat_insert_missing_value(Writer.get(), variable);
        } else {
            readstat_insert_double_value(Writer.get(), variable, Numbers[index][row]);
        }
    }
    readstat_error_t Begin(std::string* bytes, long cases) {
        const auto begin = Extension == "dta"        ? readstat_begin_writing_dta
                           : Extension == "por"      ? readstat_begin_writing_por
                           : Extension == "sas7bdat" ? readstat_begin_writing_sas7bdat
                           : Extension == "xpt"      ? readstat_begin_writing_xport
                                                     : readstat_begin_writing_sav;
        return begin(Writer.get(), bytes, cases);
    }

    std::string Extension;
    std::unique_ptr<readstat_writer_t, decltype(&readstat_writer_free)> Writer{readstat_writer_init(),
                                                                               readstat_writer_free};
    std::vector<std::vector<double>> Numbers;
    std::vector<std::vector<const char*>> Texts;
};

TEST(StatisticalFile, EncodingOverridesThatOfTheFile) {
    const TemporaryFolder folder;
    Maker maker("sav");
    maker.Text("text", {"\xE9t\xE9"});
    const std::string path = folder.Put("t.sav", maker.Bytes());
    EXPECT_NE(ShowFile(path).find("; another encoding may help."), std::string::npos);
    EXPECT_EQ(ShowFile(path, {.Encoding = "cp1252"}), "text T \xC3\xA9t\xC3\xA9");
    EXPECT_THROW((void)ReadDataFile(path, {.Encoding = "klingon"}), UsageError);
}

class EveryFormat : public testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(StatisticalFile, EveryFormat, testing::Values("sav", "zsav", "por", "dta", "sas7bdat", "xpt"));

TEST_P(EveryFormat, ValuesTextsAndNamesComeThrough) {
    Maker maker(GetParam());
    readstat_variable_set_label(maker.Number("NUM", {1.5, missing, -3, 0}), "A label longer than eight");
    maker.Text("TXT", {"b  ", "", "a", "b"});
    const DataTable table = maker.Table();
    EXPECT_EQ(Show(table), "NUM N 1.5 - -3 0; TXT T b - a b");
    EXPECT_EQ(table.Variables[0].LongName, "A label longer than eight");
    EXPECT_EQ(table.FileName, std::string("t.") + GetParam());
    EXPECT_EQ(table.Cases, 4);
    EXPECT_FALSE(table.Weight);
}

TEST_P(EveryFormat, MayHoldNoCase) {
    Maker maker(GetParam());
    maker.Number("NUM", {});
    EXPECT_EQ(maker.Shown(), "NUM N");
}

TEST_P(EveryFormat, DatesAndTimesBecomeOurs) {
    const std::string extension = GetParam();
    const bool isDta = extension == "dta";
    const bool isSas = extension == "sas7bdat" || extension == "xpt";
    const double epoch = isDta || isSas ? -3653 : -141428;
    const double perDay = isDta ? 86400000 : 86400;
    const double dateUnit = isDta || isSas ? 1 : 86400;
    const double day = 19782 - epoch;  // 2024-02-29
    Maker maker(extension);
    maker.Number("D", {day * dateUnit, missing}, isDta ? "%td" : isSas ? "YYMMDD10" : "SDATE10");
    maker.Number("WHOLE", {day * perDay, missing}, isDta ? "%tc" : "DATETIME20");
    maker.Number("PART", {perDay, perDay / 2}, isDta ? "%tc" : "DATETIME20");
    maker.Number("T", {perDay / 2, 0}, isDta ? "%tcHH:MM:SS" : "TIME8");
    maker.Number("N", {day, 1}, isDta ? "%9.2f" : "F8.2");
    std::string part = isDta ? "86400000 43200000" : "86400 43200";
    EXPECT_EQ(maker.Shown(), "D D 2024-02-29 -; WHOLE D 2024-02-29 -; PART N " + part +
                                 "; T C 12:00:00 00:00:00; N N " + std::to_string(static_cast<int>(day)) + " 1");
}

TEST_P(EveryFormat, CutShortOrDamagedIsOneError) {
    Maker maker(GetParam());
    std::vector<double> numbers(300, 1.25);
    maker.Number("NUM", numbers);
    maker.Text("TXT", std::vector<const char*>(300, "some"));
    const std::string bytes = maker.Bytes();
    const TemporaryFolder folder;
    const std::string name = std::string("t.") + GetParam();
    const std::string whole = ShowFile(folder.Put(name, bytes));
    for (std::size_t length = 0; length < bytes.size(); length += 1 + bytes.size() / 150) {
        // A transport file has no count of its cases: cut between two records it is a shorter file.
        if (std::string(GetParam()) == "xpt" && length % 80 == 0 && length > 0) {
            continue;
        }
        // What fills a portable file up behind its data may be cut.
        const std::string shown = ShowFile(folder.Put(name, bytes.substr(0, length)));
        EXPECT_TRUE(shown.starts_with("\"@\" can't be read") || shown == whole) << length << ": " << shown;
    }
    unsigned random = 1;
    for (int i = 0; i < 300; ++i) {
        std::string damaged = bytes;
        for (int flips = 0; flips < 3; ++flips) {
            random = random * 1664525 + 1013904223;
            damaged[(random >> 8) % (i % 2 == 0 ? damaged.size() : std::min<std::size_t>(damaged.size(), 600))] ^=
                static_cast<char>(1 << (random >> 29));
        }
        (void)ShowFile(folder.Put(name, damaged));  // reads or throws, and does nothing worse
    }
}

TEST(StatisticalFile, UserMissingValuesGoWithTheirLabels) {
    Maker maker("sav");
    readstat_variable_t* number = maker.Number("number", {1, 2, 8, 9, -5, -7, missing});
    readstat_label_set_t* labels = maker.Labels(number, READSTAT_TYPE_DOUBLE);
    readstat_label_double_value(labels, 1, "One, with a long label");
    readstat_label_double_value(labels, 9, "Refused");
    readstat_label_double_value(labels, -9999, "Never");
    readstat_variable_add_missing_double_value(number, 9);
    readstat_variable_add_missing_double_range(number, -std::numeric_limits<double>::infinity(), -5);
    readstat_variable_t* text = maker.Text("text", {"M", "F", "X", "", "M", "F", "Z"});
    readstat_label_set_t* textLabels = maker.Labels(text, READSTAT_TYPE_STRING);
    readstat_label_string_value(textLabels, "M", "Male");
    readstat_label_string_value(textLabels, "F", "Female");
    readstat_label_string_value(textLabels, "X", "Unknown");
    readstat_variable_add_missing_string_value(text, "X");
    const DataTable table = maker.Table();
    EXPECT_EQ(Show(table),
              "number N 1=One, with a long label 2 8 - - - -; text T M=Male F=Female - - M=Male F=Female Z");
    EXPECT_EQ(table.Variables[0].Labels.size(), 1U);
    EXPECT_EQ(table.Header, "A label of the file");
}

TEST(StatisticalFile, LongTextsHaveMissingValuesAndLabelsToo) {
    Maker maker("sav");
    readstat_variable_t* text = maker.Text("text", {"Not said", "A text of many words", ""}, 40);
    readstat_label_string_value(maker.Labels(text, READSTAT_TYPE_STRING), "A text of many words", "Words");
    readstat_variable_add_missing_string_value(text, "Not said");
    EXPECT_EQ(maker.Shown(), "text T - A text of many words=Words -");
}

TEST(StatisticalFile, TaggedMissingValuesAreMissing) {
    Maker maker("dta");
    readstat_variable_t* number = maker.Number("number", {1, missing});
    readstat_label_set_t* labels = maker.Labels(number, READSTAT_TYPE_INT32);
    readstat_label_int32_value(labels, 1, "one");
    readstat_label_tagged_value(labels, 'a', "Refused");
    const DataTable table = maker.Table();
    EXPECT_EQ(Show(table), "number N 1=one -");
    EXPECT_EQ(table.Variables[0].Labels.size(), 1U);
}

TEST(StatisticalFile, DeclaredWeightIsFound) {
    Maker maker("sav");
    maker.Text("a_name_longer_than_8", {"x", "y"}, 600);
    readstat_writer_set_fweight_variable(maker.Raw(), maker.Number("weight", {0.5, 1.5}));
    const DataTable table = maker.Table();
    EXPECT_EQ(table.Weight, 1U);
    EXPECT_EQ(table.Variables[0].Name, "a_name_longer_than_8");
}

TEST(StatisticalFile, RealData) {
    if (TestData().empty()) {
        GTEST_SKIP() << "QUILLARA_TEST_DATA names no folder of real data";
    }
    const DataTable adult = ReadDataFile(TestData() + "/adult.sav");
    const Variable& sex = adult.Variables[adult.IndexOf("sex")];
    ASSERT_EQ(adult.Weight, adult.IndexOf("fnlwgt"));
    std::map<std::string, double> weights;
    for (std::size_t i = 0; i < sex.Values.size(); ++i) {
        weights[*sex.LabelOf(sex.Values[i])] += adult.Variables[*adult.Weight].Values[i];
    }
    EXPECT_NEAR(weights["Female"], 10542.17, 0.005);
    EXPECT_NEAR(weights["Male"], 22018.84, 0.005);
    for (const Variable& variable : adult.Variables) {
        EXPECT_TRUE(variable.LabelOf(99) == nullptr || *variable.LabelOf(99) != "Not stated") << variable.Name;
    }
}

TEST(StatisticalFile, RealDataCutShort) {
    if (TestData().empty()) {
        GTEST_SKIP() << "QUILLARA_TEST_DATA names no folder of real data";
    }
    const std::string bytes = ContentOf(TestData() + "/adult.sav");
    const TemporaryFolder folder;
    for (std::size_t percent = 0; percent < 100; ++percent) {
        const std::string path = folder.Put("adult.sav", bytes.substr(0, bytes.size() * percent / 100));
        EXPECT_THROW((void)ReadDataFile(path), DataError) << percent;
    }
}

}  // namespace
}  // namespace quillara
