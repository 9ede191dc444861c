// A small window with one control of each kind, whose events are told as messages, and helpers to drive it
// through the console.
#pragma once

#include <array>

#include "hilfen/test_uhr.h"
#include "ui/konsole/konsole.h"

namespace kalvora {

struct Unterfenster : Form {
    explicit Unterfenster(Application& app, Text name = u"frmUnter") : Form(app, std::move(name)) {
        set_title(u"Unter");
        cmdOK.on_click = [this](Modifiers) { this->app().close(*this); };
    }
    Button cmdOK{*this, u"cmdOK"};
};

struct Probefenster : Form {
    explicit Probefenster(Application& app) : Form(app, u"frmProbe") {
        set_title(u"Probe");
        Tabelle_füllen();
        lblText.set_text(u"Zeile 1\nZeile \"2\"");
        Ereignisse_melden();
    }

    void sage(const Text& text) { app().Hinweis(text); }
    static Text ort(int row, int col) { return ziffern(row) + u"," + ziffern(col); }

    void Tabelle_füllen() {
        msgFlexGrid.resize(6, 5);
        constexpr std::array<TextView, 6> NAMEN{u"Name", u"Adam", u"Berta", u"Berta", u"17", u"Verborgen"};
        for (int row = 0; row < 6; ++row)
            msgFlexGrid.edit(row, 0).text = NAMEN[static_cast<std::size_t>(row)];
        for (int col = 1; col < 5; ++col)
            msgFlexGrid.edit(0, col).text = u"Mo\r" + ziffern(col);
        msgFlexGrid.set_row_height(5, 0);
        msgFlexGrid.set_col_width(4, 0);
        msgFlexGrid.edit(1, 2) = {u"U", 0x0000FF, 0xC0FFC0, u'1', true};
    }

    void Ereignisse_melden() {
        msgFlexGrid.on_mouse_down = [this](const Table::Mouse& m) {
            sage(u"ab " + ort(m.row, m.col) + (m.mods.shift ? u" umschalt" : u"") +
                 (m.mods.ctrl ? u" strg" : u""));
            if (m.mods.ctrl) modal_öffnen();
        };
        msgFlexGrid.on_mouse_up = [this](const Table::Mouse& m) { sage(u"auf " + ort(m.row, m.col)); };
        msgFlexGrid.on_selection_changed = [this](int) {
            const Selection& s = msgFlexGrid.selection();
            msgFlexGrid.set_HighLight(true);
            sage(u"markiert " + ort(s.row, s.col) + u"-" + ort(s.row_sel, s.col_sel));
        };
        cmdAuswahl1.on_click = [this](Modifiers) { sage(u"Klick"); };
        mnuEintrag.on_click = [this] { modal_öffnen(); };
        tmrKurz.on_tick = [this] { sage(u"kurz " + ziffern(++kurz)); };
        tmrLang.on_tick = [this] { sage(u"lang"); };
    }

    void modal_öffnen() {
        Unterfenster unter(app());
        app().open_modal(unter);
        sage(u"zurück");
    }

    int kurz = 0;
    Label lblText{*this, u"lblText"};
    Table msgFlexGrid{*this, u"msgFlexGrid"};
    Button cmdAuswahl1{*this, u"cmdAuswahl", 1};
    Button cmdAuswahl2{*this, u"cmdAuswahl", 2};
    MenuItem mnuMenü{*this, u"mnuMenü", u"", u"&Menü"};
    MenuItem mnuEintrag{*this, u"mnuEintrag", u"mnuMenü", u"&Eintrag ..."};
    Timer tmrKurz{*this, u"tmrKurz", 1.5};
    Timer tmrLang{*this, u"tmrLang", 4};
};

// The window in a running console. `window` is there from the constructor on; the program stands still while
// a test looks at it.
class Probelauf {
public:
    using Vorbereitung = std::function<void(Probefenster&)>;
    explicit Probelauf(Vorbereitung vorbereitung = {})
        : konsole_(uhr_, [this, vorbereitung](KonsolenFenstersystem& system, Skriptuhr&) {
              Application app(system);
              Probefenster fenster(app);
              window = &fenster;
              if (vorbereitung) vorbereitung(fenster);
              app.open(fenster);
              app.run(fenster);
              app.close(fenster);
              window = nullptr;
          }) {
        anfang = konsole_.start();
    }

    std::string operator()(std::string_view zeile) { return konsole_.execute(zeile); }
    std::string ende() { return konsole_.ende(); }
    Konsole& konsole() { return konsole_; }

    Probefenster* window = nullptr;
    std::string anfang;

private:
    TestUhr uhr_;
    Konsole konsole_;
};

} // namespace kalvora
