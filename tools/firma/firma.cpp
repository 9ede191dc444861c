#include "firma/firma.h"

#include <algorithm>

#include "files/feiertagsdatei.h"
#include "files/monatsdaten.h"
#include "files/ordner.h"
#include "firma/abwesenheiten.h"
#include "firma/protokolle.h"
#include "firma/stummes_fenstersystem.h"

namespace kalvora {

using namespace firma;

namespace {

constexpr int NACHGETRAGEN_PROZENT = 12; // people with rows appended behind the compacted ones

// The folder with all its parents.
void Ordner_herstellen(FileSystem& fs, const Text& ordner) {
    for (std::size_t ende = ordner.find(u'/', 1); ende != Text::npos; ende = ordner.find(u'/', ende + 1)) {
        const Text teil = ordner.substr(0, ende + 1);
        if (Ordner_vorhanden(fs, teil)) continue;
        if (const Fehlercode f = fs.make_folder(teil))
            throw Laufzeitfehler(f, u"Der Ordner kann nicht angelegt werden", teil);
    }
}

// Lets the writers of src/files work on the new folder.
class Firma {
public:
    Firma(FileSystem& fs, Clock& uhr, const Firmenwunsch& wunsch)
        : wunsch_(wunsch), uhr_(uhr), app_(fenster_), werk_(fs, uhr_, u"firma"),
          kanal_(werk_, app_, static_cast<std::uint32_t>(wunsch.Saat * 2 + 1)), konfig_(kanal_, platz_),
          personal_(kanal_, platz_, konfig_), feiertage_(kanal_, platz_) {
        if (wunsch_.Heute == 0) {
            const Kalendertag tag = uhr.now().tag;
            wunsch_.Heute = Datum_aus(tag.jahr, tag.monat, tag.tag);
        }
        if (wunsch_.Startjahr == 0) wunsch_.Startjahr = Jahr(wunsch_.Heute) - 1;
        platz_einrichten();
    }

    Firmenbericht erzeugen() {
        Ordner_herstellen(werk_.fs(), platz_.Datenpfad);
        if (Datei_passend_vorhanden(werk_.fs(), platz_.Datenpfad, u"*.dat"))
            throw Laufzeitfehler(FEHLER_EXISTIERT, u"Der Ordner enthält schon Daten", platz_.Datenpfad);
        Ordner_herstellen(werk_.fs(), platz_.Logpfad);
        Konfiguration_schreiben();
        Feiertage_schreiben();
        Ferientage_schreiben();
        Belegschaft leute = Belegschaft_bilden(wunsch_);
        Personal_schreiben(leute);
        Abwesenheiten_schreiben(leute);
        return std::move(bericht_);
    }

private:
    void platz_einrichten() {
        platz_.Heute = wunsch_.Heute;
        platz_.Heute_S = FormatDatumDS(wunsch_.Heute);
        platz_.Startjahr = wunsch_.Startjahr;
        platz_.Benutzername = wunsch_.Benutzername;
        platz_.Programmpfad = als_Ordner(wunsch_.Programmpfad);
        platz_.Systempfad = platz_.Programmpfad;
        platz_.Datenpfad = als_Ordner(wunsch_.Zielordner) + u"Data/";
        platz_.Logpfad = platz_.Datenpfad + u"Logs/";
        bericht_.Datenpfad = platz_.Datenpfad;
    }

    void Konfiguration_schreiben() {
        Konfiguration& k = konfig_.ändern();
        k = Konfiguration_Standard(wunsch_.Benutzername);
        k.Firma = u"Mustermann & Söhne GmbH";
        k.Firmenzusatz = u"Werk Nord";
        k.settings.SetSetting(30, 1); // leave figures with halves
        konfig_.ableiten();
        konfig_.Konfigdaten_schreiben(Dateimodus::Neu);
    }

    void Feiertage_schreiben() {
        if (!wunsch_.Programmpfad.empty()) {
            feiertage_.KalvoraFeiertageDat_lesen(u"049");
            wunsch_.Feiertagsregeln = feiertage_.Feiertagsregeln();
            feiertage_.Feiertage_schreiben(Dateimodus::Neu);
            return;
        }
        Feld<Text>& regeln = wunsch_.Feiertagsregeln;
        while (regeln.anzahl() < FEIERTAGSREGELN_LAND)
            regeln.anfügen(Text(LEERE_FEIERTAGSREGEL));
        std::vector<Text> zeilen{u"[Feiertage]", {}, u"Deutschland"};
        zeilen.insert(zeilen.end(), regeln.begin(), regeln.end());
        Datei_schreiben(u"Feiertage.dat", zeilen);
    }

