#pragma once

#include <algorithm>
#include <functional>
#include <sstream>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "automation/OutputTracker.h"
#include "platform/CountedPointer.h"
#include "resources/ControlIds.h"
#include "tests/dialogs/DialogBench.h"
#include "workbench/documents/OpenDocuments.h"
#include "workbench/documents/ResultDocument.h"

namespace dialogtest {

using quillara::ResultDocument;

/// A dialog bench with auto-update on and its result documents as short texts. Documents are named by letters, in the
/// order in which their windows are first seen.
class OutputsBench : public DialogBench {
  protected:
    void OpenAutoUpdated(std::vector<quillara::Variable> variables, const Names& drills) {
        Seen.clear();
        DialogBench::Open(std::move(variables));
        TakeDocuments();
        Choose(drills);
        Click(AutoUpdateBox);
    }
    /// Has the documents that go the normal way told of in Routed.
    void TakeDocuments() {
        Host().Services.TakeDocument = [this](ResultDocument& document) { Routed.push_back(TextOf(document)); };
    }

    /// The documents in windows, the one in front last: letter, "-" for a minimized one, and content.
    std::string Windows() {
        std::string text;
        for (ResultDocument* document : Host().Documents().InWindows()) {
            text += (text.empty() ? "" : " | ") + LetterOf(document) + ' ' + TextOf(*document);
        }
        return text;
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
        std::string text;
        for (const TrackedOutput& output : tracker.Outputs) {
            text +=
                (text.empty() ? "" : " ") + std::to_string(output.OutputId) + '.' + std::to_string(output.OutputSeq);
        }
        const bool atRest = tracker.Updating == 0 && tracker.CurrentCommand == 0 && tracker.Pending.empty() &&
                            Host().UpdateCounter == 0;
        return atRest ? text : text + " updating";
    }
    /// "town: a 3, b 1": the last word of the title, and the rows with their first numbers.
    static std::string TextOf(const ResultDocument& document) {
        if (document.Spreadsheet() == nullptr) {
            return "graph";
        }
        const quillara::SpreadsheetDocument& sheet = *document.Spreadsheet();
        std::ostringstream text;
        const std::string title = sheet.Title.empty() ? "empty" : sheet.Title.front();
        text << title.substr(title.find_last_of(' ') + 1) << ':';
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

class OutputsTest : public testing::Test, public OutputsBench {};

}  // namespace dialogtest
