// Each call of the file system in turn fails, is cut short, loses its answer or ends the program: fresh
// processes on the same disk find the old state or the new one and go on working, and nobody was told that a
// save went well which did not.
#include "unit/zuverlaessigkeit/stoerprobe.h"

namespace kalvora {
namespace {

const Text DATEN = u"/srv/x/Data/";
const std::vector<Text> AUFRUF{u"/path", DATEN, u"/nowelcomescreen"};
const Text HEUTE = DATEN + u"2611 261116 Data.dat";

// Rows of all months, comments of this one, the lines of the shared files.
Text gesehen(Platzlauf& lauf) {
    Gemeinsame_Daten& d = lauf.programm->daten();
    d.erfassung.Alle_Erfassungsdaten_einlesen(false);
    Text aus;
    for (const TextView name : {u"Konfigdaten.dat", u"Mitarbeiterdaten.dat", u"Feiertage.dat"})
        for (const Text& zeile :
             als_Zeilen(dynamic_cast<SpeicherDateisystem&>(lauf.fs).inhalt(DATEN + Text(name)).value_or("")))
            aus += zeile + u"\n";
    for (int i = 1; i <= d.personal.MA().anzahl(); ++i) {
        const Text& wer = d.personal.MA()(i).MA_BenId;
        aus += u"\n" + wer + u" ";
        for (int m = 1; m <= 36; ++m)
            aus += Text(trimmen_rechts(aus_cp1252({d.erfassung.Daten().zelle(m, i), 31}))) + u"|";
        for (const Text& kommentar : d.erfassung.monat().Kommentare(wer))
            aus += kommentar;
    }
    return aus;
}

// anna's next entry, which the others must see.
bool nächster_Eintrag(Platzlauf& lauf) {
    lauf.trage_ein(u"anna", 25, 25, 6);
    lauf.programm->schleife();
    Platzlauf otto(lauf.fs, u"otto", u"/", u"PLATZ4");
    return otto.starten(AUFRUF) && otto.zellen(u"anna")[24] == u'S';
}

Vorgang in_der_Firma(const char* name, const Text& benutzer, std::function<void(Platzlauf&)> tat,
                     bool heutige_da = true) {
    Firma firma;
    firma.monate[u"2611"] = {A(u"anna", u""), A(u"otto", u"1"), A(u"otto", u"111"), u"K:otto:01-02:Kur"};
    firma.monate[u"2701"] = {A(u"eve", u"      3")};
    const auto vorbereiten = [=](SpeicherDateisystem& fs) {
        firma.anlegen(fs, DATEN);
        if (heutige_da) fs.schreibe(HEUTE, als_Datei(Monat(firma.monate.at(u"2611"))));
    };
    return {name, benutzer, AUFRUF, vorbereiten, std::move(tat), gesehen, AUFRUF, nächster_Eintrag, 3};
}
// As the program's windows do it; whatever failed is reported behind it.
std::function<void(Platzlauf&)> als_Ereignis(std::function<void(Gemeinsame_Daten&)> tat) {
    return [tat = std::move(tat)](Platzlauf& lauf) {
        lauf.programm->app().event(lauf.fenster_(), [&] { tat(lauf.programm->daten()); });
        lauf.programm->schleife();
    };
}
void Eintrag(Platzlauf& lauf) {
    lauf.trage_ein(u"anna", 18, 19, 1);
    lauf.programm->schleife();
}

Vorgang Verdichten() {
    Vorgang v = in_der_Firma("compaction", u"chef",
                             als_Ereignis([](auto& d) { d.erfassung.Datensatz_speichern({}); }));
    v.bild = [](Platzlauf& lauf) {
        const auto& fs = dynamic_cast<SpeicherDateisystem&>(lauf.fs);
        return gesehen(lauf) + ziffern(static_cast<long>(als_Zeilen(*fs.inhalt(HEUTE)).size()));
    };
    return v;
}

Vorgang ErsterLauf() {
    const auto Auslieferung = [](SpeicherDateisystem& fs) {
        Installation_ablegen(
            [&](const Text& name, const std::string& bytes) { fs.schreibe(u"/opt/kalvora/" + name, bytes); });
    };
    const auto Dateien = [](Platzlauf& lauf) {
        Text alle;
        for (const auto& [pfad, bytes] : dynamic_cast<SpeicherDateisystem&>(lauf.fs).platte().abbild())
            if (endet_ohne_Fall(pfad, u".dat") && Dateiname_aus_Pfad(pfad).front() != u'.')
                for (const Text& zeile : als_Zeilen(bytes))
                    alle += pfad + u" " + zeile + u"\n";
        return alle;
    };
    return {"first run",
            u"anna",
            {},
            Auslieferung,
            [](Platzlauf& l) { l.starten({u"/nowelcomescreen"}); },
            Dateien,
            {u"/nowelcomescreen"},
            [](auto&) { return true; },
            9,
            true};
}

std::vector<Vorgang> Vorgänge() {
    Vorgang einstellung = in_der_Firma("configuration", u"chef", als_Ereignis([](auto& d) {
                                           d.konfig.Setting_setzen(50, 1);
                                           d.konfig.Konfigdaten_schreiben();
                                       }));
    Vorgang personal =
        in_der_Firma("staff list", u"chef", als_Ereignis([](auto& d) {
                         d.personal.ändern().anfügen({u"Neu Person", u"neu", u"000000", u"999999", {}, {}});
                         d.personal.Mitarbeiterdaten_schreiben();
                     }));
    return {in_der_Firma("one entry", u"anna", Eintrag),
            in_der_Firma("first save of a day", u"anna", Eintrag, false),
            Verdichten(),
            std::move(einstellung),
            std::move(personal),
            ErsterLauf()};
}

class Störungen : public testing::TestWithParam<std::size_t> {};

TEST_P(Störungen, Alt_oder_neu_und_gemeldet) {
    Störprobe probe(Vorgänge()[GetParam()]);
    probe.alle();
    EXPECT_GT(probe.versucht, 40);
}
INSTANTIATE_TEST_SUITE_P(Vorgang, Störungen, testing::Range(std::size_t{0}, Vorgänge().size()));

} // namespace
} // namespace kalvora
