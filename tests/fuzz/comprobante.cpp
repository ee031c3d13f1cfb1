// Goal: any file is read or refused with a reason, and a voucher that was read comes back from its own file.
#include "fuzz/fuzz.h"
#include "interchange/archivo_comprobante.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"

#include <array>

namespace quorvel::fuzz {
namespace {

std::vector<std::string> celdas(const std::string& fila) {
    std::vector<std::string> partes(1);
    for (const char c : fila) {
        if (c == '\t')
            partes.emplace_back();
        else
            partes.back() += c;
    }
    return partes;
}

/// The voucher as the screen would hold it after reading.
Comprobante en_pantalla(const ComprobanteImportado& i) {
    Comprobante c;
    c.f_comp = leer_fecha(i.f_comp);
    c.documento = primeros(std::to_string(i.documento), 3);
    c.num_docum = i.numero;
    c.total_debe = i.total_debe;
    c.total_haber = i.total_haber;
    c.concepto = i.concepto;
    c.libro = i.libro;
    c.rut_persona = i.rut_persona;
    c.num_ref = i.num_ref;
    c.doc_libro = i.doc_libro;
    c.nombre = i.nombre;
    c.fecha_factura = leer_fecha(i.fecha_doc);
    c.fecha_pago = leer_fecha(i.fecha_pago);
    c.codigo_no_recuperable = i.codigo_no_recuperable;
    c.activo_fijo = i.activo_fijo;
    c.codigo_otro_impuesto = i.codigo_otro_impuesto;
    c.tasa_impuesto_otro = i.tasa_impuesto_otro;
    c.monto_neto = i.monto_neto;
    c.monto_exento = i.monto_exento;
    c.apertura = i.apertura;
    c.ifrs = i.norma;
    for (const std::string& fila : i.filas) {
        const auto k = celdas(fila);
        exigir(k.size() == 11, "a row has its cells", fila);
        c.lineas.push_back({k[1], k[2], k[3], k[4], k[5], k[6], k[7], k[8], k[9], k[10]});
    }
    return c;
}

void exigir_iguales(const ComprobanteImportado& a, const ComprobanteImportado& b) {
    const auto igual = [](const std::string& x, const std::string& y) { exigir(x == y, x.c_str(), y); };
    using Texto = std::string ComprobanteImportado::*;
    using I = ComprobanteImportado;
    for (const Texto t :
         {&I::f_comp, &I::numero, &I::concepto, &I::libro, &I::rut_persona, &I::num_ref, &I::doc_libro,
          &I::nombre, &I::fecha_doc, &I::fecha_pago, &I::codigo_no_recuperable, &I::codigo_otro_impuesto,
          &I::tasa_impuesto_otro, &I::norma, &I::total_debe, &I::total_haber})
        igual(a.*t, b.*t);
    exigir(a.activo_fijo == b.activo_fijo && a.apertura == b.apertura, "marks come back");
    exigir(b.reconocido && b.con_cabecera && !b.sobran_campos, "the file is one of ours");
    exigir(a.filas.size() == b.filas.size(), "rows come back");
    for (std::size_t n = 0; n < a.filas.size(); ++n) igual(a.filas[n], b.filas[n]);
    const auto pesos = [](double x) { return formato(x, "0"); };
    igual(pesos(a.monto_neto), pesos(b.monto_neto));
    igual(pesos(a.monto_exento), pesos(b.monto_exento));
}

std::optional<std::string> escrito(const ComprobanteImportado& c) {
    try {
        return bytes_de_comprobante(en_pantalla(c), "EMPRESA", "PS PESO");
    } catch (const ErrorArchivo& e) {
        exigir(*e.what() != '\0', "a refusal says why");
        return std::nullopt;
    }
}

} // namespace
} // namespace quorvel::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quorvel;
    using namespace quorvel::fuzz;
    const std::string_view bytes = texto(data, size);
    bool grave = false;
    const ComprobanteImportado revisado =
        revisar_archivo(bytes, [&](const ProblemaArchivo& p) { grave = grave || p.grave; });
    try {
        const ComprobanteImportado leido = interpretar_archivo(bytes);
        exigir(!grave, "a grave problem stops the reading");
        exigir(leido.reconocido == revisado.reconocido, "both readings agree");
        if (!leido.con_cabecera) return 0;
        const auto archivo = escrito(leido);
        if (archivo) exigir_iguales(leido, interpretar_archivo(*archivo));
    } catch (const ErrorArchivo& e) {
        exigir(grave, "only a grave problem stops the reading", e.what());
    }
    return 0;
}
