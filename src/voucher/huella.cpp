#include "voucher/huella.h"

#include "text/fnv.h"
#include "voucher/cargar.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace quorvel {
namespace {

constexpr std::array COLUMNAS{"concepto",
                              "t_debe",
                              "t_haber",
                              "f_ult_modificacion",
                              "usuario",
                              "estado",
                              "libro",
                              "doc_libro",
                              "num_ref",
                              "fecha_factura",
                              "fecha_pago",
                              "rut_persona",
                              "nombre",
                              "apertura",
                              "monto_neto",
                              "monto_exento",
                              "codigo_otro_impuesto",
                              "tasa_impuesto_otro",
                              "activo_fijo",
                              "codigo_no_recuperable",
                              "ifrs",
                              "comprobante_adjunto",
                              "nro_correlativo",
                              "iva_activo_fijo"};

/// Collects values in the one form that both engines give back.
class Rasgos {
public:
    void agregar(std::string_view valor) {
        if (valor.find('\0') != std::string_view::npos) { // as a literal writes it
            std::string escrito(valor);
            std::ranges::replace(escrito, '\0', ' ');
            return agregar(escrito);
        }
        while (valor.ends_with(' ')) valor.remove_suffix(1);
        huella_ = fnv1a(FIN, fnv1a(valor, huella_));
    }
    void agregar(std::optional<Fecha> fecha) { agregar(fecha ? fecha_iso(*fecha) : std::string()); }
    /// One engine keeps a rate as text, the other in binary.
    void agregar_tasa(const std::string& sql) {
        char digitos[32];
        std::snprintf(digitos, sizeof digitos, "%.15g", std::strtod(sql.c_str(), nullptr));
        agregar(std::string_view(digitos));
    }
    void agregar_adjunto(const std::string& nombre) { agregar('/' + nombre); } // no cell of a line
    [[nodiscard]] std::string huella() const { return std::to_string(huella_); }

private:
    static constexpr std::string_view FIN{"\0", 1};
    std::uint64_t huella_ = fnv1a({});
};

void agregar_linea(Rasgos& r, const Linea& l) {
    const std::string debe = std::to_string(monto_guardado(l.debe)),
                      haber = std::to_string(monto_guardado(l.haber));
    const std::string glosa = glosa_guardada(l.glosa), tasa = tasa_guardada(l.tasa_impuesto_otro);
    for (const std::string* celda : {&l.centro, &l.auxiliar, &debe, &haber, &glosa, &l.centro2, &l.conciliado,
                                     &l.num_ref, &l.codigo_otro_impuesto, &tasa})
        r.agregar(*celda);
}

} // namespace

std::string huella_guardada(clsConexion& db, Recordset& cabecera, const Clave& clave) {
    Rasgos r;
    for (const char* columna : COLUMNAS) r.agregar(cabecera.fields(columna).Value.text());
    r.agregar_tasa(cabecera.fields("cotizacion").Value.text());
    const std::int64_t conjunto = cabecera.fields("comprobante_adjunto").Value.integer();
    for (const auto rs = db.NewRecord(consulta_contenido(clave, conjunto)); !rs->eof(); rs->MoveNext()) {
        const bool adjunto = rs->at(0).integer() == 2;
        if (adjunto) r.agregar_adjunto(rs->at(2).text());
        for (std::size_t i = 2; !adjunto && i < rs->columns().size(); ++i) r.agregar(rs->at(i).text());
    }
    return r.huella();
}

std::string huella_escrita(const Comprobante& c, const ImportesSql& m, Fecha hoy) {
    Rasgos r;
    for (const std::string& texto :
         {c.concepto, std::to_string(m.t_debe), std::to_string(m.t_haber), fecha_iso(hoy),
          std::to_string(c.usuario), std::string("P"), c.libro, c.doc_libro, c.num_ref})
        r.agregar(texto);
    r.agregar(c.fecha_factura);
    r.agregar(c.fecha_pago);
    for (const std::string& texto :
         {c.rut_persona, c.nombre, std::to_string(c.apertura), std::to_string(c.monto_neto.pesos()),
          std::to_string(c.monto_exento.pesos()), c.codigo_otro_impuesto, tasa_guardada(c.tasa_impuesto_otro),
          std::to_string(c.activo_fijo), c.codigo_no_recuperable, c.ifrs, std::to_string(m.conjunto),
          std::to_string(c.nro_correlativo), std::to_string(c.iva_activo_fijo)})
        r.agregar(texto);
    r.agregar_tasa(c.cotizacion.plano());
    for (const Linea& l : c.lineas) agregar_linea(r, l);
    for (const std::string& nombre : c.adjuntos) r.agregar_adjunto(nombre);
    return r.huella();
}

} // namespace quorvel
