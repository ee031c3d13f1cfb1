#include "voucher/grabar.h"

#include "platform/db/literal.h"
#include "text/numeros.h"
#include "voucher/cargar.h"
#include "voucher/esta_grabado.h"
#include "voucher/grabar_sql.h"
#include "voucher/pasos.h"
#include "voucher/validar.h"

namespace quorvel {
namespace {

constexpr const char* CABECERA_NUEVA = "Problemas al grabar cabecera";
constexpr const char* CABECERA_GUARDADA = "Problemas para actualizar cabecera";
constexpr const char* NUMERO = "Problemas al grabar numero de documento";
constexpr const char* CIERRE = "Problemas al grabar datos de cirre anual";
constexpr const char* DETALLE = "Problemas al grabar detalle";

struct Sumas {
    Decimal debe, haber;
};

/// Sums of the amounts as the lines will hold them, whole pesos.
Sumas sumar_lineas(const std::vector<Linea>& lineas) {
    Sumas escritas, exactas;
    const auto enteros = [](Decimal d) { return Decimal::leer(d.formato("0")); };
    for (const Linea& l : lineas) {
        if (!numero_sql(l.debe) || !numero_sql(l.haber)) throw PasoFallido(DETALLE);
        const Decimal debe = Decimal::leer(l.debe), haber = Decimal::leer(l.haber);
        exactas = {exactas.debe + debe, exactas.haber + haber};
        escritas = {escritas.debe + enteros(debe), escritas.haber + enteros(haber)};
    }
    if (!cabe_en_total(escritas.debe) || !cabe_en_total(escritas.haber)) throw PasoFallido(DETALLE);
    // fractions that balance exactly may stop balancing once they are whole pesos
    if (exactas.debe == exactas.haber && escritas.debe != escritas.haber)
        throw PasoFallido("Comprobante descuadrado");
    return escritas;
}

class Grabacion {
public:
    Grabacion(clsConexion& db, const Comprobante& c, const OpcionesGrabar& o)
        : db_(db), c_(c), o_(o), clave_(c.clave()), paso_(o.nuevo ? CABECERA_NUEVA : CABECERA_GUARDADA) {}

    void ejecutar() {
        revisar_periodo();
        std::optional<EstadoGuardado> guardado;
        if (!o_.nuevo) guardado = revisar_guardado();
        conjunto_ = importe(entero_sql(c_.comprobante_adjunto));
        reservar_conjunto(guardado ? guardado->conjunto : 0);
        cabecera();
        if (o_.nuevo) cabecera_nueva();
        if (!c_.lineas.empty()) detalle();
        adjuntos();
        pasos_.ejecutar(db_, o_.avance);
    }
    /// The set that holds the voucher's files now.
    [[nodiscard]] const std::string& conjunto(bool guardado) const {
        return guardado || movidos_ ? conjunto_ : c_.comprobante_adjunto;
    }

private:
    [[nodiscard]] std::string importe(const std::optional<std::string>& numero) const {
        return numero ? *numero : throw PasoFallido(paso_);
    }

    /// Another screen may have closed the year or moved the period since this one was loaded.
    void revisar_periodo() {
        if (const auto r = rechazo_periodo(c_, leer_periodo(db_, c_.empresa, o_.hoy), db_, o_.hoy))
            throw PasoFallido(r->mensaje);
    }

    EstadoGuardado revisar_guardado() {
        const auto guardado = retener_cabecera(db_, clave_, paso_);
        // without a header, or annulled by someone else: its amounts are out of the balances already
        if (!guardado || guardado->estado == "X") throw PasoFallido(paso_);
        exigir_sin_bloqueo_ajeno(*guardado, c_.usuario);
        return *guardado;
    }

    [[nodiscard]] bool conjunto_ajeno(const std::string& conjunto) {
        return !db_.NewRecord("select top 1 empresa from ctcquorvel where comprobante_adjunto=" + conjunto)
                    ->eof();
    }

    /// Nobody else's, and nobody else is about to take it.
    [[nodiscard]] bool conjunto_libre(const std::string& conjunto) {
        return db_.reserve(val_entero(conjunto)) && !conjunto_ajeno(conjunto);
    }

