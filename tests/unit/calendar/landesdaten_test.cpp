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

Vorlage Vorlage_zu(const std::string& code) {
    return alle_Vorlagen().at(code);
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
    struct Fall {
        const char* code;
        const char* tage;
    };
    for (const Fall& f : {
             Fall{"001", "0101 0119 0216 0525 0619 0704 0907 1012 1111 1126 1225"},
             Fall{"002", "0101 0403 0518 0701 0907 0930 1012 1111 1225 1226"},
             Fall{"031", "0101 0405 0406 0427 0505 0514 0524 0525 1225 1226"},
             Fall{"032", "0101 0406 0501 0514 0525 0721 0815 1101 1111 1225"},
             Fall{"033", "0101 0406 0501 0508 0514 0525 0714 0815 1101 1111 1225"},
             Fall{"034", "0101 0106 0403 0501 0815 1012 1101 1206 1208 1225"},
             Fall{"039", "0101 0106 0406 0425 0501 0602 0815 1004 1101 1208 1225 1226"},
             Fall{"041", "0101 0514 0801 1225"},
             Fall{"043", "0101 0106 0406 0501 0514 0525 0604 0815 1026 1101 1208 1225 1226"},
             Fall{"044", "0101 0403 0504 0525 1225 1226"},
             Fall{"045", "0101 0402 0403 0405 0406 0514 0524 0525 1225 1226"},
             Fall{"046", "0101 0106 0403 0405 0406 0501 0514 0524 0606 1225 1226"},
             Fall{"048", "0101 0106 0405 0406 0501 0503 0524 0604 0815 1101 1111 1224 1225 1226"},
             Fall{"049", "0101 0403 0406 0501 0514 0525 1003 1225 1226"},
             Fall{"351", "0101 0403 0405 0425 0501 0604 0610 0815 1005 1101 1201 1208 1225"},
             Fall{"352", "0101 0406 0501 0509 0514 0525 0623 0815 1101 1225 1226"},
             Fall{"420", "0101 0403 0406 0501 0508 0705 0706 0928 1028 1117 1224 1225 1226"},
         })
        EXPECT_EQ(Tage_im_Jahr(Vorlage_zu(f.code).regeln, 2026), f.tage) << f.code;
}

TEST(Landesdaten, Bewegliche_Tage_2025_bis_2027) {
    struct Fall {
        const char* code;
        const char16_t* name; // as the row begins it, regional note included where two rows share a name
        const char* tage;
    };
    for (const Fall& f : {
             Fall{"001", u"Washington's Birthday", "250217|260216|270215|"},
             Fall{"001", u"Memorial Day", "250526|260525|270531|"},
             Fall{"002", u"Victoria Day", "250519|260518|270524|"},
             Fall{"031", u"Carnavalsmaandag", "250303|260216|270208|"},
             Fall{"032", u"Lundi de Pentecôte", "250609|260525|270517|"},
             Fall{"044", u"Spring bank holiday", "250526|260525|270531|"},
             Fall{"044", u"Summer bank holiday (Scotland", "250804|260803|270802|"},
             Fall{"044", u"Summer bank holiday (England", "250825|260831|270830|"},
             Fall{"045", u"Store bededag", "250516|260501|270423|"},
             Fall{"048", u"Boze Cialo", "250619|260604|270527|"},
             Fall{"049", u"Buß- und Bettag", "251119|261118|271117|"},
             Fall{"351", u"Carnaval", "250304|260217|270209|"},
         }) {
        Feld<Text> eine;
        for (const Text& regel : Vorlage_zu(f.code).regeln)
            if (mitte(regel, 10).starts_with(f.name)) eine.anfügen(eingeschaltet(regel));
        ASSERT_EQ(eine.anzahl(), 1) << f.code << " " << zu_utf8(f.name);
        EXPECT_EQ(zu_utf8(Feiertage_berechnen(2025, eine).Feiertagsschlüssel), f.tage)
            << f.code << " " << zu_utf8(f.name);
    }
}

// Midsummer Eve is the Friday from 19 to 25 June. No single rule gives it, so each of its two rows names the
// years for which it is right.
TEST(Landesdaten, Midsommarafton_gilt_in_den_genannten_Jahren) {
    for (const Text& regel : Vorlage_zu("046").regeln) {
        if (!mitte(regel, 10).starts_with(u"Midsommarafton (")) continue;
        for (const Text& jahr : teilen(mitte(regel, position(regel, u"(") + 1), u',')) {
            const std::string tag =
                Tage_im_Jahr({eingeschaltet(regel)}, static_cast<int>(Val(trimmen(jahr))));
            EXPECT_TRUE(tag >= "0619" && tag <= "0625") << zu_utf8(jahr) << " " << tag;
        }
    }
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
