#include "workbench/formats/PartRecords.h"

#include <algorithm>

#include "workbench/formats/Encoding.h"

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
    while (NextBegin < PartEnd) {
        const bool hasRecord = Scanner && Scanner->Next(fields);
        // A record at the window's end may go on behind it, if only with the other half of its line break.
        const bool isWhole =
            hasRecord && (Scanner->BytesRead() < Window.size() || WindowBegin + Window.size() == Source.Size());
        if (isWhole) {
            NextBegin = WindowBegin + Scanner->BytesRead();
            return true;
        }
        LoadFromNext();
    }
    CheckRead();
    return false;
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
    Window.resize(std::min(WindowBytes, Source.Size() - WindowBegin));
    Source.Read(WindowBegin, Window.size(), Window.data());
    Scanner.emplace(Window, RecordRules{.Separator = How.Separator});
}

void PartRecords::CheckRead() const {
    if (Scanner) {
        CheckText(std::string_view(Window).substr(0, NextBegin - WindowBegin), How.IsUtf8);
    }
}

}  // namespace quillara
