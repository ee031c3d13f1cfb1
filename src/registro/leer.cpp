#include "registro/leer.h"

#include "assistants/libros.h"
#include "platform/files/tabla_csv.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"
#include "text/rut.h"

#include <algorithm>
#include <array>
#include <map>
#include <regex>

namespace quorvel::registro {
namespace {

using D = Documento;

enum Formato : unsigned { REGISTRO = 1, NO_INCLUIR = 2, RECLAMADO = 4, PENDIENTE = 8, VENTA = 16 };
constexpr unsigned COMPRA = REGISTRO | NO_INCLUIR | RECLAMADO | PENDIENTE, TODOS = COMPRA | VENTA;

struct Tipo {
    Formato formato;
    int libro;
    Situacion situacion;
    const char* nombre;
};
constexpr Tipo TIPOS[] = {{REGISTRO, COMPRAS, Situacion::registro, "compras"},
                          {NO_INCLUIR, COMPRAS, Situacion::no_incluir, "compras que no se incluyen"},
                          {RECLAMADO, COMPRAS, Situacion::reclamado, "compras reclamadas"},
                          {PENDIENTE, COMPRAS, Situacion::pendiente, "compras pendientes"},
                          {VENTA, VENTAS, Situacion::registro, "ventas"}};

/// A column of the files: which of them have it, and where its value goes.
struct Columna {
    const char* titulo; ///< lower case, without accents
    unsigned formatos;
    std::string D::*texto = nullptr;
    std::int64_t D::*monto = nullptr;
    std::optional<Fecha> D::*fecha = nullptr;
};
constexpr Columna COLUMNAS[] = {
    {"nro", TODOS, &D::nro},
    {"tipo doc", TODOS, &D::tipo},
    {"tipo compra", COMPRA},
    {"tipo venta", VENTA},
    {"rut proveedor", COMPRA, &D::rut},
    {"rut cliente", VENTA, &D::rut},
    {"razon social", TODOS, &D::nombre},
    {"folio", TODOS, &D::folio},
    {"fecha docto", TODOS, nullptr, nullptr, &D::fecha},
    {"fecha recepcion", TODOS, nullptr, nullptr, &D::recepcion},
    {"fecha acuse", REGISTRO | NO_INCLUIR},
    {"fecha acuse recibo", VENTA},
    {"fecha reclamo", RECLAMADO | VENTA},
    {"monto exento", TODOS, nullptr, &D::exento},
    {"monto neto", TODOS, nullptr, &D::neto},
    {"monto iva recuperable", COMPRA, nullptr, &D::iva},
    {"monto iva", VENTA, nullptr, &D::iva},
    {"monto iva no recuperable", COMPRA, nullptr, &D::iva_no_recuperable},
    {"codigo iva no rec.", COMPRA, &D::codigo_no_recuperable},
    {"monto total", TODOS, nullptr, &D::total},
    {"monto neto activo fijo", COMPRA, nullptr, &D::neto_activo_fijo},
    {"iva activo fijo", COMPRA, nullptr, &D::iva_activo_fijo},
    {"iva uso comun", COMPRA, nullptr, &D::iva_uso_comun},
    {"impto. sin derecho a credito", COMPRA, nullptr, &D::sin_credito},
    {"iva no retenido", COMPRA | VENTA},
    {"tabacos puros", REGISTRO, nullptr, &D::tabacos_puros},
    {"tabacos cigarrillos", REGISTRO, nullptr, &D::cigarrillos},
    {"tabacos elaborados", REGISTRO, nullptr, &D::tabacos_elaborados},
    {"nce o nde sobre fact. de compra", TODOS},
    {"codigo otro impuesto", COMPRA, &D::codigo_otro},
    {"valor otro impuesto", COMPRA, &D::valor_otro},
    {"tasa otro impuesto", COMPRA, &D::tasa_otro},
    {"iva retenido total", VENTA, nullptr, &D::retenido_total},
    {"iva retenido parcial", VENTA, nullptr, &D::retenido_parcial},
    {"iva propio", VENTA},
    {"iva terceros", VENTA},
    {"rut emisor liquid. factura", VENTA},
    {"neto comision liquid. factura", VENTA},
    {"exento comision liquid. factura", VENTA},
    {"iva comision liquid. factura", VENTA},
    {"iva fuera de plazo", VENTA},
    {"tipo docto. referencia", VENTA},
    {"folio docto. referencia", VENTA},
    {"num. ident. receptor extranjero", VENTA},
    {"nacionalidad receptor extranjero", VENTA},
    {"credito empresa constructora", VENTA},
    {"impto. zona franca (ley 18211)", VENTA},
    {"garantia dep. envases", VENTA},
    {"indicador venta sin costo", VENTA},
    {"indicador servicio periodico", VENTA},
    {"monto no facturable", VENTA},
    {"total monto periodo", VENTA},
    {"venta pasajes transporte nacional", VENTA},
    {"venta pasajes transporte internacional", VENTA},
    {"numero interno", VENTA},
    {"codigo sucursal", VENTA},
    {"codigo otro imp.", VENTA, &D::codigo_otro},
    {"valor otro imp.", VENTA, &D::valor_otro},
    {"tasa otro imp.", VENTA, &D::tasa_otro},
};

std::vector<std::string> faltan(const std::vector<std::string>& titulos, Formato f) {
    std::vector<std::string> lista;
    for (const Columna& c : COLUMNAS)
        if ((c.formatos & f) != 0 && std::ranges::find(titulos, c.titulo) == titulos.end())
            lista.emplace_back(c.titulo);
    return lista;
}

/// Titles that the file has and the kind has not, one that stands twice included.
std::vector<std::string> sobran(const std::vector<std::string>& titulos, Formato f) {
    std::vector<std::string> lista;
    for (auto t = titulos.begin(); t != titulos.end(); ++t) {
        const auto* const c = std::ranges::find(COLUMNAS, *t, &Columna::titulo);
        const bool conocido = c != std::end(COLUMNAS) && (c->formatos & f) != 0;
        if (!conocido || std::find(titulos.begin(), t, *t) != t) lista.push_back(*t);
    }
    return lista;
}

std::string unidos(const std::vector<std::string>& textos) {
    constexpr std::size_t BASTAN = 5;
    std::string unido;
    for (std::size_t i = 0; i < std::min(textos.size(), BASTAN); ++i)
        unido += (i > 0 ? ", " : "") + primeros(textos[i], 40);
    return textos.size() > BASTAN ? unido + " y " + std::to_string(textos.size() - BASTAN) + " más" : unido;
}

/// The kind of file whose titles these are.
const Tipo& tipo_de(std::vector<std::string> titulos) {
    while (!titulos.empty() && titulos.back().empty()) titulos.pop_back();
    const Tipo* mejor = nullptr;
    std::size_t menos = SIZE_MAX;
    for (const Tipo& t : TIPOS) {
        const std::size_t distancia = faltan(titulos, t.formato).size() + sobran(titulos, t.formato).size();
        if (distancia == 0) return t;
        if (distancia >= menos) continue;
        menos = distancia;
        mejor = &t;
    }
    if (menos > std::size(COLUMNAS) / 3)
        throw ErrorRegistro("No es un archivo del registro de compras y ventas");
    const auto f = faltan(titulos, mejor->formato), s = sobran(titulos, mejor->formato);
    throw ErrorRegistro("Parece el registro de " + std::string(mejor->nombre) +
                        ", pero sus columnas son otras." + (f.empty() ? "" : " Faltan: " + unidos(f) + ".") +
                        (s.empty() ? "" : " No se conocen: " + unidos(s) + "."));
}

bool digitos(std::string_view t) {
    return !t.empty() && std::ranges::all_of(t, [](char c) { return c >= '0' && c <= '9'; });
}

/// "-" and "null" are how the files write nothing.
std::string valor_de(std::string_view celda) {
    std::string v = recortar(celda);
    return v == "-" || igual_sin_caso(v, "null") ? std::string() : v;
}

std::optional<std::int64_t> monto_de(const std::string& v) {
    const std::string_view sin_signo = std::string_view(v).substr(v.starts_with('-') ? 1 : 0);
    if (!digitos(sin_signo) || sin_signo.size() > CIFRAS_MONTO) return std::nullopt;
    return std::stoll(v);
}

/// Rates come with as many decimals as a binary fraction has.
bool es_tasa(const std::string& v) {
    static const std::regex tasa(R"(\d{1,3}(\.\d{1,15})?)");
    return std::regex_match(v, tasa);
}

class Lector {
public:
    Lector(Archivo& a, const TablaCsv& tabla, const Tipo& tipo) : a_(a), tabla_(tabla) {
        for (const std::string& t : tabla.titulos) {
            const auto* const c = std::ranges::find(COLUMNAS, t, &Columna::titulo);
            columnas_.push_back(c != std::end(COLUMNAS) && (c->formatos & tipo.formato) != 0 ? c : nullptr);
        }
    }
    void leer() {
        for (const FilaCsv& f : tabla_.filas) agregar(documento(f));
    }

private:
    static void falla(D& d, const std::string& que) {
        if (d.problema.empty()) d.problema = que;
    }

