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
const Mitglieder ALT{
    {u"2611 261116 Data.dat", "Alt\r\n"}, {u"KONFIGDATEN.dat", "Alt\r\n"}, {u"2611 Kalvora.log", "Alt\r\n"}};

Text ort(const Sicherungsplatz& p, const Text& name) {
    return (name.ends_with(u".log") ? p.platz.Logpfad : p.platz.Datenpfad) + name;
}
void lege(Sicherungsplatz& p, const Mitglieder& dateien) {
    for (const auto& [name, bytes] : dateien)
        p.fs.schreibe(ort(p, name), bytes);
}

std::unique_ptr<Sicherungsplatz> alter_Stand() {
    auto p = std::make_unique<Sicherungsplatz>();
    lege(*p, ALT);
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
    for (const auto& [name, bytes] : ALT)
        erwartet.erase(ort(*p, name));
    for (const auto& [name, bytes] : NEU)
        erwartet[ort(*p, name)] = bytes;
    EXPECT_EQ(neuer_Stand(), erwartet);

    const Zustand vorher = p->Zustand();
    p->fs.platte().mache_ordner(p->daten(u"leer.dat"));
    EXPECT_FALSE(p->ersetzen(p->sicherung(T))) << "a folder in a file's place";
    EXPECT_EQ(p->Meldungen().size(), 1U);
    EXPECT_EQ(p->Zustand(), vorher);
    EXPECT_EQ(p->namen(p->platz.Backuppfad), std::vector<Text>{T});
}

// A start after whatever has happened: old or new (or what a warning has named), and nothing left to do.
// On another workstation the one that was ended is waited for first.
void starten(Sicherungsplatz& gestört, const Text& rechner, const std::vector<Zustand>& erlaubt) {
    gestört.fs.neu_starten();
    Sicherungsplatz p(gestört.fs.geteilte_platte(), rechner);
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
            if ((n + static_cast<std::size_t>(w)) % 3 != 0) continue; // each call with every third effect
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
                for (const auto& [pfad, bytes] : alt) { // a file that could not go, and nothing else
                    erlaubt.push_back(neu);
                    erlaubt.back().emplace(pfad, bytes);
                }
            EXPECT_TRUE(gemeldet || ergebnis == true || !meldungen.empty());
            EXPECT_TRUE(ergebnis != true ||
                        std::find(erlaubt.begin(), erlaubt.end(), p->Zustand()) != erlaubt.end());
            if (ergebnis != true) erlaubt.push_back(alt);
            starten(*p, n % 8 == 0 ? u"PLATZ2" : u"PLATZ1", erlaubt);
            if (::testing::Test::HasFailure()) return;
        }
}

TEST(Datenordner_ersetzen, überall_unterbrochen) {
    for (const bool sichern : {false, true})
        überall_gestört([](Sicherungsplatz&) {},
                        [=](Sicherungsplatz& p) { return p.ersetzen(p.sicherung(T), sichern); });
}

TEST(Datenordner_ersetzen, das_Abschließen_überall_unterbrochen) {
    überall_gestört([](Sicherungsplatz& p) { p.lege_Backup(I, NEU); },
                    [](Sicherungsplatz& p) { return p.ersatz.Begonnenes_abschließen(); });
}

TEST(Datenordner_ersetzen, eine_Kopie_die_bleibt_wird_nicht_wieder_angewandt) {
    auto p = alter_Stand();
    p->fs.störe({.aufruf = "remove", .maske = I, .nummer = 70, .dauernd = true});
    EXPECT_TRUE(p->ersetzen(p->sicherung(T)));
    EXPECT_FALSE(p->ersatz.Begonnenes_abschließen());
    p = alter_Stand();
    p->fs.störe({.aufruf = "remove", .maske = I, .nummer = 70, .dauernd = true});
    p->fs.störe({.aufruf = "rename", .maske = u".000*erledigt", .nummer = 70, .dauernd = true});
    EXPECT_TRUE(enthält(abgebrochen([&] { p->ersetzen(p->sicherung(T)); }), I));
}

