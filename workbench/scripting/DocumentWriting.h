#pragma once

#include <string>
#include <vector>

#include "workbench/documents/ResultDocument.h"
#include "workbench/views/TidyTable.h"

namespace quillara {

/// Lets scripts write result documents to files from now on: every document as .txt or .csv, a graph also as .svg, .png
/// or .pdf.
void OfferDocumentFiles();

/// The kind of a document by its name ("frequencies"); empty: not known.
[[nodiscard]] std::string NamedResultOf(const ResultDocument& document);

/// All that a document holds; steps and cases aren't known of it alone.
[[nodiscard]] std::vector<TidyRow> TidyRowsOf(const ResultDocument& document);

/// Writes a graph as a picture to a file, as it is named: .svg, .png or .pdf. Throws UsageError for another name,
/// DataError as SvgOf or when it can't be written.
void WritePicture(const GraphDocument& graph, const std::string& path);

/// What a graph shows as numbers.
[[nodiscard]] SpreadsheetDocument NumbersIn(const GraphDocument& graph);

/// A document as aligned text for a terminal; a graph as its numbers.
[[nodiscard]] std::string TextOf(const ResultDocument& document);

/// A table as a fragment of a page in HTML.
[[nodiscard]] std::string HtmlOf(const SpreadsheetDocument& table);

/// A graph as a picture. Throws DataError when it can't be painted, also on another thread than the first that painted:
/// the painter's toolkit stays with one.
[[nodiscard]] std::string SvgOf(const GraphDocument& graph);

}  // namespace quillara
