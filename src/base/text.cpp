#include "base/text.h"

#include <algorithm>
#include <array>

namespace kalvora {

namespace {

size_t begrenzt(TextView text, int n) {
    return n < 1 ? 0 : std::min(text.size(), static_cast<size_t>(n));
}

// The letters of Windows-1252 outside Latin-1 whose two cases differ.
constexpr std::array<std::pair<char16_t, char16_t>, 4> WEITERE_PAARE{
    {{u'\u0160', u'\u0161'}, {u'\u0152', u'\u0153'}, {u'\u017D', u'\u017E'}, {u'\u0178', u'\u00FF'}}};

bool maske_ab(TextView name, TextView maske) {
    size_t n = 0;
    size_t m = 0;
    size_t stern = TextView::npos;
    size_t merke = 0;
    while (n < name.size()) {
        if (m < maske.size() && (maske[m] == u'?' || klein(maske[m]) == klein(name[n])) && maske[m] != u'*') {
            ++n;
            ++m;
        } else if (m < maske.size() && maske[m] == u'*') {
            stern = m++;
            merke = n;
        } else if (stern != TextView::npos) {
            m = stern + 1;
            n = ++merke;
        } else {
            return false;
        }
    }
    while (m < maske.size() && maske[m] == u'*')
        ++m;
    return m == maske.size();
}

void anhängen_utf8(std::string& aus, char32_t c) {
    if (c < 0x80) {
        aus += static_cast<char>(c);
        return;
    }
    if (c < 0x800) {
        aus += static_cast<char>(0xC0 | (c >> 6));
    } else if (c < 0x10000) {
        aus += static_cast<char>(0xE0 | (c >> 12));
        aus += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    } else {
        aus += static_cast<char>(0xF0 | (c >> 18));
        aus += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
        aus += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    }
    aus += static_cast<char>(0x80 | (c & 0x3F));
}

// Decodes one code point at `i` and moves `i` behind it; U+FFFD and one byte on a malformed sequence.
char32_t nächster_codepunkt(std::string_view s, size_t& i) {
    const auto b = static_cast<unsigned char>(s[i]);
    int folge = b < 0x80 ? 0 : (b >> 5) == 6 ? 1 : (b >> 4) == 14 ? 2 : (b >> 3) == 30 ? 3 : -1;
    if (folge < 0 || i + static_cast<size_t>(folge) >= s.size()) {
        ++i;
        return folge == 0 ? b : U'\uFFFD';
    }
    static constexpr std::array<unsigned, 4> MASKE{0x7F, 0x1F, 0x0F, 0x07};
    static constexpr std::array<char32_t, 4> MINDESTENS{0, 0x80, 0x800, 0x10000};
    char32_t c = b & MASKE[static_cast<size_t>(folge)];
    for (int k = 1; k <= folge; ++k) {
        const auto f = static_cast<unsigned char>(s[i + static_cast<size_t>(k)]);
        if ((f & 0xC0) != 0x80) {
            ++i;
            return U'\uFFFD';
        }
        c = (c << 6) | (f & 0x3F);
    }
    i += static_cast<size_t>(folge) + 1;
    const bool ungültig =
        c < MINDESTENS[static_cast<size_t>(folge)] || c > 0x10FFFF || (c >= 0xD800 && c < 0xE000);
    return ungültig ? U'\uFFFD' : c;
}

} // namespace

TextView links(TextView text, int n) {
    return text.substr(0, begrenzt(text, n));
}

TextView rechts(TextView text, int n) {
    return text.substr(text.size() - begrenzt(text, n));
}

TextView mitte(TextView text, int von, int n) {
    if (von < 1) {
        if (n >= 0) n = std::max(0, n + von - 1);
        von = 1;
    }
    const size_t anfang = static_cast<size_t>(von) - 1;
    if (anfang >= text.size()) return {};
    return n < 0 ? text.substr(anfang) : text.substr(anfang, static_cast<size_t>(n));
}

char16_t zeichen(TextView text, int position) {
    return position >= 1 && static_cast<size_t>(position) <= text.size()
               ? text[static_cast<size_t>(position) - 1]
               : u'\0';
}

int position(TextView text, TextView gesucht, int ab) {
    const size_t gefunden = text.find(gesucht, static_cast<size_t>(std::max(ab, 1)) - 1);
    return gefunden == TextView::npos ? 0 : static_cast<int>(gefunden) + 1;
}

TextView trimmen_links(TextView text) {
    const size_t erstes = text.find_first_not_of(u' ');
    return erstes == TextView::npos ? TextView{} : text.substr(erstes);
}

TextView trimmen_rechts(TextView text) {
    const size_t letztes = text.find_last_not_of(u' ');
    return letztes == TextView::npos ? TextView{} : text.substr(0, letztes + 1);
}

TextView trimmen(TextView text) {
    return trimmen_links(trimmen_rechts(text));
}

char16_t klein(char16_t c) {
    if (c >= u'A' && c <= u'Z') return static_cast<char16_t>(c + 32);
    if (c < 0x80) return c;
    if (c >= 0xC0 && c <= 0xDE && c != 0xD7) return static_cast<char16_t>(c + 32);
    for (const auto& [groß, kleines] : WEITERE_PAARE)
        if (c == groß) return kleines;
    return c;
}

Text klein(TextView text) {
    Text aus(text);
    for (char16_t& c : aus)
        c = klein(c);
    return aus;
}

bool gleich_ohne_Fall(TextView a, TextView b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(),
                                              [](char16_t x, char16_t y) { return klein(x) == klein(y); });
}

