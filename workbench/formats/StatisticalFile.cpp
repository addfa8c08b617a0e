#include "workbench/formats/StatisticalFile.h"

#include <readstat.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <exception>
#include <filesystem>
#include <limits>
#include <memory>

#include "workbench/data/Errors.h"
#include "workbench/formats/Encoding.h"
#include "workbench/formats/FileBytes.h"
#include "workbench/formats/FileFormats.h"
#include "workbench/formats/StatisticalReasons.h"
#include "workbench/formats/StatisticalTable.h"

namespace quillara {
namespace {

constexpr double ShareOfParsing = 0.7;  // of the whole reading

struct Format {
    std::string_view Extension;
    readstat_error_t (*Parse)(readstat_parser_t*, const char*, void*);
};

// clang-format off
constexpr std::array Formats = std::to_array<Format>({
    {"sav",      readstat_parse_sav},
    {"zsav",     readstat_parse_sav},
    {"por",      readstat_parse_por},
    {"dta",      readstat_parse_dta},
    {"sas7bdat", readstat_parse_sas7bdat},
    {"xpt",      readstat_parse_xport},
});
// clang-format on

const Format* FindFormat(std::string_view extension) {
    const auto found = std::ranges::find(Formats, extension, &Format::Extension);
    return found == Formats.end() ? nullptr : &*found;
}

/// A text of the file in UTF-8, without the blanks that fill its field and without marks of keys; a null is empty.
std::string TextFrom(const char* text) {
    std::string result = text == nullptr ? "" : text;
    result.erase(result.find_last_not_of(' ') + 1);
    return WithoutKeyMarks(ToUtf8(std::move(result)));
}

/// The bytes of a name of value labels in a dta file of this version.
std::size_t LabelSetNameBytes(int version) {
    return version >= 118 ? 129 : version >= 110 ? 33 : 9;
}

/// What the callbacks of a pass fill. No exception may cross the library: it waits here until the library is left.
struct Collection {
    WorkMonitor& Monitor;
    StatisticalContent Content;
    std::exception_ptr Failure;
    std::string_view Extension;
    std::size_t MostNameBytes = std::string::npos;  // of a set of value labels

