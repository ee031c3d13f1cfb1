#include "apoyo/empresa.h"
#include "apoyo/sesion_vigilada.h"
#include "apoyo/sesiones.h"
#include "interchange/cheque.h"
#include "interchange/factura.h"
#include "interchange/imprimir_comprobante.h"
#include "text/letras_utf8.h"

#include <gtest/gtest.h>

using namespace quorvel;
using namespace quorvel::apoyo;

namespace {

const Fecha F_COMP = *leer_fecha("05/03/2024");
const Clave CLAVE{1, "01", F_COMP, "001", "7"};

class Papeles : public ::testing::TestWithParam<Motor> {
protected:
    std::string conexion = conexion_empresa(GetParam());
    std::unique_ptr<clsConexion> db = abrir_sesion(conexion);
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
    /// What is said when the commit goes through, `cambio` follows it and the answer never comes.
    std::string sin_respuesta(const std::string& cambio,
                              const std::function<Desenlace(clsConexion&)>& grabar) const {
        SesionVigilada sesion(abrir_sesion(conexion));
        sesion.tras_commit = [&] {
            if (!cambio.empty()) ejecutar(*db, cambio);
            throw CommitSinRespuesta("", "");
        };
        return grabar(sesion).mensaje();
    }
};
constexpr const char* NO_QUEDO = "Se perdió la conexión con la base de datos, el cambio no quedó hecho";
template <class F> std::string dicho(F&& hacer) {
    try {
        hacer();
    } catch (const std::exception& e) {
        return e.what();
    }
    return "";
}
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
    ejecutar(*db, "insert into ctxaux_cod(auxiliar,n_auxiliar,activo,rut) values ('','NADIE','1','')");
    ImpresionComprobante i = impresion();
    i.concepto = std::string(149, 'c') + "ñandú";
    ASSERT_TRUE(preparar(*db, *reporte, i));
    EXPECT_EQ(en_papel("select secuencia,cuenta,n_cuenta,auxiliar from ctcQuorvel where secuencia>0 "
                       "order by secuencia"),
              "1|103001-000012|CLIENTES|JUAN PEREZ SOTO;2|101001|CAJA| ;3|999999-000777| | ");
    EXPECT_EQ(en_papel("select cuenta from ctcQuorvel where debe=1500 and haber=0"), "103001-000012");
    EXPECT_EQ(en_papel("select cuenta from ctcQuorvel where debe=0 and haber=1500"), "101001");
    EXPECT_EQ(en_papel("select secuencia from ctcQuorvel order by secuencia"), "-1;1;2;3");
    EXPECT_EQ(en_papel("select concepto,f_comp from ctcQuorvel where secuencia=2"),
              std::string(149, 'c') + "ñ|2024-03-05");
    EXPECT_EQ(en_papel("select revisado from ctcQuorvel order by secuencia"), ";Revisado;Revisado;Revisado");

    const std::string larga(200, 'x');
    ejecutar(*db,
             "update ctmcentros set centro='" + larga + "',n_centro='" + larga + "' where centro='101001'");
    ejecutar(*db, "update ctxaux_cod set n_auxiliar='" + larga + "' where auxiliar='000012'");
    ejecutar(*db, "update ctdquorvel set centro='" + larga + "',auxiliar='000012' where secuencia=2");
    i.empresa = i.usuario = i.documento = i.hora = i.elaborado = i.revisado = i.aprobado = larga;
    ejecutar(*db, "update ctdquorvel set num_docum='" + larga + "' where secuencia=2");
    i.clave.num_docum = larga;
    const auto anchos = [&](const char* secuencia) {
        const auto rs =
            reporte->NewRecord(std::string("select * from ctcQuorvel where secuencia=") + secuencia);
        std::string t;
        for (const char* columna :
             {"empresa", "usuario", "documento", "num_doc", "hora", "concepto", "cuenta", "n_cuenta",
              "auxiliar", "glosa", "revisado", "aprobado", "elaborado"})
            t += std::to_string(largo(rs->fields(columna).Value.text())) + " ";
        return t;
    };
    ASSERT_TRUE(preparar(*db, *reporte, i));
    EXPECT_EQ(anchos("2"), "50 50 30 10 10 150 26 50 80 150 30 30 30 ");
    i.clave.documento = "000"; // a voucher without lines has its header row alone
    ASSERT_TRUE(preparar(*db, *reporte, i));
    EXPECT_EQ(anchos("-1"), "50 50 30 10 10 150 0 0 0 0 30 30 30 ");
    EXPECT_EQ(en_papel("select secuencia from ctcQuorvel"), "-1") << "the rows before were replaced";
}

