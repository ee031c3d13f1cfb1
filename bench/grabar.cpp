// Saving a four-line voucher through the session against a plain C program that writes the same rows with
// prepared statements and the same durability. Both write alternately into files of their own, so that the
// disk's moods hit both.
#include "voucher/grabar.h"

#include "app/db/esquema.h"
#include "plain_writer.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

using namespace quorvel;
namespace fs = std::filesystem;

namespace {

constexpr int ROUNDS = 40, BATCH = 50;
constexpr Fecha DAY{std::chrono::year(2024), std::chrono::month(3), std::chrono::day(20)};
constexpr Fecha TODAY{std::chrono::year(2024), std::chrono::month(6), std::chrono::day(15)};

void run(clsConexion& db, const char* sql) {
    if (db.executesql(sql) == 0) std::fprintf(stderr, "%s: %s\n", sql, db.last_error().c_str()), std::exit(1);
}

std::unique_ptr<clsConexion> prepare(const fs::path& file) {
    crear_esquema("sqlite:" + file.string());
    auto db = abrir_sesion("sqlite:" + file.string());
    run(*db, "insert into adxemp_doc(empresa,documento) values (1,'002')");
    run(*db, "insert into ctmconfigu(empresa,anio,f_digi_inicial,f_digi_final) values "
             "(1,2024,#01/01/2024#,#12/31/2024#)");
    return db;
}

Comprobante voucher(int number) {
    Comprobante c;
    c.empresa = 1, c.f_comp = c.fecha_factura = DAY, c.documento = "002";
    c.num_docum = std::to_string(number);
    c.moneda = "PS", c.concepto = "Compra de materiales", c.usuario = 1, c.libro = "COMPRAS";
    c.doc_libro = "FACTURA", c.num_ref = "9" + c.num_docum, c.rut_persona = "76.418.352-5";
    c.nombre = "FERRETERIA EL ROBLE SPA", c.monto_neto = 100000, c.nro_correlativo = "1";
    c.comprobante_adjunto = c.num_docum;
    const auto line = [&](const char* account, const char* party, const char* debit, const char* credit) {
        Linea l;
        l.centro = account, l.auxiliar = party, l.debe = debit, l.haber = credit, l.glosa = c.concepto;
        c.lineas.push_back(l);
    };
    line("501001", "", "60.000", ""), line("501002", "", "40.000", "");
    line("109001", "", "19.000", ""), line("201001", "000013", "", "119.000");
    return c;
}

template <class Save> double seconds(int first, Save&& save) {
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < BATCH; ++i) save(first + i);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

} // namespace

int main(int argc, char** argv) {
    const fs::path dir = fs::path(argc > 1 ? argv[1] : ".") / "bench_grabar";
    fs::remove_all(dir);
    fs::create_directories(dir);
    const auto db = prepare(dir / "session.db");
    (void)prepare(dir / "plain.db");
    if (plain_open((dir / "plain.db").c_str()) != 0) return 1;
    OpcionesGrabar options;
    options.nuevo = true, options.hoy = TODAY;
    const auto session = [&](int n) {
        const auto r = GrabarComprobante(*db, voucher(n), options);
        if (!r.error.empty()) std::fprintf(stderr, "%s\n", r.error.c_str()), std::exit(1);
    };
    const auto plain = [](int n) {
        if (plain_save(n) != 0) std::fprintf(stderr, "plain save failed\n"), std::exit(1);
    };
    double ours = 0, theirs = 0;
    for (int round = 0; round < ROUNDS; ++round) {
        const int first = 1 + round * BATCH;
        if (round % 2 == 0) {
            ours += seconds(first, session);
            theirs += seconds(first, plain);
        } else {
            theirs += seconds(first, plain);
            ours += seconds(first, session);
        }
    }
    plain_close();
    constexpr double SAVED = ROUNDS * BATCH;
    std::printf("session %.0f vouchers/s, plain C %.0f vouchers/s, ratio %.3f\n", SAVED / ours,
                SAVED / theirs, theirs / ours);
    fs::remove_all(dir);
}
