#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "workbench/data/DataTable.h"
#include "workbench/data/Remark.h"
#include "workbench/dialogs/HostDialog.h"

namespace quillara {

/// Lets the user open a data file, or one of the tables that were made in this run.
class OpenDataDialog : public HostDialog {
  public:
    using Tables = std::vector<std::shared_ptr<const DataTable>>;
    enum Id : int {
        FromFile = 10,  ///< radio button; the path counts
        Path = 11,  ///< edit
        FromRun = 12,  ///< radio button; the list counts
        TableList = 13,  ///< report list of the tables of this run, the newest last
    };

    /// What reading a file has given: a table, or a text that says why there is none.
    struct FileRead {
        std::string FilePath;
        std::shared_ptr<const DataTable> Table;
        std::vector<Remark> Remarks;  ///< on the file and its reading
        std::string Failure;
    };

    OpenDataDialog(MessageQueue& queue, Tables tables, Tell tell);

    /// Gives what a file holds that has been read already: by that path it isn't read again.
    void Offer(FileRead read) { Read = std::move(read); }
    /// The table that the user has opened; null until then.
    [[nodiscard]] const std::shared_ptr<const DataTable>& Opened() const { return Table; }
    /// The remarks on it that were offered with it.
    [[nodiscard]] const std::vector<Remark>& Remarks() const { return Read.Remarks; }

  protected:
    void Accept() override;
    void Update() override;

  private:
    [[nodiscard]] std::shared_ptr<const DataTable> Open();
    [[nodiscard]] std::shared_ptr<const DataTable> OpenFile(const std::string& path);

    Tables OfRun;
    FileRead Read;
    std::shared_ptr<const DataTable> Table;
};

}  // namespace quillara
