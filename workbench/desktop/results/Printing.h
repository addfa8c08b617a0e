#pragma once

#include <functional>
#include <vector>

#include "platform/CountedPointer.h"

class QPrinter;
class QWidget;

namespace quillara {

class ResultDocument;

/// Prints documents one below the other: tables as tables, charts as pictures as wide as the page.
void PrintDocuments(QPrinter& printer, const std::vector<CountedPointer<ResultDocument>>& documents);

/// Lets the user choose a printer, and prints.
void AskAndPrint(const std::function<void(QPrinter&)>& print, QWidget* parent);
/// Shows the pages as they would be printed.
void ShowPrintPreview(const std::function<void(QPrinter&)>& print, QWidget* parent);

}  // namespace quillara
