#include "platform/report/definition.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

using namespace quorvel;
using namespace quorvel::report;
namespace fs = std::filesystem;

namespace {
const std::vector<ColumnInfo> COLUMNAS{{"secuencia", ColumnKind::number}, {"glosa", ColumnKind::text}};

std::string error_de(const std::string& xml, int& linea) {
    try {
        check_fields(parse_definition(xml, "/datos/x.rpt"), COLUMNAS);
    } catch (const DefinitionError& e) {
        linea = e.line;
        return e.what();
    }
    linea = 0;
    return "";
}
std::string banda(const std::string& dentro) {
    return "<informe>\n<detalle alto=\"10\">\n" + dentro + "\n</detalle>\n</informe>";
}
} // namespace

TEST(Definition, SaysWhereItIsBroken) {
    const struct {
        std::string xml;
        int linea;
        const char* dice;
    } casos[] = {
        {"<informe>\n<detalle>", 2, "no es XML válido"},
        {"", 1, "no es XML válido"},
        {"<reporte/>", 1, "se esperaba <informe>"},
        {"<informe>\n\n<pies alto=\"1\"/></informe>", 3, "banda desconocida <pies>"},
        {"<informe>\n<pie alto=\"1\"/>\n<pie alto=\"1\"/></informe>", 3, "banda repetida"},
        {"<informe>\n<pie/></informe>", 2, "necesita \"alto\""},
        {"<informe ancho=\"ancho\"/>", 1, "\"ancho\" no es un número"},
        {"<informe ancho=\"nan\"/>", 1, "\"ancho\" fuera de rango"},
        {"<informe tamano=\"0.5\"/>", 1, "\"tamano\" fuera de rango"},
        {"<informe orden=\"fecha\"/>", 1, "campo desconocido \"fecha\""},
        {"<informe>\n<detalle alto=\"300\"/></informe>", 2, "no cabe en el alto"},
        {banda("<texto x=\"0\" y=\"0\" ancho=\"9\">{gloza}</texto>"), 3, "campo desconocido \"gloza\""},
        {banda("<texto x=\"0\" y=\"0\" ancho=\"9\">{glosa</texto>"), 3, "falta \"}\""},
        {banda("<texto x=\"0\" y=\"0\" ancho=\"9\">{secuencia:#.##0}</texto>"), 3, "formato desconocido"},
        {banda("<texto x=\"0\" y=\"0\" ancho=\"9\">{suma(haber)}</texto>"), 3, "campo desconocido \"haber\""},
        {banda("\n<texto x=\"0\" y=\"0\">a</texto>"), 4, "necesita \"ancho\""},
        {banda("<texto x=\"0\" y=\"0\" ancho=\"9\" allign=\"centro\"/>"), 3,
         "atributo desconocido \"allign\""},
        {banda("<texto x=\"0\" y=\"0\" ancho=\"9\" alinear=\"medio\"/>"), 3, "\"alinear\" debe ser"},
        {banda("<texto x=\"0\" y=\"0\" ancho=\"9\" negrita=\"1\"/>"), 3, "\"si\" o \"no\""},
        {banda("<texto x=\"0\" y=\"0\" ancho=\"9\" cuando=\"secuencia\"/>"), 3, "condición no válida"},
        {banda("<texto x=\"0\" y=\"0\" ancho=\"9\" cuando=\"numero=1\"/>"), 3,
         "campo desconocido \"numero\""},
        {banda("<texto x=\"150\" y=\"0\" ancho=\"99\"/>"), 3, "se sale del ancho"},
        {banda("<imagen x=\"1\"/>"), 3, "elemento desconocido <imagen>"},
    };
    for (const auto& c : casos) {
        int linea = 0;
        const std::string e = error_de(c.xml, linea);
        EXPECT_NE(e.find(c.dice), std::string::npos) << c.xml << "\n" << e;
        EXPECT_EQ(linea, c.linea) << c.xml;
        EXPECT_NE(e.find("/datos/x.rpt, línea " + std::to_string(c.linea)), std::string::npos) << e;
    }
    int linea = 0;
    EXPECT_EQ(error_de(banda("<texto x=\"0\" y=\"0\" ancho=\"9\">{GLOSA} {secuencia:00}</texto>"), linea),
              "");
    try {
        (void)read_definition("/no/hay/ctcQuorvel.rpt");
        FAIL();
    } catch (const DefinitionError& e) {
        EXPECT_NE(std::string(e.what()).find("/no/hay/ctcQuorvel.rpt"), std::string::npos);
    }
}

TEST(Condition, ComparesNumbersAndTexts) {
    Data d{COLUMNAS, {{Value(std::int64_t{2}), Value(std::string("ab "))}, {Value(), Value()}}};
    const struct {
        const char* texto;
        bool fila, nulos;
    } casos[] = {
        {"", true, true},
        {"secuencia>=2", true, false},
        {"secuencia<2", false, true},
        {"glosa='ab'", true, false},
        {"glosa<>''", true, false},
        {"secuencia=2 y glosa='x'", false, false},
        {"pagina>1", false, false},
        {"secuencia<>1 y pagina=1", true, true},
    };
    for (const auto& c : casos) {
        EXPECT_EQ(Condition::parse(c.texto).holds({&d, 0, 1, nullptr}), c.fila) << c.texto;
        EXPECT_EQ(Condition::parse(c.texto).holds({&d, 1, 1, nullptr}), c.nulos) << c.texto;
    }
}

TEST(Instalar, CopiesWhatIsMissingAndKeepsWhatWasAdjusted) {
    char plantilla[] = "/tmp/informesXXXXXX";
    const fs::path base = ::mkdtemp(plantilla);
    fs::create_directories(base / "datos");
    fs::create_directories(base / "local");
    for (const char* n : {"a.rpt", "b.rpt", "leeme.txt"}) std::ofstream(base / "datos" / n) << "nuevo";
    std::ofstream(base / "local" / "a.rpt") << "ajustado";
    EXPECT_EQ(instalar_definiciones(base / "local", base / "datos"), std::vector<std::string>{"b.rpt"});
    std::string texto;
    std::ifstream(base / "local" / "a.rpt") >> texto;
    EXPECT_EQ(texto, "ajustado");
    EXPECT_FALSE(fs::exists(base / "local" / "leeme.txt"));
    EXPECT_THROW(instalar_definiciones(base / "no", base / "datos"), std::runtime_error);
    EXPECT_THROW(instalar_definiciones(base / "local", base / "nada"), std::runtime_error);
    fs::remove_all(base);
}
