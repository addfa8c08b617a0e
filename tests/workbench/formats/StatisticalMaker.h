#pragma once

#include <readstat.h>

#include <cmath>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace quillara {

/// Makes the bytes of a small statistical file as other programs write it, in any format that is read.
class StatisticalMaker {
  public:
    explicit StatisticalMaker(std::string extension) : Extension(std::move(extension)) {
        readstat_set_data_writer(Raw, [](const void* data, std::size_t length, void* bytes) {
            static_cast<std::string*>(bytes)->append(static_cast<const char*>(data), length);
            return static_cast<ssize_t>(length);
        });
        readstat_writer_set_file_label(Raw, "A label of the file");
        if (Extension == "zsav") {
            readstat_writer_set_compression(Raw, READSTAT_COMPRESS_BINARY);
        }
    }

    /// A column of numbers; NaN stands for missing data.
    readstat_variable_t* Number(const char* name, const std::vector<double>& values, const char* format = "") {
        Columns.emplace_back(values.begin(), values.end());
        readstat_variable_t* variable = readstat_add_variable(Raw, name, READSTAT_TYPE_DOUBLE, 8);
        readstat_variable_set_format(variable, format);
        return variable;
    }
    readstat_variable_t* Text(const char* name, const std::vector<const char*>& values, std::size_t width = 8) {
        Columns.emplace_back(values.begin(), values.end());
        return readstat_add_variable(Raw, name, READSTAT_TYPE_STRING, width);
    }
    readstat_label_set_t* Labels(readstat_variable_t* variable, readstat_type_t type) {
        readstat_label_set_t* set = readstat_add_label_set(Raw, type, variable->name);
        readstat_variable_set_label_set(variable, set);
        return set;
    }

    /// Throws std::runtime_error for what the format doesn't admit.
    std::string Bytes() {
        const auto begin = Extension == "dta"        ? readstat_begin_writing_dta
                           : Extension == "por"      ? readstat_begin_writing_por
                           : Extension == "sas7bdat" ? readstat_begin_writing_sas7bdat
                           : Extension == "xpt"      ? readstat_begin_writing_xport
                                                     : readstat_begin_writing_sav;
        std::string bytes;
        Check(begin(Raw, &bytes, static_cast<long>(Columns[0].size())));
        for (std::size_t row = 0; row < Columns[0].size(); ++row) {
            readstat_begin_row(Raw);
            for (std::size_t i = 0; i < Columns.size(); ++i) {
                Insert(readstat_get_variable(Raw, static_cast<int>(i)), Columns[i][row]);
            }
            Check(readstat_end_row(Raw));
        }
        Check(readstat_end_writing(Raw));
        return bytes;
    }

  private:
    using Cell = std::variant<double, const char*>;

    static void Check(readstat_error_t error) {
        if (error != READSTAT_OK) {
            throw std::runtime_error(readstat_error_message(error));
        }
    }
    void Insert(readstat_variable_t* variable, const Cell& cell) {
        if (const char* const* text = std::get_if<const char*>(&cell)) {
            readstat_insert_string_value(Raw, variable, *text);
        } else if (std::isnan(std::get<double>(cell))) {
            readstat_insert_missing_value(Raw, variable);
        } else {
            readstat_insert_double_value(Raw, variable, std::get<double>(cell));
        }
    }

    std::unique_ptr<readstat_writer_t, decltype(&readstat_writer_free)> Writer{readstat_writer_init(),
                                                                               readstat_writer_free};
    std::vector<std::vector<Cell>> Columns;

  public:
    const std::string Extension;
    readstat_writer_t* const Raw = Writer.get();
};

}  // namespace quillara
