#include "workbench/scripting/DocumentWriting.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>
#include <thread>

#include "workbench/charts/ChartFile.h"
#include "workbench/data/Errors.h"
#include "workbench/data/LetterCase.h"
#include "workbench/data/QuotedText.h"
#include "workbench/documents/DocumentFiles.h"
#include "workbench/documents/OutputCollection.h"
#include "workbench/formats/FileReplacement.h"
#include "workbench/scripting/ChartLibrary.h"
#include "workbench/views/DocumentViews.h"
#include "workbench/views/GraphTables.h"
#include "workbench/views/HtmlTable.h"

namespace quillara {
namespace {

std::string Painted(const GraphDocument& graph, ChartFormat format) {
    static const std::thread::id painter = std::this_thread::get_id();
    if (std::this_thread::get_id() != painter) {
        throw DataError("Charts are painted by one thread only, the first that painted one.");
    }
    return PaintChart(graph, ChartLook(), format);
}

struct ViewFile {
    std::string_view End;
    std::string (*View)(const OutputCollection&);
};

constexpr std::array<ViewFile, 2> ViewFiles{{
    {".txt", TextView},
    {".csv", CsvBlocksView},
}};

struct PictureFile {
    std::string_view End;
    ChartFormat Format;
};

constexpr std::array<PictureFile, 3> PictureFiles{{
    {".svg", ChartFormat::Svg},
    {".png", ChartFormat::Png},
    {".pdf", ChartFormat::Pdf},
}};

const PictureFile* PictureNamed(const std::string& path) {
    std::string end = std::filesystem::path(path).extension().string();
    std::ranges::transform(end, end.begin(), SmallLetter);
    const auto* picture = std::ranges::find(PictureFiles, end, &PictureFile::End);
    return picture == PictureFiles.end() ? nullptr : picture;
}

[[noreturn]] void Refuse(const std::string& path, bool isGraph) {
    throw UsageError("A document can't be written to " + Quoted(path) + ": its name must end with " +
                     (isGraph ? ".svg, .png, .pdf, " : "") + ".txt or .csv.");
}

OutputCollection Alone(const ResultDocument& document) {
    OutputCollection outputs;
    outputs.FileName = document.Name();
    outputs.Add(document.Content(), document.Origin());
    return outputs;
}

std::string Bytes(const ResultDocument& document, const std::string& path) {
    std::string end = std::filesystem::path(path).extension().string();
    std::ranges::transform(end, end.begin(), SmallLetter);
    const PictureFile* picture = PictureNamed(path);
    if (document.Graph() != nullptr && picture != nullptr) {
        return Painted(*document.Graph(), picture->Format);
    }
    const auto* view = std::ranges::find(ViewFiles, end, &ViewFile::End);
    if (view == ViewFiles.end()) {
        Refuse(path, document.Graph() != nullptr);
    }
    return view->View(Alone(document));
}

void WriteToFile(const ResultDocument& document, const std::string& path) {
    ReplaceFile(path, Bytes(document, path));
}

}  // namespace

void OfferDocumentFiles() {
    SetDocumentWriter(WriteToFile);
}

std::string NamedResultOf(const ResultDocument& document) {
    return Alone(document).Entries.front().Result;
}

std::vector<TidyRow> TidyRowsOf(const ResultDocument& document) {
    return TidyRows(Alone(document));
}

void WritePicture(const GraphDocument& graph, const std::string& path) {
    const PictureFile* picture = PictureNamed(path);
    if (picture == nullptr) {
        throw UsageError("A picture can't be written to " + Quoted(path) +
                         ": its name must end with .svg, .png or .pdf.");
    }
    ReplaceFile(path, Painted(graph, picture->Format));
}

SpreadsheetDocument NumbersIn(const GraphDocument& graph) {
    return TablesOf(graph).front();
}

std::string TextOf(const ResultDocument& document) {
    return TextView(Alone(document));
}

std::string HtmlOf(const SpreadsheetDocument& table) {
    return HtmlTable(ShowTable(table), "class=\"result\"");
}

std::string SvgOf(const GraphDocument& graph) {
    return Painted(graph, ChartFormat::Svg);
}

}  // namespace quillara
