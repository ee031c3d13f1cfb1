#pragma once
#include "app/sesion_app.h"
#include "demo_run/Fotografo.h"
#include "demo_run/Mecanografo.h"

namespace quorvel::demo_run {

/// What the scenes of the demonstration work with.
struct Estudio {
    frmQuorvel& f;
    QWidget& ventana;
    Mecanografo& m;
    Fotografo& fotografo;
};

/// The header of a document that is keyed in.
struct DocumentoDemo {
    const char *documento, *libro, *glosa, *doc_libro, *numero, *rut, *nombre;
};
void encabezado(Estudio& e, const DocumentoDemo& d);

/// A purchase keyed in, saved, found again and printed, with a trial of the cheque that pays it; at the end
/// read-only, because another user works on it.
void escena_compra(Estudio& e);
/// The assistants of a purchase and of a partner's withdrawal, both cancelled.
void escena_asistentes(Estudio& e);
/// A sale that its assistant makes, and its invoice.
void escena_factura(Estudio& e);
/// The closing entry of the year, not saved.
void escena_cierre(Estudio& e);
/// The present month's register held against the books and booked, with a supplier that nobody knew.
void escena_registro(Estudio& e);
/// The windows of the host application. @param carpeta for a database of its own
void escena_anfitrion(Fotografo& fotografo, app::Teclado& teclado, const app::Eleccion_inicial& eleccion,
                      const std::filesystem::path& carpeta);

} // namespace quorvel::demo_run
