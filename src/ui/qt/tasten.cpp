#include "ui/qt/tasten.h"

#include <array>

namespace kalvora {

namespace {

struct Name {
    int taste;
    TextView name;
};

constexpr std::array NAMEN{
    Name{Qt::Key_Escape, u"Esc"},       Name{Qt::Key_Return, u"Eingabe"}, Name{Qt::Key_Enter, u"Eingabe"},
    Name{Qt::Key_Home, u"Pos1"},        Name{Qt::Key_End, u"Ende"},       Name{Qt::Key_PageUp, u"Bild-auf"},
    Name{Qt::Key_PageDown, u"Bild-ab"}, Name{Qt::Key_Insert, u"Einfg"},   Name{Qt::Key_Delete, u"Entf"},
    Name{Qt::Key_Left, u"Links"},       Name{Qt::Key_Right, u"Rechts"},   Name{Qt::Key_Up, u"Auf"},
    Name{Qt::Key_Down, u"Ab"},          Name{Qt::Key_Tab, u"Tab"},        Name{Qt::Key_Backspace, u"Rück"},
    Name{Qt::Key_Space, u"Leer"},
};

Text Tastenname(int taste) {
    for (const Name& n : NAMEN)
        if (n.taste == taste) return Text(n.name);
    if (taste >= Qt::Key_F1 && taste <= Qt::Key_F12) return u"F" + ziffern(taste - Qt::Key_F1 + 1);
    // Qt's codes of letters and digits are those of their upper-case characters.
    if (taste > Qt::Key_Space && taste <= 0xFF) return Text(1, static_cast<char16_t>(taste));
    return {};
}

} // namespace

std::optional<Key> Taste_aus(const QKeyEvent& event) {
    Text name = Tastenname(event.key());
    if (name.empty()) return std::nullopt;
    const auto m = event.modifiers();
    return Key{std::move(name),
               {m.testFlag(Qt::ShiftModifier), m.testFlag(Qt::ControlModifier), m.testFlag(Qt::AltModifier)}};
}

} // namespace kalvora
