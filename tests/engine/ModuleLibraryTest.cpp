// The module as the host sees it: a library with one entry, which can be unloaded.

#include <dlfcn.h>

#include <array>
#include <cstdio>
#include <memory>
#include <sstream>

#include "tests/Locations.h"
#include "tests/engine/DrillBench.h"
#include "workbench/hosting/AnalysisModule.h"

namespace drilltest {

namespace {

std::string ModulePath() {
    return testing_locations::Library("libqladrilldown.so");
}

std::string OutputOf(const std::string& command) {
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    std::string text;
    std::array<char, 4096> part;
    while (pipe && std::fgets(part.data(), part.size(), pipe.get()) != nullptr) {
        text += part.data();
    }
    return text;
}

}  // namespace

TEST(ModuleLibrary, ShowsItsEntryAndTheAnalysisAndNothingElse) {
    std::istringstream symbols(OutputOf("nm -DC --defined-only '" + ModulePath() + "'"));
    Names shown;
    bool unique = false;
    std::string address, kind, name;
    while (symbols >> address >> kind && std::getline(symbols >> std::ws, name)) {
        unique = unique || kind == "u";
        if (!name.starts_with("CDrillDown::")) {
            shown.push_back(name);
        }
    }
    EXPECT_FALSE(unique) << "a unique symbol keeps the library loaded";
    EXPECT_EQ(shown, (Names{"Orv6NewAnalysis", "typeinfo for CDrillDown", "typeinfo name for CDrillDown",
                            "vtable for CDrillDown"}));
}

TEST(ModuleLibrary, IsUnloadedWhenItsAnalysisIsDone) {
    const quillara::DataTable table = TableOf({Numbers("x", {1, 2, 3})});
    for (int i = 0; i < 2; ++i) {
        const quillara::AnalysisModule module(ModulePath());
        quillara::AnalysisDocument document(table);
        document.Adopt(module.NewAnalysis());
        EXPECT_TRUE(document.RunSequence());
    }
    EXPECT_EQ(dlopen(ModulePath().c_str(), RTLD_NOW | RTLD_NOLOAD), nullptr);
}

}  // namespace drilltest
