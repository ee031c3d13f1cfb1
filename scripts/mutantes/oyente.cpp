// After each test: its name, the milliseconds of the processor and the changes it asked for, one line in a
// file beside that of the changes. What was asked before the first test stands under "main".
#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <fstream>
#include <iterator>
#include <string>

namespace {

class Oyente : public testing::EmptyTestEventListener {
public:
    explicit Oyente(std::string ruta) : ruta_(std::move(ruta)) {}

    void OnTestProgramStart(const testing::UnitTest&) override { anotar("main", 0, true); }
    void OnTestStart(const testing::TestInfo&) override {
        vaciar();
        desde_ = std::clock();
    }
    void OnTestEnd(const testing::TestInfo& t) override {
        anotar(std::string(t.test_suite_name()) + "." + t.name(),
               (std::clock() - desde_) * 1000 / CLOCKS_PER_SEC, t.result()->Passed());
    }

private:
    std::string leer() const {
        std::ifstream archivo(ruta_, std::ios::binary);
        return {std::istreambuf_iterator<char>(archivo), {}};
    }
    void vaciar() const {
        const std::string ceros(leer().size(), '\0');
        std::fstream(ruta_, std::ios::binary | std::ios::in | std::ios::out) << ceros;
    }
    void anotar(const std::string& prueba, long long ms, bool bien) const {
        std::ofstream notas(ruta_ + ".pruebas", std::ios::app);
        notas << prueba << ' ' << ms << ' ' << (bien ? "bien" : "mal");
        const std::string vistos = leer();
        for (std::size_t i = 0; i < vistos.size(); ++i)
            if (vistos[i] != '\0') notas << ' ' << i;
        notas << '\n';
    }

    std::string ruta_;
    std::clock_t desde_ = 0;
};

const bool escucha = [] {
    const char* const ruta = std::getenv("QUORVEL_MUTANTES_VISTOS");
    if (ruta != nullptr) testing::UnitTest::GetInstance()->listeners().Append(new Oyente(ruta));
    return ruta != nullptr;
}();

} // namespace
