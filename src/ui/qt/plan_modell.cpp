#include "ui/qt/plan_modell.h"

#include "platform/window/application.h"

#include <QFont>

#include "ui/qt/farben.h"
#include "ui/qt/qt_text.h"

namespace kalvora {

void PlanModell::set_table(const Table* table) {
    beginResetModel();
    table_ = table;
    rows_ = table ? table->rows() : 0;
    cols_ = table ? table->cols() : 0;
    endResetModel();
}

void PlanModell::cells_changed() {
    if (!table_) return;
    if (table_->rows() != rows_ || table_->cols() != cols_) {
        set_table(table_);
    } else if (rows_ > 0 && cols_ > 0) {
        emit dataChanged(index(0, 0), index(rows_ - 1, cols_ - 1));
    }
}

int PlanModell::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_;
}

int PlanModell::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : cols_;
}

Qt::ItemFlags PlanModell::flags(const QModelIndex& index) const {
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable : Qt::NoItemFlags;
}

namespace {

// These texts come from the logic outside its border for events; without one the cell stays silent.
// While the program is at work its data may be half read: then nobody is told anything.
QString Auskunft(const Table& table, const std::function<Text(int, int)>& frage, int row, int col) {
    try {
        return frage && !table.form().app().busy() ? qt(frage(row, col)) : QString();
    } catch (...) {
        return {};
    }
}

} // namespace

// Without a spoken name of its own a cell is read as its heading and its text.
QString PlanModell::Ansage(int row, int col) const {
    if (const QString name = Auskunft(*table_, table_->accessible_name, row, col); !name.isEmpty())
        return name;
    const QString text =
        qt(table_->cell(row, col).text).replace(u'\r', u' ').replace(u'\u00A0', u' ').trimmed();
    if (row < table_->fixed_rows() || col < table_->fixed_cols()) return text;
    const QString kopf =
        table_->fixed_rows() > 0 ? qt(table_->cell(0, col).text).replace(u'\r', u' ') : QString();
    return kopf.isEmpty() ? text : text.isEmpty() ? kopf : kopf + QStringLiteral(", ") + text;
}

QVariant PlanModell::data(const QModelIndex& index, int role) const {
    if (!table_ || !index.isValid() || index.row() >= table_->rows() || index.column() >= table_->cols())
        return {};
    const int row = index.row(), col = index.column();
    const Cell& cell = table_->cell(row, col);
    switch (role) {
    case Qt::DisplayRole: return qt(cell.text);
    case Qt::ForegroundRole: return qt(cell.fore);
    case Qt::BackgroundRole: return qt(cell.back);
    case Qt::TextAlignmentRole: return col == 0 ? Qt::AlignLeft : Qt::AlignCenter;
    case Qt::ToolTipRole: return Auskunft(*table_, table_->tool_tip, row, col);
    case Qt::AccessibleTextRole: return Ansage(row, col);
    case Qt::FontRole: {
        QFont font;
        font.setBold(cell.bold);
        return font;
    }
    default: return {};
    }
}

} // namespace kalvora
