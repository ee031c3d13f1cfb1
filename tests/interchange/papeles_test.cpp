#include "apoyo/empresa.h"
#include "apoyo/sesiones.h"
#include "interchange/cheque.h"
#include "interchange/factura.h"
#include "interchange/imprimir_comprobante.h"

#include <gtest/gtest.h>

using namespace quorvel;
using namespace quorvel::apoyo;

namespace {

const Fecha F_COMP = *leer_fecha("05/03/2024");
const Clave CLAVE{1, "01", F_COMP, "001", "7"};

class Papeles : public ::testing::TestWithParam<Motor> {
protected:
    std::unique_ptr<clsConexion> db = crear_empresa(GetParam());
    std::string carpeta = carpeta_nueva();
    std::unique_ptr<clsConexion> reporte = abrir_sesion_informes(carpeta + "/print.db");

    void SetUp() override {
        crear_tablas_impresion(*reporte);
        cabecera("7", "CLIENTE");
    }
    void cabecera(const std::string& numero, const std::string& nombre_) const {
        ejecutar(*db, "insert into ctcquorvel(empresa,subsistema,f_comp,documento,num_docum,nombre) values "
                      "(1,'01',#03/05/2024#,'001','" +
                          numero + "','" + nombre_ + "')");
    }
    void linea(int secuencia, const std::string& resto) const {
        ejecutar(
            *db,
            "insert into ctdquorvel(empresa,subsistema,f_comp,documento,num_docum,secuencia,centro,auxiliar,"
            "debe_nacional,haber_nacional,glosa) values (1,'01',#03/05/2024#,'001','7'," +
                std::to_string(secuencia) + "," + resto + ")");
    }
    std::string en_base(const std::string& sql) const { return filas(*db, sql); }
    std::string en_papel(const std::string& sql) const { return filas(*reporte, sql); }
    /// From now on the database refuses to change this table.
    void prohibir(const std::string& tabla, const std::string& que) const {
        prohibir_cambios(*db, tabla, que);
    }
    static void prohibir_cambios(clsConexion& base, const std::string& tabla, const std::string& que);
};
std::string como(const ::testing::TestParamInfo<Motor>& m) { return nombre(m.param); }
INSTANTIATE_TEST_SUITE_P(Motores, Papeles, ::testing::ValuesIn(MOTORES), como);

/// A column is taken away: the next statement that names it is refused by the engine.
void Papeles::prohibir_cambios(clsConexion& base, const std::string& tabla, const std::string& que) {
    ejecutar(base, "alter table " + tabla + " rename column " + que + " to " + que + "_antes");
}

ImpresionComprobante impresion() {
    return {CLAVE,   "1 Empresa de Prueba", "1 ana",    "001 TRASPASO", "Pago d'O'Higgins",
            "10:45", "Elaborado",           "Revisado", "Aprobado"};
}
bool preparar(clsConexion& db, clsConexion& reporte, const ImpresionComprobante& i) {
    const auto auxiliares = db.NewRecord("select * from ctxaux_cod");
    return preparar_comprobante(db, reporte, i, *auxiliares);
}

Factura factura() {
    Factura f;
    f.numero = "F-77";
    f.fecha = leer_fecha("06/03/2024");
    f.cliente = {"12.345.678-5", "O'HIGGINS", "Calle 1", "Ñuñoa", "Santiago", "Giro", "123"};
    f.neto = "100.000";
    f.iva = "19.000";
    f.total = "119.000";
    f.lineas = {{"Clavos", "1.000", "50", "50.000"}, {"Tabla 'pino'", "2,5", "20.000", "50.000"}};
    return f;
}

} // namespace

