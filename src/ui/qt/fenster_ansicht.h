// The Qt side of one window: the widget from its layout file, bound control by control.
#pragma once

#include <QMenu>
#include <QWidget>
#include <map>
#include <unordered_map>

#include "ui/qt/adapter.h"

namespace kalvora {

class PlanAnsicht;

class FensterAnsicht : public QObject, public FormView {
    Q_OBJECT
public:
    // Takes `window` and binds every control of `form`; throws when one has no fitting widget.
    FensterAnsicht(Form& form, std::unique_ptr<QWidget> window);
    ~FensterAnsicht() override;
    // The window goes; the view itself outlives the event under which that happens.
    void detach();

    Form& form() const { return form_; }
    QWidget& window() const { return *window_; }
    void show_first(); // does nothing once the window has been shown

    void control_changed(Control& control, Aspect aspect) override;
    void title_changed() override;
    void font_changed() override;
    void arrange() override;
    void paint_now() override;
    bool row_visible(const Table& table, int row) override;
    void show_cell(Table& table, int row, int col) override;
    void focus(Control& control) override;
    Geometry geometry() override;
    void set_geometry(const Geometry& geometry) override;
    WindowState state() override;
    void set_state(WindowState state) override;

signals:
    void closed_by_user(kalvora::Form* form);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void bind();
    PlanAnsicht* plan_of(const Table& table) const;
    void bind_menu(MenuItem& item);
    void join_columns();
    bool window_event(QEvent& event);
    bool key_event(QKeyEvent& event, bool in_advance);
    bool window_key(const QKeyEvent& event);
    bool press(const Button* button);

    Form& form_;
    std::unique_ptr<QWidget> window_;
    std::unordered_map<const Control*, std::unique_ptr<Adapter>> adapters_;
    std::map<Text, QMenu*> menus_;
    // A key is offered to the window's logic before Qt looks for shortcuts; its press follows.
    struct {
        int key = 0;
        Qt::KeyboardModifiers mods;
        bool handled = false;
    } offered_;
    bool attached_ = false, shown_ = false;
};

// The layout of a window, nullptr when there is none of that name.
std::unique_ptr<QWidget> Fenster_aus_Formular(TextView name);

} // namespace kalvora
