#include "workbench/desktop/data/VariableModel.h"

#include <QLocale>
#include <algorithm>
#include <array>
#include <iterator>
#include <map>
#include <utility>

#include "workbench/data/Errors.h"
#include "workbench/exploration/KindChange.h"
#include "workbench/numbers/ExactNumbers.h"

namespace quillara {
namespace {

constexpr std::size_t MostValuesTold = 40;
constexpr std::size_t MostUnlabelled = 100;

struct ColumnTitle {
    const char* Title;
    const char* Tip;
};

constexpr std::array<ColumnTitle, VariableModel::ColumnCount> Titles{{
    {QT_TRANSLATE_NOOP("quillara::VariableModel", "Name"), QT_TRANSLATE_NOOP("quillara::VariableModel", "Name")},
    {QT_TRANSLATE_NOOP("quillara::VariableModel", "Label"),
     QT_TRANSLATE_NOOP("quillara::VariableModel", "What the variable is about; double-click to write another label")},
    {QT_TRANSLATE_NOOP("quillara::VariableModel", "Type"),
     QT_TRANSLATE_NOOP("quillara::VariableModel", "What its values are; double-click to choose another type")},
    {QT_TRANSLATE_NOOP("quillara::VariableModel", "Values"),
     QT_TRANSLATE_NOOP("quillara::VariableModel",
                       "Value labels, or where the values lie; double-click to write labels")},
    {QT_TRANSLATE_NOOP("quillara::VariableModel", "Missing values"),
     QT_TRANSLATE_NOOP("quillara::VariableModel", "Values that stand for missing data, and the cases that have them")},
    {QT_TRANSLATE_NOOP("quillara::VariableModel", "Missing"),
     QT_TRANSLATE_NOOP("quillara::VariableModel", "Cases without a value")},
    {QT_TRANSLATE_NOOP("quillara::VariableModel", "Distinct"),
     QT_TRANSLATE_NOOP("quillara::VariableModel", "How many different values there are")},
    {QT_TRANSLATE_NOOP("quillara::VariableModel", "Distribution"),
     QT_TRANSLATE_NOOP("quillara::VariableModel", "How many cases have each value, or lie in each part of the range")},
    {QT_TRANSLATE_NOOP("quillara::VariableModel", "Format"),
     QT_TRANSLATE_NOOP("quillara::VariableModel", "Display format of the file")},
}};

QVariantList BarsOf(const ValueSpread& spread) {
    QVariantList bars;
    std::ranges::transform(spread.Bars, std::back_inserter(bars),
                           [](std::size_t bar) { return QVariant::fromValue(static_cast<qulonglong>(bar)); });
    return bars;
}

std::size_t RowOf(const QModelIndex& index) {
    return static_cast<std::size_t>(index.row());
}

/// A line a value.
QString ListOfValues(const VariableSummary& summary) {
    QString list;
    for (std::size_t i = 0; i < std::min(summary.Values.size(), MostValuesTold); ++i) {
        const LabelledValue& value = summary.Values[i];
        list += (i == 0 ? QString() : QStringLiteral("\n")) + QString::fromStdString(value.Text);
        list += value.Label.empty() ? QString() : QStringLiteral(" = ") + QString::fromStdString(value.Label);
        list +=
            value.Description.empty() ? QString() : QStringLiteral(": ") + QString::fromStdString(value.Description);
    }
    return summary.Values.size() > MostValuesTold ? list + QStringLiteral("\n...") : list;
}

/// Values with texts of their own, and of few numbers those without.
std::vector<EditedValue> EditableOf(const Variable& variable, const VariableSummary& summary) {
    std::map<double, QString> written;
    for (const LabelledValue& value : summary.Values) {
        written[value.Number] = QString::fromStdString(value.Text);
    }
    if (variable.Kind == ValueKind::Number && summary.Spread.Distinct <= MostUnlabelled) {
        VisitValues(variable.Values, [&](double value) {
            if (!variable.IsMissing(value)) {
                written.try_emplace(value, QString::fromStdString(ExactNumberText(value)));
            }
        });
    }
    std::vector<EditedValue> values;
    std::ranges::transform(written, std::back_inserter(values), [](const auto& value) {
        return EditedValue{value.first, value.second, {}};
    });
    return values;
}

}  // namespace

QString VariableModel::KindName(ValueKind kind) {
    switch (kind) {
        case ValueKind::Date:
            return tr("date");
        case ValueKind::TimeOfDay:
            return tr("time of day");
        case ValueKind::DateTime:
            return tr("date and time");
        case ValueKind::Text:
            return tr("text");
        case ValueKind::Number:
            break;
    }
    return tr("number");
}

VariableModel::VariableModel(QObject* parent) : QAbstractTableModel(parent), Work(new BackgroundWork(this)) {}

void VariableModel::Show(std::shared_ptr<const DataTable> table) {
    Work->Cancel();
    KeepEdits();
    beginResetModel();
    Shown = std::move(table);
    Found.assign(Shown == nullptr ? 0 : Shown->Variables.size(), std::nullopt);
    endResetModel();
}

void VariableModel::Summarize() {
    const auto next = std::ranges::find(Found, false, &Known::has_value);
    if (next == Found.end() || Work->IsRunning()) {
        return;
    }
    const auto variable = static_cast<std::size_t>(next - Found.begin());
    Work->Start([this, variable, table = Shown](const auto& /*cancelled*/) -> BackgroundWork::Delivery {
        return [this, table, variable, facts = FactsOf(table->Variables[variable])] { Take(table, variable, facts); };
    });
}

VariableModel::Facts VariableModel::FactsOf(const Variable& variable) {
    Facts facts;
    facts.Summary = SummaryOf(variable);
    facts.Values = ShownValuesOf(facts.Summary);
    facts.MissingValues = ShownMissingOf(facts.Summary);
    facts.Editable = EditableOf(variable, facts.Summary);
    facts.EditableInAll = facts.Editable.size();
    facts.Editable.resize(std::min(facts.Editable.size(), MostEdited));
    facts.Summary.Values.resize(std::min(facts.Summary.Values.size(), MostValuesTold + 1));
    return facts;
}

void VariableModel::Take(const std::shared_ptr<const DataTable>& table, std::size_t variable, Facts facts) {
    if (table != Shown) {
        return;
    }
    Found[variable] = std::move(facts);
    const int row = static_cast<int>(variable);
    emit dataChanged(index(row, 0), index(row, ColumnCount - 1));
    Summarize();
}

std::vector<EditedValue> VariableModel::ValuesOf(std::size_t variable) const {
    if (!Found[variable]) {
        return {};
    }
    std::vector<EditedValue> values = Found[variable]->Editable;
    for (EditedValue& value : values) {
        value.Texts = Edits.TextsOf(*Shown, variable, value.Value);
    }
    return values;
}

QString VariableModel::LeftOutOf(std::size_t variable) const {
    const Known& facts = Found[variable];
    if (!facts) {
        return tr("The values are still being counted; try again in a moment.");
    }
    const QLocale locale;
    const auto all = static_cast<qulonglong>(facts->EditableInAll);
    if (facts->EditableInAll > MostEdited) {
        return tr("The first %1 of %2 values; the others keep their texts.")
            .arg(locale.toString(static_cast<qulonglong>(MostEdited)), locale.toString(all));
    }
    const auto distinct = static_cast<qulonglong>(facts->Summary.Spread.Distinct);
    return all > 0 ? QString()
                   : tr("%1 different values and no labels: labels are for variables of up to %2 values.")
                         .arg(locale.toString(distinct))
                         .arg(MostUnlabelled);
}

void VariableModel::SetValues(std::size_t variable, const std::vector<EditedValue>& values) {
    for (const EditedValue& value : values) {
        Edits.SetTexts(*Shown, variable, value.Value, value.Texts);
    }
    ShowValues(variable);
    emit editsChanged();
}

/// With the edits, which the summary of the table doesn't know.
void VariableModel::ShowValues(std::size_t variable) {
    const bool isText = Shown->Variables[variable].Kind == ValueKind::Text;
    Facts& facts = *Found[variable];
    facts.Summary.Values.clear();
    for (const EditedValue& value : ValuesOf(variable)) {
        const std::string written = value.Written.toStdString();
        if (isText || !value.Texts.Label.empty() || !value.Texts.Description.empty()) {
            const std::string& label = isText && value.Texts.Label.empty() ? written : value.Texts.Label;
            facts.Summary.Values.push_back({value.Value, written, label, value.Texts.Description});
        }
    }
    const std::size_t beyond = facts.EditableInAll - facts.Editable.size();
    facts.Summary.Values.resize(facts.Summary.Values.size() + beyond);  // only counted
    facts.Values = ShownValuesOf(facts.Summary);
    const int row = static_cast<int>(variable);
    emit dataChanged(index(row, 0), index(row, ColumnCount - 1));
}

void VariableModel::KeepEdits() {
    if (HasEdits()) {
        const std::shared_ptr<const DataTable> edited = Edits.Apply(*Shown);
        DropEdits();
        emit tableEdited(edited);
    }
}

void VariableModel::DropEdits() {
    Edits.Clear();
    for (std::size_t variable = 0; variable < Found.size(); ++variable) {
        if (Found[variable] && !Found[variable]->Editable.empty()) {
            ShowValues(variable);
        }
    }
    if (rowCount() > 0) {
        emit dataChanged(index(0, Label), index(rowCount() - 1, Type));
    }
    emit editsChanged();
}

Qt::ItemFlags VariableModel::flags(const QModelIndex& index) const {
    const Qt::ItemFlags plain = QAbstractTableModel::flags(index);
    const bool isType = index.column() == Type && CanChangeKind(Shown->Variables[RowOf(index)].Kind);
    return index.column() == Label || isType ? plain | Qt::ItemIsEditable : plain;
}

bool VariableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    const bool isEdited = index.isValid() && role == Qt::EditRole &&
                          (index.column() == Label ? SetLabel(RowOf(index), value.toString())
                                                   : index.column() == Type && SetKind(RowOf(index), value.toInt()));
    if (isEdited) {
        emit dataChanged(index, index);
        emit editsChanged();
    }
    return isEdited;
}

