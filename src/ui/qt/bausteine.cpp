#include "ui/qt/bausteine.h"

#include <QEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleOptionButton>
#include <QToolTip>
#include <algorithm>

#include "ui/qt/farben.h"
#include "ui/qt/logo.h"
#include "ui/qt/stil.h"

namespace kalvora {

// --- Farbknopf

Farbknopf::Farbknopf(QWidget* parent) : QPushButton(parent) {
    setAttribute(Qt::WA_Hover);
    setAutoDefault(false);
}

void Farbknopf::set_colours(const QColor& fore, const QColor& back) {
    fore_ = fore;
    back_ = back;
    update();
}

void Farbknopf::set_wish_width(int pixels) {
    wish_ = pixels;
    updateGeometry();
}

QSize Farbknopf::sizeHint() const {
    const QSize needed = Knopfgröße(fontMetrics(), text());
    return {std::max(needed.width(), wish_), needed.height()};
}

void Farbknopf::paintEvent(QPaintEvent*) {
    QStyleOptionButton option;
    initStyleOption(&option);
    QPainter painter(this);
    zeichne_Knopf(painter, option, fore_, back_);
}

// --- Reiter

Reiter::Reiter(QWidget* parent) : QTabBar(parent) {
    setDrawBase(false);
    setExpanding(false);
    setElideMode(Qt::ElideNone);
    setMouseTracking(true);
}

QSize Reiter::tabSizeHint(int index) const {
    QFont bold = font();
    bold.setBold(true);
    const QFontMetrics metrics(bold); // the selected one is bold: choosing must not move the others
    return {metrics.horizontalAdvance(tabText(index)) + 22, metrics.height() + 14};
}

void Reiter::paint_tab(QPainter& painter, int index) const {
    const QRect r = tabRect(index);
    const bool selected = index == currentIndex(), enabled = isTabEnabled(index) && isEnabled();
    const QRectF face = QRectF(r).adjusted(1, 2, -1, -2);
    if (selected || (index == hover_ && enabled)) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(selected ? farben::AKZENT : gemischt(farben::FENSTER, farben::TEXT, 0.10));
        painter.drawRoundedRect(face, 4, 4);
    }
    if (selected && hasFocus()) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(Qt::white, 1.5));
        painter.drawRoundedRect(face.adjusted(2.5, 2.5, -2.5, -2.5), 2.5, 2.5);
    }
    QFont f = font();
    f.setBold(selected);
    painter.setFont(f);
    painter.setPen(!enabled   ? palette().color(QPalette::Disabled, QPalette::WindowText)
                   : selected ? QColor(Qt::white)
                              : QColor(farben::TEXT));
    painter.drawText(r, Qt::AlignCenter | Qt::TextSingleLine, tabText(index));
}

void Reiter::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    for (int i = 0; i < count(); ++i)
        paint_tab(painter, i);
}

void Reiter::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Left || event->key() == Qt::Key_Right)
        emit arrow(event->key() == Qt::Key_Left ? -1 : 1);
    else
        event->ignore();
}

void Reiter::wheelEvent(QWheelEvent* event) {
    event->ignore(); // a wheel over the tabs must not run through the months
}

void Reiter::mouseMoveEvent(QMouseEvent* event) {
    QTabBar::mouseMoveEvent(event);
    hover_ = tabAt(event->position().toPoint());
    update();
}

void Reiter::leaveEvent(QEvent* event) {
    QTabBar::leaveEvent(event);
    hover_ = -1;
    update();
}

// --- Kurzlabel

QSize Kurzlabel::minimumSizeHint() const {
    return {40, QLabel::minimumSizeHint().height()};
}

bool Kurzlabel::is_cut() const {
    return fontMetrics().horizontalAdvance(text()) > contentsRect().width();
}

void Kurzlabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, foregroundRole()));
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideMiddle, contentsRect().width());
    painter.drawText(contentsRect(), static_cast<int>(alignment()) | Qt::TextSingleLine, shown);
}

bool Kurzlabel::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QLabel::event(event);
    if (is_cut())
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(),
                           QStringLiteral("<span>") + text().toHtmlEscaped() + QStringLiteral("</span>"),
                           this);
    return true;
}

// --- Flussleiste

namespace {
constexpr int ZEILENABSTAND = 6;
}

void Flussleiste::arrange() {
    struct Platz {
        QWidget* widget;
        QRect r;
        int zeile;
    };
    std::vector<Platz> shown;
    std::vector<int> heights{0}; // of the rows
    QWidget* last = nullptr;
    int x = 0;
    for (QObject* child : children()) {
        auto* widget = qobject_cast<QWidget*>(child);
        if (!widget || widget->isWindow()) continue;
        last = widget;
        if (widget->isHidden()) continue;
        const QSize size =
            widget->sizeHint().expandedTo(widget->minimumSize()).boundedTo(widget->maximumSize());
        if (x > 0 && x + size.width() > width()) {
            x = 0;
            heights.push_back(0);
        }
        heights.back() = std::max(heights.back(), size.height());
        shown.push_back({widget, QRect(x, 0, std::min(size.width(), width()), size.height()),
                         static_cast<int>(heights.size()) - 1});
        x += size.width() + gap_;
    }
    if (last_right_ && !shown.empty() && shown.back().widget == last)
        shown.back().r.moveLeft(std::max(shown.back().r.left(), width() - shown.back().r.width()));
    int y = 0, row = 0;
    for (Platz& p : shown) {
        for (; row < p.zeile; ++row)
            y += heights[static_cast<std::size_t>(row)] + std::min(gap_, ZEILENABSTAND);
        const int spare = heights[static_cast<std::size_t>(row)] - p.r.height();
        p.widget->setGeometry(p.r.translated(0, y + spare / 2));
    }
    const int needed = std::max(1, y + heights.back());
    if (needed != height()) setFixedHeight(needed);
}

QSize Flussleiste::sizeHint() const {
    return {600, height()};
}

QSize Flussleiste::minimumSizeHint() const {
    int widest = 0;
    for (QObject* child : children())
        if (const auto* widget = qobject_cast<QWidget*>(child); widget && !widget->isHidden())
            widest = std::max(widest, widget->minimumSizeHint().width());
    return {std::min(widest, 480), height()};
}

void Flussleiste::resizeEvent(QResizeEvent*) {
    arrange();
}

bool Flussleiste::event(QEvent* event) {
    // Posted when a child's size hint or visibility has changed.
    if (event->type() == QEvent::LayoutRequest) arrange();
    return QWidget::event(event);
}

// --- Schwebefeld

Schwebefeld::Schwebefeld(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
}

void Schwebefeld::place(const QRect& anchor) {
    constexpr int WIDEST = 360;
    const auto* label = findChild<QLabel*>();
    const int wide = label ? label->fontMetrics().size(0, label->text()).width() + 20 : 0;
    setFixedWidth(std::min(wide, WIDEST));
    setFixedHeight(heightForWidth(width()));
    const QRect room = parentWidget()->rect().adjusted(4, 4, -4, -4);
    int y = anchor.bottom() + 3;
    if (y + height() > room.bottom()) y = anchor.top() - height() - 3;
    const int x = std::clamp(anchor.left(), room.left(), std::max(room.left(), room.right() - width()));
    move(x, std::max(room.top(), y));
    raise();
}

void Schwebefeld::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(gemischt(farben::NOTIZ, farben::TEXT, 0.45));
    painter.setBrush(farben::NOTIZ);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
}

// --- Startbild

void Startbild::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    zeichne_Logo(painter, rect());
}

} // namespace kalvora
