// What one workstation sees of a file that others find whole: nothing, half of it, NULs, no file at all. And
// every way in which bytes of a capture file go bad: only the damaged line is lost.
#include <set>

#include "files/monatsdatei.h"
#include "hilfen/programmlauf.h"
#include "unit/zuverlaessigkeit/bericht.h"
#include "unit/zuverlaessigkeit/vorgaenge.h"

namespace kalvora {
namespace {

const Text DATEN = u"/srv/Data/";

enum class Blick { Wahr, Leer, Halb, Nullen, Weg };
constexpr const char* BLICKE[] = {"true", "empty", "half", "NULs", "vanished"};

// A workstation whose view of one file is wrong for a while; what it writes goes to the true one.
class TrübesDateisystem : public SpeicherDateisystem {
public:
    using SpeicherDateisystem::info;
    using SpeicherDateisystem::SpeicherDateisystem;
    Text datei; // its name
    Blick blick = Blick::Wahr;
    std::optional<std::vector<Text>> alte_Liste; // of DATEN, as it was some time ago

    Ergebnis<Handle> open(const Text& pfad, OpenMode modus) override {
        const bool liest = modus == OpenMode::Read || modus == OpenMode::Extend;
        if (blick == Blick::Wahr || !liest || Dateiname_aus_Pfad(pfad) != datei || !gibt_es(pfad))
            return SpeicherDateisystem::open(pfad, modus);
        if (blick == Blick::Weg) return Ergebnis<Handle>::fehler(53);
        if (modus != OpenMode::Read) return SpeicherDateisystem::open(pfad, modus);
        const std::string ganz = *inhalt(pfad);
        const Text falsch = pfad + u".blick";
        schreibe(falsch, blick == Blick::Leer   ? ""
                         : blick == Blick::Halb ? ganz.substr(0, ganz.size() / 2)
                                                : std::string(ganz.size(), '\0'));
        auto h = SpeicherDateisystem::open(falsch, modus);
        platte().entferne(falsch);
        return h;
    }
    Ergebnis<FileInfo> info(const Text& pfad) override {
        auto e = SpeicherDateisystem::info(pfad);
        if (!e || blick == Blick::Wahr || Dateiname_aus_Pfad(pfad) != datei) return e;
        if (blick == Blick::Weg) return Ergebnis<FileInfo>::fehler(53);
        if (blick == Blick::Leer) e->size = 0;
        return e;
    }
    Ergebnis<std::vector<Text>> list(const Text& ordner) override {
        auto namen = SpeicherDateisystem::list(ordner);
        if (namen && alte_Liste && ordner == DATEN) return *alte_Liste;
        if (namen && blick == Blick::Weg && ordner == DATEN) std::erase(*namen, datei);
        return namen;
    }
};

struct Fall {
    Text datei;
    Blick blick;
    int bis; // the view is true again behind so many waits
};

bool ist_Monat(const Text& datei) {
    return endet_ohne_Fall(datei, u" Data.dat");
}
// Messages but the one that asks to wait for somebody's writing.
bool gemeldet(const Platzlauf& lauf) {
    const auto& h = lauf.fenster.hinweise;
    return std::any_of(h.begin(), h.end(),
                       [](const Text& t) { return !enthält(t, u"gerade von jemand anderem benutzt"); });
}
void trüben(TrübesDateisystem& fs, Platzlauf& lauf, const Fall& fall) {
    fs.datei = fall.datei;
    fs.blick = fall.blick;
    lauf.fenster.beim_Warten = [&fs, n = 0, bis = fall.bis]() mutable {
        if (++n == bis) fs.blick = Blick::Wahr;
    };
}

// chef has entered a day for otto and changed configuration and staff list; anna's workstation polls and
// saves in the wrong view. What is wrong with the outcome; empty when nothing is.
Text Arbeit_im_falschen_Blick(const Fall& fall) {
    const Vorgang v = vorgang::in_der_Firma(u"/")[0];
    SpeicherDateisystem fs;
    v.vorbereiten(fs);
    TrübesDateisystem trüb(fs.geteilte_platte());
    const auto anna = v.Platz(trüb, u"anna", u"PLATZ1"), chef = v.Platz(fs, u"chef", u"PLATZ2");
    EXPECT_TRUE(anna->starten(v.aufruf) && chef->starten(v.aufruf) && chef->trage_ein(u"otto", 20, 20, 6));
    chef->programm->app().event(chef->fenster_(), [&] {
        Gemeinsame_Daten& d = chef->programm->daten();
        d.personal.ändern().anfügen({u"Neu Person", u"neu", u"000000", u"999999", {}, {}});
        d.personal.Mitarbeiterdaten_schreiben();
        d.konfig.Setting_setzen(50, 1);
        d.konfig.Konfigdaten_schreiben();
    });
    trüben(trüb, *anna, fall);
    // Of half a month the rows before the cut are taken: behind it an append might just be arriving.
    const bool halber_Monat = fall.blick == Blick::Halb && ist_Monat(fall.datei);
    const auto zeigt_weniger = [&] { return !halber_Monat && anna->zellen(u"otto").substr(0, 3) != u"UUU"; };
    anna->fenster_().tmrTimer1.tick();
    anna->programm->schleife();
    if (!gemeldet(*anna) && zeigt_weniger()) return u"shows less behind the poll";
    vorgang::Eintrag(*anna);
    const bool gesagt = gemeldet(*anna);
    if (!gesagt && zeigt_weniger()) return u"shows less behind the entry";
    trüb.blick = Blick::Wahr;

    const auto otto = v.Platz(fs, u"otto", u"PLATZ3");
    if (!otto->starten(v.aufruf)) return u"no start: " + letzter_Hinweis(*otto);
    if (otto->zellen(u"otto") != u"UUU" + Text(16, u'.') + u"S" + Text(11, u'.')) return u"otto's rows";
    if (otto->zeile(u"neu") == 0) return u"the staff list";
    if (otto->programm->daten().K().Setting(50) != 1) return u"the configuration";
    return gesagt || otto->zellen(u"anna").substr(17, 2) == u"UU" ? Text() : u"an entry lost without a word";
}

// A start in the wrong view: all is there, or the file is named with a way out, and nothing has changed.
Text Start_im_falschen_Blick(const Fall& fall, bool muss_gehen) {
    const Vorgang v = vorgang::in_der_Firma(u"/")[0];
    SpeicherDateisystem fs;
    v.vorbereiten(fs);
    const auto erster = v.Platz(fs, u"otto", u"PLATZ1");
    const Text soll = Richter::Blick(v, *erster).value_or(u"<no start>");
    erster->programm.reset();
    const auto vorher = fs.platte().abbild();
    TrübesDateisystem trüb(fs.geteilte_platte());
    const auto otto = v.Platz(trüb, u"otto", u"PLATZ1");
    trüben(trüb, *otto, fall);
    const bool startet = otto->starten(v.aufruf);
    trüb.blick = Blick::Wahr;
    const bool gemeldet =
        fall.blick == Blick::Halb && ist_Monat(fall.datei) && !otto->fenster.hinweise.empty();
    if (startet) return gemeldet || vorgang::gesehen(*otto) == soll ? Text() : Text(u"shows something else");
    if (muss_gehen) return u"no start: " + letzter_Hinweis(*otto);
    const Text genannt = ist_Monat(fall.datei) ? fall.datei.substr(2, 2) + u".2026" : fall.datei;
    const auto& fragen = otto->fenster.fragen;
    const auto nennt = [&](const Text& t) { return enthält(t, fall.datei) || enthält(t, genannt); };
    if (std::none_of(fragen.begin(), fragen.end(), nennt)) return u"no way out: " + letzter_Hinweis(*otto);
    for (const auto& [pfad, bytes] : vorher)
        if (endet_ohne_Fall(pfad, u".dat") && fs.inhalt(pfad) != bytes) return u"changed: " + pfad;
    return {};
}

TEST(Blicke, Nichts_Falsches_wird_gezeigt_oder_gespeichert) {
    int versucht = 0;
    for (const Text& datei : {Text(u"2611 261116 Data.dat"), Text(u"Konfigdaten.dat"),
                              Text(u"Mitarbeiterdaten.dat"), Text(u"Feiertage.dat")})
        for (int b = 1; b < static_cast<int>(std::size(BLICKE)); ++b)
            for (const int bis : {1, 2, 1000}) {
                SCOPED_TRACE(zu_utf8(datei) + " " + BLICKE[b] + " for " + std::to_string(bis) + " waits");
                const Fall fall{datei, static_cast<Blick>(b), bis};
                EXPECT_EQ(Arbeit_im_falschen_Blick(fall), u"");
                EXPECT_EQ(Start_im_falschen_Blick(fall, bis == 1), u"");
                versucht += 2;
            }
    berichten(
        {"a shared file seen empty, half, as NULs or not at all, for a moment or for good, at work and at "
         "a start",
         std::to_string(versucht),
         "nothing wrong saved; nothing wrong shown, but of half a month the rows before the cut; for good: "
         "the "
         "question for a repair"});
}

// The names of the folder are those of before a colleague's first save of the day, which has taken the older
// version away: work goes on, and starts.
TEST(Blicke, Namen_von_vor_der_ersten_Speicherung) {
    const Vorgang v = vorgang::in_der_Firma(u"/")[1];
    SpeicherDateisystem fs;
    v.vorbereiten(fs);
    TrübesDateisystem trüb(fs.geteilte_platte());
    const auto anna = v.Platz(trüb, u"anna", u"PLATZ1"), chef = v.Platz(fs, u"chef", u"PLATZ2"),
               otto = v.Platz(trüb, u"otto", u"PLATZ3");
    ASSERT_TRUE(anna->starten(v.aufruf) && chef->starten(v.aufruf));
    trüb.alte_Liste = *trüb.list(DATEN);
    ASSERT_TRUE(chef->trage_ein(u"otto", 20, 20, 6));
    anna->fenster_().tmrTimer1.tick();
    EXPECT_EQ(anna->zellen(u"otto")[19], u'S');
    ASSERT_TRUE(anna->trage_ein(u"anna", 18, 19, 1));
    anna->fenster_().tmrTimer1.tick();
    EXPECT_TRUE(otto->starten(v.aufruf));
    EXPECT_EQ(otto->zellen(u"anna").substr(17, 3), u"UU.");
    for (const auto* platz : {&anna, &chef, &otto})
        EXPECT_EQ(letzter_Hinweis(**platz), u"");
}

// --- bytes of a capture file -----------------------------------------------------------------------------

const std::vector<Text> PERSONEN{u"anna", u"otto", u"eve", u"chef", u"zita"};

// Whose row is read as it was; nothing when the file is told as damaged in whole.
std::optional<std::set<Text>> heile_Zeilen(Prüfplatz& p, const std::string& bytes) {
    const Text pfad = p.daten(u"2611 261116 Data.dat");
    p.fs.schreibe(pfad, bytes);
    Monatsinhalt inhalt;
    inhalt.yymm = u"2611";
    try {
        p.kanal.Datei_öffnen(pfad, Dateimodus::Input);
        Monat_einlesen(p.kanal, pfad, Codefilter(7), inhalt);
    } catch (const Dateischaden&) {
        return std::nullopt;
    }
    std::set<Text> heil;
    for (const Erfassungssatz& satz : inhalt.Erfassungsdaten)
        satz.tage == tage(u"123") ? void(heil.insert(satz.BenId)) : void(heil.erase(satz.BenId));
    return heil;
}

TEST(Blicke, Nur_die_beschaedigte_Zeile_geht_verloren) {
    Prüfplatz p;
    std::string ganz = als_Datei(Monat({}));
    std::vector<std::size_t> anfang; // of each person's line
    for (const Text& wer : PERSONEN) {
        anfang.push_back(ganz.size());
        ganz += als_Datei({A(wer, u"123")}, static_cast<std::uint8_t>(40 + ganz.size() % 100));
    }
    // All rows but those from `ab` to before `bis` must be there.
    const auto erwarte = [&](const std::string& bytes, std::size_t ab, std::size_t bis,
                             bool Kopf_heil = true) {
        const auto heil = heile_Zeilen(p, bytes);
        ASSERT_TRUE(heil || !Kopf_heil);
        for (std::size_t n = 0; heil && n < PERSONEN.size(); ++n)
            EXPECT_TRUE((n >= ab && n < bis) || heil->contains(PERSONEN[n])) << zu_utf8(PERSONEN[n]);
    };
    int versucht = 0;
    for (std::size_t stelle = 0; stelle < ganz.size(); ++stelle) {
        SCOPED_TRACE("at byte " + std::to_string(stelle));
        const bool im_Kopf = stelle < anfang[0];
        const auto dahinter = std::upper_bound(anfang.begin(), anfang.end(), stelle);
        const auto n = static_cast<std::size_t>(im_Kopf ? 0 : dahinter - anfang.begin() - 1);
        // A line end that goes bad joins two lines.
        const std::size_t bis = im_Kopf ? (ganz[stelle] == '\n') : n + (ganz[stelle] == '\n' ? 2 : 1);
        for (int bit = 0; bit < 8; ++bit, ++versucht) {
            std::string bytes = ganz;
            bytes[stelle] = static_cast<char>(bytes[stelle] ^ (1 << bit));
            erwarte(bytes, n, bis, !im_Kopf);
        }
        if (!im_Kopf) erwarte(ganz.substr(0, stelle), n, PERSONEN.size());
        if (!im_Kopf) // somebody else's line has got in between
            erwarte(ganz.substr(0, stelle) + als_Datei({A(u"fremd", u"1")}) + ganz.substr(stelle), n, n + 1);
        if (HasFailure()) return;
    }
    for (std::size_t n = 0; n < PERSONEN.size(); ++n, ++versucht) // a hole before the line
        erwarte(std::string(ganz).insert(anfang[n], std::string(100, '\0')), 0, 0);
    berichten(
        {"a month's file with one bit flipped (each), cut, a foreign line within a line (at each byte), NULs "
         "before a line",
         std::to_string(versucht), "only the damaged line is lost, or the file is named"});
}

} // namespace
} // namespace kalvora
