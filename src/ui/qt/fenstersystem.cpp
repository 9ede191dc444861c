#include "ui/qt/fenstersystem.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QShortcut>
#include <QTimer>
#include <QWindow>
#include <algorithm>

#include "ui/qt/deutsche_texte.h"
#include "ui/qt/farben.h"
#include "ui/qt/logo.h"
#include "ui/qt/plan_zugang.h"
#include "ui/qt/qt_text.h"
#include "ui/qt/stil.h"

namespace kalvora {

QtFenstersystem::QtFenstersystem() : german_(std::make_unique<DeutscheTexte>()) {
    QApplication::setStyle(new Programmstil); // the application owns it
    QApplication::setPalette(helle_Palette());
    QApplication::setWindowIcon(Programmsymbol());
    QApplication::setQuitOnLastWindowClosed(false);
    QCoreApplication::installTranslator(german_.get());
    Zugang_für_Pläne_einrichten();
}

QtFenstersystem::~QtFenstersystem() {
    for (auto& view : views_)
        delete view.data();
    QCoreApplication::removeTranslator(german_.get());
    set_pointer(Mauszeiger::Standard);
}

// --- windows

void QtFenstersystem::open(Form& form) {
    auto view = std::make_unique<FensterAnsicht>(form, Fenster_aus_Formular(form.name()));
    QWidget& window = view->window();
    if (form.modal()) {
        if (QWidget* below = front()) window.setParent(below, Qt::Dialog);
        window.setWindowModality(Qt::ApplicationModal);
    }
    connect(view.get(), &FensterAnsicht::closed_by_user, this, &QtFenstersystem::closed_by_user);
    views_.emplace_back(view.release());
    if (!window.property("sofort").toBool()) return;
    // The splash window must be seen before the long work behind it begins.
    views_.back()->show_first();
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 200 && !(window.windowHandle() && window.windowHandle()->isExposed()))
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    window.repaint();
}

void QtFenstersystem::close(Form& form) {
    FensterAnsicht* gone = view(form);
    if (!gone) return;
    std::erase_if(views_, [gone](const auto& v) { return v == gone; });
    gone->detach();
    gone->deleteLater();
    for (const Schleife& s : loops_)
        if (s.form == &form) s.loop->quit();
}

void QtFenstersystem::closed_by_user(Form* form) {
    for (const Schleife& s : loops_)
        if (s.form == form) {
            s.loop->quit(); // whoever runs the window closes it
            return;
        }
    form->app().close(*form);
}

FensterAnsicht* QtFenstersystem::view(const Form& form) const {
    for (const auto& v : views_)
        if (v && &v->form() == &form) return v;
    return nullptr;
}

QWidget* QtFenstersystem::window(const Form& form) const {
    FensterAnsicht* v = view(form);
    return v ? &v->window() : nullptr;
}

QWidget* QtFenstersystem::front() const {
    for (auto v = views_.rbegin(); v != views_.rend(); ++v)
        if (*v && (*v)->window().isVisible()) return &(*v)->window();
    return nullptr;
}

void QtFenstersystem::show_waiting() {
    for (const auto& v : views_)
        if (v) v->show_first();
}

bool QtFenstersystem::active(const Form& form) {
    const QWidget* w = window(form);
    const QWidget* modal = QApplication::activeModalWidget();
    return w && w->isActiveWindow() && (!modal || modal == w) && !QApplication::activePopupWidget();
}

// --- loops

void QtFenstersystem::enter(QEventLoop& loop, const Form* form) {
    loops_.push_back({&loop, form});
    show_waiting(); // may reach logic already: what fails there leaves no loop to enter
    if (!form || !form->app().failed()) loop.exec();
    loops_.pop_back();
}

void QtFenstersystem::loop_until_closed(const Form& form) {
    if (!view(form)) return;
    QEventLoop loop;
    enter(loop, &form);
}

void QtFenstersystem::quit() {
    for (const Schleife& s : loops_)
        s.loop->quit();
}

void QtFenstersystem::process_events() {
    show_waiting();
    QCoreApplication::processEvents();
}

void QtFenstersystem::wait(double seconds) {
    QEventLoop loop;
    QTimer::singleShot(std::max(0, qRound(seconds * 1000)), &loop, &QEventLoop::quit);
    enter(loop, nullptr);
}

// --- messages

