#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace quillara {

class Exploration;
class ResultDocument;

/// A place in a document that a person points at. Of a graph its series and point, as a chart's picture knows them; of
/// a table its row. -1: none.
struct DocumentPlace {
    int Series = -1;
    int Point = -1;
    int Row = -1;
};

enum class OfferKind : std::uint8_t {
    Down,  ///< keeps the category of the place
    DownByList,  ///< lets the person choose from the categories of the variable
    Up,  ///< undoes the step on the variable
};

/// Why an offer can't be taken.
enum class OfferBar : std::uint8_t {
    None,
    Busy,  ///< a command runs, other than the picking of bars
    HasStep,  ///< the variable has been drilled on: its step can be undone
    NoDrillVariable,  ///< it isn't among the drill variables
    NoCases,  ///< the category is empty
};

/// A drill step that a place of a document stands for.
struct DrillOffer {
    OfferKind Kind = OfferKind::Down;
    std::string Variable;
    std::string Category{};  ///< for people; "Missing" for missing data
    bool IsMissing = false;
    std::size_t Before = 0;  ///< how many categories with cases, of the same name, come before this one
    OfferBar BarredBy = OfferBar::None;

    [[nodiscard]] bool CanBeTaken() const { return BarredBy == OfferBar::None; }
};

/// What can be done with a place: the steps that it stands for, then undoing those on its variables, then undoing all
/// other steps in force, the newest first. A place that stands for several categories offers no step on one of them.
[[nodiscard]] std::vector<DrillOffer> OffersAt(Exploration& exploration, const ResultDocument& document,
                                               const DocumentPlace& place);

/// What can be done with a row of one of the two lists of the startup dialog, in the same order; none when there is no
/// such row.
[[nodiscard]] std::vector<DrillOffer> OffersAtRow(Exploration& exploration, int list, int row);

/// Does what was offered, by the buttons of the startup dialog. Throws as Exploration::Down and Up: the document may
/// show categories that aren't there any more.
void TakeOffer(Exploration& exploration, const DrillOffer& offer);

}  // namespace quillara
