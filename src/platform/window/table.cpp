#include "platform/window/table.h"

#include <algorithm>

#include "base/fehler.h"
#include "platform/window/form.h"

namespace kalvora {

std::size_t Table::line(int row) const {
    if (row < 0 || row >= rows_) throw Laufzeitfehler(381, u"Zeile außerhalb der Tabelle " + name());
    return static_cast<std::size_t>(row);
}

std::size_t Table::place(int row, int col) const {
    if (col < 0 || col >= cols_) throw Laufzeitfehler(381, u"Spalte außerhalb der Tabelle " + name());
    return line(row) * static_cast<std::size_t>(cols_) + static_cast<std::size_t>(col);
}

void Table::cells_changed() {
    dirty_ = true;
    if (pausen_ == 0) announce();
}

void Table::announce() {
    changed(Aspect::Cells);
    dirty_ = false;
}

// A view that fails here is told again with the next change.
Table::Zeichenpause::~Zeichenpause() {
    if (--table_.pausen_ > 0 || !table_.dirty_) return;
    try {
        table_.announce();
    } catch (...) { // NOLINT(bugprone-empty-catch)
    }
}

void Table::resize(int rows, int cols) {
    if (cols != cols_) {
        std::vector<Cell> moved(static_cast<std::size_t>(rows) * static_cast<std::size_t>(cols));
        for (int r = 0; r < std::min(rows, rows_); ++r)
            for (int c = 0; c < std::min(cols, cols_); ++c)
                moved[static_cast<std::size_t>(r * cols + c)] = std::move(cells_[place(r, c)]);
        cells_ = std::move(moved);
    } else {
        cells_.resize(static_cast<std::size_t>(rows) * static_cast<std::size_t>(cols));
    }
    rows_ = rows;
    cols_ = cols;
    heights_.resize(static_cast<std::size_t>(rows), -1);
    kinds_.resize(static_cast<std::size_t>(rows), RowKind::Plain);
    groups_.resize(static_cast<std::size_t>(cols), false);
    cells_changed();
}

void Table::clear() {
    std::fill(cells_.begin(), cells_.end(), Cell{});
    std::fill(heights_.begin(), heights_.end(), -1);
    std::fill(kinds_.begin(), kinds_.end(), RowKind::Plain);
    std::fill(groups_.begin(), groups_.end(), false);
    cells_changed();
}

Cell& Table::edit(int row, int col) {
    Cell& cell = cells_[place(row, col)];
    // A single edit outside a collected change is announced before it is written: the view reads later.
    cells_changed();
    return cell;
}

Cell* Table::edit_row(int row) {
    cells_changed();
    return cells_.data() + place(row, 0);
}

void Table::set_row_height(int row, int twips) {
    heights_[line(row)] = twips;
    cells_changed();
}

void Table::set_row_kind(int row, RowKind kind) {
    kinds_[line(row)] = kind;
    cells_changed();
}

bool Table::group_begins(int col) const {
    return col >= 0 && col < cols_ && groups_[static_cast<std::size_t>(col)];
}

void Table::set_group_begins(int col, bool begins) {
    groups_.at(static_cast<std::size_t>(col)) = begins;
    cells_changed();
}

bool Table::col_in_use(int col) const {
    return col_width(col) != 0 && (fixed_rows_ == 0 || rows_ == 0 || !cell(0, col).text.empty());
}

int Table::col_width(int col) const {
    const auto hit = widths_.find(col);
    return hit == widths_.end() ? -1 : hit->second;
}

void Table::set_col_width(int col, int twips) {
    if (col_width(col) == twips) return;
    widths_[col] = twips;
    changed(Aspect::Layout);
}

bool Table::row_visible(int row) const {
    return form().view() ? form().view()->row_visible(*this, row) : true;
}

void Table::set_highlight(int row, int col, Farbe colour) {
    if (row == highlight_row_ && col == highlight_col_ && colour == highlight_colour_) return;
    highlight_row_ = row;
    highlight_col_ = col;
    highlight_colour_ = colour;
    changed(Aspect::Highlight);
}

bool Table::user_mouse_down(const Mouse& mouse) {
    return reachable() && fire([&] {
               if (on_mouse_down) on_mouse_down(mouse);
               if (on_click) on_click();
           });
}

bool Table::user_mouse_up(const Mouse& mouse) {
    return reachable() && fire([&] {
               if (on_mouse_up) on_mouse_up(mouse);
           });
}

bool Table::user_mouse_move(int row, int col) {
    return reachable() && fire([&] {
               if (on_mouse_move) on_mouse_move(row, col);
           });
}

bool Table::user_double_click(int row, int col) {
    return reachable() && fire([&] {
               if (on_double_click) on_double_click(row, col);
           });
}

bool Table::user_select(const Selection& selection, int mouse_row) {
    return reachable() && fire([&] {
               set_selection(selection);
               if (on_selection_changed) on_selection_changed(mouse_row);
           });
}

bool Table::user_scroll(int top_row) {
    return fire([&] {
        if (top_row == top_row_) return;
        top_row_ = top_row;
        if (on_scrolled) on_scrolled();
    });
}

bool Table::user_mouse_left() {
    return fire([&] {
        if (on_mouse_left) on_mouse_left();
    });
}

bool Table::user_mouse_entered() {
    return fire([&] {
        if (on_mouse_entered) on_mouse_entered();
    });
}

} // namespace kalvora
