#include "ui/qt/plan_ansicht.h"

#include <QHelpEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>

#include "ui/qt/farben.h"
#include "ui/qt/plan_maler.h"
#include "ui/qt/qt_text.h"

namespace kalvora {

namespace {
constexpr int MINDEST_TAG = 25;    // narrowest day column, pixels at 100 %
constexpr int STANDARD_NAME = 190; // name column without a width of its own
constexpr int MINDEST_ZEILEN = 6;  // the window never gets lower than that many rows
} // namespace

PlanAnsicht::PlanAnsicht(QWidget* parent) : QAbstractScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setMouseTracking(true);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    auto_timer_.setInterval(60);
    connect(&auto_timer_, &QTimer::timeout, this, &PlanAnsicht::auto_scroll);
    connect(&own_columns_, &Spaltenraster::changed, viewport(), QOverload<>::of(&QWidget::update));
    connect(horizontalScrollBar(), &QScrollBar::valueChanged, this, [this](int value) {
        if (leads()) columns_->set_versatz(value);
    });
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &PlanAnsicht::user_scrolled);
}

void PlanAnsicht::set_table(Table* table) {
    table_ = table;
    dragging_ = false;
    auto_timer_.stop();
    model_.set_table(table);
    setVerticalScrollBarPolicy(leads() ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAsNeeded);
    if (!leads()) setFocusPolicy(Qt::NoFocus);
    relayout();
}

void PlanAnsicht::set_separator(int pixels) {
    setViewportMargins(0, pixels, 0, 0);
    QPalette lines = palette();
    lines.setColor(QPalette::Window, farben::RAND);
    setPalette(lines);
    setAutoFillBackground(true);
}

void PlanAnsicht::set_leader(PlanAnsicht& leader) {
    columns_ = leader.columns_;
    connect(columns_, &Spaltenraster::changed, this, [this] {
        last_day_ = std::min(columns_->last_day(), table_ ? table_->cols() - 1 : 0);
        viewport()->update();
    });
}

void PlanAnsicht::table_changed(Aspect aspect) {
    if (!table_) return;
    switch (aspect) {
    case Aspect::Cells: // the cell itself may be written a moment later: read when painting
        if (!dirty_) QMetaObject::invokeMethod(this, &PlanAnsicht::relayout, Qt::QueuedConnection);
        dirty_ = true;
        break;
    case Aspect::Layout: relayout(); break;
    case Aspect::Scroll: update_bars(); break;
    case Aspect::Highlight:
        columns_->set_marked_col(leads() ? table_->marked_col() : columns_->marked_col());
        break;
    case Aspect::Selection:
        if (hasFocus()) announce_focus();
        break;
    default: break;
    }
    viewport()->update();
}

// --- shape

int PlanAnsicht::standard_row_height() const {
    return fontMetrics().height() + 6;
}

void PlanAnsicht::read_shape() {
    if (stale()) model_.cells_changed();
    dirty_ = false;
    std::vector<int> heights;
    if (table_) heights.reserve(static_cast<std::size_t>(table_->rows()));
    const int normal = standard_row_height(), heading = 2 * fontMetrics().height() + 4;
    for (int row = 0; table_ && row < table_->rows(); ++row) {
        const int own = table_->row_height(row);
        const int standard = row < table_->fixed_rows() ? heading : normal;
        heights.push_back(own < 0 ? standard : Pixel_aus_Twips(own, *this));
    }
    rows_.anordnen(std::move(heights), table_ ? table_->fixed_rows() : 0);
    last_day_ = table_ ? std::max(0, table_->cols() - 1) : 0;
    if (!leads()) {
        last_day_ = std::min(last_day_, columns_->last_day());
    } else if (table_ && table_->fixed_rows() > 0 && table_->rows() > 0) {
        while (last_day_ > 1 && !table_->col_in_use(last_day_))
            --last_day_;
    }
}

std::vector<bool> PlanAnsicht::week_starts() const {
    std::vector<bool> starts(static_cast<std::size_t>(last_day_) + 1, false);
    for (int col = 2; table_ && col <= last_day_; ++col) // the first column has the names' line already
        starts[static_cast<std::size_t>(col)] = table_->group_begins(col);
    return starts;
}

