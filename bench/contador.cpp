#include "contador.h"

#include "apoyo/comprobante.h"
#include "escritorio_mudo.h"
#include "screen/consultas/frmBuscaQuorvel.h"
#include "tabla.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"
#include "voucher/bloqueo.h"
#include "voucher/cargar.h"
#include "voucher/grabar.h"
#include "voucher/numeracion.h"
#include "voucher/validar.h"

#include <algorithm>
#include <random>
#include <thread>

namespace quorvel::bench {
namespace {

using Reloj = std::chrono::steady_clock;

/// A purchase at the end of the year, when everybody works.
Comprobante factura(const Encargo& e, const std::string& concepto, int n, std::mt19937& azar) {
    Comprobante c = apoyo::compra();
    c.empresa = e.empresa, c.usuario = e.usuario;
    c.f_comp = c.fecha_factura = apoyo::fecha(2024, 12, 20 + azar() % 12);
    c.concepto = concepto;
    c.num_ref = e.corrida + std::to_string(e.usuario) + "0" + std::to_string(n);
    c.totales = {DEBE, DEBE};
    const auto linea = [&](const char* cuenta, const char* parte, int debe, int haber) {
        return Linea{cuenta, parte, debe, haber, concepto};
    };
    c.lineas = {linea("501001", "", 60000, 0), linea("501002", "", 40000, 0), linea("109001", "", 19000, 0),
                linea("201001", "000013", 0, 119000)};
    std::shuffle(c.lineas.begin(), c.lineas.end(), azar);
    return c;
}

/// The same voucher with a debit and a credit that are CAMBIO higher.
void retocar(Comprobante& c) {
    for (const auto lado : {&Linea::debe, &Linea::haber}) {
        const auto l = std::ranges::find_if(c.lineas, [&](const Linea& x) { return *(x.*lado) > 0; });
        (*l).*lado = *((*l).*lado) + CAMBIO;
    }
    c.totales = {c.totales.debe + CAMBIO, c.totales.haber + CAMBIO};
}

class Puesto {
public:
    Puesto(const Encargo& e, Jornada& j)
        : e_(e), j_(j), azar_(static_cast<unsigned>(e.usuario)), db_(abrir_sesion(e.conexion)),
          k_(leer_configuracion(*db_, e.empresa, apoyo::HOY)) {
        maestros_.reabrir(*db_, true);
        buscar_.glbdb = db_.get();
        buscar_.glbSQL = consulta_busqueda(e.empresa, e.usuario, 1);
        buscar_.Show();
    }
    void trabajar() {
        fin_ = Reloj::now() +
               std::chrono::duration_cast<Reloj::duration>(std::chrono::duration<double>(e_.segundos));
        pensar(); // nobody begins at the same moment
        for (int n = 1; n <= e_.maximo && Reloj::now() < fin_; ++n) {
            nuevo(n);
            if (n % 2 == 0) volver_a_abrir();
        }
        desbloquear(*db_, e_.empresa, e_.usuario);
    }

private:
    template <class F> auto medir(Accion a, F&& f) {
        const auto inicio = Reloj::now();
        auto r = f();
        j_.segundos.at(a).push_back(std::chrono::duration<double>(Reloj::now() - inicio).count());
        return r;
    }
    void pensar() {
        if (e_.pausa <= 0) return;
        const double s = std::min(std::exponential_distribution<>(1 / e_.pausa)(azar_), 4 * e_.pausa);
        std::this_thread::sleep_until(std::min(
            fin_,
            Reloj::now() + std::chrono::duration_cast<Reloj::duration>(std::chrono::duration<double>(s))));
    }
    void rechazo(const char* cuando, const std::string& texto) { ++j_.rechazos[cuando + (": " + texto)]; }

    bool revisado(const Comprobante& c, bool es_nuevo) {
        const EntradaValidacion entrada{c, k_, maestros_, *db_, apoyo::HOY, es_nuevo, false};
        const auto r = medir(REVISAR, [&] { return ValidarComprobante(entrada); });
        if (r) rechazo("checks", r->mensaje);
        return !r;
    }
    bool grabado(Accion a, const Comprobante& c, const OpcionesGrabar& o) {
        const auto r = medir(a, [&] {
            auto hecho = GrabarComprobante(*db_, c, o);
            if (hecho.desenlace.mensaje().empty()) tomar(c.clave());
            return hecho;
        });
        if (!r.desenlace.mensaje().empty())
            rechazo(o.nuevo ? "save" : "save again", r.desenlace.mensaje() + motivo());
        return r.desenlace.mensaje().empty();
    }
    /// " (why)" when a key of the database refused.
    [[nodiscard]] std::string motivo() const {
        return db_->last_error().empty() ? "" : " (" + db_->last_error() + ")";
    }
    void tomar(const Clave& clave) {
        desbloquear(*db_, e_.empresa, e_.usuario);
        bloquear(*db_, clave, e_.usuario);
    }