TEST_P(Papeles, VoucherLinesAreStagedInOrderAndCutToTheirColumns) {
    linea(2, "'101001','',0,1500,'" + std::string(200, 'g') + "'");
    linea(1, "'103001','000012',1500,0,'ñandú'");
    linea(3, "'999999','000777',0,0,'cuenta que ya no existe'");
    ImpresionComprobante i = impresion();
    i.empresa = "1 " + std::string(60, 'E');
    i.documento = "001 " + std::string(40, 'D');
    i.concepto = std::string(149, 'c') + "ñandú";
    i.elaborado = std::string(40, 'e');
    ASSERT_TRUE(preparar(*db, *reporte, i));
    EXPECT_EQ(en_papel("select secuencia,cuenta,n_cuenta,auxiliar from ctcQuorvel where secuencia>0 "
                       "order by secuencia"),
              "1|103001-000012|CLIENTES|JUAN PEREZ SOTO;2|101001|CAJA| ;3|999999-000777| | ");
    EXPECT_EQ(en_papel("select cuenta from ctcQuorvel where debe=1500 and haber=0"), "103001-000012");
    EXPECT_EQ(en_papel("select cuenta from ctcQuorvel where debe=0 and haber=1500"), "101001");
    EXPECT_EQ(en_papel("select secuencia from ctcQuorvel order by secuencia"), "-1;1;2;3");
    const auto rs = reporte->NewRecord("select * from ctcQuorvel where secuencia=2");
    const std::pair<const char*, std::size_t> anchos[] = {
        {"empresa", 50}, {"documento", 30}, {"glosa", 150}, {"elaborado", 30}};
    for (const auto& [columna, ancho] : anchos)
        EXPECT_EQ(rs->fields(columna).Value.text().size(), ancho) << columna;
    EXPECT_EQ(rs->fields("concepto").Value.text(), std::string(149, 'c') + "ñ");
    EXPECT_EQ(rs->fields("f_comp").Value.date(), F_COMP);

    // the next printout replaces the rows; a voucher without lines has its header row alone
    i.clave.num_docum = "8";
    ASSERT_TRUE(preparar(*db, *reporte, i));
    EXPECT_EQ(en_papel("select secuencia,num_doc,revisado,aprobado from ctcQuorvel"),
              "-1|8|Revisado|Aprobado");
}

TEST_P(Papeles, AStoppedOrRefusedPrintoutKeepsTheOldRows) {
    ASSERT_TRUE(preparar(*db, *reporte, impresion()));
    for (int i = 1; i <= 501; ++i) linea(i, "'101001','',1,0,''");
    const auto auxiliares = db->NewRecord("select * from ctxaux_cod");
    long vistas = 0;
    EXPECT_FALSE(preparar_comprobante(*db, *reporte, impresion(), *auxiliares, [&](long n, long) {
        vistas = n;
        return false;
    }));
    EXPECT_EQ(vistas, 500);
    EXPECT_EQ(en_papel("select count(*) from ctcQuorvel"), "1");
    prohibir_cambios(*reporte, "ctcQuorvel", "hora");
    EXPECT_THROW(preparar(*db, *reporte, impresion()), ErrorSesion);
    EXPECT_EQ(en_papel("select count(*) from ctcQuorvel"), "1");
}

TEST_P(Papeles, NeverTouchTheVouchersOfTheMainDatabase) {
    EXPECT_THROW(preparar(*db, *db, impresion()), std::runtime_error);
    crear_tablas_impresion(*db);
    borrar_tablas_impresion(*db);
    EXPECT_EQ(en_base("select count(*) from ctcquorvel"), "1");
    EXPECT_FALSE(es_tabla_impresion(*db));
    EXPECT_TRUE(es_tabla_impresion(*reporte));
    crear_tablas_impresion(*reporte); // again: they are there
    borrar_tablas_impresion(*reporte);
    borrar_tablas_impresion(*reporte);
    EXPECT_FALSE(es_tabla_impresion(*reporte));
    EXPECT_THROW(preparar(*db, *reporte, impresion()), std::runtime_error);
    std::filesystem::create_symlink(carpeta, carpeta + "/otra");
    EXPECT_TRUE(misma_base(*reporte, *abrir_sesion_informes(carpeta + "/otra/print.db")));
    EXPECT_FALSE(misma_base(*reporte, *abrir_sesion_informes(carpeta_nueva() + "/print.db")));
}

