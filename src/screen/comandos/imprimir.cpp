#include "interchange/tablas_impresion.h"
#include "screen/comandos/comandos.h"
#include "screen/frmQuorvel.h"
#include "screen/papeles/frmImprimir.h"
#include "screen/papeles/preparar.h"

namespace quorvel {

namespace {

/// Where the PDF goes, named after company, document and number. @return nothing when cancelled
std::optional<std::string> pedir_pdf(frmQuorvel& f) {
    return f.escritorio().ask_file({"Guardar como PDF", "*.pdf", pdf_name(f.rptReporte.Name), true});
}

} // namespace

void imprimir(frmQuorvel& f) {
    frmImprimir dialogo(f.escritorio());
    dialogo.ShowModal();
    if (!dialogo.glbAceptar) return;
    RptReporte& r = f.rptReporte;
    r.Name = f.ctlRegistro1.Company() + " " + f.cmbDocumento.Text() + " " + f.txtNum_doc.Text();
    const auto pdf = dialogo.glbPdf ? pedir_pdf(f) : std::string();
    if (!pdf || !preparar_impresion(f)) return;
    r.PdfFile = *pdf;
    r.ReportFileName =
        archivo_informe(f.glbdbReport->Name(), f.ctlRegistro1.Printer(), "ctcQuorvel").string();
    r.ToPrinter = dialogo.glbImprimir;
    if (r.Start(f.servicios.impresor, "ctcQuorvel", *f.glbdbReport) && dialogo.glbPdf)
        f.informacion("PDF guardado en " + *pdf);
}

} // namespace quorvel
