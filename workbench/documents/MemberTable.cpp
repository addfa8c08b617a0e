#include "workbench/documents/MemberTable.h"

#include <algorithm>
#include <exception>
#include <new>

#include "host/Exceptions.h"
#include "workbench/data/Errors.h"
#include "workbench/documents/WideText.h"

namespace quillara {
namespace {

constexpr char16_t Small(char16_t letter) {
    return letter >= u'A' && letter <= u'Z' ? static_cast<char16_t>(letter - u'A' + u'a') : letter;
}

const MemberRow* RowOf(const ObjectKind& kind, DISPID member) {
    const auto row = std::ranges::find(kind.Members, member, &MemberRow::Number);
    return row == kind.Members.end() ? nullptr : &*row;
}

bool IsPut(unsigned use) {
    return (use & DispatchPropertyPut) != 0;
}

HRESULT CheckCount(const MemberRow& row, unsigned use, std::uint32_t count) {
    const bool fits = IsPut(use) ? count == 1 : count >= row.Fewest && count <= row.Most;
    return fits ? S_OK : DISP_E_BADPARAMCOUNT;
}

HRESULT Run(const MemberRow& row, void* object, unsigned use, const InvokedCall& invoked) {
    if (const HRESULT status = CheckCount(row, use, invoked.Parameters.Count); !Succeeded(status)) {
        return status;
    }
    const bool asks = (use & DispatchPropertyGet) != 0 && !IsPut(use);
    if (asks && invoked.Result == nullptr) {
        return E_POINTER;
    }
    NamedCall call(invoked.Parameters, IsPut(use));
    row.Run(object, call);
    if (invoked.Result != nullptr) {
        *invoked.Result = call.Detach();
    }
    return S_OK;
}

/// The exception record says what the framework's or the language's exception says.
HRESULT Tell(EXCEPINFO* record, CException* exception) {
    if (record != nullptr) {
        COleDispatchException::Process(record, exception);
    }
    exception->Delete();
    return DISP_E_EXCEPTION;
}

HRESULT Tell(EXCEPINFO* record, const std::exception& exception) {
    if (record != nullptr) {
        *record = {};
        record->Status = dynamic_cast<const UsageError*>(&exception) == nullptr ? E_FAIL : E_INVALIDARG;
        record->Source = SysAllocString(u"Quillara");
        record->Description = SysAllocString(WideText(exception.what()));
    }
    return DISP_E_EXCEPTION;
}

}  // namespace

HRESULT FindMember(const ObjectKind& kind, const char16_t* const* names, std::uint32_t count, DISPID* ids) noexcept {
    std::fill_n(ids, count, UnknownMember);
    if (count == 0) {
        return E_INVALIDARG;
    }
    const std::u16string_view wanted(names[0]);
    const auto isWanted = [wanted](std::u16string_view name) {
        return std::ranges::equal(name, wanted, {}, Small, Small);
    };
    const auto row = std::ranges::find_if(kind.Members, isWanted, &MemberRow::Name);
    if (row == kind.Members.end()) {
        return DISP_E_UNKNOWNNAME;
    }
    ids[0] = row->Number;
    return count == 1 ? S_OK : DISP_E_UNKNOWNNAME;  // no member has an argument with a name
}

HRESULT CallMember(const ObjectKind& kind, void* object, const InvokedCall& call) noexcept try {
    const MemberRow* row = RowOf(kind, call.Member);
    const unsigned use = row == nullptr ? 0U : static_cast<unsigned>(call.Flags & row->Uses);
    if (use == 0) {
        return DISP_E_MEMBERNOTFOUND;
    }
    try {
        return Run(*row, object, use, call);
    } catch (CException* exception) {
        return Tell(call.Exception, exception);
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (const std::exception& exception) {
        return Tell(call.Exception, exception);
    }
} catch (const MemberRefusal& refusal) {
    if (refusal.Argument != MemberRefusal::NoArgument && call.BadArgument != nullptr) {
        *call.BadArgument = refusal.Argument;
    }
    return refusal.Status;
} catch (...) {
    return E_UNEXPECTED;
}

}  // namespace quillara
