#pragma once

#include <string>
#include <string_view>

#include "workbench/formats/WorkMonitor.h"
#include "workbench/formats/ZipArchive.h"

namespace quillara {

/// The attributes of an element, by their names with prefixes as they stand.
class XmlAttributes {
  public:
    explicit XmlAttributes(const char* const* pairs) : Pairs(pairs) {}

    /// Empty for one that isn't there.
    [[nodiscard]] std::string_view operator[](std::string_view name) const;
    /// The attribute of this name behind whatever prefix.
    [[nodiscard]] std::string_view Prefixed(std::string_view name) const;

  private:
    const char* const* Pairs;  // name, value, name, value, ..., null
};

/// Takes the parts of an XML document in their order. Names of elements come without prefixes. Whatever it throws ends
/// the reading and is thrown by ReadXml.
class XmlTaker {
  public:
    virtual ~XmlTaker() = default;
    virtual void Begin(std::string_view element, const XmlAttributes& attributes) = 0;
    virtual void End(std::string_view element) = 0;
    /// Several for one text.
    virtual void Text(std::string_view text) = 0;
};

/// Reads a document of an archive. Throws DataError as ZipArchive does, also when it isn't well formed or declares
/// entities of its own, which may stand for texts of any size.
void ReadXml(const ZipArchive& archive, const std::string& entry, WorkMonitor& monitor, XmlTaker& taker);

}  // namespace quillara
