// Goal: the manual's pictures show the program as it is. Method: the demonstration is run, and makes a
// picture for every one that the manual shows.
#include "apoyo/sesiones.h"
#include "demo_run/demo_run.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>

using namespace quorvel;
namespace fs = std::filesystem;

TEST(DemoTest, MakesEveryPictureOfTheManual) {
    const fs::path carpeta = apoyo::carpeta_nueva();
    EXPECT_EQ(demo_run::demo_run(carpeta), 0);
    std::ifstream manual(QUORVEL_MANUAL);
    const std::string texto{std::istreambuf_iterator<char>(manual), {}};
    const std::regex imagen(R"(\(img/([^)]+)\))");
    int vistas = 0;
    for (std::sregex_iterator i(texto.begin(), texto.end(), imagen), fin; i != fin; ++i, ++vistas)
        EXPECT_TRUE(fs::exists(carpeta / (*i)[1].str())) << (*i)[1];
    EXPECT_GT(vistas, 20);
}