    void nuevo(int n) {
        const std::string concepto =
            MARCA + e_.corrida + "-" + std::to_string(e_.usuario) + "-" + std::to_string(n);
        Comprobante c = factura(e_, concepto, n, azar_);
        desbloquear(*db_, e_.empresa, e_.usuario);
        c.comprobante_adjunto =
            val_entero(medir(CONJUNTO, [&] { return numero_adjunto(*db_, std::nullopt); }));
        OpcionesGrabar o;
        o.nuevo = true, o.hoy = apoyo::HOY, o.anio = 2024;
        constexpr int INTENTOS = 50;
        for (int intento = 0; intento < INTENTOS; ++intento) {
            o.numero_propuesto =
                medir(NUMERO, [&] { return proponer_numero(*db_, e_.empresa, c.documento, 2024); });
            c.num_docum = std::to_string(o.numero_propuesto);
            c.nro_correlativo =
                medir(CORRELATIVO, [&] { return proponer_correlativo(*db_, e_.empresa, c.libro, 2024, 12); });
            if (intento == 0) pensar(); // typing; a taken number is only chosen again
            if (!revisado(c, true) || !grabado(GUARDAR, c, o)) continue;
            ++j_.hechos[concepto].guardado;
            propios_.push_back(c.clave());
            return;
        }
        rechazo("given up", "no free number");
    }

    /// One of his own or one of the list.
    Clave elegir() {
        medir(LISTA, [&] {
            buscar_.ctlConsulta1.SetSQL(consulta_busqueda(e_.empresa, e_.usuario, 1));
            return 0;
        });
        const auto& filas = buscar_.ctlConsulta1.rows();
        if (azar_() % 2 == 0 && !propios_.empty()) return propios_[azar_() % propios_.size()];
        const auto& f = filas.at(azar_() % filas.size());
        return {e_.empresa, "01", *leer_fecha(f[0]), recortar_fin(f[1]), recortar_fin(f[2])};
    }
    Guardado abrir(const Clave& clave) {
        return medir(ABRIR, [&] {
            auto g = leer_con_bloqueo(*db_, clave, e_.usuario);
            if (!g) throw ErrorSesion("A listed voucher is not there: " + clave.num_docum, "");
            g->c.lineas = leer_lineas(*db_, clave);
            g->c.adjuntos = leer_adjuntos(*db_, std::to_string(g->c.comprobante_adjunto));
            return *g;
        });
    }
    [[nodiscard]] bool ajeno(const Comprobante& c) const {
        return bloqueado_por_otro(c.bloqueo_usuario, e_.usuario);
    }
    void volver_a_abrir() {
        pensar();
        const Clave clave = elegir();
        Guardado abierto = abrir(clave);
        Comprobante& c = abierto.c;
        if (ajeno(c)) rechazo("opened read-only", SOLO_LECTURA);
        pensar();
        if (ajeno(c) || c.estado != "P" || !c.concepto.starts_with(MARCA)) return; // looked at
        c.usuario = e_.usuario;
        if (azar_() % 12 == 0) {
            const std::string error = medir(
                ANULAR, [&] { return AnularComprobante(*db_, c, apoyo::HOY, abierto.huella).mensaje(); });
            if (error.empty())
                ++j_.hechos[c.concepto].anulado;
            else
                rechazo("annul", error + motivo());
            return;
        }
        retocar(c);
        OpcionesGrabar o;
        o.hoy = apoyo::HOY, o.anio = 2024, o.huella = abierto.huella;
        if (revisado(c, false) && grabado(REGRABAR, c, o)) ++j_.hechos[c.concepto].cambiado;
    }

    const Encargo& e_;
    Jornada& j_;
    std::mt19937 azar_;
    std::unique_ptr<clsConexion> db_;
    Configuracion k_;
    Maestros maestros_;
    EscritorioMudo escritorio_;
    frmBuscaQuorvel buscar_{escritorio_};
    Reloj::time_point fin_;
    std::vector<Clave> propios_;
};

} // namespace

void trabajar(const Encargo& e, const std::function<void()>& partida, Jornada& jornada) {
    Puesto puesto(e, jornada);
    partida();
    puesto.trabajar();
}

} // namespace quorvel::bench
