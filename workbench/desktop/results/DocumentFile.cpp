#include "workbench/desktop/results/DocumentFile.h"

#include <QFileDialog>
#include <QFileInfo>
#include <algorithm>
#include <array>

#include "workbench/charts/ChartFile.h"
#include "workbench/data/Errors.h"
#include "workbench/exploration/Exploration.h"
#include "workbench/exploration/ExploredOutputs.h"
#include "workbench/formats/FileReplacement.h"
#include "workbench/views/DocumentViews.h"
#include "workbench/views/PlainCharts.h"

namespace quillara {
namespace {

struct PictureEnd {
    const char* End;
    ChartFormat Format;
};

constexpr std::array<PictureEnd, 3> PictureEnds{{
    {"svg", ChartFormat::Svg},
    {"png", ChartFormat::Png},
    {"pdf", ChartFormat::Pdf},
}};

std::string PaintForView(const GraphDocument& graph, PictureUse use) {
    ChartLook look;
    look.Dark = use == PictureUse::DarkPage;
    return PaintedChart(graph, look, use == PictureUse::Workbook ? ChartFormat::Png : ChartFormat::Svg);
}

/// One table in delimited text is laid out as it is seen; programs take the tidy form from a whole session.
OutputFormat FormatFor(const QString& path, std::size_t documents) {
    const OutputFormat format = FormatOfFile(path.toStdString());
    return format == OutputFormat::Csv && documents == 1 ? OutputFormat::CsvBlocks : format;
}

}  // namespace

void SaveDocument(Exploration& exploration, ResultDocument& document, const QString& path) {
    const QString end = QFileInfo(path).suffix().toLower();
    const auto* picture =
        std::ranges::find_if(PictureEnds, [&](const PictureEnd& each) { return end == QLatin1String(each.End); });
    if (document.Graph() != nullptr && picture != PictureEnds.end()) {
        ReplaceFile(path.toStdString(),
                    PaintedChart(GraphForPeople(exploration, document), ChartLook(), picture->Format));
    } else {
        SaveReport(exploration, {CountedPointer<ResultDocument>::Share(&document)}, path);
    }
}

QString AskForFile(QWidget* parent, const QString& title, const QString& suggested, const QString& kinds) {
    QString kind;
    QString path = QFileDialog::getSaveFileName(parent, title, suggested, kinds, &kind);
    if (!path.isEmpty() && QFileInfo(path).suffix().isEmpty()) {
        const qsizetype end = kind.lastIndexOf(QStringLiteral("*."));
        path += end < 0 ? QString() : kind.mid(end + 1, kind.lastIndexOf(u')') - end - 1);
    }
    return path;
}

void SaveReport(Exploration& exploration, const std::vector<CountedPointer<ResultDocument>>& documents,
                const QString& path) {
    const OutputFormat format = FormatFor(path, documents.size());
    OutputCollection outputs = OutputsOf(exploration, documents);
    if (format == OutputFormat::Html || format == OutputFormat::Workbook) {
        outputs = Titled(std::move(outputs), {});
    }
    ReplaceFile(path.toStdString(), ViewOf({&outputs, 1}, format, PaintForView));
}

}  // namespace quillara
