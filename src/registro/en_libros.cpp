#include "registro/en_libros.h"

#include "assistants/libros.h"
#include "platform/db/literal.h"
#include "registro/leer.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"

#include <algorithm>
#include <unordered_map>

namespace quorvel::registro {
namespace {

/// Headers of valid vouchers, the lines with them. The outer join keeps an engine without statistics from
/// starting at the lines.
constexpr const char* LINEAS_DE =
    "select c.f_comp, c.documento, c.num_docum, c.subsistema, c.libro, c.doc_libro, c.rut_persona, c.num_ref,"
    " c.nombre, c.fecha_factura, c.monto_neto, c.monto_exento, d.centro, d.debe_nacional, d.haber_nacional "
    "from (";
constexpr const char* UNIDAS =
    ") c left join ctdquorvel d on d.empresa=c.empresa and d.f_comp=c.f_comp and d.documento=c.documento and"
    " d.num_docum=c.num_docum";

std::string cabeceras(int empresa) {
    return "select empresa, f_comp, documento, num_docum, subsistema, libro, doc_libro, rut_persona, "
           "num_ref, nombre,"
           " fecha_factura, monto_neto, monto_exento from ctcquorvel where empresa=" +
           sql_numero(empresa) + " and estado='P'";
}

int libro_de(const std::string& texto) {
    const auto i = std::ranges::find(TEXTOS_LIBRO, texto);
    return static_cast<int>(i - TEXTOS_LIBRO.begin());
}

/// The configured accounts that tell a line's part in its document.
struct CuentasLibro {
    const std::string &iva, &otros, &factura, &boleta;
    int signo; ///< of a debit on the VAT account
};
CuentasLibro cuentas_de(const Configuracion& k, int libro) {
    if (libro == VENTAS) return {k.iva, k.otros_impuestos, k.factura_cobrar, k.boleta_cobrar, -1};
    return {k.iva_compra, k.otros_impuestos_compra, k.factura_pagar, k.boleta_pagar, 1};
}

class Lectura {
public:
    Lectura(int empresa, const Configuracion& k) : empresa_(empresa), k_(k) {}
    void leer(clsConexion& db, const std::string& cabeceras) {
        std::string antes;
        std::size_t lugar = 0;
        for (const auto rs = db.NewRecord(LINEAS_DE + cabeceras + UNIDAS); !rs->eof(); rs->MoveNext()) {
            std::string llave = rs->at(0).text() + "|" + rs->at(1).text() + "|" + rs->at(2).text();
            if (llave != antes) { // an engine may hand over a voucher's lines apart
                const auto [i, nuevo] = lugares_.try_emplace(llave, leidos_.size());
                if (nuevo) leidos_.push_back(cabecera(*rs));
                lugar = i->second;
                antes = std::move(llave);
            }
            sumar(leidos_[lugar], recortar_fin(rs->at(12).text()),
                  rs->at(13).integer() - rs->at(14).integer());
        }
    }
    std::vector<EnLibros> resultado() {
        for (EnLibros& e : leidos_) {
            e.deducido = e.neto == 0 && e.exento == 0;
            if (!e.deducido) continue;
            const bool exenta = e.doc_libro.find("EXENTA") != std::string::npos;
            (exenta ? e.exento : e.neto) = e.total - e.iva - e.otro;
        }
        return std::move(leidos_);
    }

private:
    EnLibros cabecera(Recordset& rs) {
        const auto texto = [&](std::size_t i) { return recortar_fin(rs.at(i).text()); };
        EnLibros e;
        e.clave = {empresa_, texto(3), rs.at(0).date().value_or(Fecha{}), texto(1), texto(2)};
        e.libro = libro_de(texto(4));
        e.doc_libro = texto(5);
        const auto [rut, nuevo] = ruts_.try_emplace(rs.at(6).text());
        if (nuevo) rut->second = rut_mostrado(rut->first);
        e.rut = rut->second;
        e.folio = folio_limpio(rs.at(7).text());
        e.nombre = recortar(rs.at(8).text());
        e.fecha = rs.at(9).date();
        e.neto = rs.at(10).integer();
        e.exento = rs.at(11).integer();
        return e;
    }
    void sumar(EnLibros& e, const std::string& cuenta, std::int64_t debe) const {
        const CuentasLibro c = cuentas_de(k_, e.libro);
        const std::int64_t signo = es_nota_credito(e.doc_libro) ? -c.signo : c.signo;
        if (cuenta == c.factura || cuenta == c.boleta)
            e.total -= signo * debe;
        else if (cuenta == c.iva)
            e.iva += signo * debe;
        else if (cuenta == c.otros)
            e.otro += signo * debe;
    }

