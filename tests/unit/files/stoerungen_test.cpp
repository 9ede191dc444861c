// Each call of the file system in turn fails, is cut short, loses its answer or ends the program: a new start
// on the same disk finds the old state or the new one, and nobody was told that a save went well which did
// not.
#include "hilfen/programmlauf.h"

namespace kalvora {
namespace {

const Text DATEN = u"/srv/x/Data/";
const std::vector<Text> AUFRUF{u"/path", DATEN, u"/nowelcomescreen"};

constexpr std::array WIRKUNGEN{
    Wirkung::Fehler, Wirkung::Fehler_dahinter, Wirkung::Kurz,         Wirkung::Kurz_und_Fehler,
    Wirkung::Ende,   Wirkung::Ende_mitten,     Wirkung::Ende_dahinter};

// Runs `tat` undisturbed for its calls, then once for each call and effect; `danach` judges each time.
// Each run has a fresh disk from `vorbereiten`.
class Durchgang {
public:
    std::function<void(SpeicherDateisystem&)> vorbereiten;
    std::function<void(Platzlauf&)> öffnen = [](Platzlauf&) {}; // before the faults begin
    std::function<void(Platzlauf&)> tat;
    std::function<void(Platzlauf& gestört, bool unterbrochen)> danach;
    bool stromausfall = false; // behind it all that was not synced is lost
    int läufe = 0;

