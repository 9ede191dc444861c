// The program's text: one UTF-16 unit a character, everywhere above the file layer.
// All positions and lengths count characters; positions are one-based.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kalvora {

using Text = std::u16string;
using TextView = std::u16string_view;

// Character 160 is data (the mark of a person's free day) and never white space.
inline constexpr char16_t FESTES_LEERZEICHEN = u'\u00A0';

// The first n / the last n characters; fewer when the text is shorter, none for n < 1. Never throw.
TextView links(TextView text, int n);
TextView rechts(TextView text, int n);
// n characters from one-based position `von` on (all when n is left out); what lies outside is left away.
TextView mitte(TextView text, int von, int n = -1);
// The character at a one-based position, 0 when there is none.
char16_t zeichen(TextView text, int position);
// One-based position of `gesucht` at or behind `ab`, 0 when it does not stand there.
int position(TextView text, TextView gesucht, int ab = 1);
inline bool enthält(TextView text, TextView gesucht) {
    return position(text, gesucht) > 0;
}

// Blanks (U+0020 alone) off the ends.
TextView trimmen(TextView text);
TextView trimmen_links(TextView text);
TextView trimmen_rechts(TextView text);

// Case is folded over the whole code page (Ä/ä, Š/š, Ÿ/ÿ too), independent of any locale.
char16_t klein(char16_t c);
Text klein(TextView text);
bool gleich_ohne_Fall(TextView a, TextView b);
bool beginnt_ohne_Fall(TextView text, TextView anfang);
bool endet_ohne_Fall(TextView text, TextView ende);
// Name pattern with `*` and `?`, compared without case.
bool passt_auf_Maske(TextView name, TextView maske);

// Every occurrence, left to right, without looking again into what was inserted.
Text Ersetzen(TextView text, TextView alt, TextView neu);
// Pieces between the separators; n separators give n + 1 pieces.
std::vector<Text> teilen(TextView text, char16_t trenner);

bool ist_Ziffer(char16_t c);
bool nur_Ziffern(TextView text); // false for the empty text
// Leading number of a text; stops at the first foreign character ("2611 K" is 2611); 0 when there is none.
long Val(TextView text);
// Decimal digits, padded with leading zeros to `stellen`.
Text ziffern(long zahl, int stellen = 1);

Text aus_utf8(std::string_view utf8); // malformed bytes become U+FFFD
std::string zu_utf8(TextView text);

} // namespace kalvora
