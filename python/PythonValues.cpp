#include "python/PythonValues.h"

#include <cstdint>
#include <limits>
#include <string>

#include "platform/TextEncodings.h"
#include "python/PythonObject.h"
#include "workbench/documents/NamedCall.h"

namespace py = pybind11;

namespace {

OwnedVariant WholeNumber(py::handle value) {
    const auto number = value.cast<std::int64_t>();
    const bool isShort =
        number >= std::numeric_limits<std::int32_t>::min() && number <= std::numeric_limits<std::int32_t>::max();
    return isShort ? OwnedVariant::OfInteger(static_cast<std::int32_t>(number))
                   : OwnedVariant::OfReal(static_cast<double>(number));
}

OwnedVariant List(py::handle value) {
    std::vector<OwnedVariant> items;
    for (const py::handle item : py::reinterpret_borrow<py::sequence>(value)) {
        items.push_back(VariantOf(item));
    }
    return quillara::ListOf(std::move(items));
}

py::list ItemsOf(const SAFEARRAY& array) {
    py::list items;
    for (std::uint32_t i = 0; i < array.Bounds[0].Count; ++i) {
        VARIANT copy;
        VariantCopy(copy, array.Data[i]);
        items.append(ObjectOf(OwnedVariant(copy)));
    }
    return items;
}

py::object TextOf(BSTR text) {
    return py::str(NarrowText(ViewOf(text)));
}

/// A number of a kind that no object here gives, by way of one that they give.
py::object NumberOf(const VARIANT& value) {
    OwnedVariant real;
    if (!Succeeded(VariantChangeType(*real.Put(), value, VariantType::Real))) {
        throw py::type_error("A value of automation has no form in Python.");
    }
    return py::float_(real.Get().Real);
}

}  // namespace

OwnedVariant VariantOf(py::handle value) {
    if (value.is_none()) {
        return {};
    }
    if (py::isinstance<py::bool_>(value)) {
        return OwnedVariant(BooleanVariant(value.cast<bool>()));
    }
    if (py::isinstance<py::str>(value)) {
        return OwnedVariant::OfText(WideText(value.cast<std::string>()));
    }
    if (py::isinstance<PythonObject>(value)) {
        return OwnedVariant::OfObject(value.cast<PythonObject&>().Get());
    }
    if (PyIndex_Check(value.ptr()) != 0) {
        return WholeNumber(value);
    }
    if (py::isinstance<py::list>(value) || py::isinstance<py::tuple>(value)) {
        return List(value);
    }
    if (py::hasattr(value, "__fspath__")) {
        return VariantOf(py::module_::import("os").attr("fsdecode")(value));
    }
    if (PyNumber_Check(value.ptr()) != 0) {
        return OwnedVariant::OfReal(py::float_(py::reinterpret_borrow<py::object>(value)));
    }
    throw py::type_error("This value can't be given to a member: " + py::repr(value).cast<std::string>());
}

py::object ObjectOf(OwnedVariant owned) {
    const VARIANT& value = owned.Get();
    if (Has(value.Type, VariantType::Array)) {
        return ItemsOf(*value.Array);
    }
    switch (value.Type) {
        case VariantType::Empty:
        case VariantType::Null:
            return py::none();
        case VariantType::Integer:
            return py::int_(value.Integer);
        case VariantType::Real:
            return py::float_(value.Real);
        case VariantType::Boolean:
            return py::bool_(value.Boolean != 0);
        case VariantType::Text:
            return TextOf(value.Text);
        case VariantType::Dispatch:
            return PythonObject::Wrap(CountedPointer<IDispatch>::Share(value.Dispatch));
        default:
            return NumberOf(value);
    }
}
