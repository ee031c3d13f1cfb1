#pragma once
#include <array>
#include <string>

namespace quorvel {

/// Columns of a voucher that a version keeps, in their order in its lists, and how a person calls them. A new
/// one goes to the end: older versions are shorter.
struct ColumnaGuardada {
    const char *nombre, *rotulo;
    bool monto = false; ///< whole pesos
};
inline constexpr std::array COLUMNAS_CABECERA{
    ColumnaGuardada{"concepto", "Glosa"},
    ColumnaGuardada{"t_debe", "Total debe", true},
    ColumnaGuardada{"t_haber", "Total haber", true},
    ColumnaGuardada{"estado", "Estado"},
    ColumnaGuardada{"libro", "Libro"},
    ColumnaGuardada{"doc_libro", "Documento del libro"},
    ColumnaGuardada{"num_ref", "Nro. documento"},
    ColumnaGuardada{"fecha_factura", "Fecha documento"},
    ColumnaGuardada{"fecha_pago", "Fecha pago"},
    ColumnaGuardada{"rut_persona", "RUT"},
    ColumnaGuardada{"nombre", "Nombre"},
    ColumnaGuardada{"monto_neto", "Neto", true},
    ColumnaGuardada{"monto_exento", "Exento", true},
    ColumnaGuardada{"codigo_otro_impuesto", "Otro impuesto"},
    ColumnaGuardada{"tasa_impuesto_otro", "Tasa otro impuesto"},
    ColumnaGuardada{"activo_fijo", "IVA activo fijo"},
    ColumnaGuardada{"iva_activo_fijo", "Monto IVA activo fijo", true},
    ColumnaGuardada{"codigo_no_recuperable", "IVA no recuperable"},
    ColumnaGuardada{"ifrs", "Norma"},
    ColumnaGuardada{"apertura", "Apertura"},
    ColumnaGuardada{"nro_correlativo", "Correlativo"},
    ColumnaGuardada{"moneda", "Moneda"},
    ColumnaGuardada{"cotizacion", "Cotización"},
    ColumnaGuardada{"usuario", "Usuario"},
    ColumnaGuardada{"f_ult_modificacion", "Última modificación"},
    ColumnaGuardada{"comprobante_adjunto", "Conjunto de adjuntos"},
    ColumnaGuardada{"cheque", "Cheque"},
    ColumnaGuardada{"banco", "Banco"},
    ColumnaGuardada{"cuenta", "Cuenta corriente"},
    ColumnaGuardada{"fecha_cheque", "Fecha cheque"},
    ColumnaGuardada{"beneficiario", "Beneficiario"},
    ColumnaGuardada{"nominativo", "Nominativo"},
    ColumnaGuardada{"cruzado", "Cruzado"}};
inline constexpr std::array COLUMNAS_LINEA{ColumnaGuardada{"centro", "Cuenta"},
                                           ColumnaGuardada{"auxiliar", "Auxiliar"},
                                           ColumnaGuardada{"debe_nacional", "Debe", true},
                                           ColumnaGuardada{"haber_nacional", "Haber", true},
                                           ColumnaGuardada{"glosa", "Glosa"},
                                           ColumnaGuardada{"centro2", "C. costo"},
                                           ColumnaGuardada{"conciliado", "Conciliado"},
                                           ColumnaGuardada{"num_ref", "Nro. ref."},
                                           ColumnaGuardada{"codigo_otro_impuesto", "Otro impuesto"},
                                           ColumnaGuardada{"tasa_impuesto_otro", "Tasa"}};

/// "concepto,t_debe,…"
template <std::size_t N> [[nodiscard]] std::string lista_sql(const std::array<ColumnaGuardada, N>& columnas) {
    std::string lista;
    for (const ColumnaGuardada& c : columnas) lista += (lista.empty() ? "" : ",") + std::string(c.nombre);
    return lista;
}

} // namespace quorvel
