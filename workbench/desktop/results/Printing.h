#pragma once

#include <functional>

class QPrinter;
class QWidget;

namespace quillara {

struct OutputCollection;

/// Prints documents one below the other: tables as tables, charts as pictures as wide as the page. A report begins with
/// what it is made from: the data, and what is in force.
void PrintDocuments(QPrinter& printer, const OutputCollection& outputs);
void PrintReport(QPrinter& printer, const OutputCollection& outputs);

/// Lets the user choose a printer, and prints.
void AskAndPrint(const std::function<void(QPrinter&)>& print, QWidget* parent);
/// Shows the pages as they would be printed.
void ShowPrintPreview(const std::function<void(QPrinter&)>& print, QWidget* parent);

}  // namespace quillara
