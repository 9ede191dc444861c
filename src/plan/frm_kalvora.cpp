#include "plan/frm_kalvora.h"

namespace kalvora {

namespace {

struct Eintrag {
    TextView name, menü, caption, kürzel;
};

constexpr std::array EINTRÄGE{
    Eintrag{u"mnuDatei", u"", u"&Datei", u""},
    Eintrag{u"mnuDatenordner_ändern", u"mnuDatei", u"Datenordner &ändern ...", u""},
    Eintrag{u"mnuDatenexport", u"mnuDatei", u"Datenordner &exportieren ...", u""},
    Eintrag{u"mnuDatenimport", u"mnuDatei", u"Datenordner &importieren ...", u""},
    Eintrag{u"mnuRecovery", u"mnuDatei", u"Datenordner &wiederherstellen ...", u""},
    Eintrag{u"mnuTrenner1", u"mnuDatei", u"-", u""},
    Eintrag{u"mnuDrucken", u"mnuDatei", u"&Drucken ...", u"Strg+P"},
    Eintrag{u"mnuTrenner2", u"mnuDatei", u"-", u""},
    Eintrag{u"mnuBeenden", u"mnuDatei", u"&Beenden", u""},
    Eintrag{u"mnuBearbeiten", u"", u"&Bearbeiten", u""},
    Eintrag{u"mnuMitarbeiter", u"mnuBearbeiten", u"&Mitarbeiter ...", u""},
    Eintrag{u"mnuAnzeigeberechtigungen", u"mnuBearbeiten", u"Anzeige&berechtigungen ...", u""},
    Eintrag{u"mnuAnzeigegruppen", u"mnuBearbeiten", u"Anzeige&gruppen ...", u""},
    Eintrag{u"mnuAnAbwesenheitsgründe", u"mnuBearbeiten", u"&An-/Abwesenheitsgründe ...", u""},
    Eintrag{u"mnuWochenende", u"mnuBearbeiten", u"&Wochenende ...", u""},
    Eintrag{u"mnuFeiertage", u"mnuBearbeiten", u"&Feiertage ...", u""},
    Eintrag{u"mnuAdministratoren", u"mnuBearbeiten", u"Ad&ministratoren ...", u""},
    Eintrag{u"mnuPrivilegierteBenutzer", u"mnuBearbeiten", u"&Privilegierte Benutzer ...", u""},
    Eintrag{u"mnuEinstellungen", u"mnuBearbeiten", u"&Einstellungen ...", u""},
    Eintrag{u"mnuAnsicht", u"", u"&Ansicht", u""},
    Eintrag{u"mnuJahresübersicht", u"mnuAnsicht", u"&Jahresübersicht ...", u""},
    Eintrag{u"mnuUrlaubsübersicht", u"mnuAnsicht", u"&Urlaubsübersicht ...", u""},
    Eintrag{u"mnuRTTÜbersicht", u"mnuAnsicht", u"S&onderurlaub ...", u""},
    Eintrag{u"mnuSummenübersicht", u"mnuAnsicht", u"&Summenübersicht ...", u""},
    Eintrag{u"mnuLogbuch", u"mnuAnsicht", u"&Logbuch ...", u""},
    Eintrag{u"mnuHilfe_Menü", u"", u"&?", u""},
    Eintrag{u"mnuHilfe", u"mnuHilfe_Menü", u"&Hilfe", u"F1"},
    Eintrag{u"mnuInfo", u"mnuHilfe_Menü", u"&Info", u""},
};

} // namespace

frmKalvora::frmKalvora(Application& app) : Form(app, u"frmKalvora") {
    for (const Eintrag& e : EINTRÄGE)
        menü.push_back(
            std::make_unique<MenuItem>(*this, Text(e.name), Text(e.menü), Text(e.caption), Text(e.kürzel)));
    for (int b = 1; b <= HÖCHSTZAHL_GRÜNDE; ++b) {
        cmdAuswahl.anfügen(std::make_unique<Button>(*this, u"cmdAuswahl", b));
        cmdAuswahl(b)->set_mnemonics(false);
    }
    cmdBeenden.set_caption(u"Beenden");
    tmrTimer1.set_enabled(false);
    lblStatus4.set_visible(false);
}

MenuItem& frmKalvora::mnu(TextView name) const {
    auto* eintrag = dynamic_cast<MenuItem*>(find(name));
    if (!eintrag) throw Laufzeitfehler(438, u"Menüeintrag " + Text(name) + u" fehlt in frmKalvora");
    return *eintrag;
}

} // namespace kalvora
