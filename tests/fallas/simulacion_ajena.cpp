// What another program does to the tables of the random run.
#include "fallas/simulacion.h"
#include "platform/db/literal.h"
#include "platform/files/attachments.h"
#include "voucher/cargar.h"

#include <gtest/gtest.h>

#include <fstream>

namespace quorvel::fallas {

/// The suite's own programs write the same tables: padded texts, nulls, no draft, no lock. They take the set
/// after the greatest, whatever folder somebody has claimed, and leave a file there that has its name
/// already.
void Simulacion::comprobante_ajeno() {
    const std::string anio = std::to_string(modelo_.periodo.anio);
    const ClavePlana clave{anio + "-06-20", "001", std::to_string(modelo_.propuesto("001", anio))};
    const std::string concepto = "Ajeno " + std::to_string(paso_),
                      suya = "(1,'01',#06/20/" + anio + "#,'001 ','" + std::get<2>(clave) + "  ',";
    const std::string conjunto = al_azar(2) == 0 ? "0" : numero_adjunto(*db_, std::nullopt);
    apoyo::ejecutar(*db_, "insert into ctcquorvel(empresa,subsistema,f_comp,documento,num_docum,concepto,"
                          "estado,libro,usuario,t_debe,t_haber,bloqueo_usuario,comprobante_adjunto) values " +
                              suya + "'" + concepto + " ','P ','CONTABLES ',2,7,7,null," + conjunto + ")");
    for (const char* linea : {"1,'103001 ','000012 ',7,0)", "2,'401001','  ',0,7)"})
        apoyo::ejecutar(*db_,
                        "insert into ctdquorvel(empresa,subsistema,f_comp,documento,num_docum,secuencia,"
                        "centro,auxiliar,debe_nacional,haber_nacional) values " +
                            suya + linea);
    ComprobantePlano& c = modelo_.comprobantes[clave];
    c.concepto = concepto;
    c.lineas = {{"103001", "000012", 7, 0}, {"401001", "", 0, 7}};
    c.usuario = 2;
    c.total = 7;
    if (conjunto == "0") return;
    c.adjuntos = {"acta.pdf"};
    apoyo::ejecutar(*db_, "insert into ctdcomprad(comprobante_adjunto,correlativo,nombre) select " +
                              conjunto + ",coalesce(max(correlativo),0)+1,'acta.pdf' from ctdcomprad");
    const Attachments carpeta(escena_.carpeta, attachment_database(escena_.conexion));
    quitados_.erase({conjunto, "acta.pdf"});
    if (carpeta.find(conjunto, "acta.pdf")) return;
    std::ofstream(escena_.carpeta + "/acta.pdf") << concepto;
    EXPECT_TRUE(carpeta.add(conjunto, escena_.carpeta + "/acta.pdf"));
    dados_[{conjunto, "acta.pdf"}] = concepto;
}

std::string Simulacion::otro_programa(Ventana&) {
    const int que = al_azar(4);
    if (que == 0 || modelo_.comprobantes.empty()) return comprobante_ajeno(), "";
    const auto& cierre = modelo_.periodo.cierre; // the one voucher that rules look for
    const ClavePlana clave =
        cierre && modelo_.comprobantes.contains(*cierre) && al_azar(3) == 0 ? *cierre : al_azar_guardado();
    const auto& [fecha, documento, numero] = clave;
    const std::string suyo = " where f_comp=" + sql_fecha(leer_fecha_iso(fecha)) + " and documento='" +
                             documento + "' and num_docum='" + numero + "'";
    ComprobantePlano& c = modelo_.comprobantes[clave];
    if (que == 1) {
        c.concepto = "Ajeno " + std::to_string(paso_);
        apoyo::ejecutar(*db_, "update ctcquorvel set concepto='" + c.concepto + "  '" + suyo);
        return "";
    }
    apoyo::ejecutar(*db_, "delete from ctdquorvel" + suyo);
    if (que == 2) {
        apoyo::ejecutar(*db_, "update ctcquorvel set estado='X'" + suyo);
        c.estado = "X";
        c.lineas.clear();
        return "";
    }
    apoyo::ejecutar(*db_,
                    "delete from ctdcomprad where comprobante_adjunto<>0 and comprobante_adjunto in (select "
                    "comprobante_adjunto from ctcquorvel" +
                        suyo + ")");
    apoyo::ejecutar(*db_, "delete from ctcquorvel" + suyo);
    modelo_.comprobantes.erase(clave);
    return "";
}

} // namespace quorvel::fallas
