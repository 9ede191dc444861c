// The delivered holiday templates against the countries' real calendars. The dates below are those of the
// calendars and were written down by hand: never take them from the program's output.
#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>

#include "files/feiertagsdatei.h"
#include "hilfen/arbeitsplatz.h"

namespace kalvora {
namespace {

// The template as the build has made it. What is no rule at all has failed the build.
struct Landesdaten : testing::Test {
    Prüfplatz p;
    Feiertagsdatei feiertage{p.kanal, p.platz};
    Landesdaten() {
        std::ifstream datei(KALVORA_BIN_DIR "/KalvoraFtg.dat", std::ios::binary);
        p.fs.schreibe(p.platz.Programmpfad + u"KalvoraFtg.dat", {std::istreambuf_iterator<char>(datei), {}});
    }
    // The holidays of 2026 as "mmdd mmdd ...", in the order of the calendar.
    std::string Tage_2026() {
        feiertage.Feiertage_berechnen();
        std::vector<std::string> tage;
        for (const Text& eintrag : feiertage.berechnet().Feiertagsliste)
            if (links(eintrag, 2) == u"26") tage.push_back(zu_utf8(mitte(eintrag, 3, 4)));
        std::sort(tage.begin(), tage.end());
        std::string text;
        for (const std::string& tag : tage)
            text += (text.empty() ? "" : " ") + tag;
        return text;
    }
};

// A regional note stands behind exactly one blank and closes the row; the month view cuts there.
bool Vermerk_richtig(const Text& regel) {
    const int klammer = position(regel, u"(");
    return klammer == 0 || (zeichen(regel, klammer - 1) == u' ' && zeichen(regel, klammer - 2) != u' ' &&
                            regel.back() == u')');
}

TEST_F(Landesdaten, Nationale_Feiertage_2026_komplett) {
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
         }) {
        feiertage.KalvoraFeiertageDat_lesen(aus_utf8(code));
        EXPECT_EQ(Tage_2026(), tage) << code;
        // A row that is off is used as soon as somebody switches it on.
        for (const Text& regel : feiertage.Feiertagsregeln()) {
            EXPECT_TRUE(regel == LEERE_FEIERTAGSREGEL ||
                        Feiertagsregel_lesbar(u"1" + Text(mitte(regel, 2)), 1))
                << zu_utf8(regel);
            EXPECT_TRUE(Vermerk_richtig(regel)) << zu_utf8(regel);
        }
    }
}

} // namespace
} // namespace kalvora
