#include "frame/frm_start.h"

namespace kalvora {

frmStart::frmStart(Application& app, TextView version) : Form(app, u"frmStart") {
    const auto teile = teilen(version, u'.');
    const auto teil = [&](size_t k) { return k < teile.size() ? teile[k] : Text(u"0"); };
    set_title(u"Kalvora");
    lblText1.set_text(u"Version " + teil(0) + u"." + teil(1) + u"  Release " + teil(2));
    lblText2.set_text(u"Kalvora");
    Starttext_setzen({});
    lblText4.set_visible(false);
    cmdAuswahl1.set_caption(u"&Erneut versuchen");
    cmdAuswahl1.set_visible(false);
    cmdAuswahl2.set_caption(u"&Beenden");
    cmdAuswahl2.set_visible(false);
    cmdAuswahl1.on_click = [this](Modifiers) { set_tag(u"D"); };
    cmdAuswahl2.on_click = [this](Modifiers) { set_tag(u"E"); };
    cmdAuswahl2.set_cancel(true);
    on_query_close = [this] { // the wait goes on unseen otherwise
        set_tag(u"E");
        return false;
    };
}

void frmStart::Wartezustand(bool an) {
    set_tag({});
    lblText3.set_visible(!an);
    if (an) lblText4.set_text({}); // what an earlier wait said
    lblText4.set_visible(an);
    cmdAuswahl1.set_visible(an);
    cmdAuswahl2.set_visible(an);
    if (an && view()) view()->focus(cmdAuswahl2);
}

void frmStart::Zustand_zeigen(const Text& text) {
    lblText4.set_text(text);
    if (view()) view()->paint_now();
}

void frmStart::Starttext_setzen(const Text& text) {
    lblText3.set_text(text.empty() ? u"Der Monatsplan wird geladen ..." : text);
}

} // namespace kalvora
