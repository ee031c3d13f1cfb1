#include "registro/clases.h"

#include "assistants/libros.h"
#include "text/numeros.h"

#include <algorithm>

namespace quorvel::registro {
namespace {

constexpr Clase CLASES[] = {
    {29, "factura de inicio", "FACTURA", "FACTURA"},
    {30, "factura", "FACTURA", "FACTURA"},
    {32, "factura exenta", "FACTURA EXENTA", "FACTURA EXENTA"},
    {33, "factura electrónica", "F. ELECTRONICA", "F. ELECTRONICA"},
    {34, "factura exenta electrónica", "F. EXENTA ELECT.", "F. EXENTA ELECT."},
    {35, "boleta", nullptr, "BOLETA"},
    {38, "boleta exenta", nullptr, "B. EXENTA"},
    {39, "boleta electrónica", nullptr, "B. ELECTRONICA"},
    {40, "liquidación factura", nullptr, nullptr},
    {41, "boleta exenta electrónica", nullptr, "B. EXENTA ELECT."},
    {43, "liquidación factura electrónica", nullptr, nullptr},
    {45, "factura de compra", "FACTURA COMPRA", "FACTURA COMPRA"},
    {46, "factura de compra electrónica", "F. COMPRA ELECT.", "F. COMPRA ELECT."},
    {47, "comprobante de pago", nullptr, "VALES TRANSBANK"},
    {48, "comprobante de pago electrónico", nullptr, "VALES TRANSBANK"},
    {55, "nota de débito", "NOTA DEBITO", "NOTA DEBITO"},
    {56, "nota de débito electrónica", "N.D. ELECTRONICA", "N.D. ELECTRONICA"},
    {60, "nota de crédito", "NOTA CREDITO", "NOTA CREDITO"},
    {61, "nota de crédito electrónica", "N.C. ELECTRONICA", "N.C. ELECTRONICA"},
    {101, "factura de exportación", nullptr, "FACTURA EXP."},
    {104, "nota de débito de exportación", nullptr, nullptr},
    {106, "nota de crédito de exportación", nullptr, nullptr},
    {110, "factura de exportación electrónica", nullptr, "F EXP. ELECT."},
    {111, "nota de débito de exportación electrónica", nullptr, "N.D. EXP. ELECT."},
    {112, "nota de crédito de exportación electrónica", nullptr, "N.C. EXP. ELECT."},
    {914, "declaración de ingreso", "DECLARACION IMP.", nullptr},
};

constexpr int RETENCIONES_IVA[] = {15,  30, 301, 31, 32, 321, 33, 331, 34, 341, 36,
                                   361, 37, 371, 38, 39, 41,  46, 47,  48, 481};

bool solo_digitos(std::string_view t) {
    return !t.empty() && std::ranges::all_of(t, [](char c) { return c >= '0' && c <= '9'; });
}

} // namespace

const Clase* clase_de(std::string_view tipo) {
    if (!solo_digitos(tipo)) return nullptr;
    const auto* const c = std::ranges::find(CLASES, val_entero(tipo), &Clase::codigo);
    return c == std::end(CLASES) ? nullptr : c;
}

std::string doc_libro_de(std::string_view tipo, int libro) {
    const Clase* const c = clase_de(tipo);
    const char* const kind = c == nullptr ? nullptr : libro == VENTAS ? c->venta : c->compra;
    return kind == nullptr ? "" : kind;
}

std::string nombre_clase(std::string_view tipo) {
    const Clase* const c = clase_de(tipo);
    return std::string(tipo) + (c == nullptr ? "" : std::string(" ") + c->nombre);
}

std::string motivo_sin_clase(std::string_view tipo, int libro) {
    if (!doc_libro_de(tipo, libro).empty()) return "";
    if (tipo.empty()) return "La línea no dice qué tipo de documento es";
    if (clase_de(tipo) == nullptr) return "Tipo de documento " + std::string(tipo) + " desconocido";
    return "El libro de " + std::string(TEXTOS_LIBRO.at(static_cast<std::size_t>(libro))) +
           " no tiene una clase para el documento " + nombre_clase(tipo);
}

bool es_retencion(std::string_view codigo) {
    return solo_digitos(codigo) &&
           std::ranges::find(RETENCIONES_IVA, val_entero(codigo)) != std::end(RETENCIONES_IVA);
}

} // namespace quorvel::registro
