// Restore points: the window that offers them, and what is asked and made safe before one is put in place.
#include "sicherungsplatz.h"

namespace kalvora {
namespace {

using Zeilen = std::vector<Text>;

// The scripts press OK and Esc on the newest one.
TEST(frmRecovery, Liste_und_Wahl) {
    struct Fall {
        bool Rückblick, aus_Namen;
        Zeilen erwartet;
        Text letzter; // name of the last one
    };
    const Fall fälle[]{
        {false,
         false,
         {u"Sicherung vom 17.11.26, 08:00:05 Uhr", u"Sicherung vom 16.11.26, 23:59:59 Uhr"},
         u"261118 070809 m.DAT"},
        {false,
         true,
         {u"Sicherung vom 18.11.26, 07:08:09 Uhr", u"Sicherung vom 05.03.24, 08:14:02 Uhr"},
         u"240305 081402 T.dat"},
        {true, true, {u"Sicherung vom 29.02.27, 10:00:00 Uhr"}, u"270229 100000 J.dat"},
    };
    for (const Fall& f : fälle) {
        Sicherungsplatz p;
        p.platz.Datenrückblick_aktiv = f.Rückblick;
        const auto lege = [&](TextView name, Zeitpunkt z) {
            p.uhr.stelle(z);
            p.fs.schreibe(p.sicherung(name), "x");
            p.fs.platte().setze_stempel(p.sicherung(name), p.uhr.stempel());
        };
        lege(u"240305 081402 T.dat", {{2026, 11, 17}, 8, 0, 5});
        lege(u"261118 070809 m.DAT", {{2026, 11, 16}, 23, 59, 59});
        for (const TextView name : {u"270229 100000 J.dat", u"261117 120000 F.dat", u"000000 000000 I.dat",
                                    u"Kopie.dat", u"261117 120000 T.dat.alt"})
            lege(name, {{2026, 11, 18}, 8, 0, 0});
        p.dialog.im_Dialog = [&](Form& form) {
            auto& fenster = dynamic_cast<frmRecovery&>(form);
            EXPECT_EQ(fenster.cmbDateiliste.items(), f.erwartet);
            EXPECT_EQ(fenster.cmbDateiliste.selected(), 0);
            EXPECT_FALSE(fenster.cmdAuswahl1.enabled());
            fenster.cmbDateiliste.user_select(static_cast<int>(f.erwartet.size()) - 1);
            EXPECT_TRUE(fenster.cmdAuswahl2.user_click());
        };
        EXPECT_EQ(Sicherung_wählen(p.dateien, p.platz, p.wieder, f.aus_Namen), f.letzter);
    }
    Sicherungsplatz p;
    p.dialog.im_Dialog = [](Form& form) { dynamic_cast<frmRecovery&>(form).cmdAuswahl2.user_click(); };
    EXPECT_EQ(Sicherung_wählen(p.dateien, p.platz, p.wieder), u"") << "none is there";
}

// A company as it was on the 10th stands in a backup, and goes on until today.
struct Übernahmeplatz : Sicherungsplatz {
    const Text punkt = u"261110 120000 T.dat";
    Firma firma;
    Übernahmeplatz() {
        platz.Benutzername = u"chef";
        dialog.antwort = Antwort::Ja;
    }
    void anlegen(const std::function<void(Sicherungsplatz&)>& damals = {}) {
        firma.anlegen(fs, platz.Datenpfad);
        if (damals) damals(*this);
        EXPECT_TRUE(backups.Backup_erstellen(u"T"));
        fs.rename(sicherung(backups.Backupname()), sicherung(punkt));
        fs.platte().setze_stempel(sicherung(punkt), TestUhr({{2026, 11, 10}, 12, 34, 56}).stempel());
        firma = {};
        firma.konfig.Firma = u"Heute";
        firma.anlegen(fs, platz.Datenpfad);
        fs.schreibe(daten(u"2611 261116 Data.dat"), als_Datei(Monat({A(u"anna", u"1")})));
        uhr.weiter(60);
        konfig.Konfigdaten_lesen();
    }
};

TEST(Datenübernahme, Wiederherstellungspunkt) {
    for (const bool Überstunden : {false, true}) {
        Übernahmeplatz p;
        p.firma.konfig.Firma = u"Damals";
        p.anlegen([&](Sicherungsplatz& q) {
            if (Überstunden) q.fs.schreibe(q.daten(u"ÜStunden 2026.dat"), als_Datei({u"x"}));
        });
        p.fs.schreibe(p.sicherung(u"000000 000000 I.dat"), "Rest");
        p.fs.platte().zeit += 301'000'000'000; // nobody is at work with it any more
        ASSERT_TRUE(p.übernahme.Wiederherstellungspunkt(p.punkt));
        EXPECT_TRUE(p.dialog.hinweise.empty());
        EXPECT_EQ(p.dialog.fragen.size(), 1U);
        EXPECT_EQ(p.konfig.werte().Firma, u"Damals");
        EXPECT_EQ(p.zeilen(p.daten(u"Konfigdaten.dat"))[4], u"Damals");
        EXPECT_FALSE(p.fs.gibt_es(p.daten(u"2611 261116 Data.dat")));
        // What was left, and what stands now: damage of this day is repaired from that.
        EXPECT_EQ(p.namen(p.platz.Backuppfad),
                  (Zeilen{p.punkt, u"261116 120100 T.dat", u"261116 120101 T.dat"}));
        EXPECT_EQ(p.wieder.Sicherungen().front(), u"261116 120101 T.dat");
        const std::string damals = *p.fs.inhalt(p.sicherung(p.punkt));
        EXPECT_EQ(als_Zeilen(*p.fs.inhalt(p.sicherung(u"261116 120101 T.dat"))), als_Zeilen(damals));
        // Whoever has read this version while it was longer must not take it for a cut one.
        const Text monat = u"2611 261110 Data.dat";
        const auto bytes = p.in_Sicherungen(monat);
        EXPECT_EQ(*p.fs.inhalt(p.daten(monat)), bytes.back());
        EXPECT_NE(bytes.back().substr(0, 8), bytes.front().substr(0, 8));
        const Text log = u"Datenordner wiederhergestellt mit Sicherung vom 10.11.26, 12:34:56 Uhr";
        EXPECT_TRUE(p.zeilen(p.platz.Logpfad + u"2611 Kalvora.log").back().ends_with(u"|KalvoAdmin|" + log));
        const auto ÜStd = p.zeilen(p.platz.Logpfad + u"2611 ÜStunden.log");
        EXPECT_EQ(!ÜStd.empty() && ÜStd.back().ends_with(log), Überstunden);
        // And back again: the backup made before holds what was.
        p.uhr.weiter(60);
        p.fs.platte().setze_stempel(p.sicherung(u"261116 120100 T.dat"), p.uhr.stempel());
        ASSERT_TRUE(p.übernahme.Wiederherstellungspunkt(u"261116 120100 T.dat"));
        EXPECT_EQ(p.konfig.werte().Firma, u"Heute");
        EXPECT_TRUE(p.fs.gibt_es(p.daten(u"2611 261116 Data.dat")));
    }
}

// The start that finishes an interrupted one knows which it was.
TEST(Datenübernahme, unterbrochen) {
    Übernahmeplatz p;
    p.anlegen();
    p.fs.störe({.aufruf = "write", .maske = u".Konfig*", .wirkung = Wirkung::Ende});
    EXPECT_THROW(p.übernahme.Wiederherstellungspunkt(p.punkt), Programmende);
    Sicherungsplatz q(p.fs.geteilte_platte());
    EXPECT_TRUE(q.ersatz.Begonnenes_abschließen());
    EXPECT_TRUE(q.zeilen(q.platz.Logpfad + u"2611 Kalvora.log")
                    .back()
                    .ends_with(u"|Datenordner wiederhergestellt mit Sicherung vom 10.11.26, 12:34:56 Uhr"));
}

TEST(Datenübernahme, lehnt_ab_ohne_etwas_zu_ändern) {
    using Tat = std::function<void(Übernahmeplatz&)>;
    struct Fall {
        const char* was;
        Tat damals, heute;
        Text meldung; // its beginning; empty: none
        bool gefragt = false;
    };
    const auto kaputt = [](TextView name) -> Tat {
        return [=](Übernahmeplatz& p) { p.fs.schreibe(p.daten(name), "kaputt\r\n"); };
    };
    const auto ohne = [](TextView maske) -> Tat {
        return [=](Übernahmeplatz& p) {
            for (const Text& name : Dateien(p.fs, p.platz.Datenpfad, maske))
                p.fs.platte().entferne(p.daten(name));
        };
    };
    const Tat nichts = [](Übernahmeplatz&) {};
    const Tat kein_Container = [](Übernahmeplatz& p) { p.fs.schreibe(p.sicherung(p.punkt), "x"); };
    const Tat als_anna = [](Übernahmeplatz& p) { p.platz.Benutzername = u"anna"; };
    const Tat sagt_Nein = [](Übernahmeplatz& p) { p.dialog.antwort = Antwort::Nein; };
    const Tat Ordner_da = [](Übernahmeplatz& p) { p.fs.platte().mache_ordner(p.sicherung(REDOKOPIE)); };
    const Tat bleibt = [](Übernahmeplatz& p) {
        p.fs.störe({.aufruf = "open", .maske = u"2601*", .nummer = 70, .dauernd = true});
        p.fs.störe({.aufruf = "remove", .maske = u"000*", .nummer = 70});
    };
    const Text kein_Platz =
        u"Fehler beim Zwischenspeichern von Dateien im Ordner '/srv/x/Data/Backups'. Ursache: Fehler Nr. ";
    const Fall fälle[]{
        {"no container", nichts, kein_Container, u"Bei der Backupdatei handelt es sich um keine"},
        {"configuration", kaputt(u"Konfigdaten.dat"), nichts, u"Die Datei 'Konfigdaten.dat' ist in dieser"},
        {"no holidays", ohne({u"Feiertage.dat"}), nichts, u"Die Datei 'Feiertage.dat' fehlt in dieser"},
        {"no administrator then", nichts, als_anna,
         u"Funktion nur möglich mit Windows-Benutzername(n): chef"},
        {"No", nichts, sagt_Nein, u"", true},
        {"a month damaged", kaputt(u"2601 261110 Data.dat"), nichts,
         u"In dieser Sicherung ist beschädigt: '2601 261110 Data.dat'. Es wurde nichts verändert."},
        {"months missing", ohne(u"2?01 261110 Data.dat"), nichts,
         u"In dieser Sicherung fehlen die An-/Abwesenheitsdaten der Monate: 01.2025, 01.2026. Es wurde"},
        {"no backup, and the copy cannot go again at once", nichts, bleibt, kein_Platz + u"70 beim Lesen von",
         true},
        {"a copy that stays", nichts, Ordner_da, u"Löschen alter Dateien im Ordner", true},
    };
    for (const Fall& f : fälle) {
        Übernahmeplatz p;
        p.anlegen([&](Sicherungsplatz&) { f.damals(p); });
        f.heute(p);
        const auto vorher = p.Zustand();
        EXPECT_FALSE(p.übernahme.Wiederherstellungspunkt(p.punkt)) << f.was;
        const auto meldungen = p.Meldungen();
        EXPECT_EQ(meldungen.size(), f.meldung.empty() ? 0U : 1U) << f.was;
        EXPECT_TRUE(meldungen.empty() || meldungen[0].starts_with(f.meldung)) << f.was;
        EXPECT_EQ(p.dialog.fragen.size(), f.gefragt ? 1U : 0U) << f.was;
        auto backups = p.namen(p.platz.Backuppfad);
        std::erase_if(backups, [](const Text& name) { return name.starts_with(u'.'); });
        EXPECT_EQ(backups, Zeilen{p.punkt}) << f.was;
        EXPECT_EQ(p.Zustand(), vorher) << f.was;
        EXPECT_FALSE(p.ersatz.steht_aus()) << f.was;
        EXPECT_EQ(p.fs.offene(), 0);
    }
    Übernahmeplatz p; // whoever has no administrators lets everybody
    p.firma.konfig.Administratoren = {u"NoAdmins"};
    p.anlegen();
    p.platz.Benutzername = u"anna";
    EXPECT_TRUE(p.übernahme.Wiederherstellungspunkt(p.punkt));
}

// At a start the same is asked of the redo copy: one that would empty the folder is put aside.
TEST(Datenübernahme, unbrauchbare_Kopie_am_Start) {
    struct Fall {
        Mitglieder mitglieder; // of the copy; none: those of the restore point
        Störung störung;
        bool weggelegt = false;
        int abbruch = 0; // its number
    };
    const Störung keine{.aufruf = "keiner"};
    const Fall fälle[]{
        {{{u"a.dat", "x\r\n"}}, keine, true},
        {{}, keine},
        {{}, {.aufruf = "read", .maske = u"000000*.dat", .nummer = 57, .dauernd = true}, false, 57},
        {{}, {.aufruf = "open", .maske = u"000000*.dat", .nummer = 67, .dauernd = true}, false, 67},
        {{}, {.aufruf = "read", .maske = u"000000*.dat", .nummer = 57}},
        {{}, {.aufruf = "info", .maske = u"000000*.dat", .nummer = 70, .dauernd = true}, false, 70},
    };
    for (const Fall& f : fälle) {
        Übernahmeplatz p;
        p.anlegen();
        if (f.mitglieder.empty())
            p.fs.schreibe(p.sicherung(REDOKOPIE), *p.fs.inhalt(p.sicherung(p.punkt)));
        else
            p.lege_Backup(REDOKOPIE, f.mitglieder);
        Ordnerersatz ersatz(p.dateien, p.platz, p.wieder, p.backups, p.log);
        const auto vorher = p.Zustand();
        p.fs.störe(f.störung);
        bool fertig = false;
        const Text abbruch = abgebrochen([&] { fertig = ersatz.Begonnenes_abschließen(); });
        p.fs.störe_nicht();
        EXPECT_EQ(abbruch.empty(), f.abbruch == 0) << zu_utf8(abbruch);
        EXPECT_TRUE(f.abbruch == 0 || enthält(abbruch, u"Fehler Nr. " + ziffern(f.abbruch)));
        EXPECT_TRUE(f.abbruch != 70 || enthält(abbruch, u"Bitten Sie einen Administrator"))
            << zu_utf8(abbruch);
        EXPECT_EQ(fertig, f.abbruch == 0 && !f.weggelegt);
        EXPECT_EQ(p.ersatz.steht_aus(), f.abbruch != 0);
        EXPECT_EQ(p.fs.gibt_es(p.sicherung(u".000000 000000 I.dat.unlesbar")), f.weggelegt);
        EXPECT_TRUE(fertig || p.Zustand() == vorher);
        if (f.weggelegt) {
            EXPECT_TRUE(
                enthält(p.Meldungen().at(0), u"Die Datei 'Konfigdaten.dat' fehlt in dieser Sicherung"));
        }
    }
}

} // namespace
} // namespace kalvora
