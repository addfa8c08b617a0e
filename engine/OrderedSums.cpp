#include "engine/OrderedSums.h"

#include <algorithm>

using namespace drilldown;

namespace {

template <std::size_t Variables>
void AddSideBySide(const OrderedSums* variables, const double* weights, std::size_t count) {
    std::array<OrderedSums, Variables> all{};
    std::copy_n(variables, Variables, all.begin());
    for (std::size_t i = 0; i < count; ++i) {
        const double weight = weights[i];
#pragma GCC unroll 6
        for (std::size_t variable = 0; variable < Variables; ++variable) {
            all[variable].Sums[all[variable].Places[i]] += weight;
        }
    }
}

using Adding = void (*)(const OrderedSums* variables, const double* weights, std::size_t count);

constexpr std::array<Adding, OrderedSumsLimit> AddingByVariables{AddSideBySide<1>, AddSideBySide<2>, AddSideBySide<3>,
                                                                 AddSideBySide<4>, AddSideBySide<5>, AddSideBySide<6>};

}  // namespace

void drilldown::AddInOrder(std::span<const OrderedSums> variables, const double* weights, std::size_t count) {
    while (!variables.empty()) {
        const std::size_t taken = std::min(variables.size(), OrderedSumsLimit);
        AddingByVariables[taken - 1](variables.data(), weights, count);
        variables = variables.subspan(taken);
    }
}