TEST_P(Papeles, AStoppedOrRefusedPrintoutKeepsTheOldRows) {
    ASSERT_TRUE(preparar(*db, *reporte, impresion()));
    const auto auxiliares = db->NewRecord("select * from ctxaux_cod");
    long vistas = 0;
    const auto avance = [&](long n, long total) {
        vistas = n + total; // nobody knows how many there are
        return false;
    };
    for (int i = 1; i <= 500; ++i) {
        linea(i, "'101001','',1,0,''");
        if (i != 499) continue;
        EXPECT_TRUE(preparar_comprobante(*db, *reporte, impresion(), *auxiliares, avance));
    }
    ejecutar(*reporte, "delete from ctcQuorvel where secuencia>0");
    EXPECT_EQ(vistas, 0);
    EXPECT_FALSE(preparar_comprobante(*db, *reporte, impresion(), *auxiliares, avance));
    EXPECT_EQ(vistas, 500);
    EXPECT_EQ(en_papel("select count(*) from ctcQuorvel"), "1");
    prohibir_cambios(*reporte, "ctcQuorvel", "hora");
    EXPECT_EQ(
        dicho([&] { preparar(*db, *reporte, impresion()); }).find("No se puede preparar la impresión: "), 0U);
    EXPECT_EQ(en_papel("select count(*) from ctcQuorvel"), "1");
}

TEST_P(Papeles, NeverTouchTheVouchersOfTheMainDatabase) {
    const auto negativa = [&](clsConexion& informes) {
        const std::string texto = dicho([&] { preparar(*db, informes, impresion()); });
        EXPECT_EQ(sirve_para_informes(*db, informes), texto.empty());
        return texto;
    };
    EXPECT_EQ(negativa(*db),
              "La base de informes es la misma base contable: no se puede imprimir sin dañar los "
              "comprobantes");
    EXPECT_EQ(negativa(*reporte), "");
    crear_tablas_impresion(*db);
    EXPECT_THROW((void)db->NewRecord("select * from ctccheque"), ErrorSesion);
    borrar_tablas_impresion(*db);
    EXPECT_EQ(en_base("select count(*) from ctcquorvel"), "1");
    EXPECT_FALSE(es_tabla_impresion(*db));
    EXPECT_TRUE(es_tabla_impresion(*reporte));
    crear_tablas_impresion(*reporte); // again: they are there
    borrar_tablas_impresion(*reporte);
    borrar_tablas_impresion(*reporte);
    EXPECT_FALSE(es_tabla_impresion(*reporte));
    for (const char* tabla : {"ctcQuorvel", "ctccheque", "ctcfactura"})
        EXPECT_THROW((void)reporte->NewRecord(std::string("select * from ") + tabla), ErrorSesion) << tabla;
    EXPECT_EQ(negativa(*reporte), "La base de informes no tiene las tablas de impresión");
    for (const auto& [columnas, impresa] : {std::pair("secuencia integer", true),
                                            {"secuencia integer, bloqueo_usuario integer", false},
                                            {"otra integer", false}}) {
        ejecutar(*reporte, std::string("create table ctcQuorvel(") + columnas + ")");
        EXPECT_EQ(es_tabla_impresion(*reporte), impresa) << columnas;
        ejecutar(*reporte, "drop table ctcQuorvel");
    }
    const auto mal_llamada = sesion_nueva(Motor::sqlite);
    crear_tablas_impresion(*mal_llamada);
    EXPECT_EQ(negativa(*mal_llamada),
              "La base de informes debe ser un archivo llamado print.db y no " + mal_llamada->Name());
    SesionVigilada perdida(abrir_sesion_informes(carpeta + "/print.db"));
    perdida.antes = [](const std::string& sql) { throw SesionFallida("perdida", sql); };
    EXPECT_THROW((void)es_tabla_impresion(perdida), SesionFallida) << "nothing is known about its tables";
    borrar_tablas_impresion(perdida); // the screen goes away all the same
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
    EXPECT_EQ(archivo_informe("print.db", "09azAZ", "x"), "09azAZx.rpt");
    EXPECT_EQ(dicho([] { (void)archivo_informe("postgresql://u:clave@h/b", "", "x"); }),
              "La base de informes debe ser un archivo llamado print.db y no un servidor");
    EXPECT_EQ(dicho([] { (void)archivo_informe("/d/reportes.db", "", "x"); }),
              "La base de informes debe ser un archivo llamado print.db y no /d/reportes.db");
    for (const std::string malo : {"../", "/", ":", "`", "{", "@", "["})
        EXPECT_EQ(dicho([&] { (void)archivo_informe("/d/print.db", malo, "x"); }),
                  "Tipo de impresora no válido: " + malo);
}