    void poner(D& d, const Columna& c, const std::string& v) {
        if (c.texto != nullptr) d.*c.texto = v;
        if (v.empty()) return;
        if (c.monto != nullptr) {
            const auto n = monto_de(v);
            if (!n)
                return falla(d,
                             std::string(c.titulo) + ": \"" + primeros(v, 30) + "\" no es un monto en pesos");
            d.*c.monto = *n;
        }
        if (c.fecha != nullptr) {
            d.*c.fecha = leer_fecha(primeros(v, 10));
            if (!(d.*c.fecha))
                falla(d, std::string(c.titulo) + ": \"" + primeros(v, 30) + "\" no es una fecha");
        }
    }

    D documento(const FilaCsv& f) {
        D d;
        d.libro = a_.libro;
        d.situacion = a_.situacion;
        d.archivo = a_.nombre;
        d.linea = f.linea;
        const std::size_t n = std::min(f.celdas.size(), columnas_.size());
        for (std::size_t i = 0; i < n; ++i)
            if (columnas_[i] != nullptr) poner(d, *columnas_[i], sin_controles(valor_de(f.celdas[i])));
        for (std::size_t i = n; i < f.celdas.size(); ++i)
            if (!valor_de(f.celdas[i]).empty()) falla(d, "La línea tiene más campos que columnas el archivo");
        for (std::size_t i = n; i < columnas_.size(); ++i)
            if (columnas_[i] != nullptr && columnas_[i]->monto == &D::total)
                falla(d, "La línea está incompleta: le faltan campos");
        const ResultadoRut rut = validarut(con_guion(d.rut));
        if (rut.valido)
            d.rut = rut.texto;
        else
            falla(d, rut.mensaje + " (" + primeros(d.rut, 20) + ")");
        d.folio = folio_limpio(d.folio);
        tomar_impuesto(d);
        return d;
    }

