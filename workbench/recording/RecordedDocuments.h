#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "workbench/recording/RecordedScript.h"

namespace quillara {

struct DataTable;

/// A document of a session: a result by its number, or a saved table, which the analysis keeps.
struct MadeDocument {
    std::uint64_t Number = 0;
    const DataTable* Table = nullptr;

    friend bool operator==(const MadeDocument&, const MadeDocument&) = default;
    friend bool operator<(const MadeDocument& left, const MadeDocument& right) {
        return std::tie(left.Number, left.Table) < std::tie(right.Number, right.Table);
    }
};

/// Which lines of a script make the documents of its session, so that others can name these.
class RecordedDocuments {
  public:
    explicit RecordedDocuments(RecordedScript& script) : Script(script) {}

    /// A line makes these documents, in this order, which stand alone or don't. Where it has no name for them yet and a
    /// later line needs one it gets that of `what`.
    void Enter(RecordedScript::Line& line, const std::string& what, const std::vector<MadeDocument>& made,
               bool standAlone);
    /// Writes that a document has been closed; nothing for one that no line makes.
    void Close(const MadeDocument& document);
    /// Writes that all have been closed but those that stand alone.
    void CloseRouted();

  private:
    /// Where the script has a document.
    struct Known {
        RecordedScript::Line* Line;
        std::string What;
        std::size_t Place;
        bool IsOnly;  ///< of its line
        bool StandsAlone;
    };

    void WriteClose(const Known& known);

    RecordedScript& Script;
    std::map<MadeDocument, Known> Open;
};

}  // namespace quillara
