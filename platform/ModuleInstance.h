#pragma once

#include <span>

#include "platform/DialogResource.h"

/// One row of a module's string table.
struct StringResource {
    int Id;
    const char* Text;  ///< UTF-8, lives as long as the module
};

/// What a loaded module offers its host besides code: its name and its resources. Owned by the module and
/// valid while the module is loaded.
struct ModuleInstance {
    const char* Name;
    std::span<const StringResource> Strings;  ///< ascending by Id
    std::span<const DialogResource> Dialogs;  ///< dialogs and their pages
};
