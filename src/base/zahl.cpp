#include "base/zahl.h"

#include <cstdlib>

namespace kalvora {

namespace {

// Value of a decimal text in hundredths-of-a-hundredth, so that rounding sees enough digits.
long long zehntausendstel(TextView text, char16_t trennzeichen) {
    constexpr long long GRENZE = 100'000'000'000LL;
    text = trimmen(text);
    const bool negativ = !text.empty() && text.front() == u'-';
    if (!text.empty() && (text.front() == u'-' || text.front() == u'+')) text.remove_prefix(1);
    long long wert = 0;
    int nachkomma = -1;
    for (char16_t c : text) {
        if (nachkomma < 0 && (c == trennzeichen || c == u',' || c == u'.')) {
            nachkomma = 0;
            continue;
        }
        if (!ist_Ziffer(c)) break;
        if (nachkomma >= 4 || wert > GRENZE) continue;
        wert = wert * 10 + (c - u'0');
        if (nachkomma >= 0) ++nachkomma;
    }
    for (int k = nachkomma < 0 ? 0 : nachkomma; k < 4; ++k)
        wert *= 10;
    return negativ ? -wert : wert;
}

} // namespace

Text DecHex(int n) {
    return n >= 1 && n <= 26 ? Text(1, CODE_ALPHABET[static_cast<size_t>(n - 1)]) : Text();
}

int HexDec(char16_t c) {
    const size_t stelle = CODE_ALPHABET.find(c);
    return stelle == TextView::npos ? 0 : static_cast<int>(stelle) + 1;
}

int HexDec(TextView text) {
    return text.empty() ? 0 : HexDec(text.front());
}

char16_t SFHex(int n, int U) {
    if (n < 1 || n > 26 || (n >= U && n != U + 1)) return u' ';
    return CODE_ALPHABET[static_cast<size_t>(n - 1)];
}

int SFDec(char16_t code, int U) {
    const int n = HexDec(code);
    return n == 0 ? U : n;
}

Text BenFormat(TextView text, char16_t trennzeichen) {
    const long long wert = zehntausendstel(text, trennzeichen);
    const long long zehntel = (std::llabs(wert) + 500) / 1000; // half away from zero
    const bool negativ = wert < 0 && zehntel != 0;
    const Text nachkomma = Text(1, trennzeichen) + ziffern(static_cast<long>(zehntel % 10));
    const auto ganze = static_cast<long>(zehntel / 10);
    if (negativ) return (ganze >= 99 ? Text(u"-99") : u"-" + ziffern(ganze, 2)) + nachkomma;
    return (ganze >= 999 ? Text(u"999") : ziffern(ganze, 3)) + nachkomma;
}

} // namespace kalvora
