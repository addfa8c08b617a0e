#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "workbench/recording/ShownCategorization.h"

class CAnalysisModelessDialog;

namespace quillara {

/// How the categorization of the current variable differs between a session and the script that is written of it. What
/// is typed on the page is written when it is stored; one stored by a command that leaves no line is written later.
class PendingCategorization {
  public:
    using Lines = std::vector<std::string>;
    /// What the next line does: stores the page, and reads the cases or not.
    enum class Storing : std::uint8_t { Alone, AndReading };

    /// The dialog that the script is written of.
    void Watch(CAnalysisModelessDialog& dialog) { Dialog = &dialog; }

    /// Whether a click has stored a page of a variable that isn't written yet.
    [[nodiscard]] bool HasClickOf(const std::string& variable) const;
    /// Whether storing the page would change something that the script hasn't.
    [[nodiscard]] bool IsNeeded(const ShownCategorization& page) const;

    // Lines that are written

    /// Makes the page of the script look so for a variable; the next line of the script stores it.
    [[nodiscard]] Lines TakePage(const ShownCategorization& page, const std::string& variable, Storing next);
    /// What the session has stored and the script not.
    [[nodiscard]] Lines TakeStored(const std::string& variable);
    /// Makes a variable the current one of the script.
    [[nodiscard]] std::string TakeVariable(const std::string& variable);
    /// The same only when it isn't yet; a session without a current variable has had none since the script had none.
    [[nodiscard]] Lines TakeVariableIfOther(const std::string& variable);
    /// Clicks a variable in the drill-down list.
    [[nodiscard]] Lines TakeRowClick(const std::string& variable);
    /// The same by the place of its row.
    [[nodiscard]] Lines TakeRowClick(int row);

    /// What clicks in the list have stored and isn't written yet.
    [[nodiscard]] Lines TakeListClicks();
    /// The same before a step down on a variable whose page looks so. What was stored of that one is what the session
    /// has and the script not, unless something else has come to it since.
    [[nodiscard]] Lines TakeListClicksBefore(const std::string& variable, const ShownCategorization& page);

    /// Whether the lines of the page that were taken last have stored it themselves.
    [[nodiscard]] bool HasStored() const { return IsStored; }

    // What happens

    /// A click on a row of the drill-down list has stored a page that the script needs. It is written with the step
    /// when its variable is drilled next, else by clicks.
    void StoreByClick(const ShownCategorization& page, const std::string& variable, int row);
    /// The session has stored a page without a line.
    void Store(const ShownCategorization& page);
    /// The user has given boundaries, which were stored with the page.
    void TakeBoundaries(std::string typed, const std::string& read, const ShownCategorization& page);
    /// Session and script show and have the same again.
    void Settle(const ShownCategorization& page);
    /// Whether the categories that a script finds of a variable may be others once they are read anew.
    [[nodiscard]] bool AreUnread(const std::string& variable) const { return AllUnread || Unread.contains(variable); }
    /// What counts in the cases has changed.
    void Unsettle() { AllUnread = true; }
    /// The script has read all categories.
    void Read();

    /// The variable that is the current one in the script.
    void SetVariable(std::string variable) { Variable = std::move(variable); }

  private:
    struct Boundaries {
        std::string Typed;
        std::string Member;  ///< as the member takes them; empty: it would take other numbers
    };

    /// A page that a click in the list has stored.
    struct ListClick {
        std::string Variable;
        ShownCategorization Before;  ///< what the script shows of the variable
        std::optional<Boundaries> Given;  ///< stored with it
        Lines Written;  ///< the click with what goes before; they can stand anywhere
        std::string Current;  ///< the variable behind them
    };

    [[nodiscard]] int RowOf(const std::string& variable) const;
    [[nodiscard]] bool CanBeWritten(const ShownCategorization& page, Storing next) const;
    [[nodiscard]] Lines TakeBoundariesDialog(const std::string& variable);

    CAnalysisModelessDialog* Dialog = nullptr;
    ShownCategorization Shown;  // by the script, and what its variable has
    std::optional<ShownCategorization> Stored;  // what the session's variable has, if it is something else
    std::optional<Boundaries> Given;  // in the session and not in the script
    std::vector<ListClick> Clicks;  // of several variables
    std::string Variable;
    std::set<std::string> Unread;  // categorized in the script since it read the cases
    bool AllUnread = false;
    bool IsStored = false;  // what was taken last stores itself
};

}  // namespace quillara
