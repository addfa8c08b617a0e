#pragma once

#include <span>
#include <string>
#include <vector>

#include "workbench/documents/OutputCollection.h"
#include "workbench/scripting/FolderFiles.h"
#include "workbench/views/DocumentViews.h"

namespace quillara {

/// Whether the name of an output means a folder: it ends with a slash, or is one.
[[nodiscard]] bool NamesFolder(const std::string& output);

/// Throws UsageError for a format of which all results are one file.
void CheckGoesToFolder(OutputFormat format);

/// A file for each table, and for the numbers of each graph: step1-frequencies-02-age.csv; of several runs
/// analysis2-step1-frequencies-02-age.csv. No two have one name. In CSV a table is its header and its rows.
/// The last one, contents.csv, lists the others: a record for each, with its steps, its result and its title.
[[nodiscard]] std::vector<FolderFile> TableFiles(std::span<const OutputCollection> runs, OutputFormat format);

/// Throws UsageError when one of them would take the place of a file of `others`.
void CheckTablesHitNoOther(const std::string& folder, const std::vector<FolderFile>& files,
                           std::span<const std::string> others);

/// How many files of these names there are, as a line for the user; empty when there is none.
[[nodiscard]] std::string WhatIsReplaced(const std::string& folder, const std::vector<FolderFile>& files);

}  // namespace quillara
