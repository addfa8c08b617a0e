#include "workbench/formats/RecordScanner.h"

#include <algorithm>
#include <map>

namespace quillara {
namespace {

constexpr char Quote = '"';
constexpr std::string_view Blanks = " \t";
constexpr std::size_t RecordsToJudgeBy = 1000;

bool IsLineBreak(char character) {
    return character == '\n' || character == '\r';
}

struct Agreement {
    std::size_t Records = 0;
    std::size_t Agreeing = 0;  // records with the most frequent number of fields above one
};

Agreement AgreementOf(std::string_view text, char separator) {
    RecordScanner scanner(text, {.Separator = separator});
    std::vector<std::string_view> fields;
    std::map<std::size_t, std::size_t> recordsByFields;
    Agreement agreement;
    while (agreement.Records < RecordsToJudgeBy && scanner.Next(fields)) {
        if (scanner.IsEmpty()) {
            continue;
        }
        ++agreement.Records;
        if (fields.size() > 1) {
            agreement.Agreeing = std::max(agreement.Agreeing, ++recordsByFields[fields.size()]);
        }
    }
    return agreement;
}

}  // namespace

RecordScanner::RecordScanner(std::string_view text, RecordRules rules) : Text(text), Rules(rules) {}

bool RecordScanner::Next(std::vector<std::string_view>& fields) {
    fields.clear();
    if (Place >= Text.size()) {
        return false;
    }
    const std::size_t begin = Place;
    RecordLine = NextLine;
    do {
        fields.push_back(ReadField());
    } while (!PassRecordEnd());
    RecordIsEmpty = fields.size() == 1 && fields[0].empty() && Text[begin] != Quote;
    return true;
}

std::string_view RecordScanner::ReadField() {
    if (Rules.BlanksBeforeQuotes) {
        const std::size_t next = std::min(Text.find_first_not_of(Blanks, Place), Text.size());
        Place = next < Text.size() && Text[next] == Quote ? next : Place;
    }
    const bool isQuoted = Place < Text.size() && Text[Place] == Quote;
    return WithoutBlanks(isQuoted ? ReadQuoted() : ReadUnquoted());
}

bool RecordScanner::EndsUnquoted(char character) const {
    return character == Rules.Separator || (Rules.LineBreaksEndRecords && IsLineBreak(character));
}

std::string_view RecordScanner::ReadUnquoted() {
    const std::size_t begin = Place;
    while (Place < Text.size() && !EndsUnquoted(Text[Place])) {
        ++Place;
    }
    return Text.substr(begin, Place - begin);
}

std::string_view RecordScanner::ReadToQuote() {
    const std::size_t begin = Place;
    Place = std::min(Text.find(Quote, Place), Text.size());
    QuoteIsOpen = Place == Text.size();
    const std::string_view piece = Text.substr(begin, Place - begin);
    Place += QuoteIsOpen ? 0 : 1;
    NextLine += CountLineBreaks(piece);
    return piece;
}

std::string_view RecordScanner::ReadQuoted() {
    ++Place;
    std::string_view first = ReadToQuote();
    if (Place == Text.size() || EndsUnquoted(Text[Place])) {
        return first;
    }
    std::string& field = Joined.emplace_back(first);
    while (Place < Text.size() && Text[Place] == Quote) {
        ++Place;
        field += Quote;
        field += ReadToQuote();
    }
    field += ReadUnquoted();
    return field;
}

bool RecordScanner::PassRecordEnd() {
    if (Place == Text.size()) {
        return true;
    }
    const char character = Text[Place++];
    if (character == Rules.Separator) {
        return false;
    }
    const bool isPair = character == '\r' && Place < Text.size() && Text[Place] == '\n';
    Place += isPair ? 1 : 0;
    ++NextLine;
    return true;
}

std::string_view WithoutBlanks(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(Blanks);
    if (begin == std::string_view::npos) {
        return {};
    }
    return text.substr(begin, text.find_last_not_of(Blanks) - begin + 1);
}

std::size_t CountLineBreaks(std::string_view text) {
    std::size_t breaks = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isPair = text[i] == '\n' && i > 0 && text[i - 1] == '\r';
        breaks += IsLineBreak(text[i]) && !isPair ? 1 : 0;
    }
    return breaks;
}

std::optional<char> FindSeparator(std::string_view text, std::string_view candidates) {
    std::optional<char> best;
    std::size_t mostAgreeing = 0;
    for (const char candidate : candidates) {
        const Agreement agreement = AgreementOf(text, candidate);
        if (2 * agreement.Agreeing > agreement.Records && agreement.Agreeing > mostAgreeing) {
            best = candidate;
            mostAgreeing = agreement.Agreeing;
        }
    }
    return best;
}

}  // namespace quillara
