// The windows' contract on the program's side: what reaches the logic, and what an exception does.
#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

#include "base/fehler.h"
#include "firma/stummes_fenstersystem.h"

namespace kalvora {
namespace {

// A front end that runs given actions in its loops instead of a user.
struct Fensterattrappe : firma::StummesFenstersystem {
    std::function<void()> im_lauf, im_fenster, bei_meldung, beim_warten, beim_öffnen, beim_malen;
    Mauszeiger zeiger = Mauszeiger::Standard, zeiger_bei_meldung = Mauszeiger::Standard;
    int beendet = 0;

    static void tue(const std::function<void()>& was) {
        if (was) was();
    }
    void open(Form&) override { tue(beim_öffnen); }
    void run(Form&) override { tue(im_lauf); }
    void run_modal(Form&) override { tue(im_fenster); }
    void quit() override { ++beendet; }
    void message(const Text&) override {
        zeiger_bei_meldung = zeiger;
        tue(bei_meldung);
    }
    Antwort question(const Text&, const Frageart& art) override {
        tue(bei_meldung);
        return art.vorgabe;
    }
    void wait(double) override { tue(beim_warten); }
    void process_events() override { tue(beim_malen); }
    void set_pointer(Mauszeiger z) override { zeiger = z; }
};

struct Probeform : Form {
    Probeform(Application& app, Text name) : Form(app, std::move(name)) {
        knopf.on_click = [this](Modifiers) {
            ++klicks;
            Fensterattrappe::tue(beim_klick);
        };
        uhr.on_tick = [this] { ++takte; };
    }
    Button knopf{*this, u"cmdKnopf", 8};
    ComboBox liste{*this, u"cmbListe"};
    TabStrip reiter{*this, u"tabReiter"};
    Table tafel{*this, u"msgFlexGrid"};
    Timer uhr{*this, u"tmrUhr", 15};
    MenuItem menü{*this, u"mnuDatei", u"", u"&Datei"};
    MenuItem eintrag{*this, u"mnuEnde", u"mnuDatei", u"&Ende"};
    std::function<void()> beim_klick;
    int klicks = 0, takte = 0;
};

struct Fenster : testing::Test {
    Fensterattrappe system;
    Application app{system};
    Probeform haupt{app, u"frmHaupt"}, neben{app, u"frmNeben"};
    void öffne() {
        app.open(haupt);
        haupt.uhr.set_enabled(true);
    }
};

TEST_F(Fenster, Was_nicht_zu_erreichen_ist_bekommt_kein_Ereignis) {
    EXPECT_FALSE(haupt.knopf.user_click()) << "not open";
    app.open(haupt);
    haupt.knopf.set_enabled(false);
    EXPECT_FALSE(haupt.knopf.user_click());
    haupt.knopf.set_enabled(true);
    haupt.knopf.set_visible(false);
    EXPECT_FALSE(haupt.knopf.user_click());
    EXPECT_FALSE(haupt.uhr.tick()) << "timers begin switched off";
    haupt.uhr.set_enabled(true);
    EXPECT_TRUE(haupt.uhr.tick());
    EXPECT_TRUE(haupt.eintrag.user_click());
    haupt.menü.set_enabled(false);
    EXPECT_FALSE(haupt.eintrag.user_click()) << "its menu is off";
    app.close(haupt);
    EXPECT_FALSE(haupt.uhr.tick()) << "closed again";
}

TEST_F(Fenster, Beschaeftigt_laesst_nichts_herein) {
    öffne();
    const auto alles = [&] {
        EXPECT_TRUE(app.busy());
        EXPECT_FALSE(haupt.knopf.user_click() || haupt.uhr.tick() || haupt.user_key({u"F5", {}}) ||
                     haupt.user_close());
    };
    system.bei_meldung = system.beim_warten = alles;
    app.Hinweis(u"Hallo");
    EXPECT_EQ(app.Frage(u"Ja?", {.vorgabe = Antwort::Ja}), Antwort::Ja);
    app.Pause(1);
    haupt.beim_klick = [&] {
        alles();
        app.Hinweis(u"Innen");
        alles();
    };
    EXPECT_TRUE(haupt.knopf.user_click());
    EXPECT_EQ(haupt.klicks, 1);
    EXPECT_EQ(haupt.takte, 0);
    EXPECT_FALSE(app.busy());
}

TEST_F(Fenster, Innere_Fenster_halten_aeussere_zurueck) {
    öffne();
    haupt.beim_klick = [&] { app.open_modal(neben); };
    system.im_fenster = [&] {
        EXPECT_EQ(app.active_form(), &neben);
        EXPECT_FALSE(haupt.knopf.user_click() || haupt.uhr.tick());
        EXPECT_TRUE(neben.knopf.user_click());
    };
    EXPECT_TRUE(haupt.knopf.user_click());
    EXPECT_EQ(haupt.klicks + neben.klicks, 2);
    EXPECT_EQ(app.forms(), std::vector<Form*>{&haupt});
    EXPECT_FALSE(app.busy());
    app.open(neben); // beside it this time
    EXPECT_TRUE(haupt.uhr.tick()) << "a window is modal only while it was opened so";
    EXPECT_TRUE(neben.knopf.user_click());
}

TEST_F(Fenster, Ein_Fehler_endet_die_Schleifen_und_kommt_dahinter_an) {
    app.open(haupt);
    haupt.beim_klick = [] { throw Laufzeitfehler(61, u"voll"); };
    system.im_lauf = [&] {
        EXPECT_TRUE(haupt.knopf.user_click()) << "nothing is thrown through the toolkit";
        EXPECT_FALSE(haupt.knopf.user_click()) << "nothing goes in while an error waits";
    };
    EXPECT_THROW(app.run(haupt), Laufzeitfehler);
    EXPECT_EQ(system.beendet, 1);
    EXPECT_NO_THROW(app.check_error()) << "thrown once";
    EXPECT_TRUE(app.accepts(haupt));

    bool geschrieben = false;
    haupt.beim_klick = [&] {
        app.open_modal(neben);
        geschrieben = true;
    };
    neben.beim_klick = [] { throw std::runtime_error("innen"); };
    system.im_fenster = [&] { EXPECT_TRUE(neben.knopf.user_click()); };
    system.im_lauf = [&] { EXPECT_TRUE(haupt.knopf.user_click()); };
    EXPECT_THROW(app.run(haupt), std::runtime_error);
    EXPECT_FALSE(geschrieben) << "who opened the inner window does not go on";
    EXPECT_EQ(app.forms(), std::vector<Form*>{&haupt}) << "the inner window is closed";
    EXPECT_FALSE(app.busy());
}

TEST_F(Fenster, Sanduhr_zaehlt_und_ruht_waehrend_einer_Meldung) {
    app.Sanduhr(true);
    app.Sanduhr(true);
    app.Sanduhr(false);
    app.Hinweis(u"Hallo");
    EXPECT_EQ(system.zeiger_bei_meldung, Mauszeiger::Standard);
    EXPECT_EQ(system.zeiger, Mauszeiger::Sanduhr);
    app.Sanduhr(false);
    EXPECT_EQ(system.zeiger, Mauszeiger::Standard);
    app.Sanduhr(false); // one too many
    app.Sanduhr(true);
    EXPECT_TRUE(app.Sanduhr_an());
}

TEST_F(Fenster, Ein_langer_Dateiaufruf_zeigt_dass_gewartet_wird_und_laesst_nichts_herein) {
    öffne();
    std::vector<std::string> texte;
    int gemalt = 0;
    app.Vorgang_zeigen = [&](const Text& text) { texte.push_back(zu_utf8(text)); };
    system.beim_malen = [&] {
        ++gemalt;
        EXPECT_FALSE(haupt.knopf.user_click() || haupt.uhr.tick() || haupt.user_close());
        if (gemalt > 4) throw std::runtime_error("Malen geht nicht");
    };
    const std::string antwortet_nicht = "Der Datenordner antwortet nicht. Bitte warten ...";
    app.Vorgang(u"Sicherung ... 40 %");
    app.Warten_zeigen(0.1);
    EXPECT_EQ(system.zeiger, Mauszeiger::Sanduhr);
    app.Warten_vorbei();
    EXPECT_EQ(system.zeiger, Mauszeiger::Standard);
    EXPECT_EQ(texte, std::vector<std::string>{"Sicherung ... 40 %"}) << "a short wait tells nothing";
    EXPECT_EQ(gemalt, 2);
    for (const double sekunden : {0.9, 1.0, 1.1})
        app.Warten_zeigen(sekunden);
    app.Warten_vorbei();
    app.Vorgang({});
    EXPECT_EQ(texte,
              (std::vector<std::string>{"Sicherung ... 40 %", antwortet_nicht, "Sicherung ... 40 %", ""}));
    EXPECT_EQ(gemalt, 7) << "and what throws there disturbs nobody";
    system.beim_malen = nullptr;
    EXPECT_TRUE(haupt.knopf.user_click());
}

TEST_F(Fenster, Pause_in_laesst_nur_ein_Fenster_herein) {
    öffne();
    app.open(neben);
    Probeform innen(app, u"frmInnen");
    haupt.beim_klick = [&] { app.Pause_in(neben, 1); }; // busy itself
    system.im_fenster = [&] { EXPECT_TRUE(innen.knopf.user_click()); };
    neben.beim_klick = [&] { app.open_modal(innen); };
    system.beim_warten = [&] {
        EXPECT_FALSE(haupt.knopf.user_click() || haupt.uhr.tick() || haupt.user_close());
        EXPECT_TRUE(neben.knopf.user_click());
    };
    EXPECT_TRUE(haupt.knopf.user_click());
    EXPECT_EQ(neben.klicks * 10 + innen.klicks, 11);
    EXPECT_TRUE(neben.user_close()) << "as before";
    EXPECT_FALSE(app.failed() || app.busy());
    neben.beim_klick = [] { throw Laufzeitfehler(61, u"voll"); };
    EXPECT_THROW(app.Pause_in(neben, 1), Laufzeitfehler);
    EXPECT_EQ(system.beendet, 1);
    app.close(neben);
    system.beim_warten = [&] { EXPECT_FALSE(neben.knopf.user_click() || haupt.knopf.user_click()); };
    app.Pause_in(neben, 1);
}

TEST_F(Fenster, Setzen_im_Programm_loest_kein_Ereignis_aus) {
    int ereignisse = 0;
    haupt.liste.on_select = [&] { ++ereignisse; };
    haupt.reiter.on_change = [&](int) { ++ereignisse; };
    haupt.tafel.on_selection_changed = [&](int) { ++ereignisse; };
    haupt.tafel.on_scrolled = [&] { ++ereignisse; };
    app.open(haupt);
    haupt.liste.set_items({u"a", u"b"});
    haupt.liste.set_selected(1);
    haupt.reiter.set_captions({u"2025", u"2026", u"2027"});
    haupt.reiter.set_selected(1);
    haupt.tafel.resize(5, 3);
    haupt.tafel.set_selection({1, 1, 2, 2});
    haupt.tafel.set_TopRow(2);
    EXPECT_TRUE(haupt.reiter.user_select(1)) << "nothing changes";
    EXPECT_EQ(ereignisse, 0);
    EXPECT_TRUE(haupt.liste.user_select(0) && haupt.tafel.user_select({1, 1, 1, 1}, 1));
    EXPECT_TRUE(haupt.reiter.user_arrow(+1) && haupt.reiter.user_arrow(+1)) << "stops at the end";
    EXPECT_EQ(ereignisse, 3);
    haupt.reiter.set_tab_enabled(1, false);
    EXPECT_FALSE(haupt.reiter.user_select(1) || haupt.reiter.user_select(3) || haupt.liste.user_select(2));
    haupt.reiter.on_arrow = [](int) { return true; };
    EXPECT_TRUE(haupt.reiter.user_arrow(-1));
    EXPECT_EQ(haupt.reiter.selected(), 2) << "the handler did something else instead";
    haupt.liste.set_selected(1);
    haupt.liste.set_items({u"nur"});
    EXPECT_EQ(haupt.liste.selected(), -1) << "a choice that is no more";
}

TEST_F(Fenster, Tafel_behaelt_ihre_Zellen_und_Steuerelemente_ihren_Namen) {
    Table& t = haupt.tafel;
    t.resize(3, 4);
    t.edit(2, 3).text = u"x";
    t.resize(4, 6);
    EXPECT_EQ(t.cell(2, 3).text, u"x");
    EXPECT_EQ(t.cell(3, 5), Cell{});
    t.resize(2, 6);
    t.resize(4, 6);
    EXPECT_EQ(t.cell(2, 3), Cell{}) << "rows taken away come back empty";
    for (const auto& [r, c] : {std::pair{-1, 0}, {4, 0}, {0, -1}, {0, 6}})
        EXPECT_THROW((void)t.cell(r, c), Laufzeitfehler) << r << "," << c;
    EXPECT_EQ(haupt.find(u"cmdKnopf", 8), &haupt.knopf);
    EXPECT_EQ(haupt.find(u"cmdKnopf"), nullptr);
    EXPECT_EQ(haupt.knopf.full_name(), u"cmdKnopf(8)");
    EXPECT_THROW(Label(haupt, u"cmdKnopf", 8), Laufzeitfehler);
    EXPECT_EQ(haupt.find(u"cmdKnopf", 8), &haupt.knopf) << "the refused one left nothing";
}

TEST_F(Fenster, Ein_Fehler_beim_Aufgehen_laesst_das_innere_Fenster_nicht_laufen) {
    app.open(haupt);
    bool gelaufen = false, weiter = false;
    system.beim_öffnen = [&] {
        EXPECT_TRUE(neben.knopf.user_click());
    }; // an event that is let pass meanwhile
    neben.beim_klick = [] { throw Laufzeitfehler(61, u"voll"); };
    system.im_fenster = [&] { gelaufen = true; };
    haupt.beim_klick = [&] {
        app.open_modal(neben);
        weiter = true;
    };
    system.im_lauf = [&] { EXPECT_TRUE(haupt.knopf.user_click()); };
    EXPECT_THROW(app.run(haupt), Laufzeitfehler);
    EXPECT_FALSE(gelaufen);
    EXPECT_FALSE(weiter);
    EXPECT_EQ(app.forms(), std::vector<Form*>{&haupt});
    EXPECT_FALSE(app.busy());
}

} // namespace
} // namespace kalvora
