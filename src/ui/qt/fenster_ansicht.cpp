#include "ui/qt/fenster_ansicht.h"

#include <QApplication>
#include <QFontDatabase>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QScreen>
#include <algorithm>

#include "base/fehler.h"
#include "ui/qt/bausteine.h"
#include "ui/qt/plan_ansicht.h"
#include "ui/qt/qt_text.h"
#include "ui/qt/tasten.h"

namespace kalvora {

FensterAnsicht::FensterAnsicht(Form& form, std::unique_ptr<QWidget> window)
    : form_(form), window_(std::move(window)) {
    if (!window_) throw Laufzeitfehler(FEHLER_BAUTEIL, u"Fenster ohne Formular: " + form.name());
    join_columns();
    bind();
    title_changed();
    if (!form_.font().empty()) font_changed();
    form_.set_view(this);
    attached_ = true;
    window_->installEventFilter(this);
    qApp->installEventFilter(this);
}

FensterAnsicht::~FensterAnsicht() {
    detach();
}

void FensterAnsicht::detach() {
    if (!std::exchange(attached_, false)) return;
    form_.set_view(nullptr);
    qApp->removeEventFilter(this);
    window_->removeEventFilter(this);
    for (auto& [control, adapter] : adapters_)
        adapter->detach();
    window_->hide();
}

// --- binding

void FensterAnsicht::bind() {
    for (Control* control : form_.controls()) {
        if (control->kind() == ControlKind::MenuItem)
            bind_menu(static_cast<MenuItem&>(*control));
        else
            adapters_.emplace(control, Adapter_für(*control, *window_));
    }
    for (Control* control : form_.controls())
        adapters_.at(control)->show_all();
}

void FensterAnsicht::bind_menu(MenuItem& item) {
    auto* main = qobject_cast<QMainWindow*>(window_.get());
    const auto parent = menus_.find(item.parent());
    if (!main || (!item.parent().empty() && parent == menus_.end()))
        throw Laufzeitfehler(438, u"Menü fehlt im Fenster: " + form_.name() + u"." + item.name());
    QAction* action = nullptr;
    if (item.parent().empty()) {
        QMenu* menu = main->menuBar()->addMenu(QString());
        menus_[item.name()] = menu;
        action = menu->menuAction();
    } else {
        action = parent->second->addAction(QString());
    }
    action->setObjectName(qt(item.name()));
    adapters_.emplace(&item, Adapter_für(item, *action));
}

void FensterAnsicht::join_columns() {
    for (auto* view : window_->findChildren<PlanAnsicht*>()) {
        if (view->leading_name().isEmpty()) continue;
        auto* leader = window_->findChild<PlanAnsicht*>(view->leading_name());
        if (!leader) throw Laufzeitfehler(438, u"Leittabelle fehlt im Fenster: " + form_.name());
        view->set_leader(*leader);
    }
}

// --- what the logic asks for

void FensterAnsicht::control_changed(Control& control, Aspect aspect) {
    const auto hit = adapters_.find(&control);
    if (hit != adapters_.end()) hit->second->show(aspect);
}

void FensterAnsicht::title_changed() {
    // "[*]" would be taken for Qt's mark of a modified document.
    window_->setWindowTitle(qt(form_.title()).replace(QStringLiteral("[*]"), QStringLiteral("[*][*]")));
}

void FensterAnsicht::font_changed() {
    QFont font = QApplication::font();
    const QString family = qt(form_.font());
    if (QFontDatabase::hasFamily(family)) font.setFamily(family);
    window_->setFont(font);
    arrange();
}

void FensterAnsicht::arrange() {
    for (auto* bar : window_->findChildren<Flussleiste*>())
        bar->arrange();
    for (auto* view : window_->findChildren<PlanAnsicht*>())
        view->relayout();
}

void FensterAnsicht::show_first() {
    if (shown_) return;
    shown_ = true;
    if (form_.start_geometry)
        set_geometry(*form_.start_geometry);
    else if (window_->windowFlags().testFlag(Qt::FramelessWindowHint))
        window_->move(window_->screen()->availableGeometry().center() - window_->rect().center());
    // The keys go to the plan, unless the logic has chosen otherwise.
    auto* plan = window_->findChild<PlanAnsicht*>(QStringLiteral("msgFlexGrid"));
    if (plan && !window_->focusWidget()) plan->setFocus();
    if (form_.start_state == WindowState::Maximised) window_->setWindowState(Qt::WindowMaximized);
    window_->show();
}

void FensterAnsicht::paint_now() {
    show_first();
    window_->repaint();
}

PlanAnsicht* FensterAnsicht::plan_of(const Table& table) const {
    const auto hit = adapters_.find(&table);
    return hit == adapters_.end() ? nullptr : qobject_cast<PlanAnsicht*>(hit->second->widget());
}

bool FensterAnsicht::row_visible(const Table& table, int row) {
    auto* view = plan_of(table);
    return view && view->row_visible(row);
}

void FensterAnsicht::show_cell(Table& table, int row, int col) {
    if (auto* view = plan_of(table)) view->show_cell(row, col);
}

void FensterAnsicht::focus(Control& control) {
    const auto hit = adapters_.find(&control);
    if (hit != adapters_.end() && hit->second->widget())
        hit->second->widget()->setFocus(Qt::OtherFocusReason);
}

Geometry FensterAnsicht::geometry() {
    const bool normal = state() == WindowState::Normal || window_->normalGeometry().isEmpty();
    const QRect r = normal ? window_->geometry() : window_->normalGeometry();
    // With the frame, as move() takes it; of a maximised window Qt knows the inside only.
    const QPoint frame = window_->geometry().topLeft() - window_->pos();
    const QPoint corner = r.topLeft() - frame;
    const auto twips = [this](int pixels) { return Twips_aus_Pixel(pixels, *window_); };
    return {twips(corner.x()), twips(corner.y()), twips(r.width()), twips(r.height())};
}

void FensterAnsicht::set_geometry(const Geometry& g) {
    const auto pixels = [this](int twips) { return Pixel_aus_Twips(twips, *window_); };
    const QRect wish(pixels(g.left), pixels(g.top), pixels(g.width), pixels(g.height));
    if (wish.width() < 1 || wish.height() < 1) return;
    const QRect title(wish.left(), wish.top(), wish.width(), 30); // what a hand can take hold of
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect room = screen->availableGeometry();
        const QRect seen = room.intersected(title);
        if (seen.width() < 100 || seen.height() < 20) continue;
        const QSize size = wish.size().boundedTo(room.size()).expandedTo(window_->minimumSizeHint());
        window_->resize(size);
        // Wholly onto the screen, which may be a smaller one than where the place was noted.
        const auto fitting = [](int at, int first, int last) { return std::max(first, std::min(at, last)); };
        window_->move(fitting(wish.left(), room.left(), room.left() + room.width() - size.width()),
                      fitting(wish.top(), room.top(), room.top() + room.height() - size.height()));
        return;
    }
}

