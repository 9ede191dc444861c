// Numbers of the data files: the alphabet of one-character codes and leave numbers with five characters.
// Parsed and formatted by own code: the C locale plays no part.
#pragma once

#include "base/text.h"

namespace kalvora {

// Digit alphabet of codes that go beyond 9; position 1 to 26.
inline constexpr TextView CODE_ALPHABET = u"123456789ABCDEFGHIJKLMNOPQ";

Text DecHex(int n);        // 1 to 26, otherwise empty
int HexDec(char16_t c);    // 0 when it is no digit of the alphabet
int HexDec(TextView text); // of its first character

// Code of reason record n when the table has U records: blank for U itself (the delete button), U + 1 is the
// code of a person's free day.
char16_t SFHex(int n, int U);
int SFDec(char16_t code, int U); // whatever is no code, the blank above all, gives U

// Leave number in the files' width: "000,0", below zero "-03,0"; from -99 to 999 by cutting. `trennzeichen`
// is the decimal separator both of the input (a comma and a point are always read) and of the result.
Text BenFormat(TextView text, char16_t trennzeichen = u',');

} // namespace kalvora
