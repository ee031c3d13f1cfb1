#include "platform/files/codepage.h"

#include <gtest/gtest.h>

using namespace quorvel;

TEST(Codepage, EveryDefinedByteComesBack) {
    Codepage c;
    int indefinidos = 0;
    for (int b = 0; b < 256; ++b) {
        const std::string byte(1, static_cast<char>(b));
        const Converted utf8 = c.from_windows1252(byte);
        if (utf8.bad) {
            ++indefinidos;
            continue;
        }
        EXPECT_EQ(c.to_windows1252(utf8.text).text, byte) << b;
    }
    EXPECT_EQ(indefinidos, 5);
    EXPECT_EQ(c.to_windows1252("Ñandú €").text, "\xD1"
                                                "and\xFA \x80");
}

TEST(Codepage, SaysWhereItStops) {
    Codepage c;
    EXPECT_EQ(c.to_windows1252("año Łódź").bad, 5U);
    EXPECT_EQ(c.to_windows1252("ab\xC3").bad, 2U);
    EXPECT_EQ(c.from_windows1252("ab\x81").bad, 2U);
    EXPECT_FALSE(c.to_windows1252("después de un error").bad);
    const std::string largo(100000, 'x');
    EXPECT_EQ(c.to_windows1252(largo + "ñ").text, largo + "\xF1");
}
