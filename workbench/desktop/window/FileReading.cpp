#include "workbench/desktop/window/FileReading.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QThread>

#include "workbench/desktop/window/LongWork.h"

namespace quillara {
namespace {

constexpr int Units = 1000;  // of progress
constexpr unsigned long LookedAtEvery = 2;  // milliseconds

}  // namespace

TableReading::Outcome ReadWhileAlive(const QString& path, LongWork& work) {
    TableReading reading(path.toStdString());
    const QString what = QCoreApplication::translate("FileReading", "Reading %1").arg(QFileInfo(path).fileName());
    work.Begin(what, Units, [&reading] { reading.Cancel(); });
    while (!reading.HasEnded()) {
        work.Advance(static_cast<int>(reading.Share() * Units));
        QThread::msleep(LookedAtEvery);
    }
    work.End();
    work.Settle();
    return reading.Finish();
}

}  // namespace quillara
