#include "assistants/libros.h"

#include <algorithm>

namespace quorvel {
namespace {

using V = std::string_view;
constexpr V NADA[] = {SIN_DOCUMENTO};
constexpr V VENTA[] = {SIN_DOCUMENTO,      "BOLETA",           "FACTURA",          "FACTURA EXENTA",
                       "F. ELECTRONICA",   "F. EXENTA ELECT.", "NOTA CREDITO",     "N.C. ELECTRONICA",
                       "NOTA DEBITO",      "N.D. ELECTRONICA", "DECLARACION IMP.", "FACTURA COMPRA",
                       "F. COMPRA ELECT.", "B. ELECTRONICA",   "B. EXENTA",        "B. EXENTA ELECT.",
                       "FACTURA EXP.",     "F EXP. ELECT.",    "N.C. EXP. ELECT.", "N.D. EXP. ELECT.",
                       "VALES TRANSBANK",  "F. TRASP. Z.F."};
constexpr V COMPRA[] = {SIN_DOCUMENTO,      "FACTURA",          "FACTURA EXENTA",   "F. ELECTRONICA",
                        "F. EXENTA ELECT.", "NOTA CREDITO",     "N.C. ELECTRONICA", "NOTA DEBITO",
                        "N.D. ELECTRONICA", "DECLARACION IMP.", "FACTURA COMPRA",   "F. COMPRA ELECT.",
                        "F. VENTA. Z.F.",   "SRF SOL. REG."};
constexpr V RETENCION[] = {SIN_DOCUMENTO, "BOLETA"};
constexpr V INGRESO[] = {SIN_DOCUMENTO, "BOLETA", "INGRESO"};
constexpr V EGRESO[] = {SIN_DOCUMENTO, "BOLETA", "EGRESO"};
constexpr V SOCIO[] = {SIN_DOCUMENTO, "EGRESO"};
constexpr std::array<std::span<const V>, 7> OFERTA{NADA, VENTA, COMPRA, RETENCION, INGRESO, EGRESO, SOCIO};

constexpr V BOLETAS[] = {"BOLETA", "B. ELECTRONICA", "B. EXENTA", "B. EXENTA ELECT."};

bool esta(std::span<const V> grupo, V documento) {
    return std::ranges::find(grupo, documento) != grupo.end();
}

} // namespace

std::span<const V> documentos_ofrecidos(int libro) {
    return libro < 0 || libro > RET_SOCIO ? OFERTA[0] : OFERTA[static_cast<std::size_t>(libro)];
}
bool es_boleta_compra(V documento) { return esta(BOLETAS, documento); }
bool es_boleta_venta(V documento) { return documento == "VALES TRANSBANK" || esta(BOLETAS, documento); }

} // namespace quorvel
