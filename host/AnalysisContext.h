#pragma once

struct ModuleInstance;
struct ModuleState;

/// The module's side of the host's analysis context: made when the module is loaded, destroyed when it is unloaded,
/// and shared by all analyses of the module.
class CAnalysisContext {
  public:
    CAnalysisContext() = default;
    CAnalysisContext(const CAnalysisContext&) = delete;
    CAnalysisContext& operator=(const CAnalysisContext&) = delete;
    virtual ~CAnalysisContext() = default;

    /// The resources of the module; never null.
    [[nodiscard]] virtual const ModuleInstance* Instance() const = 0;
    /// What the framework keeps of the module; never null.
    [[nodiscard]] virtual ModuleState* State() const = 0;
};

/// Registers the name of a module's type library with the host's automation. Safe to repeat.
void OrvOleRegisterTypeLib(const char* name);