namespace {

struct Knopf {
    Antwort antwort;
    const char16_t* text;
    const char16_t* taste; // works with Alt and without
    QMessageBox::ButtonRole rolle;
};

constexpr Knopf JA{Antwort::Ja, u"Ja", u"J", QMessageBox::YesRole};
constexpr Knopf NEIN{Antwort::Nein, u"Nein", u"N", QMessageBox::NoRole};
constexpr Knopf ABBRECHEN{Antwort::Abbrechen, u"Abbrechen", u"A", QMessageBox::RejectRole};

void richte_ein(QMessageBox& box, const Text& text, QMessageBox::Icon symbol) {
    box.setIcon(symbol);
    box.setWindowTitle(QStringLiteral("Kalvora"));
    box.setTextFormat(Qt::PlainText);
    box.setText(qt(text));
    box.setWindowModality(Qt::ApplicationModal);
    const auto* icon = box.findChild<QLabel*>(QStringLiteral("qt_msgboxex_icon_label"));
    auto* label = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
    if (!icon || !label) return;
    // A single line stands in the middle of the icon; of several, all are to be seen.
    label->setMinimumHeight(
        std::max(icon->sizeHint().height(), label->fontMetrics().size(0, qt(text)).height()));
    label->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

} // namespace

void QtFenstersystem::message(const Text& text) {
    show_waiting();
    QMessageBox box(front());
    richte_ein(box, text, QMessageBox::Warning);
    auto* ok = box.addButton(QStringLiteral("OK"), QMessageBox::AcceptRole);
    box.setDefaultButton(ok);
    box.setEscapeButton(ok);
    QEventLoop loop;
    connect(&box, &QDialog::finished, &loop, &QEventLoop::quit);
    box.show();
    beep();
    enter(loop, nullptr);
}

Antwort QtFenstersystem::question(const Text& text, const Frageart& art) {
    show_waiting();
    QMessageBox box(front());
    richte_ein(box, text, art.symbol == Fragesymbol::Frage ? QMessageBox::Question : QMessageBox::Warning);
    std::vector<Knopf> choice{JA, NEIN};
    if (art.mit_Abbrechen) choice.push_back(ABBRECHEN);
    const Antwort escape = choice.back().antwort;
    std::vector<std::pair<QAbstractButton*, Antwort>> buttons;
    for (const Knopf& k : choice) {
        QPushButton* button = box.addButton(QLatin1Char('&') + QString::fromUtf16(k.text), k.rolle);
        const QString taste = QString::fromUtf16(k.taste);
        button->setShortcut(QKeySequence(taste));
        const auto* mit_Alt = new QShortcut(QKeySequence(QStringLiteral("Alt+") + taste), &box);
        connect(mit_Alt, &QShortcut::activated, button, [button] { button->click(); });
        if (k.antwort == art.vorgabe) box.setDefaultButton(button);
        if (k.antwort == escape) box.setEscapeButton(button);
        buttons.emplace_back(button, k.antwort);
    }
    QEventLoop loop;
    connect(&box, &QDialog::finished, &loop, &QEventLoop::quit);
    box.show();
    beep();
    enter(loop, nullptr);
    for (const auto& [button, answer] : buttons)
        if (box.clickedButton() == button) return answer;
    return escape; // the loops were left
}

std::optional<Text> QtFenstersystem::input(const Text& prompt, const Text& title, const Text& preset) {
    show_waiting();
    QInputDialog box(front());
    box.setWindowTitle(qt(title));
    box.setLabelText(qt(prompt));
    box.setTextValue(qt(preset));
    box.setOkButtonText(QStringLiteral("OK"));
    box.setCancelButtonText(QStringLiteral("Abbrechen"));
    QEventLoop loop;
    connect(&box, &QDialog::finished, &loop, &QEventLoop::quit);
    box.setModal(true);
    box.show();
    enter(loop, nullptr);
    if (box.result() != QDialog::Accepted) return std::nullopt;
    return aus_qt(box.textValue());
}

void QtFenstersystem::beep() {
    QApplication::beep();
}

void QtFenstersystem::set_pointer(Mauszeiger pointer) {
    while (QApplication::overrideCursor())
        QApplication::restoreOverrideCursor();
    if (pointer == Mauszeiger::Standard) return;
    QApplication::setOverrideCursor(pointer == Mauszeiger::Sanduhr ? Qt::WaitCursor : Qt::ArrowCursor);
}

} // namespace kalvora
