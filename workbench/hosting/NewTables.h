#pragma once

#include <map>
#include <memory>
#include <vector>

#include "workbench/data/DataTable.h"

class CAnalysisDoc;

namespace quillara {

class NewTable;

/// The data tables that an analysis makes: those that it is writing, by handle, and those that are done.
class NewTables {
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
    /// The tables that are done, the newest last.
    [[nodiscard]] const std::vector<std::shared_ptr<const DataTable>>& Finished() const { return Done; }

  private:
    std::map<short, std::unique_ptr<NewTable>> Tables;
    short LastHandle = 0;
    std::vector<std::shared_ptr<const DataTable>> Done;
};

/// Those of a document; without a document none.
[[nodiscard]] NewTables& NewTablesOf(CAnalysisDoc* document);

}  // namespace quillara
