#pragma once
#include <array>
#include <string>

namespace quorvel {

/// Columns of a voucher that a version keeps, in their order in its lists, and how a person calls them. A new
/// one goes to the end: older versions are shorter.
struct Columna {
    const char *nombre, *rotulo;
    bool monto = false; ///< whole pesos
};
inline constexpr std::array COLUMNAS_CABECERA{Columna{"concepto", "Glosa"},
                                              Columna{"t_debe", "Total debe", true},
                                              Columna{"t_haber", "Total haber", true},
                                              Columna{"estado", "Estado"},
                                              Columna{"libro", "Libro"},
                                              Columna{"doc_libro", "Documento del libro"},
                                              Columna{"num_ref", "Nro. documento"},
                                              Columna{"fecha_factura", "Fecha documento"},
                                              Columna{"fecha_pago", "Fecha pago"},
                                              Columna{"rut_persona", "RUT"},
                                              Columna{"nombre", "Nombre"},
                                              Columna{"monto_neto", "Neto", true},
                                              Columna{"monto_exento", "Exento", true},
                                              Columna{"codigo_otro_impuesto", "Otro impuesto"},
                                              Columna{"tasa_impuesto_otro", "Tasa otro impuesto"},
                                              Columna{"activo_fijo", "IVA activo fijo"},
                                              Columna{"iva_activo_fijo", "Monto IVA activo fijo", true},
                                              Columna{"codigo_no_recuperable", "IVA no recuperable"},
                                              Columna{"ifrs", "Norma"},
                                              Columna{"apertura", "Apertura"},
                                              Columna{"nro_correlativo", "Correlativo"},
                                              Columna{"moneda", "Moneda"},
                                              Columna{"cotizacion", "Cotización"},
                                              Columna{"usuario", "Usuario"},
                                              Columna{"f_ult_modificacion", "Última modificación"},
                                              Columna{"comprobante_adjunto", "Conjunto de adjuntos"},
                                              Columna{"cheque", "Cheque"},
                                              Columna{"banco", "Banco"},
                                              Columna{"cuenta", "Cuenta corriente"},
                                              Columna{"fecha_cheque", "Fecha cheque"},
                                              Columna{"beneficiario", "Beneficiario"},
                                              Columna{"nominativo", "Nominativo"},
                                              Columna{"cruzado", "Cruzado"}};
inline constexpr std::array COLUMNAS_LINEA{Columna{"centro", "Cuenta"},
                                           Columna{"auxiliar", "Auxiliar"},
                                           Columna{"debe_nacional", "Debe", true},
                                           Columna{"haber_nacional", "Haber", true},
                                           Columna{"glosa", "Glosa"},
                                           Columna{"centro2", "C. costo"},
                                           Columna{"conciliado", "Conciliado"},
                                           Columna{"num_ref", "Nro. ref."},
                                           Columna{"codigo_otro_impuesto", "Otro impuesto"},
                                           Columna{"tasa_impuesto_otro", "Tasa"}};

/// "concepto,t_debe,…"
template <std::size_t N> [[nodiscard]] std::string lista_sql(const std::array<Columna, N>& columnas) {
    std::string lista;
    for (const Columna& c : columnas) lista += (lista.empty() ? "" : ",") + std::string(c.nombre);
    return lista;
}

} // namespace quorvel
