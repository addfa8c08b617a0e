#pragma once

namespace quillara {

/// What the program tells the one who started it. Scripts rely on the numbers; they never change.
enum ExitStatus : int {
    DoneStatus = 0,
    NotDoneStatus = 1,  ///< the data or the drill could not be done as asked
    WrongUsageStatus = 2,
    InterruptedStatus = 130,
};

}  // namespace quillara
