#pragma once

#include <pybind11/pybind11.h>

#include <string>
#include <vector>

#include "platform/Automation.h"
#include "platform/CountedPointer.h"

/// An object that is called by the names of its members, as `_quillara.Object`. Dropped by Python, it lets its
/// reference go within a call of the host.
class PythonObject {
  public:
    explicit PythonObject(CountedPointer<IDispatch> face) : Face(std::move(face)) {}
    PythonObject(const PythonObject&) = delete;
    PythonObject& operator=(const PythonObject&) = delete;
    ~PythonObject();

    /// None for null.
    [[nodiscard]] static pybind11::object Wrap(CountedPointer<IDispatch> face);
    /// Adds the class to the module.
    static void Define(pybind11::module_& module);

    [[nodiscard]] IDispatch* Get() const { return Face.Get(); }
    /// Calls a member; throws a ScriptError with its name.
    pybind11::object Invoke(DISPID member, std::uint16_t use, const pybind11::args& arguments) const;

  private:
    [[nodiscard]] std::string NameOf(DISPID member) const;

    CountedPointer<IDispatch> Face;
};
