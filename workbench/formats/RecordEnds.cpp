#include "workbench/formats/RecordEnds.h"

#include <algorithm>
#include <array>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace quillara {
namespace {

#ifdef __SSE2__
/// 16 bytes of text.
class Bytes {
  public:
    static constexpr std::size_t Width = 16;

    explicit Bytes(const char* text) : Loaded(_mm_loadu_si128(reinterpret_cast<const __m128i*>(text))) {}

    /// A bit for each byte that is one of the characters.
    template <typename... Characters>
    [[nodiscard]] std::uint64_t Find(Characters... characters) const {
        const __m128i found = (_mm_cmpeq_epi8(Loaded, _mm_set1_epi8(characters)) | ...);
        return static_cast<std::uint64_t>(static_cast<unsigned>(_mm_movemask_epi8(found)));
    }

  private:
    __m128i Loaded;
};
#else
/// One byte of text.
class Bytes {
  public:
    static constexpr std::size_t Width = 1;

    explicit Bytes(const char* text) : Loaded(*text) {}

    template <typename... Characters>
    [[nodiscard]] std::uint64_t Find(Characters... characters) const {
        return ((Loaded == characters) || ...) ? 1 : 0;
    }

  private:
    char Loaded;
};
#endif

}  // namespace

void RecordEnds::Load(std::size_t place) {
    std::array<char, Width> lastBytes{};
    const std::size_t length = std::min(Width, Text.size() - place);
    const char* text = Text.data() + place;
    if (length < Width) {
        std::copy_n(text, length, lastBytes.data());
        text = lastBytes.data();
    }
    Begin = place;
    Loaded = {};
    for (std::size_t i = 0; i < Width; i += Bytes::Width) {
        const Bytes bytes(text + i);
        Loaded.Ends |= bytes.Find(Ends[0], Ends[1], Ends[2]) << i;
        Loaded.Quotes |= bytes.Find('"') << i;
    }
    if (length < Width) {
        const std::uint64_t within = (std::uint64_t{1} << length) - 1;
        Loaded.Ends &= within;
        Loaded.Quotes &= within;
    }
}

}  // namespace quillara
