#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quillara {

/// Finds what ends an unquoted field, the separator or a line break, and quotes, 64 bytes at a time.
class RecordEnds {
  public:
    /// The text must outlive the finder. Each of three characters is an end; they may be the same.
    RecordEnds(std::string_view text, const std::array<char, 3>& ends) : Text(text), Ends(ends), Begin(text.size()) {}

    /// The first end at or behind a place; the size of the text when there is none.
    std::size_t EndFrom(std::size_t place) { return From(place, &Block::Ends); }
    /// The same of quotes.
    std::size_t QuoteFrom(std::size_t place) { return From(place, &Block::Quotes); }

  private:
    /// What stands in 64 bytes, a bit a byte, the first one lowest.
    struct Block {
        std::uint64_t Ends = 0;
        std::uint64_t Quotes = 0;
    };

    std::size_t From(std::size_t place, std::uint64_t Block::*kind) {
        while (place < Text.size()) {
            if (place - Begin >= Width) {
                Load(place);
            }
            const std::uint64_t left = (Loaded.*kind) >> (place - Begin);
            if (left != 0) {
                return place + static_cast<std::size_t>(std::countr_zero(left));
            }
            place = Begin + Width;
        }
        return Text.size();
    }
    void Load(std::size_t place);

    static constexpr std::size_t Width = 64;

    std::string_view Text;
    std::array<char, 3> Ends;
    std::size_t Begin;  // of the block that is loaded; of none, the end of the text
    Block Loaded;
};

}  // namespace quillara
