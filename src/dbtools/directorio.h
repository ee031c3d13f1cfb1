#pragma once
#include "dbtools/base.h"

#include <string>
#include <vector>

namespace quorvel::dbtools {

/// Table of the directory, in a database of the administrator's choice.
inline constexpr const char* DIRECTORIO = "admdirectorio";

/// A company and the database that it is in.
struct EmpresaUbicada {
    std::string conexion; ///< without password
    int empresa = 0;
    std::string nombre, rut;
};

/// Enters the companies of a database, in the place of what the directory had of it. The table is made when
/// it is missing. @return how many there are @throws ErrorSesion
int anotar_en_directorio(Base& directorio, const std::string& conexion);
/// Companies of which the name or one of its words, or the RUT (with or without points), begins with the
/// text; an index answers. Accents and case do not count. In the order of what was found, up to a screenful.
/// @throws ErrorSesion also when the database has no directory
[[nodiscard]] std::vector<EmpresaUbicada> buscar_en_directorio(Base& directorio, const std::string& texto);
/// Connections of the databases that the directory knows. @throws ErrorSesion
[[nodiscard]] std::vector<std::string> bases_del_directorio(Base& directorio);

} // namespace quorvel::dbtools