void PlanAnsicht::relayout() {
    read_shape();
    if (leads()) {
        std::vector<int> wishes;
        for (int col = 0; table_ && col < table_->cols(); ++col) {
            const int own = table_->col_width(col);
            wishes.push_back(own <= 0 ? own : Pixel_aus_Twips(own, *this));
        }
        columns_->set_month(last_day_, week_starts());
        columns_->anordnen(wishes, viewport()->width(), MINDEST_TAG, STANDARD_NAME);
        if (table_) columns_->set_marked_col(table_->marked_col());
    }
    if (nach_inhalt_) {
        const int most = std::max(standard_row_height(), window()->height() * 2 / 5);
        setFixedHeight(std::clamp(rows_.inhalt() + viewportMargins().top(), 1, most));
    }
    update_bars();
    viewport()->update();
}

// The bars follow the table. A scroll bar moved by the program is no user's scrolling.
void PlanAnsicht::update_bars() {
    setting_ = true;
    const int height = viewport()->height();
    const int lowest = rows_.fest(), highest = rows_.höchste_obere(height);
    verticalScrollBar()->setRange(lowest, highest);
    verticalScrollBar()->setPageStep(std::max(1, height / standard_row_height() - 2));
    verticalScrollBar()->setValue(table_ ? std::clamp(table_->TopRow(), lowest, highest) : lowest);
    rows_.set_oben(verticalScrollBar()->value());
    if (leads()) {
        const int most = columns_->höchster_versatz();
        setHorizontalScrollBarPolicy(most > 0 ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
        horizontalScrollBar()->setRange(0, most);
        horizontalScrollBar()->setSingleStep(MINDEST_TAG);
        horizontalScrollBar()->setPageStep(columns_->breite() - columns_->fest());
        horizontalScrollBar()->setValue(columns_->versatz());
    }
    setting_ = false;
}

QSize PlanAnsicht::sizeHint() const {
    return {1100, nach_inhalt_ ? std::max(1, rows_.inhalt()) : 24 * standard_row_height()};
}

QSize PlanAnsicht::minimumSizeHint() const {
    const int rows = nach_inhalt_ ? 1 : MINDEST_ZEILEN;
    return {STANDARD_NAME + 8 * MINDEST_TAG, rows * standard_row_height()};
}

QRect PlanAnsicht::body_rect() const {
    const int height = viewport()->height();
    const int lower = std::min(height, rows_.y(rows_.letzte_in(height) + 1));
    return {columns_->fest(), rows_.kopf(), std::max(0, columns_->breite() - columns_->fest()),
            std::max(0, lower - rows_.kopf())};
}

QRect PlanAnsicht::cell_rect(int row, int col) const {
    return {columns_->links(col), rows_.y(row), columns_->breite(col), rows_.höhe(row)};
}

bool PlanAnsicht::row_visible(int row) {
    refresh();
    return rows_.ganz_sichtbar(row, viewport()->height());
}

// --- Qt's side

void PlanAnsicht::paintEvent(QPaintEvent*) {
    QPainter painter(viewport());
    if (!table_) {
        painter.fillRect(viewport()->rect(), palette().window());
        return;
    }
    if (stale()) {
        read_shape();
        update_bars();
    }
    PlanMaler(*this, painter).zeichnen();
}

void PlanAnsicht::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    relayout();
}

void PlanAnsicht::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) relayout();
}

void PlanAnsicht::scrollContentsBy(int, int) {
    viewport()->update();
}

void PlanAnsicht::user_scrolled() {
    if (setting_ || !table_) return;
    const int before = rows_.oben();
    rows_.set_oben(verticalScrollBar()->value()); // the logic asks what is visible now
    if (!table_->user_scroll(verticalScrollBar()->value()) && table_) {
        rows_.set_oben(before);
        update_bars(); // refused: the bar goes back
    }
    viewport()->update();
}

// Events and questions may come before the announced change was read.
void PlanAnsicht::refresh() {
    if (stale()) relayout();
}

bool PlanAnsicht::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::Paint) refresh();
    if (table_) {
        switch (event->type()) {
        case QEvent::Enter: table_->user_mouse_entered(); break;
        case QEvent::Leave:
            hover_ = {};
            table_->user_mouse_left();
            break;
        case QEvent::ToolTip: {
            const auto* help = static_cast<QHelpEvent*>(event);
            show_tip(help->pos(), help->globalPos());
            return true;
        }
        default: break;
        }
    }
    return QAbstractScrollArea::viewportEvent(event);
}

} // namespace kalvora
