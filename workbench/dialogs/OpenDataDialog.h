#pragma once

#include <memory>
#include <vector>

#include "workbench/data/DataTable.h"
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

    OpenDataDialog(MessageQueue& queue, Tables tables, Tell tell);

    /// The table that the user has opened; null until then.
    [[nodiscard]] const std::shared_ptr<const DataTable>& Opened() const { return Table; }

  protected:
    void Accept() override;
    void Update() override;

  private:
    [[nodiscard]] std::shared_ptr<const DataTable> Open();

    Tables OfRun;
    std::shared_ptr<const DataTable> Table;
};

}  // namespace quillara
