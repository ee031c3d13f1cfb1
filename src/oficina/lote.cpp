#include "oficina/lote.h"

#include "dbtools/avance.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"
#include "voucher/cargar.h"
#include "voucher/grabar.h"
#include "voucher/numeracion.h"
#include "voucher/pasos.h"

#include <algorithm>

namespace quorvel::oficina {

namespace fs = std::filesystem;

namespace {

std::string identidad(const Clave& k) {
    return fecha_iso(k.f_comp) + "|" + k.documento + "|" + recortar_fin(k.num_docum);
}

/// One referred document, however many blanks its texts carry.
DocumentoReferido recortado(DocumentoReferido d) {
    for (std::string& t : d) t = recortar_fin(t);
    return d;
}

/// A pipe could not be read twice, and a folder not once.
std::string bytes_de(const std::string& archivo) {
    std::error_code error;
    const auto estado = fs::status(archivo, error);
    if (fs::is_directory(estado)) throw ErrorArchivo("es una carpeta");
    if (fs::exists(estado) && !fs::is_regular_file(estado)) throw ErrorArchivo("no es un archivo corriente");
    return leer_archivo(archivo);
}

/// A lost session says so. @throws SesionFallida
void exigir_viva(clsConexion& db) {
    try {
        (void)db.NewRecord("select empresa from admempresa where empresa=0");
    } catch (const SesionFallida&) {
        throw;
    } catch (const ErrorSesion&) { // the session is there: it only waits for the end of the transaction
    }
}

/// Total lines are counted nowhere else, so that the bar moves by files and by the lines of a long one.
constexpr long PASOS = 1000;

} // namespace

LoteArchivos::LoteArchivos(Oficina& oficina, Fecha hoy, bool renumerar)
    : oficina_(oficina), hoy_(hoy), renumerar_(renumerar), grupo_(nuevo_grupo()),
      listas_(leer_listas(*oficina.db)), config_(leer_configuracion(*oficina.db, oficina.empresa, hoy)) {}

void LoteArchivos::anotar(const std::string& archivo, const ProblemaArchivo& p) {
    problemas_.push_back({archivo, p.linea, p.campo, p.mensaje});
}

std::optional<Comprobante> LoteArchivos::leer(const std::string& archivo, const Avance& avance) {
    de_lectura_.clear();
    const AvisoProblema aviso = [&](const ProblemaArchivo& p) { de_lectura_.push_back(p); };
    ComprobanteImportado importado;
    try {
        importado = revisar_archivo(bytes_de(archivo), aviso, avance);
    } catch (const ErrorArchivo& e) {
        problemas_.push_back({archivo, 0, "", e.what(), true});
        return std::nullopt;
    }
    std::optional<Comprobante> c;
    if (!importado.reconocido)
        de_lectura_.push_back({1, "", "no es un archivo de comprobante: debe empezar con \"empresa;\""});
    else if (!importado.con_cabecera)
        de_lectura_.push_back({LINEA_CABECERA, "", "falta la cabecera del comprobante"});
    else
        c = armar_comprobante(std::move(importado.c), listas_, aviso);
    for (const ProblemaArchivo& p : de_lectura_) anotar(archivo, p);
    if (!c) return c;
    c->empresa = oficina_.empresa;
    c->usuario = oficina_.usuario;
    return c;
}

bool LoteArchivos::consecuencia(const ProblemaArchivo& p) const {
    const auto total = [](const std::string& campo) { return campo == "debe" || campo == "haber"; };
    return std::ranges::any_of(de_lectura_, [&](const ProblemaArchivo& l) {
        if (p.campo == "detalle") return l.linea >= PRIMERA_LINEA_DETALLE;
        if (p.linea != l.linea) return false;
        return p.linea >= PRIMERA_LINEA_DETALLE || l.campo.empty() || l.campo == p.campo ||
               (total(l.campo) && total(p.campo));
    });
}

void LoteArchivos::validar(const std::string& archivo, const Comprobante& c) {
    const EntradaValidacion e{c, config_, maestros_, *oficina_.db, hoy_, true, false};
    (void)revisar_comprobante(e, [&](const Rechazo& r) {
        const ProblemaArchivo p = situar(r);
        if (!consecuencia(p)) anotar(archivo, p);
        return true;
    });
}

bool LoteArchivos::ocupado(const Comprobante& c) {
    return recortar(c.num_docum).empty() || vistos_.contains(identidad(c.clave())) ||
           ExisteComprobante(*oficina_.db, c.clave());
}

void LoteArchivos::numerar(EnLote& e, Comprobante& c) {
    if (!c.f_comp || c.documento.empty() || !ocupado(c)) return;
    e.numero_archivo = c.num_docum;
    std::int64_t& ultimo = ultimos_[{c.documento, anio(*c.f_comp)}];
    const auto libre = proponer_numero(*oficina_.db, oficina_.empresa, c.documento, anio(*c.f_comp));
    ultimo = std::max(ultimo + 1, libre);
    c.num_docum = std::to_string(ultimo);
}

void LoteArchivos::comparar_con_los_demas(const EnLote& e, const Comprobante& c) {
    const auto [otro, nuevo] = vistos_.try_emplace(identidad(e.clave), e.archivo);
    if (!nuevo) anotar(e.archivo, {LINEA_CABECERA, "numero", "el mismo comprobante está en " + otro->second});
    const auto documento = documento_referido(c);
    if (!documento || recortar((*documento)[3]).empty()) return;
    const auto [par, primero] = referidos_.try_emplace(recortado(*documento), e.archivo);
    if (!primero)
        anotar(e.archivo, {LINEA_CABECERA, "NUMERO_REF", "el mismo documento está en " + par->second});
}

void LoteArchivos::revisar_uno(const std::string& archivo, const Avance& avance) {
    auto c = leer(archivo, avance);
    if (!c) return;
    EnLote e{archivo, {}, "", c->lineas.size(), c->totales.debe.formato("#,##0")};
    if (renumerar_) numerar(e, *c);
    e.clave = c->clave();
    if (c->f_comp && !c->documento.empty() && !c->num_docum.empty()) comparar_con_los_demas(e, *c);
    validar(archivo, *c);
    comprobantes_.push_back(std::move(e));
}

void LoteArchivos::leer_numeros(const std::vector<std::string>& archivos) {
    for (const std::string& archivo : archivos) try {
            const std::string bytes = bytes_de(archivo);
            const auto cabecera = bytes.find('\n', bytes.find('\n') + 1);
            auto i = revisar_archivo(std::string_view(bytes).substr(0, cabecera), [](const auto&) {});
            const Comprobante c = armar_comprobante(std::move(i.c), listas_, [](const auto&) {});
            if (!c.f_comp) continue;
            std::int64_t& ultimo = ultimos_[{c.documento, anio(*c.f_comp)}];
            ultimo = std::max(ultimo, val_entero(c.num_docum));
        } catch (const ErrorArchivo&) { // told when it is its turn
        }
}

void LoteArchivos::recorrer(const char* que, std::size_t cuantos,
                            const std::function<void(std::size_t, const Avance&)>& uno) {
    dbtools::BarraAvance barra(que, static_cast<long>(cuantos) * PASOS);
    for (std::size_t i = 0; i < cuantos; ++i) {
        const long antes = static_cast<long>(i) * PASOS;
        uno(i, [&](long hechas, long total) {
            barra.mostrar(antes + hechas * PASOS / std::max(1L, total));
            return true;
        });
        barra.mostrar(antes + PASOS);
    }
}

void LoteArchivos::revisar(const std::vector<std::string>& archivos) {
    if (renumerar_) leer_numeros(archivos);
    recorrer("Revisando", archivos.size(),
             [&](std::size_t i, const Avance& avance) { revisar_uno(archivos[i], avance); });
}

void LoteArchivos::grabar_uno(const EnLote& e, const Avance& avance) {
    clsConexion& db = *oficina_.db;
    auto c = leer(e.archivo, avance);
    if (!c) return;
    if (!e.numero_archivo.empty() || c->num_docum.empty()) c->num_docum = e.clave.num_docum;
    if (c->clave() != e.clave)
        return anotar(e.archivo, {LINEA_CABECERA, "numero", "el archivo cambió mientras se leía"});
    validar(e.archivo, *c);
    if (!problemas_.empty()) return;
    c->nro_correlativo =
        proponer_correlativo(db, oficina_.empresa, c->libro, anio(*c->f_comp), mes(*c->f_comp));
    OpcionesGrabar o;
    o.nuevo = true;
    o.hoy = hoy_;
    o.operacion = operacion::IMPORTADO;
    o.grupo = grupo_;
    o.numero_propuesto = proponer_numero(db, oficina_.empresa, c->documento, anio(*c->f_comp));
    try {
        grabar_en_transaccion_abierta(db, *c, o);
    } catch (const PasoFallido& f) {
        const std::string motor = db.last_error();
        exigir_viva(db);
        anotar(e.archivo, {0, "", f.what() + (motor.empty() ? "" : " (" + motor + ")")});
    }
}

void LoteArchivos::grabar() {
    Transaccion t(*oficina_.db);
    recorrer("Grabando", comprobantes_.size(), [&](std::size_t i, const Avance& avance) {
        if (problemas_.empty()) grabar_uno(comprobantes_[i], avance);
    });
    if (!problemas_.empty()) return;
    try {
        t.confirmar();
    } catch (const std::exception& e) {
        throw std::runtime_error(std::string(e.what()) +
                                 ": no se sabe si los comprobantes quedaron grabados; búsquelos antes de "
                                 "importar otra vez");
    }
}

} // namespace quorvel::oficina