    // Nobody in the program writes this file: it comes from outside.
    void Ferientage_schreiben() {
        std::vector<Text> zeilen{u"[Ferientage]", {}, ziffern(0xD8F0D8), {}, {}};
        for (int monat = 0; monat < MONATE; ++monat)
            zeilen.push_back(yymm(monat) + u":" + Text(TAGE, u'0'));
        for (int jahr = wunsch_.Startjahr; jahr < wunsch_.Startjahr + 3; ++jahr)
            for (const auto& [von, bis] : Schulferien(jahr))
                for (Datum d = von; d <= bis; ++d) {
                    const Kalendertag tag = Kalendertag_aus(d);
                    const int monat = (tag.jahr - wunsch_.Startjahr) * 12 + tag.monat - 1;
                    zeilen[static_cast<std::size_t>(5 + monat)][static_cast<std::size_t>(4 + tag.tag)] = u'1';
                }
        Datei_schreiben(u"Ferientage.dat", zeilen);
    }

    void Personal_schreiben(const Belegschaft& leute) {
        if (!leute.Personen.empty()) personal_.ändern() = leute.Zeilen;
        bericht_.Mitarbeiter = static_cast<int>(leute.Personen.size());
        bericht_.Überschriften = leute.Zeilen.anzahl() - bericht_.Mitarbeiter;
        for (const Person& p : leute.Personen)
            bericht_.BenIds.anfügen(p.BenId);
        personal_.Mitarbeiterdaten_schreiben();
    }

    void Abwesenheiten_schreiben(Belegschaft& leute) {
        const Kalender kalender(wunsch_.Startjahr,
                                Feiertage_berechnen(wunsch_.Startjahr, wunsch_.Feiertagsregeln));
        std::vector<Abwesenheiten> alle;
        for (Person& p : leute.Personen)
            alle.push_back(Abwesenheiten_bilden(p, kalender, konfig_.werte(), wunsch_));
        for (int monat = 0; monat < MONATE; ++monat)
            Monat_schreiben(monat, leute, alle, kalender);
        if (wunsch_.mit_Logbuch)
            bericht_.Logsätze = Logbücher_schreiben(kanal_, platz_, konfig_, uhr_, leute, alle, wunsch_);
    }

    Text yymm(int monat) const { // 0 to 35
        return ziffern((wunsch_.Startjahr + monat / 12) % 100, 2) + ziffern(monat % 12 + 1, 2);
    }

