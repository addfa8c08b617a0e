#pragma once

#include <algorithm>
#include <sstream>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "automation/OutputTracker.h"
#include "platform/CountedPointer.h"
#include "tests/dialogs/DialogBench.h"
#include "workbench/documents/OpenDocuments.h"
#include "workbench/documents/ResultDocument.h"

namespace dialogtest {

using quillara::ResultDocument;

/// A dialog bench with its result documents as short texts. Documents are named by letters, in the order in which their
/// windows are first seen.
class OutputsBench : public DialogBench {
  public:
    void Open(quillara::DataTable table) {
        Seen.clear();
        DialogBench::Open(std::move(table));
        Host().Services.TakeDocument = [this](ResultDocument& document) { Routed.push_back(TextOf(document)); };
    }

    /// The documents in windows, the one in front last: letter, "-" for a minimized one, and content.
    std::string Windows() {
        Names windows;
        for (ResultDocument* document : Host().Documents().InWindows()) {
            windows.push_back(LetterOf(document) + ' ' + TextOf(*document));
        }
        return testing_scripts::Joined(windows, " | ");
    }
    /// Their letters alone.
    std::string Letters() {
        std::string text = Windows();
        std::erase_if(text, [](char c) { return c != '-' && (c < 'A' || c > 'Z'); });
        return text;
    }
    ResultDocument& Named(char letter) { return *Seen.at(static_cast<std::size_t>(letter - 'A')); }

    /// "9060.1 9060.2": the keys in the tracker, and "updating" unless everything about updates is at rest.
    std::string Tracked() {
        const COutputTracker& tracker = *Analysis().OutputTracker;
        std::ostringstream text;
        for (const TrackedOutput& output : tracker.Outputs) {
            text << (&output == &tracker.Outputs.front() ? "" : " ") << output.OutputId << '.' << output.OutputSeq;
        }
        const bool atRest = tracker.Updating == 0 && tracker.CurrentCommand == 0 && tracker.Pending.empty() &&
                            Host().UpdateCounter == 0;
        return text.str() + (atRest ? "" : " updating");
    }
    /// "town: a 3, b 1": the last word of the title, and the rows with their first numbers.
    static std::string TextOf(const ResultDocument& document) {
        if (document.Spreadsheet() == nullptr) {
            return "graph";
        }
        const quillara::SpreadsheetDocument& sheet = *document.Spreadsheet();
        const std::string title = sheet.Title.empty() ? "empty" : sheet.Title.front();
        std::ostringstream text;
        text << title.substr(title.rfind(' ') + 1) << ':';
        for (const quillara::SpreadsheetRow& row : sheet.Rows) {
            const auto* number = row.Cells.empty() ? nullptr : std::get_if<double>(&row.Cells.front());
            text << (&row == &sheet.Rows.front() ? " " : ", ") << row.Name << ' ' << (number == nullptr ? 0 : *number);
        }
        return text.str();
    }

    Names Routed;  ///< contents of the documents that went the normal way

  private:
    std::string LetterOf(ResultDocument* document) {
        const auto place = std::ranges::find(Seen, document, &CountedPointer<ResultDocument>::Get) - Seen.begin();
        if (place == std::ssize(Seen)) {
            Seen.push_back(CountedPointer<ResultDocument>::Share(document));  // so that no address comes twice
        }
        return static_cast<char>('A' + place) + std::string(document->IsMinimized() ? "-" : "");
    }

    std::vector<CountedPointer<ResultDocument>> Seen;
};

}  // namespace dialogtest
