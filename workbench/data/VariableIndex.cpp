#include "workbench/data/VariableIndex.h"

namespace quillara {

VariableIndex::VariableIndex(const DataTable& table) : Table(table) {
    Places.reserve(table.Variables.size());
    for (std::size_t place = 0; place < table.Variables.size(); ++place) {
        Places.try_emplace(table.Variables[place].Name, place);  // of two of one name the first counts
    }
}

std::size_t VariableIndex::IndexOf(std::string_view name) const {
    const auto found = Places.find(name);
    return found == Places.end() ? Table.IndexOf(name) : found->second;
}

}  // namespace quillara
