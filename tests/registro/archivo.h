#pragma once
// Register files for tests, written from named fields; the titles are those of the tax authority's files.
#include <map>
#include <string>
#include <vector>

namespace quorvel::pruebas {

inline constexpr const char* COMPRAS_REGISTRO =
    "Nro;Tipo Doc;Tipo Compra;RUT Proveedor;Razon Social;Folio;Fecha Docto;Fecha Recepcion;Fecha Acuse;Monto "
    "Exento;Monto Neto;Monto IVA Recuperable;Monto Iva No Recuperable;Codigo IVA No Rec.;Monto Total;Monto "
    "Neto Activo Fijo;IVA Activo Fijo;IVA uso Comun;Impto. Sin Derecho a Credito;IVA No Retenido;Tabacos "
    "Puros;Tabacos Cigarrillos;Tabacos Elaborados;NCE o NDE sobre Fact. de Compra;Codigo Otro Impuesto;Valor "
    "Otro Impuesto;Tasa Otro Impuesto";
inline constexpr const char* VENTAS_REGISTRO =
    "Nro;Tipo Doc;Tipo Venta;Rut cliente;Razon Social;Folio;Fecha Docto;Fecha Recepcion;Fecha Acuse "
    "Recibo;Fecha Reclamo;Monto Exento;Monto Neto;Monto IVA;Monto total;IVA Retenido Total;IVA Retenido "
    "Parcial;IVA no retenido;IVA propio;IVA Terceros;RUT Emisor Liquid. Factura;Neto Comision Liquid. "
    "Factura;Exento Comision Liquid. Factura;IVA Comision Liquid. Factura;IVA fuera de plazo;Tipo Docto. "
    "Referencia;Folio Docto. Referencia;Num. Ident. Receptor Extranjero;Nacionalidad Receptor "
    "Extranjero;Credito empresa constructora;Impto. Zona Franca (Ley 18211);Garantia Dep. Envases;Indicador "
    "Venta sin Costo;Indicador Servicio Periodico;Monto No facturable;Total Monto Periodo;Venta Pasajes "
    "Transporte Nacional;Venta Pasajes Transporte Internacional;Numero Interno;Codigo Sucursal;NCE o NDE "
    "sobre Fact. de Compra;Codigo Otro Imp.;Valor Otro Imp.;Tasa Otro Imp.";

inline std::vector<std::string> partes(const std::string& texto) {
    std::vector<std::string> lista{""};
    for (const char c : texto) c == ';' ? void(lista.emplace_back()) : void(lista.back() += c);
    return lista;
}

/// The titles without these columns, and with others in their place.
inline std::string titulos_sin(const std::vector<std::string>& fuera,
                               std::string titulos = COMPRAS_REGISTRO) {
    std::string resto;
    for (const std::string& t : partes(titulos)) {
        bool queda = true;
        for (const std::string& f : fuera) queda = queda && t.rfind(f, 0) != 0;
        if (queda) resto += (resto.empty() ? "" : ";") + t;
    }
    return resto;
}

using Campos = std::map<std::string, std::string>;
/// A line with these fields, the others empty.
inline std::string linea(const std::string& titulos, const Campos& campos) {
    std::string texto;
    for (const std::string& t : partes(titulos)) {
        const auto c = campos.find(t);
        texto += (texto.empty() && t == "Nro" ? "" : ";") + (c == campos.end() ? std::string() : c->second);
    }
    return texto + "\r\n";
}
/// A purchase of one net amount with its VAT. @param otros fields that differ or are added
inline std::string compra_de(int nro, const std::string& rut, const std::string& folio, long neto,
                             const Campos& otros = {}, const std::string& fecha = "10/03/2024") {
    const long iva = (neto * 19 + 50) / 100;
    Campos c{{"Nro", std::to_string(nro)},
             {"Tipo Doc", "33"},
             {"Tipo Compra", "Del Giro"},
             {"RUT Proveedor", rut},
             {"Razon Social", " Ferretería El Roble SpA "},
             {"Folio", folio},
             {"Fecha Docto", fecha},
             {"Fecha Recepcion", fecha + " 10:11:12"},
             {"Monto Exento", "0"},
             {"Monto Neto", std::to_string(neto)},
             {"Monto IVA Recuperable", std::to_string(iva)},
             {"Monto Total", std::to_string(neto + iva)}};
    for (const auto& [campo, valor] : otros) c[campo] = valor;
    return linea(COMPRAS_REGISTRO, c);
}

/// An electronic invoice. @param cambios replaced in its text: {what, by what}
inline std::string factura_electronica(const Campos& cambios = {}) {
    std::string xml =
        "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<DTE xmlns=\"http://www.sii.cl/SiiDte\"><Documento "
        "ID=\"F1\">"
        "<Encabezado><IdDoc><TipoDTE>33</TipoDTE><Folio>0077</Folio><FchEmis>2024-03-10</FchEmis></IdDoc>"
        "<Emisor><RUTEmisor>76418352-5</RUTEmisor><RznSoc>Ferretería El Roble &amp; Cía.</RznSoc></Emisor>"
        "<Receptor><RUTRecep>76111222-8</RUTRecep><RznSocRecep>Empresa de Prueba</RznSocRecep></Receptor>"
        "<Totales><MntNeto>1000</MntNeto><MntExe>50</MntExe><TasaIVA>19</TasaIVA><IVA>190</IVA>"
        "<ImptoReten><TipoImp>24</TipoImp><TasaImp>31.5</TasaImp><MontoImp>315</MontoImp></ImptoReten>"
        "<MntTotal>1555</MntTotal></Totales></Encabezado><Detalle><NroLinDet>1</NroLinDet></Detalle></"
        "Documento></DTE>";
    for (const auto& [que, por] : cambios)
        for (std::size_t i = 0; (i = xml.find(que, i)) != std::string::npos; i += por.size())
            xml.replace(i, que.size(), por);
    return xml;
}

} // namespace quorvel::pruebas
