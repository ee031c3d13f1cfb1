#include "platform/db/clsConexion.h"
#include "platform/db/postgres/sesion_postgres.h"
#include "platform/db/sqlite/sesion_sqlite.h"
#include "text/letras_utf8.h"

#include <filesystem>

namespace quorvel {
namespace {

constexpr std::string_view SQLITE = "sqlite:";
constexpr std::string_view CREAR = "?create=1";

bool empieza(std::string_view texto, std::string_view con) { return texto.substr(0, con.size()) == con; }

std::unique_ptr<clsConexion> abrir(const std::string& conexion, bool crear) {
    std::string_view texto = conexion;
    if (empieza(texto, "postgresql://") || empieza(texto, "postgres://"))
        return std::make_unique<SesionPostgres>(conexion);
    if (!empieza(texto, SQLITE) || texto.size() == SQLITE.size())
        throw ErrorSesion("Conexión no válida: escriba sqlite:RUTA o postgresql://servidor/base", "");
    texto.remove_prefix(SQLITE.size());
    if (texto.size() > CREAR.size() && texto.substr(texto.size() - CREAR.size()) == CREAR) {
        crear = true;
        texto.remove_suffix(CREAR.size());
    }
    return std::make_unique<SesionSqlite>(std::string(texto), crear);
}

} // namespace

std::unique_ptr<clsConexion> abrir_sesion(const std::string& conexion) { return abrir(conexion, false); }
std::unique_ptr<clsConexion> crear_sesion(const std::string& conexion) { return abrir(conexion, true); }

std::unique_ptr<clsConexion> abrir_sesion_informes(const std::string& ruta) {
    constexpr std::size_t LARGO = 8;
    std::string plana = ruta;
    if (empieza(plana, SQLITE)) plana.erase(0, SQLITE.size());
    if (plana.size() > CREAR.size() && plana.ends_with(CREAR)) plana.erase(plana.size() - CREAR.size());
    if (largo(std::filesystem::path(plana).filename().string()) != LARGO)
        throw ErrorSesion("La base de informes debe llamarse print.db: " + plana, "");
    return std::make_unique<SesionSqlite>(plana, true);
}

} // namespace quorvel
