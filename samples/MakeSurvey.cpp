// Writes samples/survey.sav and, from it, samples/survey.csv: an invented survey, the same at every run.

#include <readstat.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>

#include "samples/Survey.h"
#include "workbench/formats/DataFile.h"
#include "workbench/formats/FileReplacement.h"

namespace {

constexpr int Respondents = 2000;
constexpr double SecondsPerDay = 86400;
constexpr double DayFromWhichSavCounts = -141428;  // 1582-10-14, in days since 1970-01-01
constexpr time_t TimeOfFile = 1719748800;  // 2024-06-30 12:00 UTC

struct NumberLabel {
    int Value;
    const char* Label;
};

constexpr std::array<NumberLabel, 5> Regions = {{
    {1, "Northern Highlands"},
    {2, "Western Coast"},
    {3, "Central Plain"},
    {4, "Eastern Lakes"},
    {5, "Southern Islands"},
}};
constexpr std::array<NumberLabel, 6> Educations = {{
    {1, "No certificate"},
    {2, "Lower secondary school"},
    {3, "Upper secondary school"},
    {4, "Vocational training"},
    {5, "Bachelor's degree"},
    {6, "Master's degree or doctorate"},
}};
constexpr std::array<NumberLabel, 6> Employments = {{
    {FullTime, "Employed full-time"},
    {PartTime, "Employed part-time"},
    {SelfEmployed, "Self-employed"},
    {Retired, "Retired"},
    {Student, "Student"},
    {NotEmployed, "Not employed"},
}};
constexpr std::array<NumberLabel, 7> Satisfactions = {{
    {1, "Very dissatisfied"},
    {2, "Rather dissatisfied"},
    {3, "Neither nor"},
    {4, "Rather satisfied"},
    {5, "Very satisfied"},
    {Refused, "Refused"},
    {NoAnswer, "No answer"},
}};

/// One variable of the file; either Number or Text gives its values.
struct SurveyVariable {
    const char* Name;
    const char* Label;
    const char* Format;
    readstat_measure_t Measure;
    std::span<const NumberLabel> Labels;
    double (*Number)(const Respondent&);
    const char* (*Text)(const Respondent&) = nullptr;
};

constexpr readstat_measure_t Nominal = READSTAT_MEASURE_NOMINAL;
constexpr readstat_measure_t Ordinal = READSTAT_MEASURE_ORDINAL;
constexpr readstat_measure_t Scale = READSTAT_MEASURE_SCALE;

using R = const Respondent&;

// clang-format off
const std::array SurveyVariables = std::to_array<SurveyVariable>({
    {"region",          "Region of residence",                           "F1.0",   Nominal, Regions,       [](R r) -> double { return r.Region; }},
    {"settlement",      "Kind of settlement",                            "A8",     Nominal, {},            nullptr, [](R r) { return r.Settlement; }},
    {"sex",             "Sex of the respondent",                         "A1",     Nominal, {},            nullptr, [](R r) { return r.Sex; }},
    {"age",             "Age in years",                                  "F3.0",   Scale,   {},            [](R r) -> double { return r.Age; }},
    {"education",       "Highest level of education completed",          "F1.0",   Ordinal, Educations,    [](R r) -> double { return r.Education; }},
    {"employment",      "Present employment",                            "F1.0",   Nominal, Employments,   [](R r) -> double { return r.Employment; }},
    {"household_size",  "Persons in the household",                      "F2.0",   Scale,   {},            [](R r) -> double { return r.HouseholdSize; }},
    {"income",          "Net household income in a month",               "F8.0",   Scale,   {},            [](R r) { return r.Income; }},
    {"hours",           "Hours of paid work in a usual week",            "F5.1",   Scale,   {},            [](R r) { return r.Hours; }},
    {"commute",         "Main means of travel to work",                  "A8",     Nominal, {},            nullptr, [](R r) { return r.CommuteMode; }},
    {"commute_minutes", "Minutes from door to door on the way to work",  "F4.0",   Scale,   {},            [](R r) { return r.CommuteMinutes; }},
    {"books_read",      "Books read in the last twelve months",          "F4.0",   Scale,   {},            [](R r) -> double { return r.BooksRead; }},
    {"genre",           "Favourite kind of book",                        "A16",    Nominal, {},            nullptr, [](R r) { return r.FavouriteGenre; }},
    {"reading_score",   "Reading test, points of 100",                   "F5.1",   Scale,   {},            [](R r) { return r.ReadingScore; }},
    {"satisfaction",    "Satisfaction with life as a whole these days",  "F1.0",   Ordinal, Satisfactions, [](R r) -> double { return r.Satisfaction; }},
    {"interview_date",  "Day of the interview",                          "SDATE10",Scale,   {},            [](R r) { return (r.InterviewDay - DayFromWhichSavCounts) * SecondsPerDay; }},
    {"interview_start", "Start of the interview",                        "TIME8",  Scale,   {},            [](R r) { return r.InterviewStart; }},
    {"weight",          "Weight that makes up for who was hard to reach","F6.4",   Scale,   {},            [](R r) { return r.Weight; }},
});
// clang-format on

void Check(readstat_error_t error) {
    if (error != READSTAT_OK) {
        throw std::runtime_error(readstat_error_message(error));
    }
}

using Writer = std::unique_ptr<readstat_writer_t, decltype(&readstat_writer_free)>;

readstat_label_set_t* AddLabels(readstat_writer_t* writer, const SurveyVariable& variable) {
    readstat_label_set_t* set = readstat_add_label_set(
        writer, variable.Text == nullptr ? READSTAT_TYPE_DOUBLE : READSTAT_TYPE_STRING, variable.Name);
    for (const NumberLabel& label : variable.Labels) {
        readstat_label_double_value(set, label.Value, label.Label);
    }
    if (std::string(variable.Name) == "sex") {
        readstat_label_string_value(set, "F", "Female");
        readstat_label_string_value(set, "M", "Male");
    }
    return set;
}

void AddVariable(readstat_writer_t* writer, const SurveyVariable& variable) {
    const std::string name = variable.Name;
    const std::size_t width = variable.Text == nullptr ? 0 : std::stoul(variable.Format + 1);
    readstat_variable_t* added =
        readstat_add_variable(writer, variable.Name, width == 0 ? READSTAT_TYPE_DOUBLE : READSTAT_TYPE_STRING, width);
    readstat_variable_set_label(added, variable.Label);
    readstat_variable_set_format(added, variable.Format);
    readstat_variable_set_measure(added, variable.Measure);
    if (!variable.Labels.empty() || name == "sex") {
        readstat_variable_set_label_set(added, AddLabels(writer, variable));
    }
    if (name == "satisfaction") {
        Check(readstat_variable_add_missing_double_value(added, Refused));
        Check(readstat_variable_add_missing_double_value(added, NoAnswer));
    }
    if (name == "weight") {
        Check(readstat_writer_set_fweight_variable(writer, added));
    }
}

void AddValue(readstat_writer_t* writer, int index, const SurveyVariable& variable, const Respondent& person) {
    const readstat_variable_t* target = readstat_get_variable(writer, index);
    if (variable.Text != nullptr) {
        Check(readstat_insert_string_value(writer, target, variable.Text(person)));
    } else if (const double value = variable.Number(person); std::isnan(value)) {
        Check(readstat_insert_missing_value(writer, target));
    } else {
        Check(readstat_insert_double_value(writer, target, value));
    }
}

ssize_t AppendBytes(const void* data, std::size_t length, void* context) {
    static_cast<std::string*>(context)->append(static_cast<const char*>(data), length);
    return static_cast<ssize_t>(length);
}

std::string SavOf(const std::vector<Respondent>& people) {
    std::string bytes;
    const Writer writer(readstat_writer_init(), readstat_writer_free);
    Check(readstat_set_data_writer(writer.get(), AppendBytes));
    Check(readstat_writer_set_file_label(writer.get(), "Invented survey, made by our own generator"));
    Check(readstat_writer_set_file_timestamp(writer.get(), TimeOfFile));
    Check(readstat_writer_set_compression(writer.get(), READSTAT_COMPRESS_ROWS));
    for (const SurveyVariable& variable : SurveyVariables) {
        AddVariable(writer.get(), variable);
    }
    Check(readstat_begin_writing_sav(writer.get(), &bytes, static_cast<long>(people.size())));
    for (const Respondent& person : people) {
        Check(readstat_begin_row(writer.get()));
        for (std::size_t i = 0; i < SurveyVariables.size(); ++i) {
            AddValue(writer.get(), static_cast<int>(i), SurveyVariables[i], person);
        }
        Check(readstat_end_row(writer.get()));
    }
    Check(readstat_end_writing(writer.get()));
    return bytes;
}

}  // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount != 2) {
        std::fputs("usage: make-survey FOLDER\n", stderr);
        return 2;
    }
    // The file tells the local time at which it was made.
    setenv("TZ", "UTC", 1);
    try {
        const std::string path = std::string(arguments[1]) + "/survey";
        quillara::ReplaceFile(path + ".sav", SavOf(InventRespondents(Respondents)));
        quillara::WriteDataFile(quillara::ReadDataFile(path + ".sav"), path + ".csv");
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
