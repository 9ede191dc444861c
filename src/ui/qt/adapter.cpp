#include "ui/qt/adapter.h"

#include <QComboBox>
#include <QGuiApplication>
#include <QSignalBlocker>
#include <QTimer>

#include "base/fehler.h"
#include "ui/qt/bausteine.h"
#include "ui/qt/farben.h"
#include "ui/qt/plan_ansicht.h"
#include "ui/qt/qt_text.h"

namespace kalvora {

namespace {

constexpr int MINDESTBREITE_GRUND = 1800; // twips, a reason's button

template <class W>
W& Baustein(const Control& control, const QWidget& window) {
    auto* any = window.findChild<QWidget*>(qt(control.object_name()));
    const Text where = control.form().name() + u"." + control.full_name();
    if (!any) throw Laufzeitfehler(FEHLER_BAUTEIL, u"Steuerelement fehlt im Fenster: " + where);
    auto* typed = qobject_cast<W*>(any);
    if (!typed) throw Laufzeitfehler(FEHLER_BAUTEIL, u"Steuerelement von anderer Art: " + where);
    return *typed;
}

// What is the same for every widget.
template <class C, class W>
class WidgetAdapter : public Adapter {
public:
    WidgetAdapter(Control& control, const QWidget& window)
        : control_(static_cast<C&>(control)), widget_(Baustein<W>(control, window)) {}
    QWidget* widget() const override { return &widget_; }
    void detach() override { widget_.disconnect(this); }

protected:
    void show_state() {
        const QSignalBlocker quiet(widget_);
        widget_.setEnabled(control_.enabled());
        widget_.setVisible(control_.visible());
    }
    C& control_;
    W& widget_;
};

class LabelAdapter : public WidgetAdapter<Label, QLabel> {
public:
    LabelAdapter(Control& control, const QWidget& window) : WidgetAdapter(control, window) {
        widget_.setTextFormat(Qt::PlainText);
    }
    void show(Aspect aspect) override {
        if (aspect == Aspect::State)
            show_state();
        else
            widget_.setText(qt(control_.text()));
    }
    void show_all() override {
        show(Aspect::Content);
        show_state();
    }
};

class ButtonAdapter : public WidgetAdapter<Button, QPushButton> {
public:
    ButtonAdapter(Control& control, const QWidget& window) : WidgetAdapter(control, window) {
        connect(&widget_, &QPushButton::clicked, this, [this] { control_.user_click(Tasten()); });
    }
    void show(Aspect aspect) override {
        switch (aspect) {
        case Aspect::State: show_button_state(); break;
        case Aspect::Colours: show_colours(); break;
        case Aspect::Layout: show_width(); break;
        default: show_caption(); break;
        }
    }
    void show_all() override {
        show_caption();
        show_colours();
        show_width();
        show_button_state();
    }

private:
    static Modifiers Tasten() {
        const auto m = QGuiApplication::keyboardModifiers();
        return {m.testFlag(Qt::ShiftModifier), m.testFlag(Qt::ControlModifier), m.testFlag(Qt::AltModifier)};
    }
    void show_button_state() {
        show_state();
        widget_.setDefault(control_.is_default());
    }
    void show_caption() {
        QString caption = qt(control_.caption());
        if (!control_.mnemonics()) caption.replace(u'&', QStringLiteral("&&"));
        widget_.setText(caption);
    }
    void show_colours() {
        auto* coloured = qobject_cast<Farbknopf*>(&widget_);
        if (coloured && control_.coloured()) coloured->set_colours(qt(control_.fore()), qt(control_.back()));
    }
    void show_width() {
        auto* coloured = qobject_cast<Farbknopf*>(&widget_);
        if (!coloured) return;
        const int least = control_.name() == u"cmdAuswahl" ? MINDESTBREITE_GRUND : 0;
        coloured->set_wish_width(Pixel_aus_Twips(control_.width() > 0 ? control_.width() : least, widget_));
    }
};

class ComboAdapter : public WidgetAdapter<ComboBox, QComboBox> {
public:
    ComboAdapter(Control& control, const QWidget& window) : WidgetAdapter(control, window) {
        connect(&widget_, &QComboBox::activated, this, [this](int item) {
            control_.user_select(item);
            show(Aspect::Selection);
        });
    }
    void show(Aspect aspect) override {
        const QSignalBlocker quiet(widget_);
        if (aspect == Aspect::State) {
            show_state();
            return;
        }
        if (aspect == Aspect::Items) {
            widget_.clear();
            for (const Text& item : control_.items())
                widget_.addItem(qt(item));
        }
        widget_.setCurrentIndex(control_.selected());
    }
    void show_all() override {
        show(Aspect::Items);
        show_state();
    }
};

class TabAdapter : public WidgetAdapter<TabStrip, QTabBar> {
public:
    TabAdapter(Control& control, const QWidget& window) : WidgetAdapter(control, window) {
        connect(&widget_, &QTabBar::currentChanged, this, [this](int tab) {
            control_.user_select(tab);
            show(Aspect::Selection);
        });
        if (auto* reiter = qobject_cast<Reiter*>(&widget_))
            connect(reiter, &Reiter::arrow, this, [this](int step) {
                control_.user_arrow(step);
                show(Aspect::Selection);
            });
    }
    void show(Aspect aspect) override {
        const QSignalBlocker quiet(widget_);
        if (aspect == Aspect::Items) show_captions();
        if (aspect == Aspect::Items || aspect == Aspect::State) {
            show_state();
            for (int tab = 0; tab < widget_.count(); ++tab)
                widget_.setTabEnabled(tab, control_.tab_enabled(tab));
        }
        widget_.setCurrentIndex(control_.selected());
    }
    void show_all() override { show(Aspect::Items); }

private:
    void show_captions() {
        const auto& captions = control_.captions();
        while (widget_.count() > static_cast<int>(captions.size()))
            widget_.removeTab(widget_.count() - 1);
        while (widget_.count() < static_cast<int>(captions.size()))
            widget_.addTab(QString());
        for (int tab = 0; tab < widget_.count(); ++tab)
            widget_.setTabText(
                tab, qt(captions[static_cast<std::size_t>(tab)]).replace(u'&', QStringLiteral("&&")));
    }
};

class TableAdapter : public WidgetAdapter<Table, PlanAnsicht> {
public:
    TableAdapter(Control& control, const QWidget& window) : WidgetAdapter(control, window) {
        widget_.set_table(&control_);
    }
    void detach() override { widget_.set_table(nullptr); }
    void show(Aspect aspect) override {
        if (aspect == Aspect::State)
            show_state();
        else
            widget_.table_changed(aspect);
    }
    void show_all() override {
        widget_.relayout();
        show_state();
    }
};

class BoxAdapter : public WidgetAdapter<FloatingBox, Schwebefeld> {
public:
    BoxAdapter(Control& control, const QWidget& window)
        : WidgetAdapter(control, window),
          table_(window.findChild<PlanAnsicht*>(QStringLiteral("msgFlexGrid"))) {}
    void show(Aspect) override {
        if (control_.visible()) widget_.place(anchor());
        widget_.setVisible(control_.visible());
    }
    void show_all() override { show(Aspect::State); }

private:
    QRect anchor() const {
        if (!table_) return {};
        const QRect cell = table_->cell_rect(control_.row(), control_.column());
        return {table_->viewport()->mapTo(widget_.parentWidget(), cell.topLeft()), cell.size()};
    }
    PlanAnsicht* table_;
};

class MenuAdapter : public Adapter {
public:
    MenuAdapter(MenuItem& item, QAction& action) : item_(item), action_(action) {
        connect(&action_, &QAction::triggered, this, [this] { item_.user_click(); });
    }
    void show(Aspect) override {
        if (item_.caption() == u"-") {
            action_.setSeparator(true);
        } else {
            const QString keys = qt(item_.shortcut());
            action_.setText(keys.isEmpty() ? qt(item_.caption()) : qt(item_.caption()) + u'\t' + keys);
        }
        action_.setEnabled(item_.enabled());
        action_.setVisible(item_.visible());
    }
    void show_all() override { show(Aspect::Content); }

