#include "safety/wiederherstellung.h"

#include <algorithm>
#include <map>

#include "base/cp1252.h"
#include "files/monatsdatei.h"
#include "files/ordner.h"
#include "files/versionsname.h"
#include "files/zweite_lesung.h"
#include "safety/monatsrettung.h"

namespace kalvora {

Text Sicherungsschlüssel(const Dateikanal& kanal, const Arbeitsplatz& platz, const Text& name,
                         bool aus_Namen) {
    const Text im_Namen = Text(links(name, 6)) + Text(mitte(name, 8, 6));
    if (aus_Namen) return im_Namen;
    const auto info = kanal.fs().info(platz.Backuppfad + name);
    if (!info) return info.nummer() == FEHLER_NICHT_GEFUNDEN ? Text() : im_Namen;
    const Zeitpunkt z = kanal.werk().uhr().time_of(info->time);
    return FormatDatumDS(Datum_aus(z.tag.jahr, z.tag.monat, z.tag.tag)) + ziffern(z.stunde, 2) +
           ziffern(z.minute, 2) + ziffern(z.sekunde, 2);
}

Text Sicherungszeit(const Arbeitsplatz& platz, TextView s) {
    return platz.datum().FormatDatumSA(links(s, 6)) + u", " + Text(mitte(s, 7, 2)) + u":" +
           Text(mitte(s, 9, 2)) + u":" + Text(mitte(s, 11, 2)) + u" Uhr";
}

const Containermitglied* Wiederherstellung::Gelesen::finden(TextView name) const {
    const auto treffer = std::find_if(mitglieder.begin(), mitglieder.end(),
                                      [&](const auto& m) { return gleich_ohne_Fall(m.name, name); });
    return treffer == mitglieder.end() ? nullptr : &*treffer;
}

// `vollständig`: none had to be left out because of a fault.
std::vector<Text> Wiederherstellung::Sicherungen(bool& vollständig) const {
    vollständig = true;
    std::vector<std::pair<Zeitstempel, Text>> gefunden;
    for (const Text& name : Dateien(kanal_.fs(), platz_.Backuppfad, u"*.dat", true)) {
        const char16_t art = Backupname_zulässig(name) ? klein(name[14]) : u'f';
        if (art == u'f' || art == u'i') continue;
        const auto info = kanal_.fs().info(platz_.Backuppfad + name);
        if (info && !info->folder) gefunden.emplace_back(info->time, name);
        vollständig = vollständig && (info || info.nummer() == FEHLER_NICHT_GEFUNDEN);
    }
    std::sort(gefunden.rbegin(), gefunden.rend());
    std::vector<Text> namen;
    namen.reserve(gefunden.size());
    for (auto& [zeit, name] : gefunden)
        namen.push_back(std::move(name));
    return namen;
}

// Which one is the newest is not to be settled by a fault of a moment.
std::vector<Text> Wiederherstellung::Sicherungen() const {
    bool vollständig = true;
    return zweite_Lesung(
        kanal_.app(), [&] { return Sicherungen(vollständig); }, [&](const auto&) { return vollständig; });
}

std::optional<Wiederherstellung::Gelesen> Wiederherstellung::lesen(const Text& pfad) const {
    auto inhalt = kanal_.werk().lesen(pfad);
    if (!inhalt) throw Zugriffsfehler(inhalt.nummer(), pfad);
    auto mitglieder = Container_lesen(inhalt->sicht());
    if (!mitglieder) return std::nullopt;
    return Gelesen{std::move(*inhalt), std::move(*mitglieder)}; // the bytes stay where they are
}

void Wiederherstellung::kein_Container_melden() const {
    kanal_.app().Hinweis(u"Bei der Backupdatei handelt es sich um keine Sicherungsdatei des Kalvora");
}

// Nothing is written where a symbolic link in a member's place leads: to another file, nowhere, or in a
// circle.
bool Wiederherstellung::ist_Verknüpfung(const Text& ordner, const Text& name) const {
    const auto link = kanal_.fs().is_link(ordner + name);
    return link && *link;
}

// With `gelesen` only while that still stands there, 58 otherwise.
void Wiederherstellung::schreiben(const Text& ordner, const Text& name, std::string_view bytes,
                                  const std::optional<Dateiwerk::Vorgefunden>& gelesen) {
    const Text ziel = ordner + name, andere = Datei_finden(kanal_.fs(), ordner, name);
    if (ist_Verknüpfung(ordner, name))
        if (const int f = kanal_.fs().remove(ziel); f != 0 && f != FEHLER_NICHT_GEFUNDEN)
            throw Zugriffsfehler(f, ziel);
    const auto ergebnis = kanal_.werk().ersetzen(ziel, bytes, gelesen ? &*gelesen : nullptr);
    if (!ergebnis) throw Zugriffsfehler(ergebnis.nummer(), ziel);
    Schreibweise_entfernen(kanal_.fs(), andere, ziel);
    kanal_.Daten_geändert = true;
}

bool Wiederherstellung::Restore_aus_Backupdatei(const Text& datei, const Text& filter) {
    return als_Prozedur(u"modKalvora - Restore_aus_Backupdatei", [&] {
        Text pfad = datei;
        if (pfad.empty()) {
            const auto alle = Sicherungen();
            if (alle.empty()) return false;
            pfad = platz_.Backuppfad + alle.front();
        }
        const auto container = lesen(pfad);
        if (!container) {
            kein_Container_melden();
            return false;
        }
        const bool ohne_Logs = filter == u"NoLogs";
        for (const Containermitglied& m : container->mitglieder)
            if ((filter.empty() || ohne_Logs || m.name == filter) && !(ohne_Logs && m.Log())) schreiben(m);
        return true;
    });
}

// ------------------------------------------------------------------ one file out of all backups

// A backup that cannot be read twice is passed over, so that no fault of a moment makes an older state or the
// standard win; while the folder is not there nothing may be decided.
void Wiederherstellung::Sicherungen_durchgehen(const Blick& fertig) const {
    for (const Text& name : Sicherungen()) {
        std::optional<Gelesen> container;
        try {
            container = zweite_Lesung(
                kanal_.app(), [&] { return lesen(platz_.Backuppfad + name); },
                [](const auto& gelesen) { return gelesen.has_value(); });
        } catch (const Laufzeitfehler& fehler) {
            if (fehler.nummer == FEHLER_NETZ || fehler.nummer == FEHLER_ZU_VIELE) throw;
        }
        if (container && fertig(*container, name)) return;
    }
}

bool Wiederherstellung::passt(const Text& name, std::string_view bytes) const {
    if (!gleich_ohne_Fall(name, u"Mitarbeiterdaten.dat")) return true;
    return Startjahr_passt(kanal_.fs(), platz_.Datenpfad, probe_.Startjahr(bytes));
}

// Of a month whose every backup has faulty lines the newest one is better than none.
bool Wiederherstellung::Datei_zurückholen(const Text& name,
                                          const std::optional<Dateiwerk::Vorgefunden>& gelesen) {
    return als_Prozedur(u"modKalvora - Restore_aus_Backupdatei", [&] {
        Version gefunden;
        quelle_.clear();
        Sicherungen_durchgehen([&](const Gelesen& container, const Text& Backupname) {
            const Containermitglied* m = container.finden(name);
            return m && passt(name, m->bytes) &&
                   Version_prüfen(name, m->bytes, gefunden, Backupname) == Dateiprobe::Urteil::heil;
        });
        quelle_ = gefunden.quelle;
        if (gefunden.stamm.empty()) return false;
        const bool Log = !endet_ohne_Fall(name, u".dat");
        schreiben(Log ? platz_.Logpfad : platz_.Datenpfad, name, gefunden.bytes, gelesen);
        return true;
    });
}

// Takes the version when it is sound, or readable and the first.
Dateiprobe::Urteil Wiederherstellung::Version_prüfen(const Text& name, std::string_view bytes, Version& beste,
                                                     const Text& Backupname) const {
    using Urteil = Dateiprobe::Urteil;
    const Urteil urteil = probe_.prüfen(name, bytes).urteil;
    if (urteil == Urteil::heil || (urteil != Urteil::beschädigt && beste.stamm.empty()))
        beste = {Text(links(name, STAMMLÄNGE)), std::string(bytes), urteil, Backupname};
    return urteil;
}

// From the newest to the oldest.
std::vector<const Containermitglied*> Wiederherstellung::Versionen(const Gelesen& container,
                                                                   const Text& yymm) const {
    std::vector<const Containermitglied*> versionen;
    for (const Containermitglied& m : container.mitglieder)
        if (ist_Versionsname(m.name) && links(m.name, 4) == yymm) versionen.push_back(&m);
    std::sort(versionen.begin(), versionen.end(),
              [](const auto* a, const auto* b) { return a->name > b->name; });
    return versionen;
}

// The newest sound one, and what can be read in newer ones with faulty lines.
Wiederherstellung::Version Wiederherstellung::aus_Sicherungen(const Text& yymm) const {
    using Urteil = Dateiprobe::Urteil;
    Version beste;
    std::vector<std::string> lückenhafte; // from the newest to the oldest
    Sicherungen_durchgehen([&](const Gelesen& container, const Text& Backupname) {
        for (const Containermitglied* m : Versionen(container, yymm)) {
            const Urteil urteil = Version_prüfen(m->name, m->bytes, beste, Backupname);
            if (urteil == Urteil::heil) return true;
            if (urteil == Urteil::fehlerhafte_Zeilen) lückenhafte.emplace_back(m->bytes);
        }
        return false;
    });
    if (beste.urteil != Urteil::heil) return beste;
    for (auto neuere = lückenhafte.rbegin(); neuere != lückenhafte.rend(); ++neuere)
        beste.bytes = Monat_ergänzt(beste.bytes, *neuere, yymm);
    return beste;
}

// One that was begun after the backup's, or has gone on since, and is no worse.
void Wiederherstellung::aus_Ordner(const Text& yymm, const Text& außer, Version& beste) const {
    for (const Text& name : Dateien(kanal_.fs(), platz_.Datenpfad, yymm + u" *Data.dat", true)) {
        if (!ist_Versionsname(name) || gleich_ohne_Fall(name, außer)) continue;
        if (links(name, STAMMLÄNGE) < TextView(beste.stamm)) continue;
        const auto inhalt = kanal_.werk().lesen(platz_.Datenpfad + name);
        if (!inhalt) continue;
        Version diese;
        Version_prüfen(name, inhalt->sicht(), diese, {});
        if (!diese.stamm.empty() && (beste.stamm.empty() || diese.urteil <= beste.urteil))
            beste = std::move(diese);
    }
}

Text Wiederherstellung::Quelle() const {
    return quelle_.empty() ? Text()
                           : Sicherungszeit(platz_, Sicherungsschlüssel(kanal_, platz_, quelle_, false));
}

namespace {

// Every rewrite of a month gives its lines other keys; otherwise the file only grows.
bool dieselbe_Fassung(std::string_view a, std::string_view b) {
    const std::size_t n = std::min({a.size(), b.size(), KOPFBYTES});
    return n > 0 && a.substr(0, n) == b.substr(0, n);
}

// A look that is cheap: the last bytes stand where they stood, so that nothing before them has gone.
bool Ende_steht(FileSystem& fs, const Text& pfad, std::string_view gesichert) {
    std::string da(std::min(gesichert.size(), KOPFBYTES), '\0');
    const auto h = fs.open(pfad, OpenMode::Read);
    if (!h) return false;
    const auto n = fs.read_at(*h, gesichert.size() - da.size(), da.data(), da.size());
    (void)fs.close(*h); // nothing was written: its result says nothing
    return n && *n == da.size() && gesichert.ends_with(da);
}

} // namespace

void Wiederherstellung::Gelesen::Monate_neu_beginnen(Schlüsselquelle& schlüssel) {
    for (const Containermitglied& m : mitglieder)
        if (ist_Versionsname(m.name))
            neu_beginnen(inhalt.bytes.get() + (m.bytes.data() - inhalt.bytes.get()), m.bytes.size(),
                         schlüssel);
}

// Rows of the same version come from the newest backup that has more of them. A torn version of today is in
// no backup yet; the newest earlier one tells at least who is missing.
std::optional<std::string> Wiederherstellung::Monat_vervollständigt(const Text& name,
                                                                    std::string_view bytes) const {
    std::optional<std::string> aus, mit_Personen;
    bool bekannt = bytes.ends_with('\n');
    Sicherungen_durchgehen([&](const Gelesen& container, const Text&) {
        for (const Containermitglied* m : Versionen(container, Text(links(name, 4)))) {
            if (links(m->name, STAMMLÄNGE) > links(name, STAMMLÄNGE)) continue;
            const bool dieselbe = dieselbe_Fassung(m->bytes, bytes);
            if (dieselbe && Sätze_fehlen(m->bytes, bytes))
                aus = Monat_ergänzt(m->bytes, bytes, Text(links(name, 4)));
            if (!dieselbe && !bekannt) mit_Personen = Personen_ergänzt(m->bytes, bytes);
            bekannt = true;
            break;
        }
        return aus.has_value();
    });
    return aus ? aus : mit_Personen;
}

// Looked at twice: one look may be a moment's. A month that has grown and has a faulty line was not cut: that
// line is what is missing, and it is seen to when the month is shown.
bool Wiederherstellung::fehlen_Sätze(const Text& pfad, std::string_view gesichert) const {
    const auto fehlen = [&] {
        const auto inhalt = kanal_.werk().lesen(pfad);
        if (!inhalt || !dieselbe_Fassung(gesichert, inhalt->sicht()) ||
            !Sätze_fehlen(gesichert, inhalt->sicht()))
            return false;
        return inhalt->größe < gesichert.size() ||
               probe_.Fehler(Dateiname_aus_Pfad(pfad), inhalt->sicht()).empty();
    };
    if (!fehlen()) return false;
    kanal_.app().Pause(KURZ_WARTEN);
    return fehlen();
}

std::optional<Wiederherstellung::Gekürzt> Wiederherstellung::gekürzt(const Gelesen& container,
                                                                     const Text& Backupname) const {
    std::map<Text, Text> in_Kraft; // the greatest name of each month
    for (const Text& name : Dateien(kanal_.fs(), platz_.Datenpfad, u"*Data.dat", true))
        if (ist_Versionsname(name)) in_Kraft[Text(links(name, 4))] = name; // they come sorted
    for (const Containermitglied& m : container.mitglieder) {
        const auto treffer = in_Kraft.find(Text(links(m.name, 4)));
        if (treffer == in_Kraft.end() || !gleich_ohne_Fall(treffer->second, m.name)) continue;
        const Text pfad = platz_.Datenpfad + m.name;
        if (Ende_steht(kanal_.fs(), pfad, m.bytes) || !fehlen_Sätze(pfad, m.bytes)) continue;
        return Gekürzt{pfad, Sicherungszeit(platz_, Sicherungsschlüssel(kanal_, platz_, Backupname, false))};
    }
    return std::nullopt;
}

std::optional<Wiederherstellung::Gekürzt> Wiederherstellung::gekürzter_Monat() const {
    std::optional<Gekürzt> monat;
    Sicherungen_durchgehen([&](const Gelesen& container, const Text& Backupname) {
        monat = gekürzt(container, Backupname);
        return true;
    });
    return monat;
}

bool Wiederherstellung::Monat_zurückholen(const Text& yymm, const Text& zielname, std::string_view beschädigt,
                                          const Text& Reservezeile) {
    return als_Prozedur(u"modKalvora - Restore_aus_Backupdatei", [&] {
        Version basis = aus_Sicherungen(yymm);
        aus_Ordner(yymm, zielname, basis);
        quelle_ = basis.quelle;
        const bool gefunden = !basis.stamm.empty();
        if (!gefunden)
            for (const Text& zeile : {u"[" + yymm + u"]", Reservezeile, Text(KEINE_AUSNAHMEN)})
                Zeile_verschlüsseln(basis.bytes, zu_cp1252(zeile), kanal_.schlüssel().nächster());
        const std::string neu = Monat_einsetzen(basis.bytes, yymm, zielname, beschädigt);
        return gefunden || neu.size() > basis.bytes.size();
    });
}

// The month as it is then. Rows are still appended to a damaged file: what came while the backups were read
// goes along.
std::string Wiederherstellung::Monat_einsetzen(std::string_view basis, const Text& yymm, const Text& zielname,
                                               std::string_view beschädigt) {
    constexpr int RUNDEN = 5;
    for (int runde = 1;; ++runde) {
        const auto jetzt = kanal_.werk().lesen(platz_.Datenpfad + zielname);
        std::string neu = Monat_ergänzt(basis, jetzt ? jetzt->sicht() : beschädigt, yymm);
        neu_beginnen(neu.data(), neu.size(), kanal_.schlüssel());
        try {
            if (!jetzt)
                schreiben(platz_.Datenpfad, zielname, neu);
            else
                schreiben(platz_.Datenpfad, zielname, neu, gesehen(*jetzt).als_Vorgefunden());
            return neu;
        } catch (const Laufzeitfehler& fehler) {
            if (fehler.nummer != FEHLER_EXISTIERT || runde == RUNDEN) throw;
        }
    }
}

} // namespace kalvora
