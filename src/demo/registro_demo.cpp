#include "demo/registro_demo.h"

#include "platform/db/literal.h"
#include "text/letras_utf8.h"
#include "voucher/iva.h"

#include <vector>

namespace quorvel::demo {
namespace {

constexpr const char* TITULOS =
    "Nro;Tipo Doc;Tipo Compra;RUT Proveedor;Razon Social;Folio;Fecha Docto;Fecha Recepcion;Fecha Acuse;Monto "
    "Exento;Monto Neto;Monto IVA Recuperable;Monto Iva No Recuperable;Codigo IVA No Rec.;Monto Total;Monto "
    "Neto Activo Fijo;IVA Activo Fijo;IVA uso Comun;Impto. Sin Derecho a Credito;IVA No Retenido;Tabacos "
    "Puros;Tabacos Cigarrillos;Tabacos Elaborados;NCE o NDE sobre Fact. de Compra;Codigo Otro Impuesto;Valor "
    "Otro Impuesto;Tasa Otro Impuesto\r\n";

struct Compra {
    int tipo = 33;
    std::string rut, nombre, folio;
    Fecha fecha;
    std::int64_t neto = 0, iva = 0, activo_fijo = 0, otro = 0;
    std::string impuesto, tasa;
    [[nodiscard]] std::int64_t total() const { return neto + iva + otro; }
};

std::vector<Compra> compras_del_mes(clsConexion& db, Fecha mes) {
    std::vector<Compra> compras;
    const auto rs =
        db.NewRecord("select rut_persona, nombre, num_ref, f_comp, monto_neto, iva_activo_fijo, t_debe, "
                     "codigo_otro_impuesto,"
                     " tasa_impuesto_otro from ctcquorvel where empresa=1 and libro='COMPRAS' and "
                     "doc_libro='F. ELECTRONICA' and"
                     " estado='P' and year(f_comp)=" +
                     sql_numero(anio(mes)) + " and month(f_comp)=" + sql_numero(::quorvel::mes(mes)) +
                     " order by f_comp, num_docum");
    for (; !rs->eof(); rs->MoveNext()) {
        const auto texto = [&](std::size_t i) { return recortar(rs->at(i).text()); };
        Compra c;
        c.rut = reemplazar(texto(0), ".", "");
        c.nombre = texto(1);
        c.folio = texto(2);
        c.fecha = rs->at(3).date().value_or(mes);
        c.neto = rs->at(4).integer();
        c.iva = iva_en_pesos(c.neto);
        c.activo_fijo = rs->at(5).integer();
        c.otro = rs->at(6).integer() - c.neto - c.iva;
        c.impuesto = texto(7);
        c.tasa = texto(8);
        compras.push_back(c);
    }
    return compras;
}

std::string linea(std::size_t nro, const Compra& c) {
    const auto n = [](std::int64_t m) { return std::to_string(m); };
    const std::string fecha = fecha_dmy(c.fecha);
    return n(static_cast<std::int64_t>(nro)) + ";" + n(c.tipo) + ";Del Giro;" + c.rut + ";" + c.nombre + ";" +
           c.folio + ";" + fecha + ";" + fecha + " 09:30:00;;0;" + n(c.neto) + ";" + n(c.iva) + ";;;" +
           n(c.total()) + ";" + (c.activo_fijo == 0 ? "" : n(c.neto)) + ";" +
           (c.activo_fijo == 0 ? "" : n(c.activo_fijo)) + ";;;;;;;;" +
           (c.otro == 0 ? ";;" : c.impuesto + ";" + n(c.otro) + ";" + c.tasa) + "\r\n";
}

/// What the books lack: new invoices of the month's suppliers, a credit note, and a supplier nobody knows.
void agregar_nuevas(std::vector<Compra>& compras) {
    constexpr std::size_t NUEVAS = 6;
    const std::size_t conocidas = compras.size();
    for (std::size_t i = 0; i < NUEVAS && i < conocidas; ++i) {
        Compra c = compras[conocidas - 1 - i];
        c.folio = std::to_string(std::stoll(c.folio) + 1000);
        c.activo_fijo = 0;
        if (i == 0) c.tipo = 61;
        compras.push_back(c);
    }
    Compra desconocida = compras.front();
    desconocida.rut = "77777777-7";
    desconocida.nombre = "Servicios Ñandú Limitada";
    desconocida.otro = 0;
    compras.push_back(desconocida);
}

} // namespace

RegistroDemo registro_demo(clsConexion& db, Fecha mes) {
    RegistroDemo r{"RCV_COMPRA_REGISTRO_76854320-8_" + reemplazar(fecha_iso(mes), "-", "").substr(0, 6) +
                       ".csv",
                   TITULOS};
    std::vector<Compra> compras = compras_del_mes(db, mes);
    if (compras.size() < 3) return r;
    agregar_nuevas(compras);
    compras.erase(compras.begin() + 1); // the books have it and the authority has not
    compras[1].neto += 10000;           // keyed in with another amount
    compras[1].iva = iva_en_pesos(compras[1].neto);
    for (std::size_t i = 0; i < compras.size(); ++i) r.bytes += linea(i + 1, compras[i]);
    return r;
}

} // namespace quorvel::demo
