// New orders of the two sets, all requests of small sets against a plain model.

#include <algorithm>
#include <iterator>
#include <numeric>

#include "tests/engine/DrillBench.h"

namespace drilltest {

namespace {

using Request = std::vector<std::int32_t>;

/// One of the two sets that can be reordered.
struct Side {
    const char* Name;
    CDrillDown::DrillSet* CDrillDown::*Set;
    int (CDrillDown::*Reorder)(const std::int32_t* request, int entries, int placed);
};

class Reordering : public testing::TestWithParam<Side>, public DrillBench {
  protected:
    Reordering() : DrillBench(Road::Columns) {}

    /// Opens variables A, B, ... which stand in the set in this order.
    void Fill(int variables) {
        std::vector<quillara::Variable> columns;
        Names names;
        for (int i = 0; i < variables; ++i) {
            names.emplace_back(1, static_cast<char>('A' + i));
            columns.push_back(Numbers(names.back(), {1, 2}));
        }
        columns.push_back(Numbers("spare", {1, 2}));
        DrillBench::Open(std::move(columns));
        Choose(names);
        if (&Set() == Analysis().DrillUps) {
            std::for_each(names.rbegin(), names.rend(), [this](const std::string& name) { Down(name, "1"); });
        }
    }
    CDrillDown::DrillSet& Set() const { return *(Analysis().*GetParam().Set); }
    std::string Order() const {
        return std::accumulate(Set().begin(), Set().end(), std::string(),
                               [](const std::string& text, const Drill& record) { return text + record.Name; });
    }
    int Reorder(const Request& request, int placed) {
        return (Analysis().*GetParam().Reorder)(request.data(), static_cast<int>(request.size()), placed);
    }
};
INSTANTIATE_TEST_SUITE_P(Sets, Reordering,
                         testing::Values(Side{"Downs", &CDrillDown::DrillDowns, &CDrillDown::ReorderDrillDowns},
                                         Side{"Ups", &CDrillDown::DrillUps, &CDrillDown::ReorderDrillUps}),
                         [](const auto& side) { return side.param.Name; });

/// The placed names at their places, then the others.
std::string Model(const std::string& names, const Request& request, int placed) {
    std::string order(static_cast<std::size_t>(placed), ' ');
    for (std::size_t i = 0; i < names.size(); ++i) {
        request[i] < 0 ? order.push_back(names[i]) : void(order[static_cast<std::size_t>(request[i])] = names[i]);
    }
    return order;
}

/// The number of places given; -1 when they aren't 0, 1, ... once each.
int PlacesOf(Request request) {
    std::sort(request.begin(), request.end());
    const auto first = std::find_if(request.begin(), request.end(), [](int place) { return place >= 0; });
    for (auto place = first; place != request.end(); ++place) {
        if (*place != place - first) {
            return -1;
        }
    }
    return static_cast<int>(request.end() - first);
}

/// The next request in counting order; false behind the last.
bool Advance(Request& request) {
    for (std::int32_t& place : request) {
        if (++place < static_cast<int>(request.size())) {
            return true;
        }
        place = -1;
    }
    return false;
}

TEST_P(Reordering, OfSmallSetsFollowsEveryRequest) {
    for (int variables = 1; variables <= 4; ++variables) {
        Fill(variables);
        Request request(static_cast<std::size_t>(variables), -1);
        do {
            const int placed = PlacesOf(request);
            if (placed < 0) {
                continue;
            }
            const std::string expected = Model(Order(), request, placed);
            EXPECT_EQ(Reorder(request, placed), 1);
            ASSERT_EQ(Order(), expected) << testing::PrintToString(request);
            int place = 0;
            EXPECT_TRUE(std::all_of(Set().begin(), Set().end(), [&](const Drill& r) { return r.Order == place++; }));
        } while (Advance(request));
    }
}

}  // namespace

}  // namespace drilltest
