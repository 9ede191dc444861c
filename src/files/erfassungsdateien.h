// The capture files ("yymm yymmdd Data.dat"): one month each, a new version on the first save of a day. A
// save appends one row; the last row of a person wins; a version appears whole and never replaces one that
// stands. Nothing is locked: an own row stays pending until a later read has seen it.
#pragma once

#include <functional>

#include "files/ausstehende.h"
#include "files/gesehene_monate.h"
#include "files/logbuch.h"
#include "files/mitarbeiterdaten.h"
#include "files/monatsdaten.h"
#include "files/monatsordner.h"

namespace kalvora {

// A month as held.
struct Monatsstand {
    Monatsinhalt inhalt;
    bool lesbar = false;    // whether it takes entries
    Text gesund;            // stem of a version read without a fault or written whole by this program
    Zeitstempel zeit = 0;   // of the version as last read or written; 0: it holds rows that nobody here read
    bool ungezeigt = false; // a save has read rows of others, which the plan on show does not have yet
};

class Erfassungsdateien {
public:
    Erfassungsdateien(Dateikanal& kanal, Arbeitsplatz& platz, Konfigdaten& konfig, Mitarbeiterdaten& personal,
                      Logbuch& log)
        : kanal_(kanal), platz_(platz), konfig_(konfig), personal_(personal), log_(log),
          ordner_(kanal.fs(), platz) {}

    // Stem of the version in force, empty when the month has no file. A folder that cannot be listed throws.
    Text Aktuelle_Erfassungsdatei(TextView yymm) const;
    // Makes the month the shown one: rows, comments and exceptions; one without a version is empty. True when
    // it holds an A row. `lesbar()` says whether the month takes entries.
    bool Erfassungsdaten_lesen(const Text& yymm);
    const Monatsinhalt& monat() const { return monat_.inhalt; }
    const Text& Ausnahmedaten() const { return monat_.inhalt.Ausnahmedaten; }
    bool lesbar() const { return monat_.lesbar; }

    // The shown month has another version in force than the one held, or somebody else has written to it: the
    // plan must be read again. A folder that does not answer now says nothing.
    bool Monat_geändert() const;

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
    // Makes a backup: "F" before a damaged month is rewritten (one a day will do), "T" before a month is
    // compacted. False: it could not be made.
    std::function<bool(TextView art)> sichern;
    // Bytes of the file of this name with the rows that it has lost and a backup still holds; or nothing.
    std::function<std::optional<std::string>(const Text& name, std::string_view bytes)> vervollständigen;

    // Compacts the shown month. False: refused; not while the program starts or a repair lock stands.
    bool Erfassungsdatei_defragmentieren();
    // The same once there are more than 1.5 rows a person. Whoever may not write is not stopped by it.
    void Defragmentieren_wenn_fällig();

    // Own rows that no read has seen yet. The check runs with each read of the shown month; this one reads
    // the waiting months aside. True: rows were written again, so that a month's file has changed.
    bool Ausstehende_vorhanden() const { return !ausstehend_.leer(); }
    bool Ausstehende_nachsehen();
    // The same until none waits, at the end of the program.
    void Ausstehende_abschließen();

    // The folder has another state now, which may lack months that were there.
    void Monate_vergessen() { gesehen_.vergessen(); }

