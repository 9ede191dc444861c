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
    EXPECT_TRUE(p->ersetzen(p->sicherung(T)));
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
    EXPECT_FALSE(p->ersetzen(p->sicherung(T))) << "a folder in a file's place";
    EXPECT_EQ(p->Meldungen().size(), 1U);
    EXPECT_EQ(p->Zustand(), vorher);
    EXPECT_EQ(p->namen(p->platz.Backuppfad), std::vector<Text>{T});
}

// A start after whatever has happened: old or new (or what a warning has named), and nothing left to do.
void starten(Sicherungsplatz& gestört, const std::vector<Zustand>& erlaubt) {
    gestört.fs.neu_starten();
    Sicherungsplatz p(gestört.fs.geteilte_platte());
    p.ersatz.Begonnenes_abschließen();
    EXPECT_TRUE(std::find(erlaubt.begin(), erlaubt.end(), p.Zustand()) != erlaubt.end());
    const auto da = Dateien(p.fs, p.platz.Backuppfad, u"*");
    EXPECT_EQ(std::count(da.begin(), da.end(), T), 1);
    EXPECT_TRUE(
        std::all_of(da.begin(), da.end(), [](const Text& name) { return name.ends_with(u" T.dat"); }));
    EXPECT_FALSE(p.ersatz.Begonnenes_abschließen());
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
            std::vector<Zustand> erlaubt{neu};
            if (!meldungen.empty() && meldungen[0].starts_with(u"Warnung"))
                erlaubt[0][aufrufe[n].pfad] = "Alt\r\n"; // the file that could not go, and nothing else
            EXPECT_TRUE(gemeldet || ergebnis == true || !meldungen.empty());
            EXPECT_TRUE(ergebnis != true || p->Zustand() == erlaubt[0]);
            if (ergebnis != true) erlaubt.push_back(alt);
            starten(*p, erlaubt);
            if (::testing::Test::HasFailure()) return;
        }
}

TEST(Datenordner_ersetzen, überall_unterbrochen) {
    überall_gestört([](Sicherungsplatz&) {}, [](Sicherungsplatz& p) { return p.ersetzen(p.sicherung(T)); });
}

TEST(Datenordner_ersetzen, das_Abschließen_überall_unterbrochen) {
    überall_gestört([](Sicherungsplatz& p) { p.lege_Backup(I, NEU); },
                    [](Sicherungsplatz& p) { return p.ersatz.Begonnenes_abschließen().has_value(); });
}

TEST(Datenordner_ersetzen, eine_Kopie_die_bleibt_wird_nicht_wieder_angewandt) {
    for (const bool beiseite : {true, false}) {
        auto p = alter_Stand();
        p->fs.störe({.aufruf = "remove", .maske = I, .nummer = 70, .dauernd = true});
        if (!beiseite) p->fs.störe({.aufruf = "rename", .maske = u".000*", .nummer = 70, .dauernd = true});
        try {
            EXPECT_TRUE(p->ersetzen(p->sicherung(T)) && beiseite);
            EXPECT_FALSE(p->ersatz.Begonnenes_abschließen());
        } catch (const Programmabbruch& abbruch) {
            EXPECT_TRUE(!beiseite && enthält(abbruch.text(), I)) << abbruch.what();
        }
    }
}