    void tomar_impuesto(D& d) {
        if (d.codigo_otro.empty() && d.valor_otro.empty()) return;
        const auto valor = d.valor_otro.empty() ? std::optional<std::int64_t>(0) : monto_de(d.valor_otro);
        if (!valor)
            return falla(d, "valor otro impuesto: \"" + primeros(d.valor_otro, 30) +
                                "\" no es un monto en pesos");
        if (!d.tasa_otro.empty() && !es_tasa(d.tasa_otro))
            return falla(d, "tasa otro impuesto: \"" + primeros(d.tasa_otro, 30) + "\" no es una tasa");
        if (*valor != 0) d.otros.push_back({d.codigo_otro, *valor, d.tasa_otro});
    }

    /// A line without a number of its own goes on with the document that it names.
    void agregar(D&& d) {
        const std::array<std::string, 3> llave{d.tipo, d.rut, d.folio};
        const auto conocido = ultimos_.find(llave);
        if (d.nro.empty() && d.total == 0 && conocido != ultimos_.end()) {
            D& base = a_.documentos[conocido->second];
            if (base.otros.size() + d.otros.size() > IMPUESTOS_DOCUMENTO)
                return falla(base, "El documento tiene demasiados impuestos");
            base.otros.insert(base.otros.end(), d.otros.begin(), d.otros.end());
            return falla(base, d.problema);
        }
        if (a_.documentos.size() == DOCUMENTOS_ARCHIVO) throw ErrorRegistro(DEMASIADOS_DOCUMENTOS);
        if (d.nro.empty() && d.total == 0 && !d.otros.empty())
            falla(d, "Línea de otro impuesto sin el documento al que pertenece");
        ultimos_[llave] = a_.documentos.size();
        a_.documentos.push_back(std::move(d));
    }

