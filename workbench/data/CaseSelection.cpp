#include "workbench/data/CaseSelection.h"

#include "workbench/data/FormulaReader.h"

namespace quillara {

std::vector<CaseResult> SelectCases(const DataTable& table, std::string_view formula) {
    SelectionProgram program = ReadFormula(table, formula);
    return RunSelection(table, program);
}

}  // namespace quillara