TEST(Informe, StandsBesideTheReportDatabase) {
    EXPECT_EQ(archivo_informe("C:\\datos\\base.mdb", "", "ctcQuorvel"), "C:\\datos\\ctcQuorvel.rpt");
    EXPECT_EQ(archivo_informe("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=C:\\datos\\base.mdb", "M",
                              "ctcQuorvel"),
              "C:\\datos\\MctcQuorvel.rpt");
    EXPECT_EQ(archivo_informe("/var/datos/print.db", "", "ctccheque1"), "/var/datos/ctccheque1.rpt");
    EXPECT_THROW((void)archivo_informe("/var/datos/reportes.db", "", "x"), std::runtime_error);
    EXPECT_THROW((void)archivo_informe("/var/datos/print.db", "../", "x"), std::runtime_error);
}

TEST_P(Papeles, ChequeIsSavedReadAndNumbered) {
    EXPECT_FALSE(leer_cheque(*db, CLAVE));
    const Cheque c{"1040", "BANCO D'ESTADO", "12-3", "Juan Peñá", leer_fecha("07/03/2024"), 1, 0};
    EXPECT_EQ(GrabarCheque(*db, CLAVE, c).mensaje(), "");
    const auto leido = leer_cheque(*db, CLAVE);
    ASSERT_TRUE(leido);
    EXPECT_EQ(leido->cheque + leido->banco + leido->cuenta + leido->beneficiario,
              "1040BANCO D'ESTADO12-3Juan Peñá");
    EXPECT_EQ(leido->fecha, c.fecha);
    EXPECT_EQ(leido->nominativo * 10 + leido->cruzado, 10);
    cabecera("9", "OTRO");
    Clave nueve = CLAVE;
    nueve.num_docum = "9";
    EXPECT_EQ(GrabarCheque(*db, nueve, {"999", c.banco, c.cuenta, "B", {}, 0, 1}).mensaje(), "");
    EXPECT_EQ(leer_cheque(*db, nueve)->fecha, std::nullopt);
    EXPECT_EQ(proximo_cheque(*db, c.banco, c.cuenta), 1041); // as numbers, not as texts
    EXPECT_FALSE(proximo_cheque(*db, c.banco, "otra"));
    Clave falta = CLAVE;
    falta.num_docum = "8888";
    EXPECT_EQ(GrabarCheque(*db, falta, c).mensaje(), "Comprobante contable no encontrado");
}

TEST_P(Papeles, AFailedChequeLeavesThePreviousOne) {
    const Cheque c{"1", "B", "C", "ANTES", leer_fecha("07/03/2024"), 0, 0};
    ASSERT_EQ(GrabarCheque(*db, CLAVE, c).mensaje(), "");
    prohibir("ctcquorvel", "cruzado");
    const std::string error = GrabarCheque(*db, CLAVE, {"2", "B", "C", "DESPUES", {}, 0, 0}).mensaje();
    EXPECT_EQ(error.rfind("problemas para modificar factura sql:update ctcquorvel", 0), 0U) << error;
    EXPECT_EQ(en_base("select cheque,beneficiario from ctcquorvel where num_docum='7'"), "1|ANTES");
    db->BeginTrans(); // no transaction was left open
    db->rollback();
}

