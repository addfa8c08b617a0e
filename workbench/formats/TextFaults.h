#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "workbench/formats/ColumnGatherer.h"
#include "workbench/formats/DelimitedText.h"
#include "workbench/formats/TextLayout.h"
#include "workbench/formats/WorkCrew.h"

namespace quillara {

inline constexpr std::string_view OpenQuote = "a quote is opened and never closed";

/// The fields of a record that has too many or too few.
struct FieldCounts {
    std::size_t Fields = 0;
    std::size_t Expected = 0;
    std::size_t AboveNames = 0;  ///< records that seem to stand above the names; 0: none, or nobody knows
};

/// What is wrong with a record of so many fields, and what to do.
[[nodiscard]] std::string WrongCount(const FieldCounts& counts, std::optional<char> separator,
                                     const RecordOptions& options);

/// Throws DataError for a problem on a line of a file.
[[noreturn]] void FailAtLine(const std::string& path, std::size_t line, const std::string& problem);

/// Whether a character may separate fields.
[[nodiscard]] bool CanSeparate(char character);
/// Throws UsageError for one that can't.
[[noreturn]] void RefuseSeparator();

/// Tells what is wrong with a text that is read in parts. That a text isn't one comes before all else.
class TextFaults {
  public:
    /// Source, path and crew must outlive this. `path` is what errors call the text.
    TextFaults(const TextSource& source, const std::string& path, RecordOptions options, const WorkCrew& crew)
        : Source(source), Path(path), Options(std::move(options)), Crew(crew) {}

    /// Throws DataError when the text holds a null byte.
    void RequireNoNull() const;
    /// Throws that error.
    [[noreturn]] void FailForNull() const;

    /// Throws DataError for a record, naming its line.
    [[noreturn]] void Fail(const RecordFault& fault, const TextLayout& layout) const;
    /// Throws DataError for a number of a variable (numbered from 0) that is too large, naming its line.
    [[noreturn]] void FailForTooLarge(const ColumnGatherer::TooLarge& number, std::size_t variable,
                                      const TextLayout& layout) const;

  private:
    [[nodiscard]] std::size_t LineOf(std::size_t place) const;
    [[nodiscard]] std::size_t LineBreaksBefore(const ColumnGatherer::TooLarge& number, std::size_t variable,
                                               const TextLayout& layout) const;

    const TextSource& Source;
    const std::string& Path;
    RecordOptions Options;
    const WorkCrew& Crew;
};

}  // namespace quillara
