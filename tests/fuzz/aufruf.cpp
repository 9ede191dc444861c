// Call parameters: arguments are separated by line ends here.
#include "frame/aufruf.h"
#include "fuzz/fuzzplatz.h"

namespace kalvora::fuzz {

void prüfe(const Eingabe& eingabe) {
    const Text alles = aus_utf8(eingabe.alles);
    const Aufruf aufruf(teilen(alles, u'\n'));
    for (const TextView name : {u"d", u"enforcestart", u"nowelcomescreen", u"silent", u"path", u"setpath",
                                u"lookback", u"a", u"setting"}) {
        const auto wert = aufruf.Aufrufparameter(name);
        fordere(wert.has_value() == aufruf.enthalten(name), "a parameter that is there has a value");
        if (!wert) continue;
        fordere(enthält(klein(alles), u"/" + Text(name)), "a parameter that nobody gave");
        fordere(enthält(alles, *wert), "a value that nobody gave");
    }
    fordere(!aufruf.enthalten(u"unbekannt"), "a name that is none");
}

} // namespace kalvora::fuzz
