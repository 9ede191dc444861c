// The capture files ("yymm yymmdd Data.dat"): one month each, a new version on the first save of a day. A
// save appends one row; the last row of a person wins; a version appears whole and never replaces one that
// stands. Nothing is locked: an own row stays pending until a later read has seen it.
#pragma once

#include <functional>
#include <map>

#include "files/logbuch.h"
#include "files/mitarbeiterdaten.h"
#include "files/monatsdaten.h"

namespace kalvora {

// Name in force of a month.
struct Version {
    Text stamm; // "yymm yymmdd"; empty: the month has no file
    Text name;  // as it stands in the folder
};

class Erfassungsdateien {
public:
    Erfassungsdateien(Dateikanal& kanal, Arbeitsplatz& platz, Konfigdaten& konfig, Mitarbeiterdaten& personal,
                      Logbuch& log)
        : kanal_(kanal), platz_(platz), konfig_(konfig), personal_(personal), log_(log) {}

    // Stem of the version in force, empty when the month has no file. A folder that cannot be listed throws.
    Text Aktuelle_Erfassungsdatei(TextView yymm) const;
    // Makes the month the shown one: rows, comments and exceptions. True when it holds an A row. Without a
    // version the rows held before stay, as told by the result; `lesbar()` says whether the month takes
    // entries.
    bool Erfassungsdaten_lesen(const Text& yymm);
    const Monatsinhalt& monat() const { return monat_; }
    Monatsinhalt& monat_ändern() { return monat_; }
    const Text& Ausnahmedaten() const { return monat_.Ausnahmedaten; }
    bool lesbar() const { return lesbar_; }

    // Today's file of the shown month as last read or written; 0 when there is none.
    Zeitstempel Erfassungsdatei_Zeitstempel() const { return zeitstempel_; }
    // Today's file of the month as it stands now, 0 when there is none.
    Zeitstempel Stand_heute(TextView yymm) const;

    // Appends a row to the shown month, or begins today's version with it. Empty: with Sammeln the buffer is
    // written, without it the month is compacted. False: refused with one message; the caller reloads.
    bool Datensatz_speichern(const Text& zeile);
    void Sammeln(bool an);
    bool Sammeln() const { return sammeln_; }
    const std::vector<Text>& Speicherpuffer() const { return puffer_; }
    void Speicherpuffer_leeren() { puffer_.clear(); }
    // Called before anything is written: whoever holds stale shared data rereads it here. False: the reasons
    // have changed, so that rows built before may mean something else now.
    std::function<bool()> vor_dem_Schreiben;

    // Own rows that no read has seen yet. The check runs with each read of their month; this one reads the
    // months that still wait, at the end of the program.
    bool Ausstehende_vorhanden() const { return !ausstehend_.empty(); }
    bool Ausstehende_vorhanden(TextView yymm) const;
    void Ausstehende_nachsehen();

    void Alle_Erfassungsdaten_einlesen(bool nur_wenn_alt);
    const Monatsdaten& Daten() const { return daten_; }
    bool Erfassungsdaten_vorhanden(int code) const;
    bool Erfassungsdaten_zu_Monaten_vorhanden(int von, int bis) const { return daten_.belegt(von, bis); }
    void Erfassungsdateien_checken();
    // Freezes ("W" with the old weekend days, "F" with "") or clears ("NoEx") a part of the exception line of
    // all months before the present one. A frozen part is left alone; only changed files are rewritten.
    void Ausnahmedaten_in_Erfassungdateien_übernehmen(TextView art, TextView alt,
                                                      const Feld<Text>& Feiertagsliste);
    // Deletes the smaller stems of the month, and only behind a version that was written or found sound.
    void Alte_Erfassungsdateien_löschen(TextView stamm) const;

private:
    static constexpr double KURZ_WARTEN = 0.4; // seconds until a doubtful view is looked at again
    struct Ausstehend {
        Text yymm, stamm, zeile;
        std::vector<Text> vorher; // days of the person's rows that ours replaces
        std::uint64_t davor = 0;
        int versuche = 0;
    };
    using Verzeichnis = std::map<Text, std::vector<Version>>; // by yymm, sorted by stem

    Verzeichnis verzeichnis(TextView yymm = u"????") const;
    Version in_Kraft(TextView yymm) const;
    Text pfad(const Text& name) const { return platz_.Datenpfad + name; }
    Text heutiger_Stamm(TextView yymm) const { return Text(yymm) + u" " + platz_.Heute_S; }
    Text heutige_Datei(TextView yymm) const { return heutiger_Stamm(yymm) + u" Data.dat"; }

    Monatsinhalt lesen(const Version& version, const Text& yymm);
    Monatsinhalt einmal_lesen(const Version& version, const Text& yymm);
    Monatsinhalt zweimal_lesen(const Text& yymm);
    Zeitstempel gelesener_Stand() const;
    void Fehler_melden(const Monatsinhalt& inhalt);
    bool gesund(const Version& version, const Text& yymm);

    bool zulässig(const Text& zeile) const;
    void puffern(const Text& zeile);
    bool schreiben(const std::vector<Text>& zeilen);
    void anhängen(const Text& ziel, const std::vector<Text>& zeilen);
    void neue_Version(const Text& ziel, const std::vector<Text>& zeilen, bool& alte_löschen);
    std::vector<Text> Inhalt_neuer_Version(const Monatsinhalt& alt, const std::vector<Text>& zeilen) const;
    void merken(const Text& stamm, std::uint64_t davor, const std::vector<Text>& zeilen);
    void einpflegen(const Text& zeile);
    void nach_dem_Schreiben(bool alte_löschen);
    void Kleinere_löschen(const std::vector<Version>& versionen, TextView stamm) const;
    void Ausstehende_prüfen(const Monatsinhalt& inhalt);
    enum class Verbleib { Gesehen, Verloren };
    Verbleib verbleib(const Ausstehend& a, const Monatsinhalt& inhalt) const;
    static bool Satz_gesehen(const Ausstehend& a, const Zeilenbefund& b, const Monatsinhalt& inhalt,
                             bool Stellen_gelten);
    static bool Kommentar_gesehen(const Ausstehend& a, const Zeilenbefund& b, const Monatsinhalt& inhalt,
                                  bool Stellen_gelten);
    void Monat_in_Monatsdaten(const Version& version, int monat, Schlüsselverzeichnis& wer);
    bool Version_in_Monatsdaten(const Version& version, int monat, Schlüsselverzeichnis& wer);

    Dateikanal& kanal_;
    Arbeitsplatz& platz_;
    Konfigdaten& konfig_;
    Mitarbeiterdaten& personal_;
    Logbuch& log_;
    Monatsinhalt monat_;
    bool lesbar_ = false;
    Text gesund_; // stem of a version read without a fault or written whole by this program
    Zeitstempel zeitstempel_ = 0;
    bool sammeln_ = false;
    std::vector<Text> puffer_;
    std::vector<Ausstehend> ausstehend_;
    Monatsdaten daten_;
    double letztes_Einlesen_ = -1e9;
};

} // namespace kalvora
