// The days of holiday rules, and what a month makes of them. Rules that count as readable can be computed.
#include "calendar/tagesklassen.h"
#include "fuzz/fuzzplatz.h"

#include "calendar/feiertage.h"

namespace kalvora::fuzz {

namespace {

bool alle_lesbar(const Feld<Text>& regeln) {
    for (int r = 1; r <= regeln.oben() && r <= FEIERTAGSREGELN_HÖCHSTENS; ++r)
        if (!Feiertagsregel_lesbar(regeln(r), r)) return false;
    return true;
}

void Ergebnis_prüfen(const Feiertage& f) {
    const auto n = static_cast<std::size_t>(f.Feiertagsliste.anzahl());
    fordere(n >= 1 && f.Feiertagsschlüssel.size() == 7 * n, "a key for each day");
    for (const Text& eintrag : f.Feiertagsliste)
        fordere(eintrag.size() >= 6 && Feiertagsname(f, links(eintrag, 6)).has_value(), "each day is found");
    Tagesregeln regeln{u"2611", u"NoEx:NoEx", u"SaSo", f.Feiertagsschlüssel};
    const Monatsklassen klassen(regeln);
    for (int tag = 0; tag <= 32; ++tag)
        fordere(klassen.feiertag(tag) == (tag >= 1 && tag <= 31 && CheckFeiertag(regeln, tag)),
                "day by day and at once agree");
}

} // namespace

void prüfe(const Eingabe& eingabe) {
    const int Startjahr = 2000 + eingabe.wahl % 77;
    Feld<Text> regeln;
    for (Text& zeile : eingabe.zeilen())
        regeln.anfügen(std::move(zeile));
    try {
        Ergebnis_prüfen(Feiertage_berechnen(Startjahr, regeln));
    } catch (const Laufzeitfehler& fehler) {
        fordere(fehler.nummer == 13 && fehler.zeile >= 1, fehler.what());
        fordere(!alle_lesbar(regeln), "a readable rule that cannot be computed");
    }
}

} // namespace kalvora::fuzz