    Archivo& a_;
    const TablaCsv& tabla_;
    std::vector<const Columna*> columnas_; ///< of each cell
    std::map<std::array<std::string, 3>, std::size_t> ultimos_;
};

/// What the usual name tells: state, owner, month.
void leer_nombre(Archivo& a) {
    static const std::regex propio(R"((\d{7,8}-[0-9kK])[_ ])"), del_mes(R"((20\d\d(0[1-9]|1[0-2]))\D*$)");
    std::smatch m;
    if (std::regex_search(a.nombre, m, propio)) a.rut = rut_mostrado(m[1].str());
    if (std::regex_search(a.nombre, m, del_mes)) a.mes = leer_mes(m[1].str());
}

} // namespace

const char* texto(Situacion s) {
    static constexpr const char* TEXTOS[] = {"registro", "pendiente", "no incluir", "reclamado"};
    return TEXTOS[static_cast<std::size_t>(s)];
}

std::string texto(Mes m) {
    if (m.anio == 0) return "";
    return (m.mes < 10 ? "0" : "") + std::to_string(m.mes) + "/" + std::to_string(m.anio);
}

Mes leer_mes(std::string_view t) {
    static const std::regex barra(R"((\d{1,2})[/-](20\d\d))"), junto(R"((20\d\d)(\d\d))");
    const std::string s = recortar(t);
    std::smatch m;
    Mes mes;
    if (std::regex_match(s, m, barra))
        mes = {std::stoi(m[2]), std::stoi(m[1])};
    else if (std::regex_match(s, m, junto))
        mes = {std::stoi(m[1]), std::stoi(m[2])};
    return mes.mes >= 1 && mes.mes <= 12 ? mes : Mes{};
}

std::string rut_mostrado(std::string_view rut) {
    const ResultadoRut r = validarut(con_guion(rut));
    return r.valido ? r.texto : recortar(rut);
}

std::string folio_limpio(std::string_view folio) {
    std::string f = recortar(folio);
    f.erase(0, std::min(f.find_first_not_of('0'), f.size()));
    return f;
}

Archivo leer_registro(const std::string& nombre, std::string_view bytes) {
    if (bytes.size() > BYTES_REGISTRO) throw ErrorRegistro("El archivo es demasiado grande para un registro");
    Archivo a;
    a.nombre = nombre.substr(nombre.find_last_of('/') + 1);
    const TablaCsv tabla = leer_tabla_csv(bytes);
    if (tabla.byte_ajeno)
        throw ErrorRegistro("Línea " + std::to_string(*tabla.byte_ajeno) +
                            ": hay un byte que no es ninguna letra");
    if (tabla.comilla_abierta)
        throw ErrorRegistro("Línea " + std::to_string(*tabla.comilla_abierta) +
                            ": hay una comilla que no se cierra");
    const Tipo& tipo = tipo_de(tabla.titulos);
    a.libro = tipo.libro;
    a.situacion = tipo.situacion;
    leer_nombre(a);
    Lector(a, tabla, tipo).leer();
    if (a.mes.anio == 0)
        for (const D& d : a.documentos)
            if (d.fecha) a.mes = std::max(a.mes, Mes{anio(*d.fecha), mes(*d.fecha)});
    return a;
}

} // namespace quorvel::registro
