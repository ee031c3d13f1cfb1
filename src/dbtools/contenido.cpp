#include "dbtools/contenido.h"

#include "platform/files/attachments.h"
#include "platform/files/sha256.h"
#include "text/letras_utf8.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <stdexcept>

namespace quorvel::dbtools {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t DIGITOS = 64;

std::runtime_error falla(const std::string& que, const fs::path& ruta, int error) {
    return std::runtime_error(que + " " + ruta.string() + (error != 0 ? ": " : "") +
                              (error != 0 ? std::strerror(error) : ""));
}

/// A name may hold a line end, which the list writes as the two characters "\n" and a mark before the line.
std::string escapar(const std::string& ruta) {
    return reemplazar(reemplazar(ruta, "\\", "\\\\"), "\n", "\\n");
}

std::string sin_escapes(const std::string& ruta) {
    std::string limpia;
    for (std::size_t i = 0; i < ruta.size(); ++i) {
        const bool escape = ruta[i] == '\\' && i + 1 < ruta.size();
        if (escape) ++i;
        limpia += escape && ruta[i] == 'n' ? '\n' : ruta[i];
    }
    return limpia;
}

/// The only places of a backup that hold files; nothing else is ever read or copied on a list's word.
bool de_un_respaldo(const std::string& ruta) {
    if (ruta == "base.db" || ruta == "base.dump") return true;
    constexpr std::string_view ADJUNTO = "adjunto/";
    if (!ruta.starts_with(ADJUNTO)) return false;
    const std::size_t barra = ruta.find('/', ADJUNTO.size());
    return barra != std::string::npos &&
           attachment_set(std::string_view(ruta).substr(ADJUNTO.size(), barra - ADJUNTO.size())) &&
           bare_name(std::string_view(ruta).substr(barra + 1));
}

} // namespace

Contenido sumar(const fs::path& carpeta, const AvancePartes& avance) {
    std::vector<fs::path> archivos;
    Contenido contenido;
    for (const fs::directory_entry& e : fs::recursive_directory_iterator(carpeta)) {
        const std::string ruta = e.path().lexically_relative(carpeta).string();
        if (e.is_regular_file() && !e.is_symlink()) {
            if (ruta != LISTA_CONTENIDO) archivos.push_back(e.path());
        } else if (!e.is_directory() || e.is_symlink()) {
            contenido[ruta] = "";
        }
    }
    long hechos = 0;
    for (const fs::path& archivo : archivos) {
        contenido[archivo.lexically_relative(carpeta).string()] = sha256_of_file(archivo);
        avance("Sumas de control", ++hechos, static_cast<long>(archivos.size()));
    }
    return contenido;
}

void sincronizar(const fs::path& carpeta) {
    const int fd = open(carpeta.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const bool bien = fd >= 0 && syncfs(fd) == 0;
    const int error = errno;
    if (fd >= 0) close(fd);
    if (!bien) throw falla("No se puede escribir en", carpeta, error);
}

void escribir_contenido(const fs::path& carpeta, const Contenido& contenido) {
    sincronizar(carpeta);
    const fs::path lista = carpeta / LISTA_CONTENIDO, temporal = lista.string() + ".incompleta";
    errno = 0;
    std::ofstream archivo(temporal, std::ios::binary);
    for (const auto& [ruta, suma] : contenido) {
        const std::string escapada = escapar(ruta);
        archivo << (escapada == ruta ? "" : "\\") << suma << "  " << escapada << '\n';
    }
    archivo.close();
    if (!archivo) throw falla("No se puede escribir", temporal, errno);
    sincronizar(carpeta);
    fs::rename(temporal, lista);
    sincronizar(carpeta);
}

Contenido leer_contenido(const fs::path& carpeta) {
    std::ifstream archivo(carpeta / LISTA_CONTENIDO, std::ios::binary);
    if (!archivo)
        throw std::runtime_error("No hay un respaldo completo en " + carpeta.string() + ": falta " +
                                 LISTA_CONTENIDO);
    Contenido contenido;
    for (std::string linea; std::getline(archivo, linea);) {
        const bool escapada = linea.starts_with('\\');
        if (escapada) linea.erase(0, 1);
        const bool entera = linea.size() > DIGITOS + 2 && linea.find(' ') == DIGITOS;
        std::string ruta = entera ? linea.substr(DIGITOS + 2) : linea;
        if (escapada) ruta = sin_escapes(ruta);
        if (!entera || !de_un_respaldo(ruta) || !contenido.emplace(ruta, linea.substr(0, DIGITOS)).second)
            throw std::runtime_error(std::string(LISTA_CONTENIDO) +
                                     " no es la lista de un respaldo: " + sin_controles(linea));
    }
    return contenido;
}

std::vector<std::string> comparar(const Contenido& lista, const Contenido& presente) {
    std::vector<std::string> diferencias;
    for (const auto& [ruta, suma] : lista) {
        const auto hay = presente.find(ruta);
        if (hay == presente.end())
            diferencias.push_back("Falta " + sin_controles(ruta));
        else if (hay->second != suma)
            diferencias.push_back("Cambió " + sin_controles(ruta));
    }
    for (const auto& [ruta, suma] : presente)
        if (!lista.contains(ruta)) diferencias.push_back("No es del respaldo " + sin_controles(ruta));
    return diferencias;
}

} // namespace quorvel::dbtools
