#include "workbench/formats/Encoding.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "workbench/data/Errors.h"
#include "workbench/data/LetterCase.h"

namespace quillara {
namespace {

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view ReplacementCharacter = "\xEF\xBF\xBD";

// The characters of bytes 0x80 to 0x9F.
constexpr std::array<std::uint16_t, 32> Windows1252 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

// The lead bytes of UTF-8, what follows them, and the range of the second byte that keeps the form well-formed.
struct LeadByte {
    unsigned char First, Last;
    std::size_t Followers;
    unsigned char SecondFirst, SecondLast;
};
// clang-format off
constexpr std::array<LeadByte, 8> LeadBytes = {{
    {0xC2, 0xDF, 1, 0x80, 0xBF},
    {0xE0, 0xE0, 2, 0xA0, 0xBF},
    {0xE1, 0xEC, 2, 0x80, 0xBF},
    {0xED, 0xED, 2, 0x80, 0x9F},
    {0xEE, 0xEF, 2, 0x80, 0xBF},
    {0xF0, 0xF0, 3, 0x90, 0xBF},
    {0xF1, 0xF3, 3, 0x80, 0xBF},
    {0xF4, 0xF4, 3, 0x80, 0x8F},
}};
// clang-format on

bool IsWithin(char character, unsigned char first, unsigned char last) {
    const auto byte = static_cast<unsigned char>(character);
    return first <= byte && byte <= last;
}

/// Bytes of the character at the front of a text that begins with no ASCII character; 0 when it is malformed.
std::size_t LengthOfCharacter(std::string_view text) {
    const auto lead = std::ranges::find_if(
        LeadBytes, [&](const LeadByte& candidate) { return IsWithin(text[0], candidate.First, candidate.Last); });
    if (lead == LeadBytes.end() || text.size() <= lead->Followers ||
        !IsWithin(text[1], lead->SecondFirst, lead->SecondLast)) {
        return 0;
    }
    const std::string_view rest = text.substr(2, lead->Followers - 1);
    const bool followed = std::ranges::all_of(rest, [](char byte) { return IsWithin(byte, 0x80, 0xBF); });
    return followed ? 1 + lead->Followers : 0;
}

/// How many ASCII characters a text begins with.
std::size_t AsciiBytesBefore(std::string_view text) {
    constexpr std::uint64_t highBits = 0x8080808080808080;
    constexpr std::size_t wordsOfBlock = 8;
    std::array<std::uint64_t, wordsOfBlock> block{};
    std::size_t place = 0;
    for (; place + sizeof(block) <= text.size(); place += sizeof(block)) {
        std::memcpy(block.data(), &text[place], sizeof(block));
        std::uint64_t bits = 0;
        for (const std::uint64_t word : block) {
            bits |= word;
        }
        if ((bits & highBits) != 0) {
            break;
        }
    }
    while (place < text.size() && IsWithin(text[place], 0x00, 0x7F)) {
        ++place;
    }
    return place;
}

void AppendCharacter(std::string& text, std::uint16_t character) {
    if (character < 0x80) {
        text += static_cast<char>(character);
    } else if (character < 0x800) {
        text += static_cast<char>(0xC0 | (character >> 6));
        text += static_cast<char>(0x80 | (character & 0x3F));
    } else {
        text += static_cast<char>(0xE0 | (character >> 12));
        text += static_cast<char>(0x80 | ((character >> 6) & 0x3F));
        text += static_cast<char>(0x80 | (character & 0x3F));
    }
}

std::string FromWindows1252(std::string_view bytes, WorkMonitor& monitor) {
    std::string text;
    text.reserve(bytes.size() + bytes.size() / 8);
    for (const char byte : bytes) {
        const auto code = static_cast<unsigned char>(byte);
        AppendCharacter(text, IsWithin(byte, 0x80, 0x9F) ? Windows1252[code - 0x80U] : code);
        monitor.Advance();
    }
    return text;
}

class Converter {
  public:
    explicit Converter(const std::string& from) : Handle(iconv_open("UTF-8", from.c_str())) {}
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;
    ~Converter() {
        if (IsOpen()) {
            iconv_close(Handle);
        }
    }

