#include "app/sesion_app.h"

#include "platform/report/definition.h"

#include <cstdlib>
#include <stdexcept>

namespace quorvel {

namespace fs = std::filesystem;

namespace {

std::vector<Nombrado> leer(clsConexion& db, const std::string& tabla, const std::string& columna) {
    std::vector<Nombrado> lista;
    auto rs =
        db.NewRecord("select " + columna + ", n_" + columna + " from " + tabla + " order by " + columna);
    for (; !rs->eof(); rs->MoveNext())
        lista.push_back({std::atoi(rs->at(0).text().c_str()), rs->at(1).text()});
    return lista;
}

} // namespace

std::vector<Nombrado> leer_empresas(clsConexion& db) { return leer(db, "admempresa", "empresa"); }
std::vector<Nombrado> leer_usuarios(clsConexion& db) { return leer(db, "admusuario", "usuario"); }

SesionApp::SesionApp(const Eleccion_inicial& e, ui::Escritorio& escritorio, ReportPrinter& impresor,
                     const Reloj& reloj, const fs::path& carpeta) {
    std::error_code ignorado;
    fs::create_directories(e.reporte.parent_path(), ignorado);
    db_ = abrir_sesion(e.conexion);
    reporte_ = abrir_sesion_informes(e.reporte.string());
    report::instalar_definiciones(e.reporte.parent_path(), carpeta_datos() / "reports");
    auto empresa = db_->NewRecord("select * from admempresa where empresa=" + std::to_string(e.empresa));
    if (empresa->eof()) throw std::runtime_error("No existe la empresa " + std::to_string(e.empresa));
    auto usuario = db_->NewRecord("select * from admusuario where usuario=" + std::to_string(e.usuario));
    if (usuario->eof()) throw std::runtime_error("No existe el usuario " + std::to_string(e.usuario));
    objeto_ = crear_objeto("clsQuorvel", {escritorio, reloj, impresor, carpeta});
    objeto_->let_glbEmpresa(static_cast<std::int16_t>(e.empresa));
    objeto_->let_glbN_empresa(empresa->fields("n_empresa").Value.text());
    objeto_->let_glbUsuario(static_cast<std::int16_t>(e.usuario));
    objeto_->let_glbN_usuario(usuario->fields("n_usuario").Value.text());
    objeto_->let_glbAlias(
        static_cast<std::int16_t>(std::atoi(usuario->fields("alias").Value.text().c_str())));
    objeto_->let_glbPermiso(usuario->fields("permiso").Value.text());
    objeto_->let_glbPrograma("Quorvel");
    objeto_->let_glbTipoImpresora("");
    objeto_->set_glbdb(db_.get());
    objeto_->set_glbdbReport(reporte_.get());
}

void SesionApp::mostrar() {
    auto* clase = dynamic_cast<clsQuorvel*>(objeto_.get());
    if (clase == nullptr || clase->ShowForm() != S_OK) throw std::runtime_error(objeto_->descripcion_error());
}

} // namespace quorvel
