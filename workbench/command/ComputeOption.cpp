#include "workbench/command/ComputeOption.h"

#include <string_view>

#include "workbench/command/DrillOptions.h"
#include "workbench/data/FormulaFunctions.h"

namespace quillara {

std::string FormulaNotes() {
    return "FORMULA: comparisons (= <> < <= > >=, also == !=), in (...), between a and b, arithmetic, and, or, not, "
           "brackets, functions, missing(NAME). A text in double or single quotes, a quote of the same kind in it "
           "twice, is "
           "compared with the texts or labels of a variable; a date is written \"YYYY-MM-DD\", with a time "
           "\"YYYY-MM-DD HH:MM:SS\", of which seconds can be added and date(X) and time(X) are the parts; a name that "
           "is "
           "no plain word stands in [square brackets]. They bind in the order arithmetic, comparison, not, and, or. "
           "Functions: " +
           FunctionNames() +
           ". if(CONDITION, A, B) is A or B, missing() a missing value; cut(X, B1, B2, ...) gives "
           "the labelled intervals x<=B1, B1<x<=B2, ...; log is the natural logarithm; weekday is 1 to 7 from Monday. "
           "What "
           "is made of a missing value is missing. missing(NAME, 98, \"Not stated\") holds for these of its missing "
           "values only, by code or label.\n";
}

CLI::Option* AddValidOption(CLI::App& command, std::vector<ValidCodes>& valid) {
    return AddRepeated(
               command, "--valid", [&valid](const std::string& text) { valid.push_back(ParseValid(text)); },
               "missing values of a file (quillara info shows them) that are to count as values, by code or label, "
               "comma separated; without codes all of the variable; repeatable")
        ->type_name("VAR[=CODES]")
        ->group("Variables");
}

CLI::Option* AddComputeOption(CLI::App& command, std::vector<DerivedVariable>& derived) {
    return AddRepeated(
               command, "--compute", [&derived](const std::string& text) { derived.push_back(ParseDerived(text)); },
               "a new variable, made of others before anything else is done; a later one may use it; repeatable")
        ->type_name("NAME=FORMULA")
        ->group("Variables");
}

}  // namespace quillara
