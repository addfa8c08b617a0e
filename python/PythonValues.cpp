#include "python/PythonValues.h"

#include <cstdint>
#include <cstring>
#include <limits>
#include <string>

#include "platform/TextEncodings.h"
#include "python/PythonObject.h"
#include "workbench/documents/NamedCall.h"

namespace py = pybind11;

namespace {

/// Throws the exception of Python that says why a value can't be given to a member.
[[noreturn]] void Refuse(py::handle value) {
    PyErr_Clear();
    py::module_::import("quillara._arguments").attr("refuse")(value);
    throw py::error_already_set();
}

OwnedVariant WholeNumber(py::handle value) {
    const auto whole = py::reinterpret_steal<py::object>(PyNumber_Index(value.ptr()));
    if (!whole) {
        Refuse(value);
    }
    int isBeyond = 0;
    const long long number = PyLong_AsLongLongAndOverflow(whole.ptr(), &isBeyond);
    const bool isShort = isBeyond == 0 && number >= std::numeric_limits<std::int32_t>::min() &&
                         number <= std::numeric_limits<std::int32_t>::max();
    if (isShort) {
        return OwnedVariant::OfInteger(static_cast<std::int32_t>(number));
    }
    const double real = PyLong_AsDouble(whole.ptr());
    if (PyErr_Occurred() != nullptr) {
        Refuse(value);
    }
    return OwnedVariant::OfReal(real);
}

OwnedVariant RealNumber(py::handle value) {
    const double real = PyFloat_AsDouble(value.ptr());
    if (PyErr_Occurred() != nullptr) {
        Refuse(value);
    }
    return OwnedVariant::OfReal(real);
}

OwnedVariant Text(py::handle value) {
    Py_ssize_t size = 0;
    const char* text = PyUnicode_AsUTF8AndSize(value.ptr(), &size);
    if (text == nullptr || std::memchr(text, '\0', static_cast<std::size_t>(size)) != nullptr) {
        Refuse(value);
    }
    return OwnedVariant::OfText(WideText(std::string(text, static_cast<std::size_t>(size))));
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
        return Text(value);
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
    if (PyNumber_Check(value.ptr()) != 0 && PyComplex_Check(value.ptr()) == 0) {
        return RealNumber(value);
    }
    Refuse(value);
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
