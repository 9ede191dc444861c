#include "ui/konsole/tastatur.h"

#include <array>

#include "ui/konsole/bedienung.h"
#include "ui/konsole/kommandofehler.h"

namespace kalvora {

namespace {

constexpr std::array<TextView, 15> TASTENNAMEN{u"Esc",     u"Eingabe", u"Tab",    u"Leer", u"Rück",
                                               u"Entf",    u"Einfg",   u"Pos1",   u"Ende", u"Bild-auf",
                                               u"Bild-ab", u"Links",   u"Rechts", u"Auf",  u"Ab"};

bool ist_Funktionstaste(TextView name) {
    const int nummer = static_cast<int>(Val(mitte(name, 2)));
    return klein(zeichen(name, 1)) == u'f' && nur_Ziffern(mitte(name, 2)) && name.size() <= 3 &&
           nummer >= 1 && nummer <= 12 && zeichen(name, 2) != u'0';
}

Text Großbuchstabe(char16_t c) {
    for (char16_t groß = u'A'; groß <= u'\u00DE'; ++groß)
        if (klein(groß) == c && groß != c) return {groß};
    return {c};
}

Text Tastenname(TextView name) {
    for (const TextView taste : TASTENNAMEN)
        if (gleich_ohne_Fall(taste, name)) return Text(taste);
    if (ist_Funktionstaste(name)) return u"F" + Text(mitte(name, 2));
    if (name.size() == 1 && name.front() > u' ') return Großbuchstabe(name.front());
    throw Kommandofehler(u"Unbekannte Taste " + zitiert(name));
}

bool Umschalttaste(TextView name, Modifiers& mods) {
    bool* taste = gleich_ohne_Fall(name, u"Strg")       ? &mods.ctrl
                  : gleich_ohne_Fall(name, u"Umschalt") ? &mods.shift
                  : gleich_ohne_Fall(name, u"Alt")      ? &mods.alt
                                                        : nullptr;
    if (taste) *taste = true;
    return taste != nullptr;
}

void Controltaste(Control& control, const Key& taste) {
    if (auto* table = dynamic_cast<Table*>(&control)) table->user_key(taste);
    if (auto* tabs = dynamic_cast<TabStrip*>(&control)) {
        if (taste.code == u"Links") tabs->user_arrow(-1);
        if (taste.code == u"Rechts") tabs->user_arrow(1);
    }
    if (auto* box = dynamic_cast<ComboBox*>(&control)) {
        if (taste.code == u"Auf") box->user_select(box->selected() - 1);
        if (taste.code == u"Ab") box->user_select(box->selected() + 1);
    }
    if (auto* button = dynamic_cast<Button*>(&control))
        if (taste.code == u"Leer" || taste.code == u"Eingabe") button->user_click(taste.mods);
}

void Knopf_drücken(Button* knopf) {
    if (knopf && knopf->reachable()) knopf->user_click();
}

// What a key does wherever the focus is. Esc in a modal window without a cancel button closes it, as Alt+F4
// does any. False: nothing.
bool Fenstertaste(KonsolenFenstersystem& system, Form& form, const Key& taste) {
    const bool Alt_F4 = taste.code == u"F4" && taste.mods == Modifiers{.alt = true};
    const bool Esc = taste.code == u"Esc" && taste.mods == Modifiers{};
    if (taste.code == u"Eingabe" && taste.mods == Modifiers{} && form.default_button())
        Knopf_drücken(form.default_button());
    else if (Esc && form.cancel_button())
        Knopf_drücken(form.cancel_button());
    else if (Alt_F4 || (Esc && form.modal()))
        system.schließen(form);
    else
        return false;
    return true;
}

} // namespace

Key Taste_aus(TextView name) {
    Key taste;
    TextView rest = name;
    for (int plus = position(rest, u"+"); plus > 1 && Umschalttaste(links(rest, plus - 1), taste.mods);
         plus = position(rest, u"+"))
        rest = mitte(rest, plus + 1);
    taste.code = Tastenname(rest);
    return taste;
}

void Taste_drücken(KonsolenFenstersystem& system, Form& form, const Key& taste) {
    if (!form.app().accepts(form)) throw Kommandofehler(u"Das Programm ist beschäftigt");
    const int schleifen = system.Schleifenzahl();
    if (form.user_key(taste) || system.Schleifenzahl() != schleifen || system.beendet(form)) return;
    Control* fokus = system.sicht(form).fokus();
    if (fokus && !fokus->reachable()) fokus = nullptr;
    const bool eigenes_Enter = fokus && fokus->kind() == ControlKind::Button && taste.code == u"Eingabe";
    if (!eigenes_Enter && Fenstertaste(system, form, taste)) return;
    if (fokus) Controltaste(*fokus, taste);
}

} // namespace kalvora
