#include "screen/comandos/comandos.h"

#include <stdexcept>

namespace quorvel {

// Commands that wait for their own file.
namespace {
[[noreturn]] void pendiente() { throw std::runtime_error("Opción aún no disponible"); }
} // namespace

void generar_cierre(frmQuorvel&) { pendiente(); }
void cerrar_anio(frmQuorvel&) { pendiente(); }
void apertura(frmQuorvel&) { pendiente(); }
void apertura_doc(frmQuorvel&) { pendiente(); }
void descuadrados(frmQuorvel&) { pendiente(); }
void asistente(frmQuorvel&) { pendiente(); }
void asistente_venta(frmQuorvel&) { pendiente(); }
void asistente_compra(frmQuorvel&) { pendiente(); }
void asistente_retencion(frmQuorvel&) { pendiente(); }
void asistente_ingreso(frmQuorvel&) { pendiente(); }
void asistente_egreso(frmQuorvel&) { pendiente(); }
void asistente_retiro_socio(frmQuorvel&) { pendiente(); }
void doc_egreso(frmQuorvel&) { pendiente(); }

} // namespace quorvel
