// Runs every *.skript of this folder through the console in this process, on a fresh data folder, and
// compares the transcript with the *.erwartet beside it. How a script says what it needs stands in
// docs/konsole.md. With KALVORA_SKRIPTE_NEU=1 in the environment the expected files are written anew instead.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "base/cp1252.h"
#include "files/zeilen.h"
#include "frame/programm.h"
#include "hilfen/temp_ordner.h"
#include "hilfen/test_uhr.h"
#include "hilfen/test_umgebung.h"
#include "platform/posix/posix_filesystem.h"
#include "ui/konsole/konsolen_fenstersystem.h"

namespace kalvora {
namespace {

namespace fs = std::filesystem;

std::vector<std::string> Zeilen(const std::string& text) {
    std::vector<std::string> zeilen;
    std::istringstream strom(text);
    for (std::string zeile; std::getline(strom, zeile);)
        zeilen.push_back(zeile);
    return zeilen;
}

std::string ersetzt(std::string text, const std::string& alt, const std::string& neu) {
    for (std::size_t i = text.find(alt); i != std::string::npos; i = text.find(alt, i + neu.size()))
        text.replace(i, alt.size(), neu);
    return text;
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
    std::vector<Text> inhalt; // masks of data files whose lines are shown behind the end
    std::string fehler;
};

std::vector<Text> Worte(TextView text) {
    std::vector<Text> worte;
    for (const Wort& wort : zerlegen(text).worte)
        worte.push_back(wort.text);
    return worte;
}

// "04.11.2026 08:15"
bool Uhr_lesen(const std::string& text, Zeitpunkt& uhr) {
    Zeitpunkt z;
    const int gelesen = std::sscanf(text.c_str(), "%2d.%2d.%4d %2d:%2d", &z.tag.tag, &z.tag.monat,
                                    &z.tag.jahr, &z.stunde, &z.minute);
    if (gelesen == 5) uhr = z;
    return gelesen == 5;
}

void Firma_lesen(const Text& wert, Kopf& kopf) {
    for (const Text& wunsch : Worte(wert)) {
        const auto teile = teilen(wunsch, u'=');
        kopf.firma.push_back("--" + zu_utf8(teile[0]));
        if (teile.size() > 1) kopf.firma.push_back(zu_utf8(teile[1]));
    }
}

void Kopfzeile_lesen(const std::string& zeile, Kopf& kopf) {
    const auto hat = [&](const char* name) { return zeile.rfind(std::string("# ") + name + ":", 0) == 0; };
    const Text wert(trimmen(aus_utf8(zeile.substr(std::min(zeile.size(), zeile.find(':') + 1)))));
    if (hat("aufruf")) kopf.aufruf = Worte(wert);
    if (hat("vorlauf")) kopf.vorläufe.push_back(Worte(wert));
    if (hat("firma")) Firma_lesen(wert, kopf);
    if (hat("benutzer")) kopf.benutzer = wert;
    if (hat("inhalt")) kopf.inhalt.push_back(wert);
    if (hat("uhr") && !Uhr_lesen(zu_utf8(wert), kopf.uhr)) kopf.fehler = "not a time: " + zeile;
}

Kopf Kopf_lesen(const std::string& skript) {
    Kopf kopf;
    for (const std::string& zeile : Zeilen(skript)) {
        if (!zeile.empty() && zeile[0] != '#') break;
        Kopfzeile_lesen(zeile, kopf);
    }
    return kopf;
}

// --- the run

// The lines of a stored file, so that an expected transcript can show what reached the disk.
std::string Inhalt(const fs::path& pfad) {
    std::string bytes = Dateitext(pfad), ergebnis;
    Rohzeilen zeilen(bytes.data(), bytes.size());
    while (const auto zeile = zeilen.nächste()) {
        const auto klar =
            zeile->länge > 0 ? Zeile_entschlüsseln(zeile->anfang, zeile->länge) : std::string_view();
        ergebnis += zu_utf8(maskiert(aus_cp1252(klar))) + (zeile->mit_Ende ? "\n" : " (ohne Zeilenende)\n");
    }
    return ergebnis;
}

std::string Inhalte(const fs::path& ordner, const std::vector<Text>& masken) {
    std::string ergebnis;
    for (const Text& maske : masken) {
        std::vector<std::string> gefunden;
        for (const auto& eintrag : fs::recursive_directory_iterator(ordner)) {
            const std::string name = eintrag.path().lexically_relative(ordner).string();
            if (eintrag.is_regular_file() && passt_auf_Maske(aus_utf8(name), maske)) gefunden.push_back(name);
        }
        std::sort(gefunden.begin(), gefunden.end());
        if (gefunden.empty()) ergebnis += "== " + zu_utf8(maske) + ": nichts gefunden\n";
        for (const std::string& name : gefunden)
            ergebnis += "== " + name + "\n" + Inhalt(ordner / name);
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

class Skriptlauf {
public:
    explicit Skriptlauf(std::string skript) : kopf_(Kopf_lesen(skript)) {
        fs::create_directories(ordner_.ordner() / "temp");
        umgebung_.variablen[u"USERNAME"] = kopf_.benutzer;
        umgebung_.variablen[u"KALVORA_SYSTEMPFAD"] = ordner_.pfad(u"platz");
        umgebung_.variablen[u"TEMP"] = ordner_.pfad(u"temp");
        umgebung_.programmordner = aus_utf8(KALVORA_BIN_DIR "/");
        skript_.str(ersetzt(std::move(skript), "{ordner}", ordner_.ordner().string()));
    }

    // Transcript, exit status and the contents asked for; the temporary folder is "{ordner}".
    std::string ergebnis() {
        if (!kopf_.fehler.empty()) return kopf_.fehler + "\n";
        fs::current_path(ordner_.ordner()); // the program of the script before left this process in its own
        if (!kopf_.firma.empty() && !Firma_gründen(kopf_, ordner_.ordner())) return "kalvora-firma failed\n";
        for (const std::vector<Text>& aufruf : kopf_.vorläufe)
            vorlaufen(aufruf);
        const int status = laufen(kopf_.aufruf, skript_, protokoll_);
        const int ende = status != 0 ? 2 : protokoll_.Fehlerzahl() > 0 ? 1 : 0;
        ausgabe_ += "STATUS " + std::to_string(ende) + "\n" + Inhalte(ordner_.ordner(), kopf_.inhalt);
        return ersetzt(ausgabe_, ordner_.ordner().string(), "{ordner}");
    }

private:
    // A run without commands, of which nothing is shown.
    void vorlaufen(const std::vector<Text>& aufruf) {
        std::istringstream nichts;
        Protokoll verworfen([](std::string_view) {});
        laufen(aufruf, nichts, verworfen);
    }

    int laufen(const std::vector<Text>& kopfaufruf, std::istream& skript, Protokoll& protokoll) {
        Skriptuhr uhr(echte_, kopf_.uhr);
        Stromquelle quelle(skript, true);
        KonsolenFenstersystem system(protokoll, quelle, uhr);
        std::vector<Text> aufruf;
        for (const Text& wort : kopfaufruf)
            aufruf.push_back(Ersetzen(wort, u"{ordner}", aus_utf8(ordner_.ordner().string())));
        const int status = Programm({dateien_, uhr, umgebung_}, system, aufruf).ausführen();
        system.abschließen();
        return status;
    }

    Kopf kopf_;
    TempOrdner ordner_;
    TestUmgebung umgebung_;
    TestUhr echte_;
    PosixFileSystem dateien_;
    std::istringstream skript_;
    std::string ausgabe_;
    Protokoll protokoll_{[this](std::string_view zeile) { ausgabe_ += zeile; }};
};

// --- the comparison

// Length of the longest common rest for each pair of positions.
std::vector<std::vector<int>> gemeinsame_Reste(const std::vector<std::string>& a,
                                               const std::vector<std::string>& b) {
    std::vector<std::vector<int>> reste(a.size() + 1, std::vector<int>(b.size() + 1));
    for (std::size_t i = a.size(); i-- > 0;)
        for (std::size_t j = b.size(); j-- > 0;)
            reste[i][j] = a[i] == b[j] ? reste[i + 1][j + 1] + 1 : std::max(reste[i + 1][j], reste[i][j + 1]);
    return reste;
}

// Lines that are only expected behind "-", only found behind "+"; equal ones as "  N equal".
std::string Unterschied(const std::string& erwartet, const std::string& gefunden) {
    const auto a = Zeilen(erwartet), b = Zeilen(gefunden);
    const auto reste = gemeinsame_Reste(a, b);
    std::string ergebnis;
    int gleiche = 0;
    const auto abschnitt = [&] {
        if (gleiche > 0) ergebnis += "  " + std::to_string(gleiche) + " equal\n";
        gleiche = 0;
    };
    for (std::size_t i = 0, j = 0; i < a.size() || j < b.size();) {
        if (i < a.size() && j < b.size() && a[i] == b[j]) {
            ++gleiche, ++i, ++j;
            continue;
        }
        abschnitt();
        const bool fehlt = j == b.size() || (i < a.size() && reste[i + 1][j] >= reste[i][j + 1]);
        ergebnis += fehlt ? "- " + a[i++] + "\n" : "+ " + b[j++] + "\n";
    }
    abschnitt();
    return ergebnis;
}

TEST(Skriptprüfung, findet_die_abweichenden_Zeilen) {
    EXPECT_EQ(Unterschied("a\nb\nc\nd\n", "a\nc\nx\nd\ne\n"),
              "  1 equal\n- b\n  1 equal\n+ x\n  1 equal\n+ e\n");
    EXPECT_EQ(Unterschied("", "a\n"), "+ a\n");
    EXPECT_EQ(Unterschied("a\n", ""), "- a\n");
}

TEST(Skriptprüfung, liest_den_Kopf_bis_zum_ersten_Kommando) {
    const Kopf kopf =
        Kopf_lesen("# Ein Satz: ohne Bedeutung\n# aufruf: /d:041126 /path \"{ordner}/a b\"\n\n"
                   "# firma: mitarbeiter=5 seed=3\n# uhr: 31.12.2027 23:59\nzeige\n# benutzer: Zuspät\n");
    EXPECT_EQ(kopf.aufruf, (std::vector<Text>{u"/d:041126", u"/path", u"{ordner}/a b"}));
    EXPECT_EQ(kopf.firma, (std::vector<std::string>{"--mitarbeiter", "5", "--seed", "3"}));
    EXPECT_EQ(kopf.uhr.tag, (Kalendertag{2027, 12, 31}));
    EXPECT_EQ(kopf.uhr.minute, 59);
    EXPECT_EQ(kopf.benutzer, u"Muster");
    EXPECT_EQ(kopf.fehler, "");
    EXPECT_NE(Kopf_lesen("# uhr: morgen\n").fehler, "");
}

// --- one test for each script

class Skript : public testing::TestWithParam<std::string> {};

TEST_P(Skript, verläuft_wie_erwartet) {
    const std::string gefunden = Skriptlauf(Dateitext(GetParam())).ergebnis();
    const fs::path erwartungsdatei = fs::path(GetParam()).replace_extension(".erwartet");
    if (const char* neu = std::getenv("KALVORA_SKRIPTE_NEU"); neu && std::string_view(neu) == "1") {
        std::ofstream(erwartungsdatei, std::ios::binary) << gefunden;
        return;
    }
    ASSERT_TRUE(fs::exists(erwartungsdatei)) << "no expected transcript; KALVORA_SKRIPTE_NEU=1 writes it";
    const std::string erwartet = Dateitext(erwartungsdatei);
    EXPECT_TRUE(erwartet == gefunden) << Unterschied(erwartet, gefunden);
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

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(Skript);
INSTANTIATE_TEST_SUITE_P(Dateien, Skript, testing::ValuesIn(Skripte()), Testname);

} // namespace
} // namespace kalvora
