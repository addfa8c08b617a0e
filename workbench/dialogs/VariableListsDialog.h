#pragma once

#include <array>
#include <limits>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "workbench/data/DataTable.h"
#include "workbench/dialogs/HostDialog.h"

namespace quillara {

/// One of the two lists that the user fills.
struct VariableListRequest {
    std::string Label;
    int Lowest = 0;  ///< fewest entries
    int Highest = std::numeric_limits<int>::max();  ///< most entries
    std::vector<short> Chosen;  ///< what it holds at the start; numbers that aren't offered are passed over
};

/// What the dialog asks for.
struct VariableListsRequest {
    std::string Title;
    std::vector<short> Offered;  ///< numbers of the variables to choose from; those that aren't there are passed over
    std::array<VariableListRequest, 2> Lists;
    int HighestTotal = std::numeric_limits<int>::max();  ///< most entries of both lists together
};

/// Whether the lists of a request are an answer to it as they are: of variables that are offered, each once in a list,
/// and within the limits.
[[nodiscard]] bool AreWithinLimits(const VariableListsRequest& request);

/// Lets the user fill two lists with variables, each in an order of its own. A variable may stand in both, in each of
/// them once.
class VariableListsDialog : public HostDialog {
  public:
    enum Id : int {
        AvailableList = 10,  ///< report list of the variables to choose from
        FirstLabel = 20,
        FirstCount = 24,  ///< how many are chosen, and the limits that there are
        FirstList = 21,  ///< report list of those chosen
        AddToFirst = 22,  ///< adds the selected variable at the end
        TakeFromFirst = 23,  ///< takes the selected variable out
        SecondLabel = 30,
        SecondCount = 34,
        SecondList = 31,
        AddToSecond = 32,
        TakeFromSecond = 33,
    };

    /// The table outlives the dialog.
    VariableListsDialog(MessageQueue& queue, const DataTable& table, VariableListsRequest request, Tell tell);

    /// The numbers of the variables in each list, in their order.
    [[nodiscard]] std::array<std::vector<short>, 2> Chosen();

  protected:
    void Use(int control) override;
    void Accept() override;
    void Update() override;

  private:
    [[nodiscard]] bool IsVariable(short number) const;
    void Add(int list, short number);
    void Take(int list);

    const DataTable& Table;
    VariableListsRequest Request;
    std::map<int, std::set<int>> Holds;  // by list: the numbers of the variables in it
};

/// Answers an open window of this dialog through its controls: puts just these variables into its lists and presses OK.
/// Throws UsageError when the window is another or, with nothing changed, when a variable isn't offered or is named
/// twice for one list. The window stays open when its limits forbid the answer.
void ChooseVariables(Window& window, const std::vector<short>& first, const std::vector<short>& second);

}  // namespace quillara
