// The entry of the chart library for programs that open it when they paint.

#include <QString>
#include <QtGlobal>
#include <cstdio>

#include "workbench/charts/ChartFile.h"

namespace quillara {
namespace {

void PassFailures(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text) {
    if (type == QtCriticalMsg || type == QtFatalMsg) {
        std::fprintf(stderr, "%s\n", qPrintable(text));
    }
}

/// What the toolkit finds in its surroundings is nothing that a user of a command line asked for.
class QuietToolkit {
  public:
    QuietToolkit() : Before(qInstallMessageHandler(PassFailures)) {}
    QuietToolkit(const QuietToolkit&) = delete;
    QuietToolkit& operator=(const QuietToolkit&) = delete;
    ~QuietToolkit() { qInstallMessageHandler(Before); }

  private:
    QtMessageHandler Before;
};

}  // namespace
}  // namespace quillara

/// Paints as PaintedChart does, and throws as it does: the library and its callers are C++ of one build.
extern "C" void QuillaraPaintChart(const quillara::GraphDocument& document, const quillara::ChartLook& look,
                                   quillara::ChartFormat format, std::string& bytes) {
    const quillara::QuietToolkit quiet;
    bytes = quillara::PaintedChart(document, look, format);
}
