#include "files/stammdatei.h"

#include <exception>

#include "files/ordner.h"

namespace kalvora {

namespace {

constexpr int BEOBACHTUNGSTAGE = 3;

} // namespace

Stammdatei::Stammdatei(Dateikanal& kanal, const Text& ordner, const Text& name, TextView modul)
    : kanal_(kanal), ausnahmen_(std::uncaught_exceptions()), pfad_(Datei_finden(kanal.fs(), ordner, name)),
      modul_(modul) {
    const auto info = kanal.fs().info(pfad_);
    if (!info && info.nummer() == FEHLER_NICHT_GEFUNDEN)
        Dateifehler(modul_.empty() ? 1 : 3, pfad_, {}, modul_);
    try {
        einlesen();
    } catch (const Dateischaden& leer) {
        if (modul_.empty()) throw;
        schaden(leer.text());
    }
}

// A fault that leaves the judging keeps the name, for whoever reports it.
Stammdatei::~Stammdatei() {
    if (std::uncaught_exceptions() == ausnahmen_) kanal_.Letzte_Datei_merken({});
}

void Stammdatei::einlesen() {
    kanal_.Datei_öffnen(pfad_, Dateimodus::Input);
    offen_ = kanal_.letzte_Zeile_offen();
    zeit_ = kanal_.Stand().time;
    vorgefunden_ = {kanal_.Stand().size, kanal_.Kopfbytes()};
    bool lesbar = true;
    try {
        while (!kanal_.Dateiende())
            zeilen_.push_back(kanal_.LineIn());
    } catch (const Laufzeitfehler&) {
        gelesen_ = static_cast<size_t>(kanal_.Zeilennummer());
        lesbar = false;
    }
    kanal_.Datei_schließen();
    kanal_.Letzte_Datei_merken(pfad_);
    if (!lesbar) fehlerhaft();
    if (offen_ && !zeilen_.empty()) zeilen_.pop_back();
}

void Stammdatei::schaden(const Text& text) const {
    if (modul_.empty()) throw Dateischaden(text, pfad_);
    throw Programmabbruch(modul_,
                          text + u" Installieren Sie das Programm erneut, um dieses Problem zu beheben");
}

void Stammdatei::fehlerhaft() const {
    schaden(u"Zeile " + ziffern(static_cast<long>(gelesen_)) + u" der Datei " + Pfad_kürzen(pfad_, 100) +
            u" ist fehlerhaft.");
}

void Stammdatei::unvollständig() const {
    schaden(u"Die Datei " + Pfad_kürzen(pfad_, 100) + u" ist unvollständig.");
}

Text Stammdatei::Zeile() {
    if (gelesen_ >= zeilen_.size()) unvollständig();
    return zeilen_[gelesen_++];
}

TextView Stammdatei::nächste() const {
    return gelesen_ < zeilen_.size() ? TextView(zeilen_[gelesen_]) : TextView();
}

void Stammdatei::Kopf(TextView anfang, TextView wort) {
    const Text zeile = Zeile();
    if (anfang.ends_with(u']') ? zeile == anfang : zeile.starts_with(anfang)) return;
    Dateifehler(modul_.empty() ? 2 : 4, pfad_, wort, modul_);
}

bool Stand_geändert(const Dateikanal& kanal, const Arbeitsplatz& platz, const Text& pfad, Zeitstempel bekannt,
                    bool beobachten) {
    if (beobachten && platz.Heute - kanal.werk().uhr().day_of(bekannt) > BEOBACHTUNGSTAGE) return false;
    const auto stand = kanal.werk().stand(pfad);
    if (!stand) return !beobachten;
    return stand->time != bekannt;
}

} // namespace kalvora
