// The main window's controls: menu, tabs, plan, day sums, reason buttons, status line. What they do stands in
// hauptfenster.h.
#pragma once

#include <array>
#include <memory>

#include "base/feld.h"
#include "platform/window/form.h"

namespace kalvora {

inline constexpr int HÖCHSTZAHL_GRÜNDE = 25; // reason records, the delete button included

struct frmKalvora : Form {
    explicit frmKalvora(Application& app);

    // Menus in the order of the menu bar; the entries carry their menu's name as parent.
    std::vector<std::unique_ptr<MenuItem>> menü;
    MenuItem& mnu(TextView name) const;

    TabStrip tabJahre{*this, u"tabJahre"};
    TabStrip tabMonate{*this, u"tabMonate"};
    ComboBox cmbMitarbeitergruppen{*this, u"cmbMitarbeitergruppen"};
    Table msgFlexKaWo{*this, u"msgFlexKaWo", 0, 1}; // one row of calendar weeks
    Table msgFlexGrid{*this, u"msgFlexGrid"};       // the plan
    Table msgFlexTaSu{*this, u"msgFlexTaSu"};       // day sums
    Feld<std::unique_ptr<Button>> cmdAuswahl;       // (1..25)
    Button cmdBeenden{*this, u"cmdBeenden"};
    Label lblKommentar{*this, u"lblKommentar"};
    FloatingBox picKommentar{*this, u"picKommentar", lblKommentar};
    Label lblStatus1{*this, u"lblStatus", 1}; // data folder
    Label lblStatus2{*this, u"lblStatus", 2}; // user and role
    Label lblStatus3{*this, u"lblStatus", 3}; // time of the last reload
    Label lblStatus4{*this, u"lblStatus", 4}; // what lasts, or why nothing happens; hidden while empty
    Timer tmrTimer1{*this, u"tmrTimer1", 15.0};
    Timer tmrTimer2{*this, u"tmrTimer2", 1.5};
};

} // namespace kalvora
