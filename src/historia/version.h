#pragma once
#include "text/fecha.h"

#include <cstdint>
#include <string>
#include <vector>

namespace quorvel {

// A company's history is a chain of versions in ctdhistoria. Each holds a voucher as it is stored at that
// moment, read from its rows by the engine itself, and the sum of the version before it; ctmhistoria holds
// the sum of the last one.

/// What a version is about. The texts are stored.
namespace operacion {
inline constexpr const char *INICIO = "inicio", *NUEVO = "nuevo", *GRABADO = "grabado", *ANULADO = "anulado",
                            *ELIMINADO = "eliminado", *CORTADO = "cortado", *CHEQUE = "cheque",
                            *IMPORTADO = "importado", *REGISTRO = "registro", *CIERRE = "cierre";
} // namespace operacion

/// Who did what to which voucher.
struct Nota {
    int empresa = 0, usuario = 0;
    std::string operacion;
    std::string grupo{};      ///< of vouchers that one piece of work writes
    std::string clave{};      ///< clave_version(); empty for what concerns no voucher
    std::string sumas{};      ///< SHA-256 of the attached files, a line each: name, tab, digits
    bool solo_abierto = true; ///< fails in a locked month
};
/// A name that no other piece of work gets.
[[nodiscard]] std::string nuevo_grupo();
/// Text of the steps of a version.
inline constexpr const char* PASO_HISTORIA =
    "Problemas al grabar la historia del comprobante: su mes se bloqueó entretanto, o la base no la admite";

/// Three columns of a statement: the stored voucher's header, lines and names of files.
[[nodiscard]] std::string sql_contenido(const std::string& donde);
/// The statements that add a version; each must change a row. The first takes hold of the company's history
/// until the transaction ends, so they come last. @param donde " where …" of the voucher's header
[[nodiscard]] std::vector<std::string> sql_version(const Nota& nota, const std::string& donde);
/// The same for what concerns no voucher: a year that was closed, a month that was locked.
[[nodiscard]] std::vector<std::string> sql_suceso(const Nota& nota);

/// "2024-03-20|001|01|15": the day, the document kind, the subsystem and the number of a voucher.
[[nodiscard]] std::string clave_version(Fecha f_comp, const std::string& documento,
                                        const std::string& subsistema, const std::string& num_docum);

/// A version as it is stored.
struct Version {
    std::int64_t numero = 0;
    std::string momento; ///< "yyyy-mm-dd hh:mm:ss", UTC, of the server's clock
    std::string anterior;
    int usuario = 0;
    std::string maquina, operacion, grupo, clave;
    std::string cabecera, lineas, adjuntos, sumas; ///< empty where only a list is wanted
};
/// What the next version carries of this one.
[[nodiscard]] std::string huella_de(int empresa, const Version& v);

} // namespace quorvel