bool beginnt_ohne_Fall(TextView text, TextView anfang) {
    return text.size() >= anfang.size() && gleich_ohne_Fall(text.substr(0, anfang.size()), anfang);
}

bool endet_ohne_Fall(TextView text, TextView ende) {
    return text.size() >= ende.size() && gleich_ohne_Fall(text.substr(text.size() - ende.size()), ende);
}

bool passt_auf_Maske(TextView name, TextView maske) {
    return maske_ab(name, maske);
}

Text Ersetzen(TextView text, TextView alt, TextView neu) {
    if (alt.empty()) return Text(text);
    Text aus;
    size_t von = 0;
    for (size_t treffer; (treffer = text.find(alt, von)) != TextView::npos; von = treffer + alt.size()) {
        aus += text.substr(von, treffer - von);
        aus += neu;
    }
    aus += text.substr(von);
    return aus;
}

std::vector<Text> teilen(TextView text, char16_t trenner) {
    std::vector<Text> teile;
    size_t von = 0;
    for (size_t bis; (bis = text.find(trenner, von)) != TextView::npos; von = bis + 1)
        teile.emplace_back(text.substr(von, bis - von));
    teile.emplace_back(text.substr(von));
    return teile;
}

bool ist_Ziffer(char16_t c) {
    return c >= u'0' && c <= u'9';
}

bool nur_Ziffern(TextView text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), ist_Ziffer);
}

long Val(TextView text) {
    text = trimmen_links(text);
    const bool negativ = !text.empty() && text.front() == u'-';
    if (negativ) text.remove_prefix(1);
    long wert = 0;
    for (char16_t c : text) {
        if (!ist_Ziffer(c) || wert > 100'000'000'000'000L) break;
        wert = wert * 10 + (c - u'0');
    }
    return negativ ? -wert : wert;
}

Text ziffern(long zahl, int stellen) {
    const std::string roh = std::to_string(zahl < 0 ? -zahl : zahl);
    Text aus(zahl < 0 ? u"-" : u"");
    for (size_t k = roh.size(); k < static_cast<size_t>(stellen); ++k)
        aus += u'0';
    for (char c : roh)
        aus += static_cast<char16_t>(c);
    return aus;
}

Text aus_utf8(std::string_view utf8) {
    Text aus;
    aus.reserve(utf8.size());
    for (size_t i = 0; i < utf8.size();) {
        const char32_t c = nächster_codepunkt(utf8, i);
        if (c < 0x10000) {
            aus += static_cast<char16_t>(c);
        } else {
            aus += static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10));
            aus += static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
        }
    }
    return aus;
}

std::string zu_utf8(TextView text) {
    std::string aus;
    aus.reserve(text.size());
    for (size_t i = 0; i < text.size(); ++i) {
        char32_t c = text[i];
        if (c >= 0xD800 && c < 0xDC00 && i + 1 < text.size() && (text[i + 1] & 0xFC00) == 0xDC00)
            c = 0x10000 + ((c - 0xD800) << 10) + (text[++i] - 0xDC00u);
        else if (c >= 0xD800 && c < 0xE000)
            c = U'\uFFFD';
        anhängen_utf8(aus, c);
    }
    return aus;
}

} // namespace kalvora
