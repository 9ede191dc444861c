// Where the keys of a table lead, whatever shows it.
#include <algorithm>

#include "platform/window/form.h"

namespace kalvora {

namespace {

struct Place {
    int row = 0, col = 0;
};

// So many shown rows up or down, or as far as there are any.
int row_from(const Table& table, int row, int steps) {
    const int direction = steps < 0 ? -1 : 1;
    for (int to = row + direction; steps != 0 && to >= table.fixed_rows() && to < table.rows();
         to += direction) {
        if (table.row_height(to) == 0) continue;
        row = to;
        steps -= direction;
    }
    return row;
}

int col_from(const Table& table, int col, int direction) {
    for (int to = col + direction; to >= table.fixed_cols() && to < table.cols(); to += direction)
        if (table.col_in_use(to)) return to;
    return col;
}

int top_row(const Table& table) {
    return row_from(table, table.fixed_rows() - 1, 1);
}

int left_col(const Table& table) {
    return col_from(table, table.fixed_cols() - 1, 1);
}

// One row of the page before stays in view.
int page(const Table& table) {
    int in_view = 0;
    for (int row = table.fixed_rows(); row < table.rows(); ++row)
        if (table.row_height(row) != 0 && table.row_visible(row)) ++in_view;
    return std::max(1, in_view - 1);
}

// The first shown row from `row` on that is so; `row` when none is.
template <class Is>
int first_row(const Table& table, int row, Is is) {
    for (int r = row; r < table.rows(); ++r)
        if (table.row_height(r) != 0 && is(r)) return r;
    return row;
}

Place first_place(const Table& table) {
    const int top = first_row(table, top_row(table), [&](int row) { return table.row_visible(row); });
    const int row = first_row(table, top, [&](int r) { return table.row_kind(r) == RowKind::Plain; });
    const int today = table.marked_col();
    const bool shown = today >= table.fixed_cols() && today < table.cols() && table.col_in_use(today);
    return {row, shown ? today : left_col(table)};
}

std::optional<Place> destination(const Table& table, const Key& key, Place at) {
    if (key.code == u"Links") return Place{at.row, col_from(table, at.col, -1)};
    if (key.code == u"Rechts") return Place{at.row, col_from(table, at.col, 1)};
    if (key.code == u"Auf") return Place{row_from(table, at.row, -1), at.col};
    if (key.code == u"Ab") return Place{row_from(table, at.row, 1), at.col};
    if (key.code == u"Bild-auf") return Place{row_from(table, at.row, -page(table)), at.col};
    if (key.code == u"Bild-ab") return Place{row_from(table, at.row, page(table)), at.col};
    if (key.code == u"Pos1")
        return key.mods.ctrl ? Place{top_row(table), at.col} : Place{at.row, left_col(table)};
    if (key.code == u"Ende")
        return key.mods.ctrl ? Place{row_from(table, table.rows(), -1), at.col}
                             : Place{at.row, col_from(table, table.cols(), -1)};
    return std::nullopt;
}

} // namespace

bool Table::user_key(const Key& key) {
    const bool any = top_row(*this) >= fixed_rows_ && left_col(*this) >= fixed_cols_;
    if (!any || !reachable()) return false;
    const Selection s = selection_; // scrolling may take it away
    const bool marked =
        highlight_on_ && std::min(s.row, s.row_sel) >= fixed_rows_ && std::max(s.row, s.row_sel) < rows_;
    const Place at =
        marked ? Place{s.row_sel, std::clamp(s.col_sel, fixed_cols_, cols_ - 1)} : first_place(*this);
    auto to = destination(*this, key, at);
    if (!to) return false;
    const bool jumps = key.code == u"Pos1" || key.code == u"Ende";
    if (!marked && !jumps) to = at;
    // Before the marking moves: one whose anchor is scrolled out of view is taken away.
    if (form().view()) form().view()->show_cell(*this, to->row, to->col);
    const Place anchor = marked && key.mods.shift ? Place{s.row, s.col} : *to;
    user_select({anchor.row, anchor.col, to->row, to->col}, to->row);
    return true;
}

} // namespace kalvora
