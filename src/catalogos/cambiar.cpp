#include "catalogos/cambiar.h"

#include "catalogos/filas.h"
#include "platform/db/literal.h"
#include "text/cuantos.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"
#include "text/rut.h"
#include "voucher/pasos.h"

#include <algorithm>
#include <map>

namespace quorvel {
namespace {

std::string normal(const ColumnaCatalogo& x, const std::string& escrito) {
    const std::string texto = recortar(sin_controles(escrito));
    if (x.clase == Clase::digitos && !texto.empty()) return rellenar(texto, x.ceros);
    if (x.clase != Clase::rut || texto.empty()) return texto;
    const ResultadoRut r = validarut(con_guion(texto));
    return r.valido ? r.texto : texto;
}

bool solo_digitos(const std::string& texto) {
    return texto.find_first_not_of("0123456789") == std::string::npos;
}

/// What a value is not, "" when it serves.
std::string falta(clsConexion& db, const ColumnaCatalogo& x, const std::string& valor) {
    if (valor.empty()) return x.obligatoria ? "Falta" : "";
    if (largo(valor) > x.largo)
        return "Tiene más de " + cuantos(static_cast<std::int64_t>(x.largo), "letra", "letras");
    switch (x.clase) {
    case Clase::digitos: return solo_digitos(valor) ? "" : "Lleva sólo dígitos";
    case Clase::numero:
        return solo_digitos(valor) && val_entero(valor) >= 1 && val_entero(valor) <= 32767
                   ? ""
                   : "Va de 1 a 32767";
    case Clase::decimal: {
        const Decimal tasa = Decimal::leer(valor);
        return monto_sql(valor, 2) && tasa >= Decimal(0) && tasa <= Decimal(100) ? "" : "Va de 0 a 100";
    }
    case Clase::rut: return validarut(con_guion(valor)).mensaje;
    case Clase::eleccion: {
        const auto lista = opciones(db, x);
        return std::ranges::any_of(lista, [&](const Opcion& o) { return o.codigo == valor; })
                   ? ""
                   : "No existe " + valor;
    }
    default: return "";
    }
}

/// Columns with what a statement writes into them; letters of one column are one text.
std::map<std::string, std::string> escritura(clsConexion& db, const Catalogo& c, const FilaCatalogo& fila,
                                             bool nueva) {
    std::map<std::string, std::string> valores, letras;
    for (std::size_t i = 0; i < c.columnas.size(); ++i) {
        const ColumnaCatalogo& x = c.columnas[i];
        if (x.expresion != nullptr) continue;
        if (x.letra < 0) {
            valores[x.nombre] = sql_valor(x, fila[i]);
            continue;
        }
        std::string& texto = letras[x.nombre];
        if (texto.empty() && !nueva)
            texto = recortar_fin(db.NewRecord(std::string("select ") + x.nombre + " from " + c.tabla +
                                              " where" + sql_fila(c, fila[0]))
                                     ->at(0)
                                     .text());
        if (texto.empty()) texto = "11111";
        texto.resize(std::max(texto.size(), static_cast<std::size_t>(x.letra) + 1), '0');
        texto[static_cast<std::size_t>(x.letra)] = fila[i] == "1" ? '1' : '0';
    }
    for (const auto& [nombre, texto] : letras) valores[nombre] = sql_texto(texto);
    return valores;
}

void insertar(clsConexion& db, const Catalogo& c, const FilaCatalogo& fila) {
    std::string nombres, valores;
    for (const auto& [nombre, valor] : escritura(db, c, fila, true)) {
        nombres += (nombres.empty() ? "" : ",") + nombre;
        valores += (valores.empty() ? "" : ",") + valor;
    }
    exigir(db, std::string("insert into ") + c.tabla + "(" + nombres + ") values (" + valores + ")");
}

void actualizar(clsConexion& db, const Catalogo& c, const FilaCatalogo& fila) {
    std::string cambios;
    for (const auto& [nombre, valor] : escritura(db, c, fila, false))
        if (nombre != c.columnas[0].nombre) cambios += (cambios.empty() ? "" : ", ") + nombre + "=" + valor;
    exigir(db, std::string("update ") + c.tabla + " set " + cambios + " where" + sql_fila(c, fila[0]));
}

/// Takes hold of the row until the transaction ends. @return why it is not the one that was read, "" when it
/// is
std::string retener(clsConexion& db, const Catalogo& c, const FilaCatalogo& antes) {
    const std::string nombre = c.columnas[1].nombre;
    exigir(db, std::string("update ") + c.tabla + " set " + nombre + "=" + nombre + " where" +
                   sql_fila(c, antes[0]));
    const auto ahora = leer_fila(db, c, antes[0]);
    if (!ahora) return "Otro usuario ya borró " + std::string(c.singular) + " " + antes[0];
    if (*ahora != antes)
        return "Otro usuario cambió " + std::string(c.singular) + " " + antes[0] + " mientras tanto";
    return {};
}

std::string quien_lo_usa(clsConexion& db, const Catalogo& c, const FilaCatalogo& fila) {
    const ColumnaCatalogo& clave = c.columnas[0];
    const std::string codigo = sql_valor(clave, fila[0]);
    for (const UsoCatalogo& u : c.usos) {
        std::string donde = u.condicion;
        if (clave.clase != Clase::numero) donde = reemplazar(donde, "$:", sql_valor(clave, fila[0] + ":"));
        if (!db.NewRecord(std::string("select top 1 1 as uno from ") + u.tabla + " where " +
                          reemplazar(donde, "$", codigo))
                 ->eof())
            return u.texto;
    }
    return c.por_que_queda != nullptr ? c.por_que_queda(db, fila) : "";
}

} // namespace

FilaCatalogo normalizar_fila(const Catalogo& c, FilaCatalogo fila) {
    for (std::size_t i = 0; i < c.columnas.size(); ++i) fila[i] = normal(c.columnas[i], fila[i]);
    return fila;
}

std::vector<Observacion> revisar_fila(clsConexion& db, const Catalogo& c, const FilaCatalogo& fila,
                                      const FilaCatalogo& antes) {
    std::vector<Observacion> o;
    for (std::size_t i = 0; i < c.columnas.size(); ++i)
        if (const std::string no = falta(db, c.columnas[i], fila[i]); !no.empty())
            o.push_back({c.columnas[i].nombre, no});
    if (antes.empty() && o.empty() && leer_fila(db, c, fila[0]))
        o.push_back({c.columnas[0].nombre, "Ya existe " + fila[0]});
    if (c.revisar != nullptr) c.revisar(db, fila, antes, o);
    return o;
}

std::string grabar_fila(clsConexion& db, const Catalogo& c, const FilaCatalogo& fila,
                        const FilaCatalogo& antes) {
    Transaccion t{db};
    if (antes.empty()) {
        if (leer_fila(db, c, fila[0]))
            return "Otro usuario ya creó " + std::string(c.singular) + " " + fila[0];
        insertar(db, c, fila);
    } else {
        if (std::string ajena = retener(db, c, antes); !ajena.empty()) return ajena;
        actualizar(db, c, fila);
    }
    if (c.al_grabar != nullptr) c.al_grabar(db, fila);
    t.confirmar();
    return {};
}

std::string borrar_fila(clsConexion& db, const Catalogo& c, const FilaCatalogo& antes) {
    Transaccion t{db};
    if (std::string ajena = retener(db, c, antes); !ajena.empty()) return ajena;
    if (const std::string uso = quien_lo_usa(db, c, antes); !uso.empty())
        return "No se borra " + std::string(c.singular) + " " + antes[0] + ". " + uso;
    exigir(db, std::string("delete from ") + c.tabla + " where" + sql_fila(c, antes[0]));
    if (c.al_borrar != nullptr) c.al_borrar(db, antes);
    t.confirmar();
    return {};
}

} // namespace quorvel
