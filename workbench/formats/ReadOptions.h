#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "workbench/data/DeclaredMissing.h"
#include "workbench/data/Remark.h"
#include "workbench/formats/DateNotation.h"

namespace quillara {

/// How a data file is to be read. What stands from Separator to Numbers counts for what is read as delimited text is.
struct ReadOptions {
    std::optional<char> Separator{};  ///< nothing: found from the text
    std::optional<char> Decimal{};  ///< nothing: a point, but where the file plainly has decimal commas
    std::string Encoding{};  ///< empty: what the file says; delimited text: UTF-8, else Windows-1252
    std::size_t TitleRecords = 0;  ///< lines, or rows of a sheet, above the names that are passed over
    bool HasHeader = true;
    std::optional<std::vector<std::string>> MissingTexts{};  ///< in place of NA, N/A, NaN, ...
    bool KeepsTexts = false;  ///< whether "1,234", "10%" and "31.12.2024" stay texts
    std::optional<DateOrder> Dates{};  ///< of 03/04/2024; nothing: what the texts themselves decide
    std::vector<std::string> Texts{};  ///< names of variables whose fields are texts, whatever they look like
    std::vector<std::string> Numbers{};  ///< names of variables that are numbers, though they have leading zeros
    std::vector<DeclaredMissing> MissingValues{};  ///< values of variables that stand for missing data
    std::string Sheet{};  ///< of a workbook, by its name or its number from 1; empty: the first that isn't hidden
    std::optional<std::size_t> MaxMemory{};  ///< bytes for the whole program; nothing: see MemoryLimit
    std::size_t Threads = 0;  ///< that read delimited text side by side; 0: as many as the processor runs at once
    std::size_t BytesOfPart = 0;  ///< of delimited text, read at a time by one of them; 0: what suits the file
    bool ChecksColumns = true;  ///< of a column file; else that is left to CheckColumns, before they are used

    std::function<void(double share)> Progress{};  ///< told now and then how much is done, rising from 0 to 1
    std::function<void(std::size_t bytes)> Received{};  ///< told the same of a pipe, whose length nobody knows
    std::function<void(const Remark& remark)>
        Noticed{};  ///< told what the user should know of the file and its reading
    std::function<bool()> Cancelled{};  ///< asked now and then; true ends the reading with Interrupted
};

}  // namespace quillara
