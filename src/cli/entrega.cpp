#include "cli/entrega.h"

#include "dbtools/avance.h"
#include "interchange/archivo_comprobante.h"
#include "platform/files/engine_files.h"

namespace quorvel::cli {

namespace fs = std::filesystem;

namespace {

const fs::path& creada(const fs::path& carpeta) {
    std::error_code error;
    fs::create_directories(carpeta, error);
    if (error)
        throw std::runtime_error("No se puede crear la carpeta " + carpeta.string() + ": " + error.message());
    return carpeta;
}

} // namespace

Entrega::Entrega(const fs::path& carpeta, std::string extension, bool reemplazar)
    : carpeta_(carpeta), extension_(std::move(extension)), reemplazar_(reemplazar),
      espera_(creada(carpeta_)) {}

fs::path Entrega::lugar(const Clave& clave) {
    const std::string base = oficina::nombre_de_archivo(clave);
    std::string nombre = base;
    for (int i = 2; usados_.contains(nombre); ++i) nombre = base + "-" + std::to_string(i);
    return lugar(nombre + extension_);
}

fs::path Entrega::lugar(const std::string& nombre) {
    if (!reemplazar_ && fs::exists(carpeta_ / nombre))
        throw ErrorArchivo("ya existe " + (carpeta_ / nombre).string() + " (--overwrite lo reemplaza)");
    refuse_engine_file(carpeta_ / nombre);
    usados_.insert(fs::path(nombre).stem().string());
    nombres_.push_back(nombre);
    return espera_.ruta() / nombre;
}

void Entrega::entregar() {
    std::error_code error;
    for (const std::string& nombre : nombres_) {
        fs::rename(espera_.ruta() / nombre, carpeta_ / nombre, error);
        if (error)
            throw std::runtime_error("No se puede escribir " + (carpeta_ / nombre).string() + ": " +
                                     error.message());
    }
}

Respuesta para_cada_uno(const char* que, const oficina::Elegidos& elegidos,
                        const std::function<void(const Clave&)>& trabajo) {
    Respuesta r;
    if (elegidos.claves.empty()) {
        r.problemas.push_back({"", 0, "", "Ningún comprobante vigente cumple lo pedido"});
        r.frase_es_documento = true;
        return r;
    }
    dbtools::BarraAvance barra(que, static_cast<long>(elegidos.claves.size()));
    long hechas = 0;
    for (const Clave& k : elegidos.claves) {
        try {
            trabajo(k);
        } catch (const ErrorArchivo& e) {
            r.problemas.push_back({oficina::nombre_de_comprobante(k), 0, "", e.what()});
        }
        barra.mostrar(++hechas);
    }
    r.frase = r.problemas.empty() ? cantidad(elegidos.claves.size(), "comprobante", "comprobantes")
                                  : "No se escribió ningún archivo";
    if (elegidos.omitidos > 0)
        r.frase += "; " + cantidad(elegidos.omitidos, "anulado omitido", "anulados omitidos");
    return r;
}

} // namespace quorvel::cli