// What a stop has left is finished at a start, and what colleagues have written since is kept in a backup.
TEST(Datenordner_ersetzen, am_Start) {
    enum Ende { fertig, abgelehnt, weggelegt };
    using Platz = Sicherungsplatz;
    struct Fall {
        const char* was;
        std::function<void(Platz&)> vorher;
        Ende ende;
        Text text; // a part of the message
        bool gesichert = false;
        Text Logtext = u"Datenordner wiederhergestellt mit Sicherung vom 16.11.26, 12:00:00 Uhr";
    };
    const auto nichts = [](Platz&) {};
    const auto stellen = [](Platz& p) {
        lege(p, NEU);
        for (const auto& [name, bytes] : ALT)
            p.fs.platte().entferne(ort(p, name));
    };
    const auto ohne_Punkt = [](Platz& p) {
        p.lege_Backup(T, {{u"a.dat", ""}});
        p.lege_Backup(I, NEU);
    };
    const auto gesichert = [](Platz& p) {
        p.lege_Backup(u"261116 110000 T.dat", ALT);
        lege(p, {NEU[0]});
    };
    const auto anderes_gesichert = [](Platz& p) { p.lege_Backup(u"261116 110000 T.dat", {ALT[1]}); };
    const auto Ordner = [](Platz& p) { p.fs.platte().mache_ordner(p.daten(u"leer.dat")); };
    const auto kaputt = [](Platz& p) { p.fs.schreibe(p.sicherung(I), "kaputt"); };
    const auto mit = [](const Störung& s) { return [=](Platz& p) { p.fs.störe(s); }; };
    const auto halb = [](Platz& p) {
        const auto heil = *p.fs.inhalt(p.sicherung(I));
        p.fs.schreibe(p.sicherung(I), heil.substr(0, 30));
        p.dialog.beim_Warten = [&p, heil] {
            if (p.fs.gibt_es(p.sicherung(I))) p.fs.platte().finde(p.sicherung(I))->bytes = heil;
        };
    };
    const Text um_12 = u"enthält die Sicherung vom 16.11.26, 12:00:00 Uhr.";
    const Fall fälle[]{
        {"newer rows", nichts, fertig, u"aufbewahrt in der Sicherung vom 16.11.26, 12:00:00 Uhr.", true},
        {"all done but for the copy", stellen, fertig, u"wurde abgeschlossen."},
        {"its backup has gone", ohne_Punkt, fertig, u"wurde abgeschlossen.", true,
         u"Datenordner wiederhergestellt (unterbrochene Wiederherstellung abgeschlossen), Stand davor: "
         u"'261116 120000 T.dat'"},
        {"stopped behind its backup", gesichert, fertig, u"Sicherung vom 16.11.26, 12:00:00 Uhr.", true},
        {"and others have worked since", anderes_gesichert, fertig, um_12, true},
        {"no backup", mit({.aufruf = "rename_new", .maske = u"261116*T.dat", .nummer = 61}), abgelehnt,
         u"konnte nicht gesichert werden (Fehler Nr. 61 beim Schreiben"},
        {"nothing can be removed", mit({.aufruf = "remove", .nummer = 70, .dauernd = true}), abgelehnt,
         u"Ihnen fehlt das Recht, den Ordner '/srv/x/Data/Backups' zu öffnen"},
        {"a folder", Ordner, abgelehnt, u"steht ein Ordner"},
        {"a full disk", mit({.aufruf = "write", .maske = u".Konfig*", .nummer = 61}), abgelehnt,
         u"Fehler Nr. 61", true},
        {"no container", kaputt, weggelegt, I + u".unlesbar"},
        {"once no container", halb, fertig, u"wurde abgeschlossen.", true},
    };
    for (const Fall& f : fälle) {
        SCOPED_TRACE(f.was);
        auto p = alter_Stand();
        p->fs.schreibe(p->sicherung(I), *p->fs.inhalt(p->sicherung(T)));
        f.vorher(*p);
        const Zustand vorher = p->Zustand();
        Ende ende = abgelehnt;
        Text text = abgebrochen([&] { ende = p->ersatz.Begonnenes_abschließen() ? fertig : weggelegt; });
        for (const Text& meldung : p->Meldungen())
            text += meldung;
        EXPECT_EQ(ende, f.ende);
        EXPECT_TRUE(enthält(text, f.text)) << zu_utf8(text);
        EXPECT_EQ(p->in_Sicherungen(ALT[0].first), std::vector<std::string>(f.gesichert ? 1 : 0, "Alt\r\n"));
        EXPECT_EQ(p->ersatz.steht_aus(), ende == abgelehnt);
        EXPECT_EQ(p->backups.Backup_erstellen(u"M"), ende != abgelehnt) << "none of half a state";
        const auto log = p->zeilen(p->platz.Logpfad + u"2611 Kalvora.log");
        EXPECT_TRUE(ende != fertig || (!log.empty() && log.back().ends_with(u"|KalvoAdmin|" + f.Logtext)));
        Zustand danach = p->Zustand();
        for (const auto& [name, bytes] : NEU)
            EXPECT_TRUE(ende != fertig || danach[ort(*p, name)] == bytes) << zu_utf8(name);
        EXPECT_TRUE(ende != abgelehnt || f.gesichert || danach == vorher);
        EXPECT_EQ(p->fs.offene(), 0);
    }
}

