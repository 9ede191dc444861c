// Mouse, wheel and keys of the table's view.
#include <QAccessible>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QToolTip>
#include <algorithm>

#include "ui/qt/farben.h"
#include "ui/qt/plan_ansicht.h"
#include "ui/qt/qt_text.h"
#include "ui/qt/tasten.h"

namespace kalvora {

namespace {

constexpr int MINDEST_TAG_SCHRITT = 13; // pixels sideways per tick of a drag beyond the edge

Modifiers Zusatztasten(Qt::KeyboardModifiers m) {
    return {m.testFlag(Qt::ShiftModifier), m.testFlag(Qt::ControlModifier), m.testFlag(Qt::AltModifier)};
}

} // namespace

PlanAnsicht::Ort PlanAnsicht::place_at(const QPoint& p) const {
    if (!table_) return {};
    const int col = columns_->spalte_bei(p.x());
    const int row = rows_.zeile_bei(p.y());
    const bool shown = row <= rows_.letzte_in(viewport()->height());
    return {shown ? row : -1, col < table_->cols() ? col : -1};
}

bool PlanAnsicht::in_body(const Ort& ort) const {
    return ort.row >= table_->fixed_rows() && ort.row < table_->rows() && ort.col >= 1 &&
           ort.col <= last_day_;
}

// The cell that a drag has reached: always one of the body, at its edge when the pointer is outside.
PlanAnsicht::Ort PlanAnsicht::drag_place(const QPoint& p) const {
    const QRect body = body_rect();
    const int x = std::clamp(p.x(), body.left(), std::max(body.left(), body.right()));
    const int y = std::clamp(p.y(), body.top(), std::max(body.top(), body.bottom()));
    Ort ort = place_at({x, y});
    if (ort.row < 0) ort.row = table_->rows() - 1;
    if (ort.col < 0) ort.col = last_day_;
    return {std::clamp(ort.row, table_->fixed_rows(), table_->rows() - 1), std::clamp(ort.col, 1, last_day_)};
}

// --- mouse

void PlanAnsicht::mousePressEvent(QMouseEvent* event) {
    const Ort ort = place_at(event->position().toPoint());
    if (!table_ || !ort.gültig()) return;
    const bool left = event->button() == Qt::LeftButton;
    if (!left && event->button() != Qt::RightButton) return;
    const Modifiers mods = Zusatztasten(event->modifiers());
    const Table::Mouse mouse{left ? MouseButton::Left : MouseButton::Right, mods, ort.row, ort.col};
    if (!table_->user_mouse_down(mouse) || !table_ || !left || !markierbar_ || !in_body(ort)) return;
    const Selection before = table_->selection();
    const bool extends = mods.shift && table_->HighLight() && before.row >= 1;
    dragging_ = true;
    anchor_ = extends ? Ort{before.row, before.col} : ort;
    select({anchor_.row, anchor_.col, ort.row, ort.col});
}

void PlanAnsicht::mouseMoveEvent(QMouseEvent* event) {
    if (!table_) return;
    const QPoint p = event->position().toPoint();
    if (dragging_ && event->buttons().testFlag(Qt::LeftButton)) {
        drag_point_ = p;
        if (body_rect().contains(p))
            auto_timer_.stop();
        else if (!auto_timer_.isActive())
            auto_timer_.start();
        drag_to(p);
    }
    const Ort ort = place_at(p);
    if (ort == hover_ || !table_) return;
    hover_ = ort;
    QToolTip::hideText();
    if (ort.gültig()) table_->user_mouse_move(ort.row, ort.col);
}

void PlanAnsicht::drag_to(const QPoint& p) {
    const Ort ort = drag_place(p);
    // From the place where the hand began: a scrolled-out anchor takes the marking away meanwhile.
    const Selection s{anchor_.row, anchor_.col, ort.row, ort.col};
    if (anchor_.row >= table_->rows()) return;
    if (table_->HighLight() && s == table_->selection()) return;
    select(s);
}

void PlanAnsicht::auto_scroll() {
    if (!table_ || !dragging_) {
        auto_timer_.stop();
        return;
    }
    const QRect body = body_rect();
    QScrollBar& v = *verticalScrollBar();
    QScrollBar& h = *horizontalScrollBar();
    if (drag_point_.y() < body.top()) v.setValue(v.value() - 1);
    if (drag_point_.y() > body.bottom()) v.setValue(v.value() + 1);
    if (drag_point_.x() < body.left()) h.setValue(h.value() - MINDEST_TAG_SCHRITT);
    if (drag_point_.x() > body.right()) h.setValue(h.value() + MINDEST_TAG_SCHRITT);
    if (table_) drag_to(drag_point_);
}

void PlanAnsicht::mouseReleaseEvent(QMouseEvent* event) {
    const bool left = event->button() == Qt::LeftButton;
    if (!table_ || (!left && event->button() != Qt::RightButton)) return;
    auto_timer_.stop();
    const bool dragged = left && std::exchange(dragging_, false);
    const QPoint p = event->position().toPoint();
    const Ort ort = dragged ? drag_place(p) : place_at(p);
    if (!ort.gültig()) return;
    table_->user_mouse_up(
        {left ? MouseButton::Left : MouseButton::Right, Zusatztasten(event->modifiers()), ort.row, ort.col});
}

void PlanAnsicht::mouseDoubleClickEvent(QMouseEvent* event) {
    const Ort ort = place_at(event->position().toPoint());
    if (table_ && ort.gültig() && event->button() == Qt::LeftButton)
        table_->user_double_click(ort.row, ort.col);
}

// Up and down by rows, with Shift or a tilted wheel sideways; touch pads deliver parts of a step.
void PlanAnsicht::wheelEvent(QWheelEvent* event) {
    const QPoint angle = event->angleDelta();
    const bool sideways =
        event->modifiers().testFlag(Qt::ShiftModifier) || std::abs(angle.x()) > std::abs(angle.y());
    if (sideways) {
        const int delta = angle.x() != 0 ? angle.x() : angle.y();
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() - delta / 2);
    } else {
        constexpr int ROW = 40; // eighths of a degree: three rows for a notch of 15 degrees
        wheel_rest_ += angle.y();
        const int rows = wheel_rest_ / ROW;
        wheel_rest_ -= rows * ROW;
        verticalScrollBar()->setValue(verticalScrollBar()->value() - rows);
    }
    event->accept();
}