    void Alle_Erfassungsdaten_einlesen(bool nur_wenn_alt);
    const Monatsdaten& Daten() const { return daten_; }
    bool Erfassungsdaten_vorhanden(int code) const;
    bool Erfassungsdaten_zu_Monaten_vorhanden(int von, int bis) const { return daten_.belegt(von, bis); }
    void Erfassungsdateien_checken();
    // Freezes ("W" with the old weekend days, "F" with "") or clears ("NoEx") a part of the exception line of
    // all months before the present one. A frozen part is left alone; only changed files are rewritten.
    void Ausnahmedaten_in_Erfassungdateien_übernehmen(TextView art, TextView alt,
                                                      const Feld<Text>& Feiertagsliste);

private:
    static constexpr double NIE = -1e9;
    bool öffnen(const Version& version, Fehlerweg weg);
    std::optional<Monatsinhalt> einmal_lesen(const Version& version, const Text& yymm, Fehlerweg weg);
    Monatsinhalt zweimal_lesen(const Text& yymm);
    void einlesen(const Text& yymm, Monatsstand& ziel);
    [[noreturn]] static void Monate_fehlen(const Text& monate);
    bool Defragmentieren_fällig() const;
    Text Monat_in_Worten(TextView yymm) const;
    void Abriss_melden(const Monatsinhalt& inhalt);
    void Fehler_protokollieren(const Monatsinhalt& inhalt);
    bool reparieren(const Monatsinhalt& inhalt);
    bool unverändert_ersetzen(const Version& version, const Dateiwerk::Vorgefunden& gelesen,
                              const std::vector<std::string>& zeilen, Fehlerweg weg);
    void Überholte_löschen(const std::vector<Version>& versionen, const Text& yymm);
    bool enthält_alles(const Monatsinhalt& neu, const Monatsinhalt& alt) const;
    std::optional<Monatsinhalt> Version_lesen(const Version& version, const Text& yymm);

    bool zulässig(const Text& zeile) const;
    void puffern(const Text& zeile);
    Text Bedeutung_der_Codes() const;
    Text Hindernis(const Monatsstand& monat, const std::vector<Text>& zeilen);
    Text schreiben(Monatsstand& monat, const std::vector<Text>& zeilen, int versuch = 1);
    bool anhängen(Monatsstand& monat, const Text& ziel, const std::vector<Text>& zeilen, int versuch);
    bool neue_Version(Monatsstand& monat, const Text& ziel, const std::vector<Text>& zeilen, int versuch);
    std::vector<std::string> unverdichtet(const Monatsinhalt& alt);
    std::vector<std::string> verdichtet(const Monatsinhalt& alt) const;
    void neue_Version_ausgeben(const Monatsinhalt& alt, const std::vector<std::string>& bisher,
                               const std::vector<Text>& zeilen);
    void merken(const Monatsinhalt& vorher, const std::vector<Text>& zeilen, int versuch);
    void Stand_übernehmen(Monatsstand& monat, bool nur_eigenes) const;
    static Text speicherbar(const Text& zeile);
    static void einpflegen(Monatsinhalt& inhalt, const Text& zeile);
    void nach_dem_Schreiben(const Monatsstand& monat);
    void Datumskorruption_melden(const Text& stamm);
    bool Ausstehende_prüfen(Monatsstand& monat);
    bool Ausstehende_nachsehen(const Text& yymm);
    void Unbestätigte_melden(const Text& yymm, const std::vector<Text>& BenIds);
    std::vector<std::string> alle_Zeilen(const Version& version, bool* offen = nullptr);
    std::vector<std::string> Klarzeilen(const Version& version);
    bool Ausnahmen_übernehmen(const Version& version, TextView art, TextView alt,
                              const Feld<Text>& Feiertagsliste);
    void Monat_in_Monatsdaten(const Version& version, const Text& yymm, int monat, Schlüsselverzeichnis& wer);
    bool Version_in_Monatsdaten(const Version& version, int monat, Schlüsselverzeichnis& wer);

    Dateikanal& kanal_;
    Arbeitsplatz& platz_;
    Konfigdaten& konfig_;
    Mitarbeiterdaten& personal_;
    Logbuch& log_;
    const Monatsordner ordner_;
    Monatsstand monat_; // the shown one
    Gesehene_Monate gesehen_;
    Text gemeldet_; // stem of the faulty version told last
    Zeitstempel gemeldet_Stand_ = 0;
    Text verdichtet_; // stem of the version that was to be compacted last
    bool sammeln_ = false;
    std::vector<Text> puffer_;
    Ausstehende ausstehend_;
    Monatsdaten daten_;
    double letztes_Einlesen_ = NIE; // of all months, for this staff list and these years
    std::vector<std::string> eingelesen_für_;
    int eingelesen_ab_ = 0;
};

} // namespace kalvora