bool VariableModel::SetLabel(std::size_t variable, const QString& label) {
    Edits.SetLabel(*Shown, variable, label.trimmed().toStdString());
    return true;
}

bool VariableModel::SetKind(std::size_t variable, int kind) {
    try {
        Edits.SetKind(*Shown, variable, static_cast<ValueKind>(kind));
        return true;
    } catch (const DataError& failure) {
        emit refused(QString::fromUtf8(failure.what()));
        return false;
    }
}

int VariableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(Found.size());
}

int VariableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ColumnCount;
}

QString VariableModel::TextOf(std::size_t variable, int column) const {
    const Variable& shown = Shown->Variables[variable];
    const Known& facts = Found[variable];
    const auto counted = [&](auto count) { return QLocale().toString(static_cast<qulonglong>(count)); };
    switch (column) {
        case Name:
            return QString::fromStdString(shown.Name);
        case Label:
            return QString::fromStdString(Edits.LabelOf(*Shown, variable));
        case Type:
            return KindName(Edits.KindOf(*Shown, variable));
        case Format:
            return QString::fromStdString(shown.Format);
        case Values:
            return facts ? QString::fromStdString(facts->Values) : QStringLiteral("...");
        case MissingValues:
            return facts ? QString::fromStdString(facts->MissingValues) : QString();
        case Missing:
            return facts ? counted(facts->Summary.Spread.Missing) : QString();
        case Distinct:
            return facts ? counted(facts->Summary.Spread.Distinct) : QString();
        default:
            return {};
    }
}