// What a stop has left is finished at a start, and what colleagues have written since is kept in a backup.
// What one look at the copy finds may be a moment's; what is no container is put aside.
TEST(Datenordner_ersetzen, am_Start_fortgesetzt) {
    for (const std::string_view was : {"whole", "whole at the second look", "damaged"}) {
        SCOPED_TRACE(was);
        auto p = alter_Stand();
        p->lege_Backup(I, NEU);
        const Text kopie = p->sicherung(I);
        const std::string heil = *p->fs.inhalt(kopie);
        if (was != "whole") p->fs.schreibe(kopie, heil.substr(0, 30));
        if (was == "whole at the second look")
            p->dialog.beim_Warten = [&] {
                if (p->fs.gibt_es(kopie)) p->fs.schreibe(kopie, heil);
            };
        const bool fertig = was != "damaged";
        EXPECT_EQ(p->ersatz.Begonnenes_abschließen().has_value(), fertig);
        EXPECT_EQ(p->Zustand() == neuer_Stand(), fertig);
        EXPECT_FALSE(p->ersatz.steht_aus());
        const auto meldungen = p->Meldungen();
        ASSERT_EQ(meldungen.size(), 1U);
        EXPECT_TRUE(enthält(meldungen[0], fertig ? u"wurde abgeschlossen" : I + u".unlesbar"));
        EXPECT_TRUE(enthält(meldungen[0], u"Sicherung vom 16.11.26, 12:00:00 Uhr")) << "leads back";
        const Text davor = p->sicherung(u"261116 120000 T.dat");
        ASSERT_EQ(p->fs.gibt_es(davor), fertig);
        if (fertig) {
            EXPECT_EQ(p->wieder.lesen(davor)->finden(u"2611 261116 Data.dat")->bytes, "Alt\r\n");
        }
    }
}

TEST(Datenordner_ersetzen, am_Start_nicht_möglich) {
    const std::tuple<std::function<void(Sicherungsplatz&)>, Text> fälle[] = {
        {[](auto& p) { p.fs.störe({.aufruf = "rename_new", .nummer = 61}); },
         u"konnte nicht gesichert werden"},
        {[](auto& p) { p.fs.störe({.aufruf = "remove", .nummer = 70, .dauernd = true}); },
         u"zuerst von einem Benutzer gestartet werden"},
        {[](auto& p) { p.fs.platte().mache_ordner(p.daten(u"leer.dat")); }, u"steht ein Ordner"},
    };
    for (const auto& [hindern, grund] : fälle) {
        auto p = alter_Stand();
        p->lege_Backup(I, NEU);
        hindern(*p);
        const Zustand vorher = p->Zustand();
        try {
            p->ersatz.Begonnenes_abschließen();
            ADD_FAILURE() << zu_utf8(grund);
        } catch (const Programmabbruch& abbruch) {
            EXPECT_TRUE(enthält(abbruch.text(), grund)) << abbruch.what();
        }
        EXPECT_TRUE(p->ersatz.steht_aus());
        EXPECT_EQ(p->Zustand(), vorher);
        EXPECT_FALSE(p->backups.Backup_erstellen(u"M")) << "none of half a state";
    }
}

