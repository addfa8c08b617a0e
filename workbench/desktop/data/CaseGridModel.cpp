#include "workbench/desktop/data/CaseGridModel.h"

#include <QFont>
#include <QGuiApplication>
#include <QPalette>
#include <utility>

namespace quillara {
namespace {

/// Of so few cases another order is there before one could see that it is waited for.
constexpr std::int32_t ArrangedAtOnce = 50'000;
constexpr int MarkOpacity = 48;
const QChar WithoutValue(0x00B7);

QString OneLineOf(const std::string& text) {
    QString line = QString::fromStdString(text);
    return line.replace(QLatin1Char('\n'), QLatin1Char(' '));
}

}  // namespace

CaseGridModel::CaseGridModel(QObject* parent) : QAbstractTableModel(parent), Work(new BackgroundWork(this)) {
    connect(Work, &BackgroundWork::ended, this, [this] { Wanted = Order; });
}

void CaseGridModel::Show(std::shared_ptr<const DataTable> table) {
    Work->Cancel();
    beginResetModel();
    Shown = std::move(table);
    Remaining.reset();
    Order = {};
    Wanted = {};
    Arranged = Shown == nullptr ? std::make_shared<CaseArrangement>() : std::make_shared<CaseArrangement>(*Shown);
    endResetModel();
}

void CaseGridModel::MarkRemaining(std::optional<RowSet> remaining) {
    const bool isAll = !remaining || Shown == nullptr || remaining->Count() == static_cast<std::size_t>(Shown->Cases);
    if (isAll && Remaining == nullptr) {
        return;
    }
    Remaining = isAll ? nullptr : std::make_shared<const RowSet>(std::move(*remaining));
    if (IsFiltered) {
        Arrange();
    } else if (rowCount() > 0) {
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
        emit headerDataChanged(Qt::Vertical, 0, rowCount() - 1);
    }
}

void CaseGridModel::SetFiltered(bool isFiltered) {
    if (std::exchange(IsFiltered, isFiltered) != isFiltered && Remaining != nullptr) {
        Arrange();
    }
}

void CaseGridModel::SetWriting(ValueWriting writing) {
    HowWritten = writing;
    if (rowCount() > 0) {
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    }
}

void CaseGridModel::sort(int column, Qt::SortOrder order) {
    CaseOrder wanted;
    if (column >= 0 && column < columnCount()) {
        wanted = {static_cast<std::size_t>(column), order == Qt::DescendingOrder};
    }
    if (wanted != Wanted) {
        Wanted = wanted;
        Arrange();
    }
}

void CaseGridModel::Arrange() {
    if (Shown == nullptr) {
        return;
    }
    const std::shared_ptr<const RowSet> kept = IsFiltered ? Remaining : nullptr;
    if (Shown->Cases <= ArrangedAtOnce) {
        Take(*CaseArrangement::Of(*Shown, Wanted, kept.get(), [] { return false; }), Wanted);
        return;
    }
    Work->Start([this, table = Shown, order = Wanted, kept](const auto& cancelled) -> BackgroundWork::Delivery {
        auto arranged = CaseArrangement::Of(*table, order, kept.get(), cancelled);
        if (!arranged) {
            return {};
        }
        const auto made = std::make_shared<CaseArrangement>(std::move(*arranged));
        return [this, made, order] { Take(std::move(*made), order); };
    });
}

void CaseGridModel::Take(CaseArrangement arranged, const CaseOrder& order) {
    Order = order;
    const bool isOfSameSize = arranged.Count() == Arranged->Count();
    auto taken = std::make_shared<const CaseArrangement>(std::move(arranged));
    if (!isOfSameSize) {
        beginResetModel();
        Arranged = std::move(taken);
        endResetModel();
        return;
    }
    emit layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    Arranged = std::move(taken);
    emit layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

int CaseGridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(Arranged->Count());
}

int CaseGridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() || Shown == nullptr ? 0 : static_cast<int>(Shown->Variables.size());
}

bool CaseGridModel::IsMarked(std::size_t row) const {
    return Remaining != nullptr && (Remaining->Bits()[row / RowSet::RowsPerWord] >> row % RowSet::RowsPerWord & 1) != 0;
}

