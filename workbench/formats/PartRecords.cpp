#include "workbench/formats/PartRecords.h"

#include <algorithm>

#include "workbench/formats/Encoding.h"
#include "workbench/numbers/ShortDecimal.h"

namespace quillara {
namespace {

constexpr std::size_t LargestWindow = 512 << 10;
constexpr std::size_t BytesBehindPart = 8 << 10;  // where the last record ends, mostly
constexpr std::size_t MostBehindGuess = 8 << 20;

/// Throws when a text is not what it is taken for.
void CheckText(std::string_view text, bool isUtf8) {
    if (text.find('\0') != std::string_view::npos) {
        throw UnexpectedBytes(UnexpectedBytes::Kind::Null);
    }
    if (isUtf8 && !IsUtf8(text)) {
        throw UnexpectedBytes(UnexpectedBytes::Kind::NotUtf8);
    }
}

}  // namespace

PartRecords::PartRecords(const TextSource& source, const TextRange& records, const Rules& rules, std::string& window)
    : Source(source),
      How(rules),
      Window(window),
      WindowBegin(records.Begin),
      WindowBytes(std::min(records.End - records.Begin + BytesBehindPart, LargestWindow)),
      NextBegin(records.Begin),
      PartEnd(records.End) {}

bool PartRecords::Next(std::vector<std::string_view>& fields) {
    fields.clear();
    while (!Append(fields)) {
        if (!Load()) {
            return false;
        }
    }
    return true;
}

bool PartRecords::Load() {
    if (NextBegin < PartEnd) {
        LoadFromNext();
        return true;
    }
    CheckRead();
    return false;
}

bool PartRecords::Append(std::vector<std::string_view>& fields) {
    if (!Scanner || NextBegin >= PartEnd) {
        return false;
    }
    const std::size_t before = fields.size();
    const bool hasRecord = Scanner->Append(fields);
    // A record at the window's end may go on behind it, if only with the other half of its line break.
    const bool isWhole = hasRecord && (Scanner->BytesRead() < TextBytes || WindowBegin + TextBytes == Source.Size());
    if (!isWhole) {
        fields.resize(before);
        return false;
    }
    NextBegin = WindowBegin + Scanner->BytesRead();
    return true;
}

void PartRecords::LoadFromNext() {
    CheckRead();
    // A record that is longer than the window wants a longer one.
    if (Scanner && NextBegin == WindowBegin) {
        WindowBytes *= 2;
    }
    if (How.IsGuess && NextBegin + WindowBytes > PartEnd + MostBehindGuess) {
        throw UnexpectedBytes(UnexpectedBytes::Kind::NotAtRecord);
    }
    WindowBegin = NextBegin;
    TextBytes = std::min(WindowBytes, Source.Size() - WindowBegin);
    if (Window.size() < TextBytes + RoomBehindDecimal) {
        Window.resize(TextBytes + RoomBehindDecimal);
    }
    Source.Read(WindowBegin, TextBytes, Window.data());
    Scanner.emplace(Text(), RecordRules{.Separator = How.Separator});
}

void PartRecords::CheckRead() const {
    if (Scanner) {
        CheckText(Text().substr(0, NextBegin - WindowBegin), How.IsUtf8);
    }
}

}  // namespace quillara
