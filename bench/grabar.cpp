// Saving a four-line voucher through the session against plain C programs that write the same rows with
// prepared statements and the same durability, into databases that hold vouchers already (argument). Both
// write by turns into databases of their own, so that the disk's moods hit both.
#include "voucher/grabar.h"

#include "apoyo/pg.h"
#include "apoyo/sesiones.h"
#include "generar.h"
#include "plain_pg.h"
#include "plain_writer.h"
#include "tabla.h"

#include <cstdlib>
#include <filesystem>
#include <functional>

using namespace quorvel;

namespace {

constexpr int ROUNDS = 40, BATCH = 25, FIRST = 50000000;
constexpr Fecha DAY{std::chrono::year(2024), std::chrono::month(3), std::chrono::day(20)};
constexpr Fecha TODAY{std::chrono::year(2024), std::chrono::month(6), std::chrono::day(15)};

Comprobante voucher(int number) {
    Comprobante c;
    c.empresa = 1, c.f_comp = c.fecha_factura = DAY, c.documento = "002";
    c.num_docum = std::to_string(number);
    c.moneda = "PS", c.concepto = "Compra de materiales", c.usuario = 1, c.libro = "COMPRAS";
    c.doc_libro = "FACTURA", c.num_ref = "9" + c.num_docum, c.rut_persona = "76.418.352-5";
    c.nombre = "FERRETERIA EL ROBLE SPA", c.monto_neto = 100000, c.nro_correlativo = 1;
    c.comprobante_adjunto = number;
    const auto line = [&](const char* account, const char* party, std::optional<Decimal> debit,
                          std::optional<Decimal> credit) {
        Linea l;
        l.centro = account, l.auxiliar = party, l.debe = debit, l.haber = credit, l.glosa = c.concepto;
        c.lineas.push_back(l);
    };
    line("501001", "", 60000, {}), line("501002", "", 40000, {});
    line("109001", "", 19000, {}), line("201001", "000013", {}, 119000);
    return c;
}

using Grabar = std::function<void(int)>;

/// Saves by turns. @return what the session's rate is of the other program's
void comparar(const std::string& que, const Grabar& session, const Grabar& plain, const char* target) {
    std::vector<double> ours, theirs;
    for (int round = 0; round < ROUNDS; ++round) {
        const int first = FIRST + round * BATCH;
        const auto batch = [first](const Grabar& save) {
            return bench::segundos([&] {
                for (int i = 0; i < BATCH; ++i) save(first + i);
            });
        };
        if (round % 2 == 0) ours.push_back(batch(session));
        theirs.push_back(batch(plain));
        if (round % 2 != 0) ours.push_back(batch(session));
    }
    const double uno = bench::mediana(ours), otro = bench::mediana(theirs);
    bench::fila(que, bench::texto("%.3f (%.0f / %.0f vouchers/s)", otro / uno, BATCH / uno, BATCH / otro),
                target);
}

Grabar session(clsConexion& db) {
    return [&db](int n) {
        OpcionesGrabar options;
        options.nuevo = true, options.hoy = TODAY;
        const auto r = GrabarComprobante(db, voucher(n), options);
        if (!r.desenlace.mensaje().empty())
            std::fprintf(stderr, "%s\n", r.desenlace.mensaje().c_str()), std::exit(1);
    };
}

Grabar plain(int (*save)(int)) {
    return [save](int n) {
        if (save(n) != 0) std::fprintf(stderr, "plain save failed\n"), std::exit(1);
    };
}

} // namespace

int main(int argc, char** argv) {
    const int vouchers = argc > 1 ? std::atoi(argv[1]) : 200000;
    const std::string suffix = " into " + std::to_string(vouchers) + ", session / ";
    {
        const std::string dir = apoyo::carpeta_nueva(), file = dir + "/session.db", copy = dir + "/plain.db";
        bench::generar("sqlite:" + file, vouchers);
        std::filesystem::copy_file(file, copy);
        const auto db = abrir_sesion("sqlite:" + file);
        if (plain_open(copy.c_str()) != 0) return 1;
        comparar("sqlite: save" + suffix + "plain C", session(*db), plain(plain_save), ">= 0.95");
        plain_close();
    }
    {
        const std::string ours = apoyo::pg_conexion_nueva(), theirs = apoyo::pg_conexion_nueva();
        bench::generar(ours, vouchers);
        bench::generar(theirs, vouchers);
        const auto db = abrir_sesion(ours);
        if (plain_pg_open(theirs.c_str()) != 0) return 1;
        comparar("postgres: save" + suffix + "plain libpq", session(*db), plain(plain_pg_save), ">= 0.9");
        plain_pg_close();
    }
    // last: what the server tidies up behind it would slow the others
    for (const bool server : {false, true}) {
        const auto made = [&] {
            const std::string where =
                server ? apoyo::pg_conexion_nueva() : "sqlite:" + apoyo::carpeta_nueva() + "/history.db";
            bench::generar(where, vouchers);
            return abrir_sesion(where);
        };
        const auto with = made(), without = made();
        apoyo::ejecutar(*with, "insert into ctmhistoria(empresa,cerrado) values (1,1)");
        comparar(std::string(server ? "postgres" : "sqlite") + ": save" + suffix + "with history / without",
                 session(*with), session(*without), ">= 0.87");
    }
}
