// The vandalism that every reader of a file has to stand.
#pragma once

#include <gtest/gtest.h>

#include "hilfen/arbeitsplatz.h"

namespace kalvora {

// What a read of the file came to: "" it was taken, else the message of the Dateischaden, which must name the
// file. Whatever else is thrown is the test's failure. Nothing on the disk may have changed.
inline Text ausgang(Prüfplatz& p, const Text& pfad, const std::function<void()>& lesen) {
    const auto vorher = p.fs.platte().abbild();
    Text text;
    try {
        lesen();
    } catch (const Dateischaden& schaden) {
        text = schaden.text();
        EXPECT_EQ(schaden.datei, pfad);
        EXPECT_TRUE(enthält(text, Dateiname_aus_Pfad(pfad))) << zu_utf8(text);
    } catch (const Fehler& fehler) {
        ADD_FAILURE() << "no Dateischaden: " << fehler.what();
        text = fehler.text();
    }
    EXPECT_EQ(p.fs.platte().abbild(), vorher);
    EXPECT_EQ(p.fs.offene(), 0);
    return text;
}

// Cuts the file at every byte, and puts foreign bytes in its place and into it. Each time it is taken or a
// Dateischaden; `unversehrt` is asked after each damage. A cut within a line must be noticed.
inline void verwüsten(Prüfplatz& p, const Text& pfad, const std::function<void()>& lesen,
                      const std::function<void()>& unversehrt) {
    const std::string ganz = *p.fs.inhalt(pfad);
    lesen();
    const auto probe = [&](const std::string& bytes) {
        p.fs.schreibe(pfad, bytes);
        const Text text = ausgang(p, pfad, lesen);
        if (!text.empty()) unversehrt();
        return text;
    };
    for (size_t n = 0; n < ganz.size(); ++n) {
        SCOPED_TRACE("cut at " + std::to_string(n));
        const Text text = probe(ganz.substr(0, n));
        const bool an_Zeilenende = n > 0 && ganz[n - 1] == '\n';
        EXPECT_TRUE(an_Zeilenende || !text.empty());
        if (text.empty()) { // a shorter file that is sound: back to the state that `unversehrt` knows
            p.fs.schreibe(pfad, ganz);
            lesen();
        }
    }
    EXPECT_FALSE(probe("\x7F\x45\x4C\x46" + std::string(300, '\x01')).empty());
    EXPECT_FALSE(probe("Hallo\r\n\r\n\r\n").empty());
    EXPECT_FALSE(probe(std::string(500, '\0')).empty());
    EXPECT_FALSE(probe(ganz + "\r\n").empty()) << "an empty line at the end";
    EXPECT_FALSE(probe(ganz + ganz).empty());
    p.fs.schreibe(pfad, ganz);
    lesen();
}

} // namespace kalvora