// A colleague who works on while this workstation replaces the folder, or finishes that: he acts just before
// a call of this one, which thus lasts longer than anybody waits for. The sweep over all calls is in
// zwei_plaetze_test.
TEST(Datenordner_ersetzen, zwei_Arbeitsplätze) {
    struct Fall {
        const char* was;
        bool am_Start;
        std::string aufruf;
        Text datei; // its name
        std::function<void(Sicherungsplatz&)> tat;
        Zustand anders = {}; // in the data folder, beside the new state
        Text gesichert = {}; // a backup holds this file with his line at its end
        Text meldung = {};   // a part of it; empty: none
        bool neu = true;     // state in the end; otherwise the order of somebody else stands, or none
    };
    const auto hänge_an = [](const Text& name) {
        return [=](Sicherungsplatz& p) { EXPECT_TRUE(p.werk.anhängen(ort(p, name), "Er\r\n")); };
    };
    const auto schreibt = [](const Text& name) {
        return [=](Sicherungsplatz& p) { p.fs.schreibe(p.daten(name), "Er\r\n"); };
    };
    const auto weg_mit = [](const Text& pfad) {
        return [=](Sicherungsplatz& p) { p.fs.platte().entferne(pfad); };
    };
    const auto andere_Kopie = [](Sicherungsplatz& p) { p.lege_Backup(I, {{u"b.dat", "B\r\n"}}); };
    const auto schließt_ab = [](Sicherungsplatz& p) { EXPECT_TRUE(p.ersatz.Begonnenes_abschließen()); };
    const Text alt = ALT[0].first, neu = NEU[0].first, log = u"2610 Kalvora.log", leer = u"leer.dat",
               weg = u".2611 261116 Data.dat.PLATZ1-4711-1.weg", K = u"Konfigdaten.dat",
               morgen = u"2611 261117 Data.dat";
    const Zustand nichts, angehängt{{u"Logs/" + log, "Neu\r\nEr\r\n"}}, begonnen{{morgen, "Er\r\n"}},
        seins{{neu, "Neu\r\nEr\r\n"}, {alt, "Er\r\n"}}, seins_allein{{neu, "Er\r\n"}, {alt, "Er\r\n"}};
    const auto arbeitet_weiter = [&](const Zustand& stand) {
        return [=](Sicherungsplatz& p) {
            schließt_ab(p);
            for (const auto& [name, bytes] : stand)
                p.fs.schreibe(p.daten(name), bytes);
        };
    };
    const Fall fälle[]{
        {"his save clears the restored month away", false, "rename_new", weg, weg_mit(u"/srv/x/Data/" + neu)},
        {"he appends to what is restored already", false, "rename_new", weg, hänge_an(log), angehängt},
        {"his row comes behind the backup", false, "rename_new", weg, hänge_an(alt), nichts, alt},
        {"or in a file that is to be replaced", false, "is_link", leer, schreibt(leer), nichts, leer},
        {"or in a second spelling, which no backup holds", false, "is_link", K, schreibt(K)},
        {"he begins a month", false, "rename_new", weg, schreibt(morgen), begonnen},
        {"he finishes the work before this one writes", true, "open", K, arbeitet_weiter(seins), seins},
        {"before this one removes", true, "rename_new", weg, arbeitet_weiter(seins), seins},
        {"this one has begun it, and says what stands", false, "rename_new", weg,
         arbeitet_weiter(seins_allein), seins_allein, u"",
         u"steht jetzt ein anderer Stand als der von Ihnen"},
        {"he finishes it, and nothing else", false, "rename_new", weg, schließt_ab},
        {"the copy goes between two looks", true, "open", I, weg_mit(u"/srv/x/Data/Backups/" + I), nichts,
         u"", u"", false},
        {"he begins another one meanwhile", false, "rename_new", weg, andere_Kopie, nichts, u"",
         u"hat eine andere Wiederherstellung", false},
        {"he begins another one just before", false, "rename_new", I, andere_Kopie, nichts, u"",
         u"läuft gerade auf einem anderen Arbeitsplatz", false},
    };
    const Zustand neuer = neuer_Stand();
    for (const Fall& f : fälle) {
        SCOPED_TRACE(f.was);
        auto p = alter_Stand();
        Sicherungsplatz er(p->fs.geteilte_platte(), u"PLATZ2");
        if (f.am_Start) p->lege_Backup(I, NEU);
        bool getan = false;
        p->fs.davor = [&](const std::string& aufruf, const Text& pfad) {
            if (getan || aufruf != f.aufruf || Dateiname_aus_Pfad(pfad) != f.datei) return;
            getan = true;
            f.tat(er);
        };
        Text text = abgebrochen(
            [&] { f.am_Start ? p->ersatz.Begonnenes_abschließen() : p->ersetzen(p->sicherung(T)); });
        EXPECT_TRUE(getan);
        for (const Text& meldung : p->Meldungen())
            text += meldung;
        EXPECT_EQ(text.empty(), f.meldung.empty()) << zu_utf8(text);
        EXPECT_TRUE(enthält(text, f.meldung)) << zu_utf8(text);
        EXPECT_EQ(p->ersatz.steht_aus(), !f.neu && !f.meldung.empty());
        Zustand erwartet = neuer;
        for (const auto& [name, bytes] : f.anders)
            erwartet[p->daten(name)] = bytes;
        EXPECT_TRUE(!f.neu || p->Zustand() == erwartet);
        const auto backups = p->in_Sicherungen(f.gesichert);
        EXPECT_TRUE(f.gesichert.empty() || std::any_of(backups.begin(), backups.end(), [](const auto& bytes) {
                        return bytes.ends_with("Er\r\n");
                    }));
    }
}

