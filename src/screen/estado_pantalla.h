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

/// The last change, when nobody knows whether it was done: its repetition looks first.
enum class EnDuda : std::uint8_t { ninguno, grabar, anular, eliminar };

/// What outlives one event of the voucher screen.
struct EstadoPantalla {
    bool comprobante_cierre = false; ///< the shown voucher is the year's closing voucher
    bool cierre_generado = false;    ///< closing lines were just built; the save records them
    bool maestros_cambiados = true;  ///< the next activation reopens every master recordset
    bool primera_activacion = true;
    bool carga_fallida = false; ///< the load step has told already what the database refuses
    EnDuda en_duda = EnDuda::ninguno;
    bool anterior_sin_grabar = false; ///< what New took off the screen waits as a draft
    std::string grabado;              ///< what our own host tells of the last save, until something changes
    std::string falta;                ///< what the host says is missing before vouchers can be entered
    std::int64_t numero_propuesto = 0;
    Decimal valor_editado;     ///< amount that the debit or credit cell held when its edit began
    std::string ultima_cuenta; ///< account whose name lblCuenta shows
    Totales totales;           ///< what both labels show, whole pesos
    Decimal monto_neto, monto_exento;
    std::string tasa_de_lineas;         ///< other-tax rate with which the shown lines were made
    std::optional<Comprobante> cargado; ///< the saved voucher as it was read; its key addresses it
    std::string huella_guardada; ///< of the stored voucher that the screen was loaded with, see huella.h
    std::optional<Comprobante> cortado; ///< the voucher that a cut deleted: its cheque and invoice follow
    /// Rate of the loaded voucher, exact and as shown; an untouched box writes the exact one back, also in a
    /// copy.
    Decimal cotizacion_exacta = 1;
    std::string cotizacion_mostrada;
    SeleccionRecordada venta, compra, retencion, banco, socio;
};

} // namespace quorvel