TEST_P(Papeles, ChequeStagingRow) {
    const Cheque c{"1041", "B", "C", std::string(149, 'x') + "ñoño", leer_fecha("07/03/2024"), 1, 1};
    preparar_cheque(*reporte, "1 Empresa", c, "1.234.567");
    EXPECT_EQ(
        en_papel("select secuencia,fecha,dia,mes,anio,monto_texto,nominativo,cruzado,cheque from ctccheque "
                 "where secuencia=1"),
        "1|07/03/2024|07|03|2024|UN MILLÓN DOSCIENTOS TREINTA Y CUATRO MIL QUINIENTOS SESENTA Y "
        "SIETE|1|1|1041");
    const auto rs = reporte->NewRecord("select * from ctccheque order by secuencia");
    EXPECT_EQ(rs->fields("monto").Value.number(), 1234567);
    EXPECT_EQ(rs->fields("beneficiario").Value.text(), std::string(149, 'x') + "ñ");
    preparar_cheque(*reporte, "1 Empresa", c, "1234,50");
    EXPECT_EQ(en_papel("select monto,monto_texto from ctccheque where secuencia=1"),
              "1234.5|MIL DOSCIENTOS TREINTA Y CUATRO CON CINCUENTA");
    preparar_cheque(*reporte, "1 Empresa", c, "20");
    EXPECT_EQ(en_papel("select secuencia from ctccheque order by secuencia"), "1;2");
    EXPECT_EQ(informe_cheque(c), "ctccheque1");
    // what figure and words could read differently
    for (const char* malo : {"abc", "150.00", "1234.567", "1.23,5", "1,505", "1,2.3", "9.999.999.999.999"})
        EXPECT_THROW(preparar_cheque(*reporte, "", c, malo), std::exception) << malo;
    EXPECT_EQ(en_papel("select monto_texto from ctccheque where secuencia=1"), "VEINTE");
}

TEST(Factura, AmountsOfTheForm) {
    Comprobante c;
    c.libro = "VENTAS";
    c.lineas = {{"203001", "", {}, 19000}, {"401001", "", {}, 100000}};
    EXPECT_EQ(iva_del_comprobante(c, "203001", "401001"), 19000);
    c.libro = "COMPRAS";
    EXPECT_EQ(iva_del_comprobante(c, "203001", "401001"), 100000);
    c.libro = "CONTABLES";
    EXPECT_EQ(iva_del_comprobante(c, "203001", "401001"), 0);
    EXPECT_EQ(montos_iniciales(119000, 19000).neto, "100.000");
    EXPECT_EQ(montos_iniciales(119000, 0).neto, "0");
    EXPECT_EQ(montos_del_neto("250").total, "298"); // 297.5, not 297.4999…
    EXPECT_EQ(montos_del_neto("250").iva, "48");
    EXPECT_EQ(total_linea("1,5", "1.000"), "1.500");
    EXPECT_EQ(total_linea("", "1.000"), "0");
}

TEST(Factura, ChecksBeforeSaving) {
    struct Caso {
        std::function<void(Factura&)> cambio;
        bool editando;
        const char* mensaje;
        Campo campo;
        int fila, columna;
    } const casos[] = {
        {[](auto& f) {
             f.numero = " ";
             f.fecha.reset();
         },
         true, "Numero de factura no válido", Campo::numero, -1, -1},
        {[](auto& f) {
             f.fecha.reset();
             f.lineas.clear();
         },
         true, "Fecha no válida", Campo::fecha, -1, -1},
        {[](auto& f) { f.lineas.clear(); }, true, "Ingrese detalle la factura", Campo::detalle, -1, -1},
        {[](auto& f) { f.lineas[0].descripcion = ""; }, true,
         "Cuadricula en modo de edicion, cambiese de fila para cambiar el modo ", Campo::detalle, -1, -1},
        {[](auto& f) { f.lineas[1].descripcion = ""; }, false, "Descripcion en linea 2", Campo::detalle, 1,
         1},
        {[](auto& f) {
             f.lineas[0].cantidad = "";
             f.lineas[1].descripcion = "";
         },
         false, "Ingrese cantidad", Campo::detalle, 0, 2},
        {[](auto& f) { f.lineas[1].precio = ""; }, false, "Ingrese precio unitario", Campo::detalle, 1, 3},
        {[](auto& f) { f.lineas[1].total = "49.000"; }, false,
         "Total detalle 99.000 es diferente a neto factura 100.000. La diferencia es -1.000", Campo::ninguno,
         -1, -1},
        {[](auto&) {}, false, nullptr, Campo::ninguno, -1, -1},
    };
    for (const auto& c : casos) {
        Factura f = factura();
        c.cambio(f);
        const auto r = ValidarFactura(f, c.editando);
        ASSERT_EQ(r.has_value(), c.mensaje != nullptr) << (r ? r->mensaje : c.mensaje);
        if (!r) continue;
        EXPECT_EQ(r->mensaje, c.mensaje);
        EXPECT_EQ(r->campo, c.campo);
        EXPECT_EQ(r->fila.value_or(-1), c.fila);
        EXPECT_EQ(r->columna.value_or(-1), c.columna);
    }
}

