#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace quillara {

/// The fields of some records that follow one another, each of as many fields as there are variables.
struct FieldRun {
    std::size_t Variables = 0;
    std::vector<std::string_view> Fields;  ///< record by record
    std::vector<std::size_t> Places;  ///< where in the text the records begin

    [[nodiscard]] std::size_t Records() const { return Places.size(); }
    [[nodiscard]] std::string_view At(std::size_t record, std::size_t variable) const {
        return Fields[record * Variables + variable];
    }
    void Clear() {
        Fields.clear();
        Places.clear();
    }
};

}  // namespace quillara
