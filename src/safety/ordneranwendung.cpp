#include "safety/ordneranwendung.h"

#include <algorithm>

#include "files/ordner.h"

namespace kalvora {

namespace {

constexpr int RUNDEN = 4;
constexpr int BEISEITE_VERSUCHE = 20; // names tried

// A path's entry; where the folder does not tell cases apart, that of another spelling.
Bestand::const_iterator finden(const Bestand& bestand, const Text& pfad) {
    const auto genau = bestand.find(pfad);
    if (genau != bestand.end()) return genau;
    return std::find_if(bestand.begin(), bestand.end(),
                        [&](const auto& b) { return gleich_ohne_Fall(b.first, pfad); });
}

// Of two spellings of a name a backup holds only one: the other file is kept aside.
Fehlercode andere_Schreibweise_weg(FileSystem& fs, const Text& pfad) {
    return fs.rename(pfad, ParentDir(pfad) + u"." + Dateiname_aus_Pfad(pfad) + u".ersetzt");
}

} // namespace

// `größe` of the file as it was seen just now. While the work goes on nobody may save, so that a member has
// been written when it stands exactly; a while later rows may have been appended to it.
bool Ordneranwendung::steht(const Containermitglied& m, const Text& pfad, std::uint64_t größe,
                            Vergleich wie) const {
    if (wie == Vergleich::genau ? größe != m.bytes.size() : größe < m.bytes.size()) return false;
    const auto inhalt = kanal_.werk().lesen(pfad);
    if (!inhalt) return false;
    return wie == Vergleich::genau ? inhalt->sicht() == m.bytes : inhalt->sicht().starts_with(m.bytes);
}

// Found or written in this run, and nobody has come since.
bool Ordneranwendung::unberührt(const Text& pfad, const FileInfo& jetzt) const {
    const auto bekannt = stand_.find(pfad);
    return bekannt != stand_.end() && bekannt->second.size == jetzt.size &&
           bekannt->second.time == jetzt.time;
}

bool Ordneranwendung::steht_alles(const Gelesen& container) const {
    return std::all_of(container.mitglieder.begin(), container.mitglieder.end(), [&](const auto& m) {
        const Text pfad = wiederherstellung_.Zielordner(m) + m.name;
        const auto info = kanal_.fs().info(pfad);
        return gleich_ohne_Fall(m.name, u"Konfigdaten.dat") ||
               (info && steht(m, pfad, info->size, Vergleich::noch));
    });
}

// The new state first, then what it does not hold goes, then a look at everything: a workstation whose save
// was on its way may have cleared away a restored month in favour of a version that has gone now.
Ordneranwendung::Ausgang Ordneranwendung::durchführen(const Gelesen& container, const Bestand& bestand) {
    geblieben_.clear();
    stand_.clear();
    if (!Ordner_vorhanden(kanal_.fs(), platz_.Logpfad)) (void)kanal_.fs().make_folder(platz_.Logpfad);
    bool geschrieben = false;
    Ausgang a = alle_schreiben(container, bestand, Vergleich::genau, geschrieben);
    if (a == Ausgang::fertig) a = Übriges_entfernen(container, bestand);
    for (int runde = 1; a == Ausgang::fertig && runde <= RUNDEN; ++runde) {
        geschrieben = false;
        a = alle_schreiben(container, bestand, Vergleich::noch, geschrieben);
        if (!geschrieben) return a;
    }
    return a == Ausgang::fertig ? Ausgang::verändert : a; // somebody keeps clearing away
}

Ordneranwendung::Ausgang Ordneranwendung::alle_schreiben(const Gelesen& container, const Bestand& bestand,
                                                         Vergleich wie, bool& geschrieben) {
    const int alle = static_cast<int>(container.mitglieder.size());
    int fertig = 0;
    for (const Containermitglied& m : container.mitglieder) {
        const Ausgang a = schreiben(m, bestand, wie, geschrieben);
        if (a != Ausgang::fertig) return a;
        if (wie == Vergleich::genau && Fortschritt) Fortschritt(++fertig, alle);
    }
    return Ausgang::fertig;
}

Ordneranwendung::Ausgang Ordneranwendung::schreiben(const Containermitglied& m, const Bestand& bestand,
                                                    Vergleich wie, bool& geschrieben) {
    const Text ordner = wiederherstellung_.Zielordner(m), ziel = ordner + m.name;
    const bool Verknüpfung = wiederherstellung_.ist_Verknüpfung(ordner, m.name);
    const auto da =
        Verknüpfung ? Ergebnis<Gesehen>::fehler(FEHLER_NICHT_GEFUNDEN) : ansehen(kanal_.fs(), ziel);
    if (!da && da.nummer() != FEHLER_NICHT_GEFUNDEN) throw Zugriffsfehler(da.nummer(), ziel);
    if (da && (unberührt(ziel, da->info) || steht(m, ziel, da->info.size, wie))) {
        stand_[ziel] = da->info;
        return Ausgang::fertig;
    }
    if (!Auftrag_gilt()) return Ausgang::abgelöst;
    if (Verknüpfung) Verknüpfung_entfernen(ordner, m.name);
    const auto bekannt = finden(bestand, ziel);
    if (da && (bekannt == bestand.end() || !dieselbe(*da, bekannt->second))) {
        const bool zweite = bekannt != bestand.end() &&
                            beide_gelistet(kanal_.fs(), ordner, m.name, Dateiname_aus_Pfad(bekannt->first));
        if (zweite) (void)andere_Schreibweise_weg(kanal_.fs(), ziel); // the next round makes the file
        return Ausgang::verändert;
    }
    geschrieben = true;
    kanal_.Daten_geändert = true;
    const auto vorgefunden = da ? da->als_Vorgefunden() : Dateiwerk::Vorgefunden{};
    const auto neu =
        da ? kanal_.werk().ersetzen(ziel, m.bytes, &vorgefunden) : kanal_.werk().neu_anlegen(ziel, m.bytes);
    if (neu) {
        stand_[ziel] = *neu;
        return Ausgang::fertig;
    }
    if (neu.nummer() == FEHLER_EXISTIERT || (da && neu.nummer() == FEHLER_NICHT_GEFUNDEN))
        return Ausgang::verändert;
    throw Zugriffsfehler(neu.nummer(), ziel);
}

// What it leads to is nobody's business here. Through one that stays would be written elsewhere.
void Ordneranwendung::Verknüpfung_entfernen(const Text& ordner, const Text& name) const {
    const Fehlercode f = kanal_.fs().remove(ordner + name);
    if (wiederherstellung_.ist_Verknüpfung(ordner, name))
        throw Zugriffsfehler(f ? f : int{FEHLER_VERWEIGERT}, ordner + name);
}

// Where a folder does not tell two spellings apart the other one is the restored file itself.
Ordneranwendung::Ausgang Ordneranwendung::Übriges_entfernen(const Gelesen& container,
                                                            const Bestand& bestand) {
    FileSystem& fs = kanal_.fs();
    const std::vector<Text> alle = Sicherungsgut(fs, platz_);
    for (const Text& pfad : alle) {
        const Text name = Dateiname_aus_Pfad(pfad), ordner = ParentDir(pfad);
        const Containermitglied* m = container.finden(name);
        if (m && (m->name == name || std::find(alle.begin(), alle.end(), ordner + m->name) == alle.end()))
            continue;
        const auto bekannt = bestand.find(pfad);
        Ausgang a = Ausgang::fertig;
        if (bekannt != bestand.end())
            a = entfernen(pfad, bekannt->second);
        else if (m && andere_Schreibweise_weg(fs, pfad) != 0)
            geblieben_.push_back(ordner);
        if (a != Ausgang::fertig) return a;
    }
    return Ausgang::fertig;
}

// Moved to a name of this process alone, and looked at there: who knows what stood there when the call came.
Ordneranwendung::Ausgang Ordneranwendung::entfernen(const Text& pfad, const Gesehen& bekannt) {
    if (!Auftrag_gilt()) return Ausgang::abgelöst;
    const Text beiseite = beiseite_legen(pfad);
    if (beiseite.empty()) {
        if (kanal_.fs().info(pfad).nummer() != FEHLER_NICHT_GEFUNDEN) geblieben_.push_back(ParentDir(pfad));
        return Ausgang::fertig;
    }
    const auto bewegt = ansehen(kanal_.fs(), beiseite);
    if (!bewegt || !dieselbe(*bewegt, bekannt)) return zurücklegen(beiseite, pfad, bewegt.nummer());
    (void)kanal_.fs().remove(beiseite); // should it stay, no mask matches it
    return Ausgang::fertig;
}

// Empty: it has gone, or it cannot be moved.
Text Ordneranwendung::beiseite_legen(const Text& pfad) const {
    FileSystem& fs = kanal_.fs();
    const Text stamm =
        ParentDir(pfad) + u"." + Dateiname_aus_Pfad(pfad) + u"." + kanal_.werk().kennung() + u"-";
    for (int n = 1; n <= BEISEITE_VERSUCHE; ++n) {
        const Text beiseite = stamm + ziffern(n) + u".weg";
        const Fehlercode f = fs.rename_new(pfad, beiseite);
        if (f == 0) return beiseite;
        if (fs.info(pfad).nummer() == FEHLER_NICHT_GEFUNDEN) // gone, or moved although the answer was lost
            return Datei_vorhanden(fs, beiseite) ? beiseite : Text();
        if (f != FEHLER_EXISTIERT) break;
    }
    return {};
}

Ordneranwendung::Ausgang Ordneranwendung::zurücklegen(const Text& beiseite, const Text& pfad, int fehler) {
    const Fehlercode f = kanal_.fs().rename_new(beiseite, pfad);
    if (f != 0 && Datei_vorhanden(kanal_.fs(), beiseite)) {
        const Text text = u"Die Datei " + Pfad_kürzen(pfad, 100) +
                          u" wurde während der Wiederherstellung auf einem anderen Arbeitsplatz geändert. "
                          u"Was dort eingetragen wurde, ist aufbewahrt als " +
                          Pfad_kürzen(beiseite, 100);
        log_.Logbuch_ergänzen(2, text);
        kanal_.app().Hinweis(text + u".");
    }
    if (fehler != 0) throw Zugriffsfehler(fehler, pfad);
    return Ausgang::verändert;
}

} // namespace kalvora