// A colleague who works on while this workstation replaces the folder, or finishes that: he acts just before
// a call of this one.
TEST(Datenordner_ersetzen, zwei_Arbeitsplätze) {
    struct Fall {
        const char* was;
        std::string aufruf;
        Text datei; // its name
        std::function<void(Sicherungsplatz&)> tat;
        std::map<Text, std::string> anders; // in the data folder, beside the new state
        Text meldung = {};                  // a part of it: this one has stopped
        bool am_Start = false;
    };
    const auto schreibe = [](const Text& name) {
        return [=](Sicherungsplatz& p) { p.fs.schreibe(p.daten(name), "Er\r\n"); };
    };
    const auto andere_Kopie = [](Sicherungsplatz& p) { p.lege_Backup(I, {{u"b.dat", "B\r\n"}}); };
    const Text alt = u"2611 261116 Data.dat", K = u"Konfigdaten.dat", log = u"Logs/2610 Kalvora.log";
    const Fall fälle[]{
        {"his save clears the restored month away",
         "remove",
         alt,
         [](auto& p) { p.fs.platte().entferne(p.daten(u"2611 261110 Data.dat")); },
         {}},
        {"he appends to what is restored already",
         "remove",
         alt,
         [&](auto& p) { EXPECT_TRUE(p.werk.anhängen(p.daten(log), "mehr\r\n")); },
         {{log, "Neu\r\nmehr\r\n"}}},
        {"he begins a month that the backup made before does not hold",
         "remove",
         alt,
         schreibe(u"2611 261117 Data.dat"),
         {{u"2611 261117 Data.dat", "Er\r\n"}}},
        {"he finishes the work before this one writes, and works on",
         "info",
         K,
         [&](auto& p) {
             p.ersatz.Begonnenes_abschließen();
             schreibe(K)(p);
             schreibe(alt)(p);
         },
         {{K, "Er\r\n"}, {alt, "Er\r\n"}},
         u"",
         true},
        {"he begins another one meanwhile",
         "remove",
         alt,
         andere_Kopie,
         {},
         u"hat eine andere Wiederherstellung"},
        {"he begins another one just before",
         "rename_new",
         I,
         andere_Kopie,
         {},
         u"läuft gerade auf einem anderen Arbeitsplatz"},
    };
    for (const Fall& f : fälle) {
        SCOPED_TRACE(f.was);
        auto p = alter_Stand();
        Sicherungsplatz er(p->fs.geteilte_platte());
        if (f.am_Start) p->lege_Backup(I, NEU);
        bool getan = false;
        p->fs.davor = [&](const std::string& aufruf, const Text& pfad) {
            if (getan || aufruf != f.aufruf || Dateiname_aus_Pfad(pfad) != f.datei) return;
            getan = true;
            f.tat(er);
        };
        Text text;
        try {
            f.am_Start ? void(p->ersatz.Begonnenes_abschließen()) : void(p->ersetzen(p->sicherung(T)));
        } catch (const Programmabbruch& abbruch) {
            text = abbruch.text();
        }
        EXPECT_TRUE(getan);
        for (const Text& meldung : p->Meldungen())
            text += meldung;
        const bool fertig = f.meldung.empty();
        EXPECT_TRUE(fertig ? text.empty() : enthält(text, f.meldung)) << zu_utf8(text);
        EXPECT_EQ(p->ersatz.steht_aus(), !fertig);
        Zustand erwartet = neuer_Stand();
        for (const auto& [name, bytes] : f.anders)
            erwartet[p->daten(name)] = bytes;
        EXPECT_TRUE(!fertig || p->Zustand() == erwartet);
    }
}

// A copy that somebody is at work with is left to him; an old one is nobody's any more.
TEST(Datenordner_ersetzen, bereit) {
    auto p = alter_Stand();
    p->lege_Backup(I, {{u"b.dat", "B\r\n"}});
    EXPECT_FALSE(p->ersatz.bereit());
    EXPECT_TRUE(enthält(p->Meldungen().at(0), u"läuft gerade"));
    p->fs.platte().zeit += 301'000'000'000;
    EXPECT_TRUE(p->ersatz.bereit());
    EXPECT_TRUE(p->ersetzen(p->sicherung(T)));
    EXPECT_EQ(p->Zustand(), neuer_Stand());
    EXPECT_FALSE(p->ersatz.steht_aus());
    p->fs.störe({.aufruf = "remove", .nummer = 70, .dauernd = true});
    EXPECT_FALSE(p->ersatz.bereit());
    EXPECT_TRUE(p->Meldungen().at(0).starts_with(u"Löschen alter Dateien im Ordner"));
}

// On the real disk: links are replaced and not followed, whatever they lead to; nor where they cannot go.
TEST(Datenordner_ersetzen, folgt_keiner_Verknüpfung) {
    struct Namensfest : PosixFileSystem {
        bool fest = true;
        Fehlercode remove(const Text& p) override { return fest ? 70 : PosixFileSystem::remove(p); }
        Fehlercode rename(const Text& v, const Text& n) override {
            return fest ? 70 : PosixFileSystem::rename(v, n);
        }
    } fs;
    TempOrdner temp;
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
    verknüpfe("2611 261110 Data.dat", u"2611 261110 Data.dat"); // in a circle
    Konfigdaten konfig(kanal, platz);
    Logbuch log(kanal, platz, konfig);
    Backups backups(kanal, platz, konfig, log);
    Wiederherstellung wieder(kanal, platz);
    const auto container = wieder.lesen(platz.Backuppfad + T);
    EXPECT_THROW(wieder.schreiben(*container->finden(u"Konfigdaten.dat")), Laufzeitfehler);
    fs.fest = false;
    EXPECT_TRUE(Ordnerersatz(kanal, platz, wieder, backups, log).Datenordner_ersetzen(*container));
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
