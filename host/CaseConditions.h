#pragma once

#include <cstdint>
#include <span>

// Optional service of a host beside columns or blocks: the cases that meet conditions. A host with an index, or one
// that keeps what it has found for a condition, answers without reading a column again; the module keeps no table of
// the cases that remain.

/// Which values meet a condition, by plain comparison of doubles.
enum class ConditionRule : std::uint8_t {
    Equal,  ///< x == Upper; a NaN doesn't
    OpenClosed,  ///< Lower < x <= Upper, and every NaN
    OpenClosedNumber,  ///< Lower < x <= Upper; a NaN doesn't
    ClosedOpen,  ///< Lower <= x < Upper, and every NaN
    Closed,  ///< Lower <= x <= Upper; a NaN doesn't
    Everything,
    Nothing,
};

/// A condition on one variable. Missing values are tested by their code like any other.
struct CaseCondition {
    std::int16_t Variable = 0;  ///< number from 1
    ConditionRule Rule = ConditionRule::Everything;
    double Lower = 0.0;
    double Upper = 0.0;

    [[nodiscard]] bool IsMetBy(double x) const noexcept {
        switch (Rule) {
            case ConditionRule::Equal:
                return x == Upper;
            case ConditionRule::OpenClosed:
                return !(x > Upper || Lower >= x);
            case ConditionRule::OpenClosedNumber:
                return x > Lower && !(x > Upper);
            case ConditionRule::ClosedOpen:
                return !(x >= Upper || Lower > x);
            case ConditionRule::Closed:
                return Lower <= x && x <= Upper;
            case ConditionRule::Nothing:
                return false;
            case ConditionRule::Everything:
                break;
        }
        return true;
    }
    [[nodiscard]] friend bool operator==(const CaseCondition&, const CaseCondition&) = default;
};

/// Cases of the table, in one of two forms. The host owns the arrays; what stands in them isn't tested.
struct CaseSubset {
    const std::uint64_t* Bits = nullptr;  ///< a bit per case: case n is bit (n - 1) % 64 of word (n - 1) / 64
    const std::int32_t* Rows = nullptr;  ///< where Bits is null: their numbers less 1, ascending, each once
    std::int32_t Count = 0;  ///< how many they are
};

/// Implemented by the host, used by the module. Calls come on the host's one thread.
class CaseConditions {
  public:
    virtual ~CaseConditions() = default;

    /// Gives the cases of the selection that meet all conditions, which may be none. Bits behind the last case are 0.
    /// What is given stays valid and unchanged until the next call or until table, selection or weight change, and may
    /// be read by several threads at once. The steps of an exploration come and go in any order, so a host does well to
    /// keep what it found for each condition; a list of rows is the better answer where few cases remain. Neither polls
    /// for a cancel nor shows progress. False when the host can't (no memory), and so when both arrays are null and
    /// Count isn't 0: the module then tests the cases itself.
    [[nodiscard]] virtual bool FindCases(std::span<const CaseCondition> conditions, CaseSubset& cases) = 0;
};