    /// The library hands over the field of a dta file, whether or not the name in it has an end.
    [[nodiscard]] std::string LabelSetName(const char* field) const {
        return field == nullptr ? "" : std::string(field, strnlen(field, MostNameBytes));
    }
};

template <typename Action>
int Collect(void* context, Action action) noexcept {
    Collection& collection = *static_cast<Collection*>(context);
    try {
        action(collection.Content);
        return READSTAT_HANDLER_OK;
    } catch (...) {
        collection.Failure = std::current_exception();
        return READSTAT_HANDLER_ABORT;
    }
}

int CollectMetadata(readstat_metadata_t* metadata, void* context) {
    return Collect(context, [&](StatisticalContent& content) {
        content.FileLabel = TextFrom(readstat_get_file_label(metadata));
        Collection& collection = *static_cast<Collection*>(context);
        if (collection.Extension == "dta") {
            collection.MostNameBytes = LabelSetNameBytes(readstat_get_file_format_version(metadata));
        }
        if (metadata->row_count >= 0) {
            content.DeclaredCases = metadata->row_count;
        }
        CheckSize(static_cast<std::size_t>(std::max<std::int64_t>(metadata->var_count, 0)),
                  static_cast<std::size_t>(content.DeclaredCases.value_or(0)));
    });
}

void CollectMissingRanges(const readstat_variable_t* variable, StatisticalColumn& column) {
    for (int i = 0; i < readstat_variable_get_missing_ranges_count(variable); ++i) {
        const readstat_value_t low = readstat_variable_get_missing_range_lo(variable, i);
        const readstat_value_t high = readstat_variable_get_missing_range_hi(variable, i);
        if (column.IsText) {
            column.MissingTexts.emplace_back(TextFrom(readstat_string_value(low)),
                                             TextFrom(readstat_string_value(high)));
        } else {
            column.MissingNumbers.emplace_back(readstat_double_value(low), readstat_double_value(high));
        }
    }
}

int CollectVariable(int /*index*/, readstat_variable_t* variable, const char* labelSetName, void* context) {
    return Collect(context, [&](StatisticalContent& content) {
        CheckSize(content.Columns.size() + 1, 0);
        StatisticalColumn& column = content.Columns.emplace_back();
        column.Name = TextFrom(readstat_variable_get_name(variable));
        column.Label = TextFrom(readstat_variable_get_label(variable));
        column.Format = TextFrom(readstat_variable_get_format(variable));
        column.LabelSetName = static_cast<Collection*>(context)->LabelSetName(labelSetName);
        column.IsText = readstat_variable_get_type_class(variable) == READSTAT_TYPE_CLASS_STRING;
        CollectMissingRanges(variable, column);
    });
}

int CollectWeight(readstat_variable_t* variable, void* context) {
    return Collect(context, [&](StatisticalContent& content) {
        content.Weight = static_cast<std::size_t>(readstat_variable_get_index(variable));
    });
}

/// The mark of missing data; some formats have capital ones.
char InSmallLetter(char mark) {
    return 'A' <= mark && mark <= 'Z' ? static_cast<char>(mark - 'A' + 'a') : mark;
}

int CollectLabel(const char* labelSetName, readstat_value_t value, const char* label, void* context) {
    return Collect(context, [&](StatisticalContent& content) {
        const std::string text = TextFrom(label);
        LabelSet& labels = content.LabelSets[static_cast<Collection*>(context)->LabelSetName(labelSetName)];
        if (text.empty()) {
            return;
        }
        if (readstat_value_type_class(value) == READSTAT_TYPE_CLASS_STRING) {
            labels.OfTexts[TextFrom(readstat_string_value(value))] = text;
        } else if (readstat_value_is_tagged_missing(value)) {
            labels.OfMarks[InSmallLetter(readstat_value_tag(value))] = text;
        } else if (!readstat_value_is_system_missing(value)) {
            labels.OfNumbers[readstat_double_value(value)] = text;
        }
    });
}

int CollectNote(int /*index*/, const char* note, void* context) {
    return Collect(context, [&](StatisticalContent& content) { content.Notes.push_back(TextFrom(note)); });
}

double NumberFrom(readstat_value_t value) {
    if (readstat_value_is_tagged_missing(value)) {
        return MarkedMissing(InSmallLetter(readstat_value_tag(value)));
    }
    const bool isMissing = readstat_value_is_system_missing(value) != 0;
    return isMissing ? std::numeric_limits<double>::quiet_NaN() : readstat_double_value(value);
}

/// The library tells how much of the file it has read, mostly after every case.
int FollowProgress(double part, void* context) {
    return Collect(context, [&](StatisticalContent& /*content*/) {
        static_cast<Collection*>(context)->Monitor.MoveTo(std::clamp(part, 0.0, 1.0));
    });
}

int CollectValue(int row, readstat_variable_t* variable, readstat_value_t value, void* context) {
    return Collect(context, [&](StatisticalContent& content) {
        static_cast<Collection*>(context)->Monitor.Advance();
        content.Cases = std::max<std::int64_t>(content.Cases, std::int64_t{row} + 1);
        StatisticalColumn& column = content.Columns.at(static_cast<std::size_t>(readstat_variable_get_index(variable)));
        if (column.IsText) {
            AppendText(column, TextFrom(readstat_string_value(value)));
        } else {
            column.Numbers.push_back(NumberFrom(value));
        }
    });
}

using Parser = std::unique_ptr<readstat_parser_t, decltype(&readstat_parser_free)>;

Parser MakeParser(const std::string& encoding) {
    Parser parser(readstat_parser_init(), readstat_parser_free);
    if (!parser) {
        throw std::bad_alloc();
    }
    readstat_set_metadata_handler(parser.get(), CollectMetadata);
    readstat_set_note_handler(parser.get(), CollectNote);
    readstat_set_variable_handler(parser.get(), CollectVariable);
    readstat_set_fweight_handler(parser.get(), CollectWeight);
    readstat_set_value_label_handler(parser.get(), CollectLabel);
    readstat_set_value_handler(parser.get(), CollectValue);
    readstat_set_progress_handler(parser.get(), FollowProgress);
    if (!encoding.empty()) {
        readstat_set_file_character_encoding(parser.get(), encoding.c_str());
    }
    return parser;
}

[[noreturn]] void ThrowDamaged(const std::string& path, std::string_view extension, const std::string& reason) {
    throw DataError("\"" + path + "\" can't be read; it is damaged, cut short or no " + std::string(extension) +
                    " file: " + reason);
}

/// What ReadStat says of an error, and what to do when its cause may be the encoding.
std::string ReasonOf(readstat_error_t error) {
    const bool mayBeEncoding = error == READSTAT_ERROR_CONVERT || error == READSTAT_ERROR_CONVERT_BAD_STRING ||
                               error == READSTAT_ERROR_UNSUPPORTED_CHARSET;
    return std::string(readstat_error_message(error)) + (mayBeEncoding ? "; another encoding may help." : ".");
}

bool IsWhole(const StatisticalContent& content) {
    const bool hasAllCases = !content.DeclaredCases || *content.DeclaredCases == content.Cases;
    return hasAllCases && std::ranges::all_of(content.Columns, [&](const StatisticalColumn& column) {
               return column.Numbers.size() + column.Texts.Size() == static_cast<std::size_t>(content.Cases);
           });
}

static_assert(std::ranges::all_of(FileFormats, [](const FileFormat& format) {
    return (format.Kind == FormatKind::Statistical) ==
           (std::ranges::find(Formats, format.Extension, &Format::Extension) != Formats.end());
}));

}  // namespace

bool IsStatisticalFile(std::string_view extension) {
    return FindFormat(extension) != nullptr;
}

DataTable ReadStatisticalFile(const std::string& path, std::string_view extension, const ReadOptions& options) {
    const std::string encodingName = options.Encoding.empty() ? "" : SystemEncodingName(options.Encoding);
    WorkMonitor monitor(options.Progress, options.Cancelled, MemoryLimit(options.MaxMemory));
    monitor.RequireMemory(0);
    monitor.Enter(0, ShareOfParsing);
    const Parser parser = MakeParser(encodingName);
    Collection collection{.Monitor = monitor, .Content = {}, .Failure = {}, .Extension = extension};
    const readstat_error_t error = FindFormat(extension)->Parse(parser.get(), path.c_str(), &collection);
    if (collection.Failure) {
        std::rethrow_exception(collection.Failure);
    }
    if (error != READSTAT_OK) {
        ThrowDamaged(path, extension, ReasonOf(error));
    }
    if (!IsWhole(collection.Content)) {
        ThrowDamaged(path, extension, "It holds fewer cases than it declares.");
    }
    // The records of an xpt file have 80 bytes; nothing else tells where it ends.
    std::error_code unknownSize;
    if (extension == "xpt" && std::filesystem::file_size(path, unknownSize) % 80 != 0) {
        ThrowDamaged(path, extension, "Its last record isn't whole.");
    }
    monitor.Enter(ShareOfParsing, 1,
                  collection.Content.Columns.size() * static_cast<std::size_t>(collection.Content.Cases));
    DataTable table = TableOf(std::move(collection.Content), extension, monitor, options.Noticed);
    table.FileName = NameOfFile(path);
    monitor.Finish();
    return table;
}

}  // namespace quillara
