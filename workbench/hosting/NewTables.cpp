#include "workbench/hosting/NewTables.h"

#include <limits>
#include <utility>

#include "workbench/hosting/NewTable.h"

namespace quillara {

NewTables::NewTables() = default;

NewTables::~NewTables() = default;

short NewTables::Add(std::unique_ptr<NewTable> table) {
    do {
        LastHandle = LastHandle == std::numeric_limits<short>::max() ? short{1} : static_cast<short>(LastHandle + 1);
    } while (Tables.contains(LastHandle));
    Tables.emplace(LastHandle, std::move(table));
    return LastHandle;
}

NewTable* NewTables::Find(short handle) const {
    const auto found = Tables.find(handle);
    return found == Tables.end() ? nullptr : found->second.get();
}

std::unique_ptr<NewTable> NewTables::Take(short handle) {
    auto node = Tables.extract(handle);
    return node.empty() ? nullptr : std::move(node.mapped());
}

void NewTables::Keep(std::shared_ptr<const DataTable> table) {
    Done->push_back(std::move(table));
    ++Number;
}

std::function<void()> NewTables::LettingGo(const std::shared_ptr<const DataTable>& table) const {
    return [tables = std::weak_ptr(Done), held = std::weak_ptr(table)] {
        if (const auto still = tables.lock()) {
            std::erase(*still, held.lock());
        }
    };
}

}  // namespace quillara
