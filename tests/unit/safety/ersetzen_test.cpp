// The whole data folder replaced: stopped anywhere, a start leads to the old state or the new one.
#include <filesystem>

#include "hilfen/temp_ordner.h"
#include "platform/posix/posix_filesystem.h"
#include "sicherungsplatz.h"

namespace kalvora {
namespace {

const Text I = u"000000 000000 I.dat";
const Text T = u"261110 120000 T.dat";
const Mitglieder NEU{{u"2611 261110 Data.dat", "Neu\r\n"},
                     {u"Konfigdaten.dat", "Neu\r\n"},
                     {u"leer.dat", ""},
                     {u"2610 Kalvora.log", "Neu\r\n"}};

std::unique_ptr<Sicherungsplatz> alter_Stand() {
    auto p = std::make_unique<Sicherungsplatz>();
    p->fs.schreibe(p->daten(u"2611 261116 Data.dat"), "Alt\r\n");
    p->fs.schreibe(p->daten(u"KONFIGDATEN.dat"), "Alt\r\n");
    p->fs.schreibe(p->platz.Logpfad + u"2611 Kalvora.log", "Alt\r\n");
    for (const Text& bleibt : {p->daten(u"Liesmich.txt"), p->daten(u"~sicher.dat"),
                               p->platz.Logpfad + u"a.dat", p->platz.Inipfad + u"Kalvora_Muster.ini"})
        p->fs.schreibe(bleibt, "bleibt");
    p->lege_Backup(T, NEU);
    p->fs.tagebuch_leeren();
    return p;
}

using Zustand = std::map<Text, std::string>;

Zustand neuer_Stand() {
    auto p = alter_Stand();
    EXPECT_TRUE(p->wieder.Datenordner_ersetzen(p->sicherung(T)));
    return p->Zustand();
}

TEST(Datenordner_ersetzen, schreibt_den_Stand_und_entfernt_was_er_nicht_hat) {
    auto p = alter_Stand();
    Zustand erwartet = p->Zustand();
    for (const Text& weg : {p->daten(u"2611 261116 Data.dat"), p->daten(u"KONFIGDATEN.dat"),
                            p->platz.Logpfad + u"2611 Kalvora.log"})
        erwartet.erase(weg);
    for (const auto& [name, bytes] : NEU)
        erwartet[(name.ends_with(u".log") ? p->platz.Logpfad : p->platz.Datenpfad) + name] = bytes;
    EXPECT_EQ(neuer_Stand(), erwartet);

    const Zustand vorher = p->Zustand();
    p->fs.platte().mache_ordner(p->daten(u"leer.dat"));
    EXPECT_FALSE(p->wieder.Datenordner_ersetzen(p->sicherung(T))) << "a folder in a file's place";
    EXPECT_EQ(p->Meldungen().size(), 1U);
    EXPECT_EQ(p->Zustand(), vorher);
    EXPECT_EQ(p->namen(p->platz.Backuppfad), std::vector<Text>{T});
}

// A start after whatever has happened: old or new, and nothing left to do.
void starten(Sicherungsplatz& gestört, const Zustand& alt, const Zustand& neu, bool gewarnt = false) {
    gestört.fs.neu_starten();
    Sicherungsplatz p(gestört.fs.geteilte_platte());
    p.wieder.Begonnenes_abschließen();
    EXPECT_TRUE(gewarnt || p.Zustand() == alt || p.Zustand() == neu);
    EXPECT_EQ(Dateien(p.fs, p.platz.Backuppfad, u"*"), std::vector<Text>{T});
    EXPECT_TRUE(p.Meldungen().empty());
    EXPECT_FALSE(p.wieder.Begonnenes_abschließen());
}

void überall_gestört(const std::function<void(Sicherungsplatz&)>& vorher,
                     const std::function<bool(Sicherungsplatz&)>& tat) {
    const Zustand neu = neuer_Stand(), alt = alter_Stand()->Zustand();
    auto ohne = alter_Stand();
    vorher(*ohne);
    ohne->fs.tagebuch_leeren();
    ASSERT_TRUE(tat(*ohne));
    const std::vector<Dateiaufruf> aufrufe = ohne->fs.tagebuch();
    for (std::size_t n = 0; n < aufrufe.size(); ++n)
        for (const Wirkung w : {Wirkung::Fehler, Wirkung::Fehler_dahinter, Wirkung::Kurz, Wirkung::Ende,
                                Wirkung::Ende_mitten, Wirkung::Ende_dahinter}) {
            SCOPED_TRACE("call " + std::to_string(n + 1) + " " + aufrufe[n].name + " " +
                         zu_utf8(aufrufe[n].pfad) + ", effect " + std::to_string(static_cast<int>(w)));
            auto p = alter_Stand();
            vorher(*p);
            p->fs.störe(
                {.aufruf = "", .beim = static_cast<int>(n) + 1, .wirkung = w, .nummer = 61, .bytes = 2});
            std::optional<bool> ergebnis;
            bool gemeldet = false;
            try {
                ergebnis = tat(*p);
            } catch (const Programmende&) {
                gemeldet = true;
            } catch (const Fehler&) {
                gemeldet = true;
            }
            const auto meldungen = p->Meldungen();
            const bool gewarnt = !meldungen.empty() && meldungen[0].starts_with(u"Warnung");
            EXPECT_TRUE(gemeldet || ergebnis == true || !meldungen.empty());
            EXPECT_TRUE(ergebnis != true || gewarnt || p->Zustand() == neu);
            starten(*p, alt, neu, gewarnt);
            if (::testing::Test::HasFailure()) return;
        }
}

TEST(Datenordner_ersetzen, überall_unterbrochen) {
    überall_gestört([](Sicherungsplatz&) {},
                    [](Sicherungsplatz& p) { return p.wieder.Datenordner_ersetzen(p.sicherung(T)); });
}

TEST(Datenordner_ersetzen, das_Abschließen_überall_unterbrochen) {
    überall_gestört([](Sicherungsplatz& p) { p.lege_Backup(I, NEU); },
                    [](Sicherungsplatz& p) {
                        p.wieder.Begonnenes_abschließen();
                        return p.Zustand() == neuer_Stand();
                    });
}

TEST(Datenordner_ersetzen, eine_Kopie_die_bleibt_wird_nicht_wieder_angewandt) {
    auto p = alter_Stand();
    p->fs.störe({.aufruf = "remove", .maske = I, .beim = 2, .nummer = 70, .dauernd = true});
    EXPECT_TRUE(p->wieder.Datenordner_ersetzen(p->sicherung(T)));
    EXPECT_FALSE(p->wieder.Begonnenes_abschließen());
    p = alter_Stand();
    p->fs.störe({.aufruf = "remove", .maske = I, .beim = 2, .nummer = 70, .dauernd = true});
    p->fs.störe({.aufruf = "rename", .maske = u".000*", .nummer = 70, .dauernd = true});
    try {
        p->wieder.Datenordner_ersetzen(p->sicherung(T));
        FAIL();
    } catch (const Programmabbruch& abbruch) {
        EXPECT_TRUE(enthält(abbruch.text(), I)) << abbruch.what();
    }
    // An unreadable one is kept, but out of the way.
    p = alter_Stand();
    p->fs.schreibe(p->sicherung(I), "kaputt");
    const Zustand vorher = p->Zustand();
    EXPECT_FALSE(p->wieder.Begonnenes_abschließen());
    EXPECT_EQ(p->Zustand(), vorher);
    EXPECT_EQ(p->namen(p->platz.Backuppfad), (std::vector<Text>{u"." + I + u".unlesbar", T}));
}

// On the real disk: links are replaced and not followed, whatever they lead to.
TEST(Datenordner_ersetzen, folgt_keiner_Verknüpfung) {
    TempOrdner temp;
    PosixFileSystem fs;
    TestUhr uhr;
    StummeFenster fenster;
    Application app(fenster);
    const Dateiwerk werk(fs, uhr, u"LINK-1");
    Dateikanal kanal(werk, app, 1);
    Arbeitsplatz platz;
    platz.Datenpfad = temp.pfad(u"Data/");
    platz.Logpfad = temp.pfad(u"Data/Logs/");
    platz.Backuppfad = temp.pfad(u"Data/Backups/");
    temp.schreibe(u"fern/datei.dat", "fern");
    temp.schreibe(u"fern/ordner/x", "fern");
    temp.schreibe(u"Data/Logs/x", "");
    temp.schreibe(u"Data/Backups/" + T, Sicherungsplatz::Container(NEU));
    const auto verknüpfe = [&](const char* ziel, TextView name) {
        std::filesystem::create_symlink(ziel, temp.ordner() / "Data" / zu_utf8(name));
    };
    verknüpfe("../fern/datei.dat", u"Konfigdaten.dat");
    verknüpfe("../fern/nichts.dat", u"leer.dat");
    verknüpfe("../fern/datei.dat", u"weg.dat");
    verknüpfe("../fern/ordner", u"Ordner.dat");
    Wiederherstellung wieder(kanal, platz);
    EXPECT_TRUE(wieder.Datenordner_ersetzen(platz.Backuppfad + T));
    EXPECT_EQ(temp.lies(u"fern/datei.dat"), "fern");
    EXPECT_FALSE(temp.gibt_es(u"fern/nichts.dat"));
    EXPECT_TRUE(temp.gibt_es(u"fern/ordner/x"));
    EXPECT_FALSE(temp.gibt_es(u"Data/weg.dat"));
    for (const char* name : {"Konfigdaten.dat", "leer.dat"})
        EXPECT_FALSE(std::filesystem::is_symlink(temp.ordner() / "Data" / name)) << name;
    EXPECT_EQ(temp.lies(u"Data/Konfigdaten.dat"), "Neu\r\n");
}

} // namespace
} // namespace kalvora
