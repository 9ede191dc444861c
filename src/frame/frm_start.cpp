#include "frame/frm_start.h"

namespace kalvora {

frmStart::frmStart(Application& app, TextView version) : Form(app, u"frmStart") {
    const auto teile = teilen(version, u'.');
    const auto teil = [&](size_t k) { return k < teile.size() ? teile[k] : Text(u"0"); };
    set_title(u"Kalvora");
    lblText1.set_text(u"Version " + teil(0) + u"." + teil(1) + u"  Release " + teil(2));
    lblText2.set_text(u"Kalvora");
    lblText3.set_text(u"Der Monatsplan wird geladen ...");
    lblText4.set_visible(false);
    cmdAuswahl1.set_caption(u"&Erneut versuchen");
    cmdAuswahl1.set_visible(false);
    cmdAuswahl2.set_caption(u"&Beenden");
    cmdAuswahl2.set_visible(false);
}

} // namespace kalvora
