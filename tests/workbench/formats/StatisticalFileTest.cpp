#include "workbench/formats/StatisticalFile.h"

#include <gtest/gtest.h>
#include "tests/workbench/formats/FormatsTesting.h"
#include "tests/workbench/formats/StatisticalMaker.h"
#include "workbench/data/Errors.h"
#include "workbench/formats/ForeignTime.h"

namespace quillara {
namespace {

DataTable Read(StatisticalMaker& maker) {
    const TemporaryFolder folder;
    return ReadDataFile(folder.Put("t." + maker.Extension, maker.Bytes()));
}

class EveryFormat : public testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(StatisticalFile, EveryFormat, testing::Values("sav", "zsav", "por", "dta", "sas7bdat", "xpt"));

TEST_P(EveryFormat, ValuesTextsAndNamesComeThrough) {
    StatisticalMaker maker(GetParam());
    readstat_variable_set_label(maker.Number("NUM", {1.5, Missing, -3, 0}), "A label longer than eight");
    maker.Text("TXT", {"b  ", "", "a", "b"});
    const DataTable table = Read(maker);
    EXPECT_EQ(Show(table), "NUM N 1.5 - -3 0; TXT T b - a b");
    EXPECT_EQ(table.Variables[0].LongName, "A label longer than eight");
    EXPECT_EQ(table.FileName, std::string("t.") + GetParam());
    EXPECT_EQ(table.Cases, 4);
    EXPECT_FALSE(table.Weight);
    StatisticalMaker empty(GetParam());
    empty.Number("NUM", {});
    EXPECT_EQ(Show(Read(empty)), "NUM N");
}

TEST_P(EveryFormat, DatesAndTimesBecomeOurs) {
    const std::string extension = GetParam();
    const bool isDta = extension == "dta";
    const bool isSas = extension == "sas7bdat" || extension == "xpt";
    const double perDay = isDta ? 86400000 : 86400;
    const double day = 19782 - (isDta || isSas ? -3653 : -141428);  // 2024-02-29
    StatisticalMaker maker(extension);
    maker.Number("D", {isDta || isSas ? day : day * 86400, Missing}, isDta ? "%td" : isSas ? "YYMMDD10" : "SDATE10");
    maker.Number("WHOLE", {day * perDay, Missing}, isDta ? "%tc" : "DATETIME20");
    maker.Number("PART", {perDay, perDay / 2}, isDta ? "%tc" : "DATETIME20");
    maker.Number("T", {perDay / 2, 0}, isDta ? "%tcHH:MM:SS" : "TIME8");
    maker.Number("N", {1, 2}, isDta ? "%9.2f" : "F8.2");
    const std::string begin = isDta || isSas ? "1960-01-" : "1582-10-";
    EXPECT_EQ(Show(Read(maker)), "D D 2024-02-29 -; WHOLE D 2024-02-29 -; PART M " + begin +
                                     (isDta || isSas ? "02 00:00:00 " : "15 00:00:00 ") + begin +
                                     (isDta || isSas ? "01 12:00:00" : "14 12:00:00") +
                                     "; T C 12:00:00 00:00:00; N N 1 2");
}

TEST_P(EveryFormat, CutShortIsOneError) {
    StatisticalMaker maker(GetParam());
    maker.Number("NUM", std::vector<double>(300, 1.25));
    maker.Text("TXT", std::vector<const char*>(300, "some"));
    const std::string bytes = maker.Bytes();
    const TemporaryFolder folder;
    const auto shown = [&](const std::string& content) {
        return ShowFile(folder.Put(std::string("t.") + GetParam(), content));
    };
    for (std::size_t length = 0; length < bytes.size(); length += 1 + bytes.size() / 150) {
        // A transport file has no count of its cases: cut between two records it is a shorter file.
        if (std::string(GetParam()) == "xpt" && length % 80 == 0 && length > 0) {
            continue;
        }
        // What fills a portable file up behind its data may be cut.
        const std::string cut = shown(bytes.substr(0, length));
        EXPECT_TRUE(cut.starts_with("\"@\" can't be read") || cut == shown(bytes)) << length << ": " << cut;
    }
}

TEST(StatisticalFile, DeclaredMissingValuesLabelsAndWeightAreOurs) {
    StatisticalMaker maker("sav");
    readstat_variable_t* number = maker.Number("number", {1, 2, 8, 9, -5, -7, Missing});
    readstat_label_set_t* labels = maker.Labels(number, READSTAT_TYPE_DOUBLE);
    readstat_label_double_value(labels, 1, "One, with a long label");
    readstat_label_double_value(labels, 9, "Refused");
    readstat_variable_add_missing_double_value(number, 9);
    readstat_variable_add_missing_double_range(number, -Infinity, -5);
    readstat_variable_t* text = maker.Text("text", {"M", "F", "X", "", "M", "F", "Z"});
    readstat_label_set_t* textLabels = maker.Labels(text, READSTAT_TYPE_STRING);
    readstat_label_string_value(textLabels, "M", "Male");
    readstat_label_string_value(textLabels, "X", "Unknown");
    readstat_variable_add_missing_string_value(text, "X");
    readstat_variable_t* words = maker.Text("words", {"Not said", "A text of words", "", "", "", "", ""}, 40);
    readstat_label_string_value(maker.Labels(words, READSTAT_TYPE_STRING), "A text of words", "Words");
    readstat_variable_add_missing_string_value(words, "Not said");
    readstat_writer_set_fweight_variable(maker.Raw, maker.Number("a_name_longer_than_8", {1, 1, 1, 1, 1, 1, 1.5}));
    const DataTable table = Read(maker);
    EXPECT_EQ(Show(table),
              "number N 1=One, with a long label 2 8 - - - -; text T M=Male F - - M=Male F Z; "
              "words T - A text of words=Words - - - - -; a_name_longer_than_8 N 1 1 1 1 1 1 1.5");
    EXPECT_EQ(table.Weight, 3U);
    EXPECT_EQ(table.Variables[0].Labels.size(), 1U);
    EXPECT_EQ(table.Header, "A label of the file");
}

TEST(StatisticalFile, TaggedMissingValuesAreMissing) {
    StatisticalMaker maker("dta");
    readstat_label_set_t* labels = maker.Labels(maker.Number("number", {1, Missing}), READSTAT_TYPE_INT32);
    readstat_label_int32_value(labels, 1, "one");
    readstat_label_int32_value(labels, -9999, "the missing data code, and no label");
    readstat_label_tagged_value(labels, 'a', "Refused");
    const DataTable table = Read(maker);
    EXPECT_EQ(Show(table), "number N 1=one -");
    EXPECT_EQ(table.Variables[0].Labels.size(), 1U);
}

TEST(StatisticalFile, EncodingOverridesThatOfTheFile) {
    const TemporaryFolder folder;
    StatisticalMaker maker("sav");
    maker.Text("text", {"\xE9t\xE9"});
    const std::string path = folder.Put("t.sav", maker.Bytes());
    EXPECT_NE(ShowFile(path).find("; another encoding may help."), std::string::npos);
    EXPECT_EQ(ShowFile(path, {.Encoding = "cp1252"}), "text T \xC3\xA9t\xC3\xA9");
    EXPECT_THROW((void)ReadDataFile(path, {.Encoding = "klingon"}), UsageError);
}

TEST(StatisticalFile, NamesOfLabelSetsMayFillTheirFields) {
    for (const auto& [version, bytes] :
         {std::pair(108, 9UL), std::pair(114, 33UL), std::pair(117, 33UL), std::pair(118, 129UL)}) {
        StatisticalMaker maker("dta");
        readstat_writer_set_file_format_version(maker.Raw, static_cast<std::uint8_t>(version));
        for (const char* name : {"AAAA", "BBBB"}) {
            readstat_label_int32_value(maker.Labels(maker.Number(name, {1}), READSTAT_TYPE_INT32), 1, name);
        }
        std::string file = maker.Bytes();
        // Behind the names of the variables: those of their sets, and those before the labels.
        for (const char* name : {"AAAA", "BBBB"}) {
            std::size_t place = file.find(name) + 1;
            for (int i = 0; i < 2; ++i) {
                place = file.find(std::string(name) + std::string(bytes - 4, '\0'), place);
                ASSERT_NE(place, std::string::npos) << version;
                std::fill_n(file.begin() + static_cast<std::ptrdiff_t>(place), bytes, name[0]);
                place += bytes;
            }
        }
        const TemporaryFolder folder;
        EXPECT_EQ(ShowFile(folder.Put("t.dta", file)), "AAAA N 1=AAAA; BBBB N 1=BBBB") << version;
    }
}

TEST_F(RealData, StatisticalFilesCutShortAreRefused) {
    const std::string bytes = ContentOf(File("adult.sav"));
    const TemporaryFolder folder;
    for (std::size_t percent = 0; percent < 100; ++percent) {
        const std::string path = folder.Put("adult.sav", bytes.substr(0, bytes.size() * percent / 100));
        EXPECT_THROW((void)ReadDataFile(path), DataError) << percent;
    }
}

/// "D 2024-02-29", "C 12:00:00", or "-" when the value rules the conversion out.
std::string Converted(const char* extension, const char* format, double value) {
    const std::optional<ForeignTime> time = ForeignTime::Find(extension, format);
    const std::optional<double> ours = time.value().Convert(value);
    const bool isDate = time->Kind() == ValueKind::Date;
    return !ours ? "-" : isDate ? "D " + TextFromDays(*ours) : "C " + TextFromSeconds(*ours);
}

TEST(ForeignTime, ConvertsByTheFormatOfTheFile) {
    struct Case {
        const char* Extension;
        const char* Format;
        double Value;
        const char* Shown;
    };
    constexpr double sav1970 = 12219379200;  // seconds from 1582-10-14 to 1970-01-01
    // clang-format off
    constexpr Case cases[] = {
        {"sav", "DATE11", sav1970, "D 1970-01-01"},                 {"zsav", "EDATE10", sav1970 + 86399, "D 1970-01-01"},
        {"por", "adate8", 0, "D 1582-10-14"},                       {"sav", "MOYR6", sav1970 + 31 * 86400, "D 1970-02-01"},
        {"sav", "DATETIME22.3", sav1970 - 86400, "D 1969-12-31"},   {"sav", "DATETIME22.3", sav1970 + 0.5, "-"},
        {"sav", "DATE11", 1e15, "-"},                               {"sav", "DATE11", -1e300, "-"},
        {"sav", "TIME5", 86399, "C 23:59:59"},                      {"sav", "TIME8", 86400, "-"},
        {"sav", "TIME8", -1, "-"},                                  {"dta", "%td", -1, "D 1959-12-31"},
        {"dta", "%-tdDD/NN/CCYY", 0, "D 1960-01-01"},               {"dta", "%dD_m_Y", 366, "D 1961-01-01"},
        {"dta", "%tc", 86400000, "D 1960-01-02"},                   {"dta", "%tc", 1, "-"},
        {"dta", "%tcHH:MM:SS", 86400000 + 3661000, "C 01:01:01"},   {"dta", "%tcDD_HH:MM", 86400000, "D 1960-01-02"},
        {"dta", "%tm", -1, "D 1959-12-01"},                         {"dta", "%tq", 5, "D 1961-04-01"},
        {"dta", "%th", -1, "D 1959-07-01"},                         {"dta", "%tw", 53, "D 1961-01-08"},
        {"dta", "%tw", -1, "D 1959-12-24"},                         {"dta", "%tm", 1e18, "-"},
        {"sas7bdat", "DATE9.", 0, "D 1960-01-01"},                  {"xpt", "YYMMDD10", 21914, "D 2019-12-31"},
        {"sas7bdat", "E8601DA", -3652, "D 1950-01-01"},             {"sas7bdat", "DATETIME", 86401, "-"},
        {"sas7bdat", "DTDATE9", 86401, "D 1960-01-02"},             {"xpt", "TIME8.2", 61.5, "C 00:01:01"},
    };
    // clang-format on
    for (const Case& test : cases) {
        EXPECT_EQ(Converted(test.Extension, test.Format, test.Value), test.Shown) << test.Format << " " << test.Value;
    }
    const std::pair<const char*, const char*> noTimes[] = {
        {"sav", "F8.2"}, {"sav", "WKDAY3"}, {"sav", "MONTH3"}, {"sav", ""},       {"dta", "%tX"},
        {"dta", "%ty"},  {"dta", "%9.0g"},  {"dta", "%-10s"},  {"xpt", "BEST12"}, {"xpt", "SDATE10"},
    };
    for (const auto& [extension, format] : noTimes) {
        EXPECT_FALSE(ForeignTime::Find(extension, format)) << format;
    }
}

TEST(ForeignTime, DatesWithTimesComeBackAsFarAsTheFileTells) {
    struct Case {
        const char* Extension = "";
        const char* Format = "";
        const char* Shown = "";
        double Value = 0;
        bool IsExact = true;  ///< whether the file can hold what is shown
    };
    constexpr double sav1970 = 12219379200;
    constexpr double dta1970 = 315619200000;
    // clang-format off
    constexpr Case cases[] = {
        {"sav", "DATETIME20",   "1970-01-01 00:00:01",        sav1970 + 1},
        {"sav", "DATETIME23.3", "2024-02-29 23:59:59.123",    sav1970 + 1709251199.123},
        {"sav", "YMDHMS20",     "1600-02-29 12:00:00",        sav1970 - 11670998400 + 43200},
        {"sav", "DATETIME20",   "9999-12-31 23:59:59.999",    sav1970 + 253402300799.999},
        {"sav", "DATETIME23.3", "2024-02-29 23:59:59.123456", sav1970 + 1709251199.123456, false},
        {"por", "DATETIME20",   "1582-10-14 00:00:01",        1},
        {"dta", "%tc",          "1969-12-31 23:59:59.5",      dta1970 - 500},
        {"dta", "%tc",          "2024-02-29 23:59:59.123456", dta1970 + 1709251199123.456},
        {"dta", "%tC",          "1972-06-30 23:59:59",        dta1970 + 78796799000},
        {"dta", "%tC",          "1972-07-01 00:00:00",        dta1970 + 78796801000},
        {"dta", "%tC",          "2016-12-31 23:59:59",        dta1970 + 1483228825000},
        {"dta", "%tC",          "2017-01-01 00:00:00.25",     dta1970 + 1483228827250},
        {"sas7bdat", "DATETIME", "1960-01-02 00:00:01",       86401},
        {"xpt", "E8601DT",      "1959-12-31 23:59:59",        -1},
    };
    // clang-format on
    for (const Case& test : cases) {
        const ForeignTime time = *ForeignTime::Find(test.Extension, test.Format)->WithTimes();
        const double ours = SecondsFromDateTime(test.Shown).value();
        EXPECT_EQ(time.Kind(), ValueKind::DateTime);
        EXPECT_NEAR(time.Convert(test.Value).value(), ours, test.IsExact ? 0.0 : 1e-5) << test.Shown;
        EXPECT_EQ(time.Invert(ours).has_value(), test.IsExact) << test.Shown;
        EXPECT_NEAR(time.Nearest(ours).value(), test.Value, 1e-3) << test.Shown;
        EXPECT_EQ(time.Convert(*time.Nearest(ours)), time.Convert(test.Value)) << test.Shown;
    }
    // A leap second itself is the beginning of the next day.
    EXPECT_EQ(ForeignTime::Find("dta", "%tC")->WithTimes()->Convert(dta1970 + 78796800000), 78796800.0);
    for (const double beyond : {1e15, -1e300}) {
        EXPECT_FALSE(ForeignTime::Find("sav", "DATETIME20")->WithTimes()->Convert(beyond)) << beyond;
    }
    EXPECT_FALSE(ForeignTime::Find("sav", "DATE11")->WithTimes());
}

}  // namespace
}  // namespace quillara
