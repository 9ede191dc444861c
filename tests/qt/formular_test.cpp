// Every window against its layout file. That each control has its widget, of the right kind, the binding
// looks after itself; here no widget that a hand can reach is without a control.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QTabBar>

#include "frame/frm_start.h"
#include "hilfen/arbeitsplatz.h"
#include "plan/frm_kalvora.h"
#include "safety/frm_recovery.h"
#include "ui/qt/bausteine.h"
#include "ui/qt/fenster_ansicht.h"
#include "ui/qt/fenstersystem.h"
#include "ui/qt/plan_ansicht.h"
#include "ui/qt/qt_text.h"

namespace kalvora {
namespace {

bool für_die_Hand(const QWidget& w) {
    return !w.objectName().startsWith(QLatin1String("qt_")) && !qobject_cast<QTabBar*>(w.parent()) &&
           (qobject_cast<const QAbstractButton*>(&w) || qobject_cast<const QComboBox*>(&w) ||
            qobject_cast<const QTabBar*>(&w) || qobject_cast<const PlanAnsicht*>(&w));
}

TEST(Formulare, Widgets_entsprechen_den_Steuerelementen) {
    QtFenstersystem system;
    Application app{system};
    Prüfplatz platz;
    Wiederherstellung sicherungen{platz.kanal, platz.platz};
    frmKalvora haupt{app};
    frmStart start{app, u"1.2.3"};
    frmRecovery recovery{platz.kanal, platz.platz, sicherungen};
    for (Form* form : std::initializer_list<Form*>{&haupt, &start, &recovery}) {
        auto fenster = Fenster_aus_Formular(form->name());
        ASSERT_TRUE(fenster) << zu_utf8(form->name());
        QStringList namen;
        for (const Control* c : form->controls())
            namen.append(qt(c->object_name()));
        for (const QWidget* w : fenster->findChildren<QWidget*>())
            EXPECT_TRUE(!für_die_Hand(*w) || namen.contains(w->objectName()))
                << w->objectName().toStdString();
        EXPECT_NO_THROW(FensterAnsicht(*form, std::move(fenster)));
    }
}

} // namespace
} // namespace kalvora
