#include "ui/konsole/konsolen_fenstersystem.h"

#include <algorithm>
#include <utility>

#include "base/fehler.h"
#include "ui/konsole/kommandos.h"

namespace kalvora {

// One running window loop.
struct KonsolenFenstersystem::Schleife {
    Form& form;
    bool beendet = false;
};

namespace {

TextView Antworttext(Antwort antwort) {
    switch (antwort) {
    case Antwort::Ja: return u"Ja";
    case Antwort::Nein: return u"Nein";
    case Antwort::Abbrechen: return u"Abbrechen";
    }
    return u"";
}

Antwort Antwort_aus(TextView wort) {
    if (wort == u"ja") return Antwort::Ja;
    return wort == u"nein" ? Antwort::Nein : Antwort::Abbrechen;
}

} // namespace

KonsolenFenstersystem::KonsolenFenstersystem(Protokoll& protokoll, Zeilenquelle& quelle, Skriptuhr& uhr)
    : protokoll_(protokoll), leser_(quelle), uhr_(uhr) {}

void KonsolenFenstersystem::abschließen() {
    for (const Vorratsantwort& a : antworten_.übrig())
        protokoll_.fehler(a.nummer, u"Die Antwort " + zitiert(a.text) + u" wurde nicht gebraucht");
    if (leser_.vollständig())
        if (const auto zeile = leser_.nächste())
            protokoll_.fehler(zeile->nummer, u"Das Programm war schon beendet");
    protokoll_.zeile(u"ENDE");
}

// --- windows

void KonsolenFenstersystem::open(Form& form) {
    fenster_.push_back(std::make_unique<KonsolenSicht>(form, protokoll_, zeitgeber_, uhr_));
    protokoll_.zeile(u"FENSTER " + form.name() + u" " + zitiert(form.title()));
}

void KonsolenFenstersystem::close(Form& form) {
    const auto hit = std::find_if(fenster_.begin(), fenster_.end(),
                                  [&](const auto& sicht) { return &sicht->form() == &form; });
    if (hit == fenster_.end()) return;
    (*hit)->lösen();
    fenster_.erase(hit);
    protokoll_.zeile(u"GESCHLOSSEN " + form.name());
}

Form* KonsolenFenstersystem::aktives_Fenster() const {
    for (auto sicht = fenster_.rbegin(); sicht != fenster_.rend(); ++sicht)
        if ((*sicht)->form().modal()) return &(*sicht)->form();
    if (wartendes_) return wartendes_;
    if (!schleifen_.empty()) return &schleifen_.front()->form;
    return fenster_.empty() ? nullptr : &fenster_.back()->form();
}

bool KonsolenFenstersystem::offen(const Form& form) const {
    return std::any_of(fenster_.begin(), fenster_.end(),
                       [&](const auto& sicht) { return &sicht->form() == &form; });
}

bool KonsolenFenstersystem::beendet(const Form& form) const {
    const bool Schleife_beendet = std::any_of(schleifen_.begin(), schleifen_.end(), [&](const Schleife* s) {
        return &s->form == &form && s->beendet;
    });
    return Schleife_beendet || !offen(form);
}

KonsolenSicht& KonsolenFenstersystem::sicht(const Form& form) {
    for (const auto& sicht : fenster_)
        if (&sicht->form() == &form) return *sicht;
    throw Laufzeitfehler(364, u"Das Fenster " + form.name() + u" ist nicht offen");
}

bool KonsolenFenstersystem::schließen(Form& form) {
    if (!form.user_close()) return beendet(form);
    if (beendet(form)) return true;
    for (Schleife* s : schleifen_)
        if (&s->form == &form) return s->beendet = true;
    form.app().close(form);
    return true;
}

// --- loops

void KonsolenFenstersystem::run(Form& main) {
    hauptlauf_ = true;
    vergehen(std::exchange(wartezeit_, 0)); // what an earlier wait did not need
    schleife(main);
}

void KonsolenFenstersystem::schleife(Form& form) {
    Schleife diese{form};
    schleifen_.push_back(&diese);
    ++schleifenzahl_;
    while (!diese.beendet && offen(form)) {
        if (ende_ || Eingabe_zu_Ende_)
            Ende_ausführen(diese);
        else if (!nächstes_Kommando())
            Ende_der_Eingabe();
    }
    schleifen_.pop_back();
}

void KonsolenFenstersystem::quit() {
    for (Schleife* s : schleifen_)
        s->beendet = true;
}

void KonsolenFenstersystem::Ende_der_Eingabe() {
    Eingabe_zu_Ende_ = true;
    nummer_ = leser_.Zeilennummer();
}

// A hand could close the main window only behind every modal one. Those still open are a mistake; they are
// closed as by their frame, and when they refuse, without asking.
void KonsolenFenstersystem::Ende_ausführen(Schleife& schleife) {
    Form& form = schleife.form;
    if (form.modal()) {
        protokoll_.fehler(nummer_, u"Das Fenster " + form.name() + u" ist am Ende noch offen");
        schließen(form);
        schleife.beendet = true;
        return;
    }
    ende_ = false;
    if (schließen(form)) return;
    protokoll_.fehler(nummer_, u"Das Fenster " + form.name() + u" lässt sich nicht schließen");
    schleife.beendet = Eingabe_zu_Ende_;
}

bool KonsolenFenstersystem::nächstes_Kommando() {
    const auto zeile = leser_.nächste();
    if (zeile) ausführen(*zeile);
    return zeile.has_value();
}

void KonsolenFenstersystem::ausführen(const Kommandozeile& zeile) {
    nummer_ = zeile.nummer;
    if (uhr_.echt()) vergehen(0); // timers that came due while nobody typed
    try {
        Kommandos(*this).ausführen(zeile);
    } catch (const Fehler& fehler) {
        protokoll_.fehler(zeile.nummer, fehler.text());
    }
    if (nach_Kommando) nach_Kommando();
}

// --- messages and questions

void KonsolenFenstersystem::message(const Text& text) {
    protokoll_.zeile(u"HINWEIS " + zitiert(text));
}

// A question at the start of the program comes before any loop reads the script: answers that stand at its
// head are meant for it.
void KonsolenFenstersystem::Startantworten_lesen() {
    if (hauptlauf_ || !schleifen_.empty()) return;
    while (!antworten_.hat(Dialogart::Frage)) {
        auto zeile = leser_.nächste();
        if (!zeile) return;
        if (!Kommandos::reiht_Antwort_ein(*zeile)) return leser_.zurück(std::move(*zeile));
        ausführen(*zeile);
    }
}

Antwort KonsolenFenstersystem::question(const Text& text, const Frageart& art) {
    Startantworten_lesen();
    Antwort antwort = art.vorgabe;
    if (const auto vorrat = antworten_.entnehmen(Dialogart::Frage)) {
        const Antwort gewünscht = Antwort_aus(vorrat->text);
        if (gewünscht == Antwort::Abbrechen && !art.mit_Abbrechen)
            protokoll_.fehler(vorrat->nummer, u"Die Frage lässt sich nur mit Ja oder Nein beantworten");
        else
            antwort = gewünscht;
    }
    protokoll_.zeile(u"FRAGE " + zitiert(text) + u" -> " + Text(Antworttext(antwort)));
    return antwort;
}

std::optional<Text> KonsolenFenstersystem::input(const Text& prompt, const Text&, const Text&) {
    const auto vorrat = antworten_.entnehmen(Dialogart::Eingabe);
    protokoll_.zeile(u"EINGABE " + zitiert(prompt) + u" -> " +
                     (vorrat ? zitiert(vorrat->text) : Text(u"abgebrochen")));
    if (!vorrat) return std::nullopt;
    return vorrat->text;
}

// --- time

void KonsolenFenstersystem::vergehen(double seconds) {
    const double ziel = uhr_.steady() + std::max(0.0, seconds);
    for (auto fällig = zeitgeber_.nächster(ziel); fällig.timer; fällig = zeitgeber_.nächster(ziel)) {
        uhr_.warten_bis(fällig.wann);
        // In time, ticks keep their rhythm; one that came late starts a new one.
        const bool pünktlich = uhr_.steady() - fällig.wann < 1e-6;
        zeitgeber_.neu_stellen(*fällig.timer, pünktlich ? fällig.wann : uhr_.steady());
        fällig.timer->tick();
    }
    uhr_.warten_bis(ziel);
}

// Each step of the wait begins with the commands meant for it, unless `warte` granted the time.
void KonsolenFenstersystem::wait_in(Form& form, double seconds) {
    Form* const außen = std::exchange(wartendes_, &form);
    if (wartezeit_ <= 1e-6) Wartekommandos_lesen(form);
    wartendes_ = außen;
    if (form.app().failed() || !offen(form)) return;
    vergehen(seconds);
    wartezeit_ = std::max(0.0, wartezeit_ - seconds);
}

// What stands at the head of the input and can be meant for the waiting window. Behind a click the program
// has its turn; any other command is for later, and the wait goes on without it.
void KonsolenFenstersystem::Wartekommandos_lesen(const Form& form) {
    while (!Eingabe_zu_Ende_ && leser_.bereit()) {
        auto zeile = leser_.nächste();
        if (!zeile) return Ende_der_Eingabe();
        const auto art = Kommandos::im_Warten(*zeile, form);
        if (art == Kommandos::Im_Warten::nicht) return leser_.zurück(std::move(*zeile));
        ausführen(*zeile);
        if (art == Kommandos::Im_Warten::letztes) return;
    }
}

void KonsolenFenstersystem::warten(double seconds) {
    if (wartendes_)
        wartezeit_ += seconds;
    else
        vergehen(seconds);
}

void KonsolenFenstersystem::status(const Text& text) {
    protokoll_.zeile(u"STATUS " + zitiert(text));
}

} // namespace kalvora
