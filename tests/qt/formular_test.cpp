// Every window against its layout file: each control has its widget, of the right kind, and no widget that a
// hand can reach is without a control.
#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>

#include "base/fehler.h"
#include "frame/frm_start.h"
#include "hilfen/arbeitsplatz.h"
#include "qt/eingabe.h"
#include "qt/testfenster.h"
#include "safety/frm_recovery.h"
#include "ui/qt/bausteine.h"
#include "ui/qt/fenster_ansicht.h"
#include "ui/qt/qt_text.h"

namespace kalvora {
namespace {

struct Formulare : testing::Test {
    QtFenstersystem system;
    Application app{system};
    frmKalvora haupt{app};
    frmStart start{app, u"1.2.3"};
    Prüfplatz platz;
    Wiederherstellung sicherungen{platz.kanal, platz.platz};
    frmRecovery recovery{platz.kanal, platz.platz, sicherungen};
    std::array<Form*, 3> alle{&haupt, &start, &recovery};

    // What binding this window says; "" when it fits.
    static std::string Bindung(Form& form, std::unique_ptr<QWidget> fenster) {
        try {
            FensterAnsicht ansicht(form, std::move(fenster));
            return {};
        } catch (const Laufzeitfehler& fehler) {
            return zu_utf8(fehler.text());
        }
    }
};

bool hat_Widget(const Control& c) {
    return c.kind() != ControlKind::MenuItem && c.kind() != ControlKind::Timer;
}

bool passt(ControlKind kind, const QWidget* w) {
    switch (kind) {
    case ControlKind::Label: return qobject_cast<const QLabel*>(w);
    case ControlKind::Button: return qobject_cast<const QPushButton*>(w);
    case ControlKind::ComboBox: return qobject_cast<const QComboBox*>(w);
    case ControlKind::TabStrip: return qobject_cast<const Reiter*>(w);
    case ControlKind::Table: return qobject_cast<const PlanAnsicht*>(w);
    case ControlKind::FloatingBox: return qobject_cast<const Schwebefeld*>(w);
    default: return false;
    }
}

bool für_die_Hand(const QWidget& w) {
    return !w.objectName().startsWith(QLatin1String("qt_")) && !qobject_cast<QTabBar*>(w.parent()) &&
           (qobject_cast<const QAbstractButton*>(&w) || qobject_cast<const QComboBox*>(&w) ||
            qobject_cast<const QTabBar*>(&w) || qobject_cast<const PlanAnsicht*>(&w));
}

} // namespace

TEST_F(Formulare, Steuerelemente_und_Widgets_entsprechen_einander) {
    for (Form* form : alle) {
        auto fenster = Fenster_aus_Formular(form->name());
        ASSERT_TRUE(fenster) << zu_utf8(form->name());
        QStringList namen;
        for (const Control* c : form->controls()) {
            if (!hat_Widget(*c)) continue;
            namen.append(qt(c->object_name()));
            EXPECT_TRUE(passt(c->kind(), fenster->findChild<QWidget*>(namen.back())))
                << zu_utf8(c->full_name());
        }
        for (const QWidget* w : fenster->findChildren<QWidget*>())
            EXPECT_TRUE(!für_die_Hand(*w) || namen.contains(w->objectName()))
                << w->objectName().toStdString();
        EXPECT_EQ(Bindung(*form, std::move(fenster)), "");
    }
    EXPECT_EQ(Fenster_aus_Formular(u"frmKeines"), nullptr);
}

} // namespace kalvora
