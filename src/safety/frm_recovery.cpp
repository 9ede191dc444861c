#include "safety/frm_recovery.h"

#include <algorithm>

namespace kalvora {

frmRecovery::frmRecovery(Dateikanal& kanal, const Arbeitsplatz& platz, const Wiederherstellung& sicherungen)
    : Form(kanal.app(), u"frmRecovery"), kanal_(kanal), platz_(platz), sicherungen_(sicherungen) {
    set_title(u"Datenordner wiederherstellen - Kalvora");
    cmdAuswahl1.set_caption(u"&Hilfe ...");
    cmdAuswahl1.set_enabled(false); // there is no help window yet
    cmdAuswahl2.set_caption(u"OK");
    cmdAuswahl2.set_default(true);
    cmdAuswahl3.set_caption(u"&Abbrechen");
    cmdAuswahl3.set_cancel(true);
    cmdAuswahl2.on_click = [this](Modifiers) {
        const auto n = static_cast<std::size_t>(std::max(0, cmbDateiliste.selected()));
        if (n < namen_.size()) name_ = namen_[n];
        app().close(*this);
    };
    cmdAuswahl3.on_click = [this](Modifiers) { app().close(*this); };
}

void frmRecovery::ComboBox_belegen(bool aus_Namen) {
    constexpr std::size_t ART = 14;          // place of the kind in a name
    std::vector<std::pair<Text, Text>> alle; // key, name
    for (const Text& name : sicherungen_.Sicherungen())
        if ((klein(name[ART]) == u'j') == platz_.Datenrückblick_aktiv)
            alle.emplace_back(Sicherungsschlüssel(kanal_, platz_, name, aus_Namen), name);
    std::erase_if(alle, [](const auto& s) { return s.first.empty(); }); // gone meanwhile
    std::sort(alle.rbegin(), alle.rend());
    std::vector<Text> zeilen;
    namen_.clear();
    for (const auto& [schlüssel, name] : alle) {
        zeilen.push_back(u"Sicherung vom " + Sicherungszeit(platz_, schlüssel));
        namen_.push_back(name);
    }
    if (zeilen.empty()) zeilen.emplace_back(u"Keine Sicherungsdatei vorhanden");
    cmbDateiliste.set_items(std::move(zeilen));
    cmbDateiliste.set_selected(0);
}

Text Sicherung_wählen(Dateikanal& kanal, const Arbeitsplatz& platz, const Wiederherstellung& sicherungen,
                      bool aus_Namen) {
    frmRecovery fenster(kanal, platz, sicherungen);
    fenster.ComboBox_belegen(aus_Namen);
    kanal.app().open_modal(fenster);
    return fenster.Backupname();
}

} // namespace kalvora
