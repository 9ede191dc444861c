#include "ui/qt/deutsche_texte.h"

#include <array>
#include <string_view>

namespace kalvora {

namespace {

struct Eintrag {
    std::string_view original;
    const char16_t* deutsch;
};

// By the original alone: the same word means the same in all of Qt's windows.
constexpr std::array EINTRÄGE{
    Eintrag{"OK", u"OK"},
    Eintrag{"&OK", u"&OK"},
    Eintrag{"Cancel", u"Abbrechen"},
    Eintrag{"&Cancel", u"&Abbrechen"},
    Eintrag{"Close", u"Schließen"},
    Eintrag{"&Close", u"&Schließen"},
    Eintrag{"&Yes", u"&Ja"},
    Eintrag{"Yes", u"Ja"},
    Eintrag{"&No", u"&Nein"},
    Eintrag{"No", u"Nein"},
    Eintrag{"Save", u"Speichern"},
    Eintrag{"&Save", u"&Speichern"},
    Eintrag{"Open", u"Öffnen"},
    Eintrag{"&Open", u"&Öffnen"},
    Eintrag{"&Choose", u"&Auswählen"},
    Eintrag{"Help", u"Hilfe"},
    Eintrag{"Apply", u"Übernehmen"},
    Eintrag{"Reset", u"Zurücksetzen"},
    Eintrag{"Retry", u"Wiederholen"},
    Eintrag{"Abort", u"Abbrechen"},
    Eintrag{"Ignore", u"Ignorieren"},
    Eintrag{"&Undo", u"&Rückgängig"},
    Eintrag{"&Redo", u"&Wiederherstellen"},
    Eintrag{"Cu&t", u"A&usschneiden"},
    Eintrag{"&Copy", u"&Kopieren"},
    Eintrag{"&Paste", u"Ein&fügen"},
    Eintrag{"Delete", u"Löschen"},
    Eintrag{"&Delete", u"&Löschen"},
    Eintrag{"Select All", u"Alles auswählen"},
    Eintrag{"Scroll here", u"Hierher blättern"},
    Eintrag{"Left edge", u"Linker Rand"},
    Eintrag{"Right edge", u"Rechter Rand"},
    Eintrag{"Top", u"Anfang"},
    Eintrag{"Bottom", u"Ende"},
    Eintrag{"Page left", u"Seite nach links"},
    Eintrag{"Page right", u"Seite nach rechts"},
    Eintrag{"Page up", u"Seite nach oben"},
    Eintrag{"Page down", u"Seite nach unten"},
    Eintrag{"Scroll left", u"Nach links"},
    Eintrag{"Scroll right", u"Nach rechts"},
    Eintrag{"Scroll up", u"Nach oben"},
    Eintrag{"Scroll down", u"Nach unten"},
    Eintrag{"Scroll Left", u"Nach links"},
    Eintrag{"Scroll Right", u"Nach rechts"},
    Eintrag{"Look in:", u"Suchen in:"},
    Eintrag{"File &name:", u"Datei&name:"},
    Eintrag{"Files of type:", u"Dateityp:"},
    Eintrag{"Directory:", u"Ordner:"},
    Eintrag{"Back", u"Zurück"},
    Eintrag{"Go back", u"Zurück"},
    Eintrag{"Forward", u"Vor"},
    Eintrag{"Go forward", u"Vor"},
    Eintrag{"Parent Directory", u"Übergeordneter Ordner"},
    Eintrag{"Go to the parent directory", u"Zum übergeordneten Ordner"},
    Eintrag{"Create New Folder", u"Neuer Ordner"},
    Eintrag{"Create a New Folder", u"Neuen Ordner anlegen"},
    Eintrag{"New Folder", u"Neuer Ordner"},
    Eintrag{"&New Folder", u"&Neuer Ordner"},
    Eintrag{"&Rename", u"&Umbenennen"},
    Eintrag{"Show &hidden files", u"&Versteckte Dateien anzeigen"},
    Eintrag{"List View", u"Liste"},
    Eintrag{"Change to list view mode", u"Als Liste anzeigen"},
    Eintrag{"Detail View", u"Einzelheiten"},
    Eintrag{"Change to detail view mode", u"Einzelheiten anzeigen"},
    Eintrag{"Sidebar", u"Seitenleiste"},
    Eintrag{"Files", u"Dateien"},
    Eintrag{"Computer", u"Computer"},
    Eintrag{"Name", u"Name"},
    Eintrag{"Size", u"Größe"},
    Eintrag{"Type", u"Art"},
    Eintrag{"Date Modified", u"Geändert am"},
    Eintrag{"All Files (*)", u"Alle Dateien (*)"},
    Eintrag{"%1 already exists.\nDo you want to replace it?",
            u"%1 ist schon vorhanden.\nSoll die Datei ersetzt werden?"},
    Eintrag{"%1\nFile not found.\nPlease verify the correct file name was given.",
            u"%1\nDie Datei wurde nicht gefunden.\nBitte prüfen Sie den Dateinamen."},
    Eintrag{"%1\nDirectory not found.\nPlease verify the correct directory name was given.",
            u"%1\nDer Ordner wurde nicht gefunden.\nBitte prüfen Sie den Namen."},
    Eintrag{"Select Color", u"Farbe wählen"},
    Eintrag{"&Basic colors", u"&Grundfarben"},
    Eintrag{"&Custom colors", u"&Eigene Farben"},
    Eintrag{"&Add to Custom Colors", u"Zu den eigenen Farben &hinzufügen"},
    Eintrag{"&Pick Screen Color", u"Farbe vom &Bildschirm nehmen"},
    Eintrag{"Hu&e:", u"Farb&ton:"},
    Eintrag{"&Sat:", u"&Sättigung:"},
    Eintrag{"&Val:", u"&Helligkeit:"},
    Eintrag{"&Red:", u"&Rot:"},
    Eintrag{"&Green:", u"&Grün:"},
    Eintrag{"Bl&ue:", u"Bl&au:"},
    Eintrag{"&HTML:", u"H&TML:"},
};

} // namespace

QString DeutscheTexte::translate(const char*, const char* source, const char*, int) const {
    const std::string_view gesucht = source ? source : "";
    for (const Eintrag& e : EINTRÄGE)
        if (e.original == gesucht) return QString::fromUtf16(e.deutsch);
    return {};
}

} // namespace kalvora
