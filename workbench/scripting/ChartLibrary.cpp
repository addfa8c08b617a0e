#include "workbench/scripting/ChartLibrary.h"

#include <dlfcn.h>

#include <clocale>
#include <filesystem>

#include "workbench/data/Errors.h"
#include "workbench/hosting/AnalysisModule.h"

namespace quillara {
namespace {

constexpr char EntryName[] = "QuillaraPaintChart";
constexpr char LibraryFile[] = "libquillaracharts.so";

using Paint = void (*)(const GraphDocument&, const ChartLook&, ChartFormat, std::string&);

/// The folder that the analysis module is taken from, too; without one the system looks for the library.
std::string LibraryPath() {
    return (std::filesystem::path(AnalysisModule::DrillDownPath()).parent_path() / LibraryFile).string();
}

/// The library stays open to the end of the program: what it holds ends only then.
Paint OpenedEntry() {
    void* library = dlopen(LibraryPath().c_str(), RTLD_NOW | RTLD_LOCAL);
    const auto entry = library == nullptr ? nullptr : reinterpret_cast<Paint>(dlsym(library, EntryName));
    if (entry == nullptr) {
        const char* reason = dlerror();
        throw DataError("Charts can't be painted here: " + std::string(reason == nullptr ? LibraryFile : reason));
    }
    return entry;
}

/// The painter's toolkit takes over the user's language for the whole program, whose texts must stay as they are.
class KeptLocale {
  public:
    KeptLocale() : Name(std::setlocale(LC_ALL, nullptr)) {}
    KeptLocale(const KeptLocale&) = delete;
    KeptLocale& operator=(const KeptLocale&) = delete;
    ~KeptLocale() { std::setlocale(LC_ALL, Name.c_str()); }

  private:
    std::string Name;
};

}  // namespace

std::string PaintChart(const GraphDocument& graph, const ChartLook& look, ChartFormat format) {
    const KeptLocale locale;
    static const Paint paint = OpenedEntry();
    std::string bytes;
    paint(graph, look, format, bytes);
    return bytes;
}

}  // namespace quillara
