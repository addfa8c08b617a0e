#include "workbench/desktop/data/TableSaving.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QProgressDialog>
#include <QStringList>
#include <exception>
#include <string>
#include <vector>

#include "workbench/data/Errors.h"
#include "workbench/desktop/data/BackgroundWork.h"
#include "workbench/formats/DataFile.h"
#include "workbench/formats/FileFormats.h"

namespace quillara {
namespace {

constexpr int ShownAfter = 250;  // milliseconds

struct Text {
    Q_DECLARE_TR_FUNCTIONS(quillara::TableSaving)
};

struct Outcome {
    bool IsWritten = false;
    QString Message;
};

Outcome Write(const DataTable& table, const std::string& path, const std::function<bool()>& cancelled) {
    try {
        QStringList lost;
        for (const std::string& line : WriteDataFile(table, path, cancelled)) {
            lost.append(QString::fromStdString(line));
        }
        return {true, lost.join(QLatin1Char('\n'))};
    } catch (const Interrupted&) {
        return {};
    } catch (const std::bad_alloc&) {
        return {false, Text::tr("There is not enough memory to save the table.")};
    } catch (const std::exception& failure) {
        return {false, QString::fromUtf8(failure.what())};
    }
}

}  // namespace

SavingAnswers AnswersOfUser() {
    const auto choosePath = [](QWidget* parent, const QString& suggested) {
        const QStringList filters = FiltersOfWrittenFiles().split(QStringLiteral(";;"));
        const auto own = filters.filter(QStringLiteral("*.%1)").arg(QFileInfo(suggested).suffix()));
        QString filter = own.value(0, filters.front());
        return QFileDialog::getSaveFileName(parent, Text::tr("Save table"), suggested,
                                            filters.join(QStringLiteral(";;")), &filter);
    };
    const auto tell = [](QWidget* parent, const QString& text) {
        QMessageBox::information(parent, Text::tr("Save table"), text);
    };
    return {choosePath, tell};
}

QString FiltersOfWrittenFiles() {
    QStringList filters;
    for (const FileFormat& format : FileFormats) {
        if (format.IsWritten) {
            const QString extension = QString::fromUtf8(format.Extension.data(), qsizetype(format.Extension.size()));
            const QString content = QString::fromUtf8(format.Content.data(), qsizetype(format.Content.size()));
            filters.append(QStringLiteral("%1: %2 (*.%1)").arg(extension, content));
        }
    }
    return filters.join(QStringLiteral(";;"));
}

bool SaveTable(QWidget* parent, const std::shared_ptr<const DataTable>& table, const QString& path,
               const SavingAnswers& answers) {
    Outcome outcome;
    QEventLoop waiting;
    BackgroundWork work;
    QProgressDialog shown(Text::tr("Saving %1").arg(QFileInfo(path).fileName()), Text::tr("&Stop"), 0, 0, parent);
    shown.setWindowModality(Qt::WindowModal);
    shown.setMinimumDuration(ShownAfter);
    QObject::connect(&shown, &QProgressDialog::canceled, &work, &BackgroundWork::Cancel);
    QObject::connect(&work, &BackgroundWork::ended, &waiting, &QEventLoop::quit);
    work.Start([&outcome, table, file = path.toStdString()](const auto& cancelled) -> BackgroundWork::Delivery {
        const Outcome written = Write(*table, file, cancelled);
        return [&outcome, written] { outcome = written; };
    });
    waiting.exec();
    shown.reset();
    if (!outcome.Message.isEmpty()) {
        answers.Tell(parent, outcome.IsWritten
                                 ? Text::tr("The file is written, but can't keep everything:\n%1").arg(outcome.Message)
                                 : outcome.Message);
    }
    return outcome.IsWritten;
}

}  // namespace quillara
