// Goal: any file is read as a register or an electronic invoice, or refused with a reason; no line is lost,
// and a document's parts are its total.
#include "fuzz/fuzz.h"
#include "platform/files/tabla_csv.h"
#include "registro/dte.h"
#include "registro/sumas.h"
#include "text/letras_utf8.h"

namespace quorvel::fuzz {
namespace {

using namespace registro;

void exigir_documento(const Documento& d) {
    for (const std::string* t : {&d.tipo, &d.rut, &d.nombre, &d.folio})
        exigir(sin_controles(*t) == *t, "a text has no control characters", *t);
    exigir(!d.folio.starts_with('0'), "a folio has no zeros in front", d.folio);
    const Composicion c = componer(d);
    exigir(c.neto + c.exento + c.iva + c.costo + c.otro + c.diferencia == c.total, "the parts are the total");
}

template <class Leer> void probar(Leer leer, std::string_view bytes, bool lineas) {
    try {
        const Archivo a = leer();
        std::size_t impuestos = 0;
        for (const Documento& d : a.documentos) {
            exigir_documento(d);
            impuestos += d.otros.size();
        }
        if (!lineas) return;
        const std::size_t filas = leer_tabla_csv(bytes).filas.size();
        exigir(a.documentos.size() <= filas && impuestos <= filas, "a line is read once");
        exigir(filas == 0 || !a.documentos.empty(), "no line is lost");
    } catch (const ErrorRegistro& e) {
        exigir(*e.what() != '\0' && es_utf8(e.what()), "a refusal says why");
    }
}

} // namespace
} // namespace quorvel::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quorvel;
    using namespace quorvel::fuzz;
    const std::string_view bytes = texto(data, size);
    (void)registro::es_documento_electronico(bytes);
    probar([&] { return registro::leer_registro("RCV_COMPRA_76111222-8_202403.csv", bytes); }, bytes, true);
    probar([&] { return registro::leer_dte("f.xml", bytes, "76.111.222-8"); }, bytes, false);
    return 0;
}
