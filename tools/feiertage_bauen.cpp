// kalvora-feiertage <data folder> <output folder>: makes the delivered files KalvoraFtg.dat (holiday rules of
// each country) and KalvoraSetup.dat out of the readable texts. The same texts give the same bytes. A fault
// in a text is told with file and line, and nothing is written.
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <set>

#include "base/cp1252.h"
#include "calendar/feiertage.h"
#include "files/zeilen.h"

namespace {

using namespace kalvora;
namespace fs = std::filesystem;

struct Textfehler {
    fs::path datei;
    int zeile;
    std::string text;
};

struct Zeile {
    int nummer;
    Text text;
};

// The lines without comments and, at the end, without empty ones.
std::vector<Zeile> lesen(const fs::path& datei) {
    std::ifstream strom(datei, std::ios::binary);
    if (!strom) throw Textfehler{datei, 0, "cannot be read"};
    std::vector<Zeile> zeilen;
    std::string roh;
    for (int nummer = 1; std::getline(strom, roh); ++nummer) {
        if (!roh.empty() && roh.back() == '\r') roh.pop_back();
        if (roh.starts_with('#')) continue;
        const Text text = aus_utf8(roh);
        if (!cp1252_darstellbar(text) ||
            std::any_of(text.begin(), text.end(), [](char16_t c) { return c < 32; }))
            throw Textfehler{datei, nummer, "holds a character that Windows-1252 lacks, or is no UTF-8"};
        zeilen.push_back({nummer, text});
    }
    return zeilen;
}

bool ist_Kopf(const Text& text) {
    return text.size() > 6 && text.front() == u'[' && nur_Ziffern(mitte(text, 2, 3)) &&
           mitte(text, 2, 3).size() == 3 && zeichen(text, 5) == u':' && text.back() == u']';
}

std::vector<Text> Land_lesen(const fs::path& datei, std::set<Text>& codes) {
    auto zeilen = lesen(datei);
    while (!zeilen.empty() && zeilen.back().text.empty())
        zeilen.pop_back();
    if (zeilen.empty() || !ist_Kopf(zeilen.front().text))
        throw Textfehler{datei, zeilen.empty() ? 1 : zeilen.front().nummer, "expected [ccc:Country]"};
    if (!codes.insert(Text(mitte(zeilen.front().text, 2, 3))).second)
        throw Textfehler{datei, zeilen.front().nummer, "this country code is taken by another file"};
    for (int r = 1; r < static_cast<int>(zeilen.size()); ++r) {
        const Zeile& zeile = zeilen[static_cast<size_t>(r)];
        if (r > FEIERTAGSREGELN_LAND) throw Textfehler{datei, zeile.nummer, "is one rule too many"};
        if (!Feiertagsregel_lesbar(zeile.text, r))
            throw Textfehler{datei, zeile.nummer, "is no holiday rule"};
    }
    if (zeilen.size() != 1 + static_cast<size_t>(FEIERTAGSREGELN_LAND))
        throw Textfehler{datei, zeilen.back().nummer, "is the last one, but there must be 16 rules"};
    std::vector<Text> block;
    for (Zeile& zeile : zeilen)
        block.push_back(std::move(zeile.text));
    return block;
}

std::vector<Text> Feiertagszeilen(const fs::path& ordner) {
    std::vector<fs::path> dateien;
    for (const auto& eintrag : fs::directory_iterator(ordner))
        if (eintrag.path().extension() == ".txt") dateien.push_back(eintrag.path());
    std::sort(dateien.begin(), dateien.end());
    if (dateien.empty()) throw Textfehler{ordner, 0, "holds no country"};
    std::vector<Text> zeilen{u"[KalvoraFeiertageDat]"};
    std::set<Text> codes;
    for (const fs::path& datei : dateien)
        for (Text& zeile : Land_lesen(datei, codes))
            zeilen.push_back(std::move(zeile));
    return zeilen;
}

std::vector<Text> Einrichtungszeilen(const fs::path& datei) {
    std::vector<Text> zeilen;
    for (Zeile& zeile : lesen(datei))
        zeilen.push_back(std::move(zeile.text));
    if (zeilen.empty() || zeilen.front() != u"[Firma]") throw Textfehler{datei, 1, "expected [Firma]"};
    if (zeilen.size() < 3) throw Textfehler{datei, 2, "company and its second line are missing"};
    return zeilen;
}

std::string verschlüsselt(const std::vector<Text>& zeilen) {
    Schlüsselquelle schlüssel(1252); // always the same: builds are reproducible
    std::string bytes;
    for (const Text& zeile : zeilen)
        Zeile_verschlüsseln(bytes, zu_cp1252(zeile), schlüssel.nächster());
    return bytes;
}

void schreiben(const fs::path& datei, const std::string& bytes) {
    std::ofstream strom(datei, std::ios::binary | std::ios::trunc);
    strom.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    strom.close();
    if (!strom) throw Textfehler{datei, 0, "cannot be written"};
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "Use: kalvora-feiertage <data folder> <output folder>\n";
        return EXIT_FAILURE;
    }
    const fs::path daten = argv[1];
    const fs::path ziel = argv[2];
    try {
        const std::string feiertage = verschlüsselt(Feiertagszeilen(daten / "feiertage"));
        const std::string einrichtung = verschlüsselt(Einrichtungszeilen(daten / "einrichtung.txt"));
        schreiben(ziel / "KalvoraFtg.dat", feiertage);
        schreiben(ziel / "KalvoraSetup.dat", einrichtung);
    } catch (const Textfehler& fehler) {
        std::cerr << fehler.datei.string();
        if (fehler.zeile > 0) std::cerr << ":" << fehler.zeile;
        std::cerr << ": " << fehler.text << "\n";
        return EXIT_FAILURE;
    } catch (const std::exception& fehler) {
        std::cerr << fehler.what() << "\n";
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
