#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "workbench/data/DataTable.h"

namespace quillara {

/// What a selection formula means for a table.
struct SelectionOutcome {
    std::string Formula;
    std::int32_t Selected = 0;  ///< cases, when the formula can be read
    std::string Fault;  ///< why it can't; empty: it can
    std::optional<std::size_t> Place;  ///< the byte of the formula that the fault is at, where that is known

    /// For people: "1,024 of 2,000 cases are selected", or the fault.
    [[nodiscard]] std::string Text(std::int32_t cases) const;
};

/// Reads a formula and counts the cases that it selects.
[[nodiscard]] SelectionOutcome OutcomeOf(const DataTable& table, const std::string& formula);

/// Works out what formulas mean on a thread of its own, while they are being typed: of those that are asked for in the
/// meantime only the last is worked out.
class SelectionPreview {
  public:
    /// The table outlives it. `ready` is called from its thread whenever an outcome is there.
    SelectionPreview(const DataTable& table, std::function<void()> ready);
    /// Waits for the formula that is being worked out.
    ~SelectionPreview();
    SelectionPreview(const SelectionPreview&) = delete;
    SelectionPreview& operator=(const SelectionPreview&) = delete;

    void Ask(std::string formula);
    /// The outcome for the formula that was asked for last, once; nothing while it isn't there.
    [[nodiscard]] std::optional<SelectionOutcome> Take();

  private:
    void Work();

    const DataTable& Table;
    const std::function<void()> Ready;
    std::mutex Guard;
    std::condition_variable Called;
    std::optional<std::string> Asked;
    std::optional<SelectionOutcome> Done;
    bool IsEnding = false;
    std::thread Worker;
};

}  // namespace quillara
