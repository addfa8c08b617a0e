#include "tests/engine/QuickHost.h"

#include <algorithm>
#include <atomic>
#include <bit>
#include <cmath>
#include <condition_variable>
#include <map>
#include <mutex>
#include <thread>

#include "workbench/hosting/AnalysisState.h"

namespace drilltest {

namespace {

constexpr std::size_t Codes8Room = 256;
constexpr std::size_t Codes16Room = 65536;

/// Threads that wait for work; every test shares them.
class Pool {
  public:
    explicit Pool(int threads) {
        for (int i = 0; i < threads; ++i) {
            Workers.emplace_back([this](const std::stop_token& stop) { Serve(stop); });
        }
    }

    void Run(std::int32_t parts, std::int32_t threads, ParallelRuns::Part part, void* work) {
        {
            const std::lock_guard lock(Mutex);
            ThePart = part;
            Work = work;
            Parts = parts;
            Next = 0;
            Wanted = std::min(threads, parts) - 1;
            Busy = Wanted;
        }
        Wake.notify_all();
        TakeParts();
        std::unique_lock lock(Mutex);
        Done.wait(lock, [this] { return Busy == 0; });
    }

  private:
    void TakeParts() {
        for (std::int32_t part = Next++; part < Parts; part = Next++) {
            ThePart(Work, part);
        }
    }
    void Serve(const std::stop_token& stop) {
        std::unique_lock lock(Mutex);
        while (Wake.wait(lock, stop, [this] { return Wanted > 0; })) {
            --Wanted;
            lock.unlock();
            TakeParts();
            lock.lock();
            if (--Busy == 0) {
                Done.notify_one();
            }
        }
    }

    std::mutex Mutex;
    std::condition_variable_any Wake;
    std::condition_variable Done;
    std::atomic<std::int32_t> Next = 0;
    ParallelRuns::Part ThePart = nullptr;
    void* Work = nullptr;
    std::int32_t Parts = 0;
    std::int32_t Wanted = 0;
    std::int32_t Busy = 0;
    std::vector<std::jthread> Workers;
};

bool IsInteger(double x) {
    return x >= -2147483648.0 && x <= 2147483647.0 && x == std::trunc(x) && !(x == 0.0 && std::signbit(x));
}

}  // namespace

/// A column and what its entries point to.
struct QuickHost::NarrowColumn {
    template <typename Values>
    explicit NarrowColumn(const Values& values) : Numbers(values.begin(), values.end()) {
        std::map<std::uint64_t, std::size_t> codes;  // no order of the values themselves
        for (const double value : Numbers) {
            codes.try_emplace(std::bit_cast<std::uint64_t>(value) * 0x9E3779B97F4A7C15ULL, 0);
        }
        if (codes.size() + 1 < Codes16Room && Numbers.size() % 7 != 6) {
            Encode(codes);
        } else if (std::ranges::all_of(Numbers, IsInteger)) {
            Integers.assign(Numbers.begin(), Numbers.end());
            Column = {ColumnForm::Integers, Integers.data(), nullptr, 0};
        } else {
            Column = {ColumnForm::Doubles, Numbers.data(), nullptr, 0};
        }
    }

    void Encode(std::map<std::uint64_t, std::size_t>& codes) {
        Table.assign(1, 4711.0);  // a value of no case
        std::size_t next = 1;
        for (auto& [key, code] : codes) {
            code = next++;
        }
        Table.resize(next);
        const bool isNarrow = next <= Codes8Room;
        for (const double value : Numbers) {
            const std::size_t code = codes.at(std::bit_cast<std::uint64_t>(value) * 0x9E3779B97F4A7C15ULL);
            Table[code] = value;
            Codes8.push_back(static_cast<std::uint8_t>(code));
            Codes16.push_back(static_cast<std::uint16_t>(code));
        }
        const void* entries = isNarrow ? static_cast<const void*>(Codes8.data()) : Codes16.data();
        Column = {isNarrow ? ColumnForm::Codes8 : ColumnForm::Codes16, entries, Table.data(),
                  static_cast<std::int32_t>(next)};
    }

    std::vector<double> Numbers;
    std::vector<double> Table;
    std::vector<std::int32_t> Integers;
    std::vector<std::uint8_t> Codes8;
    std::vector<std::uint16_t> Codes16;
    TableColumn Column;
};

QuickHost::QuickHost(quillara::AnalysisDocument& document, const QuickServices& services)
    : Document(document), Services(services) {
    quillara::CaseServices& offered = document.State().Quick;
    offered.Columns = services.HasColumns ? this : nullptr;
    offered.Conditions = services.Conditions != QuickServices::Answer::None ? this : nullptr;
    offered.Threads = services.Threads > 0 ? this : nullptr;
    Renew();
}

QuickHost::~QuickHost() {
    Document.State().Quick = {};
}

void QuickHost::Renew() {
    static std::uint64_t revision = 0;
    Columns.clear();
    for (const quillara::Variable& variable : Document.Table().Variables) {
        Columns.push_back(std::make_unique<NarrowColumn>(variable.Values));
    }
    Columns.push_back(std::make_unique<NarrowColumn>(Document.State().Data.Weights));
    Document.State().Quick.Revision = Services.TellsRevision ? ++revision : 0;
}

bool QuickHost::FindColumn(std::int16_t variable, TableColumn& column) {
    column = Columns[static_cast<std::size_t>(variable) - 1]->Column;
    return true;
}

bool QuickHost::FindWeights(TableColumn& column) {
    column = !Document.State().Data.IsWeighted ? TableColumn() : Columns.back()->Column;
    return true;
}

const CaseResult* QuickHost::Selection() {
    const std::vector<CaseResult>& selection = Document.State().Data.Selection;
    return selection.empty() ? nullptr : selection.data();
}

std::int32_t QuickHost::BeginCases(std::int32_t first, std::int32_t count) {
    for (std::int32_t i = 0; i < count; ++i) {
        const bool isUsed = Document.State().Data.ResultOf(first + i) == CaseResult::Use;
        if (isUsed && Document.State().Around.AskForBreak()) {
            return i;
        }
    }
    return count;
}

bool QuickHost::FindCases(std::span<const CaseCondition> conditions, CaseSubset& cases) {
    Rows.clear();
    Bits.assign(static_cast<std::size_t>(Document.Table().Cases) / 64 + 1, 0);
    for (std::int32_t row = 0; row < Document.Table().Cases; ++row) {
        const bool isMet = std::ranges::all_of(conditions, [&](const CaseCondition& condition) {
            return condition.IsMetBy(Columns[static_cast<std::size_t>(condition.Variable) - 1]->Column.At(row));
        });
        if (isMet && Document.State().Data.ResultOf(row + 1) == CaseResult::Use) {
            Rows.push_back(row);
            Bits[static_cast<std::size_t>(row) / 64] |= std::uint64_t{1} << (row % 64);
        }
    }
    const bool bits = Services.Conditions == QuickServices::Answer::Bits;
    cases = {bits ? Bits.data() : nullptr, bits ? nullptr : Rows.data(), static_cast<std::int32_t>(Rows.size())};
    return true;
}

void QuickHost::Run(std::int32_t parts, Part part, void* work) {
    static Pool pool(15);
    pool.Run(parts, Services.Threads, part, work);
}

}  // namespace drilltest