    [[nodiscard]] bool IsOpen() const { return Handle != reinterpret_cast<iconv_t>(-1); }

    /// Appends the whole of `bytes` to `text`; false when they are malformed.
    [[nodiscard]] bool Append(std::string& bytes, std::string& text, WorkMonitor& monitor) {
        char* input = bytes.data();
        std::size_t inputLeft = bytes.size();
        std::array<char, 1 << 16> piece{};
        while (inputLeft > 0) {
            char* output = piece.data();
            std::size_t outputLeft = piece.size();
            const bool done = iconv(Handle, &input, &inputLeft, &output, &outputLeft) != static_cast<std::size_t>(-1);
            const bool full = !done && errno == E2BIG;
            text.append(piece.data(), piece.size() - outputLeft);
            if (!done && !full) {
                return false;
            }
            monitor.Advance(piece.size() - outputLeft);
        }
        return true;
    }

  private:
    iconv_t Handle;
};

/// Whether the text began with the mark.
bool RemoveByteOrderMark(std::string& text) {
    const std::size_t bytes = BytesOfMark(text);
    text.erase(0, bytes);
    return bytes > 0;
}

/// As IsUtf8, piece by piece.
bool PiecesAreUtf8(std::string_view text, WorkMonitor& monitor) {
    constexpr std::size_t piece = 1 << 20;
    while (!text.empty()) {
        std::size_t end = std::min(piece, text.size());
        // No character is cut where the next byte doesn't continue it.
        while (end < text.size() && IsWithin(text[end], 0x80, 0xBF)) {
            ++end;
        }
        if (!IsUtf8(text.substr(0, end))) {
            return false;
        }
        text.remove_prefix(end);
        monitor.Advance(end);
    }
    return true;
}

}  // namespace

std::size_t BytesOfMark(std::string_view text) {
    return text.starts_with(ByteOrderMark) ? ByteOrderMark.size() : 0;
}

bool IsUtf8(std::string_view text) {
    while (true) {
        text.remove_prefix(AsciiBytesBefore(text));
        if (text.empty()) {
            return true;
        }
        const std::size_t length = LengthOfCharacter(text);
        if (length == 0) {
            return false;
        }
        text.remove_prefix(length);
    }
}

std::string ToUtf8(std::string text) {
    if (IsUtf8(text)) {
        return text;
    }
    return TextOfWindows1252(text);
}

std::string TextOfWindows1252(std::string_view bytes) {
    WorkMonitor monitor;
    return FromWindows1252(bytes, monitor);
}

std::string WithoutKeyMarks(std::string_view text) {
    std::string result;
    for (std::size_t mark = text.find(KeyMark); mark != std::string_view::npos; mark = text.find(KeyMark)) {
        result.append(text, 0, mark).append(ReplacementCharacter);
        text.remove_prefix(mark + 1);
    }
    return result.append(text);
}

std::string SystemEncodingName(const std::string& encoding) {
    std::string name = InCapitals(encoding);
    // The system would take more behind a slash as instructions, and an empty name as that of the user's language.
    if (name.empty() || name.find('/') != std::string::npos || !Converter(name).IsOpen()) {
        throw UsageError("The encoding \"" + encoding + "\" isn't known; utf-8, windows-1252 and latin1 are.");
    }
    return name;
}

std::string DecodeText(std::string bytes, const std::string& encoding, WorkMonitor& monitor) {
    const std::string name = encoding.empty() ? "" : SystemEncodingName(encoding);
    const bool isMarked = RemoveByteOrderMark(bytes);
    if ((isMarked || name.empty()) && PiecesAreUtf8(bytes, monitor)) {
        return bytes;
    }
    if (name.empty() || name == "WINDOWS-1252" || name == "CP1252") {
        return FromWindows1252(bytes, monitor);
    }
    std::string text;
    text.reserve(bytes.size() + bytes.size() / 8);
    if (!Converter(name).Append(bytes, text, monitor)) {
        throw DataError("The text isn't in the encoding " + encoding + ".");
    }
    RemoveByteOrderMark(text);  // of UTF-16
    return text;
}

}  // namespace quillara
