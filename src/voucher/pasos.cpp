#include "voucher/pasos.h"

#include "platform/db/literal.h"
#include "text/letras_utf8.h"
#include "voucher/bloqueo.h"
#include "voucher/cargar.h"
#include "voucher/grabar_sql.h"

#include <algorithm>
#include <chrono>
#include <span>
#include <thread>

namespace quorvel {

namespace {

/// A step's own text would hide that the disk is full or the server is gone.
[[noreturn]] void fallar(const clsConexion& db, const char* texto) {
    throw PasoFallido(*texto != '\0' && !db.session_failed() ? std::string(texto) : db.last_error());
}

std::string nombre(clsConexion& db, int usuario) {
    const std::string codigo = sql_numero(usuario);
    const auto rs = db.NewRecord("select n_persona from admpersona where persona=" + codigo);
    return rs->eof() ? codigo : recortar(codigo + " " + rs->fields("n_persona").Value.text());
}

constexpr const char* CAMBIADO = "Este comprobante ya no es el que abrió: ";

std::string por_quien(clsConexion& db, const std::optional<Guardado>& ahora) {
    const std::string queda = "\nNo se ha cambiado nada, y lo que muestra la pantalla queda como borrador. "
                              "Busque el comprobante (F3) para ver cómo está; Ctrl+R vuelve a lo suyo";
    if (!ahora) return std::string(CAMBIADO) + "lo eliminaron o cortaron desde otra ventana." + queda;
    const auto& fecha = ahora->c.f_ult_modificacion;
    return CAMBIADO + std::string(ahora->c.estado == "X" ? "lo anuló " : "lo grabó ") +
           nombre(db, ahora->c.usuario) + (fecha ? ", " + fecha_dmy(*fecha) : "") + "." + queda;
}

} // namespace

void exigir(clsConexion& db, const std::string& sql, const char* texto) {
    if (db.executesql(sql) == 0) fallar(db, texto);
}

void Pasos::ejecutar(clsConexion& db, const Avance& avance) const {
    constexpr std::size_t TANDA = 1000; // no voucher written by hand is told about
    const std::span<const std::string> todas(sql_);
    for (std::size_t hechas = 0; hechas < todas.size(); hechas += TANDA) {
        if (hechas > 0 && avance && !avance(static_cast<long>(hechas), static_cast<long>(todas.size())))
            throw PasoFallido(CANCELADA, Desenlace::cancelado);
        const auto tanda = todas.subspan(hechas, std::min(TANDA, todas.size() - hechas));
        const auto filas = db.executesql_each(tanda);
        if (filas.size() < tanda.size()) fallar(db, textos_[hechas + filas.size()].texto);
        for (std::size_t i = 0; i < tanda.size(); ++i) {
            const Texto& t = textos_[hechas + i];
            if (filas[i] == 0 && t.filas == Filas::alguna) fallar(db, t.texto);
        }
    }
}

Comprobante retener_intacto(clsConexion& db, const Clave& clave, int usuario, const std::string& huella,
                            const char* texto) {
    // a change of nothing holds the row on a server as well: a read alone would not
    exigir(db, "update ctcquorvel set subsistema=subsistema" + sql_clave(clave), texto);
    const auto guardado = leer_guardado(db, clave);
    if (guardado && bloqueado_por_otro(guardado->c.bloqueo_usuario, usuario)) throw PasoFallido(SOLO_LECTURA);
    if (!guardado || guardado->huella != huella)
        throw PasoFallido(por_quien(db, guardado), Desenlace::adelantado);
    return guardado->c;
}

Desenlace averiguar(const std::function<bool()>& quedo_hecho) {
    constexpr int INTENTOS = 20; // ten seconds: a server that is restarted is back by then
    for (int i = 0; i < INTENTOS; ++i) {
        try {
            if (quedo_hecho()) return {};
            return {Desenlace::rechazado,
                    "Se perdió la conexión con la base de datos, el cambio no quedó hecho"};
        } catch (const ErrorSesion&) {
            std::this_thread::sleep_for(std::chrono::milliseconds(500));
        }
    }
    return {Desenlace::desconocido, DESENLACE_DESCONOCIDO};
}

} // namespace quorvel
