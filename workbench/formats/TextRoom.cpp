#include "workbench/formats/TextRoom.h"

namespace quillara {
namespace {

std::size_t EndOfCharacter(std::string_view text, std::size_t place) {
    do {
        ++place;
    } while (place < text.size() && (static_cast<unsigned char>(text[place]) & 0xC0) == 0x80);
    return place;
}

}  // namespace

std::string Fitted(std::string_view text, const TextRoom& room) {
    std::size_t length = 0;
    for (std::size_t characters = 0; characters < room.Characters && length < text.size(); ++characters) {
        const std::size_t end = EndOfCharacter(text, length);
        if (end > room.Bytes) {
            break;
        }
        length = end;
    }
    text = text.substr(0, length);
    return std::string(text.substr(0, text.find_last_not_of(' ') + 1));
}

}  // namespace quillara
