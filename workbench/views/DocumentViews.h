#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "workbench/documents/OutputCollection.h"

namespace quillara {

/// The documents as aligned text for a terminal.
[[nodiscard]] std::string TextView(const OutputCollection& outputs);
/// The documents as one JSON text that ends with a line feed; docs/json.md documents its shape.
[[nodiscard]] std::string JsonView(const OutputCollection& outputs);
/// The documents as one tidy table in delimited text: a header, then a record for each number or text that a document
/// holds; docs/json.md documents its columns. That of several runs has their number, from 1, in a column in front.
[[nodiscard]] std::string CsvView(std::span<const OutputCollection> runs);
[[nodiscard]] std::string CsvView(const OutputCollection& outputs);
/// The documents as delimited text as they are laid out, one block of records per document with an empty record
/// between.
[[nodiscard]] std::string CsvBlocksView(const OutputCollection& outputs);
/// What a picture is for: SVG on the light or the dark ground of a page, PNG in a workbook.
enum class PictureUse { LightPage, DarkPage, Workbook };
using GraphPainter = std::function<std::string(const GraphDocument&, PictureUse use)>;
/// The documents as one HTML page that needs no other file. Graphs stand beside the frequency tables of their
/// variables, each as a picture in the colours of its reader's theme; without a painter as its numbers.
[[nodiscard]] std::string HtmlView(const OutputCollection& outputs, const GraphPainter& paint = {});
/// Several runs on one page, one below the other.
[[nodiscard]] std::string HtmlView(std::span<const OutputCollection> runs, const GraphPainter& paint);

/// The documents of runs as the bytes of an xlsx workbook: a sheet for each with its numbers, titles and headings in
/// sight, and the picture of a graph above them; in front a sheet that lists them, with what they were made from.
/// Throws DataError for a text or a table larger than a sheet holds.
[[nodiscard]] std::string WorkbookView(std::span<const OutputCollection> runs, const GraphPainter& paint = {});

enum class OutputFormat { Text, Json, Csv, CsvBlocks, Html, Workbook };

/// The format of a word: text, json, csv, csv-blocks, html, xlsx. Throws UsageError for another one.
[[nodiscard]] OutputFormat FormatNamed(std::string_view word);

/// The format that the name of a file ends in: .json, .csv, .html, .htm or .xlsx, in letters of any case; text for any
/// other.
[[nodiscard]] OutputFormat FormatOfFile(std::string_view file);

/// Whether documents in it have the pictures of graphs.
[[nodiscard]] constexpr bool HasPictures(OutputFormat format) {
    return format == OutputFormat::Html || format == OutputFormat::Workbook;
}

/// The documents that a format has: without pictures none that shows in one what the others say.
[[nodiscard]] OutputCollection ShownIn(OutputFormat format, OutputCollection outputs);

/// Its word.
[[nodiscard]] std::string_view WordOf(OutputFormat format);

/// The documents that runs have made, in their order: in JSON as a list, as text each under a heading. The painter
/// is for pages and workbooks.
[[nodiscard]] std::string ViewOf(std::span<const OutputCollection> made, OutputFormat format,
                                 const GraphPainter& paint = {});

}  // namespace quillara
