#include "platform/report/layout.h"

#include <gtest/gtest.h>

using namespace quorvel;
using namespace quorvel::report;

// The definitions that the program brings along must read and must find their fields in the staging tables.
TEST(Informes, EveryShippedDefinitionReads) {
    const std::vector<std::pair<std::string, std::vector<const char*>>> tablas{
        {"ctcQuorvel",
         {"empresa", "usuario", "documento", "num_doc", "f_comp", "hora", "concepto", "secuencia", "cuenta",
          "n_cuenta", "auxiliar", "debe", "haber", "glosa", "revisado", "aprobado", "elaborado"}},
        {"ctccheque",
         {"empresa", "secuencia", "beneficiario", "fecha", "dia", "mes", "anio", "monto_texto", "monto",
          "nominativo", "cruzado", "cheque"}},
        {"ctcfactura", {"secuencia", "dia",    "mes",    "anio",   "fecha",  "factura",  "monto",
                        "iva",       "neto",   "texto1", "texto2", "texto3", "rut",      "nombre",
                        "direccion", "comuna", "ciudad", "giro",   "fono",   "cantidad", "precio"}}};
    int leidas = 0;
    for (const auto& archivo : std::filesystem::directory_iterator(QUORVEL_DATA "/reports")) {
        const std::string nombre = archivo.path().filename().string();
        for (const auto& [tabla, columnas] : tablas) {
            if (nombre.rfind(tabla, 0) != 0) continue;
            std::vector<ColumnInfo> infos;
            for (const char* c : columnas) infos.push_back({c, ColumnKind::text});
            EXPECT_NO_THROW(check_fields(read_definition(archivo.path()), infos)) << nombre;
            ++leidas;
        }
    }
    EXPECT_EQ(leidas, 4);
}