TEST_P(Papeles, ChequeIsSavedReadAndNumbered) {
    EXPECT_FALSE(leer_cheque(*db, CLAVE));
    const Cheque c{"1040", "BANCO D'ESTADO", "12-3", "Juan Peñá", leer_fecha("07/03/2024"), 1, 0};
    EXPECT_EQ(GrabarCheque(*db, CLAVE, c).mensaje(), "");
    const auto leido = leer_cheque(*db, CLAVE);
    EXPECT_TRUE(leido == c);
    cabecera("9", "OTRO");
    Clave nueve = CLAVE;
    nueve.num_docum = "9";
    const Cheque otro{"999", c.banco, c.cuenta, "B", {}, 0, 1};
    EXPECT_EQ(GrabarCheque(*db, nueve, otro).mensaje(), "");
    EXPECT_TRUE(leer_cheque(*db, nueve) == otro);
    EXPECT_EQ(proximo_cheque(*db, c.banco, c.cuenta), 1041); // as numbers, not as texts
    const std::pair<const char*, std::optional<std::int64_t>> series[] = {
        {"", {}}, {"-5", {}}, {"0", 1}, {"9000000000000000", 9000000000000001}, {"9900000000000000", {}}};
    for (const auto& [ultimo, siguiente] : series) {
        ASSERT_EQ(GrabarCheque(*db, nueve, {ultimo, "B", "C", "X", {}, 0, 0}).mensaje(), "");
        EXPECT_EQ(proximo_cheque(*db, "B", "C"), siguiente) << ultimo;
    }
    const auto repetir = [&](clsConexion& s) { return GrabarCheque(s, nueve, otro); };
    EXPECT_EQ(sin_respuesta("", repetir), "");
    EXPECT_EQ(sin_respuesta("update ctcquorvel set banco='X' where num_docum='9'", repetir), NO_QUEDO);
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
    const Cheque solo{std::string(31, 'n'), "B", "C", "X", {}, 0, 0};
    preparar_cheque(*reporte, std::string(51, 'e'), solo, "1.234,50");
    EXPECT_EQ(en_papel("select empresa,fecha,dia,mes,anio,monto,monto_texto,nominativo,cruzado,cheque from "
                       "ctccheque where secuencia=1"),
              std::string(50, 'e') + "|||||1234.5|MIL DOSCIENTOS TREINTA Y CUATRO CON CINCUENTA|0|0|" +
                  std::string(30, 'n'));
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
    c.lineas[0] = {"203001", "", 19000};
    EXPECT_EQ(iva_del_comprobante(c, "203001", "401001"), 19000) << "on either side";
    c.libro = "COMPRAS";
    EXPECT_EQ(iva_del_comprobante(c, "203001", "401001"), 100000);
    c.libro = "CONTABLES";
    EXPECT_EQ(iva_del_comprobante(c, "203001", "401001"), 0);
    c.libro = "VENTAS";
    c.lineas[0].centro = "";
    EXPECT_EQ(iva_del_comprobante(c, "", "401001"), 0) << "no account is configured";
    EXPECT_EQ(montos_iniciales(119000, 19000).neto, "100.000");
    EXPECT_EQ(montos_iniciales(119000, 0).neto, "0");
    EXPECT_EQ(montos_del_neto("250").total, "298"); // 297.5, not 297.4999…
    EXPECT_EQ(montos_del_neto("250").iva, "48");
    EXPECT_EQ(total_linea("1,5", "1.000"), "1.500");
    EXPECT_EQ(total_linea("", "1.000"), "0");
    const auto cuadre = [](const char* neto) { return cuadre_factura(factura().lineas, neto); };
    EXPECT_EQ(cuadre_factura({}, "100"), "Escriba cada producto: descripción, cantidad y precio");
    EXPECT_EQ(cuadre("100.000"), "✔ El detalle suma el neto");
    EXPECT_EQ(cuadre("101.000,5"), "Detalle 100.000, faltan 1.000,5 para el neto");
    EXPECT_EQ(cuadre("90.000"), "Detalle 100.000, sobran 10.000 para el neto");
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
        EXPECT_TRUE(r->icono == Icono::critico && r->va);
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
    const std::string persona = "select n_persona,telefonos,ciudad,provincia,direccion,cedula_ruc,"
                                "observacion,tipo,activo from admpersona where persona=3";
    EXPECT_EQ(en_base(persona), "O'HIGGINS|123|Santiago|Ñuñoa|Calle 1|12.345.678-5|Giro|J|1");
    EXPECT_EQ(en_base("select producto,observacion,cantidad,precio from ftdfactura order by producto"),
              "1|Clavos|1000|50;2|Tabla 'pino'|2.5|20000");
    f.lineas.erase(f.lineas.begin());
    f.numero = "F-78";
    f.neto = "50.000";
    f.iva = "9.500";
    f.total = "59.500";
    f.cliente = {"12345678-5", "OH", "C", "Maipú", "Talca", "G", "9"}; // without points the same person
    ASSERT_EQ(GrabarFactura(*db, CLAVE, f).mensaje(), "");
    EXPECT_EQ(en_base("select factura,proforma,cliente,descuento_esp,iva,valor_total from ftcfactura"),
              "1|F-78|3|50000|9500|59500");
    EXPECT_EQ(en_base(persona), "OH|9|Talca|Maipú|C|12345678-5|G|J|1");
    f.cliente.ruc = "12.345.678-5"; // nor with them
    ASSERT_EQ(GrabarFactura(*db, CLAVE, f).mensaje(), "");
    EXPECT_EQ(en_base("select count(*) from admpersona"), "3");
    const auto leida = leer_factura(*db, CLAVE);
    ASSERT_TRUE(leida);
    ASSERT_EQ(leida->lineas.size(), 1U);
    EXPECT_EQ(leida->lineas[0].descripcion + "|" + leida->lineas[0].cantidad + "|" + leida->lineas[0].precio +
                  "|" + leida->lineas[0].total,
              "Tabla 'pino'|2,5|20.000|50.000");
    EXPECT_EQ(leida->numero, "F-78");
    EXPECT_EQ(leida->fecha, f.fecha);
    EXPECT_EQ(leida->cliente.comuna, "Maipú");
    for (int n = 8; n <= 17; ++n) {
        Clave k = CLAVE;
        k.num_docum = std::to_string(n);
        ASSERT_EQ(GrabarFactura(*db, k, f).mensaje(), "") << n;
    }
    EXPECT_EQ(en_base("select factura from ftcfactura where num_docum='17'"), "11"); // 10 is not given twice
    f.lineas.assign(11, {"x", "1", "1", "1"});
    f.lineas[1].descripcion = "second";
    ASSERT_EQ(GrabarFactura(*db, CLAVE, f).mensaje(), "");
    EXPECT_EQ(leer_factura(*db, CLAVE)->lineas[1].descripcion, "second") << "by number: 10 comes late";
    ejecutar(*db, "delete from admpersona where persona=3");
    EXPECT_EQ(leer_factura(*db, CLAVE)->cliente.nombre, "") << "a customer who is gone";
    for (std::string Factura::*const monto : {&Factura::neto, &Factura::iva, &Factura::total}) {
        Factura mala = factura();
        mala.*monto = "1.23";
        EXPECT_EQ(GrabarFactura(*db, CLAVE, mala).mensaje(), std::string(monto == &Factura::neto  ? "Neto"
                                                                         : monto == &Factura::iva ? "Iva"
                                                                                                  : "Total") +
                                                                 " no válido: 1.23");
    }
}