    // The day on which the month was last compacted: shortly behind it, or lately when it is not over yet.
    Text Versionsdatum(int monat) {
        const Datum nach = Datum_aus(wunsch_.Startjahr, monat + 2, 1);
        const bool dieser = yymm(monat) == platz_.Monat_heute();
        if (dieser) return FormatDatumDS(wunsch_.Version_von_heute ? wunsch_.Heute : wunsch_.Heute - 1);
        Zufall zufall(wunsch_.Saat, 1'000'000'000 + static_cast<std::uint64_t>(monat));
        const Datum da = nach <= wunsch_.Heute ? nach + zufall.unter(10) : wunsch_.Heute - zufall.unter(30);
        return FormatDatumDS(std::min(da, wunsch_.Heute - 1));
    }

    static Text Monatscodes(const Abwesenheiten& a, Datum erster_im_Monat, int länge, Datum erster) {
        Text tage = a.codes.substr(static_cast<std::size_t>(erster_im_Monat - erster),
                                   static_cast<std::size_t>(länge));
        tage.resize(TAGE, u' ');
        return tage;
    }

    struct Nachtrag {
        Text BenId, vorher, nachher;
    };

    // In the present month some rows of a person follow one another; the last one holds.
    Nachtrag nachtragen(const Person& p, Text& tage, Zufall& zufall) {
        Nachtrag n{p.BenId, tage, tage};
        const auto ab = static_cast<std::size_t>(zufall.unter(TAGE));
        std::fill(n.vorher.begin() + static_cast<std::ptrdiff_t>(ab), n.vorher.end(), u' ');
        tage = n.vorher;
        return n;
    }

    void Kommentare_sammeln(const Person& p, const Abwesenheiten& a, Datum erster, int länge,
                            Monatsinhalt& inhalt) {
        for (const Vorgang& v : a.Vorgänge) {
            const Datum von = std::max(v.von, erster), bis = std::min(v.bis, erster + länge - 1);
            if (v.Kommentar.empty() || von > bis) continue;
            inhalt.Kommentar_anfügen({p.BenId, von - erster + 1, bis - erster + 1, v.Kommentar});
        }
    }

    void Monat_schreiben(int monat, const Belegschaft& leute, const std::vector<Abwesenheiten>& alle,
                         const Kalender& kalender) {
        const Datum erster = Datum_aus(wunsch_.Startjahr, monat + 1, 1);
        const int länge = Tage_im_Monat(yymm(monat));
        const bool dieser = yymm(monat) == platz_.Monat_heute();
        Zufall zufall(wunsch_.Saat, 2'000'000'000);
        Monatsinhalt inhalt;
        inhalt.yymm = yymm(monat);
        std::vector<Nachtrag> nachträge;
        std::vector<Text> BenIds;
        for (std::size_t i = 0; i < alle.size(); ++i) {
            const Person& p = leute.Personen[i];
            Text tage = Monatscodes(alle[i], erster, länge, kalender.erster());
            if (dieser && zufall.prozent(NACHGETRAGEN_PROZENT) && !trimmen(tage).empty())
                nachträge.push_back(nachtragen(p, tage, zufall));
            inhalt.Satz_anfügen({p.BenId, std::move(tage)});
            Kommentare_sammeln(p, alle[i], erster, länge, inhalt);
            BenIds.push_back(p.BenId);
        }
        std::vector<Text> zeilen{u"[" + inhalt.yymm + u"]", {}, Text(KEINE_AUSNAHMEN)};
        const auto verdichtet = Zeilen_verdichten(inhalt, BenIds);
        zeilen.insert(zeilen.end(), verdichtet.begin(), verdichtet.end());
        Nachträge_anfügen(zeilen, nachträge, inhalt, zufall);
        Datei_schreiben(inhalt.yymm + u" " + Versionsdatum(monat) + u" Data.dat", zeilen);
    }

    // Not in the order of the plan: as the day brought them.
    void Nachträge_anfügen(std::vector<Text>& zeilen, std::vector<Nachtrag>& nachträge,
                           const Monatsinhalt& inhalt, Zufall& zufall) {
        for (std::size_t i = nachträge.size(); i > 1; --i)
            std::swap(nachträge[i - 1],
                      nachträge[static_cast<std::size_t>(zufall.unter(static_cast<int>(i)))]);
        for (const Nachtrag& n : nachträge) {
            if (zufall.prozent(35)) { // first something else was entered, or taken away
                Text irrtum = n.nachher;
                irrtum[irrtum.find_first_not_of(u' ')] = u' ';
                zeilen.push_back(als_Zeile(Erfassungssatz{n.BenId, irrtum}));
            }
            zeilen.push_back(als_Zeile(Erfassungssatz{n.BenId, n.nachher}));
            const auto kommentare = inhalt.Kommentare(n.BenId);
            for (int t = 1; t <= TAGE; ++t) {
                const auto stelle = static_cast<std::size_t>(t - 1);
                const Text& text = kommentare[static_cast<std::size_t>(t)];
                if (!text.empty() && n.vorher[stelle] == u' ' && n.nachher[stelle] != u' ')
                    zeilen.push_back(als_Zeile(Kommentarsatz{n.BenId, t, t, text}));
            }
        }
    }

    void Datei_schreiben(const Text& name, const std::vector<Text>& zeilen) {
        kanal_.Datei_öffnen(platz_.Datenpfad + name, Dateimodus::Neu);
        for (const Text& zeile : zeilen) {
            kanal_.LineOut(zeile);
            bericht_.Datensätze += zeile.starts_with(u"A:");
            bericht_.Kommentare += zeile.starts_with(u"K:");
        }
        if (const Fehlercode f = kanal_.Datei_schließen())
            throw Laufzeitfehler(f, u"Die Datei kann nicht angelegt werden", platz_.Datenpfad + name);
    }

    Firmenwunsch wunsch_;
    Schreibuhr uhr_;
    StummesFenstersystem fenster_;
    Application app_;
    Dateiwerk werk_;
    Dateikanal kanal_;
    Arbeitsplatz platz_;
    Konfigdaten konfig_;
    Mitarbeiterdaten personal_;
    Feiertagsdatei feiertage_;
    Firmenbericht bericht_;
};

} // namespace

Firmenbericht Firma_erzeugen(FileSystem& fs, Clock& uhr, const Firmenwunsch& wunsch) {
    return Firma(fs, uhr, wunsch).erzeugen();
}

} // namespace kalvora
