#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "workbench/data/DataTable.h"

class CAnalysisDoc;

namespace quillara {

class NewTable;

/// The data tables that an analysis makes: those that it is writing, by handle, and those that are done.
class NewTables {
    using List = std::vector<std::shared_ptr<const DataTable>>;

  public:
    NewTables();
    NewTables(const NewTables&) = delete;
    NewTables& operator=(const NewTables&) = delete;
    ~NewTables();

    /// Takes a table and gives its handle, never 0.
    short Add(std::unique_ptr<NewTable> table);
    /// The table of a handle; null when there is none.
    [[nodiscard]] NewTable* Find(short handle) const;
    /// Gives a table out of the collection; null when there is none of that handle.
    std::unique_ptr<NewTable> Take(short handle);

    /// Keeps a table that is done.
    void Keep(std::shared_ptr<const DataTable> table);
    /// The tables that are done and haven't been let go, the newest last.
    [[nodiscard]] const List& Finished() const { return *Done; }
    /// How many have been done so far.
    [[nodiscard]] std::size_t FinishedSoFar() const { return Number; }
    /// What lets go of a table that is done; may be called when the collection is gone.
    [[nodiscard]] std::function<void()> LettingGo(const std::shared_ptr<const DataTable>& table) const;

  private:
    std::map<short, std::unique_ptr<NewTable>> Tables;
    short LastHandle = 0;
    std::shared_ptr<List> Done = std::make_shared<List>();
    std::size_t Number = 0;
};

/// Those of a document; without a document none.
[[nodiscard]] NewTables& NewTablesOf(CAnalysisDoc* document);

}  // namespace quillara
