#include "interchange/tablas_impresion.h"
#include "screen/campos.h"
#include "screen/comandos/comandos.h"
#include "screen/frmQuorvel.h"
#include "screen/papeles/frmcheque.h"
#include "screen/papeles/preparar.h"

namespace quorvel {

void cheque(frmQuorvel& f) {
    if (f.glbBanderaNuevo) return f.critico("Debe grabar el comprobante antes de imprimir la factura");
    const Comprobante c = leer_pantalla(f);
    EntradaCheque x;
    x.glbdb = f.glbdb;
    x.glbdbReport = f.glbdbReport;
    x.impresor = &f.servicios.impresor;
    x.clave = c.clave();
    x.usuario = f.glbUsuario;
    x.empresa = f.ctlRegistro1.Company();
    x.nombre = f.txtnombre.Text();
    x.num_ref = f.txtnum_ref.Text();
    x.fecha_doc = f.txtfecha_doc.date();
    x.total = f.estado.totales.debe;
    f.atender([&] { // what cannot be printed can still be saved
        asegurar_tablas(f);
        // a cheque paper may show the voucher's lines
        if (f.glbdbReport != nullptr && sirve_para_informes(*f.glbdb, *f.glbdbReport)) preparar_impresion(f);
    });
    frmcheque forma(f.escritorio(), std::move(x));
    forma.ShowModal();
    forma.Unload();
}

} // namespace quorvel
