#include "plan/mitarbeitersuche.h"

#include "plan/monatsansicht.h"

namespace kalvora {

void Mitarbeitersuche::zeigen(int row) {
    Table& plan = f_.msgFlexGrid;
    plan.set_selection({row, 0, row, 0}); // the name alone: no day is marked by a search
    plan.set_HighLight(true);
    plan.set_highlight(row, -1, d_.K().Grundfarben(7));
    if (!plan.row_visible(row)) plan.set_TopRow(row);
}

void Mitarbeitersuche::suchen(bool weiter) {
    if (!weiter || begriff_.empty()) {
        const Text eingabe = d_.app.Eingabe(u"Mitarbeiter suchen:\n\nName des Mitarbeiters",
                                            begriff_ + u"||Mitarbeiter suchen");
        if (trimmen(eingabe).empty()) return;
        begriff_ = trimmen(eingabe);
        treffer_ = 0;
    }
    const Table& plan = f_.msgFlexGrid;
    const Text gesucht = klein(begriff_);
    for (int row = treffer_ + 1; row < plan.rows(); ++row) {
        if (plan.cell(row, SPALTE_BENID).text.empty() || !enthält(klein(plan.cell(row, 0).text), gesucht))
            continue;
        treffer_ = row;
        return zeigen(row);
    }
    d_.app.Hinweis(treffer_ > 0 ? Text(u"Datenende erreicht") : u"Name '" + begriff_ + u"' nicht gefunden");
    treffer_ = 0;
}

bool Mitarbeitersuche::eigene_Zeile() {
    const Table& plan = f_.msgFlexGrid;
    if (d_.K().Setting(28) == 1) return false;
    for (int row = 1; row < plan.rows(); ++row) {
        if (!d_.Eigene_Zeile(plan.cell(row, SPALTE_BENID).text)) continue;
        zeigen(row);
        return true;
    }
    d_.app.Hinweis(u"Windows-Benutzername '" + d_.platz.Benutzername + u"' nicht gefunden");
    return false;
}

} // namespace kalvora