// Who is at work is left to it, as long as he shows that he lives; a dead one's work is another's.
TEST(Datenordner_ersetzen, einer_zur_Zeit) {
    const Text amt = u".000000 000000 I.dat.1.inhaber", zeile = u"PLATZ9-7|11:59:00|eve|/home/eve/\r\n";
    for (const bool am_Start : {false, true})
        for (const bool lebt : {false, true}) {
            auto p = alter_Stand();
            p->lege_Backup(I, NEU);
            p->fs.schreibe(p->sicherung(amt), zu_utf8(zeile));
            int gewartet = 0;
            p->dialog.beim_Warten = [&] {
                ++gewartet;
                if (lebt) p->fs.schreibe(p->sicherung(amt), zu_utf8(zeile) + std::to_string(gewartet));
            };
            bool getan = false;
            Text text = abgebrochen([&] {
                getan = am_Start ? p->ersatz.Begonnenes_abschließen() : p->ersetzen(p->sicherung(T));
            });
            EXPECT_EQ(getan, !lebt);
            EXPECT_EQ(p->ersatz.steht_aus(), lebt);
            EXPECT_GE(gewartet, lebt ? 1 : 60);
            for (const Text& meldung : p->Meldungen())
                text += meldung;
            EXPECT_TRUE(!lebt || enthält(text, u"('eve' auf Rechner PLATZ9)")) << zu_utf8(text);
            EXPECT_EQ(p->fs.gibt_es(p->sicherung(amt)), lebt);
        }
    auto p = alter_Stand(); // this machine's own process that was ended is waited for by nobody
    p->fs.schreibe(p->sicherung(amt), zu_utf8(u"PLATZ1-99|11:59:00|Muster|" + p->platz.Systempfad + u"\r\n"));
    p->dialog.beim_Warten = [] { FAIL(); };
    EXPECT_TRUE(p->ersetzen(p->sicherung(T)));
    p->fs.störe({.aufruf = "remove", .nummer = 70, .dauernd = true});
    EXPECT_FALSE(p->ersetzen(p->sicherung(T)));
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
    verknüpfe("nichts", u"Backups/000000 000000 I.dat");
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
