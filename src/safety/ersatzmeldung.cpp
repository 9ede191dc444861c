#include "safety/ersatzmeldung.h"

#include "files/ordner.h"

namespace kalvora {

Programmabbruch nicht_fertig(const Text& ursache, const Text& rat) {
    const Text anfang = u"Die Wiederherstellung des Datenordners ist noch nicht abgeschlossen";
    return {Text(ERSATZMODUL),
            anfang + u".\n\nUrsache: " + ursache + u"\n\n" + rat +
                u" Beim nächsten Programmstart wird die Wiederherstellung fortgesetzt",
            anfang + u": " + ursache};
}

Programmabbruch nicht_fertig(const Laufzeitfehler& fehler) {
    const Text ursache = fehler.text() + u" (Fehler Nr. " + ziffern(fehler.nummer) + u").";
    if (fehler.nummer == FEHLER_SPEICHER)
        return nicht_fertig(ursache,
                            u"Schließen Sie andere Programme, oder starten Sie den Kalvora auf einem "
                            u"Arbeitsplatz mit mehr Speicher.");
    return nicht_fertig(ursache, u"Sorgen Sie dafür, dass im Datenordner genügend Speicherplatz frei ist und "
                                 u"Sie dort alle Dateien ändern dürfen.");
}

Programmabbruch kein_Recht(int nummer, const Text& ordner) {
    const Text pfad = Pfad_kürzen(ordner, 100);
    if (nummer != FEHLER_VERWEIGERT && nummer != FEHLER_SCHREIBSCHUTZ)
        return nicht_fertig(u"Im Ordner " + pfad +
                                u" konnte keine Datei angelegt und gelöscht werden (Fehler Nr. " +
                                ziffern(nummer) + u").",
                            u"Der Ordner muss erreichbar und der Datenträger darf nicht voll sein.");
    return nicht_fertig(
        u"Ihnen fehlt das Recht, den Ordner " + pfad +
            u" zu öffnen und aufzulisten und darin Dateien zu lesen, anzulegen, umzubenennen und "
            u"zu löschen (Fehler Nr. " +
            ziffern(nummer) + u").",
        u"Bitten Sie einen Administrator, Ihnen dieses Recht zu erteilen, oder das Programm "
        u"zuerst von einem Benutzer starten zu lassen, der in diesem Ordner alle Rechte hat.");
}

Programmabbruch kein_Zutritt(int nummer, const Text& ordner) {
    const Text pfad = Pfad_kürzen(ordner, 100);
    return {
        Text(ERSATZMODUL),
        u"Auf den Ordner " + pfad + u" konnte nicht zugegriffen werden (Fehler Nr. " + ziffern(nummer) +
            u"). Vermutlich fehlt Ihnen das Recht, diesen Ordner zu öffnen und seine Dateien zu lesen und zu "
            u"ändern.\n\nBitten Sie einen Administrator, Ihnen dieses Recht zu erteilen, und starten Sie das "
            u"Programm dann neu",
        u"Kein Zugriff auf den Ordner " + pfad + u" - Fehler Nr. " + ziffern(nummer)};
}

Programmabbruch von_Hand_löschen(const Text& kopie, bool getan) {
    const Text pfad = Pfad_kürzen(kopie, 100);
    if (getan)
        return {Text(ERSATZMODUL),
                u"Die Daten wurden wiederhergestellt, aber die Datei " + pfad +
                    u" konnte nicht gelöscht werden.\n\nLöschen Sie diese Datei von Hand, bevor "
                    u"der Kalvora wieder gestartet wird. Sonst werden die Daten noch einmal "
                    u"wiederhergestellt, und neuere Einträge gehen verloren"};
    return {Text(ERSATZMODUL),
            u"Der jetzige Stand konnte nicht gesichert werden. Die Wiederherstellung wurde deshalb nicht "
            u"begonnen, "
            u"aber die Datei " +
                pfad +
                u" konnte nicht gelöscht werden.\n\nLöschen Sie diese Datei von Hand. Sonst wird die "
                u"Wiederherstellung beim nächsten Programmstart ausgeführt"};
}

} // namespace kalvora
