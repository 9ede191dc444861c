// What the fuzz targets share: the file that the fuzzer's bytes stand for, and the rules that hold for every
// reader: nothing but the program's own exceptions leaves it, every handle is closed, and nothing on the disk
// has changed. A target is the one function `prüfe`.
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "hilfen/arbeitsplatz.h"

namespace kalvora::fuzz {

// A broken promise; libFuzzer keeps the input.
inline void fordere(bool erfüllt, const char* was) {
    if (erfüllt) return;
    std::fprintf(stderr, "broken: %s\n", was);
    std::abort();
}

// The input: a byte that chooses, then the file. With an odd choice ("1") the file is the stored form of the
// plain lines that the bytes are, with an even one ("0") the bytes themselves. The other bits are the
// target's.
struct Eingabe {
    std::string_view alles, rest;
    std::uint8_t wahl = 0;
    std::string datei;

    explicit Eingabe(std::string_view bytes) : alles(bytes) {
        if (bytes.empty()) return;
        wahl = static_cast<std::uint8_t>(bytes[0]);
        rest = bytes.substr(1);
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
inline Abbild abbild(Prüfplatz& p, const Text& ausgenommen = u"/nichts") {
    Abbild alle = p.fs.platte().abbild();
    std::erase_if(alle, [&](const auto& datei) { return datei.first.starts_with(ausgenommen); });
    return alle;
}

// Runs a reader under the rules above; true when it took the file. `ausgenommen`: what it may change.
template <class F>
bool lesen(Prüfplatz& p, F&& leser, const Text& ausgenommen = u"/nichts") {
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
void hin_und_zurück(Prüfplatz& p, const Text& pfad, Lesen&& leser, Schreiben&& schreiber) {
    schreiber();
    const auto erste = p.zeilen(pfad);
    fordere(lesen(p, leser), "what was written is not read again");
    schreiber();
    fordere(p.zeilen(pfad) == erste, "written twice, and not the same");
}

void prüfe(const Eingabe& eingabe);

} // namespace kalvora::fuzz

// NOLINTNEXTLINE(misc-definitions-in-headers): each target is a program of one source
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t größe) {
    kalvora::fuzz::prüfe(kalvora::fuzz::Eingabe({reinterpret_cast<const char*>(daten), größe}));
    return 0;
}