    void alle(int schritt = 1) {
        const std::vector<Dateiaufruf> aufrufe = ungestört();
        ASSERT_FALSE(aufrufe.empty());
        for (size_t n = 0; n < aufrufe.size(); n += static_cast<size_t>(schritt))
            for (const Wirkung w : WIRKUNGEN) {
                if (!sinnvoll(aufrufe[n].name, w)) continue;
                einer(static_cast<int>(n) + 1, w, aufrufe[n]);
                if (::testing::Test::HasFailure()) return;
            }
    }

private:
    // Left out is what comes to the same as another run: an end at a call that changes nothing is an end
    // before the next one that does.
    bool sinnvoll(const std::string& aufruf, Wirkung w) const {
        const bool liest = aufruf == "read" || aufruf == "read_at" || aufruf == "info" || aufruf == "list" ||
                           aufruf == "change_folder" || aufruf == "close";
        if (liest) return w == Wirkung::Fehler && (!stromausfall || aufruf == "close");
        return aufruf == "write" ||
               (w != Wirkung::Kurz && w != Wirkung::Kurz_und_Fehler && w != Wirkung::Ende_mitten);
    }
    std::vector<Dateiaufruf> ungestört() {
        SpeicherDateisystem fs;
        vorbereiten(fs);
        Platzlauf lauf(fs, u"anna");
        öffnen(lauf);
        fs.tagebuch_leeren();
        tat(lauf);
        EXPECT_TRUE(lauf.fenster.hinweise.empty());
        danach(lauf, false);
        return fs.tagebuch();
    }
    void einer(int n, Wirkung w, const Dateiaufruf& aufruf) {
        SCOPED_TRACE(aufruf.name + " " + zu_utf8(aufruf.pfad) + ", call " + std::to_string(n) + ", effect " +
                     std::to_string(static_cast<int>(w)));
        SpeicherDateisystem fs;
        vorbereiten(fs);
        Platzlauf lauf(fs, u"anna");
        öffnen(lauf);
        fs.störe({.aufruf = "", .beim = n, .wirkung = w, .bytes = 7});
        bool unterbrochen = false;
        try {
            tat(lauf);
        } catch (const Programmende&) {
            unterbrochen = true;
        }
        fs.neu_starten();
        if (stromausfall) fs.platte().verliere_ungesichertes();
        danach(lauf, unterbrochen);
        ++läufe;
    }
};

// anna enters two days; otto has an entry from before. Without a version of today the save makes it.
Durchgang Eintrag(bool erste_Speicherung) {
    Durchgang d;
    Firma firma;
    firma.monate[u"2611"] = {A(u"anna", u""), A(u"otto", u"111"), u"K:otto:01-02:Kur"};
    d.vorbereiten = [=](SpeicherDateisystem& fs) {
        firma.anlegen(fs, DATEN);
        if (!erste_Speicherung)
            fs.schreibe(DATEN + u"2611 261116 Data.dat", als_Datei(Monat(firma.monate.at(u"2611"))));
    };
    d.öffnen = [](Platzlauf& lauf) { ASSERT_TRUE(lauf.starten(AUFRUF)); };
    d.tat = [](Platzlauf& lauf) {
        lauf.trage_ein(u"anna", 18, 19, 1);
        lauf.programm->schleife(); // whatever failed is reported here
    };
    return d;
}

void nach_dem_Eintrag(Platzlauf& gestört, bool unterbrochen) {
    auto& fs = dynamic_cast<SpeicherDateisystem&>(gestört.fs);
    Platzlauf neu(fs, u"anna", u"/", u"PLATZ2");
    ASSERT_TRUE(neu.starten(AUFRUF)) << zu_utf8(neu.fenster.hinweise.empty() ? u"" : neu.fenster.hinweise[0]);
    EXPECT_TRUE(neu.fenster.hinweise.empty());
    const Text anna = neu.zellen(u"anna");
    const Text alt(31, u'.');
    const Text eingetragen = Text(17, u'.') + u"UU" + Text(12, u'.');
    EXPECT_TRUE(anna == alt || anna == eingetragen) << zu_utf8(anna);
    EXPECT_TRUE(anna != alt || unterbrochen || !gestört.fenster.hinweise.empty()) << "lost without a word";
    EXPECT_EQ(neu.zellen(u"otto"), u"UUU" + Text(28, u'.'));
    EXPECT_EQ(neu.programm->hauptfenster().ansicht().Zellkommentar(neu.zeile(u"otto"), 1), u"Kur");
    EXPECT_EQ(fs.offene(), 0);
    // The folder goes on working: the next entry arrives, and an administrator sees it.
    neu.trage_ein(u"anna", 20, 20, 6);
    neu.programm->schleife();
    Platzlauf chef(fs, u"chef", u"/", u"PLATZ3");
    ASSERT_TRUE(chef.starten(AUFRUF));
    Text zuletzt = anna;
    zuletzt[19] = u'S';
    EXPECT_EQ(chef.zellen(u"anna"), zuletzt);
    EXPECT_EQ(chef.zellen(u"otto"), u"UUU" + Text(28, u'.'));
    // Half a row stays only where the program ended in the middle of it; whoever lives takes it back.
    EXPECT_TRUE(unterbrochen || chef.fenster.hinweise.empty());
}

TEST(Störungen, Eintrag) {
    for (const bool erste_des_Tages : {false, true})
        for (const bool stromausfall : {false, true}) {
            Durchgang d = Eintrag(erste_des_Tages);
            d.stromausfall = stromausfall;
            d.danach = nach_dem_Eintrag;
            d.alle();
            EXPECT_GT(d.läufe, erste_des_Tages ? 40 : 25);
        }
}

// On an empty folder: whatever went wrong, the next start completes what is missing.
TEST(Störungen, ErsterLauf) {
    const auto Datendateien = [](SpeicherDateisystem& fs) {
        std::map<Text, std::vector<Text>> alle;
        for (const auto& [pfad, bytes] : fs.platte().abbild())
            if (endet_ohne_Fall(pfad, u".dat") && !Dateiname_aus_Pfad(pfad).starts_with(u'.'))
                alle[pfad] = als_Zeilen(bytes);
        return alle;
    };
    std::map<Text, std::vector<Text>> soll;
    Durchgang d;
    d.vorbereiten = [](SpeicherDateisystem& fs) {
        Installation_ablegen(
            [&](const Text& name, const std::string& bytes) { fs.schreibe(u"/opt/kalvora/" + name, bytes); });
    };
    d.tat = [](Platzlauf& lauf) { lauf.starten({u"/nowelcomescreen"}); };
    d.danach = [&](Platzlauf& gestört, bool) {
        auto& fs = dynamic_cast<SpeicherDateisystem&>(gestört.fs);
        const Text womit = gestört.fenster.hinweise.empty() ? Text() : gestört.fenster.hinweise[0];
        Platzlauf neu(fs, u"anna"); // the lock died with the process
        ASSERT_TRUE(neu.starten({u"/nowelcomescreen"}))
            << zu_utf8(womit) << " -> "
            << zu_utf8(neu.fenster.hinweise.empty() ? u"" : neu.fenster.hinweise[0]);
        EXPECT_TRUE(neu.fenster.hinweise.empty());
        if (soll.empty()) soll = Datendateien(fs);
        EXPECT_EQ(Datendateien(fs), soll);
    };
    d.alle(3);
    EXPECT_EQ(soll.size(), 43U); // 36 months, four shared files, the workstation's and the two delivered ones
}

} // namespace
} // namespace kalvora
