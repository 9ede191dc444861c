#include "platform/posix/gebietsschema.h"

#include <algorithm>
#include <array>
#include <langinfo.h>
#include <locale.h>
#include <memory>
#include <string_view>

#include "base/cp1252.h"
#include "platform/posix/gebietstabelle.h"

namespace kalvora {

namespace {

struct Locale_frei {
    void operator()(locale_t l) const { freelocale(l); }
};
using Installiert = std::unique_ptr<std::remove_pointer_t<locale_t>, Locale_frei>;

// The installed locale of that name, if its texts are UTF-8; the table serves the others as well.
Installiert installiert(const std::string& name, int kategorien) {
    Installiert l(newlocale(kategorien | LC_CTYPE_MASK, name.c_str(), nullptr));
    if (l && std::string_view(nl_langinfo_l(CODESET, l.get())) != "UTF-8") l.reset();
    return l;
}

// The nominative: several languages have another form for use within a date.
Text Monat_von(locale_t l, int k) {
    const char* name = nl_langinfo_l(static_cast<nl_item>(ALTMON_1 + k), l);
    if (!*name) name = nl_langinfo_l(static_cast<nl_item>(MON_1 + k), l);
    return aus_utf8(name);
}

void Datum_von(locale_t l, Locale& schema) {
    schema.datum = Datumsformat_aus_Muster(nl_langinfo_l(D_FMT, l));
    for (int k = 0; k < 12; ++k)
        if (Text name = Monat_von(l, k); !name.empty())
            schema.Monatsnamen[static_cast<std::size_t>(k)] = std::move(name);
}

void Zahl_von(locale_t l, Locale& schema) {
    const Text komma = aus_utf8(nl_langinfo_l(RADIXCHAR, l));
    if (komma.size() == 1 && (komma[0] == u',' || komma[0] == u'.')) schema.Dezimaltrennzeichen = komma[0];
}

Datumsreihenfolge Reihenfolge_aus(const std::string& teile) {
    if (teile.starts_with("m")) return Datumsreihenfolge::MonatTagJahr;
    if (teile.starts_with("y")) return Datumsreihenfolge::JahrMonatTag;
    return Datumsreihenfolge::TagMonatJahr;
}

// One conversion of a pattern as the parts that it stands for.
std::string Teile_von(char zeichen) {
    switch (zeichen) {
    case 'd':
    case 'e': return "d";
    case 'm':
    case 'b':
    case 'B': return "m";
    case 'y':
    case 'Y':
    case 'G':
    case 'g': return "y";
    default: return {};
    }
}

} // namespace

Datumsformat Datumsformat_aus_Muster(const std::string& muster) {
    if (muster == "%D") return {Datumsreihenfolge::MonatTagJahr, u'/'};
    if (muster == "%F") return {Datumsreihenfolge::JahrMonatTag, u'-'};
    const Text text = aus_utf8(muster);
    std::string teile;
    char16_t trenner = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != u'%') {
            if (teile.size() == 1 && trenner == 0 && text[i] != u' ' && !ist_Ziffer(text[i]) &&
                cp1252_byte(text[i]))
                trenner = text[i];
            continue;
        }
        const std::size_t art = text.find_first_not_of(u"-_0^#EO123456789", i + 1);
        if (art == Text::npos) break;
        if (text[art] < 0x80) teile += Teile_von(static_cast<char>(text[art]));
        i = art;
    }
    return {Reihenfolge_aus(teile), trenner == 0 ? u'/' : trenner};
}

Gebietsname Gebietsname_aus(const std::string& name) {
    const std::string kern = name.substr(0, name.find_first_of(".@"));
    if (kern.empty() || kern == "C" || kern == "POSIX") return {};
    const std::size_t strich = kern.find_first_of("_-");
    Gebietsname g{kern.substr(0, strich), {}};
    if (strich != std::string::npos) g.gebiet = kern.substr(strich + 1);
    std::transform(g.sprache.begin(), g.sprache.end(), g.sprache.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    if (g.gebiet.empty()) g.gebiet = Hauptgebiet(g.sprache);
    return g;
}

Locale Gebietsschema_aus_Tabelle(const Gebietsname& datum, const Gebietsname& zahl) {
    Locale schema;
    schema.datum = Datumsformat_von(datum.sprache, datum.gebiet);
    if (const auto monate = Monatsnamen_von(datum.sprache)) schema.Monatsnamen = *monate;
    if (datum.sprache == "de" && datum.gebiet == "AT") schema.Monatsnamen[0] = u"Jänner";
    const Länderkennung land = Länderkennung_von(datum.sprache.empty() ? "DE" : datum.gebiet);
    schema.Ländernummer = land.nummer;
    schema.Landeskürzel = land.kürzel;
    schema.Dezimaltrennzeichen = Dezimaltrennzeichen_von(zahl.sprache, zahl.gebiet);
    return schema;
}

Locale Gebietsschema(const std::string& datum, const std::string& zahl) {
    const Gebietsname d = Gebietsname_aus(datum);
    const Gebietsname z = Gebietsname_aus(zahl);
    Locale schema = Gebietsschema_aus_Tabelle(d, z);
    if (!d.sprache.empty())
        if (const Installiert l = installiert(datum, LC_TIME_MASK)) Datum_von(l.get(), schema);
    if (!z.sprache.empty())
        if (const Installiert l = installiert(zahl, LC_NUMERIC_MASK)) Zahl_von(l.get(), schema);
    // No library knows the list separator; where the comma is taken it is the semicolon, in Switzerland too.
    schema.Listentrennzeichen = schema.Dezimaltrennzeichen == u',' || z.gebiet == "CH" ? u';' : u',';
    return schema;
}

} // namespace kalvora
