// The commands of a script, carried out on the active window as a hand would. A command that cannot be done
// throws Kommandofehler with the reason.
#pragma once

#include "ui/konsole/antworten.h"
#include "ui/konsole/kommandofehler.h"
#include "ui/konsole/konsolen_fenstersystem.h"

namespace kalvora {

class Kommandos {
public:
    explicit Kommandos(KonsolenFenstersystem& system) : system_(system) {}
    void ausführen(const Kommandozeile& zeile);

    // Does the line queue an answer, and no more?
    static bool reiht_Antwort_ein(const Kommandozeile& zeile);
    // Can the line be meant for a window that waits? Behind the last one the program has its turn.
    enum class Im_Warten { nicht, weiteres, letztes };
    static Im_Warten im_Warten(const Kommandozeile& zeile, const Form& form);

private:
    using Worte = std::vector<Wort>;
    struct Kommando;
    static const Kommando* kommando(TextView name);

    void klick(const Worte& worte);
    void setze(const Worte& worte);
    void wähle(const Worte& worte);
    void menü(const Worte& worte);
    void taste(const Worte& worte);
    void maus(const Worte& worte);
    void antworte(const Worte& worte);
    void eingabe(const Worte& worte) { einreihen(Dialogart::Eingabe, worte); }
    void datei(const Worte& worte) { einreihen(Dialogart::Datei, worte); }
    void ordner(const Worte& worte) { einreihen(Dialogart::Ordner, worte); }
    void farbe(const Worte& worte);
    void zeige(const Worte& worte);
    void zelle(const Worte& worte);
    void fenster(const Worte& worte);
    void warte(const Worte& worte);
    void ende(const Worte& worte);

    Form& aktives_Fenster() const;
    Control& control(TextView name) const; // "cmdAuswahl(8)"
    static Control* control_von(const Form& form, TextView name);
    void einreihen(Dialogart art, const Worte& worte);
    void Control_zeigen(const Control& control, const Text& vorn);

    KonsolenFenstersystem& system_;
    int nummer_ = 0; // line of the command
};

} // namespace kalvora