/// Whether it was saved is asked of the database, down to each field.
TEST_P(Papeles, AnInvoiceWhoseAnswerIsLost) {
    const auto grabar = [](clsConexion& s) { return GrabarFactura(s, CLAVE, factura()); };
    EXPECT_EQ(sin_respuesta("", grabar), "");
    for (const char* cambio :
         {"delete from ftcfactura", "update ftcfactura set descuento_esp=1", "update ftcfactura set iva=1",
          "update ftcfactura set valor_total=1", "update ftcfactura set fecha=#01/01/2024#",
          "update ftcfactura set proforma='X'", "update admpersona set n_persona='X'",
          "update admpersona set direccion='X'", "update admpersona set provincia='X'",
          "update admpersona set ciudad='X'", "update admpersona set observacion='X'",
          "update admpersona set telefonos='X'", "update ftdfactura set observacion='X'",
          "update ftdfactura set cantidad=1", "update ftdfactura set precio=1", "delete from ftdfactura",
          // the same letters and digits, in other fields
          "update admpersona set n_persona='O', direccion='''HIGGINSCalle 1'",
          "update ftdfactura set observacion='Clavos100', cantidad=0 where producto='1'",
          "update ftdfactura set cantidad=10005, precio=0 where producto='1'"})
        EXPECT_EQ(sin_respuesta(cambio, grabar), NO_QUEDO) << cambio;
}

