#pragma once

#include <cstddef>
#include <optional>

#include "workbench/data/DataTable.h"
#include "workbench/dialogs/HostDialog.h"

namespace quillara {

/// The weight of the cases: which variable gives it, and whether it is in force.
struct WeightChoice {
    std::optional<std::size_t> Variable;  ///< index of the variable; there is one when the weight is in force
    bool InForce = false;
};

/// Lets the user choose the weight variable, and switch the weight off without forgetting the variable. Text variables
/// aren't offered.
class WeightDialog : public HostDialog {
  public:
    enum Id : int {
        NoWeight = 10,  ///< check box
        VariableList = 11,  ///< report list of the variables to choose from
        DeclaredWeight = 12,  ///< tells the weight variable that the file declares
    };

    /// `present` is what it shows at the start. The table outlives the dialog.
    WeightDialog(MessageQueue& queue, const DataTable& table, const WeightChoice& present, Tell tell);

    /// What the user has confirmed.
    [[nodiscard]] const WeightChoice& Choice() const { return Chosen; }

  protected:
    void Accept() override;
    void Update() override;

  private:
    WeightChoice Chosen;
};

}  // namespace quillara