TEST_P(Papeles, InvoiceIsNumberedSavedAndEditedInPlace) {
    EXPECT_FALSE(leer_factura(*db, CLAVE));
    Factura f = factura();
    ASSERT_EQ(GrabarFactura(*db, CLAVE, f).mensaje(), "");
    EXPECT_EQ(en_base("select factura,proforma,cliente,descuento_esp,iva,valor_total from ftcfactura"),
              "1|F-77|3|100000|19000|119000");
    EXPECT_EQ(en_base("select n_persona,provincia,tipo,activo from admpersona where persona=3"),
              "O'HIGGINS|Ñuñoa|J|1");
    f.lineas.erase(f.lineas.begin());
    f.numero = "F-78";
    f.cliente.ruc = "12345678-5"; // the same RUT without points is the same person
    ASSERT_EQ(GrabarFactura(*db, CLAVE, f).mensaje(), "");
    EXPECT_EQ(en_base("select factura,proforma,cliente from ftcfactura"), "1|F-78|3");
    EXPECT_EQ(en_base("select count(*) from admpersona"), "3");
    const auto leida = leer_factura(*db, CLAVE);
    ASSERT_TRUE(leida);
    ASSERT_EQ(leida->lineas.size(), 1U);
    EXPECT_EQ(leida->lineas[0].descripcion + "|" + leida->lineas[0].cantidad + "|" + leida->lineas[0].precio +
                  "|" + leida->lineas[0].total,
              "Tabla 'pino'|2,5|20.000|50.000");
    EXPECT_EQ(leida->cliente.comuna, "Ñuñoa");
    for (int n = 8; n <= 17; ++n) {
        Clave k = CLAVE;
        k.num_docum = std::to_string(n);
        ASSERT_EQ(GrabarFactura(*db, k, f).mensaje(), "") << n;
    }
    EXPECT_EQ(en_base("select factura from ftcfactura where num_docum='17'"), "11"); // 10 is not given twice
}

TEST_P(Papeles, CustomersAreFoundByRutAndNeverSharedWithoutOne) {
    EXPECT_EQ(buscar_cliente(*db, "9876543-3")->nombre, "ANA ROJAS");
    EXPECT_FALSE(buscar_cliente(*db, ""));
    EXPECT_FALSE(buscar_cliente(*db, "1-9"));
    Factura f = factura();
    f.cliente.ruc = "";
    f.cliente.nombre = "UNO";
    ASSERT_EQ(GrabarFactura(*db, CLAVE, f).mensaje(), "");
    Clave otra = CLAVE;
    otra.num_docum = "8";
    f.cliente.nombre = "DOS";
    ASSERT_EQ(GrabarFactura(*db, otra, f).mensaje(), "");
    const auto sin_rut = [&] {
        return en_base("select n_persona from admpersona where persona>2 order by persona");
    };
    EXPECT_EQ(sin_rut(), "UNO;DOS");
    ASSERT_EQ(GrabarFactura(*db, otra, f).mensaje(),
              ""); // again, with another name, and then for a customer that is there
    f.cliente.nombre = "TRES";
    ASSERT_EQ(GrabarFactura(*db, otra, f).mensaje(), "");
    EXPECT_EQ(sin_rut(), "UNO;TRES");
    f.cliente.nombre = "UNO";
    ASSERT_EQ(GrabarFactura(*db, otra, f).mensaje(), "");
    f.cliente.nombre = "CUATRO"; // UNO has another invoice now
    ASSERT_EQ(GrabarFactura(*db, otra, f).mensaje(), "");
    EXPECT_EQ(sin_rut(), "UNO;TRES;CUATRO");
    EXPECT_EQ(leer_factura(*db, CLAVE)->cliente.nombre, "UNO");
    ejecutar(*db, "delete from admpersona");
    f.cliente.ruc = "1-9";
    EXPECT_EQ(GrabarFactura(*db, CLAVE, f).mensaje(), "maximo de persona no válido");
}

