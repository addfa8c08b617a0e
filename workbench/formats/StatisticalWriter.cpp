#include "workbench/formats/StatisticalWriter.h"

#include <readstat.h>

#include <algorithm>
#include <cmath>
#include <exception>
#include <memory>
#include <new>

#include "workbench/data/Errors.h"

namespace quillara {
namespace {

/// The longest text of a field of dta; longer ones are kept apart, each once, and the field refers to them.
constexpr std::size_t LongestDtaField = 2045;

/// Where the library writes to. No exception may cross it: it waits here until the library is left.
struct Output {
    const ByteSink& Write;
    std::exception_ptr Failure;
};

ssize_t Append(const void* bytes, std::size_t length, void* context) noexcept {
    Output& output = *static_cast<Output*>(context);
    try {
        output.Write({static_cast<const char*>(bytes), length});
        return static_cast<ssize_t>(length);
    } catch (...) {
        output.Failure = std::current_exception();
        return 0;
    }
}

/// The width of a field for texts. On reading, the library drops the last byte of some texts that fill a field of
/// several segments.
std::size_t WidthOf(const FileColumn& column, const StatisticalRules& rules) {
    const bool hasSegments = rules.Names.SegmentBytes > 0 && column.TextBytes > rules.Names.SegmentBytes;
    return column.TextBytes + (hasSegments ? 1 : 0);
}

bool HoldsNegativeZero(const StatisticalLayout& layout) {
    return std::ranges::any_of(layout.Columns, [](const FileColumn& column) {
        return !HoldsForAll(column.Content->Values, [](double value) { return value != 0 || !std::signbit(value); });
    });
}

readstat_measure_t MeasureOf(const FileColumn& column) {
    const bool isNominal = column.TextBytes > 0 || !column.Labels.empty();
    return isNominal ? READSTAT_MEASURE_NOMINAL : READSTAT_MEASURE_SCALE;
}

class StatisticalWriter {
  public:
    StatisticalWriter(const StatisticalLayout& layout, const StatisticalRules& rules, const ByteSink& write)
        : Layout(layout),
          Rules(rules),
          Writer(readstat_writer_init(), readstat_writer_free),
          Written{.Write = write, .Failure = {}} {
        if (!Writer) {
            throw std::bad_alloc();
        }
        readstat_set_data_writer(Writer.get(), Append);
        readstat_writer_set_file_label(Writer.get(), layout.Header.c_str());
        for (const std::string& line : LinesOfNotes(layout.Notes, rules.NoteBytes)) {
            readstat_add_note(Writer.get(), line.c_str());
        }
        Variables.reserve(layout.Columns.size());
        for (const FileColumn& column : layout.Columns) {
            AddVariable(column);
        }
        if (layout.Weight) {
            readstat_writer_set_fweight_variable(Writer.get(), Variables[*layout.Weight].Handle);
        }
    }

    void Write(std::size_t cases, WorkMonitor& monitor) {
        Begin(static_cast<long>(cases));
        for (std::size_t row = 0; row < cases; ++row) {
            Check(readstat_begin_row(Writer.get()));
            for (std::size_t i = 0; i < Variables.size(); ++i) {
                Insert(Layout.Columns[i], Variables[i], row);
            }
            Check(readstat_end_row(Writer.get()));
            monitor.Advance(Variables.size());
        }
        Check(readstat_end_writing(Writer.get()));
    }

  private:
    struct OpenVariable {
        readstat_variable_t* Handle = nullptr;
        std::vector<readstat_string_ref_t*> LongTexts;  ///< of each text; empty: they stand in the field
    };

    void Check(readstat_error_t error, const FileColumn* column = nullptr) const {
        if (Written.Failure) {
            std::rethrow_exception(Written.Failure);
        }
        if (error == READSTAT_ERROR_MALLOC) {
            throw std::bad_alloc();
        }
        if (error != READSTAT_OK) {
            const std::string about = column == nullptr ? "The table" : "Variable \"" + column->Content->Name + "\"";
            throw DataError(about + " can't be written as " + std::string(Rules.Extension) + ": " +
                            readstat_error_message(error) + "; choose another format.");
        }
    }

    void AddVariable(const FileColumn& column) {
        OpenVariable& added = Variables.emplace_back();
        const bool isText = column.TextBytes > 0;
        const bool isLong = !Rules.LabelsTexts && column.TextBytes > LongestDtaField;
        added.Handle = readstat_add_variable(Writer.get(), column.Name.c_str(),
                                             isLong   ? READSTAT_TYPE_STRING_REF
                                             : isText ? READSTAT_TYPE_STRING
                                                      : READSTAT_TYPE_DOUBLE,
                                             isText ? WidthOf(column, Rules) : sizeof(double));
        for (std::size_t i = 0; isLong && i < column.Content->Texts.size(); ++i) {
            added.LongTexts.push_back(readstat_add_string_ref(Writer.get(), column.Content->Texts[i].c_str()));
        }
        readstat_variable_set_label(added.Handle, column.LongName.c_str());
        readstat_variable_set_format(added.Handle, column.Format.Text.c_str());
        readstat_variable_set_measure(added.Handle, MeasureOf(column));
        const bool labelsReasons = !std::ranges::all_of(column.ReasonLabels, &std::string::empty);
        if (!column.Labels.empty() || labelsReasons) {
            AddLabels(column, added.Handle);
        }
        if (column.Reasons != nullptr && Rules.DeclaresMissing) {
            DeclareMissing(column, added.Handle);
        }
    }

