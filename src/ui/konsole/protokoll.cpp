#include "ui/konsole/protokoll.h"

namespace kalvora {

namespace {

bool ist_Steuerzeichen(char16_t c) {
    return c < 0x20 || (c >= 0x7F && c <= 0x9F);
}

Text Steuerzeichen(char16_t c) {
    constexpr TextView HEX = u"0123456789ABCDEF";
    return Text(u"\\x") + HEX[c >> 4] + HEX[c & 0xF];
}

} // namespace

Text maskiert(TextView text) {
    Text ergebnis;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t c = text[i];
        if (c == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') continue;
        if (c == u'\n' || c == u'\r')
            ergebnis += u"\\n";
        else if (c == u'"')
            ergebnis += u"\\\"";
        else if (ist_Steuerzeichen(c))
            ergebnis += Steuerzeichen(c);
        else
            ergebnis += c;
    }
    return ergebnis;
}

Text zitiert(TextView text) {
    return u"\"" + maskiert(text) + u"\"";
}

void Protokoll::zeile(TextView text) {
    ausgabe_(zu_utf8(text) + "\n");
}

void Protokoll::fehler(int nummer, TextView text) {
    ++fehlerzahl_;
    zeile(u"FEHLER " + ziffern(nummer) + u": " + Text(text));
}

} // namespace kalvora
