#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/data/DataTable.h"
#include "workbench/data/FormulaTerms.h"
#include "workbench/data/FormulaTokens.h"
#include "workbench/data/Remark.h"

namespace quillara {

/// A formula, the table it is about, and what its reader notices.
struct FormulaContext {
    const DataTable& Table;
    FormulaText Formula;
    std::vector<Remark>& Notices;
};

enum class PartRole {
    Unknown,  ///< holds a variable that the table doesn't have: read to the end like any other, but never used
    Nothing,  ///< a missing value, of whichever kind is asked for
    Condition,
    Quoted,  ///< a text whose meaning depends on what stands beside it
    Value,
};

/// What a part of a formula stands for, and where it begins.
struct FormulaPart {
    std::size_t Offset = 0;
    PartRole Role = PartRole::Value;
    TermPointer Term{};
    bool Varies = false;  ///< whether it holds a variable
    std::string Text{};  ///< Quoted only

    // Of a Value:
    ValueKind Kind = ValueKind::Number;
    const Variable* Plain = nullptr;  ///< the variable that it is, if it is no more than that
    std::shared_ptr<const std::map<double, ValueTexts>> Labels{};  ///< null: none
    std::shared_ptr<const std::vector<std::string>> Texts{};  ///< Kind Text only, as Variable has them

    [[nodiscard]] bool IsText() const { return Role == PartRole::Value && Kind == ValueKind::Text; }
    [[nodiscard]] bool IsNumber() const { return Role == PartRole::Value && Kind != ValueKind::Text; }
};

[[noreturn]] void Refuse(const FormulaContext& context, std::size_t offset, const std::string& reason);

[[nodiscard]] FormulaPart NumberPart(std::size_t offset, double number);
[[nodiscard]] FormulaPart VariablePart(std::size_t offset, const Variable& variable);
/// A value or condition that is made of others: it is unknown or varies when one of them is or does.
[[nodiscard]] FormulaPart MadeOf(std::initializer_list<const FormulaPart*> parts, PartRole role, ValueKind kind,
                                 TermPointer term);

/// Each throws UsageError unless the part is what is asked for, or unknown.
void RequireCondition(const FormulaContext& context, const FormulaPart& part);
void RequireNumber(const FormulaContext& context, const FormulaPart& part);
void RequireValue(const FormulaContext& context, const FormulaPart& part);

/// The value of a number without variables; nothing for other parts.
[[nodiscard]] std::optional<double> ConstantOf(const FormulaPart& part);

/// A quoted text as a point in time. Throws UsageError when it is none.
[[nodiscard]] FormulaPart TimeOf(const FormulaContext& context, ValueKind kind, const FormulaPart& quoted);
/// A quoted text beside a point in time as such; other parts stay.
void ReadQuotedTimes(const FormulaContext& context, FormulaPart& left, FormulaPart& right);
/// Of a date and a date with a time the first as the second: its midnight; other parts stay.
void MakeDatesAlike(FormulaPart& left, FormulaPart& right);
/// How a point in time is asked for where a number stands: "is a date: write ...".
[[nodiscard]] std::string RequestFor(ValueKind kind);

}  // namespace quillara
