// New orders from the order dialog and from dragged rows, against plain models.

#include <algorithm>
#include <iterator>
#include <random>

#include "tests/dialogs/DialogBench.h"

namespace dialogtest {

namespace {

using quillara::Window;

constexpr char NotEnoughMemory[] =
    "Not enough memory to complete the requested computations; close other applications and try again.";

class Reorder : public DialogTest {
  protected:
    /// Opens so many drill variables: a, b, c, ...
    void OpenVariables(std::size_t count) {
        std::vector<quillara::Variable> variables;
        Present.clear();
        for (std::size_t i = 0; i < count; ++i) {
            Present.emplace_back(1, static_cast<char>('a' + i));
            variables.push_back(quillara::Numbers(Present.back(), {1, 2}));
        }
        Open(std::move(variables));
        Choose(Present);
    }
    static Names NamesOf(const CDrillDown::DrillSet& set) {
        Names names;
        std::transform(set.begin(), set.end(), std::back_inserter(names), [](const Drill& r) { return r.Name; });
        return names;
    }

    Names Present;  ///< the variables in their order
};

/// The order dialog as two plain lists.
struct OrderModel {
    Names Present, Open, Placed;

    void Place(int row) {
        if (row >= 0) {
            Placed.push_back(Open[static_cast<std::size_t>(row)]);
            Open.erase(Open.begin() + row);
        }
    }
    void TakeBack(int row) {
        if (row >= 0) {
            Placed.erase(Placed.begin() + row);
            Open.clear();
            std::copy_if(Present.begin(), Present.end(), std::back_inserter(Open), [this](const std::string& name) {
                return std::find(Placed.begin(), Placed.end(), name) == Placed.end();
            });
        }
    }
    Names Result() const {
        Names result = Placed;
        result.insert(result.end(), Open.begin(), Open.end());
        return result;
    }
};

using Random = std::mt19937_64;

/// Selects a random row of a list, or none. Gives the row.
int SelectAny(Random& random, Window& window, int list) {
    const auto rows = static_cast<int>(window.At(list).Rows.size());
    const int row = rows == 0 ? -1 : static_cast<int>(random() % static_cast<unsigned>(rows + 1)) - 1;
    if (row >= 0) {
        window.ClickRow(list, row);
    }
    return row;
}

/// Places and takes back at random, also with nothing selected, and compares both lists after each step.
void WalkAtRandom(Random& random, Window& window, OrderModel& model) {
    for (auto steps = random() % 40; steps > 0; --steps) {
        if (random() % 2 == 0) {
            model.Place(SelectAny(random, window, CurrentOrderList));
            window.SendCommand(PlaceButton);
        } else {
            model.TakeBack(SelectAny(random, window, NewOrderList));
            window.SendCommand(TakeBackButton);
        }
        ASSERT_EQ(window.At(CurrentOrderList).Rows, model.Open);
        ASSERT_EQ(window.At(NewOrderList).Rows, model.Placed);
        ASSERT_EQ(window.At(CurrentOrderList).Enabled, !model.Open.empty());
        ASSERT_EQ(window.At(TakeBackButton).Enabled, !model.Placed.empty());
    }
}

TEST_F(Reorder, ByTheDialogFollowsAPlainModel) {
    OpenVariables(5);
    for (std::uint64_t seed = 1; seed <= 40; ++seed) {
        Random random(seed);
        OrderModel model{Present, Present, {}};
        const bool confirmed = seed % 4 != 0;
        const auto walk = [&](Window& window) {
            WalkAtRandom(random, window, model);
            window.Click(confirmed ? 1 : 2);
        };
        Click(OrderButton, {walk});
        Present = confirmed ? model.Result() : Present;
        ASSERT_EQ(NamesOf(*Analysis().DrillDowns), Present) << "seed " << seed;
        ASSERT_EQ(Startup().At(DrillDownListControl).Rows, Present);
    }
}

TEST_F(Reorder, WithoutMemoryOpensNoDialog) {
    OpenVariables(3);
    Click(OrderButton, {Ok()});
    EXPECT_EQ(NamesOf(*Analysis().DrillDowns), Present) << "nothing placed";
    const std::size_t live = Host().LiveAllocations();
    Host().FailAllocation(1);
    Click(OrderButton);
    EXPECT_EQ(TakeMessages(), Names{NotEnoughMemory});
    EXPECT_EQ(NamesOf(*Analysis().DrillDowns), Present);
    EXPECT_EQ(Host().LiveAllocations(), live);
}

/// What a drag does to a plain list. Gives the row where the dragged one stands.
int Drag(Names& rows, int from, int target) {
    const std::string moved = rows[static_cast<std::size_t>(from)];
    rows.insert(rows.begin() + target, moved);
    rows.erase(rows.begin() + (target <= from ? from + 1 : from));
    return target <= from ? target : target - 1;
}

/// A list of the startup dialog whose rows can be dragged.
struct DragList {
    int Control;
    CDrillDown::DrillSet* CDrillDown::*Set;
};

class Dragging : public Reorder, public testing::WithParamInterface<DragList> {
  protected:
    void Fill(std::size_t count) {
        OpenVariables(count);
        if (GetParam().Control == DrillUpListControl) {
            std::for_each(Present.rbegin(), Present.rend(), [this](const std::string& name) { Down(name, "1"); });
        }
    }
    quillara::Control& List() { return Startup().At(GetParam().Control); }
    Names Records() { return NamesOf(*(Analysis().*GetParam().Set)); }
    /// The variables in the rows of the list.
    Names Rows() {
        Names rows = List().Rows;
        for (std::string& row : rows) {
            row.resize(1);
        }
        return rows;
    }
};
INSTANTIATE_TEST_SUITE_P(Lists, Dragging,
                         testing::Values(DragList{DrillDownListControl, &CDrillDown::DrillDowns},
                                         DragList{DrillUpListControl, &CDrillDown::DrillUps}),
                         [](const auto& list) { return list.param.Control == DrillUpListControl ? "Ups" : "Downs"; });

TEST_P(Dragging, EveryRowToEveryPlace) {
    for (int rows = 1; rows <= 4; ++rows) {
        Fill(static_cast<std::size_t>(rows));
        for (int from = 0; from < rows; ++from) {
            for (int target = 0; target <= rows; ++target) {
                Startup().ClickRow(GetParam().Control, from);
                const int row = Drag(Present, from, target);
                Startup().Drag(GetParam().Control, target);
                ASSERT_EQ(Records(), Present) << from << " to " << target << " of " << rows;
                ASSERT_EQ(Rows(), Present) << from << " to " << target << " of " << rows;
                ASSERT_EQ(List().Selected, row);
            }
        }
    }
}

TEST_P(Dragging, WithoutASelectionOrMemoryChangesNothing) {
    Fill(4);
    Analysis().RefreshListBoxes(&Startup());
    ASSERT_EQ(List().Selected, -1);
    Startup().Drag(GetParam().Control, 0);
    EXPECT_EQ(Rows(), Present);
    for (const auto& [from, target] : {std::pair{3, 0}, {0, 4}, {1, 2}, {2, 1}}) {
        Startup().ClickRow(GetParam().Control, from);
        Host().FailAllocation(1);
        Startup().Drag(GetParam().Control, target);
        EXPECT_EQ(TakeMessages(), Names{NotEnoughMemory});
        EXPECT_EQ(Rows(), Present) << from << " to " << target;
        EXPECT_EQ(Records(), Present);
        EXPECT_EQ(List().Selected, from);
    }
}

}  // namespace

}  // namespace dialogtest
