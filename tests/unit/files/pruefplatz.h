// A workstation for the tests of the file floor: disk in memory, standing clock, windows that only note what
// they are told; and the vandalism that every reader has to stand.
#pragma once

#include <gtest/gtest.h>

#include <functional>

#include "base/cp1252.h"
#include "files/arbeitsplatz.h"
#include "files/dateikanal.h"
#include "files/ordner.h"
#include "hilfen/speicher_dateisystem.h"
#include "hilfen/test_uhr.h"

namespace kalvora {

class StummeFenster : public WindowSystem {
public:
    std::vector<Text> hinweise;
    std::function<void()> beim_Warten; // something happens on the disk meanwhile
    void open(Form&) override {}
    void close(Form&) override {}
    void run(Form&) override {}
    void run_modal(Form&) override {}
    void quit() override {}
    void message(const Text& text) override { hinweise.push_back(text); }
    Antwort question(const Text&, const Frageart& art) override { return art.vorgabe; }
    void process_events() override {}
    void wait(double) override {
        if (beim_Warten) beim_Warten();
    }
    void beep() override {}
    void set_pointer(Mauszeiger) override {}
    bool active(const Form&) override { return true; }
};

inline std::string als_Datei(const std::vector<Text>& zeilen, std::uint8_t schlüssel = 77) {
    std::string bytes;
    for (const Text& zeile : zeilen)
        Zeile_verschlüsseln(bytes, zu_cp1252(zeile), schlüssel);
    return bytes;
}

inline std::vector<Text> als_Zeilen(std::string bytes) {
    std::vector<Text> zeilen;
    Rohzeilen roh(bytes.data(), bytes.size());
    while (const auto zeile = roh.nächste())
        zeilen.push_back(zeile->länge == 0 ? Text(u"<leer>")
                                           : aus_cp1252(Zeile_entschlüsseln(zeile->anfang, zeile->länge)));
    return zeilen;
}

struct Prüfplatz {
    SpeicherDateisystem fs;
    TestUhr uhr;
    StummeFenster fenster;
    Application app{fenster};
    Dateiwerk werk{fs, uhr, u"PLATZ1-4711"};
    Dateikanal kanal{werk, app, 1};
    Arbeitsplatz platz;

    Prüfplatz() {
        platz.Heute = Datum_aus(2026, 11, 16);
        platz.Heute_S = u"261116";
        platz.Benutzername = u"Muster";
        platz.Programmpfad = u"/opt/kalvora/";
        platz.Systempfad = u"/home/muster/kalvora/";
        platz.Datenpfad = u"/srv/x/Data/";
        platz.Logpfad = u"/srv/x/Data/Logs/";
        platz.Inipfad = u"/srv/x/Data/IniFiles/";
        platz.Temppfad = u"/run/muster/";
        platz.Inidateiname = u"Kalvora_Muster.ini";
        for (const Text& ordner : {platz.Programmpfad, platz.Systempfad, platz.Datenpfad, platz.Logpfad,
                                   platz.Inipfad, platz.Temppfad})
            fs.platte().mache_ordner(ordner);
    }
    Text daten(TextView name) const { return platz.Datenpfad + Text(name); }
    void lege(const Text& pfad, const std::vector<Text>& zeilen) { fs.schreibe(pfad, als_Datei(zeilen)); }
    std::vector<Text> zeilen(const Text& pfad) const { return als_Zeilen(fs.inhalt(pfad).value_or("")); }
};

// What a read of the file came to: "" it was taken, else the message of the Dateischaden, which must name the
// file. Whatever else is thrown is the test's failure. Nothing on the disk may have changed.
inline Text ausgang(Prüfplatz& p, const Text& pfad, const std::function<void()>& lesen) {
    const auto vorher = p.fs.platte().abbild();
    Text text;
    try {
        lesen();
    } catch (const Dateischaden& schaden) {
        text = schaden.text();
        EXPECT_EQ(schaden.datei, pfad);
        EXPECT_TRUE(enthält(text, Dateiname_aus_Pfad(pfad))) << zu_utf8(text);
    } catch (const Fehler& fehler) {
        ADD_FAILURE() << "no Dateischaden: " << fehler.what();
        text = fehler.text();
    }
    EXPECT_EQ(p.fs.platte().abbild(), vorher);
    EXPECT_EQ(p.fs.offene(), 0);
    return text;
}

// Cuts the file at every byte, and puts foreign bytes in its place and into it. Each time it is taken or a
// Dateischaden; `unversehrt` is asked after each damage. A cut within a line must be noticed.
inline void verwüsten(Prüfplatz& p, const Text& pfad, const std::function<void()>& lesen,
                      const std::function<void()>& unversehrt) {
    const std::string ganz = *p.fs.inhalt(pfad);
    lesen();
    const auto probe = [&](const std::string& bytes) {
        p.fs.schreibe(pfad, bytes);
        const Text text = ausgang(p, pfad, lesen);
        if (!text.empty()) unversehrt();
        return text;
    };
    for (size_t n = 0; n < ganz.size(); ++n) {
        SCOPED_TRACE("cut at " + std::to_string(n));
        const Text text = probe(ganz.substr(0, n));
        const bool an_Zeilenende = n > 0 && ganz[n - 1] == '\n';
        EXPECT_TRUE(an_Zeilenende || !text.empty());
        if (text.empty()) { // a shorter file that is sound: back to the state that `unversehrt` knows
            p.fs.schreibe(pfad, ganz);
            lesen();
        }
    }
    EXPECT_FALSE(probe("\x7F\x45\x4C\x46" + std::string(300, '\x01')).empty());
    EXPECT_FALSE(probe("Hallo\r\n\r\n\r\n").empty());
    EXPECT_FALSE(probe(std::string(500, '\0')).empty());
    EXPECT_FALSE(probe(ganz + "\r\n").empty()) << "an empty line at the end";
    p.fs.schreibe(pfad, ganz);
    lesen();
}

} // namespace kalvora
