// A register of 10,000 rows read and held against the books, half of them booked and half new; then 400
// documents of known counterparts booked, by turns with the screen's own save. Argument: vouchers.
#include "apoyo/comprobante.h"
#include "apoyo/sesiones.h"
#include "generar.h"
#include "registro/bandeja.h"
#include "tabla.h"
#include "voucher/grabar.h"
#include "voucher/numeracion.h"
#include "voucher/validar.h"

#include <cstdlib>

using namespace quorvel;
using namespace quorvel::bench;

namespace {

constexpr int FILAS = 10000, CONTRAPARTES = 1000, RONDAS = 16, POR_RONDA = 25;
constexpr const char* NOMBRE = "RCV_COMPRA_REGISTRO_76111222-8_202403.csv";
constexpr const char* TITULOS =
    "Nro;Tipo Doc;Tipo Compra;RUT Proveedor;Razon Social;Folio;Fecha Docto;Fecha Recepcion;Fecha Acuse;Monto "
    "Exento;"
    "Monto Neto;Monto IVA Recuperable;Monto Iva No Recuperable;Codigo IVA No Rec.;Monto Total;Monto Neto "
    "Activo "
    "Fijo;IVA Activo Fijo;IVA uso Comun;Impto. Sin Derecho a Credito;IVA No Retenido;Tabacos Puros;Tabacos "
    "Cigarrillos;Tabacos Elaborados;NCE o NDE sobre Fact. de Compra;Codigo Otro Impuesto;Valor Otro "
    "Impuesto;Tasa "
    "Otro Impuesto\r\n";

/// A number with its check character.
std::string rut(int n) {
    int suma = 0, peso = 2;
    for (int r = n; r > 0; r /= 10, peso = peso == 7 ? 2 : peso + 1) suma += r % 10 * peso;
    const int d = 11 - suma % 11;
    return std::to_string(n) + "-" + (d == 11 ? "0" : d == 10 ? "K" : std::to_string(d));
}

std::string linea(int nro, const std::string& tipo, const std::string& de, const std::string& folio) {
    return std::to_string(nro) + ";" + tipo + ";Del Giro;" + de + "; Comercial de Prueba Limitada ;" + folio +
           ";10/03/2024;11/03/2024 10:00:00;;0;100000;19000;;;119000;;;;;;;;;;;;;\r\n";
}

/// New documents of counterparts that are known, and documents that stand in the books.
std::string registro_de(const std::string& conexion, int comprobantes) {
    std::string bytes = TITULOS;
    for (int i = 1; i <= FILAS / 2; ++i) {
        bytes += linea(2 * i, "33", rut(60000000 + i % CONTRAPARTES), std::to_string(700000 + i));
        const Generado g =
            generado(conexion, static_cast<int>(static_cast<std::int64_t>(i) * comprobantes / (FILAS / 2)));
        bytes += linea(2 * i + 1, "30", g.rut, g.num_ref);
    }
    return bytes;
}

/// One voucher of each counterpart, from which the others take over.
void dar_a_conocer(clsConexion& db) {
    std::string bytes = TITULOS;
    for (int i = 0; i < CONTRAPARTES; ++i) bytes += linea(i + 1, "33", rut(60000000 + i), "1");
    registro::Bandeja b(db, 1, 1, apoyo::HOY);
    b.agregar(NOMBRE, bytes);
    b.poner_documento("002");
    b.cotejar();
    b.marcar_nuevos();
    auto lista = b.desconocidas();
    b.generar_auxiliares(lista);
    for (registro::Desconocida& d : lista) {
        d.propuesta.cuenta = "501002";
        b.completar(d);
    }
    const registro::Balance hecho = b.contabilizar({});
    if (hecho.contabilizados != CONTRAPARTES) std::fprintf(stderr, "%s\n", hecho.error.c_str()), std::exit(1);
}

/// What the save of the screen does with a voucher that its assistant has filled.
void grabar_como_pantalla(registro::Bandeja& b, clsConexion& db, const Configuracion& k, Maestros& m,
                          const registro::Fila& f) {
    Comprobante c = b.comprobante(f);
    OpcionesGrabar o;
    o.nuevo = true, o.hoy = apoyo::HOY;
    o.numero_propuesto = proponer_numero(db, 1, c.documento, anio(*c.f_comp));
    c.num_docum = std::to_string(o.numero_propuesto);
    c.nro_correlativo = proponer_correlativo(db, 1, c.libro, anio(*c.f_comp), mes(*c.f_comp));
    if (const auto r = ValidarComprobante({c, k, m, db, apoyo::HOY, true, false}))
        std::fprintf(stderr, "%s\n", r->mensaje.c_str()), std::exit(1);
    const auto r = GrabarComprobante(db, c, o);
    if (!r.desenlace.mensaje().empty())
        std::fprintf(stderr, "%s\n", r.desenlace.mensaje().c_str()), std::exit(1);
}

void medir(const std::string& motor, const std::string& conexion, int comprobantes, double limite) {
    const auto db = abrir_sesion(conexion);
    dar_a_conocer(*db);
    const std::string bytes = registro_de(conexion, comprobantes);
    registro::Bandeja b(*db, 1, 1, apoyo::HOY);
    b.poner_documento("002");
    std::vector<double> leer, todo, propio;
    for (int i = 0; i < 3; ++i)
        propio.push_back(segundos_propios([&] {
            todo.push_back(segundos([&] {
                b.vaciar();
                leer.push_back(segundos([&] { b.agregar(NOMBRE, bytes); }));
                b.cotejar();
            }));
        }));
    std::size_t nuevos = 0, hallados = 0;
    for (const registro::Fila& f : b.filas()) {
        nuevos += f.estado == registro::Estado::nuevo;
        hallados += f.clave && f.estado != registro::Estado::falta;
    }
    fila(motor + " register of 10000 rows read and matched",
         texto("%.2f s (own time %.2f, reading %.2f), %zu new, %zu booked", mediana(todo), mediana(propio),
               mediana(leer), nuevos, hallados),
         texto("<= %.0f s", limite));
    const Configuracion k = leer_configuracion(*db, 1, apoyo::HOY);
    Maestros maestros;
    std::size_t siguiente = 0;
    const auto tomar = [&] { // a new document of a known counterpart
        while (b.propuesta(b.filas()[siguiente]).cuenta.empty() ||
               b.filas()[siguiente].estado != registro::Estado::nuevo)
            ++siguiente;
        return siguiente++;
    };
    const Par p = alternar(
        RONDAS,
        [&](int) {
            for (int i = 0; i < POR_RONDA; ++i) b.marcar(tomar(), true);
            if (b.contabilizar({}).contabilizados != POR_RONDA) std::exit(1);
        },
        [&](int) {
            for (int i = 0; i < POR_RONDA; ++i) grabar_como_pantalla(b, *db, k, maestros, b.filas()[tomar()]);
        });
    fila(motor + " 400 documents booked, rate / the screen's save",
         texto("%.3f (%.0f / %.0f vouchers/s)", p.otro / p.uno, POR_RONDA / p.uno, POR_RONDA / p.otro),
         ">= 0.9");
}

} // namespace

int main(int argc, char** argv) {
    const int n = argc > 1 ? std::atoi(argv[1]) : 200000;
    for (const apoyo::Motor m : apoyo::MOTORES) {
        const std::string conexion = apoyo::conexion_nueva(m);
        generar(conexion, n);
        medir(apoyo::nombre(m) + " " + std::to_string(n) + ":", conexion, n,
              m == apoyo::Motor::sqlite ? 2 : 3);
    }
}
