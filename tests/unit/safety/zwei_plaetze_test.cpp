// A restore by the whole program, and the start that finishes one: before each of its calls in turn a
// colleague saves, or starts, finishes the work and goes on working. Whatever he was told is saved stands in
// the plan or in a backup, and the next start works.
#include "files/versionsname.h"
#include "unit/zuverlaessigkeit/bericht.h"
#include "unit/zuverlaessigkeit/vorgaenge.h"

namespace kalvora {
namespace {

constexpr int TAG = 25;
const Text DATEN = u"/srv/Data/", BACKUPS = DATEN + u"Backups/";

// A row of otto for that day stands among a month's lines.
bool hat_Zeile(std::string_view bytes) {
    for (const Text& zeile : als_Zeilen(std::string(bytes)))
        if (zeile.starts_with(u"A:otto:") && zeichen(zeile, 7 + TAG) != u' ' && zeichen(zeile, 7 + TAG) != 0)
            return true;
    return false;
}

bool aufbewahrt(const SpeicherPlatte& platte) {
    for (const auto& [pfad, bytes] : platte.abbild()) {
        if (ParentDir(pfad) == DATEN && ist_Versionsname(Dateiname_aus_Pfad(pfad)) && hat_Zeile(bytes))
            return true;
        if (ParentDir(pfad) != BACKUPS) continue;
        for (const auto& m : Container_lesen(bytes).value_or(std::vector<Containermitglied>{}))
            if (ist_Versionsname(m.name) && hat_Zeile(m.bytes)) return true;
    }
    return false;
}

// Between the last look at a member's file and its replacement nobody can be told apart from a call that is
// under way: there one waits longer for the other than any call lasts.
std::vector<bool> unteilbar(const std::vector<Dateiaufruf>& aufrufe) {
    constexpr std::size_t BLICK = 3; // calls between
    std::vector<bool> aus(aufrufe.size(), false);
    for (std::size_t n = BLICK; n < aufrufe.size(); ++n)
        if (aufrufe[n].name == "rename" && ParentDir(aufrufe[n].pfad) != BACKUPS)
            std::fill(aus.begin() + static_cast<std::ptrdiff_t>(n - BLICK),
                      aus.begin() + static_cast<std::ptrdiff_t>(n + 1), true);
    return aus;
}

struct Zwei_Plätze {
    Vorgang v = vorgang::Wiederherstellen(u"/");
    std::shared_ptr<SpeicherPlatte> platte = std::make_shared<SpeicherPlatte>();
    bool am_Start = false;
    int gespeichert = 0, abgelehnt = 0;

    explicit Zwei_Plätze(bool abschließen) : am_Start(abschließen) {
        SpeicherDateisystem fs(platte);
        v.vorbereiten(fs);
        if (!am_Start) return;
        const auto lauf = v.Platz(fs, v.benutzer, u"PLATZ1"); // ended when the first file has gone
        EXPECT_TRUE(lauf->starten(v.aufruf));
        fs.störe({.aufruf = "rename_new", .maske = u"*.weg", .wirkung = Wirkung::Ende_dahinter});
        EXPECT_THROW(v.tat(*lauf), Programmende);
    }
    void tu(Platzlauf& lauf) const {
        if (am_Start)
            lauf.starten(v.aufruf);
        else
            v.tat(lauf);
    }
    // The calls of the work, up to the office's end.
    std::vector<Dateiaufruf> Aufrufe() const {
        SpeicherDateisystem fs(platte->kopie());
        const auto lauf = v.Platz(fs, v.benutzer, u"PLATZ1");
        EXPECT_TRUE(am_Start || lauf->starten(v.aufruf));
        fs.tagebuch_leeren();
        tu(*lauf);
        auto aufrufe = fs.tagebuch();
        while (!aufrufe.empty() &&
               !(aufrufe.back().name == "remove" && aufrufe.back().pfad.ends_with(u".inhaber")))
            aufrufe.pop_back();
        EXPECT_GT(aufrufe.size(), 100U);
        return aufrufe;
    }
    bool trägt_ein(Platzlauf& er) {
        er.fenster.hinweise.clear();
        const bool ging = er.trage_ein(u"otto", TAG, TAG, 1) && er.fenster.hinweise.empty();
        er.programm->schleife();
        const bool ok = ging && er.fenster.hinweise.empty();
        ++(ok ? gespeichert : abgelehnt);
        return ok;
    }
    void einer(std::size_t n, const Dateiaufruf& aufruf, bool startet) {
        SCOPED_TRACE("call " + std::to_string(n + 1) + " " + aufruf.name + " " + zu_utf8(aufruf.pfad) +
                     (startet ? ", he starts" : ", he saves"));
        const auto diese = platte->kopie();
        SpeicherDateisystem fs(diese), seins(diese), drittes(diese);
        const auto er = v.Platz(seins, u"otto", u"PLATZ2");
        const bool läuft = am_Start || startet || er->starten(v.aufruf);
        EXPECT_TRUE(läuft);
        const auto lauf = v.Platz(fs, v.benutzer, u"PLATZ1");
        EXPECT_TRUE(am_Start || lauf->starten(v.aufruf));
        bool ok = false;
        std::size_t aufrufe = 0;
        fs.davor = [&](const std::string&, const Text&) {
            if (aufrufe++ != n) return;
            if ((startet || am_Start) && !er->starten(v.aufruf)) return;
            ok = trägt_ein(*er);
            if (startet && er->programm) er->schließen();
        };
        tu(*lauf);
        fs.davor = nullptr;
        EXPECT_TRUE(!ok || aufbewahrt(*diese)) << zu_utf8(letzter_Hinweis(*lauf));
        const auto nächster = v.Platz(drittes, u"anna", u"PLATZ3");
        EXPECT_TRUE(nächster->starten(v.aufruf)) << zu_utf8(letzter_Hinweis(*nächster));
        EXPECT_TRUE(!ok || aufbewahrt(*diese)) << "behind the next start";
        EXPECT_FALSE(drittes.gibt_es(BACKUPS + Text(REDOKOPIE)));
    }
    void alle(const char* was, bool startet) {
        constexpr std::size_t dünn = 53; // in the ordinary tests each n-th call alone
        const auto aufrufe = Aufrufe();
        const auto nicht = unteilbar(aufrufe);
        for (std::size_t n = voller_Lauf() ? 0 : 7; n < aufrufe.size(); n += voller_Lauf() ? 1 : dünn)
            if (!startet || !nicht[n]) einer(n, aufrufe[n], startet);
        EXPECT_GT(gespeichert, 0);
        berichten({was, std::to_string(gespeichert + abgelehnt),
                   "his entry saved " + std::to_string(gespeichert) + ", refused " +
                       std::to_string(abgelehnt) + "; lost " +
                       (::testing::Test::HasFailure() ? "some" : "0")});
    }
};

TEST(Zwei_Plätze, er_speichert_während_der_Wiederherstellung) {
    Zwei_Plätze p(false);
    p.alle("a colleague saves before each call of a restore", false);
    EXPECT_GT(p.abgelehnt, 0);
}
TEST(Zwei_Plätze, er_startet_während_der_Wiederherstellung) {
    Zwei_Plätze(false).alle("a restore stalls at each call, a colleague finishes it and goes on", true);
}
TEST(Zwei_Plätze, er_startet_während_des_Abschließens) {
    Zwei_Plätze(true).alle("the same of a start that finishes a restore", true);
}

} // namespace
} // namespace kalvora
