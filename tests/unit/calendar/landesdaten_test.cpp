// The delivered holiday templates against the countries' real calendars. The dates below are those of the
// calendars and were written down by hand: never take them from the program's output.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "base/cp1252.h"
#include "calendar/feiertage.h"

namespace kalvora {
namespace {

namespace fs = std::filesystem;

struct Vorlage {
    Text kopf;
    Feld<Text> regeln;
};

// By the country's code.
std::map<std::string, Vorlage> alle_Vorlagen() {
    std::map<std::string, Vorlage> vorlagen;
    for (const auto& eintrag : fs::directory_iterator(KALVORA_DATEN_DIR "/feiertage")) {
        if (eintrag.path().extension() != ".txt") continue;
        Vorlage& v = vorlagen[eintrag.path().filename().string().substr(0, 3)];
        std::ifstream datei(eintrag.path());
        for (std::string zeile; std::getline(datei, zeile);) {
            if (zeile.starts_with("#")) continue;
            if (v.kopf.empty())
                v.kopf = aus_utf8(zeile);
            else
                v.regeln.anfügen(aus_utf8(zeile));
        }
    }
    return vorlagen;
}

Text eingeschaltet(const Text& regel) {
    return u"1" + Text(mitte(regel, 2));
}

// A regional note stands behind exactly one blank and closes the row; the month view cuts there.
bool Vermerk_richtig(const Text& regel) {
    const int klammer = position(regel, u"(");
    return klammer == 0 || (zeichen(regel, klammer - 1) == u' ' && zeichen(regel, klammer - 2) != u' ' &&
                            regel.back() == u')');
}

// The holidays of one year as "mmdd mmdd ...", in the order of the calendar.
std::string Tage_im_Jahr(const Feld<Text>& regeln, int jahr) {
    std::vector<std::string> tage;
    for (const Text& eintrag : Feiertage_berechnen(jahr, regeln).Feiertagsliste)
        if (links(eintrag, 2) == ziffern(jahr % 100, 2)) tage.push_back(zu_utf8(mitte(eintrag, 3, 4)));
    std::sort(tage.begin(), tage.end());
    std::string text;
    for (const std::string& tag : tage)
        text += (text.empty() ? "" : " ") + tag;
    return text;
}

TEST(Landesdaten, Nationale_Feiertage_2026_komplett) {
    for (const auto& [code, tage] : {
             std::tuple{"001", "0101 0119 0216 0525 0619 0704 0907 1012 1111 1126 1225"},
             {"002", "0101 0403 0518 0701 0907 0930 1012 1111 1225 1226"},
             {"031", "0101 0405 0406 0427 0505 0514 0524 0525 1225 1226"},
             {"032", "0101 0406 0501 0514 0525 0721 0815 1101 1111 1225"},
             {"033", "0101 0406 0501 0508 0514 0525 0714 0815 1101 1111 1225"},
             {"034", "0101 0106 0403 0501 0815 1012 1101 1206 1208 1225"},
             {"039", "0101 0106 0406 0425 0501 0602 0815 1004 1101 1208 1225 1226"},
             {"041", "0101 0514 0801 1225"},
             {"043", "0101 0106 0406 0501 0514 0525 0604 0815 1026 1101 1208 1225 1226"},
             {"044", "0101 0403 0504 0525 1225 1226"},
             {"045", "0101 0402 0403 0405 0406 0514 0524 0525 1225 1226"},
             {"046", "0101 0106 0403 0405 0406 0501 0514 0524 0606 1225 1226"},
             {"048", "0101 0106 0405 0406 0501 0503 0524 0604 0815 1101 1111 1224 1225 1226"},
             {"049", "0101 0403 0406 0501 0514 0525 1003 1225 1226"},
             {"351", "0101 0403 0405 0425 0501 0604 0610 0815 1005 1101 1201 1208 1225"},
             {"352", "0101 0406 0501 0509 0514 0525 0623 0815 1101 1225 1226"},
             {"420", "0101 0403 0406 0501 0508 0705 0706 0928 1028 1117 1224 1225 1226"},
         })
        EXPECT_EQ(Tage_im_Jahr(alle_Vorlagen().at(code).regeln, 2026), tage) << code;
}

// A row that is off is used as soon as somebody switches it on: it must be as readable as the others.
TEST(Landesdaten, Jede_Vorlage_hat_16_lesbare_Zeilen) {
    const auto vorlagen = alle_Vorlagen();
    EXPECT_EQ(vorlagen.size(), 17u);
    for (const auto& [code, v] : vorlagen) {
        SCOPED_TRACE(code);
        EXPECT_EQ(zu_utf8(links(v.kopf, 5)), "[" + code + ":");
        EXPECT_TRUE(v.kopf.ends_with(u"]") && cp1252_darstellbar(v.kopf));
        EXPECT_EQ(v.regeln.anzahl(), FEIERTAGSREGELN_LAND);
        int r = 0;
        for (const Text& regel : v.regeln) {
            ++r;
            EXPECT_TRUE(links(regel, 2) == u"0:" || links(regel, 2) == u"1:") << "row " << r;
            EXPECT_TRUE(regel == LEERE_FEIERTAGSREGEL || Feiertagsregel_lesbar(eingeschaltet(regel), r))
                << "row " << r;
            EXPECT_TRUE(cp1252_darstellbar(regel) && Vermerk_richtig(regel)) << "row " << r;
        }
    }
}

} // namespace
} // namespace kalvora
