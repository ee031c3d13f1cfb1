#include "apoyo/sesiones.h"

#include "apoyo/pg.h"

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace quorvel::apoyo {
namespace {

namespace fs = std::filesystem;

class Carpeta {
public:
    Carpeta() {
        std::string plantilla = (fs::temp_directory_path() / "quorvel-XXXXXX").string();
        if (mkdtemp(plantilla.data()) == nullptr) throw std::runtime_error("mkdtemp");
        ruta_ = plantilla;
    }
    ~Carpeta() {
        std::error_code e;
        fs::remove_all(ruta_, e);
    }
    Carpeta(const Carpeta&) = delete;
    Carpeta& operator=(const Carpeta&) = delete;
    [[nodiscard]] fs::path numerada() {
        const fs::path nueva = ruta_ / std::to_string(++numero_);
        fs::create_directory(nueva);
        return nueva;
    }

private:
    fs::path ruta_;
    int numero_ = 0;
};

Carpeta& carpeta() {
    static Carpeta una;
    return una;
}

} // namespace

std::string nombre(Motor motor) { return motor == Motor::sqlite ? "sqlite" : "postgres"; }
std::string carpeta_nueva() { return carpeta().numerada().string(); }

std::string conexion_nueva(Motor motor) {
    if (motor == Motor::postgres) return pg_conexion_nueva();
    return "sqlite:" + carpeta_nueva() + "/prueba.db?create=1";
}

std::string copia_de(const std::string& conexion) {
    if (!conexion.starts_with("sqlite:")) return pg_copia(conexion);
    const std::string ruta = conexion.substr(7, conexion.find('?') - 7);
    const fs::path nueva = fs::path(carpeta_nueva()) / fs::path(ruta).filename();
    for (const char* cola : {"", "-wal"})
        if (fs::exists(ruta + cola)) fs::copy_file(ruta + cola, nueva.string() + cola);
    return "sqlite:" + nueva.string();
}

std::unique_ptr<clsConexion> sesion_nueva(Motor motor) { return abrir_sesion(conexion_nueva(motor)); }

void ejecutar(clsConexion& db, const std::string& sql) {
    if (db.executesql(sql) == 0) throw ErrorSesion(db.last_error() + " [" + sql + "]", sql);
}

std::string filas(clsConexion& db, const std::string& sql) {
    std::string texto;
    const auto rs = db.NewRecord(sql);
    for (bool primera = true; !rs->eof(); rs->MoveNext()) {
        if (!primera) texto += ';';
        primera = false;
        for (std::size_t i = 0; i < rs->columns().size(); ++i) texto += (i > 0 ? "|" : "") + rs->at(i).text();
    }
    return texto;
}

} // namespace quorvel::apoyo
