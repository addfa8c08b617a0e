#include "workbench/charts/BarVisibility.h"

#include <array>
#include <cmath>

#include "workbench/charts/ObliqueView.h"

namespace quillara {
namespace {

constexpr double LeastSeen = 0.6;  // of the points of a bar's top and front
constexpr double Width = 600.0;  // of a usual view; the shape matters, not the size
constexpr double Height = 400.0;
constexpr double Margin = (1 - BarWidth3D) / 2;
constexpr std::array<double, 3> Across = {0.1, 0.5, 0.9};  // of a bar's Width and depth, for points of its top

struct SpacePoint {
    double X = 0.0;
    double Y = 0.0;
    double Z = 0.0;
};

class Sight {
  public:
    explicit Sight(const CountTable& table)
        : Table(table),
          View({static_cast<double>(table.Columns()), static_cast<double>(table.Rows()), table.Highest()},
               QRectF(0.0, 0.0, Width, Height)) {
        const QPointF origin = View.Seen(0.0, 0.0, 0.0);
        const QPointF row = View.Seen(0.0, 1.0, 0.0) - origin;
        AcrossPerRow = row.x() / (View.Seen(1.0, 0.0, 0.0) - origin).x();
        UpPerRow = row.y() / (View.Seen(0.0, 0.0, 1.0) - origin).y();
    }

    /// Whether most points of a bar's top and front are seen.
    [[nodiscard]] bool IsSeen(std::size_t column, std::size_t row) const {
        const double left = static_cast<double>(column) + Margin;
        const double front = static_cast<double>(row) + Margin;
        const double count = Table.CountOf(column, row);
        int seen = 0;
        for (const double x : Across) {
            for (const double share : Across) {
                seen += IsCovered({left + x * BarWidth3D, front + share * BarWidth3D, count}, row) ? 0 : 1;
                seen += IsCovered({left + x * BarWidth3D, front, share * count}, row) ? 0 : 1;
            }
        }
        return seen >= LeastSeen * 2.0 * static_cast<double>(Across.size() * Across.size());
    }

  private:
    /// Whether a bar of a row in front stands on the line of sight.
    [[nodiscard]] bool IsCovered(const SpacePoint& point, std::size_t row) const {
        for (std::size_t front = 0; front < row; ++front) {
            for (const double share : Across) {
                const double depth = point.Y - (static_cast<double>(front) + Margin + share * BarWidth3D);
                if (IsInside(front, point.X + depth * AcrossPerRow, point.Z + depth * UpPerRow)) {
                    return true;
                }
            }
        }
        return false;
    }

    [[nodiscard]] bool IsInside(std::size_t row, double x, double z) const {
        const double column = std::floor(x);
        return column >= 0.0 && column < static_cast<double>(Table.Columns()) && x - column >= Margin &&
               x - column <= 1 - Margin && z < Table.CountOf(static_cast<std::size_t>(column), row);
    }

    const CountTable& Table;
    const ObliqueView View;
    double AcrossPerRow = 0.0;  ///< columns that a step to the back looks like
    double UpPerRow = 0.0;  ///< counts that a step to the back looks like
};

}  // namespace

bool BarsHideOthers(const CountTable& table) {
    if (!(table.Highest() > 0.0)) {
        return false;
    }
    const Sight sight(table);
    for (std::size_t row = 0; row < table.Rows(); ++row) {
        for (std::size_t column = 0; column < table.Columns(); ++column) {
            if (table.CountOf(column, row) > 0.0 && !sight.IsSeen(column, row)) {
                return true;
            }
        }
    }
    return false;
}

}  // namespace quillara
