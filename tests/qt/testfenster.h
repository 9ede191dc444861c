// A main window with made-up contents on the real windowing system: November 2026, today the 18th, a few
// dozen people below their headings.
#pragma once

#include <QWidget>

#include "plan/frm_kalvora.h"
#include "ui/qt/fenstersystem.h"
#include "ui/qt/plan_ansicht.h"

namespace kalvora {

void fülle_Plan(frmKalvora& form, int personen);

struct Testfenster {
    explicit Testfenster(int personen = 40, QSize größe = {1280, 720});
    ~Testfenster();

    QWidget& fenster() { return *system.window(form); }
    PlanAnsicht& plan() { return *fenster().findChild<PlanAnsicht*>(QStringLiteral("msgFlexGrid")); }
    PlanAnsicht& tabelle(const char* name) { return *fenster().findChild<PlanAnsicht*>(QLatin1String(name)); }
    // Middle of a cell of the plan, viewport coordinates.
    QPoint Mitte(int row, int col) { return plan().cell_rect(row, col).center(); }
    void zeigen(); // lets Qt lay out and paint

    QtFenstersystem system;
    Application app{system};
    frmKalvora form{app};
};

} // namespace kalvora
