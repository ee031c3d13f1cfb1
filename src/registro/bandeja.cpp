#include "registro/bandeja.h"

#include "assistants/auxiliares.h"
#include "assistants/libros.h"
#include "historia/version.h"
#include "platform/db/literal.h"
#include "registro/dte.h"
#include "text/letras_utf8.h"

#include <algorithm>
#include <array>
#include <set>

namespace quorvel::registro {
namespace {

std::string llave_contraparte(int libro, const std::string& rut) { return std::to_string(libro) + "|" + rut; }

/// A row in the file is the same row when the books are looked at again.
std::string lugar(const Fila& f) { return f.doc.archivo + "|" + std::to_string(f.doc.linea); }

void completar_con(Propuesta& p, const Propuesta& dada) {
    if (p.cuenta.empty()) {
        p.cuenta = dada.cuenta;
        p.auxiliar = dada.auxiliar;
        p.centro_costo = dada.centro_costo;
        p.glosa = dada.glosa;
    }
    if (p.aux_contraparte.empty()) p.aux_contraparte = dada.aux_contraparte;
}

std::string rut_de_empresa(clsConexion& db, int empresa) {
    const auto rs = db.NewRecord("select rut from admempresa where empresa=" + sql_numero(empresa));
    return rs->eof() ? "" : rut_mostrado(rs->at(0).text());
}

} // namespace

Bandeja::Bandeja(clsConexion& db, int empresa, int usuario, Fecha hoy)
    : base_(preparar(db, empresa, usuario, hoy)), rut_empresa_(rut_de_empresa(db, empresa)) {}

void Bandeja::agregar(const std::string& nombre, std::string_view bytes) {
    Archivo a = es_xml(bytes) ? leer_dte(nombre, bytes, rut_empresa_) : leer_registro(nombre, bytes);
    std::erase_if(archivos_, [&](const Archivo& otro) { return otro.nombre == a.nombre; });
    if (archivos_.empty() || mes_.anio == 0) mes_ = a.mes;
    archivos_.push_back(std::move(a));
}

void Bandeja::vaciar() {
    archivos_.clear();
    filas_.clear();
    marcas_.clear();
    prueba_.clear();
    propuestas_.clear();
    libros_ = {};
    mes_ = {};
}

std::vector<int> Bandeja::completos() const {
    std::vector<int> libros;
    for (const Archivo& a : archivos_)
        if (a.mes_completo && a.situacion == Situacion::registro &&
            std::ranges::find(libros, a.libro) == libros.end())
            libros.push_back(a.libro);
    return libros;
}

void Bandeja::cotejar() {
    base_.config = leer_configuracion(base_.db, base_.empresa, base_.hoy);
    std::set<std::string> marcadas;
    std::map<std::string, std::string> rechazos;
    for (std::size_t i = 0; i < filas_.size(); ++i) {
        if (marcas_[i]) marcadas.insert(lugar(filas_[i]));
        if (marcable(i)) rechazos[lugar(filas_[i])] = filas_[i].detalle;
    }
    std::vector<Documento> documentos;
    for (const Archivo& a : archivos_)
        documentos.insert(documentos.end(), a.documentos.begin(), a.documentos.end());
    libros_ = leer_libros(base_.db, base_.empresa, base_.config, documentos, mes_);
    filas_ = registro::cotejar(documentos, libros_, mes_, completos());
    prueba_ = probar_mes(filas_, libros_, completos());
    propuestas_ = proponer(base_.db, base_.empresa, base_.config, filas_);
    for (const Fila& f : filas_)
        if (const auto d = dadas_.find(llave_contraparte(f.doc.libro, f.doc.rut));
            d != dadas_.end() && f.estado == Estado::nuevo)
            completar_con(propuestas_[llave_propuesta(f)], d->second);
    marcas_.assign(filas_.size(), false);
    for (std::size_t i = 0; i < filas_.size(); ++i) {
        if (!marcable(i)) continue;
        marcas_[i] = marcadas.contains(lugar(filas_[i]));
        filas_[i].detalle = rechazos[lugar(filas_[i])];
    }
    for (const int libro : {COMPRAS, VENTAS})
        habituales_[libro] = documento_habitual(base_.db, base_.empresa, libro);
}

std::string Bandeja::documento(int libro) const {
    const auto h = habituales_.find(libro);
    return !documento_.empty() ? documento_ : h == habituales_.end() ? "" : h->second;
}

std::vector<std::string> Bandeja::avisos() const {
    std::vector<std::string> lista;
    for (const Archivo& a : archivos_) {
        if (!a.rut.empty() && !rut_empresa_.empty() && a.rut != rut_empresa_)
            lista.push_back("El archivo " + a.nombre + " es de " + a.rut + " y esta empresa es " +
                            rut_empresa_);
        if (a.mes_completo && a.mes != mes_ && a.mes.anio != 0)
            lista.push_back("El archivo " + a.nombre + " es del mes " + texto(a.mes));
    }
    return lista;
}

const Propuesta& Bandeja::propuesta(const Fila& f) const {
    static const Propuesta NINGUNA;
    const auto p = propuestas_.find(llave_propuesta(f));
    return p == propuestas_.end() ? NINGUNA : p->second;
}

std::string Bandeja::le_falta(const Fila& f) const {
    return f.estado == Estado::nuevo ? registro::le_falta(f, propuesta(f), base_.config) : "";
}

void Bandeja::marcar(std::size_t fila, bool si) { marcas_.at(fila) = si && marcable(fila); }

std::size_t Bandeja::marcar_nuevos() {
    for (std::size_t i = 0; i < filas_.size(); ++i)
        if (filas_[i].doc.situacion == Situacion::registro) marcar(i, true);
    return marcados();
}

std::size_t Bandeja::marcados() const {
    return static_cast<std::size_t>(std::count(marcas_.begin(), marcas_.end(), true));
}

std::vector<Desconocida> Bandeja::desconocidas() const {
    std::vector<Desconocida> lista;
    std::map<std::string, std::size_t> lugares;
    for (std::size_t i = 0; i < filas_.size(); ++i) {
        const Fila& f = filas_[i];
        if (!marcas_[i] || le_falta(f).empty()) continue;
        const auto [l, nueva] = lugares.try_emplace(llave_contraparte(f.doc.libro, f.doc.rut), lista.size());
        if (nueva) lista.push_back({f.doc.libro, f.doc.rut, f.doc.nombre, 0, propuesta(f)});
        ++lista[l->second].documentos;
    }
    return lista;
}

void Bandeja::completar(const Desconocida& d) {
    dadas_[llave_contraparte(d.libro, d.rut)] = d.propuesta;
    for (const Fila& f : filas_)
        if (f.estado == Estado::nuevo && f.doc.libro == d.libro && f.doc.rut == d.rut)
            completar_con(propuestas_[llave_propuesta(f)], d.propuesta);
}

std::size_t Bandeja::generar_auxiliares(std::vector<Desconocida>& lista) {
    std::size_t hechos = 0;
    std::vector<std::string> ruts;
    for (Desconocida& d : lista) {
        if (!d.propuesta.aux_contraparte.empty()) continue;
        generar_auxiliar(base_.db, d.rut, mayusculas(d.nombre));
        ruts.push_back(d.rut);
        ++hechos;
    }
    const auto codigos = auxiliares_por_rut(base_.db, ruts);
    for (Desconocida& d : lista)
        if (const auto c = codigos.find(d.rut); c != codigos.end()) d.propuesta.aux_contraparte = c->second;
    return hechos;
}

Contabilidad Bandeja::contabilidad(int libro) const {
    Contabilidad c = base_;
    c.documento = documento(libro);
    return c;
}

Comprobante Bandeja::comprobante(const Fila& f) const {
    return comprobante_de(f, propuesta(f), contabilidad(f.doc.libro), mes_);
}

Contabilizado Bandeja::uno(const Contabilidad& k, Maestros& maestros, const Fila& f, bool grabar) const {
    if (const std::string falta = le_falta(f); !falta.empty())
        return {"Falta " + falta + (falta == "cuenta" ? " para la contraparte" : " de la contraparte"), {}};
    if (grabar) return registro::contabilizar(k, maestros, f, propuesta(f), mes_);
    return {ensayar(k, maestros, f, propuesta(f), mes_), {}};
}

Balance Bandeja::contabilizar(const std::function<bool(long, long)>& avance, bool grabar) {
    Balance b;
    Maestros maestros;
    Contabilidad ventas = contabilidad(VENTAS), compras = contabilidad(COMPRAS);
    ventas.grupo = compras.grupo = nuevo_grupo();
    const auto total = static_cast<long>(marcados());
    long hechos = 0;
    try {
        for (std::size_t i = 0; i < filas_.size(); ++i) {
            if (!marcas_[i]) continue;
            if (avance && !avance(hechos++, total)) {
                b.cancelado = true;
                break;
            }
            Fila& f = filas_[i];
            const Contabilizado r = uno(f.doc.libro == COMPRAS ? compras : ventas, maestros, f, grabar);
            ++(r.rechazo.empty() ? b.contabilizados : b.rechazados);
            f.detalle = r.rechazo;
            if (!grabar) continue;
            marcas_[i] = false;
            if (r.clave) f.estado = Estado::contabilizado;
            f.clave = r.clave;
            if (!r.clave && base_.db.session_failed()) throw std::runtime_error(r.rechazo);
        }
    } catch (const std::exception& e) {
        b.error = e.what();
    }
    return b;
}

std::string Bandeja::resumen() const {
    std::array<std::size_t, ESTADOS_FILA> cuantas{};
    for (const Fila& f : filas_) ++cuantas.at(static_cast<std::size_t>(f.estado));
    std::string t;
    for (std::size_t i = 0; i < cuantas.size(); ++i)
        if (cuantas.at(i) != 0)
            t += (t.empty() ? "" : ", ") + std::string(texto(static_cast<Estado>(i))) + ": " +
                 std::to_string(cuantas.at(i));
    return t.empty() ? "sin documentos" : t;
}

} // namespace quorvel::registro
