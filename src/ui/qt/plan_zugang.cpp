#include "ui/qt/plan_zugang.h"

#include <QAccessibleWidget>
#include <QHash>
#include <QPointer>

#include "ui/qt/plan_ansicht.h"

namespace kalvora {

namespace {

class ZelleZugang : public QAccessibleInterface, public QAccessibleTableCellInterface {
public:
    ZelleZugang(PlanAnsicht& view, int row, int col) : view_(&view), row_(row), col_(col) {}

    bool isValid() const override { return view_ && view_->table() && row_ < view_->model().rowCount(); }
    QObject* object() const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(view_.data());
    }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    void setText(QAccessible::Text, const QString&) override {}
    QString text(QAccessible::Text kind) const override {
        if (!isValid() || (kind != QAccessible::Name && kind != QAccessible::Value)) return {};
        return view_->model().data(view_->model().index(row_, col_), Qt::AccessibleTextRole).toString();
    }
    QRect rect() const override {
        if (!isValid()) return {};
        const QRect r = view_->cell_rect(row_, col_);
        return {view_->viewport()->mapToGlobal(r.topLeft()), r.size()};
    }
    QAccessible::Role role() const override {
        if (row_ < (view_ ? view_->rows().fest() : 0)) return QAccessible::ColumnHeader;
        return col_ == 0 ? QAccessible::RowHeader : QAccessible::Cell;
    }
    QAccessible::State state() const override {
        QAccessible::State state;
        state.selectable = state.focusable = row_ > 0 && col_ > 0;
        state.selected = isSelected();
        if (isValid() && view_->table()->HighLight()) {
            const Selection& s = view_->table()->selection();
            state.focused = view_->hasFocus() && s.row_sel == row_ && s.col_sel == col_;
        }
        return state;
    }
    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::TableCellInterface ? static_cast<QAccessibleTableCellInterface*>(this)
                                                       : nullptr;
    }

    bool isSelected() const override {
        if (!isValid() || !view_->table()->HighLight()) return false;
        const Selection& s = view_->table()->selection();
        return row_ >= qMin(s.row, s.row_sel) && row_ <= qMax(s.row, s.row_sel) &&
               col_ >= qMin(s.col, s.col_sel) && col_ <= qMax(s.col, s.col_sel);
    }
    QList<QAccessibleInterface*> columnHeaderCells() const override;
    QList<QAccessibleInterface*> rowHeaderCells() const override;
    int columnIndex() const override { return col_; }
    int rowIndex() const override { return row_; }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface* table() const override { return parent(); }

private:
    QAccessibleInterface* neighbour(int row, int col) const;
    QPointer<PlanAnsicht> view_;
    int row_, col_;
};

class PlanZugang : public QAccessibleWidget, public QAccessibleTableInterface {
public:
    explicit PlanZugang(PlanAnsicht* view) : QAccessibleWidget(view, QAccessible::Table) {}
    ~PlanZugang() override {
        for (const QAccessible::Id id : cells_)
            QAccessible::deleteAccessibleInterface(id);
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::TableInterface) return static_cast<QAccessibleTableInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }
    int childCount() const override { return rowCount() * columnCount(); }
    QAccessibleInterface* child(int index) const override {
        return columnCount() > 0 ? cellAt(index / columnCount(), index % columnCount()) : nullptr;
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        const auto* cell = dynamic_cast<const ZelleZugang*>(child);
        return cell ? cell->rowIndex() * columnCount() + cell->columnIndex() : -1;
    }
    QAccessibleInterface* childAt(int x, int y) const override {
        const QPoint p = view().viewport()->mapFromGlobal(QPoint(x, y));
        return cellAt(view().rows().zeile_bei(p.y()), view().columns().spalte_bei(p.x()));
    }
    QAccessibleInterface* focusChild() const override {
        const Table* t = view().table();
        return t && t->HighLight() ? cellAt(t->selection().row_sel, t->selection().col_sel) : nullptr;
    }

    // Cells come into being when they are asked for; the plan of a large company has many.
    QAccessibleInterface* cellAt(int row, int column) const override {
        if (row < 0 || column < 0 || row >= rowCount() || column >= columnCount()) return nullptr;
        const auto key = std::make_pair(row, column);
        const auto hit = cells_.constFind(key);
        if (hit != cells_.constEnd()) return QAccessible::accessibleInterface(*hit);
        auto* cell = new ZelleZugang(view(), row, column); // QAccessible takes it over
        cells_.insert(key, QAccessible::registerAccessibleInterface(cell));
        return cell;
    }
    int rowCount() const override { return view().model().rowCount(); }
    int columnCount() const override { return view().last_day_col() + 1; } // the hidden key column is none
    QAccessibleInterface* caption() const override { return nullptr; }
    QAccessibleInterface* summary() const override { return nullptr; }
    QString rowDescription(int row) const override { return spoken(row, 0); }
    QString columnDescription(int column) const override { return spoken(0, column); }
    int selectedCellCount() const override { return static_cast<int>(selectedCells().size()); }
    int selectedColumnCount() const override { return 0; }
    int selectedRowCount() const override { return 0; }
    QList<QAccessibleInterface*> selectedCells() const override {
        QList<QAccessibleInterface*> cells;
        const Table* t = view().table();
        if (!t || !t->HighLight()) return cells;
        const Selection& s = t->selection();
        for (int row = qMin(s.row, s.row_sel); row <= qMax(s.row, s.row_sel); ++row)
            for (int col = qMin(s.col, s.col_sel); col <= qMax(s.col, s.col_sel); ++col)
                if (auto* cell = cellAt(row, col)) cells.append(cell);
        return cells;
    }
    QList<int> selectedColumns() const override { return {}; }
    QList<int> selectedRows() const override { return {}; }
    bool isColumnSelected(int) const override { return false; }
    bool isRowSelected(int) const override { return false; }
    bool selectRow(int) override { return false; }
    bool selectColumn(int) override { return false; }
    bool unselectRow(int) override { return false; }
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent*) override {}

private:
    PlanAnsicht& view() const { return *static_cast<PlanAnsicht*>(widget()); }
    QString spoken(int row, int col) const {
        PlanModell& model = view().model();
        return model.data(model.index(row, col), Qt::AccessibleTextRole).toString();
    }
    mutable QHash<std::pair<int, int>, QAccessible::Id> cells_;
};

QAccessibleInterface* ZelleZugang::neighbour(int row, int col) const {
    auto* plan = dynamic_cast<PlanZugang*>(parent());
    return plan ? plan->cellAt(row, col) : nullptr;
}

QList<QAccessibleInterface*> ZelleZugang::columnHeaderCells() const {
    QAccessibleInterface* cell = row_ > 0 ? neighbour(0, col_) : nullptr;
    return cell ? QList<QAccessibleInterface*>{cell} : QList<QAccessibleInterface*>{};
}

QList<QAccessibleInterface*> ZelleZugang::rowHeaderCells() const {
    QAccessibleInterface* cell = col_ > 0 ? neighbour(row_, 0) : nullptr;
    return cell ? QList<QAccessibleInterface*>{cell} : QList<QAccessibleInterface*>{};
}

QAccessibleInterface* Zugang(const QString& klasse, QObject* object) {
    auto* view =
        klasse == QLatin1String("kalvora::PlanAnsicht") ? qobject_cast<PlanAnsicht*>(object) : nullptr;
    return view ? new PlanZugang(view) : nullptr;
}

} // namespace

void Zugang_für_Pläne_einrichten() {
    QAccessible::installFactory(Zugang);
}

} // namespace kalvora
