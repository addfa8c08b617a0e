#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/workbench/documents/ResultSamples.h"

namespace quillara {
namespace {

using testing::HasSubstr;
using testing::Not;

/// The page from its first table's mark to the end of that table.
std::string FirstTable(const OutputCollection& outputs) {
    const std::string page = HtmlView(outputs);
    const std::size_t begin = page.find("<table>");
    return page.substr(begin, page.find("</table>") + 8 - begin);
}

TEST(HtmlView, ATableHasCaptionAndScopes) {
    EXPECT_EQ(FirstTable(Collection({FrequencyTable()})),
              R"(<table>
<caption><div class="caption"><h3>Frequency table of sex</h3><p>N Total: 8, Selected: 7</p><p>age = 30</p></div></caption>
<thead><tr><td></td><th scope="col">Count</th><th scope="col">Cumulative<br>Count</th><th scope="col">Percent(%)</th><th scope="col" class="text">Description</th></tr></thead>
<tbody>
<tr><th scope="row">Female</th><td>3</td><td>3</td><td class="share" style="--share:42.857142857142854">42.86</td><td class="text">said &quot;she&quot;, &lt;b&gt;</td></tr>
<tr><th scope="row">Male</th><td>4</td><td>7</td><td class="share" style="--share:57.142857142857146">57.14</td><td class="text"></td></tr>
</tbody>
</table>)");
}

TEST(HtmlView, EveryTextIsEscaped) {
    const std::string bad = "<script>&\"";
    OutputCollection outputs = Collection({{{bad, bad}, bad, {{bad, false}}, {{bad, {bad}}}}});
    outputs.FileName = bad;
    outputs.StepTexts = {bad};
    outputs.Entries[0].Step = 1;
    EXPECT_THAT(HtmlView(outputs), Not(HasSubstr("<script>")));
    EXPECT_THAT(HtmlView(outputs), HasSubstr("aria-label=\"&lt;script&gt;&amp;&quot;\""));
}

TEST(HtmlView, ContentsLeadToStepsAndTables) {
    OutputCollection outputs = Collection({SummaryTable()});
    outputs.StepTexts = {"Down: sex = Female", "Up: sex"};
    outputs.BeginCommand(9060, 2);
    outputs.Add(FrequencyTable());
    const std::string page = HtmlView(outputs);
    for (const char* anchor : {"step-1", "step-2", "table-1", "table-2"}) {
        EXPECT_THAT(page, HasSubstr(std::string("href=\"#") + anchor + '"'));
        EXPECT_THAT(page, HasSubstr(std::string("id=\"") + anchor + '"'));
    }
    EXPECT_THAT(page, HasSubstr("<h2><span class=\"number\">Step 0</span>All cases</h2>"));
    EXPECT_THAT(page, HasSubstr("<h2><span class=\"number\">Step 2</span>Up: sex</h2>"));
    EXPECT_THAT(page, HasSubstr("<li><span class=\"number\">Step 1</span>Down: sex = Female</li>"));
}

TEST(HtmlView, ThePageNeedsNoOtherFile) {
    const std::string page = HtmlView(Collection({FrequencyTable()}));
    for (const char* reference : {"src=", "http", "@import", "url("}) {
        EXPECT_THAT(page, Not(HasSubstr(reference)));
    }
}

}  // namespace
}  // namespace quillara
