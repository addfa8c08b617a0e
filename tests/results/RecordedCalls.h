#pragma once

#include <optional>
#include <string>

namespace drilltest {

/// The calls by which results were handed to the host since the last time, with all their arguments, in order; a group
/// of arguments a line.
std::string TakeCalls();

/// What the host answers from now on in place of its own.
struct HostAnswers {
    static inline std::optional<short> Scatterplots;  ///< to a scatterplot matrix, which isn't made then
    static inline int WritesUntilRefusal = 0;  ///< the write into a new table that is refused; 0: none
    static inline double DataShift = 0.0;  ///< what is added to all values read as data
    static inline int TranslatedText = 0;  ///< id of the text in place of which "Translated" stands; 0: none
};

}  // namespace drilltest
