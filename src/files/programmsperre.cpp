#include "files/programmsperre.h"

#include "files/ordner.h"

namespace kalvora {

namespace {

constexpr TextView GESPERRT = u"Programmaufruf gesperrt:\n\n";

Text mit_Punkt(const Text& text) {
    return text.ends_with(u'.') ? text : text + u".";
}

Text Betroffenes(const Text& Sperre_Datei) {
    if (links(Sperre_Datei, 6) == u"NoFile")
        return u"Fehlende Datei für Monat: " + Text(mitte(Sperre_Datei, 8));
    return u"Betroffene Datei: " + Pfad_kürzen(Sperre_Datei, 170);
}

} // namespace

Text Programmsperre::Pfad() const {
    return Datei_finden(kanal_.fs(), platz_.Datenpfad, u"Lockfile.txt");
}

bool Programmsperre::vorhanden() const {
    return Datei_vorhanden(kanal_.fs(), Pfad());
}

std::optional<Sperre> Programmsperre::lesen() {
    const Text pfad = Pfad();
    if (!Datei_vorhanden(kanal_.fs(), pfad)) return std::nullopt;
    const auto inhalt = kanal_.werk().lesen(pfad);
    if (!inhalt || inhalt->größe == 0) return std::nullopt; // somebody is just writing it
    kanal_.Datei_öffnen(pfad, Dateimodus::Input, Fehlerweg::IgnoreErrors);
    std::vector<Text> zeilen;
    while (zeilen.size() < 3 && !kanal_.Dateiende())
        zeilen.push_back(kanal_.Rohzeile());
    kanal_.Datei_schließen();
    if (zeilen.empty()) return std::nullopt;
    zeilen.resize(3);
    const auto teile = teilen(zeilen[0], u'|');
    if (teile.size() < 2) {
        Datei_löschen(kanal_.fs(), pfad);
        return std::nullopt;
    }
    return Sperre{teile[0], teile[1], teile.size() > 2 ? teile[2] : Text(), zeilen[1], zeilen[2]};
}

void Programmsperre::Programmsperre_prüfen() {
    stand_ = lesen();
    if (!stand_ || stand_->nach_Reparatur()) return;
    if (!gleich_ohne_Fall(stand_->Benutzer, platz_.Benutzername))
        throw Programmabbruch(u"modKalvora - Programmsperre_prüfen",
                              Text(GESPERRT) + mit_Punkt(stand_->Sperrtext) +
                                  u"\n\nDiese Sperre kann nur von Benutzer '" + stand_->Benutzer + u"'" +
                                  (stand_->Name.empty() ? Text() : u" (" + stand_->Name + u")") +
                                  u" aufgehoben werden");
    if (platz_.Startphase)
        kanal_.app().Hinweis(u"Achtung: Sie haben den Programmaufruf für andere Benutzer gesperrt. Diese "
                             u"erhalten beim Programmaufruf den Hinweis:\n\n" +
                             stand_->Sperrtext);
}

void Programmsperre::Sperre_melden(const Konfiguration& konfig) {
    if (!stand_ || !stand_->nach_Reparatur()) return;
    const Sperre sperre = *stand_;
    const bool ohne_Administratoren = konfig.Administratoren(1) == u"NoAdmins";
    if (ohne_Administratoren) aufheben();
    if (!ohne_Administratoren && konfig.Benutzerrolle != 2)
        throw Programmabbruch(
            u"modKalvora - Sperre_melden",
            Text(GESPERRT) + mit_Punkt(sperre.Sperrtext) +
                u"\n\nDiese Sperre kann nur von folgenden Administratoren aufgehoben werden: " +
                konfig.Administratorenliste(),
            u"NoLog");
    kanal_.app().Hinweis(
        u"Fehlende oder beschädigte Datei am " + Ersetzen(sperre.Sperre_Zeit, u"|", u" um ") +
        u" Uhr erkannt!\n\n" + Betroffenes(sperre.Sperre_Datei) +
        u"\n\n1) Prüfen Sie, ob alle Daten vollständig sind.\n2) Wenn Daten fehlen, setzen Sie über 'Datei - "
        u"Datenordner wiederherstellen' auf einen früheren Sicherungszeitpunkt zurück.\n3) Nehmen Sie die "
        u"nach "
        u"dem Sicherungszeitpunkt vorgenommenen Eintragungen erneut vor\n\nDer Programmaufruf durch "
        u"Mitarbeiter wurde gesperrt. Entfernen Sie abschließend die Programmsperre über 'Bearbeiten - "
        u"Einstellungen - Programmaufruf sperren'. Diese Meldung erscheint bis Sie die Programmsperre "
        u"aufheben.");
}

bool Programmsperre::anlegen(const Sperre& sperre) {
    const Text pfad = Pfad();
    bool ok = kanal_.Datei_öffnen(pfad, Dateimodus::Output, Fehlerweg::IgnoreErrors);
    if (ok) {
        kanal_.Rohzeile_schreiben(sperre.Sperrtext + u"|" + sperre.Benutzer +
                                  (sperre.Name.empty() ? Text() : u"|" + sperre.Name));
        if (sperre.nach_Reparatur()) {
            kanal_.Rohzeile_schreiben(sperre.Sperre_Datei);
            kanal_.Rohzeile_schreiben(sperre.Sperre_Zeit);
        }
        ok = kanal_.Datei_schließen() == 0;
    }
    if (!ok)
        kanal_.app().Hinweis(u"Fehler: Die Sperrdatei " + Pfad_kürzen(pfad, 100) +
                             u" konnte nicht angelegt werden");
    return ok;
}

void Programmsperre::aufheben() {
    Datei_löschen(kanal_.fs(), Pfad());
    stand_.reset();
}

} // namespace kalvora
