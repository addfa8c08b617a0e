#pragma once

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <utility>

#include "resources/ControlIds.h"
#include "tests/automation/OutputsBench.h"

namespace dialogtest {

using DocumentKey = std::pair<int, int>;  ///< button and sequence

/// The variable in a row of either list.
inline std::string NameIn(const std::string& row) {
    return row.substr(0, row.find(' '));
}

/// A list of the dialog.
struct List {
    Names Rows;
    int Selected = -1;

    std::string TakeOut(int row) {
        std::string taken = Rows.at(static_cast<std::size_t>(row));
        Rows.erase(Rows.begin() + row);
        return taken;
    }
    void Drag(int target) {
        if (Selected >= 0 && Selected != target) {
            const std::string moved = TakeOut(Selected);
            Selected = target < Selected ? target : target - 1;
            Rows.insert(Rows.begin() + Selected, moved);
        }
    }
};

/// What the dialog must show, kept as plainly as can be.
struct DialogModel {
    List Downs;
    List Ups;  ///< with the marks of the categories
    std::string Current;  ///< the drill-down variable in focus; it may have left the list
    std::set<std::string> Bounded;  ///< variables with boundaries of the user
    bool StandAlone = false;
    bool Reviews = false;
    std::map<DocumentKey, const ResultDocument*> Documents;

    [[nodiscard]] bool HasCurrent() const { return std::ranges::count(Downs.Rows, Current) > 0; }
    void Unselect() { Downs.Selected = Ups.Selected = -1; }

    void Down(const std::string& category) {
        std::erase(Downs.Rows, Current);
        Ups.Rows.insert(Ups.Rows.begin(), Current + " (" + category + ")");
        Current = Downs.Rows.empty() ? "" : Downs.Rows.front();
        Unselect();
    }
    void Up() {
        Downs.Rows.insert(Downs.Rows.begin(), NameIn(Ups.TakeOut(Ups.Selected)));
        Unselect();
    }

    /// How many documents a button makes now.
    [[nodiscard]] int OutputsOf(int button) const {
        return button == SummaryButton       ? static_cast<int>(!Ups.Rows.empty())
               : button == FrequenciesButton ? static_cast<int>(Downs.Rows.size())
               : Reviews                     ? 5
                                             : 0;
    }
    /// An update keeps those documents that are still made.
    void Update() {
        std::erase_if(Documents, [this](const auto& entry) {
            return StandAlone && entry.first.second > OutputsOf(entry.first.first);
        });
    }
};

}  // namespace dialogtest
