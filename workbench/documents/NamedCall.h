#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/Automation.h"
#include "platform/OwnedVariant.h"

namespace quillara {

/// A member can't be used as it is called: the status of the call, and the argument that is to blame.
struct MemberRefusal {
    static constexpr std::uint32_t NoArgument = 0xFFFFFFFF;

    HRESULT Status = S_OK;
    std::uint32_t Argument = NoArgument;  ///< its index in the call
};

/// One call of a member by name: its arguments, and the value that it gives.
class NamedCall {
  public:
    /// The arguments outlive it.
    NamedCall(const DISPPARAMS& arguments, bool writes) : Parameters(arguments), IsWrite(writes) {}

    /// Whether the member is written; its new value is then the argument at 0.
    [[nodiscard]] bool Writes() const { return IsWrite; }
    [[nodiscard]] std::size_t Count() const { return Parameters.Count; }

    // An argument by its place from 0, in the order in which a script writes them. Throw MemberRefusal when it can't be
    // had as such.

    [[nodiscard]] std::int32_t Integer(std::size_t place) const {
        return Converted(place, VariantType::Integer).Integer;
    }
    [[nodiscard]] bool Boolean(std::size_t place) const { return Converted(place, VariantType::Boolean).Boolean != 0; }
    [[nodiscard]] std::string Text(std::size_t place) const;
    /// As it is.
    [[nodiscard]] const VARIANT& Value(std::size_t place) const { return Parameters.Arguments[IndexOf(place)]; }
    /// A place in a row of `count` things, which scripts count from 1, as an index from 0. Throws MemberRefusal of
    /// DISP_E_BADINDEX beyond them.
    [[nodiscard]] std::size_t Index(std::size_t place, std::size_t count) const;

    // What the member gives

    void Give(bool value) { Result = OwnedVariant(BooleanVariant(value)); }
    void Give(std::int32_t value) { Result = OwnedVariant::OfInteger(value); }
    void Give(double value) { Result = OwnedVariant::OfReal(value); }
    void Give(const std::string& text);
    /// An object, which may be null; takes a reference of its own.
    void Give(IDispatch* object) { Result = OwnedVariant::OfObject(object); }
    void Give(OwnedVariant value) { Result = std::move(value); }

    /// Hands over what the member gave.
    [[nodiscard]] VARIANT Detach() { return Result.Detach(); }

  private:
    [[nodiscard]] std::uint32_t IndexOf(std::size_t place) const {
        return static_cast<std::uint32_t>(Parameters.Count - 1 - place);
    }
    /// Valid until the next conversion.
    [[nodiscard]] const VARIANT& Converted(std::size_t place, VariantType type) const;

    const DISPPARAMS& Parameters;
    bool IsWrite;
    mutable OwnedVariant Room;
    OwnedVariant Result;
};

// Values that hold lists

[[nodiscard]] OwnedVariant ValueOf(const std::string& text);
[[nodiscard]] OwnedVariant ListOf(std::vector<OwnedVariant> items);
[[nodiscard]] OwnedVariant ListOf(const std::vector<std::string>& texts);
[[nodiscard]] OwnedVariant ListOf(const std::vector<double>& numbers);

}  // namespace quillara