void PlanAnsicht::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();
    if (!table_ || event->reason() != QContextMenuEvent::Keyboard || !table_->HighLight()) return;
    const Selection s = table_->selection();
    table_->user_mouse_down({MouseButton::Right, {}, s.row_sel, s.col_sel});
}

// --- tool tips

QString PlanAnsicht::full_text_if_cut(const Ort& ort) const {
    if (ort.col != 0 || ort.row < table_->fixed_rows()) return {};
    const Cell& cell = table_->cell(ort.row, 0);
    QFont bold = font();
    bold.setBold(cell.bold || table_->row_kind(ort.row) == RowKind::Heading);
    const QString text = qt(cell.text);
    return QFontMetrics(bold).horizontalAdvance(text) > columns_->fest() - 12 ? text : QString();
}

void PlanAnsicht::show_tip(const QPoint& p, const QPoint& global) {
    const Ort ort = place_at(p);
    QString text;
    if (ort.gültig()) text = model_.data(model_.index(ort.row, ort.col), Qt::ToolTipRole).toString();
    if (ort.gültig() && text.isEmpty()) text = full_text_if_cut(ort);
    // Plain text whatever it holds: a tool tip would take "<b>" for markup.
    if (!text.isEmpty())
        QToolTip::showText(global,
                           QStringLiteral("<span style='white-space:pre-wrap'>") + text.toHtmlEscaped() +
                               QStringLiteral("</span>"),
                           viewport(), cell_rect(ort.row, ort.col));
    else
        QToolTip::hideText();
}

// --- keys

void PlanAnsicht::select(const Selection& selection) {
    table_->user_select(selection, selection.row_sel);
}

void PlanAnsicht::keyPressEvent(QKeyEvent* event) {
    const auto key = Taste_aus(*event);
    if (table_ && markierbar_ && key && table_->user_key(*key))
        event->accept();
    else
        QAbstractScrollArea::keyPressEvent(event);
}

void PlanAnsicht::show_cell(int row, int col) {
    refresh();
    QScrollBar& v = *verticalScrollBar();
    if (row < rows_.oben()) v.setValue(row);
    while (table_ && !row_visible(row) && v.value() < v.maximum() && rows_.y(row) > 0) {
        const int before = v.value();
        v.setValue(before + std::max(1, (rows_.y(row + 1) - viewport()->height()) / standard_row_height()));
        if (v.value() == before) break;
    }
    const QRect body = body_rect(), cell = cell_rect(row, col);
    QScrollBar& h = *horizontalScrollBar();
    if (cell.left() < body.left()) h.setValue(h.value() - (body.left() - cell.left()));
    if (cell.right() > body.right()) h.setValue(h.value() + cell.right() - body.right());
}

void PlanAnsicht::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);
    viewport()->update();
    announce_focus();
}

void PlanAnsicht::focusOutEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusOutEvent(event);
    viewport()->update();
}

// Screen readers follow the marking's moving end.
void PlanAnsicht::announce_focus() {
    if (!table_ || !QAccessible::isActive() || !table_->HighLight()) return;
    QAccessibleEvent event(this, QAccessible::Focus);
    event.setChild(accessible_child(table_->selection().row_sel, table_->selection().col_sel));
    QAccessible::updateAccessibility(&event);
}

} // namespace kalvora
