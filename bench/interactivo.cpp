// What a person waits for, in a small and in a large company: the statements of the screen must not feel the
// difference. Arguments: vouchers of the small one, of the large one.
#include "apoyo/comprobante.h"
#include "apoyo/plan.h"
#include "apoyo/sesiones.h"
#include "escritorio_mudo.h"
#include "generar.h"
#include "screen/consultas/formas_codigo.h"
#include "screen/consultas/frmBuscaQuorvel.h"
#include "tabla.h"
#include "text/letras_utf8.h"
#include "voucher/cargar.h"
#include "voucher/grabar.h"
#include "voucher/numeracion.h"
#include "voucher/validar.h"

#include <functional>
#include <utility>

using namespace quorvel;
using namespace quorvel::bench;

namespace {

/// Whether a plan reads a vouchers' table from one end to the other.
bool recorre_todo(const std::string& plan) {
    for (const char* paso : {"SCAN ctc", "SCAN ctd", "SCAN a", "Seq Scan on ctc", "Seq Scan on ctd"})
        if (plan.find(paso) != std::string::npos) return true;
    return false;
}

/// A generated company with its session and what is asked of it.
class Lado {
public:
    Lado(apoyo::Motor motor, int comprobantes) : conexion_(apoyo::conexion_nueva(motor)), n_(comprobantes) {
        generar(conexion_, n_);
        db_ = abrir_sesion(conexion_);
        for (int i = 0; i < MUESTRAS; ++i) muestras_.push_back(generado(conexion_, numero(i)));
        k_ = leer_configuracion(*db_, 1, apoyo::HOY);
        buscar_.glbdb = db_.get();
        buscar_.glbSQL = consulta_busqueda(1, 1, 1);
        buscar_.Show();
    }
    void numero_siguiente(int) { (void)proponer_numero(*db_, 1, "002", 2024); }
    void correlativo(int i) { (void)proponer_correlativo(*db_, 1, "COMPRAS", 2024, 1 + i % 12); }
    void existe(int i) { exigir(ExisteComprobante(*db_, clave(i)), "a voucher that is there"); }
    void repetido(int i) {
        Comprobante c = apoyo::compra();
        c.rut_persona = muestra(i).rut;
        validar(c, true);
        c.num_docum = muestra(i).num_docum;
        validar(c, false);
    }
    void abrir(int i) {
        const Clave k = clave(i);
        exigir(leer_cabecera(*db_, 1, k.f_comp, k.documento, k.num_docum).has_value(), "header");
        int lineas = 0;
        for (auto rs = db_->NewRecord(consulta_lineas(k)); !rs->eof(); rs->MoveNext()) ++lineas;
        exigir(lineas == 4, "four lines");
    }
    void lista(int) { listar(""); }
    void lista_numero(int i) { listar(" and num_ref='" + muestra(i).num_ref + "'"); }
    void lista_parte(int i) { listar(" and rut_persona='" + muestra(i).rut + "'"); }
    void contrapartes(int) {
        frmpersona lista(escritorio_);
        lista.glbdb = db_.get();
        lista.Show();
        exigir(!lista.ctlConsulta1.rows().empty(), "counterparts");
        lista.Unload();
    }
    /// Rows listed since the last call.
    double filas() { return std::exchange(filas_, 0); }
    void lista_libro(int) { listar(" and libro='VENTAS'"); }
    void guardar(int) {
        Comprobante c = apoyo::compra(std::to_string(++guardado_));
        c.comprobante_adjunto = guardado_;
        OpcionesGrabar o;
        o.nuevo = true, o.hoy = apoyo::HOY, o.anio = 2024;
        const auto r = GrabarComprobante(*db_, c, o);
        exigir(r.desenlace.mensaje().empty(), r.desenlace.mensaje().c_str());
    }
    /// A word typed letter by letter into the open list, which reads the latest vouchers at the first one.
    double primera_letra() {
        return segundos([&] { buscar_.txtbuscar.SetText("c"); });
    }
    void letra(int i) {
        buscar_.txtbuscar.SetText(std::string("compra").substr(0, 2 + static_cast<std::size_t>(i % 5)));
        exigir(buscar_.ctlConsulta1.filtered(), "a filter");
    }
    void sin_texto() { buscar_.txtbuscar.SetText(""); }
    void planes(const std::string& motor) const {
        const auto& m = muestras_.front();
        const std::string de = "select * from ctcquorvel where empresa=1 and ";
        const std::string orden = " order by f_comp desc, documento desc, num_docum desc";
        const auto base = dbtools::abrir_base(conexion_, dbtools::Abrir::existente);
        int recorridos = 0, vistos = 0;
        for (const std::string& sql :
             {std::string("select max(") +
                  (db_->TypeDB() == 2 ? "val(num_docum)" : "cast(num_docum as integer)") +
                  ") as sec from ctcquorvel where empresa=1 and documento ='002' and year(f_comp) =2024",
              std::string("select max(nro_correlativo) as sec from ctcquorvel where empresa=1 and libro "
                          "='COMPRAS' and year(f_comp) =2024 and month(f_comp) =3"),
              de + "year(f_comp) =2024 and month(f_comp) =3 and day(f_comp) =20 and documento='002' and "
                   "num_docum='7'",
              de + "libro='COMPRAS' and doc_libro='FACTURA' and rut_persona='" + m.rut +
                  "' and num_ref='x' and estado='P'",
              consulta_lineas(clave(0)), consulta_busqueda(1, 1, 1) + orden + " limit 200",
              "select f_comp from (" + consulta_busqueda(1, 1, 1) +
                  ") q order by f_comp desc limit 1 offset 20000",
              de + "f_comp>=#12/01/2024#" + orden, de + "num_ref='7'" + orden + " limit 200",
              de + "rut_persona='" + m.rut + "'" + orden + " limit 200",
              std::string("select top 1 empresa from ctcquorvel where comprobante_adjunto=5"),
              std::string(
                  "update ctcquorvel set bloqueo_usuario= 0 where empresa=1 and bloqueo_usuario=3")}) {
            const std::string p = apoyo::plan(*base, sql);
            if (std::getenv("QUORVEL_PLANES") != nullptr)
                std::fprintf(stderr, "%s\n%s\n", sql.c_str(), p.c_str());
            ++vistos;
            if (!recorre_todo(p)) continue;
            ++recorridos;
            std::fprintf(stderr, "%s\n%s\n", sql.c_str(), p.c_str());
        }
        fila(motor + ": statements that scan a voucher table (" + std::to_string(n_) + ")",
             texto("%d of %d", recorridos, vistos), "0");
    }

private:
    static constexpr int MUESTRAS = 24;
    [[nodiscard]] int numero(int i) const { return 1 + static_cast<int>((i * 7907LL * 7907LL) % n_); }
    [[nodiscard]] const Generado& muestra(int i) const {
        return muestras_[static_cast<std::size_t>(i % MUESTRAS)];
    }
    [[nodiscard]] Clave clave(int i) const {
        const Generado& g = muestra(i);
        return {1, "01", *Value(g.f_comp).date(), g.documento, g.num_docum};
    }
    static void exigir(bool bien, const char* que) {
        if (!bien) std::fprintf(stderr, "missing: %s\n", que), std::exit(1);
    }
    void validar(const Comprobante& c, bool nuevo) {
        const EntradaValidacion e{c, k_, maestros_, *db_, apoyo::HOY, nuevo, false};
        const auto r = ValidarLibro(e);
        exigir(!r, r ? r->mensaje.c_str() : "");
    }
    void listar(const std::string& filtro) {
        buscar_.ctlConsulta1.SetSQL(consulta_busqueda(1, 1, 1) + filtro);
        const std::size_t filas = buscar_.ctlConsulta1.rows().size();
        exigir(filas > 0, "rows of the search list");
        filas_ += static_cast<double>(filas);
    }

