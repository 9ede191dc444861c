// The drawn month: what stays when the terminal is small, and the colours.
#include <gtest/gtest.h>

#include <regex>

#include "platform/window/application.h"
#include "ui/konsole/monatsbild.h"
#include "unit/ui/probefenster.h"

namespace kalvora {
namespace {

std::string ohne_Farben(const std::string& bild) {
    return std::regex_replace(bild, std::regex("\x1b\\[[0-9;]*m"), "");
}

TEST(Bild, passt_sich_dem_Terminal_an_und_hebt_heute_hervor) {
    Probelauf lauf;
    Table& plan = lauf.window->msgFlexGrid;
    // Narrow day columns, then fewer of them; rows that do not fit are counted.
    EXPECT_EQ(ohne_Farben(Monatsbild(plan, {16, 6})),
              "         MoMoMo\nName      1 2 3\nAdam        U  \nBerta          \n"
              "... noch 2 Zeilen\n");
    EXPECT_EQ(ohne_Farben(Monatsbild(plan, {11, 5})),
              "         Mo\nName      1\nAdam       \n... noch 3 Zeilen\n");
    plan.set_marked_col(2);
    const std::string bild = Monatsbild(plan, {80, 24});
    EXPECT_NE(bild.find("\x1b[38;2;255;0;0m\x1b[48;2;192;255;192m\x1b[1m\x1b[4m  U\x1b[0m"), bild.npos);
    EXPECT_NE(bild.find("\x1b[7m  2\x1b[0m"), bild.npos);
    EXPECT_EQ(bild.find("\x1b[7m  1\x1b[0m"), bild.npos);
}

} // namespace
} // namespace kalvora
