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

using I = ComprobanteImportado;
/// The texts that the screen takes as they are.
constexpr std::pair<std::string I::*, std::string Comprobante::*> TEXTOS[] = {
    {&I::numero, &Comprobante::num_docum},
    {&I::total_debe, &Comprobante::total_debe},
    {&I::total_haber, &Comprobante::total_haber},
    {&I::concepto, &Comprobante::concepto},
    {&I::libro, &Comprobante::libro},
    {&I::rut_persona, &Comprobante::rut_persona},
    {&I::num_ref, &Comprobante::num_ref},
    {&I::doc_libro, &Comprobante::doc_libro},
    {&I::nombre, &Comprobante::nombre},
    {&I::codigo_no_recuperable, &Comprobante::codigo_no_recuperable},
    {&I::codigo_otro_impuesto, &Comprobante::codigo_otro_impuesto},
    {&I::tasa_impuesto_otro, &Comprobante::tasa_impuesto_otro},
    {&I::norma, &Comprobante::ifrs},
};
constexpr std::pair<std::string I::*, std::optional<Fecha> Comprobante::*> FECHAS[] = {
    {&I::f_comp, &Comprobante::f_comp},
    {&I::fecha_doc, &Comprobante::fecha_factura},
    {&I::fecha_pago, &Comprobante::fecha_pago},
};

/// The voucher as the screen would hold it after reading.
Comprobante en_pantalla(const I& i) {
    Comprobante c;
    for (const auto& [leido, texto] : TEXTOS) c.*texto = i.*leido;
    for (const auto& [leida, fecha] : FECHAS) c.*fecha = leer_fecha(i.*leida);
    c.documento = primeros(std::to_string(i.documento), 3);
    c.activo_fijo = i.activo_fijo;
    c.monto_neto = i.monto_neto;
    c.monto_exento = i.monto_exento;
    c.apertura = i.apertura;
    for (const std::string& fila : i.filas) {
        const auto k = celdas(fila);
        exigir(k.size() == 11, "a row has its cells", fila);
        c.lineas.push_back({k[1], k[2], k[3], k[4], k[5], k[6], k[7], k[8], k[9], k[10]});
    }
    return c;
}

void exigir_iguales(const I& a, const I& b) {
    const auto igual = [](const std::string& x, const std::string& y) { exigir(x == y, x.c_str(), y); };
    for (const auto& [texto, en] : TEXTOS) igual(a.*texto, b.*texto);
    for (const auto& [fecha, en] : FECHAS) igual(a.*fecha, b.*fecha);
    exigir(a.activo_fijo == b.activo_fijo && a.apertura == b.apertura, "marks come back");
    exigir(b.reconocido && b.con_cabecera && !b.sobran_campos, "the file is one of ours");
    exigir(a.filas == b.filas, "rows come back");
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
