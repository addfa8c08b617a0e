#include "workbench/formats/XmlReader.h"

#include <expat.h>

#include <exception>
#include <memory>
#include <new>

namespace quillara {
namespace {

struct ParserFreer {
    void operator()(XML_ParserStruct* parser) const { XML_ParserFree(parser); }
};

std::string_view WithoutPrefix(std::string_view name) {
    return name.substr(name.rfind(':') + 1);
}

/// Hands the parts of one document on. No exception leaves through the parser, which is in C.
class XmlParsing {
  public:
    explicit XmlParsing(XmlTaker& taker) : Taker(taker), Parser(XML_ParserCreate(nullptr)) {
        if (Parser == nullptr) {
            throw std::bad_alloc();
        }
        XML_SetUserData(Parser.get(), this);
        XML_SetElementHandler(Parser.get(), TakeBegin, TakeEnd);
        XML_SetCharacterDataHandler(Parser.get(), TakeText);
        XML_SetStartDoctypeDeclHandler(Parser.get(), RefuseDeclarations);
    }

    /// False when the document isn't well formed.
    [[nodiscard]] bool Take(std::string_view piece, bool isLast) {
        const XML_Status status =
            XML_Parse(Parser.get(), piece.data(), static_cast<int>(piece.size()), isLast ? XML_TRUE : XML_FALSE);
        if (Failure) {
            std::rethrow_exception(Failure);
        }
        return status != XML_STATUS_ERROR;
    }

  private:
    template <typename Call>
    static void Guarded(void* parsing, Call call) noexcept {
        auto& self = *static_cast<XmlParsing*>(parsing);
        if (self.Failure) {
            return;
        }
        try {
            call(self.Taker);
        } catch (...) {
            self.Failure = std::current_exception();
            XML_StopParser(self.Parser.get(), XML_FALSE);
        }
    }

    static void TakeBegin(void* parsing, const char* name, const char** attributes) noexcept {
        Guarded(parsing, [&](XmlTaker& taker) { taker.Begin(WithoutPrefix(name), XmlAttributes(attributes)); });
    }
    static void TakeEnd(void* parsing, const char* name) noexcept {
        Guarded(parsing, [&](XmlTaker& taker) { taker.End(WithoutPrefix(name)); });
    }
    static void TakeText(void* parsing, const char* text, int length) noexcept {
        Guarded(parsing, [&](XmlTaker& taker) { taker.Text({text, static_cast<std::size_t>(length)}); });
    }
    static void RefuseDeclarations(void* parsing, const char* /*name*/, const char* /*system*/,
                                   const char* /*publicName*/, int /*hasSubset*/) noexcept {
        XML_StopParser(static_cast<XmlParsing*>(parsing)->Parser.get(), XML_FALSE);
    }

    XmlTaker& Taker;
    std::unique_ptr<XML_ParserStruct, ParserFreer> Parser;
    std::exception_ptr Failure;
};

}  // namespace

std::string_view XmlAttributes::operator[](std::string_view name) const {
    for (const char* const* pair = Pairs; *pair != nullptr; pair += 2) {
        if (name == pair[0]) {
            return pair[1];
        }
    }
    return {};
}

std::string_view XmlAttributes::Prefixed(std::string_view name) const {
    for (const char* const* pair = Pairs; *pair != nullptr; pair += 2) {
        const std::string_view found = pair[0];
        if (found.ends_with(name) && found.size() > name.size() && found[found.size() - name.size() - 1] == ':') {
            return pair[1];
        }
    }
    return {};
}

void ReadXml(const ZipArchive& archive, const std::string& entry, WorkMonitor& monitor, XmlTaker& taker) {
    XmlParsing parsing(taker);
    archive.Read(entry, monitor, [&](std::string_view piece) {
        if (!parsing.Take(piece, false)) {
            archive.RefuseDamaged();
        }
    });
    if (!parsing.Take({}, true)) {
        archive.RefuseDamaged();
    }
}

}  // namespace quillara
