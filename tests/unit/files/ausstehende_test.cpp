// Own rows until a read has seen them, on a disk where appends of two workstations can overwrite each other.
#include "hilfen/schaden.h"

namespace kalvora {
namespace {

const Text HEUTE = u"2611 261116";

// What becomes of the file behind the save.
enum class Datei { Dieselbe, Neu, Neu_nach_Minuten, Morgen };
struct Fall {
    const char* was;
    std::vector<Text> vorher;
    std::vector<Text> gespeichert;
    std::vector<Text> danach; // the file's rows as somebody else leaves them
    std::vector<Text> zuletzt;
    Datei datei = Datei::Dieselbe;
};

const Text UNGEWISS = u"Folgender Eintrag im Monat 11.2026 konnte nicht bestätigt werden: 'anna'. Bitte "
                      u"prüfen Sie den Eintrag und nehmen Sie ihn gegebenenfalls erneut vor.";

void prüfen(const Fall& fall) {
    SCOPED_TRACE(fall.was);
    const Text neuer_Stamm = fall.datei == Datei::Morgen ? Text(u"2611 261117") : HEUTE;
    Erfassungsplatz p({u"anna", u"otto"});
    p.Monatsdatei(HEUTE, fall.vorher);
    p.erfassung.Erfassungsdaten_lesen(u"2611");
    for (const Text& zeile : fall.gespeichert)
        EXPECT_TRUE(p.erfassung.Datensatz_speichern(zeile));
    EXPECT_TRUE(p.erfassung.Ausstehende_vorhanden());
    if (fall.datei != Datei::Dieselbe) ++p.schlüssel;
    if (fall.datei == Datei::Neu_nach_Minuten) p.uhr.weiter(300);
    p.Monatsdatei(neuer_Stamm, fall.danach);
    if (neuer_Stamm != HEUTE) p.fs.platte().entferne(p.pfad(HEUTE));
    p.erfassung.Ausstehende_abschließen();
    EXPECT_FALSE(p.erfassung.Ausstehende_vorhanden());
    EXPECT_EQ(p.zeilen(p.erfassung.Aktuelle_Erfassungsdatei(u"2611")), Monat(fall.zuletzt));
    // What went missing long ago is told and not written again.
    const bool ungewiss = fall.datei == Datei::Neu_nach_Minuten;
    EXPECT_EQ(p.fenster.hinweise, ungewiss ? std::vector<Text>{UNGEWISS} : std::vector<Text>{});
}

const Text A0 = A(u"anna", u"1"), A1 = A(u"anna", u"12"), A2 = A(u"anna", u"123");
const Text O0 = A(u"otto", u"4"), O1 = A(u"otto", u"44"), LEER = A(u"anna", u"");

TEST(Ausstehende, Zeilen) {
    const Fall tafel[] = {
        {"seen", {A0}, {A1}, {A0, A1}, {A0, A1}},
        {"overwritten by a colleague's row", {A0, O0}, {A1}, {A0, O0, O1}, {A0, O0, O1, A1}},
        {"lost as the first row of a person", {O0}, {A1}, {O0}, {O0, A1}},
        {"a deletion is lost too", {A0}, {LEER}, {A0}, {A0, LEER}},
        {"superseded by a later row of the same person", {A0}, {A1}, {A0, A1, A2}, {A0, A1, A2}},
        {"overwritten by a row of the same person", {A0}, {A1}, {A0, A2}, {A0, A2}},
        {"of two lost rows of one person the last is written", {A0}, {A1, A2}, {A0}, {A0, A2}},
        {"of two persons one is lost", {A0, O0}, {A1, O1}, {A0, O0, O1}, {A0, O0, O1, A1}},
        {"compacted with our row", {A0, O0}, {A1}, {A1, O0}, {A1, O0}, Datei::Neu},
        {"compacted without it, grown again", {A0}, {A1}, {A0, O0, O1, O0}, {A0, O0, O1, O0, A1}, Datei::Neu},
        {"compacted behind an own older row", {O0}, {A0, A1}, {O0, A0}, {O0, A0, A1}, Datei::Neu},
        {"a colleague changed it, then compacted", {A0, O0}, {A1}, {A2, O0}, {A2, O0}, Datei::Neu},
        {"our deletion compacted away", {A0, O0}, {LEER}, {O0}, {O0}, Datei::Neu},
        {"perhaps taken back by a colleague", {A0, O0}, {A1}, {A0, O0}, {A0, O0}, Datei::Neu_nach_Minuten},
        {"perhaps a first entry taken back", {O0}, {A1}, {O0}, {O0}, Datei::Neu_nach_Minuten},
        {"taken over into the next day's version", {A0}, {A1}, {A1}, {A1}, Datei::Morgen},
        {"changed there by a colleague", {A0}, {A1}, {A2}, {A2}, Datei::Morgen},
    };
    for (const Fall& fall : tafel)
        prüfen(fall);
}

TEST(Ausstehende, Kommentare) {
    const Text E = A(u"anna", u"11111"), L = A(u"anna", u"11 11"), K = u"K:anna:01-02:Kur",
               K1 = u"K:anna:01-01:Kur", K34 = u"K:anna:03-04:Kur", K4 = u"K:anna:04-04:Kur",
               LANG = u"K:anna:01-04:Kur", WEG = u"K:anna:01-02:", OTTO = u"K:otto:01-02:x",
               NEU = u"K:anna:02-02:neu", SPÄT = A(u"anna", u"  111");
    const Fall tafel[] = {
        {"lost", {E}, {K}, {E, OTTO}, {E, OTTO, K}},
        {"the same text over fewer days is not ours", {E, K}, {LANG}, {E, K}, {E, K, K34}},
        {"lost removal", {E, K}, {WEG}, {E, K}, {E, K, WEG}},
        {"removal compacted", {E, K}, {WEG}, {E, O0}, {E, O0}, Datei::Neu},
        {"compacted into runs", {L}, {LANG}, {L, K, K4}, {L, K, K4}, Datei::Neu},
        {"a colleague's newer one lives on", {E, K}, {LANG}, {E, NEU}, {E, NEU, K34}, Datei::Neu},
        {"superseded on one day", {E}, {LANG}, {E, OTTO, OTTO, NEU}, {E, OTTO, OTTO, NEU, K1, K34}},
        {"on days that are blank now", {E}, {K}, {SPÄT}, {SPÄT}},
    };
    for (const Fall& fall : tafel)
        prüfen(fall);
}

TEST(Ausstehende, NachEinigenVersuchenWirdEsGesagt) {
    Erfassungsplatz p({u"anna"});
    p.Monatsdatei(HEUTE, {A0});
    p.erfassung.Erfassungsdaten_lesen(u"2611");
    int geschrieben = 0;
    p.fs.davor = [&](const std::string& aufruf, const Text& pfad) {
        geschrieben += aufruf == "write" && pfad == p.pfad(HEUTE) ? 1 : 0;
        if (aufruf == "open" && pfad == p.pfad(HEUTE)) p.Monatsdatei(HEUTE, {A0}); // every append is lost
    };
    EXPECT_TRUE(p.erfassung.Datensatz_speichern(A1));
    p.erfassung.Ausstehende_abschließen();
    EXPECT_EQ(geschrieben, 4);
    EXPECT_FALSE(p.erfassung.Ausstehende_vorhanden());
    EXPECT_EQ(p.fenster.hinweise, std::vector<Text>{UNGEWISS});
}

TEST(Ausstehende, WasEtwasAnderesHießeWirdNichtNachgetragen) {
    Erfassungsplatz p({u"anna"});
    p.Monatsdatei(HEUTE, {A0});
    p.erfassung.Erfassungsdaten_lesen(u"2611");
    p.erfassung.Datensatz_speichern(A1);
    p.Monatsdatei(HEUTE, {A0});
    p.konfig.ändern().SF(1).SF_Text = u"Etwas anderes";
    p.erfassung.Ausstehende_nachsehen();
    EXPECT_EQ(p.zeilen(HEUTE), Monat({A0}));
    EXPECT_EQ(p.fenster.hinweise, std::vector<Text>{UNGEWISS});
}

// A disk that refuses drops nothing, and a month aside leaves the shown one alone.
TEST(Ausstehende, WartenWeiter) {
    Erfassungsplatz p({u"anna", u"otto"});
    p.Monatsdatei(HEUTE, {A0});
    p.Monatsdatei(u"2612 261116", {O0});
    p.erfassung.Erfassungsdaten_lesen(u"2611");
    p.erfassung.Datensatz_speichern(A1);
    p.erfassung.Datensatz_speichern(O1);
    p.Monatsdatei(HEUTE, {A0});
    p.erfassung.Erfassungsdaten_lesen(u"2612");
    p.fs.störe({.aufruf = "write", .nummer = FEHLER_VOLL, .dauernd = true});
    EXPECT_FALSE(p.erfassung.Ausstehende_nachsehen());
    p.fs.störe({.aufruf = "list", .nummer = FEHLER_NETZ, .dauernd = true});
    EXPECT_FALSE(p.erfassung.Ausstehende_nachsehen());
    p.fs.störe_nicht();
    p.erfassung.vor_dem_Schreiben = []() -> bool { throw Programmabbruch(u"", u"gesperrt"); };
    EXPECT_THROW(p.erfassung.Ausstehende_nachsehen(), Programmabbruch);
    p.erfassung.vor_dem_Schreiben = {};
    EXPECT_TRUE(p.erfassung.Ausstehende_vorhanden());
    EXPECT_TRUE(p.erfassung.Ausstehende_nachsehen());
    EXPECT_EQ(p.zeilen(HEUTE), Monat({A0, A1, O1}));
    EXPECT_EQ(p.erfassung.monat().yymm, u"2612");
    EXPECT_EQ(p.erfassung.monat().Erfassungsdaten.anzahl(), 1);
    EXPECT_FALSE(p.erfassung.Ausstehende_nachsehen());
    EXPECT_FALSE(p.erfassung.Ausstehende_vorhanden());
}

// As on a share: each append goes where the end was when the file was opened.
TEST(Ausstehende, GleichzeitigeAnhänge) {
    auto platte = std::make_shared<SpeicherPlatte>();
    Erfassungsplatz p({u"anna", u"otto"}, platte), q({u"anna", u"otto"}, platte, u"PLATZ2");
    p.Monatsdatei(HEUTE, {A0, O0});
    for (Erfassungsplatz* platz : {&p, &q})
        platz->erfassung.Erfassungsdaten_lesen(u"2611");
    platte->freigabe = true;
    bool einmal = true;
    p.fs.davor = [&](const std::string& aufruf, const Text&) {
        if (aufruf == "write" && std::exchange(einmal, false)) q.erfassung.Datensatz_speichern(O1);
    };
    EXPECT_TRUE(p.erfassung.Datensatz_speichern(A1));
    EXPECT_EQ(p.Tage_auf_Platte(u"otto"), u"4") << "the colleague's row is lost now";
    p.erfassung.Ausstehende_abschließen();
    q.erfassung.Ausstehende_abschließen();
    EXPECT_EQ(p.Tage_auf_Platte(u"otto"), u"44");
    EXPECT_EQ(p.Tage_auf_Platte(u"anna"), u"12");
}

} // namespace
} // namespace kalvora
