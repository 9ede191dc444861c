#include "ui/konsole/skriptleser.h"

namespace kalvora {

namespace {

bool ist_Zwischenraum(char16_t c) {
    return c == u' ' || c == u'\t' || c == u'\r';
}

// Reads one line from left to right.
class Zerleger {
public:
    explicit Zerleger(TextView zeile) : rest_(zeile) {}

    bool überspringen() { // false: nothing follows
        while (!rest_.empty() && ist_Zwischenraum(rest_.front()))
            rest_.remove_prefix(1);
        return !rest_.empty();
    }
    bool Kommentar() const { return rest_.front() == u'#'; }

    Wort wort() { return rest_.front() == u'"' ? zitiertes_Wort() : blankes_Wort(); }
    const Text& fehler() const { return fehler_; }

private:
    Wort blankes_Wort() {
        Wort wort;
        for (; !rest_.empty() && !ist_Zwischenraum(rest_.front()); rest_.remove_prefix(1))
            wort.text += rest_.front();
        return wort;
    }

    Wort zitiertes_Wort() {
        Wort wort{{}, true};
        rest_.remove_prefix(1);
        while (!rest_.empty() && rest_.front() != u'"')
            wort.text += zeichen();
        if (rest_.empty()) {
            fehler_ = u"Das schließende Anführungszeichen fehlt";
            return wort;
        }
        rest_.remove_prefix(1);
        if (!rest_.empty() && !ist_Zwischenraum(rest_.front()))
            fehler_ = u"Hinter dem schließenden Anführungszeichen fehlt ein Leerzeichen";
        return wort;
    }

    char16_t zeichen() {
        const char16_t c = nimm();
        if (c != u'\\' || rest_.empty()) return c;
        const char16_t umschrieben = nimm();
        if (umschrieben == u'n') return u'\n';
        if (umschrieben != u'"' && umschrieben != u'\\')
            fehler_ = Text(u"Unbekannte Umschreibung \\") + umschrieben;
        return umschrieben;
    }

    char16_t nimm() {
        const char16_t c = rest_.front();
        rest_.remove_prefix(1);
        return c;
    }

    TextView rest_;
    Text fehler_;
};

} // namespace

Kommandozeile zerlegen(TextView zeile, int nummer) {
    Kommandozeile ergebnis{nummer, {}, {}};
    Zerleger zerleger(zeile);
    if (!zerleger.überspringen() || zerleger.Kommentar()) return ergebnis;
    do
        ergebnis.worte.push_back(zerleger.wort());
    while (zerleger.fehler().empty() && zerleger.überspringen());
    ergebnis.fehler = zerleger.fehler();
    return ergebnis;
}

std::optional<Kommandozeile> Skriptleser::nächste() {
    if (zurückgelegt_) {
        auto zeile = std::move(zurückgelegt_);
        zurückgelegt_.reset();
        return zeile;
    }
    while (auto bytes = quelle_.nächste()) {
        ++nummer_;
        Text text = aus_utf8(*bytes);
        if (nummer_ == 1 && !text.empty() && text.front() == u'\uFEFF') text.erase(0, 1);
        Kommandozeile zeile = zerlegen(text, nummer_);
        if (!zeile.worte.empty()) return zeile;
    }
    return std::nullopt;
}

} // namespace kalvora
