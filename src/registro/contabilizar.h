#pragma once
#include "registro/propuesta.h"

namespace quorvel::registro {

/// For whom and how the vouchers are made.
struct Contabilidad {
    clsConexion& db;
    int empresa = 0, usuario = 0;
    Fecha hoy{};
    Configuracion config;
    std::string documento; ///< voucher kind
    std::string moneda;
    std::map<std::string, std::string> impuestos; ///< other taxes of the master: number to code
    std::string grupo{};                          ///< of the vouchers that are booked together
};
/// Reads configuration, first currency and other taxes. The voucher kind is the caller's to set.
/// @throws ErrorSesion
[[nodiscard]] Contabilidad preparar(clsConexion& db, int empresa, int usuario, Fecha hoy);
/// The kind with which the book's latest voucher was saved, otherwise the first of accounting.
/// @throws ErrorSesion
[[nodiscard]] std::string documento_habitual(clsConexion& db, int empresa, int libro);

/// The voucher of a new row, not yet numbered: its lines are those of the book's assistant, with the
/// amounts of the register.
[[nodiscard]] Comprobante comprobante_de(const Fila& f, const Propuesta& p, const Contabilidad& c, Mes mes);
/// Gives the voucher the next number and correlative. @throws ErrorSesion
void numerar(const Contabilidad& c, Comprobante& comprobante);
/// What a row still lacks before it can be booked: "cuenta", "auxiliar"; empty when nothing.
[[nodiscard]] std::string le_falta(const Fila& f, const Propuesta& p, const Configuracion& k);

struct Contabilizado {
    std::string rechazo;        ///< empty when saved
    std::optional<Clave> clave; ///< of the saved voucher
};
/// What the screen's checks would say to the voucher of a row, without saving it; empty when it may be saved.
/// @throws ErrorSesion
[[nodiscard]] std::string ensayar(const Contabilidad& c, Maestros& maestros, const Fila& f,
                                  const Propuesta& p, Mes mes);
/// Checks and saves one voucher as the screen does, in a transaction of its own. A number that another
/// user took meanwhile is followed by the next. @throws ErrorSesion
[[nodiscard]] Contabilizado contabilizar(const Contabilidad& c, Maestros& maestros, const Fila& f,
                                         const Propuesta& p, Mes mes);

} // namespace quorvel::registro
