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
    Mauszeiger zeiger = Mauszeiger::Standard;
    int beendet = 0;

    static void tue(const std::function<void()>& was) {
        if (was) was();
    }
    void open(Form&) override { tue(beim_öffnen); }
    void run(Form&) override { tue(im_lauf); }
    void run_modal(Form&) override { tue(im_fenster); }
    void quit() override { ++beendet; }
    void message(const Text&) override { tue(bei_meldung); }
    Antwort question(const Text&, const Frageart& art) override {
        tue(bei_meldung);
        return art.vorgabe;
    }
    std::optional<Text> input(const Text&, const Text& titel, const Text& feld) override {
        tue(bei_meldung);
        return titel + feld;
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
    Timer uhr{*this, u"tmrUhr", 15};
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

    // In an inner window, and already while that opens.
    neben.beim_klick = [] { throw std::runtime_error("innen"); };
    for (const bool beim_Öffnen : {false, true}) {
        bool gelaufen = false, weiter = false;
        const auto klick = [&] { EXPECT_TRUE(neben.knopf.user_click()); };
        system.beim_öffnen = beim_Öffnen ? klick : std::function<void()>();
        system.im_fenster = [&] { beim_Öffnen ? void(gelaufen = true) : klick(); };
        haupt.beim_klick = [&] {
            app.open_modal(neben);
            weiter = true;
        };
        system.im_lauf = [&] { EXPECT_TRUE(haupt.knopf.user_click()); };
        EXPECT_THROW(app.run(haupt), std::runtime_error);
        EXPECT_FALSE(gelaufen);
        EXPECT_FALSE(weiter) << "who opened the inner window does not go on";
        EXPECT_EQ(app.forms(), std::vector<Form*>{&haupt}) << "the inner window is closed";
        EXPECT_FALSE(app.busy());
    }
}

TEST_F(Fenster, Sanduhr_zaehlt_und_ruht_waehrend_jeder_Frage) {
    using Wache = Application::Sanduhrwache;
    const std::vector<std::function<void()>> FRAGEN{[&] { app.Hinweis(u"Hallo"); },
                                                    [&] { app.Frage(u"Ja?"); },
                                                    [&] { app.Eingabe(u"Name", u"Adam||Suche"); }};
    for (const auto& fragen : FRAGEN) {
        const Wache wache(app, true), keine(app, false);
        { const Wache innere(app, true); }
        std::vector<Mauszeiger> dabei;
        system.bei_meldung = [&] {
            dabei.push_back(system.zeiger);
            EXPECT_TRUE(app.busy());
        };
        const int vorher = app.interruptions();
        fragen();
        EXPECT_EQ(dabei, std::vector{Mauszeiger::Standard});
        EXPECT_EQ(app.interruptions(), vorher + 1);
        EXPECT_EQ(system.zeiger, Mauszeiger::Sanduhr) << "again";
        system.bei_meldung = [] { throw std::runtime_error("Fenstersystem"); };
        EXPECT_THROW(fragen(), std::runtime_error);
        EXPECT_EQ(system.zeiger, Mauszeiger::Sanduhr) << "also then";
        EXPECT_FALSE(app.busy());
    }
    EXPECT_EQ(system.zeiger, Mauszeiger::Standard);
}

TEST_F(Fenster, Ein_langer_Dateiaufruf_zeigt_dass_gewartet_wird_und_laesst_nichts_herein) {
    öffne();
    std::vector<std::string> texte;
    int gemalt = 0;
    app.Vorgangsanzeige = [&](const Text& text) { texte.push_back(zu_utf8(text)); };
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
    EXPECT_EQ(texte.size(), 1U) << "a short wait tells nothing";
    for (const double sekunden : {0.9, 1.0, 1.1})
        app.Warten_zeigen(sekunden);
    app.Warten_vorbei();
    app.Vorgang({});
    EXPECT_EQ(texte,
              (std::vector<std::string>{"Sicherung ... 40 %", antwortet_nicht, "Sicherung ... 40 %", ""}));
    EXPECT_EQ(gemalt, 7) << "and what throws there disturbs nobody";
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

} // namespace
} // namespace kalvora
