#pragma once
#include "dbtools/datos.h"
#include "host/clsQuorvel.h"
#include "platform/db/clsConexion.h"
#include "qt/QtEscritorio.h"
#include "qt/report/QtReportPrinter.h"
#include "text/fecha.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace quorvel::app {

/// What a person chooses before the voucher screen opens.
struct Eleccion_inicial {
    std::string conexion;
    std::filesystem::path reporte; ///< ".../print.db"
    int empresa = 0, usuario = 0;
};
struct Nombrado {
    int codigo = 0;
    std::string nombre;
};
/// Companies and users of a database. @throws ErrorSesion
[[nodiscard]] std::vector<Nombrado> leer_empresas(clsConexion& db);
[[nodiscard]] std::vector<Nombrado> leer_usuarios(clsConexion& db);

/// One voucher screen with the sessions it needs.
class SesionApp {
public:
    /// @throws std::runtime_error in Spanish: what cannot be opened or is not there
    SesionApp(const Eleccion_inicial& eleccion, ui::Escritorio& escritorio, ReportPrinter& impresor,
              const Reloj& reloj, const std::filesystem::path& carpeta);
    /// @throws std::runtime_error with the screen's own description
    void mostrar();
    [[nodiscard]] frmQuorvel& pantalla() { return objeto_->pantalla(); }

private:
    std::unique_ptr<clsConexion> db_, reporte_;
    std::unique_ptr<ObjetoHost> objeto_;
};

} // namespace quorvel::app
