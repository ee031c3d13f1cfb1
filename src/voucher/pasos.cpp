#include "voucher/pasos.h"

#include "voucher/bloqueo.h"
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

} // namespace

void exigir(clsConexion& db, const std::string& sql, const char* texto) {
    if (db.executesql(sql) == 0) fallar(db, texto);
}

void Pasos::ejecutar(clsConexion& db, const AvancePasos& avance) const {
    constexpr std::size_t TANDA = 1000; // no voucher written by hand is told about
    const std::span<const std::string> todas(sql_);
    for (std::size_t hechas = 0; hechas < todas.size(); hechas += TANDA) {
        if (hechas > 0 && avance && !avance(static_cast<long>(hechas), static_cast<long>(todas.size())))
            throw PasoFallido(CANCELADA);
        const auto tanda = todas.subspan(hechas, std::min(TANDA, todas.size() - hechas));
        const auto filas = db.executesql_each(tanda);
        if (filas.size() < tanda.size()) fallar(db, textos_[hechas + filas.size()].texto);
        for (std::size_t i = 0; i < tanda.size(); ++i) {
            const Texto& t = textos_[hechas + i];
            if (filas[i] == 0 && t.filas == Filas::alguna) fallar(db, t.texto);
        }
    }
}

std::optional<EstadoGuardado> retener_cabecera(clsConexion& db, const Clave& clave, const char* texto) {
    const std::string condicion = sql_clave(clave);
    // a change of nothing holds the row on a server as well: a read alone would not
    exigir(db, "update ctcquorvel set subsistema=subsistema" + condicion, texto);
    const auto rs =
        db.NewRecord("select estado, bloqueo_usuario, comprobante_adjunto from ctcquorvel" + condicion);
    if (rs->eof()) return std::nullopt;
    EstadoGuardado g;
    g.estado = rs->fields("estado").Value.text();
    g.bloqueo = rs->fields("bloqueo_usuario").Value.integer();
    g.conjunto = rs->fields("comprobante_adjunto").Value.integer();
    return g;
}

void exigir_sin_bloqueo_ajeno(const EstadoGuardado& guardado, int usuario) {
    if (bloqueado_por_otro(guardado.bloqueo, usuario)) throw PasoFallido(SOLO_LECTURA);
}

std::string averiguar(const std::function<bool()>& quedo_hecho) {
    constexpr int INTENTOS = 20; // ten seconds: a server that is restarted is back by then
    for (int i = 0; i < INTENTOS; ++i) {
        try {
            return quedo_hecho() ? ""
                                 : "Se perdió la conexión con la base de datos, el cambio no quedó hecho";
        } catch (const ErrorSesion&) {
            std::this_thread::sleep_for(std::chrono::milliseconds(500));
        }
    }
    return DESENLACE_DESCONOCIDO;
}

} // namespace quorvel
