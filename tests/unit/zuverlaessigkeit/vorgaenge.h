// The operations that the faults are tried on, each by the whole program on the made-up company; and the
// judgement of what fresh processes find behind a fault.
#pragma once

#include <algorithm>

#include "files/ordner.h"
#include "hilfen/programmlauf.h"
#include "safety/frm_recovery.h"

namespace kalvora {

struct Vorgang {
    const char* name;
    Text wurzel; // of the workstations' folders
    Text benutzer;
    std::vector<Text> aufruf; // of the start that comes before the faults; empty: none
    std::function<void(FileSystem&)> vorbereiten;
    std::function<void(Platzlauf&)> tat;
    std::function<Text(Platzlauf&)> bild; // of the state, as a fresh process sees it
    std::vector<Text> neustart;           // call of the processes that look
    std::function<bool(Platzlauf&)> weiter = [](auto&) { return true; }; // the work goes on
    int dünn = 1;                // in the ordinary tests: each n-th call alone
    bool derselbe_Platz = false; // the processes that look run on the workstation of the fault
    Text Erfolg = {};            // how the message begins that success ends with, if any
    Text leser = u"anna";        // who looks first

    bool gelungen(const Platzlauf& lauf) const {
        const auto& hinweise = lauf.fenster.hinweise;
        return Erfolg.empty() ? hinweise.empty() : !hinweise.empty() && hinweise.back().starts_with(Erfolg);
    }
    std::unique_ptr<Platzlauf> Platz(FileSystem& fs, const Text& wer, const Text& rechner) const {
        return std::make_unique<Platzlauf>(fs, wer, wurzel, derselbe_Platz ? Text(u"PLATZ1") : rechner);
    }
};

// What came of the runs with a fault. "Told": the program stopped or refused with a message.
struct Bilanz {
    int versucht = 0, gespeichert = 0, gemeldet_alt = 0, gemeldet_neu = 0, beendet_alt = 0, beendet_neu = 0,
        versperrt = 0, verloren = 0;
};

inline const Text REPARIERT = u"Wiederherstellen beendet.";

class Richter {
public:
    Richter(const Vorgang& v, Text alt, Text neu) : v_(v), alt_(std::move(alt)), neu_(std::move(neu)) {}

