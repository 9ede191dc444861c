// The delivered holiday templates against the countries' real calendars. The dates below are those of the
// calendars and were written down by hand: never take them from the program's output.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "base/cp1252.h"
#include "calendar/feiertage.h"

namespace kalvora {
namespace {

namespace fs = std::filesystem;

struct Vorlage {
    std::string datei;
    Text kopf;
    Feld<Text> regeln;
};

Vorlage lesen(const fs::path& pfad) {
    Vorlage v{pfad.filename().string(), {}, {}};
    std::ifstream datei(pfad);
    for (std::string zeile; std::getline(datei, zeile);) {
        if (zeile.starts_with("#")) continue;
        if (v.kopf.empty())
            v.kopf = aus_utf8(zeile);
        else
            v.regeln.anfügen(aus_utf8(zeile));
    }
    return v;
}

std::vector<Vorlage> alle_Vorlagen() {
    std::vector<Vorlage> vorlagen;
    for (const auto& eintrag : fs::directory_iterator(KALVORA_DATEN_DIR "/feiertage"))
        if (eintrag.path().extension() == ".txt") vorlagen.push_back(lesen(eintrag.path()));
    std::sort(vorlagen.begin(), vorlagen.end(),
              [](const Vorlage& a, const Vorlage& b) { return a.datei < b.datei; });
    return vorlagen;
}

Vorlage Vorlage_zu(const std::string& code) {
    for (const Vorlage& v : alle_Vorlagen())
        if (v.datei.starts_with(code + "_")) return v;
    ADD_FAILURE() << "no template of country " << code;
    return {};
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
             Fall{"001", u"Birthday of Martin Luther King", "250120|260119|270118|"},
             Fall{"001", u"Washington's Birthday", "250217|260216|270215|"},
             Fall{"001", u"Patriots' Day", "250421|260420|270419|"},
             Fall{"001", u"Memorial Day", "250526|260525|270531|"},
             Fall{"001", u"Labor Day", "250901|260907|270906|"},
             Fall{"001", u"Columbus Day", "251013|261012|271011|"},
             Fall{"001", u"Thanksgiving Day", "251127|261126|271125|"},
             Fall{"002", u"Family Day", "250217|260216|270215|"},
             Fall{"002", u"Victoria Day", "250519|260518|270524|"},
             Fall{"002", u"Civic Holiday", "250804|260803|270802|"},
             Fall{"002", u"Discovery Day", "250818|260817|270816|"},
             Fall{"031", u"Carnavalsmaandag", "250303|260216|270208|"},
             Fall{"032", u"Lundi de Pentecôte", "250609|260525|270517|"},
             Fall{"033", u"Vendredi saint", "250418|260403|270326|"},
             Fall{"034", u"Jueves Santo", "250417|260402|270325|"},
             Fall{"039", u"Lunedì dell'Angelo", "250421|260406|270329|"},
             Fall{"041", u"Auffahrt", "250529|260514|270506|"},
             Fall{"043", u"Fronleichnam", "250619|260604|270527|"},
             Fall{"044", u"Early May bank holiday", "250505|260504|270503|"},
             Fall{"044", u"Spring bank holiday", "250526|260525|270531|"},
             Fall{"044", u"Summer bank holiday (Scotland", "250804|260803|270802|"},
             Fall{"044", u"Summer bank holiday (England", "250825|260831|270830|"},
             Fall{"045", u"Skærtorsdag", "250417|260402|270325|"},
             Fall{"045", u"Store bededag", "250516|260501|270423|"},
             Fall{"046", u"Annandag påsk", "250421|260406|270329|"},
             Fall{"048", u"Boze Cialo", "250619|260604|270527|"},
             Fall{"049", u"Christi Himmelfahrt", "250529|260514|270506|"},
             Fall{"049", u"Buß- und Bettag", "251119|261118|271117|"},
             Fall{"351", u"Carnaval", "250304|260217|270209|"},
             Fall{"352", u"Mardi de Pentecôte", "250610|260526|270518|"},
             Fall{"420", u"Velký pátek", "250418|260403|270326|"},
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
    int jahre_geprüft = 0;
    for (const Text& regel : Vorlage_zu("046").regeln) {
        if (!mitte(regel, 10).starts_with(u"Midsommarafton (")) continue;
        const int klammer = position(regel, u"(");
        for (const Text& jahr : teilen(mitte(regel, klammer + 1), u',')) {
            const int j = static_cast<int>(Val(trimmen(jahr)));
            const std::string tag = Tage_im_Jahr({eingeschaltet(regel)}, j);
            EXPECT_TRUE(tag >= "0619" && tag <= "0625") << j << " " << tag;
            ++jahre_geprüft;
        }
    }
    EXPECT_EQ(jahre_geprüft, 8);
}

// A row that is off is used as soon as somebody switches it on: it must be as readable as the others.
TEST(Landesdaten, Jede_Vorlage_hat_16_lesbare_Zeilen) {
    const std::vector<Vorlage> vorlagen = alle_Vorlagen();
    EXPECT_EQ(vorlagen.size(), 17u);
    for (const Vorlage& v : vorlagen) {
        EXPECT_EQ(zu_utf8(links(v.kopf, 5)), "[" + v.datei.substr(0, 3) + ":") << v.datei;
        EXPECT_TRUE(v.kopf.ends_with(u"]") && cp1252_darstellbar(v.kopf)) << v.datei;
        EXPECT_EQ(v.regeln.anzahl(), FEIERTAGSREGELN_LAND) << v.datei;
        int r = 0;
        for (const Text& regel : v.regeln) {
            ++r;
            EXPECT_TRUE(links(regel, 2) == u"0:" || links(regel, 2) == u"1:") << v.datei << " row " << r;
            EXPECT_TRUE(regel == LEERE_FEIERTAGSREGEL || Feiertagsregel_lesbar(eingeschaltet(regel), r))
                << v.datei << " row " << r;
            EXPECT_TRUE(cp1252_darstellbar(regel) && Vermerk_richtig(regel)) << v.datei << " row " << r;
        }
    }
}

TEST(Landesdaten, Namen_ohne_Vermerk_und_ohne_Rest) {
    for (const Vorlage& v : alle_Vorlagen()) {
        Feld<Text> alle;
        for (const Text& regel : v.regeln)
            if (regel != LEERE_FEIERTAGSREGEL) alle.anfügen(eingeschaltet(regel));
        for (const Text& eintrag : Feiertage_berechnen(2026, alle).Feiertagsliste) {
            const TextView name = mitte(eintrag, 8);
            EXPECT_FALSE(name.empty()) << v.datei << " " << zu_utf8(eintrag);
            EXPECT_EQ(trimmen(name), name) << v.datei;
            EXPECT_EQ(name.find_first_of(u"()"), TextView::npos) << v.datei << " " << zu_utf8(eintrag);
        }
    }
}

} // namespace
} // namespace kalvora
