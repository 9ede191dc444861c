// A made-up company on a disk in memory, the damage that can befall each of its files, and whole runs of the
// program on it, driven by a console script.
#pragma once

#include <gtest/gtest.h>

#include <sstream>

#include "files/zeilen.h"
#include "frame/programm.h"
#include "hilfen/speicher_dateisystem.h"
#include "hilfen/test_uhr.h"
#include "hilfen/test_umgebung.h"
#include "ui/konsole/konsolen_fenstersystem.h"

namespace kalvora {

inline const Text DATEN = u"/srv/x/Data/", SYSTEM = u"/home/muster/kalvora/", PROGRAMM = u"/opt/kalvora/";

enum class Schaden {
    leer,
    halb,        // cut behind a line
    mitten,      // cut within a line
    doppelt,     // the content twice
    Kopf,        // another head
    fremd,       // bytes that are none of the program's
    lange_Zeile, // of a megabyte, at the end
    fehlt,
    Ordner, // a folder in its place
    unlesbar,
};
inline constexpr int SCHÄDEN = 10;

inline const char* Name(Schaden s) {
    constexpr const char* NAMEN[] = {"leer",  "halb",        "mitten", "doppelt", "Kopf",
                                     "fremd", "lange_Zeile", "fehlt",  "Ordner",  "unlesbar"};
    return NAMEN[static_cast<int>(s)];
}

inline std::string gespeichert(std::string_view klar) {
    std::string bytes;
    Zeile_verschlüsseln(bytes, klar, 99);
    return bytes;
}

// Behind the line end that comes next to the middle.
inline std::size_t Mitte(const std::string& bytes) {
    const std::size_t ende = bytes.rfind('\n', bytes.size() / 2);
    return ende == std::string::npos ? 0 : ende + 1;
}

inline std::string beschädigt(const std::string& ganz, Schaden s) {
    const std::size_t mitte = Mitte(ganz);
    switch (s) {
    case Schaden::leer: return {};
    case Schaden::halb: return ganz.substr(0, mitte);
    case Schaden::mitten: return ganz.substr(0, mitte + 2);
    case Schaden::doppelt: return ganz + ganz;
    case Schaden::Kopf: return gespeichert("[Falsch]") + ganz.substr(ganz.find('\n') + 1);
    case Schaden::fremd:
        return "\x7F"
               "ELF\x02\x01" +
               std::string(400, '\x01') + "\r\n\r\n\x80\xFF" + ganz;
    case Schaden::lange_Zeile: return ganz + gespeichert(std::string(1'000'000, 'x'));
    default: return ganz;
    }
}

// Another disk with the same content.
inline std::shared_ptr<SpeicherPlatte> Abschrift(const SpeicherPlatte& platte) {
    auto neu = std::make_shared<SpeicherPlatte>(platte);
    for (auto& [pfad, datei] : neu->knoten())
        datei = std::make_shared<SpeicherDatei>(*datei);
    return neu;
}

struct Lauf {
    int status = 0;
    std::vector<std::string>
        hinweise; // the messages, but for those that ask to wait for another one's writing
    std::string protokoll;
};

// One workstation's runs on a disk.
class Schauplatz {
public:
    explicit Schauplatz(std::shared_ptr<SpeicherPlatte> platte) : fs(std::move(platte)) {}
    SpeicherDateisystem fs;

    void beschädigen(const Text& pfad, Schaden s) {
        const std::string ganz = fs.inhalt(pfad).value_or("");
        if (s == Schaden::fehlt || s == Schaden::Ordner) fs.platte().entferne(pfad);
        if (s == Schaden::Ordner) fs.platte().mache_ordner(pfad);
        if (s == Schaden::unlesbar)
            fs.störe({"open", pfad.substr(pfad.rfind(u'/') + 1), 1, Wirkung::Fehler, 70, 0, true});
        else if (s != Schaden::fehlt && s != Schaden::Ordner)
            fs.schreibe(pfad, beschädigt(ganz, s));
    }

    Lauf laufen(const std::string& skript, const std::vector<Text>& aufruf = {u"/nowelcomescreen"}) {
        Lauf lauf;
        Protokoll protokoll([&](std::string_view zeile) { lauf.protokoll += zeile; });
        std::istringstream strom(skript);
        Stromquelle quelle(strom, true);
        TestUhr echte;
        Skriptuhr uhr(echte, {{2026, 11, 4}, 8, 0, 0});
        KonsolenFenstersystem system(protokoll, quelle, uhr);
        TestUmgebung umgebung;
        umgebung.variablen[u"KALVORA_SYSTEMPFAD"] = SYSTEM;
        lauf.status = Programm({fs, uhr, umgebung}, system, aufruf).ausführen();
        std::istringstream zeilen(lauf.protokoll);
        for (std::string zeile; std::getline(zeilen, zeile);)
            if (zeile.starts_with("HINWEIS ") && zeile.find("gerade von jemand anderem") == std::string::npos)
                lauf.hinweise.push_back(zeile);
        return lauf;
    }

    // What stands on the disk, folders as "<Ordner>", without what a run may write.
    std::map<Text, std::string> bestand(const std::vector<Text>& ohne) {
        std::map<Text, std::string> alle;
        for (const auto& [pfad, knoten] : fs.platte().knoten()) {
            const auto gehört_dazu = [&p = pfad](const Text& anfang) { return p.starts_with(anfang); };
            if (std::none_of(ohne.begin(), ohne.end(), gehört_dazu))
                alle[pfad] = knoten->info.folder ? "<Ordner>" : knoten->bytes;
        }
        return alle;
    }
};

// What differs, by name, so that a failure does not print whole files.
inline std::vector<std::string> Unterschiede(const std::map<Text, std::string>& vorher,
                                             const std::map<Text, std::string>& nachher) {
    std::vector<std::string> namen;
    for (const auto& [pfad, bytes] : vorher) {
        const auto hit = nachher.find(pfad);
        if (hit == nachher.end())
            namen.push_back("gone: " + zu_utf8(pfad));
        else if (hit->second != bytes)
            namen.push_back("changed: " + zu_utf8(pfad));
    }
    for (const auto& [pfad, bytes] : nachher)
        if (!vorher.contains(pfad)) namen.push_back("new: " + zu_utf8(pfad));
    return namen;
}

} // namespace kalvora
