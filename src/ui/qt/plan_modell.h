// A table control as an item model, for whatever reads models: tool tips, screen readers, tests. It copies
// nothing; rows and columns are the control's own, headings included (row 0, column 0).
#pragma once

#include <QAbstractTableModel>

#include "platform/window/table.h"

namespace kalvora {

class PlanModell : public QAbstractTableModel {
    Q_OBJECT
public:
    using QAbstractTableModel::QAbstractTableModel;

    void set_table(const Table* table); // nullptr: empty
    const Table* table() const { return table_; }
    void cells_changed(); // shape or contents of any cell

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    QString Ansage(int row, int col) const;
    const Table* table_ = nullptr;
    int rows_ = 0, cols_ = 0; // as the readers know them
};

} // namespace kalvora
