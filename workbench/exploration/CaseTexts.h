#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "workbench/data/DataTable.h"
#include "workbench/exploration/CaseArrangement.h"

namespace quillara {

/// How the values of a grid are written.
enum class ValueWriting { Labels, Codes };

/// What a field of the grid of cases shows.
struct FieldText {
    std::string Text;
    bool IsMissing = false;  ///< the case has no value; the text says which missing value it has, if one
};

/// The field of a case, its row counted from 0: a label or, of a value without one and of codes, the value with all of
/// its digits, a day or a time; of a text always itself or its label.
[[nodiscard]] FieldText TextOfField(const Variable& variable, std::size_t row, ValueWriting writing);

/// What is looked for among the fields.
struct FieldSearch {
    std::string Text;  ///< a part of what a field shows, letters in any case
    ValueWriting Writing = ValueWriting::Labels;
    std::size_t Place = 0;  ///< where the search begins: the field behind this one, or before it
    std::size_t Variable = 0;
    bool IsBackwards = false;
};

struct FoundField {
    std::size_t Place = 0;
    std::size_t Variable = 0;
};

/// The next field with a text, line by line and round from the last one to the first; nothing when there is none, or
/// when `cancelled`, which is asked now and then, says so.
[[nodiscard]] std::optional<FoundField> FindField(const DataTable& table, const CaseArrangement& arrangement,
                                                  const FieldSearch& search, const std::function<bool()>& cancelled);

/// Some fields as lines with tabs between, as spreadsheets take them: the names of the variables, then a line a case.
/// A text with a tab or line break is put in quotes. `places` and `variables` are in the order to be copied in.
[[nodiscard]] std::string FieldsAsText(const DataTable& table, const CaseArrangement& arrangement,
                                       const std::vector<std::size_t>& places,
                                       const std::vector<std::size_t>& variables, ValueWriting writing);

}  // namespace quillara
