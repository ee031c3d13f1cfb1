// Goal: any file is read or refused with a reason, and a voucher that was read comes back from its own file.
#include "fuzz/fuzz.h"
#include "interchange/archivo_comprobante.h"

namespace quorvel::fuzz {
namespace {

/// What comes back letter by letter; the document kind is a number in the file.
constexpr std::string Comprobante::*TEXTOS[] = {
    &Comprobante::num_docum,
    &Comprobante::concepto,
    &Comprobante::libro,
    &Comprobante::rut_persona,
    &Comprobante::num_ref,
    &Comprobante::doc_libro,
    &Comprobante::nombre,
    &Comprobante::codigo_no_recuperable,
    &Comprobante::codigo_otro_impuesto,
    &Comprobante::tasa_impuesto_otro,
    &Comprobante::ifrs,
};

void exigir_iguales(const Comprobante& a, const Comprobante& b) {
    for (const auto texto : TEXTOS) exigir(a.*texto == b.*texto, (a.*texto).c_str(), b.*texto);
    exigir(a.f_comp == b.f_comp && a.fecha_factura == b.fecha_factura && a.fecha_pago == b.fecha_pago,
           "dates come back");
    exigir(a.activo_fijo == b.activo_fijo && a.apertura == b.apertura, "marks come back");
    exigir(a.totales == b.totales && a.monto_neto.pesos() == b.monto_neto.pesos() &&
               a.monto_exento.pesos() == b.monto_exento.pesos(),
           "amounts come back");
    exigir(a.lineas == b.lineas, "lines come back");
}

std::optional<std::string> escrito(const ComprobanteImportado& c) {
    try {
        return bytes_de_comprobante(c.c, "EMPRESA", "PS PESO");
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
        if (!archivo) return 0;
        const ComprobanteImportado otra_vez = interpretar_archivo(*archivo);
        exigir(otra_vez.con_cabecera && !otra_vez.sobran_campos, "the file is one of ours");
        exigir_iguales(leido.c, otra_vez.c);
    } catch (const ErrorArchivo& e) {
        exigir(grave, "only a grave problem stops the reading", e.what());
    }
    return 0;
}
