#include "workbench/views/HtmlChart.h"

#include "workbench/views/HtmlPicture.h"
#include "workbench/views/HtmlTable.h"
#include "workbench/views/HtmlText.h"
#include "workbench/views/ThemedColors.h"

namespace quillara {
namespace {

std::string TablesInHtml(const GraphDocument& graph) {
    std::string text;
    for (const ShownTable& table : ShowTables(graph)) {
        text += HtmlTable(table, "class=\"result\"");
    }
    return text;
}

/// A picture in the colours of the reader's theme; two of which the page shows one where they differ in more.
std::string PictureOf(const GraphDocument& graph, const PictureFrame& frame, const GraphPainter& paint) {
    const std::string light = paint(graph, PictureUse::LightPage);
    const std::string dark = paint(graph, PictureUse::DarkPage);
    if (const std::optional<std::string> both = InBothThemes(light, dark)) {
        return HtmlPicture(*both, frame);
    }
    return HtmlPicture(light, {frame.Title, frame.Id, frame.Class + " by-day"}) +
           HtmlPicture(dark, {frame.Title, frame.Id + "-dark", frame.Class + " by-night"});
}

std::string PictureAndNumbers(const GraphDocument& graph, const std::string& anchor, const GraphPainter& paint,
                              bool isBesideTable) {
    const std::string title = TitleOf(ShowTables(graph).front());
    std::string picture = PictureOf(graph, {title, anchor + "-title", "picture"}, paint);
    if (isBesideTable) {
        return picture;
    }
    return picture + Element("details", "", Element("summary", "", "Numbers") + '\n' + TablesInHtml(graph)) + '\n';
}

}  // namespace

std::string HtmlChart(const GraphDocument& graph, const std::string& anchor, const GraphPainter& paint,
                      bool isBesideTable) {
    const std::string contents = paint ? PictureAndNumbers(graph, anchor, paint, isBesideTable) : TablesInHtml(graph);
    return Element("figure", "class=\"chart\" id=\"" + anchor + '"', '\n' + contents) + '\n';
}

}  // namespace quillara