TEST_P(Papeles, AFailedStepUndoesTheWholeInvoice) {
    ASSERT_EQ(GrabarFactura(*db, CLAVE, factura()).mensaje(), "");
    Factura f = factura();
    f.numero = "NUEVO";
    f.cliente.nombre = "CAMBIADO";
    const auto intacta = [&](const char* paso) {
        EXPECT_EQ(en_base("select proforma from ftcfactura"), "F-77") << paso;
        EXPECT_EQ(en_base("select n_persona from admpersona where persona=3"), "O'HIGGINS") << paso;
        EXPECT_EQ(en_base("select count(*) from ftdfactura"), "2") << paso;
    };
    f.lineas[1].cantidad = "dos";
    EXPECT_EQ(GrabarFactura(*db, CLAVE, f).mensaje(), "problemas para grabar detalle factura ");
    intacta("unreadable quantity");
    f.lineas[1].cantidad = "2";
    prohibir("ftdfactura", "observacion");
    EXPECT_EQ(GrabarFactura(*db, CLAVE, f).mensaje(), "problemas para grabar detalle factura ");
    intacta("lines");
    prohibir("ftcfactura", "descuento_esp");
    EXPECT_EQ(GrabarFactura(*db, CLAVE, f)
                  .mensaje()
                  .rfind("problemas para modificar factura sql:update ftcfactura", 0),
              0U);
    intacta("header");
    Clave otra = CLAVE;
    otra.num_docum = "8";
    EXPECT_EQ(GrabarFactura(*db, otra, f)
                  .mensaje()
                  .rfind("Problemas para grabar factura sql:Insert into ftcfactura", 0),
              0U);
    prohibir("admpersona", "ciudad");
    // the column is gone from the statement too, so that only the customer's step can fail
    EXPECT_EQ(GrabarFactura(*db, CLAVE, f)
                  .mensaje()
                  .rfind("Problemas al ingresar persona sql:update admpersona", 0),
              0U);
}

TEST_P(Papeles, InvoiceStagingRows) {
    Factura larga = factura();
    larga.cliente.direccion = std::string(60, 'd');
    larga.lineas[0].precio = "33,333333";
    preparar_factura(*reporte, larga);
    EXPECT_EQ(en_papel("select direccion,precio from ctcfactura where secuencia=1"),
              std::string(60, 'd') + "|33.333333");
    preparar_factura(*reporte, factura());
    EXPECT_EQ(
        en_papel("select secuencia,dia,mes,anio,fecha,factura,rut,comuna,cantidad from ctcfactura order by "
                 "secuencia"),
        "1|06|MARZO|2024|06 de MARZO de 2024|F-77|12.345.678-5|Ñuñoa|1000;"
        "2|06|MARZO|2024|06 de MARZO de 2024|F-77|12.345.678-5|Ñuñoa|1");
    EXPECT_EQ(en_papel("select texto1,texto2,texto3 from ctcfactura order by secuencia"),
              "CIENTO DIECINUEVE MIL|Clavos|50.000;CIENTO DIECINUEVE MIL|Tabla 'pino' (2,5 x 20.000)|50.000");
    const auto rs = reporte->NewRecord("select sum(cantidad*precio) as suma from ctcfactura");
    EXPECT_EQ(rs->fields("suma").Value.number(), 100000);
    Factura vacia = factura();
    vacia.lineas.clear();
    preparar_factura(*reporte, vacia);
    EXPECT_EQ(en_papel("select secuencia,cantidad from ctcfactura"), "0|0");
}
