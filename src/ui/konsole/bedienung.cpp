#include "ui/konsole/bedienung.h"

#include "platform/window/application.h"
#include "ui/konsole/kommandofehler.h"
#include "ui/konsole/protokoll.h"

namespace kalvora {

namespace {

std::vector<Text> Tabellenzeilen(const Control& control) {
    const auto& table = static_cast<const Table&>(control);
    std::vector<Text> zeilen;
    for (int row = 0; row < table.rows(); ++row) {
        if (table.row_height(row) == 0) continue;
        Text zeile;
        bool erste = true;
        for (int col = 0; col < table.cols(); ++col) {
            if (table.col_width(col) == 0) continue;
            if (!erste) zeile += u'\t';
            erste = false;
            zeile += maskiert(table.cell(row, col).text);
        }
        zeilen.push_back(std::move(zeile));
    }
    return zeilen;
}

Text gewählter(const std::vector<Text>& einträge, int nummer) {
    const bool gewählt = nummer >= 0 && nummer < static_cast<int>(einträge.size());
    return gewählt ? zitiert(einträge[static_cast<std::size_t>(nummer)]) : Text(u"-");
}

template <class Art>
std::vector<Text> Textwert(const Control& control) {
    return {zitiert(static_cast<const Art&>(control).text())};
}

template <class Art>
std::vector<Text> Beschriftung(const Control& control) {
    const Text& caption = static_cast<const Art&>(control).caption();
    if (control.kind() == ControlKind::MenuItem && caption == u"-") return {};
    return {zitiert(caption)};
}

constexpr Bedienung LABEL{.wert = Textwert<Label>};

constexpr Bedienung BUTTON{.wert = Beschriftung<Button>, .klick = [](Control& control, Modifiers mods) {
                               return static_cast<Button&>(control).user_click(mods);
                           }};

constexpr Bedienung COMBO_BOX{
    .wert =
        [](const Control& control) {
            const auto& box = static_cast<const ComboBox&>(control);
            return std::vector<Text>{gewählter(box.items(), box.selected())};
        },
    .einträge = [](const Control& control) { return static_cast<const ComboBox&>(control).items(); },
    .wähle = [](Control& control,
                int eintrag) { return static_cast<ComboBox&>(control).user_select(eintrag); }};

constexpr Bedienung TAB_STRIP{
    .wert =
        [](const Control& control) {
            const auto& tabs = static_cast<const TabStrip&>(control);
            return std::vector<Text>{gewählter(tabs.captions(), tabs.selected())};
        },
    .einträge = [](const Control& control) { return static_cast<const TabStrip&>(control).captions(); },
    .wähle = [](Control& control,
                int eintrag) { return static_cast<TabStrip&>(control).user_select(eintrag); }};

constexpr Bedienung TABLE{.wert = Tabellenzeilen};
constexpr Bedienung FLOATING_BOX{.wert = Textwert<FloatingBox>};
constexpr Bedienung MENU_ITEM{.wert = Beschriftung<MenuItem>}; // `menü` is the command for it
constexpr Bedienung TIMER{};

const MenuItem* Menü_von(const Control& control) {
    if (control.kind() != ControlKind::MenuItem) return nullptr;
    const Text& menü = static_cast<const MenuItem&>(control).parent();
    return menü.empty() ? nullptr : dynamic_cast<const MenuItem*>(control.form().find(menü));
}

} // namespace

const Bedienung& bedienung(ControlKind kind) {
    switch (kind) {
    case ControlKind::Label: return LABEL;
    case ControlKind::Button: return BUTTON;
    case ControlKind::ComboBox: return COMBO_BOX;
    case ControlKind::TabStrip: return TAB_STRIP;
    case ControlKind::Table: return TABLE;
    case ControlKind::FloatingBox: return FLOATING_BOX;
    case ControlKind::MenuItem: return MENU_ITEM;
    case ControlKind::Timer: return TIMER;
    }
    return TIMER;
}

bool sichtbar(const Control& control) {
    const MenuItem* menü = Menü_von(control);
    return control.visible() && (!menü || sichtbar(*menü));
}

bool bedienbar(const Control& control) {
    const MenuItem* menü = Menü_von(control);
    return control.enabled() && (!menü || bedienbar(*menü));
}

void Erreichbarkeit_verlangen(const Control& control) {
    const Text name = control.full_name();
    if (!sichtbar(control)) throw Kommandofehler(name + u" ist nicht sichtbar");
    if (!bedienbar(control)) throw Kommandofehler(name + u" ist gesperrt");
    if (!control.form().app().accepts(control.form()))
        throw Kommandofehler(name + u" ist nicht zu bedienen: Das Programm ist beschäftigt");
}

void Annahme_verlangen(const Control& control, bool angenommen) {
    if (!angenommen) throw Kommandofehler(control.full_name() + u" hat die Bedienung abgelehnt");
}

} // namespace kalvora
