#include "workbench/exploration/ScriptFaults.h"

#include <gtest/gtest.h>

namespace quillara {
namespace {

TEST(ScriptFaults, TheInnermostLineOfTheScriptIsTold) {
    constexpr const char* trace =
        "before\nTraceback (most recent call last):\n  File \"/a/b.py\", line 12, in <module>\n    f()\n"
        "  File \"/a/b.py\", line 3, in f\n    g()\n  File \"/usr/lib/x.py\", line 99, in g\nValueError: 7\n";
    EXPECT_EQ(LineOfFault(trace, "/a/b.py"), 3);
    EXPECT_EQ(LineOfFault(trace, "/a/c.py"), std::nullopt);
    EXPECT_EQ(LineOfFault("  File \"s.py\", line 4\n    x = = 1\nSyntaxError: invalid syntax", "s.py"), 4);
    EXPECT_EQ(LineOfFault("  File \"s.py\", line ?", "s.py"), std::nullopt);
}

}  // namespace
}  // namespace quillara