WindowState FensterAnsicht::state() {
    if (window_->isMinimized()) return WindowState::Minimised;
    return window_->isMaximized() ? WindowState::Maximised : WindowState::Normal;
}

void FensterAnsicht::set_state(WindowState state) {
    Qt::WindowStates states = window_->windowState() & ~(Qt::WindowMinimized | Qt::WindowMaximized);
    if (state == WindowState::Minimised) states |= Qt::WindowMinimized;
    if (state == WindowState::Maximised) states |= Qt::WindowMaximized;
    window_->setWindowState(states);
}

// --- what the user does with the window as a whole

bool FensterAnsicht::eventFilter(QObject* object, QEvent* event) {
    const auto type = event->type();
    if (type == QEvent::KeyPress || type == QEvent::ShortcutOverride) {
        auto* widget = qobject_cast<QWidget*>(object);
        if (!widget || widget->window() != window_.get()) return false;
        // A refused key climbs from parent to parent: it is asked about once, where it arrives.
        QWidget* focused = window_->focusWidget();
        auto& key = static_cast<QKeyEvent&>(*event);
        const bool arrives = widget == (focused ? focused : window_.get());
        if (arrives && key_event(key, type == QEvent::ShortcutOverride)) return true;
        return type == QEvent::KeyPress && widget == window_.get() && window_key(key);
    }
    return object == window_.get() && window_event(*event);
}

bool FensterAnsicht::window_event(QEvent& event) {
    if (event.type() == QEvent::Resize) form_.user_resize();
    if (event.type() != QEvent::Close) return false;
    event.ignore();
    Form& form = form_;
    if (form.user_close() && form.view() == this) emit closed_by_user(&form);
    return true;
}

// A key that neither the logic nor the control with the focus has taken. A key held down presses once.
bool FensterAnsicht::window_key(const QKeyEvent& event) {
    if (event.isAutoRepeat() || (event.modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier)))
        return false;
    if (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter) {
        auto* focused = qobject_cast<QPushButton*>(window_->focusWidget());
        if (!focused) return press(form_.default_button());
        focused->click();
        return true;
    }
    if (event.key() != Qt::Key_Escape) return false;
    if (form_.cancel_button()) return press(form_.cancel_button());
    if (form_.modal()) window_->close();
    return form_.modal();
}

bool FensterAnsicht::press(const Button* button) {
    const auto hit = adapters_.find(button);
    auto* widget = hit == adapters_.end() ? nullptr : qobject_cast<QPushButton*>(hit->second->widget());
    if (widget) widget->click();
    return widget;
}

bool FensterAnsicht::key_event(QKeyEvent& event, bool in_advance) {
    const auto key = Taste_aus(event);
    if (!key) return false;
    if (in_advance) {
        offered_ = {event.key(), event.modifiers(), false};
        const bool handled = form_.user_key(*key);
        offered_.handled = handled;
        if (handled) event.accept(); // no shortcut: the press comes here
        return handled;
    }
    const bool known = offered_.key == event.key() && offered_.mods == event.modifiers();
    const bool handled = known ? offered_.handled : form_.user_key(*key);
    offered_ = {};
    return handled;
}

} // namespace kalvora
