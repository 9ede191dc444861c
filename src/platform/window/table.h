// The table control: a grid of cells with fixed heading rows and columns, a selection and an optional
// highlight. Rows and columns count from 0; row 0 is the heading, column 0 the names (fixed counts say so).
// The view never writes a cell. Selection, highlight and scrolling are the control's state, never the cells'.
#pragma once

#include <map>
#include <vector>

#include "base/farbe.h"
#include "platform/window/control.h"

namespace kalvora {

struct Cell {
    Text text;
    Farbe fore = 0x000000;
    Farbe back = 0xFFFFFF;
    char16_t code = u' '; // the logic's own mark of a cell; never shown
    bool bold = false;
    friend bool operator==(const Cell&, const Cell&) = default;
};

struct Selection {
    int row = 0, col = 0;         // anchor
    int row_sel = 0, col_sel = 0; // moving end
    friend bool operator==(const Selection&, const Selection&) = default;
};

// What a row is: one of data, the heading of those below it, or one that only keeps them apart.
enum class RowKind { Plain, Heading, Blank };

enum class MouseButton { Left, Right };

class Table : public Control {
public:
    Table(Form& form, Text name, int fixed_rows = 1, int fixed_cols = 1)
        : Control(form, ControlKind::Table, std::move(name)), fixed_rows_(fixed_rows),
          fixed_cols_(fixed_cols) {}

    // --- cells; programmatic changes reach the view at once, or all together behind a Zeichenpause
    void resize(int rows, int cols); // cells keep their place; new ones are empty
    void clear();                    // every cell, row and column as new; widths stay
    int rows() const { return rows_; }
    int cols() const { return cols_; }
    int fixed_rows() const { return fixed_rows_; }
    int fixed_cols() const { return fixed_cols_; }
    const Cell& cell(int row, int col) const { return cells_[place(row, col)]; }
    Cell& edit(int row, int col); // the changed cell is announced
    Cell* edit_row(int row);      // the cells of a row, for bulk changes in a Zeichenpause
    class Zeichenpause;

    RowKind row_kind(int row) const { return kinds_[line(row)]; }
    void set_row_kind(int row, RowKind kind);
    bool group_begins(int col) const; // with this column a group of columns begins: a week of days
    void set_group_begins(int col, bool begins);
    // A column without a heading is a day that the month does not have.
    bool col_in_use(int col) const;
    int row_height(int row) const { return heights_[line(row)]; } // twips; -1 standard, 0 hidden
    void set_row_height(int row, int twips);
    int col_width(int col) const; // twips; -1 standard, 0 hidden
    void set_col_width(int col, int twips);
    bool merged() const { return merged_; } // equal neighbours in a row are shown as one cell
    void set_merged(bool on) { assign(merged_, on, Aspect::Layout); }
    Farbe grid_colour() const { return grid_; }
    void set_grid_colour(Farbe f) { assign(grid_, f, Aspect::Colours); }
    Farbe backdrop() const { return backdrop_; }
    void set_backdrop(Farbe f) { assign(backdrop_, f, Aspect::Colours); }
    int marked_col() const { return marked_col_; } // framed column (today's); 0 none
    void set_marked_col(int col) { assign(marked_col_, col, Aspect::Highlight); }
    // Spoken names of cells for screen readers.
    std::function<Text(int row, int col)> accessible_name;
    std::function<Text(int row, int col)> tool_tip;
    std::function<Text(int row, int col)> comment; // of the entry in that cell; empty when there is none

    // --- selection: HighLight false means that nothing is marked
    const Selection& selection() const { return selection_; }
    bool HighLight() const { return highlight_on_; }
    void set_HighLight(bool on) { assign(highlight_on_, on, Aspect::Selection); }
    void set_selection(const Selection& s) { assign(selection_, s, Aspect::Selection); }
    int TopRow() const { return top_row_; }
    void set_TopRow(int row) { assign(top_row_, row, Aspect::Scroll); }
    bool row_visible(int row) const;

    // --- highlight overlay (row and/or column, -1 none)
    int highlight_row() const { return highlight_row_; }
    int highlight_col() const { return highlight_col_; }
    Farbe highlight_colour() const { return highlight_colour_; }
    void set_highlight(int row, int col, Farbe colour);

    // --- what the user does
    struct Mouse {
        MouseButton button = MouseButton::Left;
        Modifiers mods;
        int row = 0, col = 0;
    };
    std::function<void(const Mouse&)> on_mouse_down, on_mouse_up;
    std::function<void(int row, int col)> on_mouse_move, on_double_click;
    std::function<void(int mouse_row)> on_selection_changed;
    std::function<void()> on_scrolled, on_mouse_left, on_mouse_entered, on_click;
    bool user_mouse_down(const Mouse&);
    bool user_mouse_up(const Mouse&);
    bool user_mouse_move(int row, int col);
    bool user_double_click(int row, int col);
    bool user_select(const Selection&, int mouse_row); // a drag
    // Arrows, Pos1, Ende, Bild-auf, Bild-ab (with Strg Pos1 and Ende go up and down) move the marking, with
    // Umschalt its end; false: it is none of these. Without a marking the first key shows where one is:
    // today, or the first day, of the first plain row in view.
    bool user_key(const Key&);
    bool user_scroll(int top_row);
    bool user_mouse_left();
    bool user_mouse_entered();

private:
    std::size_t line(int row) const;
    std::size_t place(int row, int col) const;
    void cells_changed();
    void announce();

    int fixed_rows_, fixed_cols_;
    int rows_ = 0, cols_ = 0;
    std::vector<Cell> cells_;
    std::vector<int> heights_;
    std::vector<RowKind> kinds_;
    std::vector<bool> groups_; // by column
    std::map<int, int> widths_;
    bool merged_ = false, dirty_ = false, highlight_on_ = false;
    int pausen_ = 0;
    Farbe grid_ = 0xC8C8C8, backdrop_ = 0xFFFFFF;
    int marked_col_ = 0;
    Selection selection_;
    int top_row_ = 1;
    int highlight_row_ = -1, highlight_col_ = -1;
    Farbe highlight_colour_ = 0;
};

// While one lives, changed cells are not announced; the end of the last one tells of all of them together,
// whichever way it comes.
class Table::Zeichenpause {
public:
    explicit Zeichenpause(Table& table) : table_(table) { ++table_.pausen_; }
    ~Zeichenpause();
    Zeichenpause(const Zeichenpause&) = delete;
    Zeichenpause& operator=(const Zeichenpause&) = delete;

private:
    Table& table_;
};

} // namespace kalvora
