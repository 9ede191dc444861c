// Own rows of the capture files that no read has seen yet. Appends of two workstations on a share overwrite
// each other in a fraction of cases although every call succeeds, and a rewrite of the file can pass over a
// row that came meanwhile. Each row is judged at the next read of its month: seen, superseded, to be written
// again, or uncertain, which the user is told. Days count from 1.
#pragma once

#include <set>

#include "files/monatsdatei.h"

namespace kalvora {

class Ausstehende {
public:
    // Where and when rows were written.
    struct Anhang {
        Text yymm, stamm;
        std::string kopf;        // first bytes of the file: another rewrite has other ones
        std::uint64_t davor = 0; // the rows begin at this place or behind it
        Text gründe;             // what the codes meant, see `prüfen`
        double zeit = 0;         // steady seconds
        int versuch = 1;
    };
    // `vorher`: the month as it was without these rows.
    void merken(const Anhang& wo, const std::vector<Text>& zeilen, const Monatsinhalt& vorher);

    struct Befund {
        std::vector<Text> nachzutragen; // rows that are lost and must be written again
        int versuch = 1;                // which attempt that will be
        std::vector<Text> ungewiss;     // keys of persons whose entry nobody can confirm
    };
    // Judges the month's rows, none of which waits any longer then. `gründe` as they are now: a code must
    // never come to mean another reason.
    Befund prüfen(const Monatsinhalt& jetzt, TextView gründe, double zeit);
    // Gives up the month's rows; the keys of their persons.
    std::vector<Text> aufgeben(TextView yymm);
    void vergessen(TextView yymm, TextView stamm); // no read will ever find the rows of this version

    bool leer() const { return einträge_.empty(); }
    std::set<Text> Monate() const;

private:
    struct Eintrag {
        Anhang wo;
        Text BenId;
        int tag = 0; // 0: the days of an A row; else the comment of this day
        Text inhalt;
        std::vector<Text> vorher; // what it took the place of
    };
    enum class Verbleib { Gesehen, Verloren, Ungewiss };
    static Text inhalt_jetzt(const Monatsinhalt& monat, const Text& BenId, int tag);
    static bool dahinter(const Eintrag& e, const Monatsinhalt& monat);
    static Verbleib verbleib(const Eintrag& e, const Monatsinhalt& jetzt, TextView gründe, double zeit);
    static void nachtragen(const std::vector<Eintrag>& verloren, Befund& befund);
    void merken(Eintrag neu);
    std::vector<Eintrag> einträge_;
};

} // namespace kalvora
