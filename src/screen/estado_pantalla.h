#pragma once
#include "text/numeros.h"
#include "voucher/comprobante.h"

#include <optional>
#include <string>

namespace quorvel {

/// Main-line selection that an assistant proposes again.
struct SeleccionRecordada {
    std::string cuenta, auxiliar, n_cuenta, n_auxiliar;
};

/// What outlives one event of the voucher screen.
struct EstadoPantalla {
    bool comprobante_cierre = false; ///< the shown voucher is the year's closing voucher
    bool cierre_generado = false;    ///< closing lines were just built; the save records them
    bool maestros_cambiados = true;  ///< the next activation reopens every master recordset
    bool primera_activacion = true;
    bool carga_fallida = false; ///< the load step has told already what the database refuses
    bool sin_respuesta = false; ///< the last save or annulment may have been done: the next looks first
    std::string falta;          ///< what the host says is missing before vouchers can be entered
    std::int64_t numero_propuesto = 0;
    Decimal valor_editado;     ///< amount that the debit or credit cell held when its edit began
    std::string ultima_cuenta; ///< account whose name lblCuenta shows
    double monto_neto = 0, monto_exento = 0;
    std::optional<Comprobante> cargado; ///< the saved voucher as it was read; its key addresses it
    std::string huella_guardada;        ///< of the shown voucher as it is saved, see huella_de_pantalla
    std::optional<Comprobante> cortado; ///< the voucher that a cut deleted: its cheque and invoice follow
    /// Rate of the loaded voucher, exact and as shown; an untouched box writes the exact one back, also in a
    /// copy.
    std::string cotizacion_exacta, cotizacion_mostrada;
    SeleccionRecordada venta, compra, retencion, banco, socio;
};

} // namespace quorvel
