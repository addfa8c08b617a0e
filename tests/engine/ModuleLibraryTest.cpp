// The module as the host sees it: a library with one entry, which can be unloaded.

#include <dlfcn.h>
#include <gmock/gmock.h>

#include <cstdlib>
#include <fstream>

#include "host/AnalysisContext.h"
#include "host/AnalysisDialog.h"
#include "host/ModuleState.h"
#include "platform/CountedPointer.h"
#include "tests/Locations.h"
#include "tests/engine/DrillBench.h"
#include "workbench/hosting/AnalysisBinding.h"
#include "workbench/hosting/AnalysisModule.h"

namespace drilltest {

namespace {

const std::string ModulePath = testing_locations::Library("libqladrilldown.so");

}  // namespace

TEST(ModuleLibrary, ShowsItsEntryAndTheAnalysisAndNothingElse) {
    const std::string list = testing::TempDir() + "symbols-of-the-module";
    ASSERT_EQ(std::system(("nm -DC --defined-only '" + ModulePath + "' >'" + list + "'").c_str()), 0);
    std::ifstream symbols(list);
    Names shown;
    std::string address, kind, name;
    while (symbols >> address >> kind && std::getline(symbols >> std::ws, name)) {
        EXPECT_NE(kind, "u") << "a unique symbol keeps the library loaded";
        if (!name.starts_with("CDrillDown::")) {
            shown.push_back(name);
        }
    }
    EXPECT_THAT(shown, testing::ElementsAre("Orv6NewAnalysis", "typeinfo for CDrillDown",
                                            "typeinfo name for CDrillDown", "vtable for CDrillDown"));
}

TEST(ModuleLibrary, IsUnloadedWhenItsAnalysisIsDone) {
    const quillara::DataTable table = TableOf({Numbers("x", {1, 2, 3})});
    for (int i = 0; i < 2; ++i) {
        quillara::AnalysisModule module(ModulePath);
        quillara::AnalysisDocument document(table);
        document.Adopt(module.NewAnalysis());
        EXPECT_TRUE(document.RunSequence());
    }
    EXPECT_EQ(dlopen(ModulePath.c_str(), RTLD_NOW | RTLD_NOLOAD), nullptr);
}

TEST(ModuleLibrary, StaysLoadedWhileScriptsHoldItsObjects) {
    ModuleState* state = nullptr;
    {
        quillara::AnalysisModule module(ModulePath);
        state = AnalysisBinding::Context(*module.NewAnalysis()).State();
        ++state->Locks;
    }
    { quillara::AnalysisModule other(ModulePath); }
    void* library = dlopen(ModulePath.c_str(), RTLD_NOW | RTLD_NOLOAD);
    ASSERT_NE(library, nullptr);
    dlclose(library);
    --state->Locks;
    { quillara::AnalysisModule other(ModulePath); }
    EXPECT_EQ(dlopen(ModulePath.c_str(), RTLD_NOW | RTLD_NOLOAD), nullptr);
}

TEST(ModuleLibrary, FailuresOfTheHostStayWithinAndFacesOutliveTheirDialogs) {
    CountedPointer<IDispatch> face;
    const auto put = [&face](EXCEPINFO& record) {
        VARIANT one;
        return face->Invoke(8, GUID_NULL, NeutralLanguage, DispatchPropertyPut, {&one, nullptr, 1, 0}, nullptr, &record,
                            nullptr);
    };
    EXCEPINFO refused, closed;
    {
        const quillara::DataTable table = TableOf({Numbers("x", {1, 2, 3})});
        quillara::AnalysisModule module(ModulePath);
        quillara::AnalysisDocument document(table);
        document.Adopt(module.NewAnalysis());
        ASSERT_TRUE(document.RunSequence());
        face = QueryFor<IDispatch>(document.Analysis().GetStartupDialog()->GetUnknown());
        EXPECT_EQ(put(refused), DISP_E_EXCEPTION);
        EXPECT_EQ(refused.Status, E_NOTIMPL);
    }
    EXPECT_EQ(put(closed), DISP_E_EXCEPTION);
    EXPECT_EQ(closed.Status, CO_E_OBJNOTCONNECTED);
    for (const EXCEPINFO& record : {refused, closed}) {
        SysFreeString(record.Source);
        SysFreeString(record.Description);
    }
    face = {};
    { quillara::AnalysisModule other(ModulePath); }
    EXPECT_EQ(dlopen(ModulePath.c_str(), RTLD_NOW | RTLD_NOLOAD), nullptr);
}

}  // namespace drilltest
