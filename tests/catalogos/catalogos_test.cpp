// Goal: a master table is kept without harm: what is wrong is told by column, what is used stays, what
// another user changed is never written over. Method: both engines, a row of each catalogue, two sessions.
#include "apoyo/empresa.h"
#include "catalogos/cambiar.h"
#include "catalogos/filas.h"

#include <gtest/gtest.h>

using namespace quorvel;
using namespace quorvel::apoyo;

namespace {

class Catalogos : public ::testing::TestWithParam<Motor> {
protected:
    const std::string conexion = conexion_empresa(GetParam());
    std::unique_ptr<clsConexion> db = abrir_sesion(conexion);

    std::string reparos(const char* que, FilaCatalogo fila, const FilaCatalogo& antes = {}) {
        const Catalogo& c = catalogo(que);
        std::string texto;
        for (const Observacion& o : revisar_fila(*db, c, normalizar_fila(c, std::move(fila)), antes))
            texto += o.campo + (o.grave ? "! " : "  ") + o.mensaje + "\n";
        return texto;
    }
    std::string grabar(const char* que, FilaCatalogo fila, const FilaCatalogo& antes = {}) {
        const Catalogo& c = catalogo(que);
        return grabar_fila(*db, c, normalizar_fila(c, std::move(fila)), antes);
    }
    FilaCatalogo leer(const char* que, const char* codigo) {
        return leer_fila(*db, catalogo(que), codigo).value_or(FilaCatalogo{});
    }
    std::string borrar(const char* que, const char* codigo) {
        return borrar_fila(*db, catalogo(que), leer(que, codigo));
    }
    std::string hallados(const char* que, const char* texto, const char* elegido = "") {
        BusquedaCatalogo b(*db, catalogo(que), texto, elegido);
        std::string codigos;
        while (!b.terminada())
            for (const FilaCatalogo& f : b.seguir()) codigos += f[0] + " ";
        return codigos;
    }
};
INSTANTIATE_TEST_SUITE_P(Motores, Catalogos, ::testing::ValuesIn(MOTORES),
                         [](const auto& m) { return nombre(m.param); });

/// A row of each: it comes into being, is read as it was written, is changed, and goes.
TEST_P(Catalogos, EachKeepsItsRows) {
    const struct {
        const char* que;
        FilaCatalogo nueva, cambiada;
    } casos[] = {
        {"grupos", {"6", "O'Higgins", "1", "9.99"}, {"6", "OTROS", "0", "9.999"}},
        {"cuentas", {"101077", "CAJA Ñuñoa", "1", "1", "0"}, {"101077", "CAJA CHICA", "1", "0", "1"}},
        {"tipos", {"ZZ", "OTROS", "0", "1"}, {"ZZ", "VARIOS", "1", "0"}},
        {"auxiliares",
         {"000500", "PANADERIA SOL", "76.854.320-8", "CL", "1"},
         {"000500", "PANADERIA LUNA", "", "PR", "0"}},
        {"grupos_centros", {"7", "SUCURSALES", "9.99"}, {"7", "LOCALES", "9.99"}},
        {"centros", {"1077", "MAIPU", "1", "0"}, {"1077", "ÑUÑOA", "1", "0"}},
        {"documentos", {"050", "REEMBOLSO", "1"}, {"050", "REEMBOLSOS", "0"}},
        {"impuestos", {"099", "LUJO", "15,5"}, {"099", "LUJO", "7"}},
        {"usuarios", {"9", "EVA", "1", "0", "1"}, {"9", "EVA SOTO", "0", "1", "0"}},
    };
    ejecutar(*db, "delete from ctmgcuentc where g_cuenta='1'");
    ASSERT_EQ(grabar("grupos_centros", {"1", "CENTROS", "9.999"}), "");
    for (const auto& c : casos) {
        SCOPED_TRACE(c.que);
        const std::string codigo = c.nueva[0];
        EXPECT_EQ(reparos(c.que, c.nueva), "");
        EXPECT_EQ(grabar(c.que, c.nueva), "");
        EXPECT_EQ(leer(c.que, codigo.c_str()), c.nueva);
        EXPECT_EQ(reparos(c.que, c.nueva),
                  std::string(catalogo(c.que).columnas[0].nombre) + "! Ya existe " + codigo + "\n");
        EXPECT_EQ(reparos(c.que, c.cambiada, c.nueva), "");
        EXPECT_EQ(grabar(c.que, c.cambiada, c.nueva), "");
        EXPECT_EQ(leer(c.que, codigo.c_str()), c.cambiada);
        EXPECT_NE((" " + hallados(c.que, c.cambiada[1].c_str())).find(" " + codigo + " "), std::string::npos);
        EXPECT_EQ(borrar(c.que, codigo.c_str()), "");
        EXPECT_TRUE(leer(c.que, codigo.c_str()).empty());
    }
    EXPECT_EQ(std::size(casos), catalogos().size());
}

TEST_P(Catalogos, WhatIsWrongIsToldByColumn) {
    EXPECT_EQ(reparos("cuentas", {"", " ", "1", "1", "0"}), "centro! Falta\nn_centro! Falta\n");
    EXPECT_EQ(reparos("cuentas", {"10a", "X", "8", "1", "0"}),
              "centro! Lleva sólo dígitos\ng_cuenta! No existe 8\n");
    EXPECT_EQ(reparos("cuentas", {"201", "X", "1", "1", "0"}),
              "centro! El código empieza con el grupo: 1\n"
              "centro! Para recibir movimientos lleva 6 dígitos en el grupo 1\n");
    EXPECT_EQ(reparos("cuentas", {"101", "X", "1", "0", "0"}), "") << "a title is shorter";
    EXPECT_EQ(reparos("cuentas", {"1010011", "X", "1", "0", "0"}),
              "centro! Lleva a lo más 6 dígitos en el grupo 1\n");
    EXPECT_EQ(reparos("auxiliares", {"70", "SOL", "12345678-5", "CL", "1"}),
              "rut  También lo tiene 000012 " + leer("auxiliares", "000012")[1] + "\n");
    EXPECT_EQ(reparos("auxiliares", {"70", "SOL", "12345678-4", "CL", "1"}), "rut! El rut no es Válido\n");
    EXPECT_EQ(reparos("impuestos", {"7", "X", "101"}), "tasa! Va de 0 a 100\n");
    EXPECT_EQ(reparos("impuestos", {"7", "X", "1.5.5"}), "tasa! Va de 0 a 100\n");
    EXPECT_EQ(reparos("tipos", {"A", "X", "0", "1"}), "tipo_aux! Son dos letras\n");
    EXPECT_EQ(reparos("usuarios", {"40000", "X", "0", "1", "1"}), "usuario! Va de 1 a 32767\n");
    for (const char* niveles : {"9..9", ".9", "9.", "8.9", "9.9.9.9.9.9.9.9.9.9.9", "9.99999999999999999999"})
        EXPECT_NE(reparos("grupos", {"8", "X", "0", niveles}), "") << niveles;
    const FilaCatalogo activo = leer("grupos", "1");
    EXPECT_EQ(reparos("grupos", {"1", "X", "0", "9.9"}, activo),
              "formato_centro! Sus códigos ya tienen otro largo\n");
    EXPECT_EQ(grabar("grupos", {"8", "ORDEN", "0", "9.99.9999"}), "");
    EXPECT_EQ(filas(*db, "select num_nivel,longitud from ctmgcuenta where g_cuenta='8'"), "3|7");
}

TEST_P(Catalogos, WhatIsUsedStays) {
    ejecutar(*db,
             "insert into ctcquorvel(empresa,f_comp,documento,num_docum,usuario,codigo_otro_impuesto) values "
             "(1,#03/05/2024#,'001','1',2,'024')");
    ejecutar(*db,
             "insert into ctdquorvel(empresa,f_comp,documento,num_docum,secuencia,centro,auxiliar,centro2) "
             "values (1,#03/05/2024#,'001','1',1,'101002','000012','1001')");
    ejecutar(*db, "insert into ctmcentros(centro,n_centro,g_cuenta,activo) values ('1011','TITULO','1','0')");
    ejecutar(*db, "insert into ctmcentros(centro,n_centro,g_cuenta,activo) values ('101101','BAJO','1','1')");
    EXPECT_EQ(borrar("cuentas", "101002"), "No se borra la cuenta 101002. La usan comprobantes");
    EXPECT_EQ(borrar("cuentas", "1011"), "No se borra la cuenta 1011. Tiene cuentas bajo ella");
    EXPECT_EQ(
        borrar("cuentas", "203001"),
        "No se borra la cuenta 203001. Está en la configuración del año 2024 de la empresa 1: IVA de ventas "
        "(débito fiscal)");
    EXPECT_EQ(borrar("cuentas", "101101"), "");
    EXPECT_EQ(borrar("cuentas", "1011"), "");
    EXPECT_EQ(borrar("grupos", "1"), "No se borra el grupo 1. Tiene cuentas");
    EXPECT_EQ(borrar("auxiliares", "000012"), "No se borra el auxiliar 000012. Lo usan comprobantes");
    EXPECT_EQ(borrar("auxiliares", "000013"), "");
    EXPECT_EQ(borrar("tipos", "CL"), "No se borra el tipo CL. Tiene auxiliares");
    EXPECT_EQ(borrar("documentos", "001"), "No se borra el tipo de documento 001. Lo usan comprobantes");
    EXPECT_EQ(borrar("documentos", "002"), "");
    EXPECT_EQ(filas(*db, "select count(*) from adxdoc_sub where documento='002'"), "0");
    EXPECT_EQ(borrar("usuarios", "2"), "No se borra el usuario 2. Grabó comprobantes");
    // somebody who may do everything stays
    ejecutar(*db, "update admusuario set permiso='11111', alias=1");
    ejecutar(*db, "update admusuario set permiso='10011' where usuario=2");
    EXPECT_EQ(borrar("usuarios", "1"),
              "No se borra el usuario 1. Debe quedar alguien con todos los permisos");
    FilaCatalogo uno = leer("usuarios", "1");
    FilaCatalogo menos = uno;
    menos[4] = "0";
    EXPECT_EQ(reparos("usuarios", menos, uno), "n_usuario! Debe quedar alguien con todos los permisos\n");
    FilaCatalogo dos = leer("usuarios", "2"), borra = dos;
    borra[3] = "1";
    EXPECT_EQ(grabar("usuarios", borra, dos), "");
    EXPECT_EQ(filas(*db, "select permiso from admusuario where usuario=2"), "10111")
        << "the other flags stay";
}

TEST_P(Catalogos, WhatAnotherUserDidIsNotWrittenOver) {
    const FilaCatalogo antes = leer("auxiliares", "000014");
    FilaCatalogo mia = antes;
    mia[1] = "MI NOMBRE";
    const auto otro = abrir_sesion(conexion);
    ejecutar(*otro, "update ctxaux_cod set activo='0' where auxiliar='000014'");
    EXPECT_EQ(grabar("auxiliares", mia, antes), "Otro usuario cambió el auxiliar 000014 mientras tanto");
    EXPECT_EQ(borrar_fila(*db, catalogo("auxiliares"), antes),
              "Otro usuario cambió el auxiliar 000014 mientras tanto");
    EXPECT_EQ(leer("auxiliares", "000014")[4], "0");
    ejecutar(*otro, "delete from ctxaux_cod where auxiliar='000014'");
    EXPECT_EQ(grabar("auxiliares", mia, antes), "Otro usuario ya borró el auxiliar 000014");
    ejecutar(*otro, "insert into ctxaux_cod(auxiliar,n_auxiliar,tipo) values ('000100','DE OTRO','CL')");
    EXPECT_EQ(grabar("auxiliares", {"100", "MIO", "", "CL", "1"}), "Otro usuario ya creó el auxiliar 000100");
    EXPECT_EQ(leer("auxiliares", "000100")[1], "DE OTRO");
}

TEST_P(Catalogos, FindsAnyWordAmongThousandsSliceBySlice) {
    for (int i = 0; i < 1500; ++i)
        ejecutar(*db, "insert into ctxaux_cod(auxiliar,n_auxiliar,tipo,rut) values ('" +
                          std::to_string(200000 + i) + "','" + (i == 1400 ? "FERRETERÍA Ñandú" : "CLIENTE") +
                          "','" + (i % 2 != 0 ? "CL" : "PR") + "','" + (i == 7 ? "76.418.352-5" : "") + "')");
    BusquedaCatalogo b(*db, catalogo("auxiliares"), "", "");
    EXPECT_EQ(b.seguir().size(), 500U) << "the first rows do not wait for the others";
    EXPECT_EQ(hallados("auxiliares", "nandu ferreteria"), "201400 ");
    EXPECT_EQ(hallados("auxiliares", "nandu", "CL"), "");
    EXPECT_EQ(hallados("auxiliares", "76418352-5"), "000013 200007 ");
    EXPECT_EQ(hallados("auxiliares", "2014 pr ferr"), "201400 ");
    EXPECT_EQ(fila_nueva(*db, catalogo("auxiliares"))[0], "201500");
}

TEST(Derechos, TheChartAndTheUsersAreForWhoMayDoEverything) {
    EXPECT_TRUE(puede_cambiar(catalogo("usuarios"), "11111", 1));
    EXPECT_FALSE(puede_cambiar(catalogo("usuarios"), "11111", 2)) << "sees only his own vouchers";
    EXPECT_FALSE(puede_cambiar(catalogo("cuentas"), "11011", 1));
    EXPECT_TRUE(puede_cambiar(catalogo("auxiliares"), "11011", 2));
}

} // namespace
