// One operation of the whole program, with each fault at each of its file-system calls. Behind every fault a
// fresh process looks at the disk, makes an entry, and a third one looks again; what came of it is counted.
#pragma once

#include "hilfen/programmlauf.h"
#include "unit/zuverlaessigkeit/bericht.h"

namespace kalvora {

struct Störart {
    enum Wo { Jeder, Ändernder, Schreiben };
    const char* name;
    Wo wo;
    Wirkung wirkung;
    int nummer = 57;
    bool dauernd = false;
    bool stromausfall = false; // behind it all that was not synced is lost
};
inline constexpr Störart STÖRARTEN[] = {
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

struct Vorgang {
    const char* name;
    Text benutzer;
    std::vector<Text> aufruf; // of the start that comes before the faults; empty: none
    std::function<void(SpeicherDateisystem&)> vorbereiten;
    std::function<void(Platzlauf&)> tat;
    // What a fresh process sees of it all; "" with a reason told is damage.
    std::function<Text(Platzlauf&)> bild;
    std::vector<Text> neustart;                                          // of the processes that look
    std::function<bool(Platzlauf&)> weiter = [](auto&) { return true; }; // the work goes on
    int dünn = 1;                // in the ordinary tests: each n-th call alone
    bool derselbe_Platz = false; // the processes that look run on the workstation of the fault
};

struct Bilanz {
    int versucht = 0, gespeichert = 0, gemeldet_alt = 0, gemeldet_neu = 0, alt = 0, neu = 0, versperrt = 0,
        verloren = 0;
};

class Störprobe {
public:
    explicit Störprobe(Vorgang v) : v_(std::move(v)) {
        SpeicherDateisystem fs(platte_);
        v_.vorbereiten(fs);
    }
    void alle() {
        ungestört();
        ASSERT_FALSE(aufrufe_.empty());
        ASSERT_FALSE(testing::Test::HasFailure());
        for (std::size_t art = 0; art < std::size(STÖRARTEN); ++art)
            eine(STÖRARTEN[art], art);
    }
    int versucht = 0;

private:
    static bool passt(Störart::Wo wo, const std::string& aufruf) {
        if (wo == Störart::Schreiben) return aufruf == "write";
        for (const char* liest : {"read", "read_at", "info", "list", "change_folder", "close", "real_folder"})
            if (aufruf == liest) return wo == Störart::Jeder;
        return true;
    }
    std::unique_ptr<Platzlauf> Platz(SpeicherDateisystem& fs, const Text& benutzer, const Text& rechner) {
        return std::make_unique<Platzlauf>(fs, benutzer, u"/", v_.derselbe_Platz ? u"PLATZ1" : rechner);
    }
    // Old and new state as fresh processes see them, and the calls between the two.
    void ungestört() {
        SpeicherDateisystem vorher(platte_->kopie());
        const auto erster = Platz(vorher, u"anna", u"PLATZ2");
        if (!v_.aufruf.empty()) alt_ = Blick(*erster);
        SpeicherDateisystem fs(platte_->kopie());
        const auto lauf = Platz(fs, v_.benutzer, u"PLATZ1");
        öffnen(*lauf);
        fs.tagebuch_leeren();
        v_.tat(*lauf);
        aufrufe_ = fs.tagebuch();
        EXPECT_TRUE(lauf->fenster.hinweise.empty()) << zu_utf8(lauf->fenster.hinweise.back());
        neu_ = Blick(*Platz(fs, u"anna", u"PLATZ2"));
        EXPECT_NE(neu_, alt_);
    }
    void öffnen(Platzlauf& lauf) {
        if (!v_.aufruf.empty()) {
            ASSERT_TRUE(lauf.starten(v_.aufruf));
        }
    }
    // Nothing where the start failed.
    Text Blick(Platzlauf& lauf) {
        if (!lauf.starten(v_.neustart)) return u"<versperrt> " + letzter_Hinweis(lauf);
        return v_.bild(lauf);
    }
    static Text letzter_Hinweis(const Platzlauf& lauf) {
        return lauf.fenster.hinweise.empty() ? Text() : lauf.fenster.hinweise.back();
    }

    void eine(const Störart& art, std::size_t versatz) {
        Bilanz b;
        const auto schritt =
            static_cast<std::size_t>(voller_Lauf() || art.wo != Störart::Jeder ? 1 : v_.dünn);
        for (std::size_t n = 0, k = versatz; n < aufrufe_.size(); ++n)
            if (passt(art.wo, aufrufe_[n].name) && ++k % schritt == 0) einer(art, n, b);
        versucht += b.versucht;
        EXPECT_EQ(b.versperrt, 0) << v_.name << ", " << art.name;
        EXPECT_EQ(b.verloren, 0) << v_.name << ", " << art.name;
        std::vector<std::string> zeile{v_.name, art.name};
        for (const int zahl : {b.versucht, b.gespeichert, b.gemeldet_alt, b.gemeldet_neu, b.alt, b.neu,
                               b.versperrt, b.verloren})
            zeile.push_back(std::to_string(zahl));
        berichten(zeile);
    }

    void einer(const Störart& art, std::size_t n, Bilanz& b) {
        SpeicherDateisystem fs(platte_->kopie());
        const auto lauf = Platz(fs, v_.benutzer, u"PLATZ1");
        öffnen(*lauf);
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
        ++b.versucht;
        const Text wie = beurteilen(fs, beendet, !lauf->fenster.hinweise.empty(), b);
        if (!wie.empty())
            ADD_FAILURE() << v_.name << ", " << art.name << ", call " << n + 1 << " " << aufrufe_[n].name
                          << " " << zu_utf8(aufrufe_[n].pfad)
                          << "\n  told: " << zu_utf8(letzter_Hinweis(*lauf)) << "\n  then: " << zu_utf8(wie);
    }

    // What is wrong with the outcome; empty when nothing is.
    Text beurteilen(SpeicherDateisystem& fs, bool beendet, bool gemeldet, Bilanz& b) {
        const auto erster = Platz(fs, u"anna", u"PLATZ2");
        const Text gesehen = Blick(*erster);
        if (gesehen.starts_with(u"<versperrt>")) {
            ++b.versperrt;
            return gesehen;
        }
        if (gesehen != alt_ && gesehen != neu_) {
            ++b.verloren;
            const auto ab =
                std::mismatch(gesehen.begin(), gesehen.end(), neu_.begin(), neu_.end()).second - neu_.begin();
            const auto stelle = static_cast<std::size_t>(ab);
            return u"neither old nor new: \"" + gesehen.substr(stelle, 80) + u"\" for \"" +
                   neu_.substr(stelle, 80) + u"\"";
        }
        const bool neu = gesehen == neu_;
        if (!neu && !beendet && !gemeldet) {
            ++b.verloren;
            return u"lost without a word";
        }
        ++(beendet    ? (neu ? b.neu : b.alt)
           : gemeldet ? (neu ? b.gemeldet_neu : b.gemeldet_alt)
                      : b.gespeichert);
        const bool ging_weiter = v_.weiter(*erster);
        const auto zweiter = Platz(fs, u"otto", u"PLATZ3");
        const bool startet = zweiter->starten(v_.neustart);
        if (!startet || !ging_weiter) {
            ++b.versperrt;
            return u"behind the next entry: " + letzter_Hinweis(startet ? *erster : *zweiter);
        }
        return {};
    }

    Vorgang v_;
    std::shared_ptr<SpeicherPlatte> platte_ = std::make_shared<SpeicherPlatte>();
    std::vector<Dateiaufruf> aufrufe_;
    Text alt_, neu_;
};

} // namespace kalvora
