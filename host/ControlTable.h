#pragma once

#include <cstdint>

/// What a control is to scripts and recorders.
enum ControlClass : std::int32_t {
    ValueControl = 0,
    VariablesButton = 1,  ///< opens the variable selection
    SpreadsheetButton = 4,
    GraphButton = 6,
    DataButton = 20,  ///< saves data
};

/// What a script does with a control.
enum ControlMode : std::int32_t { Acts = 1, HasValue = 2 };

/// What a control's value is.
enum ControlValueType : std::int32_t { IntegerValue = 1, RealValue = 2, TextValue = 5, MethodValue = 6 };

/// A control of a dialog in terms of automation. A row with the id 0 ends a table.
struct ControlRow {
    std::int32_t Control;
    std::int32_t Class;
    std::int32_t Mode;
    std::int32_t Value;
    std::int32_t RecordingId;  ///< the host's number of the member that stands for it
    std::int32_t IsProperty;
    std::int32_t Reserved[3];
};

static_assert(sizeof(ControlRow) == 36);
