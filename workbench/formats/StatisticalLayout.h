#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "workbench/data/DataTable.h"
#include "workbench/data/MissingReasons.h"
#include "workbench/formats/DisplayFormats.h"
#include "workbench/formats/FileNotes.h"
#include "workbench/formats/StatisticalRules.h"

namespace quillara {

/// One variable of a statistical file to be written.
struct FileColumn {
    const Variable* Content = nullptr;  ///< what the column holds and is read back as
    std::string Name;  ///< in the file
    std::string LongName;
    DisplayFormat Format;  ///< of numbers
    std::size_t TextBytes = 0;  ///< of the longest text, at least 1; 0 for numbers
    std::vector<std::pair<double, std::string>> Labels;  ///< of values in the units of Content
    const MissingReasons* Reasons = nullptr;  ///< of its missing data, in the same units; null: none are kept
    std::vector<std::string> ReasonLabels;  ///< one for each reason; may be empty

    /// A value as it stands in the file. Throws DataError naming the variable when a date or time isn't one there.
    [[nodiscard]] double NumberInFile(double value) const;
};

/// A table as a statistical file holds it.
struct StatisticalLayout {
    std::string Header;
    std::vector<FileColumn> Columns;
    std::optional<std::size_t> Weight;  ///< index of the column that the file declares
    std::vector<FileNote> Notes;
    bool HasCaseNames = false;  ///< the first column holds the names of the cases
    std::deque<Variable> Made;  ///< columns that the table holds in another form
    std::vector<std::string> Losses;  ///< what the format can't keep, a line per variable
};

/// Lays a table out for a format. The layout refers to the table. Names of cases become a text variable; where texts
/// have no value labels, a text variable with labels of its own becomes numbers, labelled with what each was shown as.
/// Texts too long for a field stand there cut, and whole in the notes. Dates with times become what the file can tell.
/// Reasons of missing data that the format has no room for are lost.
/// Throws DataError naming the variable when it holds a text that neither has room for: too long, empty without being
/// missing, with blanks at its end or with a null byte.
[[nodiscard]] StatisticalLayout LayOut(const DataTable& table, const StatisticalRules& rules);

}  // namespace quillara
