#pragma once
#include "platform/ui/controls.h"
#include "platform/ui/ctlPlanilla.h"
#include "platform/ui/ctlRegistro.h"
#include "platform/ui/form.h"
#include "screen/borrador.h"
#include "screen/estado_pantalla.h"
#include "screen/informe.h"
#include "screen/servicios.h"
#include "voucher/configuracion.h"

namespace quorvel {

class NombresCodigos;
class frmRegistro;

/// The voucher screen: named controls and one-line event procedures. What each does lives in comandos/,
/// detalle/, consultas/ and the steps beside this file.
class frmQuorvel : public ui::Form {
public:
    explicit frmQuorvel(Servicios servicios);
    ~frmQuorvel() override;

    // Session, set by the host classes before the load step.
    int glbEmpresa = 0, glbUsuario = 0, glbAlias = 0;
    std::string glbN_empresa, glbN_usuario, glbPrograma, glbPermiso;
    clsConexion* glbdb = nullptr;
    clsConexion* glbdbReport = nullptr;
    bool glbremuneracion = false;
    /// Handing this over loads the screen.
    void SetglbTipoImpresora(const std::string& tipo);

    // State that other screens read.
    std::string gstrcomprobante_adjunto;
    bool glbBanderaNuevo = true, glbBanderaLeer = true;
    std::string gstriva, gstrotros_impuestos, gstriva_compra, gstrotros_impuestos_compra;
    Configuracion config;
    Maestros maestros;
    EstadoPantalla estado;
    const Servicios servicios;

    // Controls, in tab order.
    ui::ctlRegistro ctlRegistro1{*this, "ctlRegistro1"};
    ui::ctlCalendario mskF_comp{*this, "mskF_comp"};
    ui::ComboBox cmbDocumento{*this, "cmbDocumento"};
    ui::TextBox txtNum_doc{*this, "txtNum_doc"};
    ui::ComboBox cmblibro{*this, "cmblibro"};
    ui::TextBox txtnro_correlativo{*this, "txtnro_correlativo"};
    ui::TextBox txtCotizacion{*this, "txtCotizacion"};
    ui::ComboBox cmbMoneda{*this, "cmbMoneda"};
    ui::ComboBox cmbifrs{*this, "cmbifrs"};
    ui::CheckBox chkApertura{*this, "chkApertura", "Asiento de Apertura"};
    ui::TextBox txtconcepto{*this, "txtconcepto"};
    ui::ComboBox cmbdoc_libro{*this, "cmbdoc_libro"};
    ui::TextBox txtnum_ref{*this, "txtnum_ref"};
    ui::ctlCalendario txtfecha_doc{*this, "txtfecha_doc"}, txtfecha_pago{*this, "txtfecha_pago"};
    ui::TextBox txtrut_persona{*this, "txtrut_persona"};
    ui::CommandButton cmdrut_persona{*this, "cmdrut_persona", "Ctrl - Y"};
    ui::TextBox txtnombre{*this, "txtnombre"};
    ui::CommandButton cmdasistente{*this, "cmdasistente", "Asistente"};
    ui::ComboBox cmbcodigo_otro_impuesto{*this, "cmbcodigo_otro_impuesto"};
    ui::TextBox txttasa_impuesto_otro{*this, "txttasa_impuesto_otro"};
    ui::ComboBox cmbcodigo_no_recuperable{*this, "cmbcodigo_no_recuperable"};
    ui::CheckBox chkactivo_fijo{*this, "chkactivo_fijo", "IVA Act. Fijo"};
    ui::TextBox txtiva_activo_fijo{*this, "txtiva_activo_fijo"};
    ui::ctlPlanilla grdDetalle{*this, "grdDetalle"};
    ui::CommandButton cmdcortar{*this, "cmdcortar", "Cortar"}, cmdCopiar{*this, "cmdCopiar", "Copiar"};
    ui::ListBox lstadjunto{*this, "lstadjunto"};
    ui::CommandButton cmdadjunto_agregar{*this, "cmdadjunto_agregar", "Agregar"},
        cmdadjunto_eliminar{*this, "cmdadjunto_eliminar", "Eliminar"}, cmdAbrir{*this, "cmdAbrir", "Abrir"};
    ui::TextBox txtnumero{*this, "txtnumero"};
    ui::OptionButton optsuma{*this, "optsuma", "+ Suma", "calculadora"},
        optresta{*this, "optresta", "- Resta", "calculadora"},
        optporcentaje{*this, "optporcentaje", "% Porcentaje", "calculadora"};
    ui::CommandButton cmdigual{*this, "cmdigual", "="}, cmdlimpiar{*this, "cmdlimpiar", "Limpiar"};
    ui::TextBox txtresultado1{*this, "txtresultado1"}, txtresultado2{*this, "txtresultado2"};
    ui::Label lblTotalDebe{*this, "lblTotalDebe", "0"}, lblTotalhaber{*this, "lblTotalhaber", "0"};
    ui::Label lblCuenta{*this, "lblCuenta"}, lblAuxiliar{*this, "lblAuxiliar"}, lblCentro{*this, "lblCentro"},
        lblOtro_impuesto{*this, "lblOtro_impuesto"};
    ui::Label lblEstado{*this, "lblEstado"}, lblUsuario{*this, "lblUsuario"},
        lblsubsistema{*this, "lblsubsistema"}, lblF_ult_modificacion{*this, "lblF_ult_modificacion"},
        lblgstrcomprobante_adjunto{*this, "lblgstrcomprobante_adjunto"};
    RptReporte rptReporte{"Presentación Preliminar"};
    std::unique_ptr<Borrador> borrador;
    std::unique_ptr<frmRegistro> registro;   ///< made when it is first asked for
    std::unique_ptr<NombresCodigos> nombres; ///< of the system's own host

