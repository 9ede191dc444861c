#include "base/fehler.h"

namespace kalvora {

TextView Fehlerursache(int nummer) {
    switch (nummer) {
    case FEHLER_SPEICHER: return u"Der Arbeitsspeicher reicht nicht aus";
    case FEHLER_NETZ:
    case FEHLER_ORDNER: return u"Der Ordner ist zurzeit nicht erreichbar";
    case FEHLER_GERÄT: return u"Der Datenträger meldet einen Gerätefehler";
    case FEHLER_VOLL: return u"Der Datenträger ist voll";
    case FEHLER_ZU_VIELE: return u"Es sind zu viele Dateien geöffnet";
    case FEHLER_VERWEIGERT:
    case FEHLER_SCHREIBSCHUTZ: return u"Vermutlich haben Sie keine ausreichenden Zugriffsberechtigungen";
    default: return {};
    }
}

} // namespace kalvora
