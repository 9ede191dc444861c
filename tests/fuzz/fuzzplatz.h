// What the fuzz targets share: a workstation on a disk in memory, the file that the fuzzer's bytes stand for,
// and the rules that hold for every reader: nothing but the program's own exceptions leaves it, every handle
// is closed, and nothing on the disk has changed.
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "base/cp1252.h"
#include "files/inidatei.h"
#include "files/mitarbeiterdaten.h"
#include "files/ordner.h"
#include "hilfen/speicher_dateisystem.h"
#include "hilfen/test_uhr.h"

namespace kalvora::fuzz {

// A broken promise; libFuzzer keeps the input.
inline void fordere(bool erfüllt, const char* was) {
    if (erfüllt) return;
    std::fprintf(stderr, "broken: %s\n", was);
    std::abort();
}

class StilleFenster : public WindowSystem {
public:
    int hinweise = 0;
    void open(Form&) override {}
    void close(Form&) override {}
    void run(Form&) override {}
    void run_modal(Form&) override {}
    void quit() override {}
    void message(const Text&) override { ++hinweise; }
    Antwort question(const Text&, const Frageart& art) override { return art.vorgabe; }
    void process_events() override {}
    void wait(double) override {}
    void beep() override {}
    void set_pointer(Mauszeiger) override {}
    bool active(const Form&) override { return true; }
};

struct Fuzzplatz {
    SpeicherDateisystem fs;
    TestUhr uhr;
    StilleFenster fenster;
    Application app{fenster};
    Dateiwerk werk{fs, uhr, u"PLATZ1-4711"};
    Dateikanal kanal{werk, app, 1};
    Arbeitsplatz platz;
    Konfigdaten konfig{kanal, platz};
    Mitarbeiterdaten personal{kanal, platz, konfig};
    Logbuch log{kanal, platz, konfig};

    Fuzzplatz() {
        platz.Heute = Datum_aus(2026, 11, 16);
        platz.Heute_S = u"261116";
        platz.Startjahr = 2025;
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
};

inline std::string als_Datei(const std::vector<Text>& zeilen) {
    std::string bytes;
    for (const Text& zeile : zeilen)
        Zeile_verschlüsseln(bytes, zu_cp1252(zeile), 77);
    return bytes;
}

inline std::vector<std::string> als_Zeilen(std::string bytes) {
    std::vector<std::string> zeilen;
    Rohzeilen roh(bytes.data(), bytes.size());
    while (const auto zeile = roh.nächste())
        zeilen.emplace_back(zeile->länge == 0 ? std::string_view()
                                              : Zeile_entschlüsseln(zeile->anfang, zeile->länge));
    return zeilen;
}

// The input: a byte that chooses, then the file. With an odd choice ("1") the file is the stored form of the
// plain lines that the bytes are, with an even one ("0") the bytes themselves. The other bits are the
// target's.
struct Eingabe {
    std::uint8_t wahl = 0;
    std::string_view rest;
    std::string datei;

    Eingabe(const std::uint8_t* daten, std::size_t größe) {
        if (größe == 0) return;
        wahl = daten[0];
        rest = {reinterpret_cast<const char*>(daten) + 1, größe - 1};
        datei = (wahl & 1) != 0 ? verschlüsselt() : std::string(rest);
    }
    std::vector<Text> zeilen() const {
        std::vector<Text> alle = teilen(aus_cp1252(rest), u'\n');
        if (!alle.empty() && alle.back().empty()) alle.pop_back();
        return alle;
    }

private:
    std::string verschlüsselt() const {
        std::string bytes = als_Datei(zeilen());
        if (!rest.ends_with('\n') && bytes.size() > 1) bytes.resize(bytes.size() - 2); // a cut file
        return bytes;
    }
};

using Abbild = std::map<Text, std::string>;

// The files as they stand, without those below or named `ausgenommen`.
inline Abbild abbild(Fuzzplatz& p, const Text& ausgenommen = u"/nichts") {
    Abbild alle = p.fs.platte().abbild();
    std::erase_if(alle, [&](const auto& datei) { return datei.first.starts_with(ausgenommen); });
    return alle;
}

// Runs a reader under the rules above; true when it took the file. `ausgenommen`: what it may change.
template <class F>
bool lesen(Fuzzplatz& p, F&& leser, const Text& ausgenommen = u"/nichts") {
    const Abbild vorher = abbild(p, ausgenommen);
    bool genommen = false;
    try {
        leser();
        genommen = true;
    } catch (const Dateischaden&) {
    } catch (const Programmabbruch&) {
    } catch (const Laufzeitfehler& fehler) {
        fordere(ist_Dateifehler(fehler.nummer), fehler.what());
    }
    p.kanal.verwerfen();
    fordere(p.fs.offene() == 0, "a handle stayed open");
    fordere(abbild(p, ausgenommen) == vorher, "a reader changed the disk");
    return genommen;
}

// A file that was taken: written and read again it says the same.
template <class Lesen, class Schreiben>
void hin_und_zurück(Fuzzplatz& p, const Text& pfad, Lesen&& leser, Schreiben&& schreiber) {
    schreiber();
    const auto erste = als_Zeilen(p.fs.inhalt(pfad).value_or(""));
    fordere(lesen(p, leser), "what was written is not read again");
    schreiber();
    fordere(als_Zeilen(p.fs.inhalt(pfad).value_or("")) == erste, "written twice, and not the same");
}

} // namespace kalvora::fuzz