QVariant CaseGridModel::ColorOf(std::size_t row, bool isMissing, int role) const {
    const QPalette palette = QGuiApplication::palette();
    if (role == Qt::ForegroundRole) {
        const bool isLeftOut = Remaining != nullptr && !IsMarked(row);
        return isMissing || isLeftOut ? palette.placeholderText() : QVariant();
    }
    if (!IsMarked(row) || IsFiltered) {
        return {};
    }
    QColor mark = palette.color(QPalette::Highlight);
    mark.setAlpha(MarkOpacity);
    return mark;
}

QString CaseGridModel::TipOf(const Variable& variable, std::size_t row) const {
    const FieldText label = TextOfField(variable, row, ValueWriting::Labels);
    const FieldText code = TextOfField(variable, row, ValueWriting::Codes);
    QString tip = QString::fromStdString(variable.LongName.empty() ? variable.Name : variable.LongName);
    tip += QStringLiteral(": ") + QString::fromStdString(code.Text);
    if (label.Text != code.Text) {
        tip += QStringLiteral(" = ") + QString::fromStdString(label.Text);
    }
    return label.IsMissing ? tip + QStringLiteral(" (%1)").arg(tr("missing")) : tip;
}

QVariant CaseGridModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || Shown == nullptr) {
        return {};
    }
    const std::size_t row = Arranged->RowAt(static_cast<std::size_t>(index.row()));
    const Variable& variable = Shown->Variables[static_cast<std::size_t>(index.column())];
    const auto isMissing = [&] { return variable.IsMissing(variable.Values[row]); };
    switch (role) {
        case Qt::DisplayRole: {
            const FieldText field = TextOfField(variable, row, HowWritten);
            return field.IsMissing && field.Text.empty() ? QString(WithoutValue) : OneLineOf(field.Text);
        }
        case Qt::ForegroundRole:
        case Qt::BackgroundRole:
            return ColorOf(row, isMissing(), role);
        case Qt::FontRole: {
            QFont font;
            font.setItalic(true);
            return isMissing() ? QVariant(font) : QVariant();
        }
        case Qt::TextAlignmentRole: {
            const bool isLeft =
                variable.Kind == ValueKind::Text || (variable.HasLabels() && HowWritten == ValueWriting::Labels);
            return QVariant(Qt::AlignVCenter | (isLeft ? Qt::AlignLeft : Qt::AlignRight));
        }
        case Qt::ToolTipRole:
            return TipOf(variable, row);
        default:
            return {};
    }
}

QVariant CaseGridModel::HeaderOfCase(int section, int role) const {
    const std::size_t row = Arranged->RowAt(static_cast<std::size_t>(section));
    if (role == Qt::DisplayRole) {
        const QString number = QString::number(row + 1);
        return Shown->CaseNames.empty() ? number : number + QStringLiteral("  ") + OneLineOf(Shown->CaseNames[row]);
    }
    if (role == Qt::ToolTipRole && Remaining != nullptr) {
        return IsMarked(row) ? tr("Remains after the steps") : tr("Left out by the steps or the case selection");
    }
    if (role == Qt::FontRole && IsMarked(row)) {
        QFont font;
        font.setBold(true);
        return font;
    }
    return {};
}

QVariant CaseGridModel::HeaderOfVariable(int section, int role) const {
    const Variable& variable = Shown->Variables[static_cast<std::size_t>(section)];
    if (role == Qt::DisplayRole) {
        return QString::fromStdString(variable.Name);
    }
    if (role == Qt::ToolTipRole) {
        const QString label = QString::fromStdString(variable.LongName);
        return (label.isEmpty() ? QString() : label + QLatin1Char('\n')) +
               tr("Click to sort by value; a third click gives the order of the file.");
    }
    return {};
}

QVariant CaseGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    const bool isOfCase = orientation == Qt::Vertical;
    if (Shown == nullptr || section < 0 || section >= (isOfCase ? rowCount() : columnCount())) {
        return {};
    }
    return isOfCase ? HeaderOfCase(section, role) : HeaderOfVariable(section, role);
}

}  // namespace quillara