    // The state as a fresh process sees it; nothing when it does not start.
    // Behind a repair that did not come to its end the next start asks again; otherwise there must be nothing
    // to repair.
    static std::optional<Text> Blick(const Vorgang& v, Platzlauf& lauf) {
        constexpr int STARTS = 3;
        const bool repariert = v.Erfolg == REPARIERT;
        lauf.fenster.antwort = repariert ? Antwort::Ja : Antwort::Nein;
        for (int n = 1; n <= STARTS; ++n) {
            if (lauf.starten(v.neustart)) return v.bild(lauf);
            if (!repariert || !letzter_Hinweis(lauf).starts_with(REPARIERT)) break;
        }
        return std::nullopt;
    }
    // Counts the outcome; what is wrong with it, empty when nothing is.
    Text beurteilen(FileSystem& fs, bool beendet, bool gemeldet, Bilanz& b) const {
        ++b.versucht;
        const auto erster = v_.Platz(fs, v_.leser, u"PLATZ2");
        const auto gesehen = Blick(v_, *erster);
        if (!gesehen) return ++b.versperrt, u"no start: " + letzter_Hinweis(*erster);
        if (*gesehen != alt_ && *gesehen != neu_) return ++b.verloren, Unterschied(*gesehen);
        const bool neu = *gesehen == neu_;
        if (!neu && !beendet && !gemeldet) return ++b.verloren, u"lost without a word";
        ++(beendet    ? neu ? b.beendet_neu : b.beendet_alt
           : gemeldet ? neu ? b.gemeldet_neu : b.gemeldet_alt
                      : b.gespeichert);
        const bool ging_weiter = v_.weiter(*erster);
        const auto zweiter = v_.Platz(fs, u"otto", u"PLATZ3");
        const bool startet = zweiter->starten(v_.neustart);
        if (startet && ging_weiter) return {};
        return ++b.versperrt, u"behind the next entry: " + letzter_Hinweis(startet ? *erster : *zweiter);
    }

private:
    Text Unterschied(const Text& gesehen) const {
        const auto ab = std::mismatch(gesehen.begin(), gesehen.end(), neu_.begin(), neu_.end()).second;
        const auto stelle = static_cast<std::size_t>(ab - neu_.begin());
        return u"neither old nor new: \"" + gesehen.substr(stelle, 80) + u"\" for \"" +
               neu_.substr(stelle, 80) + u"\"";
    }
    const Vorgang& v_;
    Text alt_, neu_;
};

// A run that nothing disturbs: old and new state as fresh processes see them, and the calls between the two.
struct Ungestört {
    Text alt, neu;
    std::vector<Dateiaufruf> aufrufe;
    Ungestört(const Vorgang& v, const SpeicherPlatte& platte) {
        SpeicherDateisystem vorher(platte.kopie()), fs(platte.kopie());
        if (!v.aufruf.empty()) alt = *Richter::Blick(v, *v.Platz(vorher, v.leser, u"PLATZ2"));
        const auto lauf = v.Platz(fs, v.benutzer, u"PLATZ1");
        EXPECT_TRUE(v.aufruf.empty() || lauf->starten(v.aufruf)) << zu_utf8(letzter_Hinweis(*lauf));
        lauf->fenster.hinweise.clear();
        fs.tagebuch_leeren();
        v.tat(*lauf);
        aufrufe = fs.tagebuch();
        EXPECT_TRUE(v.gelungen(*lauf)) << zu_utf8(letzter_Hinweis(*lauf));
        fs.platte().verliere_ungesichertes(); // what was told as done outlives a power failure
        neu = *Richter::Blick(v, *v.Platz(fs, v.leser, u"PLATZ2"));
        EXPECT_NE(neu, alt);
    }
};

namespace vorgang {

// Rows of all months, comments of this one, the lines of the shared files.
inline Text gesehen(Platzlauf& lauf) {
    Gemeinsame_Daten& d = lauf.programm->daten();
    d.erfassung.Alle_Erfassungsdaten_einlesen(false);
    Text aus;
    for (const TextView name : {u"Konfigdaten.dat", u"Mitarbeiterdaten.dat", u"Feiertage.dat"})
        for (const Text& zeile :
             als_Zeilen(std::string(d.kanal.werk().lesen(d.platz.Datenpfad + Text(name))->sicht())))
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

inline void Eintrag(Platzlauf& lauf) {
    lauf.trage_ein(u"anna", 18, 19, 1);
    lauf.programm->schleife(); // whatever failed is reported here
}
// As the program's windows do it.
inline std::function<void(Platzlauf&)> als_Ereignis(std::function<void(Gemeinsame_Daten&)> tat) {
    return [tat = std::move(tat)](Platzlauf& lauf) {
        lauf.programm->app().event(lauf.fenster_(), [&] { tat(lauf.programm->daten()); });
        lauf.programm->schleife();
    };
}

// In the company; behind the fault anna makes an entry, which another one sees.
inline Vorgang in_der_Firma(const char* name, const Text& wurzel, const Text& benutzer,
                            std::function<void(Platzlauf&)> tat, bool heutige_da = true) {
    const Text daten = wurzel + u"srv/Data/";
    const std::vector<Text> aufruf{u"/path", daten, u"/nowelcomescreen"};
    Firma firma;
    firma.monate[u"2611"] = {A(u"anna", u""), A(u"otto", u"1"), A(u"otto", u"111"), u"K:otto:01-02:Kur"};
    firma.monate[u"2701"] = {A(u"eve", u"      3")};
    const auto vorbereiten = [=](FileSystem& fs) {
        firma.anlegen(fs, daten);
        const Text alt = daten + u"2611 261110 Data.dat";
        if (heutige_da) fs.rename(alt, daten + u"2611 261116 Data.dat");
        Installation_ablegen(fs, wurzel);
        Platzlauf erster(fs, u"chef", wurzel, u"PLATZ0"); // of the day: it makes the backups
        EXPECT_TRUE(erster.starten(aufruf));
        erster.schließen();
    };
    const auto weiter = [=](Platzlauf& lauf) {
        lauf.trage_ein(u"anna", 25, 25, 6);
        lauf.programm->schleife();
        Platzlauf otto(lauf.fs, u"otto", wurzel, u"PLATZ4");
        return otto.starten(aufruf) && otto.zellen(u"anna")[24] == u'S';
    };
    return {name, wurzel, benutzer, aufruf, vorbereiten, std::move(tat), gesehen, aufruf, weiter, 3};
}

inline Vorgang Verdichten(const Text& wurzel) {
    Vorgang v = in_der_Firma("compaction", wurzel, u"chef",
                             als_Ereignis([](auto& d) { d.erfassung.Datensatz_speichern({}); }));
    v.bild = [](Platzlauf& lauf) { // what is left out changes nothing in the plan
        Gemeinsame_Daten& d = lauf.programm->daten();
        const auto datei = d.kanal.werk().lesen(d.platz.Datenpfad + u"2611 261116 Data.dat");
        return gesehen(lauf) + ziffern(static_cast<long>(als_Zeilen(std::string(datei->sicht())).size()));
    };
    return v;
}

// A backup that stands is whole, and counts with its members.
inline Text Sicherungen(Platzlauf& lauf) {
    const Dateikanal& kanal = lauf.programm->daten().kanal;
    const Text ordner = lauf.programm->platz().Backuppfad;
    Text aus;
    for (const Text& name : Dateien(kanal.fs(), ordner, u"*.dat")) {
        const auto datei = kanal.werk().lesen(ordner + name);
        const auto mitglieder = Container_lesen(datei->sicht());
        aus += Text(rechts(name, 5).substr(0, 1)) +
               (mitglieder ? ziffern(static_cast<long>(mitglieder->size())) : u"?");
    }
    return aus;
}
inline Vorgang Sichern(const Text& wurzel) {
    const auto Tasten = [](Platzlauf& lauf) {
        lauf.fenster_().user_key({u"F7", {.alt = true}});
        lauf.programm->schleife();
    };
    Vorgang v = in_der_Firma("backup", wurzel, u"chef", Tasten);
    v.bild = [](Platzlauf& lauf) { return gesehen(lauf) + Sicherungen(lauf); };
    v.Erfolg = u"Backup wurde erstellt";
    v.dünn = 9;
    return v;
}

// Back to the day's first backup, which does not have eve's entry.
inline Vorgang Wiederherstellen(const Text& wurzel) {
    Vorgang v = in_der_Firma("restore", wurzel, u"chef", [](Platzlauf& lauf) {
        lauf.fenster.antwort = Antwort::Ja;
        lauf.fenster.im_Dialog = [&lauf](Form& form) {
            auto& f = dynamic_cast<frmRecovery&>(form);
            if (f.cmbDateiliste.items()[0].starts_with(u"Keine ")) // the window says that there is none
                lauf.fenster.hinweise.push_back(f.cmbDateiliste.items()[0]);
            f.cmdAuswahl2.user_click();
        };
        lauf.fenster_().mnu(u"mnuRecovery").user_click();
        lauf.programm->schleife();
    });
    v.vorbereiten = [anlegen = v.vorbereiten, wurzel, aufruf = v.aufruf](FileSystem& fs) {
        anlegen(fs);
        Platzlauf chef(fs, u"chef", wurzel, u"PLATZ0");
        EXPECT_TRUE(chef.starten(aufruf) && chef.trage_ein(u"eve", 18, 18, 1));
        chef.schließen();
    };
    v.Erfolg = u"Die Daten wurden erfolgreich wiederhergestellt";
    v.dünn = 27;
    return v;
}

// A start on a damaged file, answered with Yes.
inline Vorgang Reparieren(
    const Text& wurzel, const char* name = "repair", const Text& datei = u"Konfigdaten.dat",
    const std::function<std::string(std::string)>& beschädigt = [](std::string ganz) {
        return ganz.substr(0, ganz.size() / 2);
    }) {
    Vorgang v = in_der_Firma(name, wurzel, u"chef", {});
    v.tat = [aufruf = v.aufruf](Platzlauf& lauf) {
        lauf.fenster.antwort = Antwort::Ja;
        lauf.starten(aufruf);
    };
    v.vorbereiten = [anlegen = v.vorbereiten, pfad = wurzel + u"srv/Data/" + datei,
                     beschädigt](FileSystem& fs) {
        anlegen(fs);
        TestUhr uhr;
        const Dateiwerk werk(fs, uhr, u"SCHADEN-1");
        const auto ganz = werk.lesen(pfad);
        EXPECT_TRUE(ganz && werk.ersetzen(pfad, beschädigt(std::string(ganz->sicht()))));
    };
    v.aufruf.clear();
    v.Erfolg = REPARIERT;
    v.leser = u"chef";
    v.dünn = 18;
    return v;
}

// The head of the month of today; and one of its rows, which an administrator's start takes out, and brings
// back from the day's backup.
inline Vorgang Monat_reparieren(const Text& wurzel) {
    return Reparieren(wurzel, "repair of a month", u"2611 261116 Data.dat", [](std::string ganz) {
        ganz[2] = static_cast<char>(ganz[2] ^ 0x10);
        return ganz;
    });
}
inline Vorgang Zeilen_reparieren(const Text& wurzel) {
    Vorgang v = Reparieren(wurzel, "repair of a row", u"2611 261116 Data.dat", [](std::string ganz) {
        const std::size_t letzte = ganz.rfind('\n', ganz.size() - 2) + 1;
        ganz[letzte + 1] = static_cast<char>(ganz[letzte + 1] ^ 0x10); // the kind of the row
        return ganz;
    });
    v.Erfolg = u"Fehlerhafte Daten erkannt";
    return v;
}

inline std::vector<Vorgang> in_der_Firma(const Text& wurzel) {
    const auto Einstellung = als_Ereignis([](auto& d) {
        d.konfig.Setting_setzen(50, 1);
        d.konfig.Konfigdaten_schreiben();
    });
    const auto Personal = als_Ereignis([](auto& d) {
        d.personal.ändern().anfügen({u"Neu Person", u"neu", u"000000", u"999999", {}, {}});
        d.personal.Mitarbeiterdaten_schreiben();
    });
    return {in_der_Firma("one entry", wurzel, u"anna", Eintrag),
            in_der_Firma("first save of a day", wurzel, u"anna", Eintrag, false),
            Verdichten(wurzel),
            in_der_Firma("configuration", wurzel, u"chef", Einstellung),
            in_der_Firma("staff list", wurzel, u"chef", Personal),
            Sichern(wurzel),
            Wiederherstellen(wurzel),
            Reparieren(wurzel),
            Monat_reparieren(wurzel),
            Zeilen_reparieren(wurzel)};
}

} // namespace vorgang
} // namespace kalvora
