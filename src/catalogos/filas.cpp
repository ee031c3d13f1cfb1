#include "catalogos/filas.h"

#include "platform/db/literal.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"

#include <algorithm>
#include <sstream>

namespace quorvel {
namespace {

constexpr int TRAMO = 500; // rows: a few milliseconds on either engine

std::string consulta(const Catalogo& c) {
    std::string columnas;
    for (const ColumnaCatalogo& x : c.columnas)
        columnas +=
            (columnas.empty() ? "" : ", ") + std::string(x.expresion != nullptr ? x.expresion : x.nombre);
    return "select " + columnas + " from " + c.tabla + " where ";
}

std::string leido(const ColumnaCatalogo& x, const Value& v) {
    const std::string texto = recortar_fin(v.text());
    if (x.clase == Clase::decimal) return reemplazar(texto, ".", ",");
    if (x.clase != Clase::marca) return texto;
    if (x.letra < 0) return texto == x.si ? "1" : "0";
    const auto i = static_cast<std::size_t>(x.letra);
    return i < texto.size() && texto[i] == '1' ? "1" : "0";
}

FilaCatalogo leida(const Catalogo& c, Recordset& rs) {
    FilaCatalogo fila;
    for (std::size_t i = 0; i < c.columnas.size(); ++i) fila.push_back(leido(c.columnas[i], rs.at(i)));
    return fila;
}

} // namespace

std::string rellenar(const std::string& digitos, std::size_t ancho) {
    return digitos.size() < ancho ? std::string(ancho - digitos.size(), '0') + digitos : digitos;
}

std::string sql_valor(const ColumnaCatalogo& x, const std::string& valor) {
    switch (x.clase) {
    case Clase::numero: return sql_numero(val_entero(valor));
    case Clase::decimal: return monto_sql(valor).value_or("0");
    case Clase::marca: return sql_texto(valor == "1" ? x.si : x.no);
    default: return sql_texto(valor);
    }
}

std::string sql_fila(const Catalogo& c, const std::string& codigo) {
    return std::string(" ") + c.columnas[0].nombre + "=" + sql_valor(c.columnas[0], codigo);
}

std::optional<FilaCatalogo> leer_fila(clsConexion& db, const Catalogo& c, const std::string& codigo) {
    const auto rs = db.NewRecord(consulta(c) + sql_fila(c, codigo));
    if (rs->eof()) return std::nullopt;
    return leida(c, *rs);
}

FilaCatalogo fila_nueva(clsConexion& db, const Catalogo& c) {
    FilaCatalogo fila;
    for (const ColumnaCatalogo& x : c.columnas)
        fila.push_back(x.clase == Clase::marca && std::string_view(x.si) == "1" ? "1" : "");
    if (c.proponer != nullptr) fila[0] = c.proponer(db);
    return fila;
}

std::vector<Opcion> opciones(clsConexion& db, const ColumnaCatalogo& columna) {
    std::vector<Opcion> lista;
    for (const auto rs = db.NewRecord(columna.opciones); !rs->eof(); rs->MoveNext())
        lista.push_back({recortar_fin(rs->at(0).text()), recortar_fin(rs->at(1).text())});
    return lista;
}

BusquedaCatalogo::BusquedaCatalogo(clsConexion& db, const Catalogo& c, const std::string& texto,
                                   std::string elegido)
    : db_(db), c_(c), elegido_(std::move(elegido)) {
    std::istringstream palabras(sin_acentos(texto));
    for (std::string palabra; palabras >> palabra;) palabras_.push_back(palabra);
}

bool BusquedaCatalogo::tiene(const FilaCatalogo& fila) const {
    if (palabras_.empty()) return true;
    std::string todo;
    for (std::size_t i = 0; i < fila.size(); ++i) {
        if (c_.columnas[i].clase == Clase::marca) continue;
        todo += "\n" + sin_acentos(fila[i]);
        if (c_.columnas[i].clase == Clase::rut) todo += "\n" + reemplazar(minusculas(fila[i]), ".", "");
    }
    return std::ranges::all_of(palabras_,
                               [&](const std::string& p) { return todo.find(p) != std::string::npos; });
}

std::vector<FilaCatalogo> BusquedaCatalogo::seguir() {
    std::vector<FilaCatalogo> halladas;
    if (terminada_) return halladas;
    const ColumnaCatalogo& clave = c_.columnas[0];
    std::string sql = consulta(c_) + "1=1";
    if (c_.elige >= 0 && !elegido_.empty()) {
        const ColumnaCatalogo& x = c_.columnas[static_cast<std::size_t>(c_.elige)];
        sql += std::string(" and ") + x.nombre + "=" + sql_valor(x, elegido_);
    }
    if (ultimo_) sql += std::string(" and ") + clave.nombre + ">" + sql_valor(clave, *ultimo_);
    int filas = 0;
    for (const auto rs = db_.NewRecord(sql + " order by " + clave.nombre + " limit " + std::to_string(TRAMO));
         !rs->eof(); rs->MoveNext(), ++filas) {
        FilaCatalogo fila = leida(c_, *rs);
        ultimo_ = fila[0];
        if (tiene(fila)) halladas.push_back(std::move(fila));
    }
    terminada_ = filas < TRAMO;
    return halladas;
}

} // namespace quorvel
