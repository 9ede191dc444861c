// The made-up company is read with the program's own readers: nothing in it may be a fault, and the same wish
// must give the same bytes.
#include "firma/firma.h"

#include <gtest/gtest.h>

#include <map>

#include "files/erfassungsdateien.h"
#include "files/feiertagsdatei.h"
#include "firma/stummes_fenstersystem.h"
#include "hilfen/speicher_dateisystem.h"
#include "hilfen/test_uhr.h"

namespace kalvora {
namespace {

const Datum HEUTE = Datum_aus(2026, 11, 16);

Firmenwunsch Wunsch(int mitarbeiter, std::uint64_t saat = 7) {
    Firmenwunsch w;
    w.Zielordner = u"/srv/firma";
    w.Mitarbeiter = mitarbeiter;
    w.Saat = saat;
    w.Heute = HEUTE;
    w.Benutzername = u"chef";
    w.Feiertagsregeln = {u"1:01.01.:Neujahr", Text(LEERE_FEIERTAGSREGEL), u"1:03.10.:Einheit"};
    return w;
}

// A workstation on the company.
struct Leser {
    explicit Leser(SpeicherDateisystem& fs)
        : app(fenster), werk(fs, uhr, u"leser"), kanal(werk, app, 1), konfig(kanal, platz),
          personal(kanal, platz, konfig), log(kanal, platz, konfig), feiertage(kanal, platz),
          ferien(kanal, platz), erfassung(kanal, platz, konfig, personal, log) {
        platz.Heute = HEUTE;
        platz.Heute_S = FormatDatumDS(HEUTE);
        platz.Benutzername = u"chef";
        platz.Datenpfad = u"/srv/firma/Data/";
        konfig.Konfigdaten_lesen();
        personal.Mitarbeiterdaten_lesen();
        feiertage.Feiertage_lesen();
        ferien.Ferientage_lesen();
    }

    Text yymm(int monat) const { // 1 to 36
        return ziffern(platz.Startjahr % 100 + (monat - 1) / 12, 2) + ziffern((monat - 1) % 12 + 1, 2);
    }

