#pragma once

#include <atomic>
#include <cstdint>

/// What the framework keeps of one module.
struct ModuleState {
    std::atomic<std::int32_t> Locks =
        0;  ///< objects that scripts may hold; while there are any the module stays loaded
};

/// The state of the module that was entered last on this thread; null: none.
ModuleState* CurrentModuleState();
/// Enters the state of a module and gives the one that was current. Null: none is current.
ModuleState* SetCurrentModuleState(ModuleState* state);

/// The state of the module that the caller is linked into; each module defines it.
ModuleState* OrvGetAppModuleState();

/// Enters the state of a module until the end of a scope.
class EnterModuleState {
  public:
    explicit EnterModuleState(ModuleState* state) : Former(SetCurrentModuleState(state)) {}
    EnterModuleState(const EnterModuleState&) = delete;
    EnterModuleState& operator=(const EnterModuleState&) = delete;
    ~EnterModuleState() { SetCurrentModuleState(Former); }

  private:
    ModuleState* Former;
};
