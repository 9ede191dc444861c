// The view of a table control. It paints the visible cells only, keeps headings and names in view, and turns
// mouse and keys into the control's user events; it never writes a cell. Tables that must stay aligned share
// the column raster of one of them, the leading one.
#pragma once

#include <QAbstractScrollArea>
#include <QTimer>

#include "ui/qt/plan_modell.h"
#include "ui/qt/spaltenraster.h"
#include "ui/qt/zeilenraster.h"

namespace kalvora {

class PlanAnsicht : public QAbstractScrollArea {
    Q_OBJECT
    // For layout files: name of the leading table's view; height follows the rows; cells can be marked.
    Q_PROPERTY(QString leitTabelle MEMBER leit_)
    Q_PROPERTY(bool hoeheNachInhalt MEMBER nach_inhalt_)
    Q_PROPERTY(bool markierbar MEMBER markierbar_)
    Q_PROPERTY(int trennlinie READ separator WRITE set_separator) // pixels, at the upper edge
public:
    explicit PlanAnsicht(QWidget* parent = nullptr);

    void set_table(Table* table); // nullptr takes the table away
    void set_leader(PlanAnsicht& leader);
    void table_changed(Aspect aspect);
    void relayout();

    int separator() const { return viewportMargins().top(); }
    void set_separator(int pixels);

    Table* table() const { return table_; }
    PlanModell& model() { return model_; }
    const Spaltenraster& columns() const { return *columns_; }
    const Zeilenraster& rows() const { return rows_; }
    const QString& leading_name() const { return leit_; }

    bool row_visible(int row);
    void show_cell(int row, int col);        // scrolls it into view
    QRect cell_rect(int row, int col) const; // viewport coordinates, not clipped
    QRect body_rect() const;                 // the scrolled cells' part of the viewport
    int standard_row_height() const;
    // Last column that is a day of the month: behind it the headings are empty.
    int last_day_col() const { return last_day_; }
    // Number of a cell as the accessible table counts them: the hidden key column is none.
    int accessible_child(int row, int col) const { return row * (last_day_ + 1) + col; }
    bool leads() const { return columns_ == &own_columns_; }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent*) override;
    void resizeEvent(QResizeEvent*) override;
    void changeEvent(QEvent*) override;
    bool viewportEvent(QEvent*) override;
    void scrollContentsBy(int dx, int dy) override;
    void mousePressEvent(QMouseEvent*) override;
    void mouseMoveEvent(QMouseEvent*) override;
    void mouseReleaseEvent(QMouseEvent*) override;
    void mouseDoubleClickEvent(QMouseEvent*) override;
    void wheelEvent(QWheelEvent*) override;
    void keyPressEvent(QKeyEvent*) override;
    void focusInEvent(QFocusEvent*) override;
    void focusOutEvent(QFocusEvent*) override;
    void contextMenuEvent(QContextMenuEvent*) override;

private:
    struct Ort {
        int row = -1, col = -1;
        bool operator==(const Ort&) const = default;
        bool gültig() const { return row >= 0 && col >= 0; }
    };
    Ort place_at(const QPoint& p) const;
    Ort drag_place(const QPoint& p) const;
    bool in_body(const Ort& ort) const;
    void drag_to(const QPoint& p);
    void auto_scroll();
    void select(const Selection& selection);
    void user_scrolled();
    void show_tip(const QPoint& p, const QPoint& global);
    QString full_text_if_cut(const Ort& ort) const;
    void refresh();
    // Also while changes are only collected: the table may have lost rows that the raster still counts.
    bool stale() const { return table_ && (dirty_ || rows_.zeilen() != table_->rows()); }
    void read_shape();
    std::vector<bool> week_starts() const;
    void update_bars();
    void announce_focus();

    Table* table_ = nullptr;
    PlanModell model_{this};
    Spaltenraster own_columns_;
    Spaltenraster* columns_ = &own_columns_;
    Zeilenraster rows_;
    QString leit_;
    bool nach_inhalt_ = false, markierbar_ = true;
    bool dirty_ = false;   // the shape is read again before it is next used
    bool setting_ = false; // scroll bars are being set by the program
    bool dragging_ = false;
    Ort anchor_; // where the drag began
    int last_day_ = 0;
    Ort hover_;
    QPoint drag_point_;
    QTimer auto_timer_;
    int wheel_rest_ = 0;
};

} // namespace kalvora
