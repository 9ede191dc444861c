#include "base/farbe.h"

namespace kalvora {

Text HexFarbe(Farbe farbe) {
    Text aus = u"&H";
    for (int stelle = 20; stelle >= 0; stelle -= 4)
        aus += u"0123456789ABCDEF"[(farbe >> stelle) & 0xF];
    return aus;
}

std::optional<Farbe> Farbe_aus_Hex(TextView text) {
    if (text.size() != 8 || !text.starts_with(u"&H")) return std::nullopt;
    Farbe farbe = 0;
    for (char16_t c : text.substr(2)) {
        const int wert = ist_Ziffer(c)              ? c - u'0'
                         : (c >= u'A' && c <= u'F') ? c - u'A' + 10
                         : (c >= u'a' && c <= u'f') ? c - u'a' + 10
                                                    : -1;
        if (wert < 0) return std::nullopt;
        farbe = farbe * 16 + static_cast<Farbe>(wert);
    }
    return farbe;
}

} // namespace kalvora
