#pragma once

#include <dlfcn.h>

#include <string>
#include <utility>

#include "workbench/data/Errors.h"

namespace quillara {

/// The functions of a library that is opened at run time.
class LibraryFunctions {
  public:
    /// `owner` is what the library belongs to, for messages.
    LibraryFunctions(void* opened, std::string owner) : Library(opened), Owner(std::move(owner)) {}

    /// Throws DataError when there is none of this name.
    template <typename Function>
    void Load(const char* name, Function& function) const {
        function = reinterpret_cast<Function>(dlsym(Library, name));
        if (function == nullptr) {
            throw DataError("The library of " + Owner + " can't be used: it has no " + std::string(name) + ".");
        }
    }

  private:
    void* Library;
    std::string Owner;
};

}  // namespace quillara