QString VariableModel::TipOf(std::size_t variable, int column) const {
    if (column == Values && Found[variable]) {
        return ListOfValues(Found[variable]->Summary);
    }
    return column == Label || column == MissingValues ? TextOf(variable, column) : QString();
}

QVariant VariableModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || Shown == nullptr) {
        return {};
    }
    const std::size_t variable = RowOf(index);
    switch (role) {
        case Qt::EditRole:
            return index.column() == Type ? QVariant(static_cast<int>(Edits.KindOf(*Shown, variable)))
                                          : QVariant(TextOf(variable, index.column()));
        case Qt::DisplayRole:
            return TextOf(variable, index.column());
        case Qt::ToolTipRole:
            return TipOf(variable, index.column());
        case Qt::TextAlignmentRole:
            return QVariant(Qt::AlignVCenter |
                            (index.column() == Missing || index.column() == Distinct ? Qt::AlignRight : Qt::AlignLeft));
        case BarsRole:
            return index.column() == Distribution && Found[variable] ? QVariant(BarsOf(Found[variable]->Summary.Spread))
                                                                     : QVariant();
        default:
            return {};
    }
}

QVariant VariableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Vertical) {
        return role == Qt::DisplayRole ? QVariant(section + 1) : QVariant();
    }
    const bool isKnown = section >= 0 && section < ColumnCount;
    if (!isKnown || (role != Qt::DisplayRole && role != Qt::ToolTipRole)) {
        return {};
    }
    const ColumnTitle& title = Titles[static_cast<std::size_t>(section)];
    return tr(role == Qt::DisplayRole ? title.Title : title.Tip);
}

}  // namespace quillara
