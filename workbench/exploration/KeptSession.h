#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "workbench/exploration/ExplorationJournal.h"
#include "workbench/exploration/WindowPlaces.h"

namespace quillara {

class Exploration;

/// An exploration as it is kept on disk, so that it can be gone on with after the user has left it, or after the
/// program has been killed.
struct KeptSession {
    std::string File;  ///< that it has begun with
    std::string State;  ///< the steps in force, for people
    std::vector<std::string> Documents;  ///< names of those that stand in windows
    std::string Script;  ///< the recorded script up to now; empty while bars are picked
    std::vector<JournalEntry> Entries;  ///< what leads there
    WindowArrangement Windows{};  ///< of the documents
    bool WasLeft = false;  ///< by the user, who has been asked about the tables that it had made
};

/// Whether there is something to go on with: variables that have been chosen, steps or documents.
[[nodiscard]] bool HasWork(Exploration& exploration);

/// An exploration of a file as it is now. Not while a command runs, but while bars are picked.
[[nodiscard]] KeptSession SessionOf(Exploration& exploration, const std::string& file);

/// As a JSON text, and back. Throws DataError when a text is no session.
[[nodiscard]] std::string SessionText(const KeptSession& session);
[[nodiscard]] KeptSession SessionFrom(std::string_view text);

}  // namespace quillara