    static void DeclareMissing(const FileColumn& column, readstat_variable_t* variable) {
        for (const MissingRange& range : column.Reasons->Ranges) {
            const double lowest = InFile(column, range.Lowest);
            if (range.Lowest == range.Highest) {
                readstat_variable_add_missing_double_value(variable, lowest);
            } else {
                readstat_variable_add_missing_double_range(variable, lowest, InFile(column, range.Highest));
            }
        }
        for (const MissingReason& reason : column.Reasons->Reasons) {
            if (!reason.Number) {
                readstat_variable_add_missing_string_value(variable, reason.Text.c_str());
            }
        }
    }

    /// The end of a range, which may be endless.
    static double InFile(const FileColumn& column, double end) {
        return std::isfinite(end) ? column.NumberInFile(end) : end;
    }

    void AddLabels(const FileColumn& column, readstat_variable_t* variable) {
        const bool isText = column.TextBytes > 0;
        readstat_label_set_t* set = readstat_add_label_set(Writer.get(),
                                                           isText                   ? READSTAT_TYPE_STRING
                                                           : Rules.LabelsAllNumbers ? READSTAT_TYPE_DOUBLE
                                                                                    : READSTAT_TYPE_INT32,
                                                           column.Name.c_str());
        for (const auto& [value, label] : column.Labels) {
            if (isText) {
                readstat_label_string_value(set, TextOf(column, value).c_str(), label.c_str());
            } else if (Rules.LabelsAllNumbers) {
                readstat_label_double_value(set, column.NumberInFile(value), label.c_str());
            } else {
                readstat_label_int32_value(set, static_cast<std::int32_t>(column.NumberInFile(value)), label.c_str());
            }
        }
        for (std::size_t i = 0; i < column.ReasonLabels.size(); ++i) {
            if (!column.ReasonLabels[i].empty()) {
                AddReasonLabel(column, column.Reasons->Reasons[i], column.ReasonLabels[i], set);
            }
        }
        readstat_variable_set_label_set(variable, set);
    }

    void AddReasonLabel(const FileColumn& column, const MissingReason& reason, const std::string& label,
                        readstat_label_set_t* set) const {
        if (reason.Number) {
            readstat_label_double_value(set, column.NumberInFile(*reason.Number), label.c_str());
        } else if (Rules.DeclaresMissing) {
            readstat_label_string_value(set, reason.Text.c_str(), label.c_str());
        } else {
            readstat_label_tagged_value(set, reason.Text[1], label.c_str());
        }
    }

    void Begin(long cases) {
        if (Rules.Extension == "dta") {
            Check(readstat_begin_writing_dta(Writer.get(), &Written, cases));
            return;
        }
        const readstat_compress_t packing = Rules.Extension == "zsav"   ? READSTAT_COMPRESS_BINARY
                                            : HoldsNegativeZero(Layout) ? READSTAT_COMPRESS_NONE
                                                                        : READSTAT_COMPRESS_ROWS;
        readstat_writer_set_compression(Writer.get(), packing);
        Check(readstat_begin_writing_sav(Writer.get(), &Written, cases));
    }

    void Insert(const FileColumn& column, const OpenVariable& variable, std::size_t row) const {
        const double value = column.Content->Values[row];
        const bool isMissing = column.Content->IsMissing(value);
        const MissingReason* reason = isMissing && column.Reasons != nullptr ? column.Reasons->At(row) : nullptr;
        if (reason != nullptr) {
            InsertReason(column, variable, *reason);
        } else if (isMissing) {
            // A field that refers to no long text is blank without more ado.
            if (variable.LongTexts.empty()) {
                Check(readstat_insert_missing_value(Writer.get(), variable.Handle), &column);
            }
        } else if (column.TextBytes == 0) {
            Check(readstat_insert_double_value(Writer.get(), variable.Handle, column.NumberInFile(value)), &column);
        } else if (variable.LongTexts.empty()) {
            Check(readstat_insert_string_value(Writer.get(), variable.Handle, TextOf(column, value).c_str()), &column);
        } else {
            readstat_string_ref_t* text = variable.LongTexts[static_cast<std::size_t>(value) - 1];
            Check(readstat_insert_string_ref(Writer.get(), variable.Handle, text), &column);
        }
    }

    void InsertReason(const FileColumn& column, const OpenVariable& variable, const MissingReason& reason) const {
        if (reason.Number) {
            Check(readstat_insert_double_value(Writer.get(), variable.Handle, column.NumberInFile(*reason.Number)),
                  &column);
        } else if (Rules.DeclaresMissing) {
            Check(readstat_insert_string_value(Writer.get(), variable.Handle, reason.Text.c_str()), &column);
        } else {
            Check(readstat_insert_tagged_missing_value(Writer.get(), variable.Handle, reason.Text[1]), &column);
        }
    }

    static const std::string& TextOf(const FileColumn& column, double value) {
        return column.Content->Texts.at(static_cast<std::size_t>(value) - 1);
    }

    const StatisticalLayout& Layout;
    const StatisticalRules& Rules;
    std::unique_ptr<readstat_writer_t, decltype(&readstat_writer_free)> Writer;
    std::vector<OpenVariable> Variables;
    Output Written;
};

}  // namespace

void WriteStatisticalFile(const StatisticalLayout& layout, const StatisticalRules& rules, const ByteSink& write,
                          WorkMonitor& monitor) {
    const std::size_t cases = layout.Columns.front().Content->Values.size();
    StatisticalWriter(layout, rules, write).Write(cases, monitor);
}

}  // namespace quillara
