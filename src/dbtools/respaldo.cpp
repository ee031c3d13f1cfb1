#include "dbtools/respaldo.h"

#include "dbtools/contenido.h"
#include "dbtools/revisar.h"
#include "dbtools/volcado.h"
#include "platform/db/clsConexion.h"
#include "platform/files/attachments.h"

#include <stdexcept>

namespace quorvel::dbtools {

namespace fs = std::filesystem;

namespace {

/// A folder that becomes again what it was, empty or not there, unless its filling comes to an end.
class CarpetaNueva {
public:
    /// @throws std::runtime_error when there is something in it already
    explicit CarpetaNueva(fs::path ruta) : ruta_(std::move(ruta)) {
        std::error_code error;
        creada_ = fs::create_directories(ruta_, error);
        if (error)
            throw std::runtime_error("No se puede crear la carpeta " + ruta_.string() + ": " +
                                     error.message());
        if (!fs::is_empty(ruta_)) throw std::runtime_error("No está vacía la carpeta " + ruta_.string());
    }
    ~CarpetaNueva() {
        if (terminada_) return;
        std::error_code ignorado;
        for (fs::directory_iterator e(ruta_, ignorado), fin; !ignorado && e != fin; e.increment(ignorado))
            fs::remove_all(e->path(), ignorado);
        if (creada_) fs::remove(ruta_, ignorado);
    }
    CarpetaNueva(const CarpetaNueva&) = delete;
    CarpetaNueva& operator=(const CarpetaNueva&) = delete;
    void terminar() { terminada_ = true; }

private:
    fs::path ruta_;
    bool creada_ = false, terminada_ = false;
};

Attachments de_respaldo(const fs::path& carpeta) { return {carpeta, ""}; }

/// Copies the files that the copy lacks or has older. One that is gone meanwhile was removed by somebody.
void copiar(const Attachments& de, const std::vector<AttachedFile>& archivos, const fs::path& a,
            const AvancePartes& avance) {
    long hechos = 0;
    for (const auto& [conjunto, nombre] : archivos) {
        const fs::path nuevo = a / conjunto / nombre;
        std::error_code error;
        if (const auto origen = de.find(conjunto, nombre)) {
            fs::create_directories(nuevo.parent_path(), error);
            if (!error) fs::copy_file(*origen, nuevo, fs::copy_options::update_existing, error);
            // the standard library calls a full disk an input/output error
            if (error == std::errc::io_error && fs::space(a).available < fs::file_size(*origen))
                error = std::make_error_code(std::errc::no_space_on_device);
        }
        if (error && error != std::errc::no_such_file_or_directory)
            throw std::runtime_error("No se pudo copiar " + nuevo.string() + ": " + error.message());
        avance("Copiando los adjuntos", ++hechos, static_cast<long>(archivos.size()));
    }
}

std::vector<AttachedFile> nombrados(Base& base) {
    std::vector<AttachedFile> archivos;
    for (auto& fila : base.consultar(
             "select distinct comprobante_adjunto, nombre from ctdcomprad where comprobante_adjunto<>0"))
        archivos.push_back({fila[0], fila[1]});
    return archivos;
}

/// A name beside the folder's that no database's folder has: those are in capitals.
fs::path nombre_libre(const fs::path& carpeta) {
    fs::path libre;
    for (int n = 1; libre.empty() || fs::exists(libre); ++n)
        libre = carpeta.string() + ".anterior-" + std::to_string(n);
    return libre;
}

/// Moves the files that wait in a folder beside the database's into it, each whole.
/// @return where the earlier folder is now, when it had to make room
fs::path entregar(const fs::path& espera, const fs::path& carpeta, bool reemplazar) {
    fs::path anterior;
    if (reemplazar && fs::exists(carpeta)) fs::rename(carpeta, anterior = nombre_libre(carpeta));
    if (!fs::exists(carpeta)) {
        fs::rename(espera, carpeta);
    } else {
        for (const fs::directory_entry& conjunto : fs::directory_iterator(espera)) {
            fs::create_directories(carpeta / conjunto.path().filename());
            for (const fs::directory_entry& archivo : fs::directory_iterator(conjunto))
                fs::rename(archivo, carpeta / conjunto.path().filename() / archivo.path().filename());
        }
        fs::remove_all(espera);
    }
    sincronizar(carpeta);
    return anterior;
}

void exigir_sin_choques(const std::vector<AttachedFile>& archivos, const Attachments& de,
                        const Attachments& a) {
    for (const auto& [conjunto, nombre] : archivos)
        if (a.would_replace(conjunto, *de.find(conjunto, nombre)))
            throw std::runtime_error("Ya hay otro archivo " + (a.home() / conjunto / nombre).string() +
                                     "; con --reemplazar se guarda aparte");
}

} // namespace

Respaldado respaldar(const std::string& conexion, const fs::path& destino, const fs::path& adjuntos,
                     const AvancePartes& avance) {
    const Volcado& volcado = volcado_de(conexion);
    const Attachments origen(adjuntos, attachment_database(conexion)), copia = de_respaldo(destino);
    CarpetaNueva carpeta(destino);
    // Files, database, files again. A file comes before the row that names it, so those of the rows of the
    // database's moment are there the second time; but a file also goes before its row does, so what somebody
    // removes in between must have been taken before.
    copiar(origen, origen.files(), copia.home(), avance);
    auto base = volcado.sacar(conexion, destino / volcado.archivo, avance);
    copiar(origen, nombrados(*base), copia.home(), avance);
    Respaldado hecho{0, revisar_adjuntos(*base, copia)};
    base.reset(); // nobody reads what the engine has open
    const Contenido contenido = sumar(destino, avance);
    hecho.adjuntos = contenido.size() - 1;
    escribir_contenido(destino, contenido);
    carpeta.terminar();
    return hecho;
}

std::vector<std::string> verificar(const fs::path& respaldo, const AvancePartes& avance) {
    const Contenido lista = leer_contenido(respaldo);
    return comparar(lista, sumar(respaldo, avance));
}

Restaurado restaurar(const fs::path& respaldo, const std::string& conexion, const fs::path& adjuntos,
                     bool reemplazar, const AvancePartes& avance) {
    const Volcado& volcado = volcado_de(conexion);
    if (!fs::exists(respaldo / volcado.archivo))
        throw std::runtime_error("El respaldo es de otro motor de base de datos: no tiene " +
                                 std::string(volcado.archivo));
    const Attachments copia = de_respaldo(respaldo), lugar(adjuntos, attachment_database(conexion));
    const std::vector<AttachedFile> archivos = copia.files();
    const auto destino = volcado.destino(conexion, reemplazar);
    if (!reemplazar) exigir_sin_choques(archivos, copia, lugar);
    const fs::path espera = lugar.home().parent_path() / (".restaurando-" + lugar.home().filename().string());
    fs::remove_all(espera); // of a restoration that was cut off
    Restaurado hecho{archivos.size(), {}};
    CarpetaNueva carpeta(espera);
    copiar(copia, archivos, espera, avance);
    sincronizar(espera);
    destino->poner(respaldo / volcado.archivo, avance);
    try {
        hecho.anteriores = entregar(espera, lugar.home(), reemplazar);
    } catch (const std::exception& e) {
        throw std::runtime_error(
            "La base de datos quedó restaurada y sus adjuntos no, repita con --reemplazar: " +
            std::string(e.what()));
    }
    carpeta.terminar();
    return hecho;
}

} // namespace quorvel::dbtools
