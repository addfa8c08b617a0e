#include "workbench/views/HtmlChart.h"

#include "workbench/views/HtmlPicture.h"
#include "workbench/views/HtmlTable.h"
#include "workbench/views/HtmlText.h"

namespace quillara {
namespace {

std::string Tables(const GraphDocument& graph) {
    std::string text;
    for (const ShownTable& table : ShowTables(graph)) {
        text += HtmlTable(table, "class=\"result\"");
    }
    return text;
}

std::string PictureAndNumbers(const GraphDocument& graph, const std::string& anchor, const GraphPainter& paint,
                              bool isBesideTable) {
    const std::string title = TitleOf(ShowTables(graph).front());
    const std::string picture = HtmlPicture(paint(graph), title, anchor + "-title");
    if (isBesideTable) {
        return picture;
    }
    return picture + Element("details", "", Element("summary", "", "Numbers") + '\n' + Tables(graph)) + '\n';
}

}  // namespace

std::string HtmlChart(const GraphDocument& graph, const std::string& anchor, const GraphPainter& paint,
                      bool isBesideTable) {
    const std::string contents = paint ? PictureAndNumbers(graph, anchor, paint, isBesideTable) : Tables(graph);
    return Element("figure", "class=\"chart\" id=\"" + anchor + '"', '\n' + contents) + '\n';
}

}  // namespace quillara
