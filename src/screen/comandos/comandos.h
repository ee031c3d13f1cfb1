#pragma once

namespace quorvel {

class frmQuorvel;

// One file per command; each reads the screen, asks or checks, calls the rule, shows the outcome.

// Record toolbar.
void nuevo(frmQuorvel&);
void guardar(frmQuorvel&);
void borrar_linea(frmQuorvel&);
void imprimir(frmQuorvel&);
void buscar(frmQuorvel&);
void salir(frmQuorvel&);
// Amounts.
void proponer_diferencia(frmQuorvel&);
void explicar_diferencia(frmQuorvel&);
// Lines.
void duplicar_linea(frmQuorvel&);
void glosa_en_todas(frmQuorvel&);
// Life of the voucher.
void anular(frmQuorvel&);
void eliminar(frmQuorvel&);
void cortar(frmQuorvel&);
void copiar(frmQuorvel&);
void repetir_mes(frmQuorvel&);
// Year end.
void generar_cierre(frmQuorvel&);
void cerrar_anio(frmQuorvel&);
void apertura(frmQuorvel&);
void apertura_doc(frmQuorvel&);
void descuadrados(frmQuorvel&);
// Exchange and papers.
void importar_csv(frmQuorvel&);
void exportar_csv(frmQuorvel&);
void factura(frmQuorvel&);
void cheque(frmQuorvel&);
// Assistants.
void asistente(frmQuorvel&); ///< the button: dispatches on the book
void asistente_venta(frmQuorvel&);
void asistente_compra(frmQuorvel&);
void asistente_retencion(frmQuorvel&);
void asistente_ingreso(frmQuorvel&);
void asistente_egreso(frmQuorvel&);
void asistente_retiro_socio(frmQuorvel&);
void doc_egreso(frmQuorvel&);

} // namespace quorvel
