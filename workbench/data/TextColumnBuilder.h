#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/data/ColumnBuilder.h"
#include "workbench/data/DataTable.h"

namespace quillara {

/// Puts the column of a text variable together text by text. A text is kept once, however many cases have it.
class TextColumnBuilder {
  public:
    TextColumnBuilder() : Slots(FirstSlots) {}

    /// About as many cases are to come in all.
    void Reserve(std::size_t rows) { Rows.Reserve(rows); }
    void Append(std::string_view text) { Rows.Append(CodeOf(text)); }
    /// A case without a text.
    void AppendMissing() { Rows.Append(MissingCode); }
    /// The cases of another builder behind those of this one.
    void AppendPart(const TextColumnBuilder& part);
    [[nodiscard]] std::size_t Size() const { return Rows.Size(); }

    /// Gives a variable what EncodeTexts gives it; the builder is empty then.
    void Finish(Variable& variable);

  private:
    static constexpr std::size_t FirstSlots = 64;
    static constexpr std::uint32_t MissingCode = 0;  // the texts have 1, 2, ... as they come

    struct Slot {
        std::size_t Hash = 0;
        std::uint32_t Code = MissingCode;  // MissingCode: free
    };

    std::uint32_t CodeOf(std::string_view text);
    Slot& FreeOrKnown(std::string_view text, std::size_t hash);
    void Grow();
    [[nodiscard]] std::vector<double> SortTexts(Variable& variable);

    std::vector<std::string> Texts;  // by their code less 1
    std::vector<Slot> Slots;  // a power of two, at most half of them in use
    CodeRows Rows;
};

}  // namespace quillara
