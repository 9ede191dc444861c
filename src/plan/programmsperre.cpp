#include "plan/programmsperre.h"

#include <algorithm>

#include "base/cp1252.h"
#include "files/ordner.h"

namespace kalvora {

namespace {

constexpr TextView DATEINAME = u"Lockfile.txt";
constexpr TextView OHNE_DATEI = u"NoFile "; // in front of the months of a repair
constexpr TextView GESPERRT = u"Programmaufruf gesperrt:\n\n";

Text mit_Punkt(const Text& text) {
    return text.ends_with(u'.') ? text : text + u".";
}

Text Betroffenes(const Text& Sperre_Datei) {
    if (links(Sperre_Datei, 6) == u"NoFile")
        return u"Fehlende Datei für Monat: " + Text(mitte(Sperre_Datei, 8));
    return u"Betroffene Datei: " + Pfad_kürzen(Sperre_Datei, 170);
}

// Nothing when the first line names nobody: nobody could lift such a lock.
std::optional<Sperre> auswerten(std::string_view bytes) {
    Text klar = aus_cp1252(bytes);
    std::erase(klar, u'\r');
    std::vector<Text> zeilen = teilen(klar, u'\n');
    zeilen.resize(std::max<std::size_t>(zeilen.size(), 3));
    const auto teile = teilen(zeilen[0], u'|');
    if (teile.size() < 2 || (teile[1].empty() && zeilen[1].empty())) return std::nullopt;
    return Sperre{teile[0], teile[1], teile.size() > 2 ? teile[2] : Text(), zeilen[1], zeilen[2]};
}

Text als_Zeilen(const Sperre& s) {
    Text zeilen = s.Sperrtext + u"|" + s.Benutzer + (s.Name.empty() ? Text() : u"|" + s.Name) + u"\r\n";
    if (s.nach_Reparatur()) zeilen += s.Sperre_Datei + u"\r\n" + s.Sperre_Zeit + u"\r\n";
    return zeilen;
}

// What stands keeps its words; of a second repair the lock names the file behind that of the first.
Sperre vereint(Sperre steht, const Sperre& neue) {
    if (!steht.nach_Reparatur()) {
        steht.Sperre_Datei = neue.Sperre_Datei;
        steht.Sperre_Zeit = neue.Sperre_Zeit;
        return steht;
    }
    const Text was = neue.Sperre_Datei.starts_with(OHNE_DATEI) ? neue.Sperre_Datei.substr(OHNE_DATEI.size())
                                                               : Dateiname_aus_Pfad(neue.Sperre_Datei);
    if (!enthält(steht.Sperre_Datei, was)) steht.Sperre_Datei += u", " + was;
    return steht;
}

Text Wiederherstellungsschritte(bool gesperrt) {
    const Text schritte =
        u"\n\n1) Prüfen Sie, ob alle Daten vollständig sind\n2) Fehlen Daten, dann setzen Sie über 'Datei - "
        u"Datenordner wiederherstellen' auf einen früheren Sicherungszeitpunkt zurück\n3) Nehmen Sie die "
        u"nach "
        u"dem Sicherungszeitpunkt vorgenommenen Eintragungen erneut vor";
    if (!gesperrt) return schritte;
    return schritte +
           u"\n\nDer Programmaufruf durch Mitarbeiter wurde gesperrt. Entfernen Sie abschließend die "
           u"Programmsperre über 'Bearbeiten - Einstellungen - Programmaufruf sperren'. Diese Meldung "
           u"erscheint bis Sie die Programmsperre aufheben.";
}

bool fehlt(int nummer) {
    return nummer == FEHLER_NICHT_GEFUNDEN || nummer == FEHLER_ORDNER;
}

} // namespace

bool Ersatz_steht_aus(FileSystem& fs, const Text& Backuppfad) {
    if (Backuppfad.empty()) return false;
    const Text pfad = Backuppfad + Text(REDOKOPIE);
    const auto info = fs.info(pfad);
    if (!info && !fehlt(info.nummer())) throw Zugriffsfehler(info.nummer(), pfad);
    return info && !info->folder;
}

// Other spellings, made by hand, are looked for at the start alone: each look lists the whole folder.
Text Programmsperre::Pfad() const {
    return platz_.Datenpfad + (name_.empty() ? Text(DATEINAME) : name_);
}

bool Programmsperre::vorhanden() const {
    const auto inhalt = kanal_.werk().lesen(Pfad());
    return inhalt ? auswerten(inhalt->sicht()).has_value() : !fehlt(inhalt.nummer());
}

// While a repair lock stands, nothing is cleaned up by lists that may be the standard ones.
void Programmsperre::merken(std::optional<Sperre> sperre) {
    stand_ = std::move(sperre);
    kanal_.Reparatursperre = nachwirkend_ || (stand_ && stand_->nach_Reparatur());
}

// The file is read past the channel: the check runs before every save. One that cannot be read now is what it
// was when it was read last.
void Programmsperre::Programmsperre_prüfen() {
    if (platz_.Startphase)
        name_ = Dateiname_aus_Pfad(Datei_finden(kanal_.fs(), platz_.Datenpfad, Text(DATEINAME)));
    const Text pfad = Pfad();
    const auto inhalt = kanal_.werk().lesen(pfad);
    if (!inhalt && !fehlt(inhalt.nummer())) return;
    merken(inhalt ? auswerten(inhalt->sicht()) : std::nullopt);
    // The rest of a write test. An empty file may just become a lock.
    if (inhalt && inhalt->größe > 0 && !stand_) Datei_löschen(kanal_.fs(), pfad);
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
    nachwirkend_ = ohne_Administratoren; // nobody has looked at the lists yet: nothing is cleaned up by them
    if (ohne_Administratoren) aufheben();
    if (!ohne_Administratoren && konfig.Benutzerrolle != 2)
        throw Programmabbruch(
            u"modKalvora - Sperre_melden",
            Text(GESPERRT) + mit_Punkt(sperre.Sperrtext) +
                u"\n\nDiese Sperre kann nur von folgenden Administratoren aufgehoben werden: " +
                konfig.Administratorenliste(),
            u"NoLog");
    Application& app = kanal_.app();
    const Text wann =
        sperre.Sperre_Zeit.empty() ? Text() : u" am " + Ersetzen(sperre.Sperre_Zeit, u"|", u" um ") + u" Uhr";
    app.Hinweis(u"Fehlende oder beschädigte Datei" + wann + u" erkannt!\n\n" +
                Betroffenes(sperre.Sperre_Datei) + Wiederherstellungsschritte(!ohne_Administratoren));
    gemeldet_ = !ohne_Administratoren;
}

void Programmsperre::Aufhebung_anbieten(const Konfiguration& konfig, bool beim_Beenden) {
    const auto steht = gemeldet_ && konfig.Benutzerrolle == 2 ? stehende() : std::nullopt;
    if (!steht || !steht->nach_Reparatur()) return;
    const TextView später = beim_Beenden ? u"" : u"\n\nSonst werden Sie beim Beenden noch einmal gefragt.";
    if (kanal_.app().Frage(u"Möchten Sie die Programmsperre jetzt aufheben?" + Text(später)) != Antwort::Ja)
        return;
    nachwirkend_ = true;
    aufheben();
}

std::optional<Sperre> Programmsperre::stehende() const {
    const auto inhalt = kanal_.werk().lesen(Pfad());
    return inhalt ? auswerten(inhalt->sicht()) : std::nullopt;
}

bool Programmsperre::anlegen(const Sperre& sperre) {
    if (sperre.Sperrtext.find_first_of(u"|\r\n") != Text::npos) {
        kanal_.app().Hinweis(u"Unzulässiges Sonderzeichen enthalten");
        return false;
    }
    const Text pfad = Pfad();
    int f = kanal_.werk().neu_anlegen(pfad, zu_cp1252(als_Zeilen(sperre))).nummer();
    if (f == FEHLER_EXISTIERT) {
        const auto steht = stehende();
        if (steht ? !sperre.nach_Reparatur() : vorhanden()) return true;
        const Sperre neu = steht ? vereint(*steht, sperre) : sperre;
        f = kanal_.werk().ersetzen(pfad, zu_cp1252(als_Zeilen(neu))).nummer();
    }
    if (f == 0) return true;
    kanal_.app().Hinweis(u"Fehler: Die Sperrdatei " + Pfad_kürzen(pfad, 100) +
                         u" konnte nicht angelegt werden");
    return false;
}

void Programmsperre::aufheben() {
    const Text pfad = Pfad();
    const auto steht = stehende();
    if (const Text hindernis = steht && steht->nach_Reparatur() && davor_sichern ? davor_sichern() : Text();
        !hindernis.empty())
        return kanal_.app().Hinweis(
            u"Die Programmsperre bleibt bestehen, weil das Backup davor nicht erstellt werden konnte.\n\n"
            u"Ursache: " +
            hindernis);
    Datei_löschen(kanal_.fs(), pfad);
    if (kanal_.fs().info(pfad))
        return kanal_.app().Hinweis(u"Fehler: Die Sperrdatei " + Pfad_kürzen(pfad, 100) +
                                    u" konnte nicht gelöscht werden");
    merken(std::nullopt);
}

} // namespace kalvora
