#pragma once
#include "dbtools/avance.h"
#include "dbtools/base.h"

#include <filesystem>
#include <memory>
#include <string>

namespace quorvel::dbtools {

/// A database that is about to be written over.
class Destino {
public:
    virtual ~Destino() = default;
    /// Puts a copy in, wholly: whoever dies on the way leaves what was there before.
    /// @throws std::runtime_error, ErrorSesion
    virtual void poner(const std::filesystem::path& archivo, const AvancePartes& avance) = 0;
};

/// How an engine writes a whole database into one file and back.
struct Volcado {
    const char* archivo; ///< the file's name in a backup
    /// Copies the database as it is at one moment, whoever goes on working in it.
    /// @return a connection that sees that moment
    /// @throws std::runtime_error, ErrorSesion
    std::unique_ptr<Base> (*sacar)(const std::string& conexion, const std::filesystem::path& archivo,
                                   const AvancePartes& avance);
    /// @param reemplazar whether its tables may go
    /// @throws ErrorSesion when there are tables that may not go or somebody else is in the database
    std::unique_ptr<Destino> (*destino)(const std::string& conexion, bool reemplazar);
};
extern const Volcado VOLCADO_SQLITE, VOLCADO_POSTGRES;
[[nodiscard]] const Volcado& volcado_de(const std::string& conexion);

constexpr const char* CON_TABLAS = "La base de datos ya tiene tablas; con --reemplazar se reemplazan";
constexpr const char* EN_USO = "Otros programas tienen abierta la base de datos: ciérrelos y repita";

} // namespace quorvel::dbtools
