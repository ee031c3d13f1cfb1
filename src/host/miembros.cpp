#include "host/miembros.h"

#include "text/letras_utf8.h"
#include "text/numeros.h"

#include <charconv>
#include <cmath>

namespace quorvel {

namespace {

template <class Leer, class Poner> Miembro texto(const char* nombre, ObjetoHost& o, Leer leer, Poner poner) {
    return {nombre,
            0,
            {},
            [&o, leer](Variant& v) {
                std::string t;
                const Estado e = (o.*leer)(&t);
                if (!fallo(e)) v = std::move(t);
                return e;
            },
            [&o, poner](const Variant& v) {
                std::string t;
                const Estado e = como_texto(v, t);
                return fallo(e) ? e : (o.*poner)(t);
            }};
}

template <class Leer, class Poner> Miembro entero(const char* nombre, ObjetoHost& o, Leer leer, Poner poner) {
    return {nombre,
            0,
            {},
            [&o, leer](Variant& v) {
                std::int16_t n = 0;
                const Estado e = (o.*leer)(&n);
                if (!fallo(e)) v = static_cast<std::int64_t>(n);
                return e;
            },
            [&o, poner](const Variant& v) {
                std::int16_t n = 0;
                const Estado e = como_entero16(v, n);
                return fallo(e) ? e : (o.*poner)(n);
            }};
}

template <class Leer, class Poner> Miembro sesion(const char* nombre, ObjetoHost& o, Leer leer, Poner poner) {
    return {nombre,
            0,
            {},
            [&o, leer](Variant& v) {
                clsConexion* db = nullptr;
                const Estado e = (o.*leer)(&db);
                if (!fallo(e)) v = db;
                return e;
            },
            [&o, poner](const Variant& v) {
                if (std::holds_alternative<std::monostate>(v)) return (o.*poner)(nullptr);
                const auto* db = std::get_if<clsConexion*>(&v);
                return db ? (o.*poner)(*db) : DISP_E_TYPEMISMATCH;
            }};
}

} // namespace

Estado como_texto(const Variant& v, std::string& texto) {
    if (const auto* t = std::get_if<std::string>(&v))
        texto = *t;
    else if (const auto* n = std::get_if<std::int64_t>(&v))
        texto = std::to_string(*n);
    else if (const auto* d = std::get_if<double>(&v)) {
        // Plain digits with the screen's decimal mark, so that an amount reads back as what it was.
        texto = reemplazar(formato(*d, std::trunc(*d) == *d ? "0" : "0.00"), ".", "");
    } else if (std::holds_alternative<std::monostate>(v))
        texto.clear();
    else
        return DISP_E_TYPEMISMATCH;
    return S_OK;
}

Estado como_entero16(const Variant& v, std::int16_t& numero) {
    std::int64_t n = 0;
    if (const auto* i = std::get_if<std::int64_t>(&v))
        n = *i;
    else if (const auto* d = std::get_if<double>(&v)) {
        if (!(std::abs(*d) < 1e9)) return DISP_E_OVERFLOW;
        n = std::llrint(*d);
    } else if (const auto* t = std::get_if<std::string>(&v)) {
        const auto [fin, error] = std::from_chars(t->data(), t->data() + t->size(), n);
        if (error != std::errc{} || fin != t->data() + t->size()) return DISP_E_TYPEMISMATCH;
    } else
        return DISP_E_TYPEMISMATCH;
    if (n < INT16_MIN || n > INT16_MAX) return DISP_E_OVERFLOW;
    numero = static_cast<std::int16_t>(n);
    return S_OK;
}

void Miembros::agregar_sesion(ObjetoHost& o) {
    using O = ObjetoHost;
    agregar(entero("glbEmpresa", o, &O::get_glbEmpresa, &O::let_glbEmpresa));
    agregar(texto("glbN_empresa", o, &O::get_glbN_empresa, &O::let_glbN_empresa));
    agregar(entero("glbUsuario", o, &O::get_glbUsuario, &O::let_glbUsuario));
    agregar(texto("glbN_usuario", o, &O::get_glbN_usuario, &O::let_glbN_usuario));
    agregar(entero("glbAlias", o, &O::get_glbAlias, &O::let_glbAlias));
    agregar(texto("glbPrograma", o, &O::get_glbPrograma, &O::let_glbPrograma));
    agregar(sesion("glbdb", o, &O::get_glbdb, &O::set_glbdb));
    agregar(sesion("glbdbReport", o, &O::get_glbdbReport, &O::set_glbdbReport));
    agregar(texto("glbPermiso", o, &O::get_glbPermiso, &O::let_glbPermiso));
    agregar(texto("glbTipoImpresora", o, &O::get_glbTipoImpresora, &O::let_glbTipoImpresora));
}

Estado Miembros::id(std::string_view nombre, int& id) const {
    for (std::size_t i = 0; i < miembros_.size(); ++i)
        if (igual_sin_caso(miembros_[i].nombre, nombre)) {
            id = static_cast<int>(i) + 1;
            return S_OK;
        }
    return DISP_E_UNKNOWNNAME;
}

Estado Miembros::llamar(int id, Llamada llamada, std::span<const Variant> argumentos,
                        Variant* resultado) const {
    if (id < 1 || id > static_cast<int>(miembros_.size())) return DISP_E_MEMBERNOTFOUND;
    const Miembro& m = miembros_[static_cast<std::size_t>(id) - 1];
    const auto cuenta = static_cast<int>(argumentos.size());
    switch (llamada) {
    case Llamada::metodo:
        if (!m.metodo) return DISP_E_MEMBERNOTFOUND;
        return cuenta == m.parametros ? m.metodo(argumentos) : DISP_E_BADPARAMCOUNT;
    case Llamada::leer:
        if (!m.leer) return DISP_E_MEMBERNOTFOUND;
        if (cuenta != 0) return DISP_E_BADPARAMCOUNT;
        return resultado ? m.leer(*resultado) : E_INVALIDARG;
    case Llamada::poner:
        if (!m.poner) return DISP_E_MEMBERNOTFOUND;
        return cuenta == 1 ? m.poner(argumentos[0]) : DISP_E_BADPARAMCOUNT;
    }
    return E_INVALIDARG;
}

} // namespace quorvel
