#include "voucher/grabar.h"

#include "text/numeros.h"
#include "voucher/anotar.h"
#include "voucher/cargar.h"
#include "voucher/conjunto.h"
#include "voucher/esta_grabado.h"
#include "voucher/grabar_sql.h"
#include "voucher/huella.h"
#include "voucher/importes.h"
#include "voucher/pasos.h"
#include "voucher/validar.h"

namespace quorvel {
namespace {

constexpr const char* CABECERA_NUEVA = "Problemas al grabar cabecera";
constexpr const char* CABECERA_GUARDADA = "Problemas para actualizar cabecera";
constexpr const char* NUMERO = "Problemas al grabar numero de documento";
constexpr const char* CIERRE = "Problemas al grabar datos de cirre anual";

class Grabacion {
public:
    Grabacion(clsConexion& db, const Comprobante& c, const OpcionesGrabar& o)
        : db_(db), c_(c), o_(o), clave_(c.clave()), paso_(o.nuevo ? CABECERA_NUEVA : CABECERA_GUARDADA) {}

    void ejecutar() {
        revisar_periodo();
        const std::int64_t antes = o_.nuevo ? 0 : conjunto_guardado();
        conjunto_ = c_.comprobante_adjunto;
        reservar_conjunto(antes);
        cabecera();
        if (o_.nuevo) cabecera_nueva();
        if (!c_.lineas.empty()) detalle();
        adjuntos(antes);
        if (proteccion_.historia) historia();
        pasos_.ejecutar(db_, o_.avance);
    }
    [[nodiscard]] ResultadoGrabar resultado(Desenlace desenlace) const {
        ResultadoGrabar r;
        r.desenlace = std::move(desenlace);
        r.comprobante_adjunto = r.desenlace ? conjunto_ : c_.comprobante_adjunto;
        r.copiado = copiado_;
        if (!r.desenlace) return r;
        r.huella = huella_escrita(c_, importes_, o_.hoy);
        r.cierre = cierre_;
        return r;
    }

private:
    /// Another screen may have closed the year or moved the period since this one was loaded.
    void revisar_periodo() {
        const auto [k, proteccion] = leer_periodo_protegido(db_, c_.empresa, o_.hoy);
        if (const auto r = rechazo_periodo(c_, k, db_, o_.hoy)) throw PasoFallido(r->mensaje);
        cierre_ = (o_.nuevo && o_.registrar_cierre) || es_comprobante_cierre(c_, k);
        proteccion_ = proteccion;
        exigir_mes_abierto(proteccion_, c_);
        if (proteccion_.cierre && c_.apertura) exigir_unica_apertura(db_, c_);
    }

    /// The set of the stored voucher, which is still the one that was loaded.
    std::int64_t conjunto_guardado() {
        const Comprobante guardado = retener_intacto(db_, clave_, c_.usuario, o_.huella, paso_);
        if (guardado.estado == "X") throw PasoFallido(paso_); // its amounts are out of the balances already
        return guardado.comprobante_adjunto;
    }

    void reservar_conjunto(std::int64_t guardado) {
        const std::int64_t propuesto = conjunto_;
        if (conjunto_ == 0 && c_.adjuntos.empty()) return;
        if (conjunto_ == guardado) return;
        if (conjunto_libre(db_, conjunto_)) return;
        constexpr int INTENTOS = 50; // folders left behind by abandoned vouchers are stepped over
        std::int64_t numero = val_entero(numero_adjunto(db_, std::nullopt));
        for (int intentos = 0; intentos < INTENTOS; ++numero) {
            if (!conjunto_libre(db_, numero)) continue;
            conjunto_ = numero;
            if (!o_.copiar_adjuntos || c_.adjuntos.empty()) return;
            if (o_.copiar_adjuntos(propuesto, conjunto_)) {
                copiado_ = conjunto_;
                return;
            }
            ++intentos;
        }
        throw PasoFallido(PASO_DETALLE);
    }

    void cabecera() {
        importes_ = importes_sql(c_, conjunto_, paso_);
        pasos_.agregar(o_.nuevo ? sql_cabecera_nueva(c_, importes_, o_.hoy)
                                : sql_cabecera_guardada(c_, importes_, o_.hoy),
                       paso_, Pasos::Filas::alguna);
    }

