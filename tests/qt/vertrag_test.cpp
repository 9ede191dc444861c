// What passes the border between windows and logic: setters fire nothing, what is hidden, disabled, busy or
// behind another window gets nothing, and no exception ever crosses Qt.
#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTabBar>
#include <QTimer>
#include <stdexcept>

#include "qt/testfenster.h"

namespace kalvora {
namespace {

struct Vertrag : testing::Test {
    Testfenster t{20, {780, 640}};
    frmKalvora& f = t.form;
    std::vector<std::string> ereignisse;

    Vertrag() {
        const auto sage = [this](const char* was) {
            return [this, was](auto...) { ereignisse.emplace_back(was); };
        };
        f.tabMonate.on_change = sage("Monat");
        f.tabJahre.on_change = sage("Jahr");
        f.cmbMitarbeitergruppen.on_select = sage("Gruppe");
        f.msgFlexGrid.on_selection_changed = sage("Auswahl");
        f.msgFlexGrid.on_scrolled = sage("gerollt");
        f.msgFlexGrid.on_mouse_down = sage("Maus");
        f.cmdAuswahl(1)->on_click = sage("Grund");
        f.mnu(u"mnuInfo").on_click = sage("Info");
        f.on_key = [this](const Key& k) {
            ereignisse.push_back(zu_utf8(k.code));
            return k.code == u"F5" || k.code == u"F10";
        };
        f.on_query_close = [] { return false; };
        t.plan().setFocus();
    }
    template <class W>
    W& w(const char* name) {
        return *t.fenster().findChild<W*>(QString::fromUtf8(name));
    }
    QAction& eintrag(const char* name) { return w<QAction>(name); }
    void klick_auf_Monat(int tab) {
        QTest::mouseClick(&w<QTabBar>("tabMonate"), Qt::LeftButton, {},
                          w<QTabBar>("tabMonate").tabRect(tab).center());
    }
    void alles_anfassen() {
        QTest::mouseClick(&w<QPushButton>("cmdAuswahl_1"), Qt::LeftButton);
        klick_auf_Monat(3);
        QTest::mouseClick(t.plan().viewport(), Qt::LeftButton, {}, t.Mitte(3, 5));
        for (const Qt::Key taste : {Qt::Key_F5, Qt::Key_Right})
            QTest::keyClick(t.fenster().focusWidget() ? t.fenster().focusWidget() : &t.fenster(), taste);
        eintrag("mnuInfo").trigger();
        t.fenster().close();
    }
};
using Liste = std::vector<std::string>;

} // namespace

TEST_F(Vertrag, Setzen_loest_nichts_aus_Haende_schon) {
    f.tabMonate.set_selected(2);
    f.tabJahre.set_captions({u"2030", u"2031"});
    f.tabJahre.set_selected(0);
    f.cmbMitarbeitergruppen.set_items({u"A", u"B", u"C"});
    f.cmbMitarbeitergruppen.set_selected(2);
    f.msgFlexGrid.set_selection({3, 1, 4, 5});
    f.msgFlexGrid.set_HighLight(true);
    t.fenster().resize(780, 500);
    t.zeigen();
    f.msgFlexGrid.set_TopRow(4);
    f.msgFlexGrid.resize(5, 33);
    t.zeigen();
    EXPECT_EQ(ereignisse, Liste{});

    klick_auf_Monat(5);
    w<QComboBox>("cmbMitarbeitergruppen").setFocus();
    QTest::keyClick(&w<QComboBox>("cmbMitarbeitergruppen"), Qt::Key_Up);
    QTest::mouseClick(&w<QPushButton>("cmdAuswahl_1"), Qt::LeftButton);
    eintrag("mnuInfo").trigger();
    EXPECT_EQ(ereignisse, (Liste{"Monat", "Auf", "Gruppe", "Grund", "Info"}));
    EXPECT_EQ(f.tabMonate.selected(), 5);
    EXPECT_EQ(f.cmbMitarbeitergruppen.selected(), 1);
}

TEST_F(Vertrag, Verborgenes_und_Gesperrtes_bekommt_nichts) {
    f.tabMonate.set_tab_enabled(3, false);
    f.cmdAuswahl(1)->set_enabled(false);
    f.mnu(u"mnuInfo").set_enabled(false);
    f.msgFlexGrid.set_enabled(false);
    alles_anfassen();
    EXPECT_EQ(std::count(ereignisse.begin(), ereignisse.end(), "F5"), 1)
        << "the window itself is still there";
    std::erase_if(ereignisse, [](const auto& e) { return e == "F5" || e == "Rechts"; });
    EXPECT_EQ(ereignisse, Liste{});
    EXPECT_EQ(w<QTabBar>("tabMonate").currentIndex(), 10);
}

TEST_F(Vertrag, Beschaeftigt_laesst_nichts_herein_und_zeigt_den_alten_Stand) {
    bool geschlossen = false;
    f.on_query_close = [&] { return geschlossen = true; };
    const Selection vorher = f.msgFlexGrid.selection();
    EXPECT_TRUE(t.app.event(f, [&] { alles_anfassen(); }));
    EXPECT_EQ(ereignisse, Liste{});
    EXPECT_FALSE(geschlossen);
    EXPECT_EQ(f.msgFlexGrid.selection(), vorher);
    EXPECT_EQ(w<QTabBar>("tabMonate").currentIndex(), 10) << "the tab pressed in vain goes back";
    klick_auf_Monat(3);
    EXPECT_EQ(ereignisse, Liste{"Monat"});
}

TEST_F(Vertrag, Uhren_ticken_nur_wenn_nichts_laeuft) {
    int takte = 0;
    Form fenster(t.app, u"frmStart");
    Timer uhr(fenster, u"tmrUhr", 0.001);
    uhr.on_tick = [&] { ++takte; };
    t.app.open(fenster);
    uhr.set_enabled(true);
    EXPECT_TRUE(QTest::qWaitFor([&] { return takte >= 2; }, 2000));
    const int vorher = takte;
    t.app.Pause(0.02);
    t.app.close(fenster);
    QTest::qWait(10);
    EXPECT_EQ(takte, vorher);
}

TEST_F(Vertrag, Tasten_kommen_einmal_an_und_gehen_sonst_an_das_Steuerelement) {
    QTest::keyClick(&t.plan(), Qt::Key_F10); // would go to the menu bar
    QTest::keyClick(&t.plan(), Qt::Key_P, Qt::ControlModifier);
    QTest::keyClick(&t.plan(), Qt::Key_Down);
    EXPECT_EQ(ereignisse, (Liste{"F10", "P", "Ab", "Auswahl"}));
    ereignisse.clear();
    f.tabMonate.on_arrow = [&](int schritt) {
        ereignisse.push_back("Schritt " + std::to_string(schritt));
        return schritt < 0;
    };
    w<QTabBar>("tabMonate").setFocus();
    QTest::keyClick(&w<QTabBar>("tabMonate"), Qt::Key_Left);
    QTest::keyClick(&w<QTabBar>("tabMonate"), Qt::Key_Right);
    EXPECT_EQ(ereignisse, (Liste{"Links", "Schritt -1", "Rechts", "Schritt 1", "Monat"}));
    EXPECT_EQ(w<QTabBar>("tabMonate").currentIndex(), 11) << "what logic does not take, the strip does";
}

TEST_F(Vertrag, Fragen_antworten_mit_Tasten_und_gelten_als_beschaeftigt) {
    struct Fall {
        Qt::Key taste;
        Qt::KeyboardModifier mit;
        bool mit_Abbrechen;
        Antwort vorgabe, erwartet;
    };
    constexpr Fall FÄLLE[]{{Qt::Key_Escape, Qt::NoModifier, false, Antwort::Ja, Antwort::Nein},
                           {Qt::Key_Escape, Qt::NoModifier, true, Antwort::Ja, Antwort::Abbrechen},
                           {Qt::Key_Return, Qt::NoModifier, false, Antwort::Nein, Antwort::Nein},
                           {Qt::Key_J, Qt::NoModifier, false, Antwort::Nein, Antwort::Ja},
                           {Qt::Key_N, Qt::AltModifier, false, Antwort::Ja, Antwort::Nein},
                           {Qt::Key_A, Qt::NoModifier, true, Antwort::Ja, Antwort::Abbrechen}};
    for (const Fall& fall : FÄLLE) {
        QTimer::singleShot(0, &t.fenster(), [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_TRUE(box && QTest::qWaitForWindowActive(box));
            EXPECT_EQ(box->text(), QStringLiteral("Löschen <b>?"));
            alles_anfassen();
            EXPECT_EQ(ereignisse, Liste{});
            box->activateWindow();
            QTest::keyClick(box->focusWidget() ? box->focusWidget() : box, fall.taste, fall.mit);
        });
        EXPECT_EQ(t.app.Frage(u"Löschen <b>?", {Fragesymbol::Frage, fall.mit_Abbrechen, fall.vorgabe}),
                  fall.erwartet)
            << QKeySequence(fall.taste).toString().toStdString();
    }
}

TEST_F(Vertrag, Eine_Meldung_zeigt_alle_Zeilen) {
    Text text;
    for (int zeilen = 1; zeilen <= 12; ++zeilen) {
        text += (zeilen > 1 ? u"\nZeile " : u"Zeile ") + ziffern(zeilen);
        QTimer::singleShot(0, &t.fenster(), [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_TRUE(box && QTest::qWaitForWindowActive(box));
            const auto* label = box->findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
            EXPECT_GE(label->height(), zeilen * label->fontMetrics().height()) << zeilen;
            QTest::keyClick(box, Qt::Key_Return);
        });
        t.app.Hinweis(text);
    }
}

TEST_F(Vertrag, Ausnahmen_beenden_die_Schleife_und_gehen_nicht_durch_Qt) {
    const std::vector<std::function<void()>> wege{
        [&] { QTest::mouseClick(&w<QPushButton>("cmdAuswahl_1"), Qt::LeftButton); },
        [&] { QTest::mouseClick(t.plan().viewport(), Qt::LeftButton, {}, t.Mitte(3, 5)); },
        [&] { QTest::keyClick(&t.plan(), Qt::Key_F5); }, [&] { klick_auf_Monat(4); },
        [&] { t.fenster().close(); }};
    const auto wirf = [](auto&&...) -> bool { throw std::runtime_error("kaputt"); };
    f.cmdAuswahl(1)->on_click = wirf;
    f.msgFlexGrid.on_mouse_down = wirf;
    f.on_key = wirf;
    f.tabMonate.on_change = wirf;
    f.on_query_close = wirf;
    for (std::size_t i = 0; i < wege.size(); ++i) {
        QTimer::singleShot(0, &t.fenster(), [&] {
            wege[i]();
            alles_anfassen(); // nothing may come behind a failure
        });
        EXPECT_THROW(t.app.run(f), std::runtime_error) << i;
        EXPECT_FALSE(t.app.busy());
    }
    EXPECT_EQ(ereignisse, Liste{});
    EXPECT_NE(f.view(), nullptr);
}

TEST_F(Vertrag, Enter_Esc_und_Kuerzel_druecken_im_Dialog_die_vorgesehenen_Knoepfe) {
    struct Probedialog : Form {
        explicit Probedialog(Application& app) : Form(app, u"frmRecovery") {}
        ComboBox cmbDateiliste{*this, u"cmbDateiliste"};
        Button hilfe{*this, u"cmdAuswahl", 1}, ok{*this, u"cmdAuswahl", 2}, abbruch{*this, u"cmdAuswahl", 3};
    };
    struct Fall {
        const char* fokus;
        Qt::Key taste;
        Qt::KeyboardModifiers mods;
        Liste gedrückt;
        bool mit_Abbruch = true, gesperrt = false;
    };
    const Fall FÄLLE[]{{"cmbDateiliste", Qt::Key_Enter, Qt::KeypadModifier, {"OK"}},
                       {"cmbDateiliste", Qt::Key_Return, Qt::ControlModifier, {}},
                       {"cmbDateiliste", Qt::Key_Return, {}, {}, true, true},
                       {"cmbDateiliste", Qt::Key_Escape, {}, {"Abbruch"}},
                       {"cmbDateiliste", Qt::Key_Escape, {}, {"Rahmen"}, false},
                       {"cmdAuswahl_1", Qt::Key_Return, {}, {"Hilfe"}},
                       {"cmbDateiliste", Qt::Key_Udiaeresis, Qt::AltModifier, {"Abbruch"}}};
    for (const Fall& fall : FÄLLE) {
        SCOPED_TRACE(std::string(fall.fokus) + " " + QKeySequence(fall.taste).toString().toStdString());
        Probedialog d(t.app);
        d.abbruch.set_caption(u"&Überspringen");
        d.ok.set_default(true);
        d.ok.set_enabled(!fall.gesperrt);
        d.abbruch.set_cancel(fall.mit_Abbruch);
        Liste gedrückt;
        d.hilfe.on_click = [&](Modifiers) { gedrückt.emplace_back("Hilfe"); };
        d.ok.on_click = [&](Modifiers) { gedrückt.emplace_back("OK"); };
        d.abbruch.on_click = [&](Modifiers) { gedrückt.emplace_back("Abbruch"); };
        d.on_query_close = [&] {
            gedrückt.emplace_back("Rahmen");
            return true;
        };
        QTimer::singleShot(0, &t.fenster(), [&] {
            QWidget& fenster = *t.system.window(d);
            EXPECT_TRUE(QTest::qWaitFor([&] { return t.system.active(d) && fenster.focusWidget(); }));
            EXPECT_FALSE(t.system.active(f));
            EXPECT_TRUE(fenster.isModal());
            EXPECT_EQ(fenster.focusWidget()->objectName(), QStringLiteral("cmbDateiliste"));
            alles_anfassen();
            auto* ziel = fenster.findChild<QWidget*>(QLatin1String(fall.fokus));
            ziel->setFocus();
            QTest::keyClick(ziel, fall.taste, fall.mods);
            // A shortcut shows the button pressed for a moment.
            EXPECT_TRUE(QTest::qWaitFor([&] { return gedrückt.size() == fall.gedrückt.size(); }));
            if (fall.mit_Abbruch) t.app.close(d);
        });
        t.app.open_modal(d);
        EXPECT_EQ(gedrückt, fall.gedrückt);
        EXPECT_EQ(ereignisse, Liste{}) << "the window behind it gets nothing";
    }
}

} // namespace kalvora