    std::string conexion_;
    int n_, guardado_ = 50000000;
    double filas_ = 0;
    std::unique_ptr<clsConexion> db_;
    std::vector<Generado> muestras_;
    Configuracion k_;
    Maestros maestros_;
    EscritorioMudo escritorio_;
    frmBuscaQuorvel buscar_{escritorio_};
};

struct Tarea {
    const char* que;
    void (Lado::*hacer)(int);
    int veces;
    bool por_fila = false; ///< a larger company finds more
};
constexpr Tarea TAREAS[] = {
    {"propose the number", &Lado::numero_siguiente, 300},
    {"propose the correlative", &Lado::correlativo, 300},
    {"voucher exists", &Lado::existe, 300},
    {"duplicate document (new and saved)", &Lado::repetido, 300},
    {"open a voucher: header and lines", &Lado::abrir, 300},
    {"search list, first block", &Lado::lista, 60},
    {"search by document number", &Lado::lista_numero, 100},
    {"search by counterpart, a row of the first block", &Lado::lista_parte, 60, true},
    {"list of counterparts, first block", &Lado::contrapartes, 40},
    {"search by book, first block", &Lado::lista_libro, 60},
    {"save a new voucher, durable", &Lado::guardar, 100},
};

} // namespace

int main(int argc, char** argv) {
    const int poco = argc > 1 ? std::atoi(argv[1]) : 10000, mucho = argc > 2 ? std::atoi(argv[2]) : 200000;
    for (const auto motor : apoyo::MOTORES) {
        std::fprintf(stderr, "%s: generating %d and %d vouchers\n", apoyo::nombre(motor).c_str(), poco,
                     mucho);
        Lado chico(motor, poco), grande(motor, mucho);
        for (const Tarea& t : TAREAS) {
            for (int i = 0; i < 12; ++i) (chico.*t.hacer)(i), (grande.*t.hacer)(i);
            (void)chico.filas(), (void)grande.filas();
            Par p = alternar(
                t.veces, [&](int i) { (chico.*t.hacer)(i); }, [&](int i) { (grande.*t.hacer)(i); });
            if (t.por_fila) p = {p.uno * t.veces / chico.filas(), p.otro * t.veces / grande.filas()};
            fila(apoyo::nombre(motor) + ": " + t.que + texto(", %d / %d", mucho, poco),
                 texto("%.2f (%.4g us / %.4g us)", p.otro / p.uno, p.otro * 1e6, p.uno * 1e6), "<= 1.3");
        }
        const double primera_chico = chico.primera_letra(), primera = grande.primera_letra();
        const Par p = alternar(
            50, [&](int i) { chico.letra(i); }, [&](int i) { grande.letra(i); });
        chico.sin_texto(), grande.sin_texto();
        fila(apoyo::nombre(motor) + texto(": first letter in the search of vouchers, %d / %d", mucho, poco),
             texto("%.0f ms / %.0f ms", primera * 1e3, primera_chico * 1e3), "");
        fila(apoyo::nombre(motor) + texto(": each further letter, %d / %d", mucho, poco),
             texto("%.1f ms / %.1f ms", p.otro * 1e3, p.uno * 1e3), "< 16 ms");
        grande.planes(apoyo::nombre(motor));
    }
}
