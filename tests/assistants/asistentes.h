#pragma once
#include "apoyo/dialogo.h"

namespace quorvel::apoyo {

/// The voucher screen of the small company, for the assistants.
class Asistentes : public ::testing::TestWithParam<Motor> {
protected:
    PantallaAbierta p{GetParam()};

    void cabecera(const char* libro, const char* documento, const std::string& rut = "76.418.352-5") {
        escribir(p.f, "mskF_comp", "20/03/2024");
        elegir(p.f, "cmbDocumento", "002 COMPRA");
        escribir(p.f, "txtconcepto", "Documento de prueba");
        elegir(p.f, "cmblibro", libro);
        elegir(p.f, "cmbdoc_libro", documento);
        p.f.txtnum_ref.SetText("4512");
        p.f.txtfecha_doc.SetText("19/03/2024");
        p.f.txtrut_persona.SetText(rut);
        p.f.txtnombre.SetText("FERRETERIA EL ROBLE SPA");
    }
    std::string guardado(const std::string& numero) {
        return filas(*p.db,
                     "select centro,auxiliar,debe_nacional,haber_nacional from ctdquorvel where num_docum='" +
                         numero + "' order by secuencia");
    }
};

} // namespace quorvel::apoyo
