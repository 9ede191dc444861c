#include "ui/konsole/kommandos.h"

#include <array>

#include "ui/konsole/bedienung.h"
#include "ui/konsole/maus.h"
#include "ui/konsole/tastatur.h"

namespace kalvora {

struct Kommandos::Kommando {
    TextView name;
    std::size_t mindestens, höchstens; // words behind the command
    TextView gebrauch;
    void (Kommandos::*ausführen)(const Worte&);
    bool antwort = false; // queues an answer, and no more
    Im_Warten im_Warten = Im_Warten::nicht;
};

const Kommandos::Kommando* Kommandos::kommando(TextView name) {
    static constexpr std::array TABELLE{
        Kommando{u"klick", 1, 4, u"klick CONTROL [umschalt] [strg] [alt]", &Kommandos::klick, false,
                 Im_Warten::letztes},
        Kommando{u"setze", 2, 2, u"setze CONTROL TEXT", &Kommandos::setze},
        Kommando{u"wähle", 2, 2, u"wähle CONTROL TEXT oder #N", &Kommandos::wähle},
        Kommando{u"menü", 1, 1, u"menü NAME", &Kommandos::menü},
        Kommando{u"taste", 1, 1, u"taste TASTE", &Kommandos::taste, false, Im_Warten::letztes},
        Kommando{u"maus", 4, 9,
                 u"maus links|rechts|doppel TABELLE ZEILE SPALTE [bis ZEILE SPALTE] [umschalt] [strg]",
                 &Kommandos::maus},
        Kommando{u"antworte", 1, 1, u"antworte ja|nein|abbrechen", &Kommandos::antworte, true},
        Kommando{u"eingabe", 1, 1, u"eingabe TEXT", &Kommandos::eingabe, true},
        Kommando{u"datei", 1, 1, u"datei PFAD", &Kommandos::datei, true},
        Kommando{u"ordner", 1, 1, u"ordner PFAD", &Kommandos::ordner, true},
        Kommando{u"farbe", 1, 1, u"farbe &HBBGGRR", &Kommandos::farbe, true},
        Kommando{u"zeige", 0, 1, u"zeige [CONTROL]", &Kommandos::zeige, false, Im_Warten::weiteres},
        Kommando{u"zelle", 3, 3, u"zelle TABELLE ZEILE SPALTE", &Kommandos::zelle},
        Kommando{u"fenster", 0, 0, u"fenster", &Kommandos::fenster},
        Kommando{u"warte", 1, 1, u"warte SEKUNDEN", &Kommandos::warte, false, Im_Warten::letztes},
        Kommando{u"ende", 0, 0, u"ende", &Kommandos::ende},
    };
    for (const Kommando& k : TABELLE)
        if (k.name == name) return &k;
    return nullptr;
}

void Kommandos::ausführen(const Kommandozeile& zeile) {
    if (!zeile.fehler.empty()) throw Kommandofehler(zeile.fehler);
    const Kommando* k = kommando(zeile.worte.front().text);
    if (!k) throw Kommandofehler(u"Unbekanntes Kommando " + zitiert(zeile.worte.front().text));
    const Worte worte(zeile.worte.begin() + 1, zeile.worte.end());
    if (worte.size() < k->mindestens || worte.size() > k->höchstens)
        throw Kommandofehler(u"Gebrauch: " + Text(k->gebrauch));
    nummer_ = zeile.nummer;
    (this->*k->ausführen)(worte);
}

bool Kommandos::reiht_Antwort_ein(const Kommandozeile& zeile) {
    const Kommando* k = zeile.fehler.empty() ? kommando(zeile.worte.front().text) : nullptr;
    return k && k->antwort;
}

Kommandos::Im_Warten Kommandos::im_Warten(const Kommandozeile& zeile, const Form& form) {
    const Kommando* k = zeile.fehler.empty() ? kommando(zeile.worte.front().text) : nullptr;
    if (!k || k->im_Warten == Im_Warten::nicht) return Im_Warten::nicht;
    if (k->ausführen == &Kommandos::taste) { // default and cancel button; other keys are the main window's
        const bool Knopf = zeile.worte.size() == 2 && (gleich_ohne_Fall(zeile.worte[1].text, u"Esc") ||
                                                       gleich_ohne_Fall(zeile.worte[1].text, u"Eingabe"));
        return Knopf ? k->im_Warten : Im_Warten::nicht;
    }
    const bool anderswohin = k->ausführen != &Kommandos::warte && zeile.worte.size() > 1 &&
                             !control_von(form, zeile.worte[1].text);
    return anderswohin ? Im_Warten::nicht : k->im_Warten;
}

// --- finding

Form& Kommandos::aktives_Fenster() const {
    Form* form = system_.aktives_Fenster();
    if (!form) throw Kommandofehler(u"Es ist kein Fenster offen");
    return *form;
}

Control& Kommandos::control(TextView name) const {
    const Form& form = aktives_Fenster();
    if (Control* control = control_von(form, name)) return *control;
    throw Kommandofehler(u"Kein Steuerelement " + zitiert(name) + u" in " + form.name());
}

Control* Kommandos::control_von(const Form& form, TextView name) {
    for (Control* control : form.controls())
        if (control->full_name() == name) return control;
    return nullptr;
}

namespace {

bool Modifier_aus(TextView wort, Modifiers& mods) {
    bool* taste = wort == u"umschalt" ? &mods.shift
                  : wort == u"strg"   ? &mods.ctrl
                  : wort == u"alt"    ? &mods.alt
                                      : nullptr;
    if (taste) *taste = true;
    return taste != nullptr;
}

Modifiers Modifiers_aus(const std::vector<Wort>& worte, std::size_t ab) {
    Modifiers mods;
    for (std::size_t i = ab; i < worte.size(); ++i)
        if (!Modifier_aus(worte[i].text, mods))
            throw Kommandofehler(u"Umschalttaste erwartet statt " + zitiert(worte[i].text));
    return mods;
}

// "&" marks the mnemonic and is left away; "&&" is the character itself.
Text ohne_Mnemonic(TextView caption) {
    Text ergebnis;
    for (std::size_t i = 0; i < caption.size(); ++i) {
        if (caption[i] == u'&' && ++i == caption.size()) break;
        ergebnis += caption[i];
    }
    return ergebnis;
}

int Eintragsnummer(const Control& control, const std::vector<Text>& einträge, const Wort& wort) {
    const int anzahl = static_cast<int>(einträge.size());
    if (!wort.zitiert && zeichen(wort.text, 1) == u'#' && nur_Ziffern(mitte(wort.text, 2))) {
        const long nummer = Val(mitte(wort.text, 2));
        if (nummer < anzahl) return static_cast<int>(nummer);
    }
    for (int i = 0; i < anzahl; ++i) {
        const Text& eintrag = einträge[static_cast<std::size_t>(i)];
        if (eintrag == wort.text || ohne_Mnemonic(eintrag) == wort.text) return i;
    }
    throw Kommandofehler(control.full_name() + u" hat keinen Eintrag " + zitiert(wort.text));
}

Table& Tabelle(Control& control) {
    auto* table = dynamic_cast<Table*>(&control);
    if (!table) throw Kommandofehler(control.full_name() + u" ist keine Tabelle");
    return *table;
}

} // namespace

// --- acting

void Kommandos::klick(const Worte& worte) {
    Control& ziel = control(worte[0].text);
    const auto klick = bedienung(ziel.kind()).klick;
    if (!klick) throw Kommandofehler(ziel.full_name() + u" lässt sich nicht anklicken");
    const Modifiers mods = Modifiers_aus(worte, 1);
    Erreichbarkeit_verlangen(ziel);
    system_.sicht(ziel.form()).focus(ziel);
    Annahme_verlangen(ziel, klick(ziel, mods));
}

void Kommandos::setze(const Worte& worte) {
    Control& ziel = control(worte[0].text);
    const auto setze = bedienung(ziel.kind()).setze;
    if (!setze) throw Kommandofehler(ziel.full_name() + u" nimmt keinen Text an");
    Erreichbarkeit_verlangen(ziel);
    system_.sicht(ziel.form()).focus(ziel);
    Annahme_verlangen(ziel, setze(ziel, worte[1].text));
}

void Kommandos::wähle(const Worte& worte) {
    Control& ziel = control(worte[0].text);
    const Bedienung& art = bedienung(ziel.kind());
    if (!art.wähle) throw Kommandofehler(ziel.full_name() + u" hat nichts zu wählen");
    Erreichbarkeit_verlangen(ziel);
    const int eintrag = Eintragsnummer(ziel, art.einträge(ziel), worte[1]);
    system_.sicht(ziel.form()).focus(ziel);
    Annahme_verlangen(ziel, art.wähle(ziel, eintrag));
}

void Kommandos::menü(const Worte& worte) {
    Control& ziel = control(worte[0].text);
    auto* eintrag = dynamic_cast<MenuItem*>(&ziel);
    if (!eintrag) throw Kommandofehler(ziel.full_name() + u" ist kein Menüeintrag");
    Erreichbarkeit_verlangen(ziel);
    Annahme_verlangen(ziel, eintrag->user_click());
}

void Kommandos::taste(const Worte& worte) {
    Taste_drücken(system_, aktives_Fenster(), Taste_aus(worte[0].text));
}

void Kommandos::maus(const Worte& worte) {
    static constexpr std::array<TextView, 3> ARTEN{u"links", u"rechts", u"doppel"};
    Mausbefehl befehl;
    std::size_t art = 0;
    while (art < ARTEN.size() && ARTEN[art] != worte[0].text)
        ++art;
    if (art == ARTEN.size()) throw Kommandofehler(u"Unbekannte Maustaste " + zitiert(worte[0].text));
    befehl.art = static_cast<Mausart>(art);

    Table& table = Tabelle(control(worte[1].text));
    befehl.von = befehl.bis = Zelle_aus(table, worte[2], worte[3]);
    std::size_t weiter = 4;
    if (worte.size() > weiter && worte[weiter].text == u"bis") {
        if (worte.size() < 7) throw Kommandofehler(u"Hinter bis fehlen Zeile und Spalte");
        if (befehl.art != Mausart::Links) throw Kommandofehler(u"bis gibt es nur bei maus links");
        befehl.bis = Zelle_aus(table, worte[5], worte[6]);
        weiter = 7;
    }
    befehl.mods = Modifiers_aus(worte, weiter);
    Erreichbarkeit_verlangen(table);
    Maus_bedienen(system_, table, befehl);
}

// --- answers

void Kommandos::einreihen(Dialogart art, const Worte& worte) {
    system_.antworten().einreihen({art, worte[0].text, nummer_});
}

void Kommandos::antworte(const Worte& worte) {
    const Text& wort = worte[0].text;
    if (wort != u"ja" && wort != u"nein" && wort != u"abbrechen")
        throw Kommandofehler(u"Unbekannte Antwort " + zitiert(wort));
    einreihen(Dialogart::Frage, worte);
}

void Kommandos::farbe(const Worte& worte) {
    if (!Farbe_aus_Hex(worte[0].text)) throw Kommandofehler(u"Keine Farbe: " + zitiert(worte[0].text));
    einreihen(Dialogart::Farbwahl, worte);
}

// --- looking

void Kommandos::Control_zeigen(const Control& control, const Text& vorn) {
    const auto zeilen = bedienung(control.kind()).wert(control);
    const Text hinten = bedienbar(control) ? u"" : u" gesperrt";
    if (control.kind() != ControlKind::Table) {
        for (const Text& zeile : zeilen)
            system_.protokoll().zeile(vorn + zeile + hinten);
        return;
    }
    // A table's rows stand below its name.
    const Text kopf = Text(trimmen(vorn)) + hinten;
    if (!kopf.empty()) system_.protokoll().zeile(trimmen(kopf));
    for (const Text& zeile : zeilen)
        system_.protokoll().zeile(zeile);
}

void Kommandos::zeige(const Worte& worte) {
    if (!worte.empty()) {
        const Control& ziel = control(worte[0].text);
        if (!bedienung(ziel.kind()).wert) throw Kommandofehler(ziel.full_name() + u" hat keinen Wert");
        if (!sichtbar(ziel)) return system_.protokoll().zeile(u"verborgen");
        return Control_zeigen(ziel, {});
    }
    for (const Control* control : aktives_Fenster().controls())
        if (sichtbar(*control) && bedienung(control->kind()).wert)
            Control_zeigen(*control, control->full_name() + u" = ");
}

void Kommandos::zelle(const Worte& worte) {
    const Table& table = Tabelle(control(worte[0].text));
    const Tabellenzelle ort = Zelle_aus(table, worte[1], worte[2]);
    const Cell& cell = table.cell(ort.row, ort.col);
    const Text kommentar = table.comment ? table.comment(ort.row, ort.col) : Text();
    system_.protokoll().zeile(zitiert(cell.text) + u" " + HexFarbe(cell.fore) + u" " + HexFarbe(cell.back) +
                              (cell.bold ? u" fett " : u" normal ") + zitiert(kommentar));
}

void Kommandos::fenster(const Worte&) {
    for (const auto& sicht : system_.fenster())
        system_.protokoll().zeile(sicht->form().name() + u" " + zitiert(sicht->form().title()));
}

// --- time and end

void Kommandos::warte(const Worte& worte) {
    // Seconds with at most three decimals behind a comma or a point.
    const auto teile = teilen(Ersetzen(worte[0].text, u",", u"."), u'.');
    const bool lesbar = teile.size() <= 2 && nur_Ziffern(teile[0]) && teile[0].size() <= 7 &&
                        (teile.size() == 1 || (nur_Ziffern(teile[1]) && teile[1].size() <= 3));
    if (!lesbar) throw Kommandofehler(u"Keine Zeit in Sekunden: " + zitiert(worte[0].text));
    double sekunden = static_cast<double>(Val(teile[0]));
    if (teile.size() == 2) sekunden += static_cast<double>(Val(Text(links(teile[1] + u"00", 3)))) / 1000.0;
    system_.warten(sekunden);
}

void Kommandos::ende(const Worte&) {
    system_.Ende_verlangen();
}

} // namespace kalvora
