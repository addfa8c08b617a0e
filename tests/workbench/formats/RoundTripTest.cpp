// Tables written to a file and read back: what comes back, what is kept beside it, what is refused.

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cmath>
#include <csignal>
#include <numeric>

#include "tests/workbench/formats/FormatsTesting.h"
#include "tests/workbench/formats/StatisticalMaker.h"
#include "workbench/data/Errors.h"
#include "workbench/formats/DelimitedWriter.h"
#include "workbench/formats/FileNotes.h"
#include "workbench/formats/NamesInFile.h"
#include "workbench/formats/StatisticalRules.h"

namespace quillara {
namespace {

DataTable Through(const std::string& extension, const DataTable& table) {
    const TemporaryFolder folder;
    WriteDataFile(table, folder.Path("t." + extension));
    EXPECT_EQ(folder.Files(), 1U);
    return ReadDataFile(folder.Path("t." + extension));
}

/// The error of writing, or "".
std::string Refusal(const std::string& extension, const DataTable& table) {
    try {
        (void)Through(extension, table);
        return "";
    } catch (const DataError& error) {
        return error.what();
    }
}

std::string Described(const ValueTexts& texts) {
    return texts.Label + (texts.Description.empty() ? "" : "/" + texts.Description);
}

/// All that a table holds, as Show, with long names, labels, descriptions, weight, title text and case names.
std::string ShowAll(const DataTable& table) {
    std::string shown = Show(table) + " | ";
    for (const Variable& variable : table.Variables) {
        shown += "[" + variable.LongName + "]";
        for (const auto& [value, texts] : variable.Labels) {
            shown += " " + Show(variable, value) + ":" + Described(texts);
        }
    }
    shown += " | " + (table.Weight ? table.Variables[*table.Weight].Name : "-") + " | " + table.Header + " |";
    for (const std::string& name : table.CaseNames) {
        shown += " " + name;
    }
    return shown;
}

const std::string LongLabel =
    "Größe in Zentimetern, gemessen ohne Schuhe; 100 % = Körpergröße " + std::string(300, 'x') + " end";

/// A table with everything that a table can hold, but for labels of texts.
DataTable Everything() {
    DataTable table = TableOf({Numbers("number", {1, 0.1, Missing, -1e300}),
                               Numbers("marital status", {1, 2, Missing, 9}), Numbers("fraction", {2.5, 2.5, 0, 1e10}),
                               Numbers("day", {0, Missing, 19782, -150000}, ValueKind::Date),
                               Numbers("clock", {0, 86399, Missing, 0.125}, ValueKind::TimeOfDay),
                               Texts("Größe", {"ä", std::nullopt, "zwei  Wörter", " 1"}),
                               Texts("long", {std::string(20'000, 'q') + "ß", "s", std::nullopt, "s"}),
                               Numbers("weight", {1, 0.5, Missing, 2}),
                               Texts("nothing", {std::nullopt, std::nullopt, std::nullopt, std::nullopt})});
    table.Variables[0].LongName = LongLabel;
    table.Variables[1].LongName = "Familienstand";
    table.Variables[1].Labels = {{1, {"ledig", "never married"}}, {2, {LongLabel, ""}}, {9, {"", "only described"}}};
    table.Variables[2].Labels = {{2.5, {"two and a half", ""}}, {1e10, {"many", ""}}, {-3, {"no case has it ", ""}}};
    table.Variables[3].Labels = {{19782, {"leap day", ""}}};
    table.Variables[4].Labels = {{86399, {"the last second", ""}}};
    table.Header =
        "A title that is rather long, so that neither format has a field which holds it whole, in nine words";
    table.CaseNames = {"Anna", "", "Ch. Müller", "=4%;"};
    table.Weight = 7;
    return table;
}

class EveryWrittenFormat : public testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(RoundTrip, EveryWrittenFormat, testing::Values("sav", "zsav", "dta"));

TEST_P(EveryWrittenFormat, EverythingComesBack) {
    const DataTable table = Everything();
    EXPECT_EQ(ShowAll(Through(GetParam(), table)), ShowAll(table));
    DataTable none = TableOf({Numbers("a", {}), Texts("b", {})});
    EXPECT_EQ(ShowAll(Through(GetParam(), none)), ShowAll(none));
}

TEST_P(EveryWrittenFormat, OddNamesComeBack) {
    std::vector<Variable> variables;
    // clang-format off
    for (const char* name : {"a b", "a_b", "a-b", "A_B", "2019", "", "with", "str8", "_x", "@home", "x.", "x", "X", "ß€", "名前",
                             "a = b;", "new\nline", "V", "Case", "case", "CASE_2", "ALL", "12345678901234567890123456789012345"}) {
        // clang-format on
        variables.push_back(Numbers(name, {1}));
    }
    for (const char ending : {'a', 'b'}) {
        variables.push_back(Numbers(std::string(80, 'n') + ending, {1}));
    }
    DataTable table = TableOf(std::move(variables));
    table.CaseNames = {"one"};
    EXPECT_EQ(ShowAll(Through(GetParam(), table)), ShowAll(table));
}

TEST_P(EveryWrittenFormat, TextsOfEveryLengthComeBack) {
    for (const std::size_t length : {1, 8, 9, 254, 255, 256, 257, 503, 504, 505, 2045, 2046, 32'764, 32'766}) {
        std::string text = "x";
        while (text.size() + 2 <= length) {
            text += text.size() % 3 == 0 ? "ä" : "bc";
        }
        text.resize(length, 'e');
        // Long texts are kept in segments, which must not be taken for the variables behind.
        DataTable table =
            TableOf({Texts("item1", {text, "b"}), Texts("item10", {text, "c"}), Texts("ITEM12", {"d", text}),
                     Texts("xäääää", {text, "e"}), Numbers("item11", {1, 2}), Numbers("t1_ITEM1", {1, 2})});
        if (std::string(GetParam()) != "dta") {
            table.Variables[0].Labels[2].Label = "label of a long text";
        }
        EXPECT_TRUE(ShowAll(Through(GetParam(), table)) == ShowAll(table)) << length;
    }
}

TEST_P(EveryWrittenFormat, ValuesComeBackBitForBit) {
    const bool isSav = std::string(GetParam()) != "dta";
    const std::vector<double> values = {0.1,  1.0 / 3, 5e-324, -1e-310,  151,   152,    -99,    -100,
                                        1e17, 4.5e15,  8e307,  -1.7e308, 100.5, -0.125, 3e-200, Missing};
    EXPECT_EQ(Through(GetParam(), TableOf({Numbers("v", values)})).Variables[0].Values, Numbers("v", values).Values);
    const DataTable zero = Through(GetParam(), TableOf({Numbers("zero", {-0.0})}));
    EXPECT_EQ(std::signbit(zero.Variables[0].Values[0]), std::string(GetParam()) != "zsav");
    for (const double unfit : {Infinity, isSav ? std::numeric_limits<double>::lowest() : 9e307}) {
        const std::string refusal = Refusal(GetParam(), TableOf({Numbers("fit", {1}), Numbers("unfit", {unfit})}));
        EXPECT_EQ(refusal.find("Variable \"unfit\" "), 0U) << refusal;
    }
}

TEST_P(EveryWrittenFormat, DisplayFormatsStayWhereTheyCan) {
    const bool isSav = std::string(GetParam()) != "dta";
    const struct {
        ValueKind Kind;
        const char* Format;
        const char* InSav;
        const char* InDta;
    } cases[] = {
        {ValueKind::Number, "F5.1", "F5.1", "%5.1f"},
        {ValueKind::Number, "%5.1f", "F5.1", "%5.1f"},
        {ValueKind::Number, "DOLLAR9.2", "DOLLAR9.2", "%10.0g"},
        {ValueKind::Number, "%9.0gc", "F8.2", "%9.0gc"},
        {ValueKind::Number, "F99.1", "F8.2", "%10.0g"},
        {ValueKind::Number, "DATE11", "F8.2", "%10.0g"},
        {ValueKind::Number, "%td", "F8.2", "%10.0g"},
        {ValueKind::Number, "BEST12", "F8.2", "%10.0g"},
        {ValueKind::Date, "EDATE10", "EDATE10", "%td"},
        {ValueKind::Date, "%tdD_m_Y", "DATE11", "%tdD_m_Y"},
        {ValueKind::Date, "%tm", "DATE11", "%td"},
        {ValueKind::Date, "DATE5", "DATE11", "%td"},
        {ValueKind::TimeOfDay, "TIME5", "TIME5", "%tcHH:MM:SS"},
        {ValueKind::TimeOfDay, "", "TIME8", "%tcHH:MM:SS"},
        {ValueKind::DateTime, "DATETIME17", "DATETIME17", "%tc"},
        {ValueKind::DateTime, "%tcCCYY-NN-DD_HH:MM", "DATETIME20", "%tcCCYY-NN-DD_HH:MM"},
        {ValueKind::DateTime, "", "DATETIME20", "%tc"},
    };
    for (const auto& test : cases) {
        DataTable table = TableOf({Numbers("v", {3600, 7200}, test.Kind)});
        table.Variables[0].Format = test.Format;
        const DataTable readBack = Through(GetParam(), table);
        EXPECT_EQ(readBack.Variables[0].Format, isSav ? test.InSav : test.InDta) << test.Format;
        EXPECT_EQ(Show(readBack), Show(table)) << test.Format;
    }
    // Numbers of a format of dates stay numbers where one is no date.
    DataTable table = TableOf({Numbers("v", {0.5, 1e15})});
    table.Variables[0].Format = "DATETIME20";
    EXPECT_EQ(Show(Through(GetParam(), table)), Show(table));
}

TEST_P(EveryWrittenFormat, DatesWithTimes) {
    const double leap = SecondsFromDateTime("2024-02-29T23:59:59.125").value();
    const double first = SecondsFromDateTime("0001-01-01").value();
    const double last = SecondsFromDateTime("9999-12-31T23:59:59").value();
    DataTable table = TableOf({Numbers("some", {leap, Missing, first, last, -0.5}, ValueKind::DateTime),
                               Numbers("midnights", {0, -86400, Missing, 86400, 172800}, ValueKind::DateTime),
                               Numbers("none", {Missing, Missing, Missing, Missing, Missing}, ValueKind::DateTime)});
    table.Variables[1].Labels = {{86400, {"second", "described"}}};
    for (const DataTable& readBack : {Through(GetParam(), table), Through("qtable", table)}) {
        EXPECT_EQ(Show(readBack), Show(table));
        EXPECT_EQ(readBack.Variables[1].Labels.at(86400).Description, "described");
    }
    // Beyond what the number of a file tells, the nearest that it does, with a word.
    table = TableOf({Numbers("v", {leap, leap + 1e-6, Missing}, ValueKind::DateTime)});
    const TemporaryFolder folder;
    const std::string path = folder.Path(std::string("t.") + GetParam());
    const bool isDta = std::string(GetParam()) == "dta";
    EXPECT_EQ(WriteDataFile(table, path).size(), isDta ? 0 : 1);
    EXPECT_NEAR(ReadDataFile(path).Variables[0].Values[1], leap + 1e-6, isDta ? 0.0 : 2e-6);
    for (const char* extension : {"csv", "xlsx"}) {
        const std::string shown = folder.Path(std::string("t.") + extension);
        EXPECT_EQ(WriteDataFile(table, shown).size(), std::string(extension) == "xlsx" ? 1 : 0);
        EXPECT_NEAR(ReadDataFile(shown).Variables[0].Values[1], leap + 1e-6, extension[0] == 'c' ? 0.0 : 1e-3);
        EXPECT_EQ(ReadDataFile(shown).Variables[0].Kind, ValueKind::DateTime);
    }
}

TEST_P(EveryWrittenFormat, WhatCannotBeHeldIsRefusedByName) {
    const std::string extension = GetParam();
    const struct {
        Variable Refused;
        const char* Reason = "";
    } cases[] = {
        {Texts("v", {""}), "empty or ends with a blank"},
        {Texts("v", {"a "}), "empty or ends with a blank"},
        {Texts("v", {std::string("a\0b", 3)}), "null byte"},
        {Texts("v", {std::string(32'767, 'a')}), "at most 32766: write dta or csv"},
        {Texts("v", {"a\x01"}), "would change"},
        {Texts("v", {"\xE9"}), ""},
        {Numbers("v", {0.5}, ValueKind::Date), "value 0.5"},
        {Numbers("v", {1e7}, ValueKind::Date), "value 10000000"},
        {Numbers("v", {86400}, ValueKind::TimeOfDay), "value 86400"},
    };
    for (const auto& test : cases) {
        const std::string refusal = Refusal(extension, TableOf({test.Refused}));
        const bool isTaken = extension == "dta" && test.Reason == cases[3].Reason;
        EXPECT_EQ(refusal.find("Variable \"v\" ") == 0, !isTaken) << test.Reason << ": " << refusal;
        EXPECT_TRUE(isTaken || refusal.find(test.Reason) != std::string::npos) << refusal;
    }
}

TEST(RoundTrip, LabelsOfTexts) {
    DataTable table = TableOf({Texts("sex", {"m", "f", std::nullopt, "a text of more than eight"})});
    table.Variables[0].Labels = {{1, {LongLabel, "described"}}, {2, {"Female", ""}}, {3, {"", "only this"}}};
    for (const char* extension : {"sav", "zsav"}) {
        EXPECT_EQ(ShowAll(Through(extension, table)), ShowAll(table));
    }
    EXPECT_EQ(Show(Through("dta", table)), "sex N 3=m 2=Female - 1=" + LongLabel);
    EXPECT_EQ(Through("dta", table).Variables[0].Labels.at(3).Description, "only this");
    table.Variables[0].Labels.clear();
    EXPECT_EQ(ShowAll(Through("dta", table)), ShowAll(table));
}

TEST(RoundTrip, CsvHoldsWhatIsShown) {
    DataTable table = Everything();
    table.Variables.push_back(Texts("Case", {"NA", "007", " padded", "\"quoted\", so"}));
    table.Variables[6] = Texts("long", {std::string(40'000, 'q'), "s", std::nullopt, "s"});
    EXPECT_EQ(
        Show(Through("csv", table)).substr(0, 105),
        "Case_2 T Anna - Ch. Müller =4%;; number N 1 0.1 - -1e+300; marital status N 1 2 - 9; fraction N 2.5 2.5 ");
    EXPECT_NE(Show(Through("csv", table)).find("Größe T ä - zwei  Wörter 1; long"), std::string::npos);
    for (const Variable& unfit : {Texts("v", {"a\x01"}), Texts("v", {"\xE9"})}) {
        EXPECT_EQ(Refusal("csv", TableOf({unfit})).find("Variable \"v\" "), 0U) << Refusal("csv", TableOf({unfit}));
    }
}

TEST(RoundTrip, CsvTellsWhatItLosesOfTheValues) {
    const std::string sav = " (write sav)",
                      missing = " become missing data (read it with --missing \"\", or write sav)";
    const std::string noText = "values without a text become missing data (no format keeps them)";
    Variable labelled = Numbers("v", {1, 2, 3, Missing});
    labelled.Labels = {{1, {"N/A", ""}}, {2, {"?", ""}}, {3, {"1e5 ", ""}}};
    const std::pair<Variable, std::string> cases[] = {
        {Texts("v", {"NA", "N/A", "null", "a", "None", "."}), "\".\", \"N/A\", \"NA\" and 2 more" + missing},
        {Texts("v", {std::string(50, 'x') + " ", "a"}),
         '"' + std::string(40, 'x') + "...\" lose the blanks behind them (no format keeps them)"},
        {Texts("v", {" a", "b"}), "\" a\" lose the blanks around them" + sav},
        {Texts("v", {"007", "1.", std::nullopt}), "its texts become numbers" + sav},
        {Texts("v", {"2024-02-29", "?"}), "\"?\"" + missing + "; its texts become dates" + sav},
        {Texts("v", {"", "a"}), noText},
        {labelled, "\"?\", \"N/A\"" + missing + "; its labels become numbers" + sav},
        {Numbers("v", {Infinity, 1}), noText},
        {Numbers("v", {1e9, 0.5}, ValueKind::Date), noText + "; parts of a day or second are dropped" + sav},
        {Numbers("v", {0.125}, ValueKind::TimeOfDay),
         "parts of a day or second are dropped" + sav + "; its times of day become texts" + sav},
        {Numbers(" v", {1}), "its name becomes \"v\"" + sav},
        {Texts("v", {"NAN", "1e5x", std::nullopt, "a  b", "=1", "x\r\ny", ",;|\t\""}), ""},
        {Numbers("v", {-0.0, 1e300, Missing}), ""},
        {Numbers("v", {Missing}, ValueKind::Date), ""},
    };
    const TemporaryFolder folder;
    std::filesystem::create_symlink("/dev/null", folder.Path("pipe.csv"));
    for (const auto& [variable, loss] : cases) {
        for (const char* name : {"t.csv", "pipe.csv"}) {
            const std::vector<std::string> lines = WriteDataFile(TableOf({variable}), folder.Path(name));
            const std::string told =
                "Variable \"" + variable.Name + "\" of \"" + folder.Path(name) + "\": when it is read, ";
            EXPECT_EQ(lines, loss.empty() ? std::vector<std::string>() : std::vector<std::string>{told + loss + "."});
        }
    }
    DataTable named = TableOf({Numbers("n", {1, 2})});
    named.CaseNames = {"7", ""};
    EXPECT_EQ(WriteDataFile(named, folder.Path("t.csv")).size(), 1U);
}

TEST(RoundTrip, NotesOlderThanTheFileDoNoHarm) {
    std::vector<FileNote> notes = {{"name", "a", "", "b"},      {"name", "gone", "", "c"},
                                   {"label", "a", "", "Other"}, {"value-label", "a", "x", "?"},
                                   {"case-names", "a", "", ""}, {"later", "a", "", "?"}};
    std::vector<std::string> lines = LinesOfNotes(notes, 80);
    lines.insert(lines.begin(),
                 {"quillara: name a = unfin+", "A note of somebody's own.", "quillara: nonsense;", "quillara: "});
    StatisticalMaker maker("sav");
    for (const std::string& line : lines) {
        readstat_add_note(maker.Raw, line.c_str());
    }
    for (const char* name : {"a", "b"}) {
        readstat_variable_set_label(maker.Number(name, {}), "A label");
    }
    const TemporaryFolder folder;
    EXPECT_EQ(ShowAll(ReadDataFile(folder.Put("t.sav", maker.Bytes()))),
              "a N; b N | [A label][A label] | - | A label of the file |");
}

TEST(FileNotes, AnyTextFitsOnLinesOfAnyLength) {
    std::string text = "100 % = \"ä\"; + \n\t\x7F  ";
    for (int i = 0; i < 40; ++i) {
        text += i % 3 == 0 ? "名" : i % 3 == 1 ? "é" : " ";
    }
    for (std::size_t lineBytes = 40; lineBytes < 200; ++lineBytes) {
        const std::vector<std::string> lines =
            LinesOfNotes({{"kind", "variable", "a b=c%", text}, {"k", "", "", ""}}, lineBytes);
        const std::vector<FileNote> notes = NotesOfLines(lines);
        ASSERT_EQ(notes.size(), 2U);
        EXPECT_EQ(notes[0].Kind + "|" + notes[0].Variable + "|" + notes[0].Value + "|" + notes[0].Text,
                  "kind|variable|a b=c%|" + text);
        for (const std::string& line : lines) {
            EXPECT_LE(line.size(), lineBytes);
        }
    }
    EXPECT_EQ(LinesOfNotes({{"name", "V2019", "", "2019"}}, 80),
              std::vector<std::string>{"quillara: name V2019 = 2019;"});
}

TEST(NamesInFile, AreValidAndNear) {
    const auto names = [](const NameRules& rules, const std::vector<std::string>& wanted) {
        std::vector<NamedColumn> columns;
        for (const std::string& name : wanted) {
            columns.push_back({.Name = name});
        }
        std::string joined;
        for (const std::string& name : NamesInFile(columns, rules)) {
            joined += (joined.empty() ? "" : " ") + name;
        }
        return joined;
    };
    EXPECT_EQ(names(savRules::Names, {"a b", "a_b", "Sex", "sex", "2019", "To", "x.y", "z.", "_u", "é€", ""}),
              "a_b_2 a_b Sex sex_2 V2019 VTo x.y z_ V_u é_ V");
    EXPECT_EQ(
        names(dtaRules::Names, {"a b", "a_b", "Sex", "sex", "2019", "To", "x.y", "str12", "strong", "_n", "_N", "if"}),
        "a_b_2 a_b Sex sex V2019 To x_y Vstr12 strong V_n V_N Vif");
    EXPECT_EQ(names(dtaRules::Names, {std::string(40, 'n'), std::string(50, 'n')}),
              std::string(32, 'n') + " " + std::string(30, 'n') + "_2");
}

TEST(WriteDataFile, KeepsTheOldFileOnCancelAtAnyMoment) {
    std::vector<double> values(50'000);
    std::iota(values.begin(), values.end(), 0.0);
    const DataTable table = TableOf({Numbers("a", values), Numbers("b", values)});
    const TemporaryFolder folder;
    for (const char* name : {"t.csv", "t.sav", "t.zsav", "t.dta"}) {
        const std::string path = folder.Put(name, "old");
        const auto isEndedAt = [&](int moment) {
            try {
                WriteDataFile(table, path, [&] { return --moment == 0; });
                return false;
            } catch (const Interrupted&) {
                EXPECT_EQ(ContentOf(path).substr(0, 10), "old") << name;
                return true;
            }
        };
        int moment = 1;
        while (isEndedAt(moment)) {
            moment += 1 + moment / 3;
        }
        EXPECT_GT(moment, 2) << name;
    }
    EXPECT_EQ(folder.Files(), 4U);
}

TEST(WriteDataFile, LeavesNoOtherFileWhenASignalEndsTheProgram) {
#ifdef __SANITIZE_ADDRESS__
    constexpr int fault = SIGXCPU;  // the sanitizer takes faults of the program itself
#else
    constexpr int fault = SIGSEGV;
#endif
    const TemporaryFolder folder;
    for (const int signal : {SIGTERM, SIGHUP, SIGXFSZ, SIGABRT, fault}) {
        const std::string path = folder.Put("t.sav", "old");
        const pid_t child = fork();
        if (child == 0) {
            WriteDataFile(TableOf({Numbers("a", {1})}), path, [&] { return folder.Files() > 1 && raise(signal) != 0; });
            _exit(0);
        }
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal) << status;
        EXPECT_EQ(ContentOf(path), "old");
        EXPECT_EQ(folder.Files(), 1U);
    }
}

TEST_F(RealData, AdultComesBackFromEveryFormat) {
    for (const char* name : {"adult.sav", "adult.csv"}) {
        const DataTable table = ReadDataFile(File(name));
        const std::string shown = TextOfTable(table);
        for (const char* extension : {"sav", "zsav", "dta", "csv"}) {
            const DataTable readBack = Through(extension, table);
            EXPECT_TRUE(TextOfTable(readBack) == shown) << name << " " << extension;
            const bool isCsv = std::string(extension) == "csv";
            EXPECT_EQ(readBack.Weight, isCsv ? std::nullopt : table.Weight) << name << " " << extension;
            EXPECT_EQ(readBack.Variables[0].LongName, isCsv ? "" : table.Variables[0].LongName);
        }
    }
}

}  // namespace
}  // namespace quillara