    void cabecera_nueva() {
        if (o_.clave_anterior) {
            if (c_.cheque) pasos_.agregar(sql_cheque(clave_, *c_.cheque), paso_);
            pasos_.agregar(sql_factura_sigue(*o_.clave_anterior, clave_), paso_);
        }
        if (val_entero(c_.num_docum) >= o_.numero_propuesto)
            pasos_.agregar(sql_ultimo_numero(clave_, o_.hoy), NUMERO);
        if (o_.registrar_cierre)
            pasos_.agregar(sql_comprobante_de_cierre(clave_, o_.anio), CIERRE, Pasos::Filas::alguna);
    }

    void detalle() {
        pasos_.agregar(sql_borrar_detalle(clave_));
        for (std::size_t n = 0; n < c_.lineas.size(); ++n)
            pasos_.agregar(sql_detalle(clave_, n + 1, c_.lineas[n]), PASO_DETALLE);
    }

    void adjuntos(std::int64_t antes) {
        if (conjunto_ != antes && solo_de_uno(db_, antes)) pasos_.agregar(sql_borrar_adjuntos(antes));
        if (conjunto_ == 0) return; // rows of set 0 belong to nobody in particular
        pasos_.agregar(sql_borrar_adjuntos(conjunto_));
        if (c_.adjuntos.empty()) return;
        const std::vector<std::int64_t> libres = correlativos(c_.adjuntos.size());
        for (std::size_t i = 0; i < libres.size(); ++i)
            pasos_.agregar(sql_adjunto(conjunto_, libres[i], c_.adjuntos[i]), PASO_DETALLE);
    }

    void historia() {
        Autoria a{.usuario = c_.usuario, .operacion = que_es(), .grupo = o_.grupo};
        if (o_.sumar_adjunto)
            for (const std::string& nombre : c_.adjuntos)
                a.sumas += nombre + "\t" + o_.sumar_adjunto(conjunto_, nombre) + "\n";
        anotar(pasos_, proteccion_, clave_, a);
    }

    [[nodiscard]] const char* que_es() const {
        if (o_.operacion != nullptr) return o_.operacion;
        if (cierre_) return operacion::CIERRE;
        return o_.nuevo ? operacion::NUEVO : operacion::GRABADO;
    }

    [[nodiscard]] std::int64_t mayor_correlativo() {
        const auto rs = db_.NewRecord("select max(correlativo) as num from ctdcomprad ");
        return rs->eof() ? 0 : rs->fields("num").Value.integer();
    }

    /// Numbers that nobody has: what others are about to store they hold, what they have stored counts.
    [[nodiscard]] std::vector<std::int64_t> correlativos(std::size_t cuantos) {
        constexpr std::int64_t NO_SON_CONJUNTOS = std::int64_t{1} << 40U;
        std::vector<std::int64_t> tomados;
        for (std::int64_t mayor = -1, leido = mayor_correlativo(); mayor != leido;) {
            mayor = leido;
            tomados.clear();
            for (std::int64_t n = mayor + 1; tomados.size() < cuantos; ++n)
                if (db_.reserve(NO_SON_CONJUNTOS + n)) tomados.push_back(n);
            leido = mayor_correlativo(); // stored by another between the reading and the holding
        }
        return tomados;
    }

    clsConexion& db_;
    const Comprobante& c_;
    const OpcionesGrabar& o_;
    const Clave clave_;
    const char* const paso_;
    Pasos pasos_;
    Proteccion proteccion_;
    ImportesSql importes_;
    std::int64_t conjunto_ = 0, copiado_ = 0;
    bool cierre_ = false;
};

} // namespace

ResultadoGrabar GrabarComprobante(clsConexion& db, const Comprobante& c, const OpcionesGrabar& o) {
    Grabacion grabacion(db, c, o);
    return grabacion.resultado(en_transaccion(
        db, [&] { grabacion.ejecutar(); }, [&] { return esta_grabado(db, c, o.hoy).has_value(); }));
}

void grabar_en_transaccion_abierta(clsConexion& db, const Comprobante& c, const OpcionesGrabar& o) {
    Grabacion(db, c, o).ejecutar();
}

std::optional<ResultadoGrabar> grabado_sin_respuesta(clsConexion& db, const Comprobante& c, Fecha hoy) {
    const auto guardado = esta_grabado(db, c, hoy);
    if (!guardado) return std::nullopt;
    ResultadoGrabar r;
    r.comprobante_adjunto = guardado->c.comprobante_adjunto;
    r.huella = guardado->huella;
    r.cierre = es_comprobante_cierre(c, leer_periodo(db, c.empresa, hoy));
    return r;
}

} // namespace quorvel
