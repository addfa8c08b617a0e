#include "workbench/charts/OffscreenApplication.h"

#include <QApplication>
#include <array>
#include <stdexcept>

namespace quillara {
namespace {

/// What the toolkit says of a missing session of the desktop is of no interest without a screen.
void SaysNothing(QtMsgType, const QMessageLogContext&, const QString&) {}

/// Never destroyed: other static objects may still paint when the program ends.
void MakeOffscreenApplication() {
    static std::array<char, 9> program = {"quillara"};
    static std::array<char, 10> option = {"-platform"};
    static std::array<char, 10> platform = {"offscreen"};
    static std::array<char*, 4> arguments = {program.data(), option.data(), platform.data(), nullptr};
    static int count = 3;
    const QtMessageHandler usual = qInstallMessageHandler(SaysNothing);
    [[maybe_unused]] static auto* const application = new QApplication(count, arguments.data());
    qInstallMessageHandler(usual);
}

}  // namespace

void EnsureApplication() {
    if (QCoreApplication::instance() == nullptr) {
        MakeOffscreenApplication();
    }
    if (qobject_cast<QApplication*>(QCoreApplication::instance()) == nullptr) {
        throw std::logic_error("Charts need a QApplication.");
    }
}

}  // namespace quillara
