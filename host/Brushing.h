#pragma once

#include <memory>
#include <string>
#include <vector>

class COutDocument;

/// A bar that the user can pick in a brushing run: its rectangle in units of the chart's axes and its tip.
struct BrushRegion {
    double Bottom = 0.0;
    double Left = 0.0;
    double Top = 0.0;
    double Right = 0.0;
    std::string Tip;
    int Kind = 0;
};

/// The regions of one graph in a brushing run, by index from 0. Places that aren't there are passed over.
class CGraphBrushRgnGraph {
  public:
    void resize(int regions);
    void set(int index, double bottom, double left, double top, double right, const char* tip, int kind);
    /// The region that is selected when the run begins, or that the user has picked; one that isn't there: none.
    void setSelected(int index);
    /// True, and the picked region, when there is one; false, and the selected place as it stands.
    bool getSelected(int& index) const;

    [[nodiscard]] const std::vector<BrushRegion>& Regions() const { return Table; }

  private:
    std::vector<BrushRegion> Table;
    int Selected = -1;
};

/// An interaction in which the user picks a bar of a graph and one of some options.
class CGraphBrushingExt {
  public:
    /// Analyses give true.
    explicit CGraphBrushingExt(bool /*reserved*/) {}
    CGraphBrushingExt(const CGraphBrushingExt&) = delete;
    CGraphBrushingExt& operator=(const CGraphBrushingExt&) = delete;
    virtual ~CGraphBrushingExt() = default;

    /// Adds a graph and gives its regions, owned by this object. Analyses give -1.
    CGraphBrushRgnGraph* addGraph(int index);
    /// Runs the interaction on a document with the texts of the options, closed by null. True when it ended with an
    /// answer: the picked region is in the region table, and `choice` is the index of the option taken, -1 for the
    /// first. False: the user has left.
    bool DoBrushing(COutDocument* document, const char** options, int& choice, bool reserved1, bool reserved2,
                    bool reserved3);

  private:
    std::vector<std::unique_ptr<CGraphBrushRgnGraph>> Graphs;
};
