#pragma once
#include "historia/proteccion.h"
#include "historia/version.h"
#include "voucher/comprobante.h"
#include "voucher/pasos.h"

namespace quorvel {

/// Who changes a voucher, and as part of what.
struct Autoria {
    int usuario = 0;
    const char* operacion = operacion::GRABADO;
    std::string grupo{}, sumas{}; ///< see Nota
};
/// Adds to the steps of a change what its history keeps of the voucher, as it will stand behind them; nothing
/// where the company keeps no history.
void anotar(Pasos& pasos, const Proteccion& p, const Clave& clave, const Autoria& autoria);
/// The same at once. @throws PasoFallido
void anotar(clsConexion& db, const Proteccion& p, const Clave& clave, const Autoria& autoria);
/// Adds what the history keeps of an event that concerns no voucher. The company must keep one.
void anotar_suceso(Pasos& pasos, const Nota& nota);
/// Takes away lines, attachment rows (never of set 0 or of one that another voucher shares) and header, and
/// adds a version that shows them. The caller has made sure that it may be done. @throws PasoFallido,
/// ErrorSesion
void eliminar_en_transaccion_abierta(clsConexion& db, const Comprobante& c, const Proteccion& p,
                                     const Autoria& a);
/// Refuses to change a voucher where the company protects what is closed and its year is closed, its closing
/// voucher has been made or its month is locked. To be asked inside the transaction.
/// @return what protects the company @throws PasoFallido with the reason and the way out, ErrorSesion
Proteccion exigir_abierto(clsConexion& db, const Comprobante& c);
/// The same of a locked month alone.
void exigir_mes_abierto(const Proteccion& p, const Comprobante& c);
/// Refuses to take away what another user has on his screen. @throws PasoFallido that names it
void exigir_sin_abrir(const Comprobante& c, int usuario);
/// Refuses a second opening of one year and norm: the balances would count twice.
void exigir_unica_apertura(clsConexion& db, const Comprobante& c);

} // namespace quorvel
