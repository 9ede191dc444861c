// The windowing system of the desktop program: windows from layout files, messages, loops.
#pragma once

#include <QEventLoop>
#include <QPointer>
#include <QTranslator>
#include <vector>

#include "platform/window/application.h"
#include "ui/qt/fenster_ansicht.h"

namespace kalvora {

// Style, colours, font, icon and the German texts of Qt's own dialogs. The QApplication must exist.
class QtFenstersystem : public QObject, public WindowSystem {
    Q_OBJECT
public:
    QtFenstersystem();
    ~QtFenstersystem() override;

    void open(Form& form) override; // throws when the layout does not fit the form
    void close(Form& form) override;
    void run(Form& main) override { loop_until_closed(main); }
    void run_modal(Form& form) override { loop_until_closed(form); }
    void quit() override;
    void message(const Text& text) override;
    Antwort question(const Text& text, const Frageart& art) override;
    std::optional<Text> input(const Text& prompt, const Text& title, const Text& preset) override;
    void process_events() override;
    void wait(double seconds) override;
    void beep() override;
    void set_pointer(Mauszeiger pointer) override;
    bool active(const Form& form) override;

    FensterAnsicht* view(const Form& form) const; // nullptr when it is not open
    QWidget* window(const Form& form) const;

private:
    struct Schleife {
        QEventLoop* loop;
        const Form* form; // nullptr: a message or a pause
    };
    void loop_until_closed(const Form& form);
    void enter(QEventLoop& loop, const Form* form);
    void closed_by_user(Form* form);
    void show_waiting(); // windows are shown when the program first lets events pass
    QWidget* front() const;

    std::unique_ptr<QTranslator> german_;
    std::vector<QPointer<FensterAnsicht>> views_; // outermost first
    std::vector<Schleife> loops_;                 // outermost first
};

} // namespace kalvora
