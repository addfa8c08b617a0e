#include "workbench/formats/TextLayout.h"

#include <algorithm>

namespace quillara {
namespace {

constexpr std::size_t SampleBytes = 256 << 10;

// A part takes its worker some tenths of a millisecond. Columns of short pieces would take more memory than their
// values.
constexpr std::size_t FewestBytesOfPart = 32 << 10;
constexpr std::size_t UsualBytesOfPart = 256 << 10;
constexpr std::size_t CasesOfPart = 1024;
constexpr std::size_t PartsOfWorker = 4;

/// About how many bytes a record has.
std::size_t BytesOfRecord(const TextSource& source, std::size_t begin, std::optional<char> separator) {
    const std::string sample = source.Piece(begin, SampleBytes);
    RecordScanner scanner(sample, {.Separator = separator});
    std::vector<std::string_view> fields;
    std::size_t records = 0;
    while (records < CasesOfPart && scanner.Next(fields)) {
        ++records;
    }
    return records == 0 ? 1 : scanner.BytesRead() / records;
}

}  // namespace

TextRange TextLayout::RecordsOf(const TextSource& source, std::size_t part) const {
    const TextRange& range = Parts[part];
    // The first part begins with a record.
    return part == 0 ? range : TextRange{FirstRecordIn(source, range, Separator, States[part]), range.End};
}

std::optional<char> SeparatorOf(const TextSource& source, std::size_t begin, std::string_view candidates) {
    for (std::size_t bytes = SampleBytes;; bytes *= 8) {
        const std::string sample = source.Piece(begin, bytes);
        const FoundSeparator found = FindSeparator(sample, candidates);
        if (found.IsCertain || sample.size() < bytes) {
            return found.Separator;
        }
    }
}

void ReadFirstRecord(const TextSource& source, TextLayout& layout) {
    std::string window;
    PartRecords records(source, {layout.Begin, source.Size()}, {.Separator = layout.Separator, .IsUtf8 = layout.IsUtf8},
                        window);
    std::vector<std::string_view> fields;
    for (layout.RecordsToFirst = 1; records.Next(fields); ++layout.RecordsToFirst) {
        if (!records.IsEmpty()) {
            records.CheckRead();
            layout.FirstFields.assign(fields.begin(), fields.end());
            layout.BeginOfFirst = records.Begin();
            layout.BehindFirst = records.End();
            if (records.EndsInQuotes()) {
                layout.FirstFault = {.Place = records.Begin()};
            }
            return;
        }
    }
}

std::size_t BytesOfPart(const TextSource& source, std::size_t begin, std::optional<char> separator,
                        std::size_t workers) {
    const std::size_t share = std::max((source.Size() - begin) / (PartsOfWorker * workers) + 1, FewestBytesOfPart);
    const std::size_t ofManyCases = CasesOfPart * BytesOfRecord(source, begin, separator);
    return std::min(share, std::max(ofManyCases, UsualBytesOfPart));
}

void CutIntoParts(const TextSource& source, std::size_t begin, std::size_t bytesOfPart, TextLayout& layout) {
    layout.Parts.clear();
    for (std::size_t place = begin; place < source.Size(); place += bytesOfPart) {
        layout.Parts.push_back({place, std::min(place + bytesOfPart, source.Size())});
    }
    layout.States = StatesOfParts(source, layout.Parts, layout.Separator,
                                  layout.StatesAreGuessed ? Following::Ends : Following::All);
}

}  // namespace quillara
