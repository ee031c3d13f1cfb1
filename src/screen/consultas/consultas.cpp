#include "screen/consultas/consultas.h"

#include "screen/consultas/formas_codigo.h"
#include "screen/consultas/frmBuscaQuorvel.h"

namespace quorvel {

namespace {

/// The lookup protocol: create, hand over session and query, show modally, read, unload.
template <class Forma, class Preparar>
std::optional<Eleccion> pedir_codigo(ui::Escritorio& escritorio, clsConexion& db, const char* glbSQL,
                                     Preparar preparar) {
    Forma forma{escritorio};
    forma.glbdb = &db;
    forma.glbSQL = glbSQL;
    preparar(forma);
    forma.ShowModal();
    Eleccion e{forma.glbCodigo, forma.glbNombre};
    forma.Unload();
    if (e.codigo.empty()) return std::nullopt;
    return e;
}
constexpr auto NADA = [](auto&) {};

} // namespace

std::optional<Eleccion> elegir_cuenta_contable(ui::Escritorio& escritorio, clsConexion& db) {
    return pedir_codigo<frmBuscaCentro>(escritorio, db, "select * from ctmcentros  where activo='1' ", NADA);
}
std::optional<Eleccion> elegir_centro_costo(ui::Escritorio& escritorio, clsConexion& db) {
    return pedir_codigo<frmBuscaCentro>(escritorio, db, "select * from ctmcentroc  where activo='1' ",
                                        [](frmBuscaCentro& f) { f.glbTipo = "centro"; });
}
std::optional<Eleccion> elegir_auxiliar(ui::Escritorio& escritorio, clsConexion& db) {
    return pedir_codigo<frmBuscaAuxiliar>(escritorio, db, "select * from ctxaux_cod  where activo='1' ",
                                          [](frmBuscaAuxiliar& f) { f.glbTipoSistema = true; });
}
std::optional<Eleccion> elegir_impuesto(ui::Escritorio& escritorio, clsConexion& db) {
    return pedir_codigo<frmBuscaImpuesto>(escritorio, db, "select * from ctmotroimp  where 1=1 ", NADA);
}
std::optional<Eleccion> elegir_persona(ui::Escritorio& escritorio, clsConexion& db) {
    return pedir_codigo<frmpersona>(escritorio, db, "", NADA);
}
std::optional<Eleccion> elegir_cuenta(ui::Escritorio& escritorio, clsConexion& db) {
    return pedir_codigo<frmcuenta>(escritorio, db, "", NADA);
}

std::optional<ComprobanteElegido> elegir_comprobante(ui::Escritorio& escritorio, clsConexion& db,
                                                     const std::string& glbSQL) {
    frmBuscaQuorvel forma{escritorio};
    forma.glbdb = &db;
    forma.glbSQL = glbSQL;
    forma.ShowModal();
    ComprobanteElegido e{forma.glbF_comp, forma.glbDocumento, forma.glbNum_docum, forma.subsistema};
    forma.Unload();
    if (e.f_comp.empty()) return std::nullopt;
    return e;
}

} // namespace quorvel
