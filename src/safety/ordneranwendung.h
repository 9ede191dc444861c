// Makes the data folder what a container says, file by file. Each file goes or is replaced only while it is
// still the one that the backup made before holds; nothing is unlinked or overwritten by its bare name, since
// a call may reach the disk long after it was made, when others have gone on working.
#pragma once

#include <functional>

#include "safety/bestand.h"
#include "safety/wiederherstellung.h"

namespace kalvora {

class Ordneranwendung {
public:
    using Gelesen = Wiederherstellung::Gelesen;
    enum class Ausgang {
        fertig,
        abgelöst,  // the order no longer holds
        verändert, // a file is another one than the backup holds: what it says must be made safe first
    };
    Ordneranwendung(Dateikanal& kanal, const Arbeitsplatz& platz, const Wiederherstellung& wiederherstellung,
                    Logbuch& log)
        : kanal_(kanal), platz_(platz), wiederherstellung_(wiederherstellung), log_(log) {}

    std::function<bool()> Auftrag_gilt;                    // asked before each change
    std::function<void(int fertig, int alle)> Fortschritt; // called between members

    // Faults are thrown. It can be run again, until it is done.
    Ausgang durchführen(const Gelesen& container, const Bestand& bestand);
    // Of each member what was written, and perhaps rows behind it. The configuration is not asked: whoever
    // finishes the work writes it in his version's form.
    bool steht_alles(const Gelesen& container) const;
    // Folders with files that could not be removed.
    const std::vector<Text>& geblieben() const { return geblieben_; }

private:
    enum class Vergleich { genau, noch };
    bool steht(const Containermitglied& m, const Text& pfad, std::uint64_t größe, Vergleich wie) const;
    bool unberührt(const Text& pfad, const FileInfo& jetzt) const;
    Ausgang alle_schreiben(const Gelesen& container, const Bestand& bestand, Vergleich wie,
                           bool& geschrieben);
    Ausgang schreiben(const Containermitglied& m, const Bestand& bestand, Vergleich wie, bool& geschrieben);
    void Verknüpfung_entfernen(const Text& ordner, const Text& name) const;
    Ausgang Übriges_entfernen(const Gelesen& container, const Bestand& bestand);
    Ausgang entfernen(const Text& pfad, const Gesehen& bekannt);
    Text beiseite_legen(const Text& pfad) const;
    Ausgang zurücklegen(const Text& beiseite, const Text& pfad, int fehler);
    Dateikanal& kanal_;
    const Arbeitsplatz& platz_;
    const Wiederherstellung& wiederherstellung_;
    Logbuch& log_;
    std::map<Text, FileInfo> stand_; // of the members that stand, by path
    std::vector<Text> geblieben_;
};

} // namespace kalvora
