#pragma once

namespace quorvel::pruebas {

/// Something written into a box of the cheque or the invoice that its rule refuses: what is said, whichever
/// way the text came in and however the button was pressed, and nothing is done.
struct ViaPapel {
    const char *menu, *control, *texto, *boton, *mensaje;
};
inline constexpr ViaPapel VIAS_PAPELES[] = {
    {"mnucheque", "txtfecha", "31/02/2024", "cmdaceptar", "Fecha no válida"},
    {"mnucheque", "txttotal", "150.00", "cmdImprimir", "El monto no es un número como 1.234.567: 150.00"},
    {"mnucheque", "txttotal", "1,505", "cmdaceptar", "El monto no es un número como 1.234.567: 1,505"},
    {"mnuFactura", "txtruc", "12345678-4", "cmdaceptar", "El rut no es Válido"},
    {"mnuFactura", "txtfecha", "31/02/2024", "cmdImprimir", "Fecha no válida"},
    {"mnuFactura", "txtNeto", "1234.567", "cmdaceptar", "El monto no es un número como 1.234.567: 1234.567"},
    {"mnuFactura", "txttotal", "doce", "cmdImprimir", "El monto no es un número como 1.234.567: doce"},
};
/// Nothing of a paper is stored.
inline constexpr const char* SIN_PAPELES = "select (select count(*) from ctcquorvel where not beneficiario "
                                           "is null)+(select count(*) from ftcfactura) n "
                                           "from admempresa";

} // namespace quorvel::pruebas
