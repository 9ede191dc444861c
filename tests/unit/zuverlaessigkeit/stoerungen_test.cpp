// Each call of the file system in turn fails, is cut short, loses its answer or ends the program: fresh
// processes on the same disk find the old state or the new one and go on working, and nobody was told that a
// save went well which did not.
#include "hilfen/speicher_dateisystem.h"
#include "unit/zuverlaessigkeit/bericht.h"
#include "unit/zuverlaessigkeit/vorgaenge.h"

namespace kalvora {
namespace {

struct Störart {
    enum Wo { Jeder, Ändernder, Schreiben };
    const char* name;
    Wo wo;
    Wirkung wirkung;
    int nummer = 57;
    bool dauernd = false;
    bool stromausfall = false; // behind it all that was not synced is lost
};
constexpr Störart STÖRARTEN[] = {
    {"ENOSPC", Störart::Jeder, Wirkung::Fehler, 61},
    {"EIO", Störart::Jeder, Wirkung::Fehler, 57},
    {"EACCES, EBUSY", Störart::Jeder, Wirkung::Fehler, 70},
    {"ESTALE", Störart::Jeder, Wirkung::Fehler, 52},
    {"EIO from then on", Störart::Jeder, Wirkung::Fehler, 57, true},
    {"done, but the answer lost", Störart::Ändernder, Wirkung::Fehler_dahinter, 57},
    {"short write", Störart::Schreiben, Wirkung::Kurz, 61},
    {"short write and EIO", Störart::Schreiben, Wirkung::Kurz_und_Fehler, 57},
    {"killed before the call", Störart::Ändernder, Wirkung::Ende},
    {"killed in a write", Störart::Schreiben, Wirkung::Ende_mitten},
    {"killed behind the call", Störart::Ändernder, Wirkung::Ende_dahinter},
    {"power failure behind the call", Störart::Ändernder, Wirkung::Ende_dahinter, 57, false, true},
};

bool trifft(Störart::Wo wo, const std::string& aufruf) {
    if (wo == Störart::Schreiben) return aufruf == "write";
    for (const char* liest :
         {"read", "read_at", "info", "list", "change_folder", "close", "real_folder", "is_link"})
        if (aufruf == liest) return wo == Störart::Jeder;
    return true;
}

// One operation with each fault at each of its calls.
class Störprobe {
public:
    explicit Störprobe(Vorgang v) : v_(std::move(v)) {
        SpeicherDateisystem fs(platte_);
        v_.vorbereiten(fs);
    }
    int alle() {
        const Ungestört ohne(v_, *platte_);
        const Richter richter(v_, ohne.alt, ohne.neu);
        aufrufe_ = ohne.aufrufe;
        int versucht = 0;
        for (std::size_t art = 0; art < std::size(STÖRARTEN) && !aufrufe_.empty(); ++art)
            versucht += eine(STÖRARTEN[art], art, richter);
        return versucht;
    }

private:
    // The calls tried begin at another one for each fault.
    int eine(const Störart& art, std::size_t versatz, const Richter& richter) {
        Bilanz b;
        const int dünn = art.wo == Störart::Jeder ? v_.dünn : (v_.dünn + 2) / 3;
        const auto schritt = static_cast<std::size_t>(voller_Lauf() ? 1 : dünn);
        for (std::size_t n = 0, k = versatz; n < aufrufe_.size(); ++n)
            if (trifft(art.wo, aufrufe_[n].name) && ++k % schritt == 0) einer(art, n, richter, b);
        EXPECT_EQ(b.versperrt + b.verloren, 0) << v_.name << ", " << art.name;
        std::vector<std::string> zeile{v_.name, art.name};
        for (const int zahl : {b.versucht, b.gespeichert, b.gemeldet_alt, b.gemeldet_neu, b.beendet_alt,
                               b.beendet_neu, b.verloren, b.versperrt})
            zeile.push_back(std::to_string(zahl));
        berichten(zeile);
        return b.versucht;
    }
    void einer(const Störart& art, std::size_t n, const Richter& richter, Bilanz& b) {
        SpeicherDateisystem fs(platte_->kopie());
        const auto lauf = v_.Platz(fs, v_.benutzer, u"PLATZ1");
        EXPECT_TRUE(v_.aufruf.empty() || lauf->starten(v_.aufruf)) << zu_utf8(letzter_Hinweis(*lauf));
        lauf->fenster.hinweise.clear();
        fs.störe({"", u"*", static_cast<int>(n) + 1, art.wirkung, art.nummer, 7, art.dauernd});
        bool beendet = false;
        try {
            v_.tat(*lauf);
        } catch (const Programmende&) {
            beendet = true;
        }
        fs.neu_starten();
        if (art.stromausfall) fs.platte().verliere_ungesichertes();
        const Text wie = richter.beurteilen(fs, beendet, !v_.gelungen(*lauf), b);
        if (!wie.empty())
            ADD_FAILURE() << v_.name << ", " << art.name << ", call " << n + 1 << " " << aufrufe_[n].name
                          << " " << zu_utf8(aufrufe_[n].pfad)
                          << "\n  told: " << zu_utf8(letzter_Hinweis(*lauf)) << "\n  then: " << zu_utf8(wie);
    }

    Vorgang v_;
    std::shared_ptr<SpeicherPlatte> platte_ = std::make_shared<SpeicherPlatte>();
    std::vector<Dateiaufruf> aufrufe_;
};

// On an empty folder: whatever went wrong, the next start completes what is missing.
Vorgang ErsterLauf() {
    const auto Dateien = [](Platzlauf& lauf) {
        Text alle;
        for (const auto& [pfad, bytes] : dynamic_cast<SpeicherDateisystem&>(lauf.fs).platte().abbild())
            if (endet_ohne_Fall(pfad, u".dat") && !enthält(pfad, u"/.") && !enthält(pfad, u"/Backups/"))
                for (const Text& zeile : als_Zeilen(bytes))
                    alle += pfad + u" " + zeile + u"\n";
        return alle;
    };
    return {"first run",
            u"/",
            u"anna",
            {},
            [](FileSystem& fs) { Installation_ablegen(fs); },
            [](Platzlauf& l) { l.starten({u"/nowelcomescreen"}); },
            Dateien,
            {u"/nowelcomescreen"},
            [](auto&) { return true; },
            27,
            true};
}

std::vector<Vorgang> Vorgänge() {
    std::vector<Vorgang> alle = vorgang::in_der_Firma(u"/");
    alle.push_back(ErsterLauf());
    return alle;
}

class Störungen : public testing::TestWithParam<std::size_t> {};

TEST_P(Störungen, Alt_oder_neu_und_gemeldet) {
    EXPECT_GT(Störprobe(Vorgänge()[GetParam()]).alle(), 40);
}
INSTANTIATE_TEST_SUITE_P(Vorgang, Störungen, testing::Range(std::size_t{0}, Vorgänge().size()));

} // namespace
} // namespace kalvora