    ui::MenuItem mnuComprobante{*this, "mnuComprobante", "Comprobante"};
    ui::MenuItem mnuAnular{*this, "mnuAnular", "Anular Comprobante", &mnuComprobante, "ctrl+f9"};
    ui::MenuItem mnuEliminar{*this, "mnuEliminar", "Eliminar Comprobante", &mnuComprobante, "ctrl+f8"};
    ui::MenuItem mnuGenerarCierre{*this,           "mnuGenerarCierre", "Generar Detalle de Cierre Anual",
                                  &mnuComprobante, "ctrl+f10",         true};
    ui::MenuItem mnuCerrarAnio{*this, "mnuCerrarAnio", "Cerrar el Año Contable", &mnuComprobante, "ctrl+f11"};
    ui::MenuItem mnuApertura{*this, "mnuApertura", "Generar asiento de apertura", &mnuComprobante,
                             "ctrl+f12"};
    ui::MenuItem mnuAperturaDoc{*this, "mnuAperturaDoc", "Generar Apertura por Documento", &mnuComprobante,
                                "shift+f12"};
    ui::MenuItem mnuImportar{*this, "mnuImportar", "Importar CSV", &mnuComprobante, "ctrl+i", true};
    ui::MenuItem mnuexportar{*this, "mnuexportar", "Exportar CSV", &mnuComprobante, "ctrl+e"};
    ui::MenuItem mnuSalir{*this, "mnuSalir", "Salir", &mnuComprobante, "ctrl+q", true};
    ui::MenuItem mnuAsistente{*this, "mnuAsistente", "Asistente"};
    ui::MenuItem mnuventa{*this, "mnuventa", "Venta", &mnuAsistente, "ctrl+f2"};
    ui::MenuItem mnucompra{*this, "mnucompra", "Compra", &mnuAsistente, "ctrl+f3"};
    ui::MenuItem mnuretencion{*this, "mnuretencion", "Retenciones", &mnuAsistente, "ctrl+f4"};
    ui::MenuItem mnuImprimir{*this, "mnuImprimir", "Documentos"};
    ui::MenuItem mnuFactura{*this, "mnuFactura", "Factura", &mnuImprimir, "ctrl+f6"};
    ui::MenuItem mnucheque{*this, "mnucheque", "Cheque", &mnuImprimir, "ctrl+f7"};
    ui::MenuItem mnudoc_egreso{*this,        "mnudoc_egreso", "Agregar doc. comprobante egresos e ingresos",
                               &mnuImprimir, "ctrl+f5",       true};
    ui::MenuItem mnudescuadrado{*this, "mnudescuadrado", "Comprobantes descuadrados", &mnuImprimir, "ctrl+d"};

    // Public operations.
    [[nodiscard]] bool takes_files() const override { return true; }
    [[nodiscard]] std::string formato(double dblvalor, std::string_view strformato, bool bcero = false) const;
    [[nodiscard]] double valnumerobase(std::string_view strnumero) const;
    [[nodiscard]] double valnumeroformato(std::string_view strnumero) const;
    [[nodiscard]] std::string req_aux(const std::string& cuenta) const;
    /// The check of the counterpart's RUT: rewrites its box, or shows its message and focuses it.
    bool validarut();
    [[nodiscard]] std::string NumeroAdjunto();
    void CargarAdjuntos();
    void RecalcularTotales();

protected:
    void Form_Load() override;
    void Form_Activate() override;
    void Form_Unload() override;
    void Form_FileDropped(const std::string& archivo) override;
    void Form_KeyDown(ui::KeyEvent& e) override;

private:
    void conectar_comandos();
    void conectar_campos();
    void conectar_detalle();
};

} // namespace quorvel
