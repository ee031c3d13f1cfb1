#include "screen/campos.h"
#include "screen/comandos/comandos.h"
#include "screen/frmQuorvel.h"
#include "screen/papeles/frmfactura.h"
#include "screen/papeles/preparar.h"

namespace quorvel {

void factura(frmQuorvel& f) {
    if (f.glbBanderaNuevo) return f.critico("Debe grabar el comprobante antes de imprimir la factura");
    f.atender([&] { asegurar_tablas(f); }); // what cannot be printed can still be saved
    EntradaFactura x;
    x.glbdb = f.glbdb;
    x.glbdbReport = f.glbdbReport;
    x.impresor = &f.servicios.impresor;
    x.comprobante = leer_pantalla(f);
    x.gstriva = f.gstriva;
    x.gstriva_compra = f.gstriva_compra;
    x.empresa = f.ctlRegistro1.Company();
    frmfactura forma(f.escritorio(), std::move(x));
    forma.ShowModal();
    forma.Unload();
}

} // namespace quorvel
