#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/formats/DelimitedText.h"
#include "workbench/formats/RecordScanner.h"
#include "workbench/formats/WorkMonitor.h"

namespace quillara {

/// The records of a file of delimited text, all of as many fields as the first. Empty records are passed over, but
/// for those behind a first record of a single field: they count as an empty field.
class RecordReader {
  public:
    /// Reads the whole file into memory. The monitor, which must outlive the reader, takes reading as half of the work
    /// and can interrupt all of it. Throws DataError when it can't be read or is no text, UsageError when the options
    /// can't be followed.
    RecordReader(const std::string& path, const RecordOptions& options, WorkMonitor& monitor);
    /// The same of bytes that are there already; `path` is what errors call them.
    RecordReader(const std::string& path, std::string bytes, const RecordOptions& options, WorkMonitor& monitor);
    RecordReader(const RecordReader&) = delete;
    RecordReader& operator=(const RecordReader&) = delete;

    /// Reads the next record; false at the end. The fields stay valid as long as the reader; none holds a KeyMark.
    /// Throws DataError, naming the file and the line, when the record has too many or too few fields or a quote is
    /// never closed.
    bool Next(std::vector<std::string_view>& fields);

    /// The line on which the record that Next gave begins, from 1.
    [[nodiscard]] std::size_t Line() { return Scanner.Line(); }
    /// The empty records before the first one that Next gave.
    [[nodiscard]] std::size_t EmptyBefore() const { return LeadingEmpty; }

    /// The error that `problem` on a line of this file is.
    [[noreturn]] void Fail(std::size_t line, const std::string& problem) const;

  private:
    [[noreturn]] void FailForCount(std::size_t fields);
    void ReplaceKeyMarks(std::vector<std::string_view>& fields);

    std::string Path;
    RecordOptions Options;
    WorkMonitor& Monitor;
    std::string Text;
    bool HasKeyMarks;
    RecordScanner Scanner;
    std::deque<std::string> Replaced;  // fields that held marks of keys
    std::optional<std::size_t> FieldsPerRecord;
    std::size_t LeadingEmpty = 0;
    std::size_t BytesCounted = 0;
};

}  // namespace quillara
