#include "ui/konsole/monatsbild.h"

#include <algorithm>

namespace kalvora {

namespace {

constexpr int HÖCHSTE_NAMENSBREITE = 28;
constexpr int TAGBREITE = 3, SCHMALE_TAGBREITE = 2;

// A heading is weekday, separator, day number.
struct Tageskopf {
    Text wochentag, tag;
};

Tageskopf Kopf_von(const Cell& cell) {
    const std::size_t trenner = cell.text.find_last_of(u" \r\n");
    if (trenner == Text::npos) return {{}, cell.text};
    return {cell.text.substr(0, trenner), cell.text.substr(trenner + 1)};
}

Text ohne_Steuerzeichen(TextView text) {
    Text ergebnis(text);
    std::replace_if(
        ergebnis.begin(), ergebnis.end(), [](char16_t c) { return c < 0x20 || (c >= 0x7F && c < 0xA0); },
        u' ');
    return ergebnis;
}

enum class Bündig { Links, Rechts };

Text auf_Breite(TextView text, int breite, Bündig bündig) {
    const Text roh = ohne_Steuerzeichen(links(text, breite));
    const Text rand(static_cast<std::size_t>(breite) - roh.size(), u' ');
    return bündig == Bündig::Links ? roh + rand : rand + roh;
}

std::string Farbfolge(int ebene, Farbe f) { // 38 text, 48 background
    return "\x1b[" + std::to_string(ebene) + ";2;" + std::to_string(rot(f)) + ";" + std::to_string(grün(f)) +
           ";" + std::to_string(blau(f)) + "m";
}

// One drawing of one table; columns and widths are settled at the start.
class Zeichner {
public:
    Zeichner(const Table& plan, const Terminalgröße& größe) : plan_(plan), größe_(größe) { einteilen(); }

    std::string bild() {
        std::string ergebnis = kopf(&Tageskopf::wochentag) + kopf(&Tageskopf::tag);
        int frei = std::max(1, größe_.höhe - 4); // two heading lines, the line below, the prompt
        int verborgen = 0;
        for (int row = plan_.fixed_rows(); row < plan_.rows(); ++row) {
            if (plan_.row_height(row) == 0) continue;
            if (frei-- > 0)
                ergebnis += zeile(row);
            else
                ++verborgen;
        }
        if (verborgen > 0) ergebnis += "... noch " + std::to_string(verborgen) + " Zeilen\n";
        return ergebnis;
    }

private:
    void einteilen() {
        for (int col = plan_.fixed_cols(); col < plan_.cols(); ++col)
            if (plan_.col_in_use(col)) spalten_.push_back(col);
        for (int row = 0; row < plan_.rows(); ++row)
            namensbreite_ = std::max(namensbreite_, static_cast<int>(plan_.cell(row, 0).text.size()));
        namensbreite_ = std::min({namensbreite_, HÖCHSTE_NAMENSBREITE, größe_.breite});
        const int tage = static_cast<int>(spalten_.size());
        const int platz = std::max(0, größe_.breite - namensbreite_);
        tagbreite_ = tage * TAGBREITE <= platz ? TAGBREITE : SCHMALE_TAGBREITE;
        spalten_.resize(static_cast<std::size_t>(std::min(tage, platz / tagbreite_)));
    }

    std::string kopf(Text Tageskopf::*teil) const {
        std::string ergebnis = zu_utf8(auf_Breite(teil == &Tageskopf::tag ? plan_.cell(0, 0).text : Text(),
                                                  namensbreite_, Bündig::Links));
        for (const int col : spalten_) {
            const Cell& cell = plan_.cell(0, col);
            const bool heute = col == plan_.marked_col();
            ergebnis +=
                feld(cell, auf_Breite(Kopf_von(cell).*teil, tagbreite_, Bündig::Rechts), heute, false);
        }
        return ergebnis + "\n";
    }

    std::string zeile(int row) const {
        const Cell& name = plan_.cell(row, 0);
        std::string ergebnis = feld(name, auf_Breite(name.text, namensbreite_, Bündig::Links), false, false);
        for (const int col : spalten_) {
            const Cell& cell = plan_.cell(row, col);
            ergebnis += feld(cell, auf_Breite(cell.text, tagbreite_, Bündig::Rechts), markiert(row, col),
                             col == plan_.marked_col());
        }
        return ergebnis + "\n";
    }

    // `umgekehrt`: today's heading and what is marked; `unterstrichen`: today's column.
    static std::string feld(const Cell& cell, const Text& text, bool umgekehrt, bool unterstrichen) {
        return Farbfolge(38, cell.fore) + Farbfolge(48, cell.back) + (cell.bold ? "\x1b[1m" : "") +
               (umgekehrt ? "\x1b[7m" : "") + (unterstrichen ? "\x1b[4m" : "") + zu_utf8(text) + "\x1b[0m";
    }

    bool markiert(int row, int col) const {
        const Selection& s = plan_.selection();
        return plan_.HighLight() && row >= std::min(s.row, s.row_sel) && row <= std::max(s.row, s.row_sel) &&
               col >= std::min(s.col, s.col_sel) && col <= std::max(s.col, s.col_sel);
    }

    const Table& plan_;
    Terminalgröße größe_;
    std::vector<int> spalten_;
    int namensbreite_ = 1, tagbreite_ = TAGBREITE;
};

} // namespace

std::string Monatsbild(const Table& plan, const Terminalgröße& größe) {
    if (plan.rows() == 0 || plan.cols() == 0) return {};
    return Zeichner(plan, größe).bild();
}

} // namespace kalvora
