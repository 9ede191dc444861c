// The windowing system of the console. Its loops read commands; what the program shows goes to the
// transcript; questions take the queued answers, otherwise their default.
#pragma once

#include <memory>

#include "platform/window/application.h"
#include "ui/konsole/antworten.h"
#include "ui/konsole/konsolen_sicht.h"
#include "ui/konsole/skriptleser.h"

namespace kalvora {

class KonsolenFenstersystem : public WindowSystem {
public:
    KonsolenFenstersystem(Protokoll& protokoll, Zeilenquelle& quelle, Skriptuhr& uhr);

    // Behind the program's end: answers and commands that are left over are mistakes; then the line ENDE.
    void abschließen();

    // --- WindowSystem
    void open(Form& form) override;
    void close(Form& form) override;
    void run(Form& main) override;
    void run_modal(Form& form) override { schleife(form); }
    void quit() override;
    void message(const Text& text) override;
    Antwort question(const Text& text, const Frageart& art) override;
    std::optional<Text> input(const Text& prompt, const Text& title, const Text& preset) override;
    void process_events() override {}
    void wait(double seconds) override { vergehen(seconds); }
    void wait_in(Form& form, double seconds) override;
    void status(const Text& text) override;
    void beep() override {}
    void set_pointer(Mauszeiger) override {}
    bool active(const Form& form) override { return aktives_Fenster() == &form; }

    // --- for the commands
    Form* aktives_Fenster() const; // the innermost modal one, else the main window; nullptr when none is open
    bool offen(const Form& form) const;
    bool beendet(const Form& form) const; // its loop is on the way out, or it is closed
    KonsolenSicht& sicht(const Form& form);
    const std::vector<std::unique_ptr<KonsolenSicht>>& fenster() const { return fenster_; } // outermost first
    void vergehen(double seconds); // time passes, and the timers due in it tick
    bool schließen(Form& form);    // by its frame; false: it stays open
    void Ende_verlangen() { ende_ = true; }
    void warten(double seconds);                         // the command
    int Schleifenzahl() const { return schleifenzahl_; } // grows with every window loop that began
    Antwortvorrat& antworten() { return antworten_; }
    Protokoll& protokoll() { return protokoll_; }

    std::function<void()> nach_Kommando; // a terminal draws here

private:
    struct Schleife;
    void schleife(Form& form);
    bool nächstes_Kommando(); // false: no more
    void ausführen(const Kommandozeile& zeile);
    void Ende_ausführen(Schleife& schleife);
    void Ende_der_Eingabe();
    void Startantworten_lesen();
    void Wartekommandos_lesen(const Form& form);

    Protokoll& protokoll_;
    Skriptleser leser_;
    Skriptuhr& uhr_;
    Zeitgeber zeitgeber_;
    Antwortvorrat antworten_;
    std::vector<std::unique_ptr<KonsolenSicht>> fenster_;
    std::vector<Schleife*> schleifen_; // outermost first
    int schleifenzahl_ = 0;
    int nummer_ = 0;         // line of the running command
    bool hauptlauf_ = false; // the main window's loop has begun
    bool ende_ = false;      // `ende` was given and is under way
    bool Eingabe_zu_Ende_ = false;
    Form* wartendes_ = nullptr; // the window in which the program waits in a loop of its own
    double wartezeit_ = 0;      // granted by `warte` to that window and not yet gone by
};

} // namespace kalvora
