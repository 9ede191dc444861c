// Runs every *.skript of this folder through the console in this process, on a fresh data folder, and
// compares the transcript with the *.erwartet beside it. How a script says what it needs stands in
// docs/konsole.md. With KALVORA_SKRIPTE_NEU=1 in the environment the expected files are written anew instead.
#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <set>
#include <sstream>

#include "frame/programm.h"
#include "hilfen/arbeitsplatz.h"
#include "hilfen/temp_ordner.h"
#include "hilfen/test_umgebung.h"
#include "platform/posix/posix_filesystem.h"
#include "ui/konsole/konsolen_fenstersystem.h"

namespace kalvora {
namespace {

namespace fs = std::filesystem;

std::string ersetzt(const std::string& text, TextView alt, TextView neu) {
    return zu_utf8(Ersetzen(aus_utf8(text), Text(alt), Text(neu)));
}

std::string Dateitext(const fs::path& pfad) {
    std::ifstream datei(pfad, std::ios::binary);
    return {std::istreambuf_iterator<char>(datei), {}};
}

// --- the head of a script

// What the comment lines at the beginning ask for: "# aufruf: /d:041126 /path {ordner}".
struct Kopf {
    std::vector<Text> aufruf{u"/path", u"{ordner}"};
    std::vector<std::vector<Text>> vorläufe; // call parameters of runs that come first
    std::vector<std::string> firma;          // options of kalvora-firma; empty: no company
    Text benutzer = u"Muster";
    Zeitpunkt uhr{{2026, 11, 4}, 8, 0, 0};
    std::vector<std::vector<Text>> schäden; // "<path> <what>", done behind those runs
    std::vector<Text> inhalt;               // masks of data files whose lines are shown behind the end
};

std::vector<Text> Worte(TextView text) {
    std::vector<Text> worte;
    for (const Wort& wort : zerlegen(text).worte)
        worte.push_back(wort.text);
    return worte;
}

void Kopfzeile_lesen(const std::string& zeile, Kopf& kopf) {
    const auto hat = [&](const char* name) { return zeile.starts_with(std::string("# ") + name + ":"); };
    const Text wert(trimmen(aus_utf8(zeile.substr(std::min(zeile.size(), zeile.find(':') + 1)))));
    if (hat("aufruf")) kopf.aufruf = Worte(wert);
    if (hat("vorlauf")) kopf.vorläufe.push_back(Worte(wert));
    if (hat("benutzer")) kopf.benutzer = wert;
    if (hat("schaden")) kopf.schäden.push_back(Worte(wert));
    if (hat("inhalt")) kopf.inhalt.push_back(wert);
    if (hat("firma"))
        for (const Text& wunsch : Worte(wert)) {
            const auto teile = teilen(wunsch, u'=');
            kopf.firma.push_back("--" + zu_utf8(teile[0]));
            if (teile.size() > 1) kopf.firma.push_back(zu_utf8(teile[1]));
        }
    Zeitpunkt& z = kopf.uhr; // "04.11.2026 08:15"
    if (hat("uhr") && std::sscanf(zu_utf8(wert).c_str(), "%2d.%2d.%4d %2d:%2d", &z.tag.tag, &z.tag.monat,
                                  &z.tag.jahr, &z.stunde, &z.minute) != 5)
        throw std::runtime_error("not a time: " + zeile);
}

Kopf Kopf_lesen(const std::string& skript) {
    Kopf kopf;
    std::istringstream strom(skript);
    for (std::string zeile; std::getline(strom, zeile) && (zeile.empty() || zeile[0] == '#');)
        Kopfzeile_lesen(zeile, kopf);
    return kopf;
}

// --- the run

// The lines of the stored files, so that an expected transcript can show what reached the disk.
std::string Inhalte(const fs::path& ordner, const std::vector<Text>& masken) {
    std::string ergebnis;
    for (const Text& maske : masken) {
        std::set<std::string> gefunden;
        for (const auto& eintrag : fs::recursive_directory_iterator(ordner)) {
            const std::string name = eintrag.path().lexically_relative(ordner).string();
            if (eintrag.is_regular_file() && passt_auf_Maske(aus_utf8(name), maske)) gefunden.insert(name);
        }
        if (gefunden.empty()) ergebnis += "== " + zu_utf8(maske) + ": nichts gefunden\n";
        for (const std::string& name : gefunden) {
            ergebnis += "== " + name + "\n";
            for (const Text& zeile : als_Zeilen(Dateitext(ordner / name), u""))
                ergebnis += zu_utf8(maskiert(zeile)) + "\n";
        }
    }
    return ergebnis;
}

// Today and the user are those of the run unless the script says otherwise: the last word on an option
// counts.
bool Firma_gründen(const Kopf& kopf, const fs::path& ordner) {
    const Kalendertag& tag = kopf.uhr.tag;
    const Text heute = ziffern(tag.tag, 2) + ziffern(tag.monat, 2) + ziffern(tag.jahr % 100, 2);
    std::vector<std::string> worte{"--ziel",       ordner.string(), "--heute",
                                   zu_utf8(heute), "--benutzer",    zu_utf8(kopf.benutzer)};
    worte.insert(worte.end(), kopf.firma.begin(), kopf.firma.end());
    std::string befehl = "'" KALVORA_BIN_DIR "/kalvora-firma'";
    for (const std::string& wort : worte)
        befehl += " '" + wort + "'";
    return std::system((befehl + " >/dev/null").c_str()) == 0;
}

// What happens to a file or folder: it goes, is emptied or cut in half, its second byte changes, or it is
// made of the lines given.
void beschädigen(const fs::path& pfad, const std::vector<Text>& worte) {
    const Text was = worte.size() > 1 ? worte[1] : Text();
    if (was == u"weg") return fs::rename(pfad, pfad.string() + "-weg");
    std::string bytes = was == u"leer" || was == u"zeilen" ? std::string() : Dateitext(pfad);
    if (was == u"halb") bytes.resize(bytes.size() / 2);
    if (was == u"kopf") bytes.at(1) = static_cast<char>(bytes.at(1) ^ 0x10);
    for (std::size_t n = 2; n < worte.size(); ++n)
        bytes += zu_cp1252(worte[n]) + "\r\n";
    std::ofstream(pfad, std::ios::binary) << bytes;
}

// Transcript, exit status and the contents asked for; the temporary folder is "{ordner}".
std::string Skriptergebnis(const std::string& skript) {
    const Kopf kopf = Kopf_lesen(skript);
    const TempOrdner ordner;
    const Text hier = aus_utf8(ordner.ordner().string());
    fs::create_directories(ordner.ordner() / "temp");
    fs::current_path(ordner.ordner()); // the program of the script before left this process in its own
    TestUmgebung umgebung;
    umgebung.variablen = {{u"USERNAME", kopf.benutzer},
                          {u"KALVORA_SYSTEMPFAD", ordner.pfad(u"platz")},
                          {u"TEMP", ordner.pfad(u"temp")}};
    umgebung.programmordner = aus_utf8(KALVORA_BIN_DIR "/");
    if (!kopf.firma.empty() && !Firma_gründen(kopf, ordner.ordner())) return "kalvora-firma failed\n";
    PosixFileSystem dateien;
    const auto laufen = [&](std::vector<Text> aufruf, const std::string& kommandos, Protokoll& protokoll) {
        for (Text& wort : aufruf)
            wort = Ersetzen(wort, u"{ordner}", hier);
        std::istringstream strom(kommandos);
        Stromquelle quelle(strom, true);
        TestUhr echte;
        Skriptuhr uhr(echte, kopf.uhr);
        KonsolenFenstersystem system(protokoll, quelle, uhr);
        const int status = Programm({dateien, uhr, umgebung}, system, aufruf).ausführen();
        system.abschließen();
        return status;
    };
    Protokoll verworfen([](std::string_view) {});
    for (const std::vector<Text>& aufruf : kopf.vorläufe)
        laufen(aufruf, "", verworfen);
    for (const std::vector<Text>& schaden : kopf.schäden)
        if (!schaden.empty()) beschädigen(ordner.ordner() / zu_utf8(schaden[0]), schaden);
    std::string ausgabe;
    Protokoll protokoll([&](std::string_view zeile) { ausgabe += zeile; });
    const int status = laufen(kopf.aufruf, ersetzt(skript, u"{ordner}", hier), protokoll);
    const int ende = status != 0 ? 2 : protokoll.Fehlerzahl() > 0 ? 1 : 0;
    ausgabe += "STATUS " + std::to_string(ende) + "\n" + Inhalte(ordner.ordner(), kopf.inhalt);
    // Of a backup the time of the file is told, which no test can set.
    return std::regex_replace(ersetzt(ausgabe, hier, u"{ordner}"),
                              std::regex("Sicherung vom \\d\\d\\.\\d\\d\\.\\d\\d, \\d\\d:\\d\\d:\\d\\d Uhr"),
                              "Sicherung vom {zeit}");
}

// --- one test for each script

class Skript : public testing::TestWithParam<std::string> {};

TEST_P(Skript, verläuft_wie_erwartet) {
    const std::string gefunden = Skriptergebnis(Dateitext(GetParam()));
    const fs::path erwartungsdatei = fs::path(GetParam()).replace_extension(".erwartet");
    if (const char* neu = std::getenv("KALVORA_SKRIPTE_NEU"); neu && std::string_view(neu) == "1") {
        std::ofstream(erwartungsdatei, std::ios::binary) << gefunden;
        return;
    }
    ASSERT_TRUE(fs::exists(erwartungsdatei)) << "no expected transcript; KALVORA_SKRIPTE_NEU=1 writes it";
    EXPECT_EQ(Dateitext(erwartungsdatei), gefunden);
}

std::vector<std::string> Skripte() {
    std::vector<std::string> skripte;
    for (const auto& eintrag : fs::directory_iterator(KALVORA_SKRIPT_DIR))
        if (eintrag.path().extension() == ".skript") skripte.push_back(eintrag.path().string());
    std::sort(skripte.begin(), skripte.end());
    return skripte;
}

std::string Testname(const testing::TestParamInfo<std::string>& info) {
    std::string name = fs::path(info.param).stem().string();
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return c > 0x7F || !std::isalnum(c); }, '_');
    return name;
}

// A transcript without its script would never be looked at.
TEST(Skripte, haben_je_eine_Erwartung) {
    std::size_t erwartungen = 0;
    for (const auto& eintrag : fs::directory_iterator(KALVORA_SKRIPT_DIR))
        erwartungen += eintrag.path().extension() == ".erwartet" ? 1 : 0;
    EXPECT_GT(erwartungen, 0U);
    EXPECT_EQ(erwartungen, Skripte().size());
}

INSTANTIATE_TEST_SUITE_P(Dateien, Skript, testing::ValuesIn(Skripte()), Testname);

} // namespace
} // namespace kalvora
