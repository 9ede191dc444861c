// Dates. A date serial counts days since 1899-12-30 (so 46342 is 16 November 2026); inside files and keys a
// date is the text `yymmdd` without a century; on the screen it stands in the locale's order.
#pragma once

#include "base/text.h"

namespace kalvora {

using Datum = int; // date serial, whole days

struct Kalendertag {
    int jahr = 0;
    int monat = 1; // 1 to 12
    int tag = 1;   // 1 to 31
    friend bool operator==(const Kalendertag&, const Kalendertag&) = default;
};

// Local date and time of day, to the second.
struct Zeitpunkt {
    Kalendertag tag;
    int stunde = 0, minute = 0, sekunde = 0;
};

// Proleptic Gregorian calendar; a month or day outside its range rolls over (month 13 is January, day 0 the
// last of the month before).
Datum Datum_aus(int jahr, int monat, int tag);
Kalendertag Kalendertag_aus(Datum d);
int Jahr(Datum d);
int Wochentag(Datum d);                 // Monday 1 to Sunday 7
int Kalenderwoche(Datum d);             // ISO 8601: Monday first, week 1 has the year's first Thursday
TextView Wochentag_kurz(int wochentag); // 1 "Mo" to 7 "So"
int Tage_im_Monat(int jahr, int monat);
int Tage_im_Monat(TextView yymm);

// The one rule for two-digit years: 00 to 79 are 20xx, 80 to 99 are 19xx.
int volles_Jahr(int zweistellig);

// S form, yymmdd. Digits that are none count as 0; parts outside their range roll over.
Text FormatDatumDS(Datum d);
Datum FormatDatumSD(TextView s);
Text FormatZeit(const Zeitpunkt& z); // "hh:nn:ss"

enum class Datumsreihenfolge { MonatTagJahr = 0, TagMonatJahr = 1, JahrMonatTag = 2 };

// A form: two digits for each of the parts in the locale's order.
struct Datumsformat {
    Datumsreihenfolge reihenfolge = Datumsreihenfolge::TagMonatJahr;
    char16_t trennzeichen = u'.';

    Text FormatDatumSA(TextView s) const;
    Text FormatDatumAS(TextView a) const; // parts by fixed position: 1-2, 4-5, the last two
    Text FormatDatumDA(Datum d) const { return FormatDatumSA(FormatDatumDS(d)); }
    Datum FormatDatumAD(TextView a) const { return FormatDatumSD(FormatDatumAS(a)); }
};

// A typed date, repaired and brought into the normal form: "3112" becomes "31.12.26". An empty `fehler` means
// valid; otherwise it is the message and `text` is left as it was. With `höchstlänge` below 8 the year is
// dropped from the text.
struct Datumsprüfung {
    Text text;
    Text fehler;
    bool gültig() const { return fehler.empty(); }
};
Datumsprüfung CheckDatum(TextView eingabe, const Datumsformat& format, Datum heute, int höchstlänge = 8);

} // namespace kalvora
