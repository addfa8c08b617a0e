#pragma once

#include <atomic>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "workbench/formats/ColumnGatherer.h"
#include "workbench/formats/ColumnPiece.h"
#include "workbench/formats/FieldRules.h"
#include "workbench/formats/FieldRun.h"
#include "workbench/formats/NumberNotation.h"
#include "workbench/formats/TextLayout.h"
#include "workbench/formats/WorkCrew.h"

namespace quillara {

/// The values of a variable, gathered from the parts of a text.
struct GatheredColumn {
    FieldKind Kind = FieldKind::Number;
    bool IsOfKind = true;  ///< whether all fields were of the kind; else nothing is gathered
    std::vector<ColumnPiece> Pieces;  ///< of the parts, in their order
    std::vector<ColumnGatherer> Workers;  ///< what the codes of the pieces stand for
};

/// Gathers the values of all variables of a delimited text, part by part.
class TableGathering {
  public:
    /// All must outlive the gathering.
    TableGathering(const TextSource& source, const TextLayout& layout, const FieldRules& rules, const WorkCrew& crew);

    /// What the fields of some cases all over the text are: numbers where none tells otherwise. Throws UnexpectedBytes.
    [[nodiscard]] std::vector<FieldKind> GuessKinds() const;

    /// How the same fields use points, by variable: the most telling use of each.
    [[nodiscard]] std::vector<PointUse> GuessPoints() const;

    /// Gathers the variables of these numbers anew, as what the kinds say. Throws UnexpectedBytes.
    void Gather(const std::vector<std::size_t>& variables, const std::vector<FieldKind>& kinds);

    /// The first fault of all records, if there is one: what was gathered is void then.
    [[nodiscard]] std::optional<RecordFault> FirstFault() const;
    [[nodiscard]] std::size_t Cases() const;
    [[nodiscard]] std::vector<GatheredColumn>& Columns() { return Gathered; }

  private:
    /// What reading a part tells beside the values.
    struct PartOutcome {
        TextRange Records{};  // none: Begin isn't below End
        std::size_t Cases = 0;
        std::optional<RecordFault> Fault{};
    };
    struct Worker;
    struct Run;

    /// Shows the fields of some cases all over the text: visit(variable, field).
    template <typename Visit>
    void VisitSample(Visit visit) const;
    void GatherPart(Run& run, std::size_t part, std::size_t worker);
    [[nodiscard]] PartOutcome ReadPart(Run& run, std::size_t part, std::size_t worker) const;
    [[nodiscard]] std::optional<RecordFault> ReadRun(PartRecords& records, FieldRun& run) const;
    static void TakeRun(Run& run, std::size_t worker);
    void RequireRecordsMeet() const;

    const TextSource& Source;
    const TextLayout& Layout;
    const FieldRules& Rules;
    const WorkCrew& Crew;
    std::vector<PartOutcome> Outcomes;
    std::vector<GatheredColumn> Gathered;
};

}  // namespace quillara
