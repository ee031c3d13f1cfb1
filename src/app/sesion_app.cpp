#include "app/sesion_app.h"

#include "platform/report/definition.h"

#include <cstdlib>
#include <stdexcept>
#include <utility>

namespace quorvel::app {

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

/// The screen holds codes of sixteen bits; half a code would be another company.
std::int16_t codigo(const char* de_que, int valor) {
    if (!std::in_range<std::int16_t>(valor))
        throw std::runtime_error(std::string("El código ") + de_que +
                                 " va de 1 a 32767: " + std::to_string(valor));
    return static_cast<std::int16_t>(valor);
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
    report::instalar_definiciones(e.reporte.parent_path(), dbtools::carpeta_datos() / "reports");
    auto empresa = db_->NewRecord("select * from admempresa where empresa=" + std::to_string(e.empresa));
    if (empresa->eof()) throw std::runtime_error("No existe la empresa " + std::to_string(e.empresa));
    auto usuario = db_->NewRecord("select * from admusuario where usuario=" + std::to_string(e.usuario));
    if (usuario->eof()) throw std::runtime_error("No existe el usuario " + std::to_string(e.usuario));
    objeto_ = crear_objeto("clsQuorvel", {escritorio, reloj, impresor, carpeta, true});
    objeto_->let_glbEmpresa(codigo("de la empresa", e.empresa));
    objeto_->let_glbN_empresa(empresa->fields("n_empresa").Value.text());
    objeto_->let_glbUsuario(codigo("del usuario", e.usuario));
    objeto_->let_glbN_usuario(usuario->fields("n_usuario").Value.text());
    objeto_->let_glbAlias(codigo("del alias", std::atoi(usuario->fields("alias").Value.text().c_str())));
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

} // namespace quorvel::app
