#include "admin/erstinitialisierung.h"

#include "hilfen/schaden.h"

namespace kalvora {
namespace {

struct Setupprobe : Prüfplatz {
    Setup setup{kanal, platz, konfig, log};
    const Text setupdatei = platz.Systempfad + u"KalvoraSetup.dat";
    explicit Setupprobe(std::shared_ptr<SpeicherPlatte> platte = std::make_shared<SpeicherPlatte>())
        : Prüfplatz(std::move(platte)) {
        lege(setupdatei, {u"[Firma]", u"Muster GmbH", u"Werk 2", u"eins", u"zwei"});
        std::vector<Text> vorlage{u"[KalvoraFeiertageDat]", u"[049:Deutschland]"};
        vorlage.resize(18, u"1:01.01.:Neujahr");
        lege(platz.Systempfad + u"KalvoraFtg.dat", vorlage);
    }
    std::vector<Text> monatsdateien() { return Dateien(fs, platz.Datenpfad, u"*Data.dat"); }
};

TEST(Erstinitialisierung, BestehendesBleibt) {
    Setupprobe p;
    p.konfig.ändern() = Konfiguration_Standard(u"chef");
    p.konfig.ändern().Reservezeile = u"Reserve";
    p.konfig.Konfigdaten_schreiben();
    auto erwartet = p.zeilen(p.daten(u"Konfigdaten.dat"));
    auto alt = erwartet;
    alt[2] = u"1.12.0";
    alt.push_back(u"P:Adam:adam");
    erwartet.push_back(u"P:Adam:adam");
    p.lege(p.daten(u"Konfigdaten.dat"), alt);
    p.lege(p.daten(u"MITARBEITERDATEN.DAT"), {u"[Mitarbeiterdaten]", u"", u"2024", u">Büro"});
    p.lege(p.daten(u"FEIERTAGE.DAT"), {u"[Feiertage]"});
    p.lege(p.daten(u"2403 240301 Data.dat"), {u"[2403]", u"", u"Sa:NoEx"});
    p.lege(p.daten(u"2405 Kopie Data.dat"), {u"[2405]", u"", u"Sa:NoEx"}); // no version of the month
    p.setup.Erstinitialisierung();
    EXPECT_EQ(p.zeilen(p.daten(u"Konfigdaten.dat")), erwartet) << "only the version line is new";
    EXPECT_EQ(p.platz.Startjahr, 2024) << "the years of the data that are there";
    EXPECT_FALSE(p.fs.gibt_es(p.daten(u"Mitarbeiterdaten.dat")));
    EXPECT_EQ(p.monatsdateien().size(), 37u);
    EXPECT_TRUE(p.fs.gibt_es(p.daten(u"2405 261116 Data.dat")));
    EXPECT_EQ(p.zeilen(p.daten(u"2403 240301 Data.dat")).back(), u"Sa:NoEx");
    EXPECT_EQ(p.zeilen(p.daten(u"2404 261116 Data.dat"))[1], u"Reserve");
}

// A first run writes the months last: where one is, a missing base file was lost.
TEST(Erstinitialisierung, VerlorenesWirdNichtErsetzt) {
    for (const TextView name : {u"Konfigdaten.dat", u"Mitarbeiterdaten.dat", u"Feiertage.dat"}) {
        Setupprobe fertig;
        fertig.setup.Erstinitialisierung();
        fertig.fs.platte().entferne(fertig.daten(name));
        Setupprobe p(fertig.fs.geteilte_platte());
        EXPECT_NE(ausgang(p, p.daten(name), [&] { p.setup.Erstinitialisierung(); }), u"");
        p.setup.Standard_ergänzen(u"Ferientage.dat");
        EXPECT_FALSE(p.fs.gibt_es(p.daten(name))) << "each file has a repair of its own";
        Setupprobe(p.fs.geteilte_platte()).setup.Standard_ergänzen(Text(name));
        EXPECT_TRUE(p.fs.gibt_es(p.daten(name)));
    }
}

TEST(Erstinitialisierung, SchadenWirdNichtÜberschrieben) {
    for (const TextView name : {u"Mitarbeiterdaten.dat", u"Konfigdaten.dat"}) {
        Setupprobe p;
        p.lege(p.daten(name), {u"[Mitarbeiterdaten]", u"", u"kein Jahr"});
        EXPECT_NE(ausgang(p, p.daten(name), [&] { p.setup.Erstinitialisierung(); }), u"");
        EXPECT_TRUE(p.fs.gibt_es(p.setupdatei)) << "the next start goes on from here";
    }
    Setupprobe p;
    p.lege(p.setupdatei, {u"[Falsch]", u"Muster GmbH"});
    EXPECT_THROW(p.setup.Erstinitialisierung(), Programmabbruch);
    EXPECT_FALSE(p.fs.gibt_es(p.daten(u"Konfigdaten.dat")));
}

TEST(Erstinitialisierung, Ländercode) {
    const std::tuple<int, Text, int, Text> fälle[] = {
        {49, u"DEU", 0, u"049"}, {352, u"LUX", 0, u"352"}, {1, u"USA", 0, u"001"}, {1, u"CAD", 0, u"002"},
        {1, u"JAM", 2, u"033"},  {0, u"", 0, u"049"},      {0, u"", 1, u"001"},    {0, u"", 7, u"049"}};
    for (const auto& [nummer, kürzel, setting, code] : fälle) {
        Setupprobe p;
        p.platz.gebiet.Ländernummer = nummer;
        p.platz.gebiet.Landeskürzel = kürzel;
        p.konfig.Setting_setzen(15, setting);
        EXPECT_EQ(p.setup.Ländercode_ermitteln(), code) << nummer << setting;
    }
}

} // namespace
} // namespace kalvora
