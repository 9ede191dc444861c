// The windows' contract on the program's side, where tests/qt/vertrag_test.cpp does not reach: inner windows,
// the wait pointer, and windows while a file call lasts.
#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

#include "firma/stummes_fenstersystem.h"

namespace kalvora {
namespace {

// A front end that runs given actions in its loops instead of a user.
struct Fensterattrappe : firma::StummesFenstersystem {
    std::function<void()> im_lauf = [] {}, im_fenster = im_lauf, bei_meldung = im_lauf, beim_warten = im_lauf,
                          beim_öffnen = im_lauf, beim_malen = im_lauf;
    Mauszeiger zeiger = Mauszeiger::Standard;

    void open(Form&) override { beim_öffnen(); }
    void run(Form&) override { im_lauf(); }
    void run_modal(Form&) override { im_fenster(); }
    void message(const Text&) override { bei_meldung(); }
    std::optional<Text> input(const Text&, const Text& titel, const Text& feld) override {
        return titel + u"/" + feld;
    }
    void wait(double) override { beim_warten(); }
    void process_events() override { beim_malen(); }
    void set_pointer(Mauszeiger z) override { zeiger = z; }
};

struct Probeform : Form {
    Probeform(Application& app, Text name) : Form(app, std::move(name)) {
        knopf.on_click = [this](Modifiers) { beim_klick(); };
    }
    Button knopf{*this, u"cmdKnopf", 8};
    std::function<void()> beim_klick = [] {};
};

struct Fenster : testing::Test {
    Fensterattrappe system;
    Application app{system};
    Probeform haupt{app, u"frmHaupt"}, neben{app, u"frmNeben"};
    void SetUp() override { app.open(haupt); }
};

TEST_F(Fenster, Ein_Fehler_im_inneren_Fenster_beendet_auch_wer_es_geoeffnet_hat) {
    neben.beim_klick = [] { throw std::runtime_error("innen"); };
    for (const bool beim_Öffnen : {false, true}) {
        bool weiter = false;
        const auto klick = [&] { EXPECT_TRUE(neben.knopf.user_click()); };
        (beim_Öffnen ? system.beim_öffnen : system.im_fenster) = klick;
        haupt.beim_klick = [&] {
            app.open_modal(neben);
            weiter = true;
        };
        system.im_lauf = [&] { EXPECT_TRUE(haupt.knopf.user_click()); };
        EXPECT_THROW(app.run(haupt), std::runtime_error);
        EXPECT_FALSE(weiter);
        EXPECT_EQ(app.forms(), std::vector<Form*>{&haupt}) << "the inner window is closed";
        EXPECT_FALSE(app.busy() || app.failed());
        system.im_fenster = [] { ADD_FAILURE() << "its loop would have nobody to end it"; };
    }
}

TEST_F(Fenster, Sanduhr_zaehlt_und_ruht_waehrend_einer_Frage) {
    const Application::Sanduhrwache wache(app, true), keine(app, false);
    { const Application::Sanduhrwache innere(app, true); }
    for (const bool wirft : {false, true}) {
        EXPECT_EQ(system.zeiger, Mauszeiger::Sanduhr);
        system.bei_meldung = [&] {
            EXPECT_EQ(system.zeiger, Mauszeiger::Standard);
            EXPECT_TRUE(app.busy());
            if (wirft) throw std::runtime_error("Fenstersystem");
        };
        const int vorher = app.interruptions();
        if (wirft)
            EXPECT_THROW(app.Hinweis(u"Hallo"), std::runtime_error);
        else
            app.Hinweis(u"Hallo");
        EXPECT_EQ(app.interruptions(), vorher + 1);
        EXPECT_FALSE(app.busy());
    }
    EXPECT_EQ(system.zeiger, Mauszeiger::Sanduhr);
    EXPECT_EQ(app.Eingabe(u"Name", u"Adam||Suche"), u"Suche/Adam");
}

TEST_F(Fenster, Ein_langer_Dateiaufruf_zeigt_dass_gewartet_wird) {
    std::vector<std::string> texte;
    app.Vorgangsanzeige = [&](const Text& text) { texte.push_back(zu_utf8(text)); };
    system.beim_malen = [&] {
        EXPECT_FALSE(haupt.knopf.user_click());
        if (texte.size() > 2) throw std::runtime_error("Malen geht nicht"); // disturbs nobody
    };
    app.Vorgang(u"Sicherung ... 40 %");
    app.Warten_zeigen(0.1);
    EXPECT_EQ(system.zeiger, Mauszeiger::Sanduhr);
    app.Warten_vorbei();
    EXPECT_EQ(system.zeiger, Mauszeiger::Standard);
    EXPECT_EQ(texte.size(), 1U) << "a short wait tells nothing";
    for (const double sekunden : {0.9, 1.0, 1.1})
        app.Warten_zeigen(sekunden);
    app.Warten_vorbei();
    EXPECT_EQ(texte,
              (std::vector<std::string>{"Sicherung ... 40 %",
                                        "Der Datenordner antwortet nicht. Bitte warten ...", texte[0]}));
}

TEST_F(Fenster, Pause_in_laesst_nur_ein_Fenster_herein) {
    app.open(neben);
    Probeform innen(app, u"frmInnen");
    int klicks = 0;
    innen.beim_klick = [&] { ++klicks; };
    system.im_fenster = [&] { EXPECT_TRUE(innen.knopf.user_click()); };
    neben.beim_klick = [&] { app.open_modal(innen); };
    haupt.beim_klick = [&] { app.Pause_in(neben, 1); }; // busy itself
    system.beim_warten = [&] {
        EXPECT_FALSE(haupt.knopf.user_click());
        EXPECT_TRUE(neben.knopf.user_click());
    };
    EXPECT_TRUE(haupt.knopf.user_click());
    EXPECT_EQ(klicks, 1);
    EXPECT_TRUE(neben.user_close()) << "as before";
    neben.beim_klick = [] { throw std::runtime_error("kaputt"); };
    EXPECT_THROW(app.Pause_in(neben, 1), std::runtime_error);
    app.close(neben);
    EXPECT_FALSE(neben.knopf.user_click());
}

} // namespace
} // namespace kalvora
