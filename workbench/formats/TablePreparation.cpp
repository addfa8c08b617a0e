#include "workbench/formats/TablePreparation.h"

#include "workbench/formats/Dictionary.h"

namespace quillara {

std::vector<Remark> PrepareTable(DataTable& table, const TablePreparation& preparation,
                                 std::optional<std::size_t> maxMemory) {
    for (const ValidCodes& valid : preparation.Valid) {
        TakeAsValid(table, valid);
    }
    if (preparation.DictionaryFile) {
        ApplyDictionary(table, *preparation.DictionaryFile, maxMemory);
    }
    std::vector<Remark> notices;
    for (const DerivedVariable& derived : preparation.Derived) {
        Derive(table, derived, notices);
    }
    return notices;
}

}  // namespace quillara
