#include "platform/posix/gebietstabelle.h"

#include <algorithm>
#include <utility>

namespace kalvora {

namespace {

struct Land {
    std::string_view gebiet;
    int nummer;
    TextView kürzel;
};
constexpr std::array LÄNDER{Land{"DE", 49, u"DEU"},  Land{"AT", 43, u"AUT"}, Land{"CH", 41, u"CHE"},
                            Land{"FR", 33, u"FRA"},  Land{"ES", 34, u"ESP"}, Land{"IT", 39, u"ITA"},
                            Land{"US", 1, u"USA"},   Land{"CA", 1, u"CAD"},  Land{"GB", 44, u"GBR"},
                            Land{"NL", 31, u"NLD"},  Land{"BE", 32, u"BEL"}, Land{"LU", 352, u"LUX"},
                            Land{"DK", 45, u"DNK"},  Land{"SE", 46, u"SWE"}, Land{"PL", 48, u"POL"},
                            Land{"CZ", 420, u"CZE"}, Land{"PT", 351, u"PRT"}};

constexpr std::array<std::pair<std::string_view, std::string_view>, 12> HAUPTGEBIETE{{{"de", "DE"},
                                                                                      {"en", "US"},
                                                                                      {"fr", "FR"},
                                                                                      {"es", "ES"},
                                                                                      {"it", "IT"},
                                                                                      {"nl", "NL"},
                                                                                      {"pl", "PL"},
                                                                                      {"cs", "CZ"},
                                                                                      {"pt", "PT"},
                                                                                      {"sv", "SE"},
                                                                                      {"da", "DK"},
                                                                                      {"lb", "LU"}}};

using Namensliste = std::array<TextView, 12>;
struct Sprache {
    std::string_view name;
    Namensliste monate;
};
constexpr std::array SPRACHEN{
    Sprache{"de",
            {u"Januar", u"Februar", u"März", u"April", u"Mai", u"Juni", u"Juli", u"August", u"September",
             u"Oktober", u"November", u"Dezember"}},
    Sprache{"en",
            {u"January", u"February", u"March", u"April", u"May", u"June", u"July", u"August", u"September",
             u"October", u"November", u"December"}},
    Sprache{"fr",
            {u"janvier", u"février", u"mars", u"avril", u"mai", u"juin", u"juillet", u"août", u"septembre",
             u"octobre", u"novembre", u"décembre"}},
    Sprache{"es",
            {u"enero", u"febrero", u"marzo", u"abril", u"mayo", u"junio", u"julio", u"agosto", u"septiembre",
             u"octubre", u"noviembre", u"diciembre"}},
    Sprache{"it",
            {u"gennaio", u"febbraio", u"marzo", u"aprile", u"maggio", u"giugno", u"luglio", u"agosto",
             u"settembre", u"ottobre", u"novembre", u"dicembre"}},
    Sprache{"nl",
            {u"januari", u"februari", u"maart", u"april", u"mei", u"juni", u"juli", u"augustus", u"september",
             u"oktober", u"november", u"december"}},
    Sprache{"pl",
            {u"styczeń", u"luty", u"marzec", u"kwiecień", u"maj", u"czerwiec", u"lipiec", u"sierpień",
             u"wrzesień", u"październik", u"listopad", u"grudzień"}},
    Sprache{"cs",
            {u"leden", u"únor", u"březen", u"duben", u"květen", u"červen", u"červenec", u"srpen", u"září",
             u"říjen", u"listopad", u"prosinec"}},
    Sprache{"pt",
            {u"janeiro", u"fevereiro", u"março", u"abril", u"maio", u"junho", u"julho", u"agosto",
             u"setembro", u"outubro", u"novembro", u"dezembro"}},
    Sprache{"sv",
            {u"januari", u"februari", u"mars", u"april", u"maj", u"juni", u"juli", u"augusti", u"september",
             u"oktober", u"november", u"december"}},
    Sprache{"da",
            {u"januar", u"februar", u"marts", u"april", u"maj", u"juni", u"juli", u"august", u"september",
             u"oktober", u"november", u"december"}}};

// An empty territory stands for every other one of the language; the special ones come first.
struct Datumszeile {
    std::string_view sprache, gebiet;
    Datumsreihenfolge reihenfolge;
    char16_t trennzeichen;
};
constexpr auto MTJ = Datumsreihenfolge::MonatTagJahr;
constexpr auto TMJ = Datumsreihenfolge::TagMonatJahr;
constexpr auto JMT = Datumsreihenfolge::JahrMonatTag;
constexpr std::array DATUMSFORMEN{
    Datumszeile{"en", "US", MTJ, u'/'}, Datumszeile{"en", "CA", JMT, u'-'}, Datumszeile{"en", "", TMJ, u'/'},
    Datumszeile{"fr", "CA", JMT, u'-'}, Datumszeile{"fr", "CH", TMJ, u'.'}, Datumszeile{"fr", "", TMJ, u'/'},
    Datumszeile{"it", "CH", TMJ, u'.'}, Datumszeile{"it", "", TMJ, u'/'},   Datumszeile{"es", "", TMJ, u'/'},
    Datumszeile{"nl", "BE", TMJ, u'/'}, Datumszeile{"nl", "", TMJ, u'-'},   Datumszeile{"pt", "", TMJ, u'/'},
    Datumszeile{"sv", "FI", TMJ, u'.'}, Datumszeile{"sv", "", JMT, u'-'},   Datumszeile{"da", "", TMJ, u'-'}};

} // namespace

Länderkennung Länderkennung_von(std::string_view gebiet) {
    const auto* const treffer =
        std::find_if(LÄNDER.begin(), LÄNDER.end(), [&](const Land& l) { return l.gebiet == gebiet; });
    const Land& land = treffer == LÄNDER.end() ? LÄNDER.front() : *treffer;
    return {land.nummer, Text(land.kürzel)};
}

std::string_view Hauptgebiet(std::string_view sprache) {
    for (const auto& [name, gebiet] : HAUPTGEBIETE)
        if (name == sprache) return gebiet;
    return {};
}

std::optional<Monatsnamen> Monatsnamen_von(std::string_view sprache) {
    for (const Sprache& s : SPRACHEN) {
        if (s.name != sprache) continue;
        Monatsnamen namen;
        std::copy(s.monate.begin(), s.monate.end(), namen.begin());
        return namen;
    }
    return std::nullopt;
}

Datumsformat Datumsformat_von(std::string_view sprache, std::string_view gebiet) {
    for (const Datumszeile& z : DATUMSFORMEN)
        if (z.sprache == sprache && (z.gebiet.empty() || z.gebiet == gebiet))
            return {z.reihenfolge, z.trennzeichen};
    return {};
}

char16_t Dezimaltrennzeichen_von(std::string_view sprache, std::string_view gebiet) {
    return sprache == "en" || (gebiet == "CH" && !sprache.empty()) ? u'.' : u',';
}

} // namespace kalvora