    TestUhr uhr;
    firma::StummesFenstersystem fenster;
    Application app;
    Dateiwerk werk;
    Dateikanal kanal;
    Arbeitsplatz platz;
    Konfigdaten konfig;
    Mitarbeiterdaten personal;
    Logbuch log;
    Feiertagsdatei feiertage;
    Ferientagedatei ferien;
    Erfassungsdateien erfassung;
};

std::map<Text, std::string> Dateien_aus(SpeicherDateisystem& fs) {
    std::map<Text, std::string> aus;
    for (const Text& ordner : {Text(u"/srv/firma/Data/"), Text(u"/srv/firma/Data/Logs/")}) {
        const auto namen = fs.list(ordner);
        for (const Text& name : *namen)
            if (const auto bytes = fs.inhalt(ordner + name)) aus[ordner + name] = *bytes;
    }
    return aus;
}

std::map<Text, std::string> erzeugt(const Firmenwunsch& wunsch) {
    SpeicherDateisystem fs;
    TestUhr uhr;
    Firma_erzeugen(fs, uhr, wunsch);
    return Dateien_aus(fs);
}

TEST(Firma, Gleicher_Wunsch_gleiche_Bytes) {
    const auto eins = erzeugt(Wunsch(30));
    EXPECT_EQ(eins, erzeugt(Wunsch(30)));
    EXPECT_NE(eins, erzeugt(Wunsch(30, 8)));
}

TEST(Firma, Alle_Leser_nehmen_alles) {
    SpeicherDateisystem fs;
    TestUhr uhr;
    const auto bericht = Firma_erzeugen(fs, uhr, Wunsch(120));
    Leser l(fs);
    EXPECT_EQ(l.konfig.werte().Benutzerrolle, 2);
    EXPECT_EQ(l.platz.Startjahr, 2025);
    EXPECT_EQ(l.personal.MA().anzahl(), bericht.Mitarbeiter + bericht.Überschriften);
    EXPECT_TRUE(l.personal.Benutzer_eingetragen());
    EXPECT_TRUE(l.ferien.Daten_vorhanden());
    EXPECT_NO_THROW(l.erfassung.Erfassungsdateien_checken());
    for (int monat = 1; monat <= MONATE; ++monat) {
        l.erfassung.Erfassungsdaten_lesen(l.yymm(monat));
        EXPECT_FALSE(l.erfassung.monat().fehlerhaft()) << monat;
        EXPECT_NE(l.erfassung.monat().stamm, l.yymm(monat) + u" 261116") << "nobody has saved today";
    }
    EXPECT_TRUE(l.fenster.Meldungen.empty());
}

TEST(Firma, Einträge_nur_an_Arbeitstagen_der_Beschäftigten) {
    SpeicherDateisystem fs;
    TestUhr uhr;
    Firma_erzeugen(fs, uhr, Wunsch(300));
    Leser l(fs);
    l.erfassung.Alle_Erfassungsdaten_einlesen(false);
    std::map<char, int> codes;
    int befristet = 0, daneben = 0;
    for (int i = 1; i <= l.personal.MA().anzahl(); ++i) {
        const Mitarbeiter& m = l.personal.MA()(i);
        befristet += m.MA_Von != u"000000" || m.MA_Bis != u"999999";
        for (int monat = 1; monat <= MONATE; ++monat)
            for (int t = 1; t <= TAGE; ++t) {
                const char code = l.erfassung.Daten().tage(monat, i)[static_cast<std::size_t>(t - 1)];
                if (code == ' ') continue;
                ++codes[code];
                const Text tag = l.yymm(monat) + ziffern(t, 2);
                daneben += Wochentag(FormatDatumSD(tag)) > 5 || m.Überschrift() || tag < m.MA_Von ||
                           tag > m.MA_Bis || Feiertagsname(l.feiertage.berechnet(), tag).has_value();
            }
    }
    EXPECT_EQ(daneben, 0);
    EXPECT_GT(befristet, 10);
    for (const char code : {'1', '2', '3', '4', '5', '6', '8'})
        EXPECT_GT(codes[code], 100) << code;
    EXPECT_EQ(codes.size(), 7u);
}

TEST(Firma, Letzte_Zeile_einer_Person_gilt_im_laufenden_Monat) {
    SpeicherDateisystem fs;
    TestUhr uhr;
    Firmenwunsch wunsch = Wunsch(200);
    wunsch.Version_von_heute = true;
    Firma_erzeugen(fs, uhr, wunsch);
    Leser l(fs);
    ASSERT_TRUE(l.erfassung.Erfassungsdaten_lesen(u"2611"));
    EXPECT_EQ(l.erfassung.monat().stamm, u"2611 261116");
    std::map<Text, int> zeilen;
    for (const Erfassungssatz& satz : l.erfassung.monat().Erfassungsdaten)
        ++zeilen[satz.BenId];
    int mehrfach = 0;
    for (const auto& [wer, n] : zeilen)
        mehrfach += n > 1;
    EXPECT_GT(mehrfach, 3);
    // Below the mark from which the program would compact the month at once.
    EXPECT_LT(l.erfassung.monat().Erfassungsdaten.anzahl(), l.personal.MA().anzahl() * 3 / 2);
}

TEST(Firma, Voll_hat_jeder_in_jedem_Monat_Einträge) {
    SpeicherDateisystem fs;
    TestUhr uhr;
    Firmenwunsch wunsch = Wunsch(60);
    wunsch.Jeden_Monat_Einträge = true;
    EXPECT_GE(Firma_erzeugen(fs, uhr, wunsch).Datensätze, 60 * MONATE);
    Leser l(fs);
    l.erfassung.Alle_Erfassungsdaten_einlesen(false);
    for (int i = 1; i <= l.personal.MA().anzahl(); ++i)
        for (int monat = 1; monat <= MONATE; ++monat)
            EXPECT_EQ(l.erfassung.Daten().tage(monat, i) == std::string(TAGE, ' '),
                      l.personal.MA()(i).Überschrift());
}

TEST(Firma, Vorhandene_Daten_bleiben_wie_sie_sind) {
    SpeicherDateisystem fs;
    TestUhr uhr;
    Firma_erzeugen(fs, uhr, Wunsch(5));
    const auto vorher = Dateien_aus(fs);
    EXPECT_THROW(Firma_erzeugen(fs, uhr, Wunsch(6)), Laufzeitfehler);
    EXPECT_EQ(Dateien_aus(fs), vorher);
}

} // namespace
} // namespace kalvora
