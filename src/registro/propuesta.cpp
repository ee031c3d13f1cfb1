#include "registro/propuesta.h"

#include "assistants/libros.h"
#include "platform/db/literal.h"
#include "registro/leer.h"
#include "text/letras_utf8.h"

#include <algorithm>
#include <set>

namespace quorvel::registro {
namespace {

constexpr std::size_t POR_BLOQUE = 50;

struct Pedido {
    std::string llave, rut, doc_libro;
    int libro;
};

bool es_configurada(const Configuracion& k, const std::string& cuenta) {
    constexpr std::string Configuracion::*CUENTAS[] = {&Configuracion::factura_cobrar,
                                                       &Configuracion::boleta_cobrar,
                                                       &Configuracion::factura_pagar,
                                                       &Configuracion::boleta_pagar,
                                                       &Configuracion::iva,
                                                       &Configuracion::otros_impuestos,
                                                       &Configuracion::iva_compra,
                                                       &Configuracion::otros_impuestos_compra};
    return std::ranges::any_of(CUENTAS, [&](auto c) { return k.*c == cuenta; });
}

/// The last voucher of one counterpart with its lines. @param numero tells whose rows these are
std::string consulta_ultimo(int empresa, const Pedido& p, bool de_la_clase, std::size_t numero) {
    const std::string e = sql_numero(empresa), n = std::to_string(numero);
    return "select " + n +
           " as pedido, d.secuencia, h.f_comp, h.documento, h.num_docum, h.concepto, d.centro, d.auxiliar,"
           " d.centro2, h.num_ref from (select f_comp, documento, num_docum, concepto, num_ref from "
           "ctcquorvel where"
           " rut_persona=" +
           sql_texto(p.rut) + " and empresa=" + e +
           " and libro=" + sql_texto(TEXTOS_LIBRO.at(static_cast<std::size_t>(p.libro))) +
           (de_la_clase ? " and doc_libro=" + sql_texto(p.doc_libro) : "") +
           " and estado='P' order by f_comp desc, documento desc, num_docum desc limit 1) h, ctdquorvel d"
           " where d.empresa=" +
           e + " and d.f_comp=h.f_comp and d.documento=h.documento and d.num_docum=h.num_docum";
}

/// The first line that is neither the counterpart's nor a tax tells account, auxiliary and cost centre.
void leer_ultimos(clsConexion& db, int empresa, const Configuracion& k, const std::vector<Pedido>& pedidos,
                  bool de_la_clase, Propuestas& propuestas) {
    for (std::size_t desde = 0; desde < pedidos.size(); desde += POR_BLOQUE) {
        std::string sql;
        for (std::size_t i = desde; i < std::min(pedidos.size(), desde + POR_BLOQUE); ++i)
            sql += (i > desde ? " union all " : "") + consulta_ultimo(empresa, pedidos[i], de_la_clase, i);
        for (const auto rs = db.NewRecord(sql + " order by 1, 2"); !rs->eof(); rs->MoveNext()) {
            const auto texto = [&](std::size_t i) { return recortar_fin(rs->at(i).text()); };
            Propuesta& p = propuestas[pedidos[static_cast<std::size_t>(rs->at(0).integer())].llave];
            if (p.de || es_configurada(k, texto(6))) continue;
            p.cuenta = texto(6);
            p.auxiliar = texto(7);
            p.centro_costo = texto(8);
            p.glosa = texto(5);
            p.folio = folio_limpio(texto(9));
            p.de = Clave{empresa, "01", rs->at(2).date().value_or(Fecha{}), texto(3), texto(4)};
        }
    }
}

} // namespace

std::string llave_propuesta(const Fila& f) {
    return std::to_string(f.doc.libro) + "|" + f.doc_libro + "|" + f.doc.rut;
}

std::string glosa_para(const Propuesta& p, const std::string& folio) {
    if (p.folio.empty()) return p.glosa;
    const auto digito = [](char c) { return c >= '0' && c <= '9'; };
    std::string glosa = p.glosa;
    for (std::size_t i = 0; (i = glosa.find(p.folio, i)) != std::string::npos;) {
        const std::size_t fin = i + p.folio.size();
        const bool entero = (i == 0 || !digito(glosa[i - 1])) && (fin == glosa.size() || !digito(glosa[fin]));
        if (entero) glosa.replace(i, p.folio.size(), folio);
        i += entero ? folio.size() : 1;
    }
    return glosa;
}

std::map<std::string, std::string> auxiliares_por_rut(clsConexion& db, const std::vector<std::string>& ruts) {
    std::map<std::string, std::string> auxiliares;
    for (std::size_t desde = 0; desde < ruts.size(); desde += POR_BLOQUE) {
        std::string formas;
        for (std::size_t i = desde; i < std::min(ruts.size(), desde + POR_BLOQUE); ++i)
            formas += (i > desde ? "," : "") + formas_de_rut(ruts[i]);
        const auto rs = db.NewRecord("select rut, auxiliar from ctxaux_cod where rut in (" + formas +
                                     ") and activo='1' order by auxiliar");
        for (; !rs->eof(); rs->MoveNext())
            auxiliares.try_emplace(rut_mostrado(rs->at(0).text()), recortar_fin(rs->at(1).text()));
    }
    return auxiliares;
}

Propuestas proponer(clsConexion& db, int empresa, const Configuracion& k, const std::vector<Fila>& filas) {
    std::map<std::string, Pedido> por_llave;
    std::set<std::string> ruts;
    for (const Fila& f : filas) {
        if (f.estado != Estado::nuevo) continue;
        const std::string llave = llave_propuesta(f);
        por_llave.try_emplace(llave, Pedido{llave, f.doc.rut, f.doc_libro, f.doc.libro});
        ruts.insert(f.doc.rut);
    }
    std::vector<Pedido> pedidos;
    for (auto& [llave, p] : por_llave) pedidos.push_back(p);
    Propuestas propuestas;
    leer_ultimos(db, empresa, k, pedidos, true, propuestas);
    std::erase_if(pedidos, [&](const Pedido& p) { return propuestas.contains(p.llave); });
    leer_ultimos(db, empresa, k, pedidos, false, propuestas);
    const auto auxiliares = auxiliares_por_rut(db, {ruts.begin(), ruts.end()});
    for (const auto& [llave, p] : por_llave) {
        const auto a = auxiliares.find(p.rut);
        propuestas[llave].aux_contraparte = a == auxiliares.end() ? "" : a->second;
    }
    return propuestas;
}

} // namespace quorvel::registro
