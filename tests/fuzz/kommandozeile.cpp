// Command lines of the console. What was cut into words is the same when the words are put in quotes again.
#include "fuzz/fuzzplatz.h"
#include "ui/konsole/skriptleser.cpp" // NOLINT(bugprone-suspicious-include): the console is no part of this build

namespace kalvora::fuzz {

void prüfe(const Eingabe& eingabe) {
    const Kommandozeile zeile = zerlegen(aus_utf8(eingabe.alles), 7);
    fordere(zeile.nummer == 7, "the line's number");
    if (!zeile.fehler.empty() || zeile.worte.empty()) return;
    Text wieder;
    for (const Wort& wort : zeile.worte) {
        wieder += u" \"";
        for (const char16_t c : wort.text) {
            if (c == u'\n') {
                wieder += u"\\n";
                continue;
            }
            if (c == u'"' || c == u'\\') wieder += u'\\';
            wieder += c;
        }
        wieder += u'"';
    }
    const Kommandozeile zweite = zerlegen(wieder);
    fordere(zweite.fehler.empty() && zweite.worte.size() == zeile.worte.size(), "quoted words are words");
    for (std::size_t i = 0; i < zeile.worte.size(); ++i)
        fordere(zweite.worte[i].text == zeile.worte[i].text && zweite.worte[i].zitiert, "the same word");
}

} // namespace kalvora::fuzz
