#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "workbench/formats/ReadOptions.h"

namespace quillara {

/// The texts that mean missing data when nobody names others.
[[nodiscard]] std::vector<std::string> DefaultMissingTexts();

/// How the fields of delimited text are to be understood.
class FieldRules {
  public:
    explicit FieldRules(const ReadOptions& options);

    [[nodiscard]] char Decimal() const { return Point; }
    void TakeDecimal(char decimal) { Point = decimal; }
    /// Whether fields are Windows-1252 as they stand, and not UTF-8.
    [[nodiscard]] bool IsWindows1252() const { return FieldsAreWindows1252; }
    void TakeForWindows1252() { FieldsAreWindows1252 = true; }

    /// A field in UTF-8 without marks of keys.
    [[nodiscard]] std::string TextOf(std::string_view field) const;
    /// Whether a field is that text already.
    [[nodiscard]] bool StandsAsItIs(std::string_view field) const;
    [[nodiscard]] bool IsMissing(std::string_view field) const;
    /// Whether a field that stands for missing data may be a number or date.
    [[nodiscard]] bool ValuesMayBeMissing() const { return MissingTextsMayBeValues; }

  private:
    char Point;
    bool FieldsAreWindows1252 = false;
    bool MissingTextsMayBeValues = false;
    std::vector<std::string> MissingTexts;
};

}  // namespace quillara
