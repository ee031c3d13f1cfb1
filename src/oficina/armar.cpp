#include "oficina/armar.h"

#include "assistants/libros.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"
#include "text/rut.h"
#include "voucher/listas.h"

#include <algorithm>

namespace quorvel::oficina {

namespace {

/// Places of the header's fields in the file.
enum Lugar : std::size_t {
    F_COMP = 1,
    DOCUMENTO = 2,
    NUMERO = 3,
    DEBE = 5,
    CONCEPTO = 7,
    LIBRO = 8,
    RUT = 9,
    NUMERO_REF = 10,
    TIPO_DOCUMENTO = 11,
    NOMBRE = 12,
    FECHA_DOC = 13,
    NO_RECUPERABLE = 15,
    OTRO_IMPUESTO = 17,
    NORMA = 22
};
constexpr std::pair<Campo, Lugar> LUGARES[] = {
    {Campo::fecha, F_COMP},  {Campo::documento, DOCUMENTO},       {Campo::numero, NUMERO},
    {Campo::totales, DEBE},  {Campo::concepto, CONCEPTO},         {Campo::libro, LIBRO},
    {Campo::rut, RUT},       {Campo::num_ref, NUMERO_REF},        {Campo::doc_libro, TIPO_DOCUMENTO},
    {Campo::nombre, NOMBRE}, {Campo::fecha_documento, FECHA_DOC}, {Campo::norma, NORMA},
};
constexpr std::size_t DESDE_CELDA = 4; // the first cell of a row is the fifth field of its line

std::vector<std::string> codigos(clsConexion& db, const std::string& sql, const char* columna) {
    std::vector<std::string> lista;
    for (const auto rs = db.NewRecord(sql); !rs->eof(); rs->MoveNext())
        lista.push_back(recortar_fin(rs->fields(columna).Value.text()));
    return lista;
}

/// Chooses from the lists as the screen does; what is in none is told.
class Eleccion {
public:
    explicit Eleccion(const AvisoProblema& aviso) : aviso_(aviso) {}

    /// @param n characters of an entry that are its code
    template <class Lista>
    std::string codigo(const Lista& lista, std::size_t n, const std::string& valor, Lugar campo) const {
        if (valor.empty()) return {};
        for (const auto& entrada : lista)
            if (recortar(primeros(entrada, n)) == valor) return valor;
        return desconocido(valor, campo);
    }
    template <class Lista>
    std::string texto(const Lista& lista, const std::string& valor, Lugar campo) const {
        if (valor.empty()) return std::string(lista[0]);
        return std::ranges::find(lista, valor) != std::end(lista) ? valor : desconocido(valor, campo);
    }
    std::string documento(const std::vector<std::string>& lista, std::int64_t codigo) const {
        const auto d = std::ranges::find(lista, codigo, [](const auto& c) { return val_entero(c); });
        if (d != lista.end()) return *d;
        return codigo == 0 ? std::string() : desconocido(std::to_string(codigo), DOCUMENTO);
    }

private:
    std::string desconocido(const std::string& valor, Lugar campo) const {
        aviso_({LINEA_CABECERA, nombre_de_campo(NOMBRES_CABECERA, campo), "no existe \"" + valor + "\""});
        return {};
    }
    const AvisoProblema& aviso_;
};

std::string rut(const std::string& escrito, const AvisoProblema& aviso) {
    if (escrito.empty()) return {};
    const ResultadoRut r = validarut(con_guion(escrito));
    if (r.valido) return r.texto;
    aviso({LINEA_CABECERA, nombre_de_campo(NOMBRES_CABECERA, RUT), r.mensaje + " (" + escrito + ")"});
    return escrito;
}

} // namespace

Listas leer_listas(clsConexion& db) {
    Listas l;
    l.documentos = codigos(db, CONSULTA_DOCUMENTOS, "documento");
    l.otros_impuestos = codigos(db, "SELECT a.* from ctmotroimp a ", "otro_impuesto");
    const auto monedas = codigos(db, "select * from admmonedas ", "moneda");
    if (!monedas.empty()) l.moneda = recortar(primeros(monedas[0], 2));
    return l;
}

Comprobante armar_comprobante(Comprobante c, const Listas& listas, const AvisoProblema& aviso) {
    const Eleccion elegir(aviso);
    c.documento = elegir.documento(listas.documentos, val_entero(c.documento));
    c.num_docum = recortar(c.num_docum);
    c.moneda = listas.moneda;
    c.libro = elegir.texto(TEXTOS_LIBRO, c.libro, LIBRO);
    c.doc_libro = elegir.texto(DOCUMENTOS_LIBRO, c.doc_libro, TIPO_DOCUMENTO);
    c.rut_persona = rut(c.rut_persona, aviso);
    c.codigo_otro_impuesto = elegir.codigo(listas.otros_impuestos, 3, c.codigo_otro_impuesto, OTRO_IMPUESTO);
    c.codigo_no_recuperable = elegir.codigo(NO_RECUPERABLES, 2, c.codigo_no_recuperable, NO_RECUPERABLE);
    c.ifrs = elegir.codigo(NORMAS, 1, c.ifrs.empty() ? "0" : c.ifrs, NORMA);
    return c;
}

ProblemaArchivo situar(const Rechazo& r) {
    if (r.fila && r.columna)
        return {PRIMERA_LINEA_DETALLE + *r.fila,
                nombre_de_campo(NOMBRES_DETALLE, DESDE_CELDA + static_cast<std::size_t>(*r.columna)),
                r.mensaje};
    if (r.campo == Campo::detalle) return {PRIMERA_LINEA_DETALLE, "detalle", r.mensaje};
    const auto* const c = std::ranges::find(LUGARES, r.campo, &std::pair<Campo, Lugar>::first);
    if (c == std::end(LUGARES)) return {0, "", r.mensaje}; // about the company, not about the file
    return {LINEA_CABECERA, nombre_de_campo(NOMBRES_CABECERA, c->second), r.mensaje};
}

} // namespace quorvel::oficina