    void reservar_conjunto(std::int64_t guardado) {
        const std::string propuesto = conjunto_;
        if (conjunto_ == "0" && c_.adjuntos.empty()) return;
        if (conjunto_ == std::to_string(guardado)) return;
        if (conjunto_ != "0" && conjunto_libre(conjunto_)) return;
        constexpr int INTENTOS = 50; // folders left behind by abandoned vouchers are stepped over
        std::int64_t numero = val_entero(numero_adjunto(db_, std::nullopt));
        for (int intentos = 0; intentos < INTENTOS; ++numero) {
            conjunto_ = std::to_string(numero);
            if (!conjunto_libre(conjunto_)) continue;
            if (!o_.mover_adjuntos || c_.adjuntos.empty()) return;
            movidos_ = o_.mover_adjuntos(propuesto, conjunto_);
            if (movidos_) return;
            ++intentos;
        }
        throw PasoFallido(DETALLE);
    }

    void cabecera() {
        const Sumas sumas = sumar_lineas(c_.lineas);
        ImportesSql m;
        m.t_debe = sumas.debe.formato("0");
        m.t_haber = sumas.haber.formato("0");
        m.cotizacion = importe(numero_sql(c_.cotizacion));
        m.monto_neto = formato(c_.monto_neto, "0");
        m.monto_exento = formato(c_.monto_exento, "0");
        m.conjunto = conjunto_;
        m.correlativo = importe(entero_sql(c_.nro_correlativo));
        m.iva_activo_fijo = importe(entero_sql(c_.iva_activo_fijo));
        pasos_.agregar(o_.nuevo ? sql_H1(c_, m, o_.hoy) : sql_H2(c_, m, o_.hoy), paso_, Pasos::Filas::alguna);
    }

    void cabecera_nueva() {
        if (o_.clave_anterior) {
            if (c_.cheque) pasos_.agregar(sql_cheque(clave_, *c_.cheque), paso_);
            pasos_.agregar(sql_factura_sigue(*o_.clave_anterior, clave_), paso_);
        }
        if (val_entero(c_.num_docum) >= o_.numero_propuesto) pasos_.agregar(sql_N1(clave_, o_.hoy), NUMERO);
        if (o_.registrar_cierre) pasos_.agregar(sql_C1(clave_, o_.anio), CIERRE, Pasos::Filas::alguna);
    }

    void detalle() {
        pasos_.agregar(sql_borrar_detalle(clave_));
        for (std::size_t n = 0; n < c_.lineas.size(); ++n) {
            auto sql = sql_detalle(clave_, n + 1, c_.lineas[n]);
            if (!sql) throw PasoFallido(DETALLE);
            pasos_.agregar(std::move(*sql), DETALLE);
        }
    }

    void adjuntos() {
        if (conjunto_ == "0") return; // rows of set 0 belong to nobody in particular
        pasos_.agregar(sql_borrar_adjuntos(conjunto_));
        if (c_.adjuntos.empty()) return;
        const std::vector<std::int64_t> libres = correlativos(c_.adjuntos.size());
        for (std::size_t i = 0; i < libres.size(); ++i)
            pasos_.agregar(sql_adjunto(conjunto_, libres[i], c_.adjuntos[i]), DETALLE);
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
    std::string conjunto_ = "0";
    bool movidos_ = false;
};

} // namespace

ResultadoGrabar GrabarComprobante(clsConexion& db, const Comprobante& c, const OpcionesGrabar& o) {
    Grabacion grabacion(db, c, o);
    ResultadoGrabar r;
    r.error = en_transaccion(
        db, [&] { grabacion.ejecutar(); }, [&] { return esta_grabado(db, c, o.hoy); });
    r.comprobante_adjunto = grabacion.conjunto(r.error.empty());
    return r;
}

void grabar_en_transaccion_abierta(clsConexion& db, const Comprobante& c, const OpcionesGrabar& o) {
    Grabacion(db, c, o).ejecutar();
}

std::optional<ResultadoGrabar> grabado_sin_respuesta(clsConexion& db, const Comprobante& c, Fecha hoy) {
    if (!esta_grabado(db, c, hoy)) return std::nullopt;
    return ResultadoGrabar{"", numero_adjunto(db, c.clave())};
}

} // namespace quorvel
