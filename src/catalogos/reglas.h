#pragma once
#include "catalogos/catalogo.h"

namespace quorvel::reglas {

// What only one catalogue needs. Rows as the catalogue's columns give them.

using Observaciones = std::vector<Observacion>;

/// The code begins with the group's digit and a code that takes entries has the length of its group, which
/// the search of codes asks for.
void revisar_cuenta(clsConexion& db, const FilaCatalogo& fila, const FilaCatalogo& antes, Observaciones& o);
void revisar_centro(clsConexion& db, const FilaCatalogo& fila, const FilaCatalogo& antes, Observaciones& o);
/// Levels are runs of 9 with points between, 20 digits and 10 levels at most.
void revisar_grupo(clsConexion& db, const FilaCatalogo& fila, const FilaCatalogo& antes, Observaciones& o);
void revisar_grupo_centros(clsConexion& db, const FilaCatalogo& fila, const FilaCatalogo& antes,
                           Observaciones& o);
/// Another one in use with the same RUT is told, and allowed: a customer may be a supplier too.
void revisar_auxiliar(clsConexion& db, const FilaCatalogo& fila, const FilaCatalogo& antes, Observaciones& o);
/// Lists tell a type by the first two letters of its entry.
void revisar_tipo(clsConexion& db, const FilaCatalogo& fila, const FilaCatalogo& antes, Observaciones& o);
/// Somebody with every permission stays.
void revisar_usuario(clsConexion& db, const FilaCatalogo& fila, const FilaCatalogo& antes, Observaciones& o);
[[nodiscard]] std::string unico_usuario(clsConexion& db, const FilaCatalogo& fila);
/// Which use of a year's configuration names the account.
[[nodiscard]] std::string cuenta_configurada_de(clsConexion& db, const FilaCatalogo& fila);

[[nodiscard]] std::string siguiente_documento(clsConexion& db);
[[nodiscard]] std::string siguiente_usuario(clsConexion& db);

/// Number of levels and length of the codes follow the format.
void niveles_de_cuentas(clsConexion& db, const FilaCatalogo& fila);
void niveles_de_centros(clsConexion& db, const FilaCatalogo& fila);
/// Offered by accounting or not; every company counts its numbers.
void habilitar_documento(clsConexion& db, const FilaCatalogo& fila);
void retirar_documento(clsConexion& db, const FilaCatalogo& fila);

} // namespace quorvel::reglas