    int empresa_;
    const Configuracion& k_;
    std::vector<EnLibros> leidos_;
    std::unordered_map<std::string, std::size_t> lugares_; ///< of a voucher among those read
    std::unordered_map<std::string, std::string> ruts_;    ///< as stored and as shown
};

/// Folios as typed with zeros in front, up to the length that the tax authority's have.
void agregar_formas(std::string& lista, std::string folio) {
    constexpr std::size_t LARGO_FOLIO = 10;
    do lista += (lista.empty() ? "" : ",") + sql_texto(folio);
    while ((folio.insert(0, "0")).size() <= LARGO_FOLIO);
}

} // namespace

std::string texto(const Clave& k) { return k.documento + "-" + k.num_docum + " del " + fecha_dmy(k.f_comp); }

std::string identidad(int libro, const std::string& doc_libro, const std::string& rut,
                      const std::string& folio) {
    return std::to_string(libro) + "|" + doc_libro + "|" + rut + "|" + folio;
}

std::string formas_de_rut(const std::string& rut) {
    const std::string liso = reemplazar(rut, ".", "");
    std::string formas = sql_texto(rut);
    for (const std::string& f : {liso, reemplazar(liso, "-", ""), minusculas(liso)})
        if (formas.find(sql_texto(f)) == std::string::npos) formas += "," + sql_texto(f);
    return formas;
}

std::optional<Clave> comprobante_del_conjunto(clsConexion& db, const std::string& conjunto) {
    const auto rs =
        db.NewRecord("select top 1 empresa, subsistema, f_comp, documento, num_docum from ctcquorvel"
                     " where comprobante_adjunto=" +
                     sql_numero(val_entero(conjunto)));
    if (rs->eof()) return std::nullopt;
    const auto texto = [&](std::size_t i) { return recortar_fin(rs->at(i).text()); };
    return Clave{static_cast<int>(rs->at(0).integer()), texto(1), rs->at(2).date().value_or(Fecha{}),
                 texto(3), texto(4)};
}

std::vector<EnLibros> documentos_del_mes(clsConexion& db, int empresa, const Configuracion& k, int libro,
                                         Mes m) {
    Lectura l(empresa, k);
    l.leer(db, cabeceras(empresa) +
                   " and libro=" + sql_texto(TEXTOS_LIBRO.at(static_cast<std::size_t>(libro))) +
                   " and year(f_comp)=" + sql_numero(m.anio) + " and month(f_comp)=" + sql_numero(m.mes));
    return l.resultado();
}

std::vector<EnLibros> documentos_buscados(clsConexion& db, int empresa, const Configuracion& k,
                                          std::vector<Buscado> buscados) {
    constexpr std::size_t RUTS = 60, FOLIOS = 400; // of one statement
    const auto llave = [](const Buscado& b) { return std::pair(b.rut, b.folio); };
    std::ranges::sort(buscados, {}, llave);
    const auto repetidos = std::ranges::unique(buscados, {}, llave); // a voucher's lines come once
    buscados.erase(repetidos.begin(), repetidos.end());
    Lectura l(empresa, k);
    for (auto b = buscados.begin(); b != buscados.end();) {
        std::string sql;
        std::size_t ruts = 0, folios = 0;
        for (; b != buscados.end() && ruts < RUTS && folios < FOLIOS; ++ruts) {
            const std::string& rut = b->rut;
            std::string lista;
            for (; b != buscados.end() && b->rut == rut && folios < FOLIOS; ++b, ++folios)
                agregar_formas(lista, b->folio);
            sql += (ruts > 0 ? " union all " : "") + cabeceras(empresa) + " and num_ref in (" + lista +
                   ") and rut_persona in (" + formas_de_rut(rut) + ")";
        }
        l.leer(db, sql);
    }
    return l.resultado();
}

} // namespace quorvel::registro