    void detach() override { action_.disconnect(this); }

private:
    MenuItem& item_;
    QAction& action_;
};

class TimerAdapter : public Adapter {
public:
    explicit TimerAdapter(Timer& timer) : timer_(timer) {
        clock_.setInterval(qRound(timer.seconds() * 1000));
        connect(&clock_, &QTimer::timeout, this, [this] { timer_.tick(); });
    }
    void show(Aspect) override {
        if (timer_.enabled() == clock_.isActive()) return;
        if (timer_.enabled())
            clock_.start();
        else
            clock_.stop();
    }
    void show_all() override { show(Aspect::State); }

    void detach() override { clock_.stop(); }

private:
    Timer& timer_;
    QTimer clock_;
};

} // namespace

std::unique_ptr<Adapter> Adapter_für(Control& control, QWidget& window) {
    switch (control.kind()) {
    case ControlKind::Label: return std::make_unique<LabelAdapter>(control, window);
    case ControlKind::Button: return std::make_unique<ButtonAdapter>(control, window);
    case ControlKind::ComboBox: return std::make_unique<ComboAdapter>(control, window);
    case ControlKind::TabStrip: return std::make_unique<TabAdapter>(control, window);
    case ControlKind::Table: return std::make_unique<TableAdapter>(control, window);
    case ControlKind::FloatingBox: return std::make_unique<BoxAdapter>(control, window);
    case ControlKind::Timer: return std::make_unique<TimerAdapter>(static_cast<Timer&>(control));
    case ControlKind::MenuItem: break;
    }
    throw Laufzeitfehler(438, u"Steuerelement ohne Darstellung: " + control.form().name() + u"." +
                                  control.full_name());
}

std::unique_ptr<Adapter> Adapter_für(MenuItem& item, QAction& action) {
    return std::make_unique<MenuAdapter>(item, action);
}

} // namespace kalvora
