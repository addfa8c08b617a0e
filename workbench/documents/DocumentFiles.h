#pragma once

#include <functional>
#include <string>

namespace quillara {

class ResultDocument;

/// Writes a result document to a file, as the ending of its path says. Throws DataError or UsageError.
using DocumentWriter = std::function<void(const ResultDocument& document, const std::string& path)>;

/// Sets how documents are written; the program that can show them does so once.
void SetDocumentWriter(DocumentWriter writer);
/// Writes a document so. Throws DataError when the program can't.
void WriteDocument(const ResultDocument& document, const std::string& path);

}  // namespace quillara
