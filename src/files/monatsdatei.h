// The plain form of a capture file: a head of three lines, then rows "A:<BenId>:<31 codes>" and comments
// "K:<BenId>:<dd>-<dd>:<text>" in any order; the last row of a person wins. Days count from 1.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "base/feld.h"
#include "files/dateikanal.h"

namespace kalvora {

inline constexpr int TAGE = 31;
inline constexpr int KOPFZEILEN = 3;
inline constexpr TextView KEINE_AUSNAHMEN = u"NoEx:NoEx";

// An A row as held: codes of the 31 days, a blank for no entry.
struct Erfassungssatz {
    Text BenId;
    Text tage;
    std::uint64_t stelle = 0; // offset in the file it was read from
};

// A K row: a comment for a run of days; an empty text takes comments away.
struct Kommentarsatz {
    Text BenId;
    int von = 1, bis = 1;
    Text text;
    std::uint64_t stelle = 0;
};

Text als_Zeile(const Erfassungssatz& satz); // "A:..."
Text als_Zeile(const Kommentarsatz& satz);  // "K:..."

// Which characters of a day are codes while the table has U records; whatever else was read becomes a blank.
class Codefilter {
public:
    explicit Codefilter(int U);
    bool zulässig(char16_t c) const {
        return c < 128 && (c == u' ' || ist_Code(static_cast<unsigned char>(c)));
    }
    char operator()(char byte) const { return ist_Code(static_cast<unsigned char>(byte)) ? byte : ' '; }
    // A row's 31 days, blank behind the first `länge`; many days at once, since all rows of all months pass.
    void übertragen(std::string_view tage, char* ziel, int länge) const;

private:
    bool ist_Code(unsigned char b) const {
        // Each of the three is asked, so that many days can go at once.
        return (static_cast<unsigned char>(b - '1') < ziffern_) |
               (static_cast<unsigned char>(b - 'A') < buchstaben_) | (b == arbeitsfrei_);
    }
    // The codes of the reasons are the first ones of the alphabet: so many digits, then so many letters.
    unsigned char ziffern_ = 0, buchstaben_ = 0, arbeitsfrei_ = ' ';
};

// One month's version as read.
struct Monatsinhalt {
    Text yymm;
    Text stamm; // "yymm yymmdd" of the version read; empty: the month has no file
    Text Reservezeile;
    Text Ausnahmedaten{KEINE_AUSNAHMEN};
    Feld<Erfassungssatz> Erfassungsdaten;
    Feld<Kommentarsatz> Kommentardaten;
    Zeitstempel zeit = 0;
    std::uint64_t größe = 0; // of the file when it was opened, in bytes
    std::string kopf;        // its first bytes as stored

    bool letzte_Zeile_offen = false; // somebody is appending, or only half of the file is to be seen
    bool abgerissen = false;         // and it stays so, or lines that were read before have gone from its end

    // Faults found; the rows themselves are left out above, and kept as they stood for a rewrite.
    bool Ausnahmezeile_ohne_Doppelpunkt = false;
    Text Ausnahmezeile;                   // as it stood
    std::vector<std::string> unlesbar;    // lines, bytes of the code page
    int fehler_erster_Art = 0;            // lines that are no row at all
    std::vector<Text> fehler_zweiter_Art; // keys of rows with a wrong inside
    bool fehlerhaft() const {
        return Ausnahmezeile_ohne_Doppelpunkt || fehler_erster_Art > 0 || !fehler_zweiter_Art.empty();
    }
    bool ganz() const { return !fehlerhaft() && !letzte_Zeile_offen && !abgerissen; }

    // Number of the last A row of a key, compared without case; 0 when there is none.
    int letzter_Satz(TextView BenId) const;
    // The comment that stands for a day of a person when the K rows are taken in their order; may be empty.
    std::array<Text, TAGE + 1> Kommentare(TextView BenId) const; // index 1 to 31
    void Satz_anfügen(Erfassungssatz satz);
    void Kommentar_anfügen(Kommentarsatz satz);

private:
    std::unordered_map<Text, int> letzte_;                  // folded key -> row
    std::unordered_map<Text, std::vector<int>> kommentare_; // folded key -> comment rows
};

// What stands in a line behind the head. Views point into the line.
struct Zeilenbefund {
    enum class Art { A, K, ErsteArt, ZweiteArt } art = Art::ErsteArt;
    std::string_view schlüssel, inhalt; // A: 31 bytes; K: text
    int von = 0, bis = 0;
};
Zeilenbefund Zeile_prüfen(std::string_view zeile);
Zeilenbefund Zeile_prüfen(std::string&& zeile) = delete; // it would not outlive the finding

// The head of an opened capture file; Dateischaden when the first line is not "[yymm]" or lines are missing.
struct Monatskopf {
    Text Reservezeile, Ausnahmedaten;
};
Monatskopf Kopf_einlesen(Dateikanal& kanal, const Text& pfad, const Text& yymm);
// Reads head and rows of an opened capture file into `inhalt`. Dateischaden when the first line is not
// "[yymm]" or the head is cut. Days beyond the month's length are blank.
void Monat_einlesen(Dateikanal& kanal, const Text& pfad, const Codefilter& filter, Monatsinhalt& inhalt);

// The lines of a compacted month in staff order: of each person the last row that holds a day, and behind it
// the comments as runs of equal text over days with an entry. Rows of other keys drop out.
std::vector<Text> Zeilen_verdichten(const Monatsinhalt& inhalt, const std::vector<Text>& BenIds);

} // namespace kalvora
