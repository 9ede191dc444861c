#include "firma/namen.h"

#include <iterator>
#include <utility>

namespace kalvora::firma {

namespace {

constexpr TextView NACHNAMEN[] = {
    u"Müller",
    u"Schmidt",
    u"Schneider",
    u"Fischer",
    u"Weber",
    u"Meyer",
    u"Wagner",
    u"Becker",
    u"Schulz",
    u"Hoffmann",
    u"Schäfer",
    u"Koch",
    u"Bauer",
    u"Richter",
    u"Klein",
    u"Wolf",
    u"Schröder",
    u"Neumann",
    u"Schwarz",
    u"Zimmermann",
    u"Braun",
    u"Krüger",
    u"Hofmann",
    u"Hartmann",
    u"Lange",
    u"Schmitt",
    u"Werner",
    u"Krause",
    u"Lehmann",
    u"Köhler",
    u"Maier",
    u"Huber",
    u"Kaiser",
    u"Fuchs",
    u"Peters",
    u"Lang",
    u"Scholz",
    u"Möller",
    u"Weiß",
    u"Jung",
    u"Hahn",
    u"Vogel",
    u"Friedrich",
    u"Keller",
    u"Günther",
    u"Frank",
    u"Berger",
    u"Winkler",
    u"Roth",
    u"Beck",
    u"Lorenz",
    u"Baumann",
    u"Franke",
    u"Albrecht",
    u"Schuster",
    u"Simon",
    u"Ludwig",
    u"Böhm",
    u"Winter",
    u"Kraus",
    u"Schumacher",
    u"Krämer",
    u"Vogt",
    u"Stein",
    u"Jäger",
    u"Otto",
    u"Sommer",
    u"Groß",
    u"Seidel",
    u"Heinrich",
    u"Brandt",
    u"Haas",
    u"Schreiber",
    u"Graf",
    u"Dietrich",
    u"Ziegler",
    u"Kuhn",
    u"Kühn",
    u"Pohl",
    u"Engel",
    u"Horn",
    u"Busch",
    u"Bergmann",
    u"Thomas",
    u"Voigt",
    u"Sauer",
    u"Arnold",
    u"Wolff",
    u"Pfeiffer",
    u"Löwe",
    u"Gärtner",
    u"Übelacker",
    u"Östermann",
    u"Ärmel",
    u"Weißenborn",
    u"Straßer",
    u"Süßmuth",
    u"von der Heide",
    u"Öztürk",
    u"Yilmaz",
    u"Kaya",
    u"Demir",
    u"Sahin",
    u"Nowak",
    u"Kowalski",
    u"Wisniewska",
    u"Šulc",
    u"Žižka",
    u"Novák",
    u"García",
    u"Núñez",
    u"Fernández",
    u"Gonçalves",
    u"Conceição",
    u"Lefèvre",
    u"Béranger",
    u"Sørensen",
    u"Ångström",
    u"Lindström",
    u"Jensen",
    u"Rossi",
    u"D'Angelo",
    u"Nguyen",
    u"Popescu",
    u"Þórsdóttir",
    u"O'Brien",
    u"Ivanova",
    u"Petrenko",
    u"Kruse",
    u"Lüdemann",
    u"Köster",
    u"Schönfeld",
    u"Brückner",
    u"Grün",
    u"Wächter",
    u"Röder",
    u"Schütz",
    u"Thiele",
    u"Reuter",
    u"Ebert",
    u"Münch",
    u"Behrens",
    u"Ott",
    u"Fröhlich",
    u"Hübner",
    u"Nägele",
    u"Kästner",
    u"Müller-Lüdenscheidt",
    u"Schmidt-Rottluff",
    u"Meyer zu Hörste",
    u"Jürgens-Groß",
};

constexpr TextView VORNAMEN[] = {
    u"Anna",     u"Andreas",   u"Barbara", u"Bernd",  u"Björn",     u"Brigitte",   u"Carla",       u"Carsten",
    u"Christa",  u"Christian", u"Claudia", u"Daniel", u"Dörte",     u"Dieter",     u"Elif",        u"Elke",
    u"Emre",     u"Erik",      u"Eva",     u"Fabian", u"Felix",     u"François",   u"Frauke",      u"Gerd",
    u"Günter",   u"Gül",       u"Hannah",  u"Heike",  u"Helga",     u"Holger",     u"Inés",        u"Ingrid",
    u"Jana",     u"Jens",      u"Jörg",    u"José",   u"Julia",     u"Jürgen",     u"Karin",       u"Kai",
    u"Käthe",    u"Klaus",     u"Lars",    u"Laura",  u"Lena",      u"Lukas",      u"Lütfiye",     u"Manfred",
    u"Maria",    u"Markus",    u"Martin",  u"Mehmet", u"Michael",   u"Monika",     u"Natalia",     u"Niels",
    u"Olga",     u"Oliver",    u"Özlem",   u"Paula",  u"Peter",     u"Petra",      u"Philipp",     u"Rainer",
    u"Renate",   u"René",      u"Ruth",    u"Sabine", u"Søren",     u"Sören",      u"Silke",       u"Simone",
    u"Sofia",    u"Stefan",    u"Susanne", u"Svenja", u"Thomas",    u"Tim",        u"Tomáš",       u"Torsten",
    u"Ulrike",   u"Ümit",      u"Ursula",  u"Uwe",    u"Veronika",  u"Volker",     u"Walter",      u"Wiebke",
    u"Wolfgang", u"Yvonne",    u"Zoë",     u"Åsa",    u"Anna-Lena", u"Karl-Heinz", u"Hans-Jürgen",
};

constexpr TextView ABTEILUNGEN[] = {
    u"Geschäftsführung", u"Personal", u"Buchhaltung", u"Einkauf",      u"Vertrieb",
    u"Marketing",        u"Empfang",  u"EDV",         u"Konstruktion", u"Arbeitsvorbereitung",
    u"Fertigung",        u"Montage",  u"Lackiererei", u"Qualität",     u"Lager",
    u"Versand",          u"Fuhrpark", u"Hausdienst",  u"Kundendienst", u"Ausbildung",
    u"Werkstatt",        u"Prüffeld", u"Küche",       u"Außendienst",
};

// Letters outside ASCII as they are written in user names.
constexpr std::pair<char16_t, TextView> UMSCHRIFT[] = {
    {u'ä', u"ae"}, {u'ö', u"oe"}, {u'ü', u"ue"}, {u'ß', u"ss"}, {u'å', u"aa"}, {u'ø', u"oe"}, {u'á', u"a"},
    {u'ã', u"a"},  {u'ç', u"c"},  {u'è', u"e"},  {u'é', u"e"},  {u'ë', u"e"},  {u'í', u"i"},  {u'ñ', u"n"},
    {u'ó', u"o"},  {u'ú', u"u"},  {u'š', u"s"},  {u'ž', u"z"},  {u'þ', u"th"},
};

} // namespace

std::span<const TextView> Nachnamen() {
    return NACHNAMEN;
}

std::span<const TextView> Vornamen() {
    return VORNAMEN;
}

std::span<const TextView> Abteilungen() {
    return ABTEILUNGEN;
}

Text als_Anmeldename(TextView name) {
    Text aus;
    for (const char16_t c : klein(name)) {
        if (c >= u'a' && c <= u'z') aus += c;
        for (const auto& [zeichen, umschrift] : UMSCHRIFT)
            if (zeichen == c) aus += umschrift;
    }
    return aus;
}

} // namespace kalvora::firma