TEST_P(Papeles, CustomersAreFoundByRutAndNeverSharedWithoutOne) {
    EXPECT_EQ(buscar_cliente(*db, "9876543-3")->nombre, "ANA ROJAS");
    EXPECT_FALSE(buscar_cliente(*db, "1-9"));
    for (const auto& [persona, ruc] : {std::pair("91", ""), {"92", "11111111-1"}, {"93", "22.222.222-2"}})
        ejecutar(*db, std::string("insert into admpersona(persona,n_persona,cedula_ruc) values (") + persona +
                          ",'P" + persona + "','" + ruc + "')");
    EXPECT_FALSE(buscar_cliente(*db, " "));
    EXPECT_FALSE(buscar_cliente(*db, "1-8")) << "no RUT at all is not somebody without one";
    for (const char* ruc : {"11111111-1", "11.111.111-1"})
        EXPECT_EQ(buscar_cliente(*db, ruc).value_or(Cliente{}).nombre, "P92") << ruc;
    for (const char* ruc : {"22222222-2", "22.222.222-2"})
        EXPECT_EQ(buscar_cliente(*db, ruc).value_or(Cliente{}).nombre, "P93") << ruc;
    Factura conocida = factura();
    for (const auto& [ruc, persona] :
         {std::pair("11.111.111-1", "92"), {"22222222-2", "93"}, {"1-8", "94"}}) {
        conocida.cliente.ruc = ruc;
        ASSERT_EQ(GrabarFactura(*db, CLAVE, conocida).mensaje(), "");
        EXPECT_EQ(en_base("select cliente from ftcfactura"), persona) << ruc;
    }
    ejecutar(*db, "delete from ftcfactura");
    ejecutar(*db, "delete from admpersona where persona>2");
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
    f.lineas[1] = {"x", "2", "dos", "4"};
    EXPECT_EQ(GrabarFactura(*db, CLAVE, f).mensaje(), "problemas para grabar detalle factura ");
    intacta("unreadable price");
    f.lineas[1] = factura().lineas[1];
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
        en_papel("select secuencia,dia,mes,anio,fecha,factura,monto,iva,neto,rut,nombre,direccion,comuna,"
                 "ciudad,giro,fono,cantidad from ctcfactura where secuencia=1"),
        "1|06|MARZO|2024|06 de MARZO de 2024|F-77|119000|19000|100000|12.345.678-5|O'HIGGINS|Calle 1|Ñuñoa|"
        "Santiago|Giro|123|1000");
    EXPECT_EQ(en_papel("select texto1,texto2,texto3 from ctcfactura order by secuencia"),
              "CIENTO DIECINUEVE MIL|Clavos|50.000;CIENTO DIECINUEVE MIL|Tabla 'pino' (2,5 x 20.000)|50.000");
    const auto rs = reporte->NewRecord("select sum(cantidad*precio) as suma from ctcfactura");
    EXPECT_EQ(rs->fields("suma").Value.number(), 100000);
    Factura vacia = factura();
    vacia.lineas.clear();
    preparar_factura(*reporte, vacia);
    EXPECT_EQ(en_papel("select secuencia,cantidad from ctcfactura"), "0|0");
    Factura otra = factura();
    otra.numero = std::string(21, 'n');
    otra.lineas = {{std::string(151, 'd'), "1", "1", std::string(151, 't')}};
    const char* const meses[] = {"ENERO", "FEBRERO", "MARZO",      "ABRIL",   "MAYO",      "JUNIO",
                                 "JULIO", "AGOSTO",  "SEPTIEMBRE", "OCTUBRE", "NOVIEMBRE", "DICIEMBRE"};
    for (unsigned m = 1; m <= 12; ++m) {
        otra.fecha = Fecha{std::chrono::year{2024}, std::chrono::month{m}, std::chrono::day{9}};
        preparar_factura(*reporte, otra);
        EXPECT_EQ(en_papel("select fecha from ctcfactura"),
                  std::string("09 de ") + meses[m - 1] + " de 2024");
    }
    otra.fecha.reset();
    preparar_factura(*reporte, otra);
    EXPECT_EQ(en_papel("select dia,mes,anio,fecha,factura,texto2,texto3 from ctcfactura"),
              "||||" + otra.numero.substr(1) + "|" + std::string(150, 'd') + "|" + std::string(150, 't'));
    otra.iva = "1.23";
    EXPECT_EQ(dicho([&] { preparar_factura(*reporte, otra); }), "\"1.23\" no es un número");
}
