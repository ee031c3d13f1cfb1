#include "app/respaldo/respaldos.h"

#include "app/avisos.h"
#include "dbtools/base.h"
#include "dbtools/datos.h"
#include "dbtools/respaldo.h"
#include "dbtools/revisar.h"
#include "platform/files/attachments.h"
#include "qt/ProgressBox.h"
#include "qt/file_dialog.h"
#include "qt/text.h"
#include "text/cuantos.h"

#include <QDate>
#include <stdexcept>

namespace quorvel::app {

namespace fs = std::filesystem;
using qt::to_qt;
using qt::to_std;

namespace {

constexpr const char* RESPALDO_SQLITE = "base.db";

struct Cancelado : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// The work's progress in a box; leaving the box ends the work.
dbtools::AvancePartes en_caja(qt::ProgressBox& caja) {
    return [&caja](const std::string& que, long hechas, long total) {
        if (!caja.report(que, hechas, total)) throw Cancelado("Cancelado: no quedó nada a medias.");
    };
}

std::string adjuntos_en_palabras(std::size_t n) {
    return cuantos(static_cast<std::int64_t>(n), "archivo adjunto", "archivos adjuntos");
}

std::string lista(const std::string& titulo, const std::vector<std::string>& renglones) {
    constexpr std::size_t CABEN = 8;
    std::string texto = titulo;
    for (std::size_t i = 0; i < std::min(renglones.size(), CABEN); ++i) texto += "\n· " + renglones[i];
    if (renglones.size() > CABEN) texto += "\n· y " + std::to_string(renglones.size() - CABEN) + " más";
    return texto;
}

fs::path carpeta_adjuntos() { return attachment_base(dbtools::carpeta_personal()); }

/// "contabilidad" of ".../contabilidad.db" and of "postgresql://…/contabilidad?…".
std::string nombre_de(const std::string& conexion) {
    return fs::path(conexion.substr(0, conexion.find('?'))).stem().string();
}

} // namespace

std::string hacer_respaldo(const std::string& conexion, const fs::path& carpeta, const fs::path& adjuntos,
                           QWidget* owner) {
    qt::ProgressBox caja(owner);
    try {
        const dbtools::Respaldado hecho = dbtools::respaldar(conexion, carpeta, adjuntos, en_caja(caja));
        const std::string texto = "Respaldo hecho: la base de datos y " +
                                  adjuntos_en_palabras(hecho.adjuntos) + " en\n" + carpeta.string();
        return hecho.faltan.empty() ? texto : texto + "\n\n" + lista("Faltan:", hecho.faltan);
    } catch (const Cancelado& e) {
        return e.what();
    } catch (const std::exception& e) {
        return std::string("No se hizo el respaldo: ") + e.what();
    }
}

void respaldar_base(const std::string& conexion, QWidget* owner) {
    const QString propuesto = to_qt(nombre_de(conexion)) + "_" + QDate::currentDate().toString("yyyy-MM-dd");
    const QString carpeta = qt::choose_file(owner, {.title = "Respaldar: carpeta nueva",
                                                    .filters = {"Carpeta del respaldo (*)"},
                                                    .proposed = propuesto,
                                                    .what = qt::Choose::save});
    if (carpeta.isEmpty()) return;
    avisar(owner, to_qt(hacer_respaldo(conexion, to_std(carpeta), carpeta_adjuntos(), owner)));
}

Restauracion poner_respaldo(const fs::path& respaldo, const std::string& conexion, const fs::path& adjuntos,
                            bool reemplazar, QWidget* owner) {
    qt::ProgressBox caja(owner);
    try {
        const dbtools::AvancePartes avance = en_caja(caja);
        if (const auto diferencias = dbtools::verificar(respaldo, avance); !diferencias.empty())
            return {false, lista("El respaldo no está como se hizo; no se restauró nada.", diferencias)};
        const dbtools::Restaurado hecho =
            dbtools::restaurar(respaldo, conexion, adjuntos, reemplazar, avance);
        std::string texto = "Base de datos restaurada, con " + adjuntos_en_palabras(hecho.adjuntos) + ".";
        if (!hecho.anteriores.empty())
            texto += "\nLos adjuntos que había quedaron en " + hecho.anteriores.string();
        const auto hallazgos = dbtools::revisar(conexion, adjuntos);
        return {true, hallazgos.empty() ? texto : texto + "\n\n" + lista("Conviene mirar:", hallazgos)};
    } catch (const Cancelado& e) {
        return {false, e.what()};
    } catch (const std::exception& e) {
        return {false, std::string("No se restauró: ") + e.what()};
    }
}

namespace {

/// A database with tables, which a restoration would end.
bool tiene_tablas(const std::string& conexion) {
    if (conexion.starts_with("sqlite:") && !fs::exists(conexion.substr(7))) return false;
    return !dbtools::abrir_base(conexion, dbtools::Abrir::existente)->columnas().empty();
}

/// Where the backup goes. @return nothing when the person leaves it or there is no such place
std::optional<std::string> destino(const fs::path& respaldo, const std::string& servidor, QWidget* owner) {
    if (fs::exists(respaldo / RESPALDO_SQLITE)) {
        const QString archivo = qt::choose_file(
            owner, {.title = QString::fromUtf8("Restaurar en: base nueva, o la que se reemplaza"),
                    .filters = {"Base de datos (*.db)"},
                    .proposed = to_qt(respaldo.filename().string() + ".db"),
                    .what = qt::Choose::save});
        return archivo.isEmpty() ? std::nullopt : std::optional("sqlite:" + to_std(archivo));
    }
    if (servidor.starts_with("postgres")) return servidor;
    avisar(owner, QString::fromUtf8(
                      "El respaldo es de la base de un servidor: escriba en Conexión la base en que se "
                      "restaura, que puede estar vacía, y repita."));
    return std::nullopt;
}

} // namespace

std::optional<std::string> restaurar_base(const std::string& servidor, QWidget* owner) {
    const QString elegida =
        qt::choose_file(owner, {.title = "Restaurar: carpeta del respaldo", .what = qt::Choose::folder});
    if (elegida.isEmpty()) return std::nullopt;
    const fs::path respaldo = to_std(elegida);
    try {
        const auto conexion = destino(respaldo, servidor, owner);
        if (!conexion) return std::nullopt;
        const bool reemplazar = tiene_tablas(*conexion);
        if (reemplazar &&
            !preguntar(owner,
                       QString::fromUtf8("%1 ya tiene datos. Se pierden todos y queda lo del respaldo; nadie "
                                         "debe estar trabajando en ella.\n¿Reemplazarla?")
                           .arg(to_qt(nombre_de(*conexion)))))
            return std::nullopt;
        const Restauracion r = poner_respaldo(respaldo, *conexion, carpeta_adjuntos(), reemplazar, owner);
        r.hecha ? avisar(owner, to_qt(r.texto)) : avisar_problema(owner, to_qt(r.texto));
        return r.hecha ? conexion : std::nullopt;
    } catch (const std::exception& e) {
        avisar_problema(owner, to_qt(e.what()));
        return std::nullopt;
    }
}

} // namespace quorvel::app
