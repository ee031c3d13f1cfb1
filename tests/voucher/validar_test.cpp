// Goal: the checks of a save stop at the first failure, in their order, each with its text and focus.
// Method: one good voucher; each row spoils one thing more than the good one, and every failure after it in
// the table is spoilt as well, so that a check out of place shows another text.
#include "apoyo/comprobante.h"
#include "apoyo/sesiones.h"
#include "voucher/cargar.h"
#include "voucher/grabar.h"
#include "voucher/validar.h"

#include <gtest/gtest.h>

using namespace quorvel;
using namespace quorvel::apoyo;

namespace {

class Validar : public ::testing::TestWithParam<Motor> {
public:
    std::unique_ptr<clsConexion> db = crear_empresa(GetParam());
    Comprobante c = compra();
    Configuracion k = leer_configuracion(*db, 1, HOY);
    Maestros maestros;
    bool nuevo = true, editando = false;
    Fecha hoy = HOY;

    std::optional<Rechazo> rechazo() {
        return ValidarComprobante({c, k, maestros, *db, hoy, nuevo, editando});
    }
    std::string mensaje() {
        const auto r = rechazo();
        return r ? r->mensaje : "";
    }
    void guardar(const Comprobante& otro) {
        ASSERT_EQ(GrabarComprobante(*db, otro, {.nuevo = true, .hoy = HOY}).desenlace.mensaje(), "");
    }
};
std::string como(const ::testing::TestParamInfo<Motor>& m) { return nombre(m.param); }
INSTANTIATE_TEST_SUITE_P(Motores, Validar, ::testing::ValuesIn(MOTORES), como);

TEST_P(Validar, FirstFailureOfTheFixedOrder) {
    guardar(compra("1"));
    ejecutar(*db, "update ctmconfigu set f_digi_inicial=#02/01/2024#, f_digi_final=#12/30/2024#");
    k = leer_configuracion(*db, 1, HOY);
    ASSERT_EQ(rechazo()->mensaje.substr(0, 34), "Ya existe un comprobante contable ");
    struct Fila {
        const char* mensaje;
        Campo campo;
        bool va;
        Icono icono;
        void (*romper)(Validar&);
    };
    // from the last check to the first: each row keeps what the rows above it have spoilt
    const Fila filas[] = {
        {"Norma ingresada no valida", Campo::norma, false, Icono::exclamacion,
         [](Validar& v) { v.c.num_docum = "2", v.c.ifrs = "1"; }},
        {"Ya existe un comprobante contable con el mismo numero para esa fecha, debe cambiar el numero de "
         "comprobante o la fecha del comprobante antes de volver a presionar el boton actualizar, para que "
         "la información quede grabada.",
         Campo::numero, false, Icono::exclamacion, [](Validar& v) { v.c.num_docum = "1"; }},
        {"Comprobante descuadrado", Campo::totales, false, Icono::critico,
         [](Validar& v) { v.c.totales.haber = 119001; }},
        {"Cuadricula en modo de edicion, cambiese de fila para cambiar el modo ", Campo::detalle, true,
         Icono::critico, [](Validar& v) { v.editando = true; }},
        {"Ingrese detalle del comprobante", Campo::detalle, true, Icono::critico,
         [](Validar& v) { v.c.lineas.clear(); }},
        {"Ingrese libros", Campo::libro, true, Icono::critico, [](Validar& v) { v.c.libro = ""; }},
        {"Ingrese Glosa", Campo::concepto, true, Icono::critico, [](Validar& v) { v.c.concepto = ""; }},
        {"No se puede ingresar mas Comprobantes en el año 2024\r\n porque el Comprobante de Cierre Anual ha "
         "sido generado\r\n y todavia no se ha cerrado el Año Contable, para cerrar\r\n el año ejecute la "
         "opcion del menú Cerrar Año Contable",
         Campo::fecha, false, Icono::critico,
         [](Validar& v) {
             v.k.f_comp_cierre = fecha(2024, 3, 20);
             v.k.documento_cierre = "002", v.k.num_docum_cierre = "1";
             v.c.num_docum = "3";
         }},
        {"Año del Comprobante ya esta cerrado ", Campo::fecha, true, Icono::critico,
         [](Validar& v) { v.k.anio = 2025; }},
        {"Fecha de comprobante 20/03/2024 menor a fecha de documento:21/03/2024", Campo::fecha_documento,
         true, Icono::critico, [](Validar& v) { v.c.fecha_factura = fecha(2024, 3, 21); }},
        {"Fecha fuera del período de digitacion, Mínima:01/02/2024", Campo::fecha, true, Icono::critico,
         [](Validar& v) { v.c.f_comp = fecha(2024, 1, 31); }},
        {"Fecha fuera del período de digitacion, Mínima:01/02/2024", Campo::fecha, true, Icono::critico,
         [](Validar& v) { v.c.f_comp.reset(); }},
        {"Fecha fuera del período de digitacion, Máxima:30/12/2024", Campo::fecha, true, Icono::critico,
         [](Validar& v) { v.c.f_comp = fecha(2024, 12, 31); }},
        {"Ingrese Número", Campo::numero, true, Icono::critico, [](Validar& v) { v.c.num_docum = ""; }},
        {"Ingrese tipo de documento", Campo::documento, true, Icono::critico,
         [](Validar& v) { v.c.documento = ""; }},
    };
    for (const Fila& f : filas) {
        f.romper(*this);
        const auto r = rechazo();
        ASSERT_TRUE(r) << f.mensaje;
        EXPECT_EQ(r->mensaje.substr(0, std::string(f.mensaje).size()), f.mensaje);
        EXPECT_TRUE(r->campo == f.campo && r->va == f.va) << f.mensaje;
        EXPECT_EQ(r->icono, f.icono) << f.mensaje;
    }
}

TEST_P(Validar, LimitsThatPass) {
    for (const Fecha f : {fecha(2024, 1, 1), fecha(2024, 12, 31)}) {
        c.f_comp = c.fecha_factura = f;
        EXPECT_EQ(mensaje(), "");
    }
    c = compra();
    c.totales.debe = Decimal::leer("119.000,4"); // what is shown counts
    EXPECT_EQ(mensaje(), "");
    c.lineas[0].debe = Decimal::leer("100.000,4");
    EXPECT_EQ(mensaje().substr(0, 31), "Cuadricula en modo de edición,");
    c = compra();
    c.doc_libro = "B. ELECTRONICA"; // needs no VAT line
    c.lineas[1].centro = "501001";
    EXPECT_EQ(mensaje(), "");
    c.doc_libro = "FACTURA", c.libro = "CONTABLES", c.ifrs = "2", c.rut_persona = "";
    EXPECT_EQ(mensaje(), "");
}

TEST_P(Validar, PeriodOfTodayAndCompanyWithoutConfiguration) {
    ejecutar(*db, "update ctmconfigu set f_digi_inicial=null, f_digi_final=null");
    k = leer_configuracion(*db, 1, HOY);
    c.f_comp = HOY;
    EXPECT_EQ(mensaje(), "");
    hoy = fecha(2024, 6, 16); // the screen stayed open over midnight
    EXPECT_EQ(mensaje(), "Fecha fuera del período de digitacion, Mínima:16/06/2024");
    c.f_comp = hoy;
    EXPECT_EQ(mensaje(), "");
    k = leer_configuracion(*db, 99, HOY);
    EXPECT_EQ(mensaje().substr(0, 60), "La cuenta factura por cobrar no esta configurada. Antes de i");
}

TEST_P(Validar, BookChecks) {
    struct Fila {
        const char *libro, *que, *mensaje;
        Campo campo;
        bool va = true;
    };
    const Fila filas[] = {
        {"VENTAS", "doc", "Ingrese boleta o factura de venta", Campo::doc_libro},
        {"VENTAS", "ref", "Ingrese número de boleta o factura de venta", Campo::num_ref},
        {"VENTAS", "fecha", "Ingrese fecha de boleta o factura de venta", Campo::fecha_documento},
        {"VENTAS", "rut", "Ingrese RUT del cliente", Campo::rut},
        {"VENTAS", "nombre", "Ingrese nombre del cliente", Campo::nombre},
        {"VENTAS", "",
         "Asiento Contable del libro de VENTAS debe incluir la cuenta de Factura por cobrar 103001 o Boletas "
         "por cobrar103002",
         Campo::detalle, false},
        {"VENTAS", "103002", "Asiento Contable del libro de VENTAS debe incluir la cuenta de IVA 203001",
         Campo::detalle, false},
        {"COMPRAS", "doc", "Ingrese boleta o factura de compra", Campo::doc_libro},
        {"COMPRAS", "ref", "Ingrese número de boleta o factura de compras", Campo::num_ref},
        {"COMPRAS", "fecha", "Ingrese fecha de boleta o factura de compras", Campo::fecha_documento},
        {"COMPRAS", "rut", "Ingrese RUT del proveedor", Campo::rut},
        {"COMPRAS", "nombre", "Ingrese nombre del proveedor", Campo::nombre},
        {"COMPRAS", "101001",
         "Asiento Contable del libro de COMPRAS debe incluir la cuenta de Factura por pagar 201001 o Boletas "
         "por pagar201002",
         Campo::detalle, false},
        {"RETENCIONES", "doc", "Ingrese boleta de honorarios", Campo::doc_libro},
        {"RETENCIONES", "boleta", "Ingrese boleta de honorarios", Campo::doc_libro},
        {"RETENCIONES", "ref", "Ingrese número de boleta de honorarios", Campo::num_ref},
        {"RETENCIONES", "fecha", "Ingrese fecha de boleta de honorarios", Campo::fecha_documento},
        {"RETENCIONES", "rut", "Ingrese RUT del prestador del servicio", Campo::rut},
        {"RETENCIONES", "nombre", "Ingrese nombre del prestador del servicio", Campo::nombre},
        {"RETENCIONES", "",
         "Asiento Contable del libro de RETENCIONES debe incluir la cuenta de honorarios por pagar 204001",
         Campo::detalle, false},
        {"RETENCIONES", "204001",
         "Asiento Contable del libro de RETENCIONES debe incluir la cuenta de retención segunta categoria "
         "204002",
         Campo::detalle, false},
        {"EGRESOS", "doc", "", Campo::ninguno},
    };
    for (const Fila& f : filas) {
        c = compra();
        c.libro = f.libro;
        if (c.libro == "RETENCIONES") c.doc_libro = "BOLETA";
        const std::string campo = f.que;
        if (campo == "doc") c.doc_libro = " ";
        if (campo == "boleta") c.doc_libro = "FACTURA";
        if (campo == "ref") c.num_ref = "";
        if (campo == "fecha") c.fecha_factura.reset();
        if (campo == "rut") c.rut_persona = "";
        if (campo == "nombre") c.nombre = "";
        if (campo.starts_with("1") || campo.starts_with("2")) c.lineas[2].centro = campo;
        const auto r = ValidarLibro({c, k, maestros, *db, hoy, true, false});
        EXPECT_EQ(r ? r->mensaje : "", f.mensaje) << f.libro << ' ' << f.que;
        EXPECT_TRUE(!r || (r->campo == f.campo && r->va == f.va)) << f.mensaje;
    }
}

TEST_P(Validar, RepeatedDocumentCountsActiveVouchersOfOthers) {
    guardar(compra("1"));
    nuevo = false;
    EXPECT_EQ(mensaje(), "") << "does not find itself";
    nuevo = true;
    c.num_docum = "2";
    const char* const repetido = "Ya existe una documento:FACTURA numero:91 RUT:76.418.352-5";
    EXPECT_EQ(mensaje(), repetido);
    nuevo = false;
    EXPECT_EQ(mensaje(), repetido);
    c.rut_persona = "O'Higgins";
    EXPECT_EQ(mensaje(), "");
    c.rut_persona = "76.418.352-5";
    ASSERT_EQ(
        AnularComprobante(*db, compra("1"), HOY, leer_guardado(*db, compra("1").clave())->huella).mensaje(),
        "");
    EXPECT_EQ(mensaje(), "");
}

TEST_P(Validar, Lines) {
    struct Fila {
        Linea linea;
        const char* mensaje;
        int columna;
    };
    const Fila filas[] = {
        {{"", "", 1, {}}, "Ingrese cuenta en linea 2", 1},
        {{"501009", "", 1, {}}, "Cuenta 501009 no válida", 1},
        {{"9'9", "", 1, {}}, "Cuenta 9'9 no válida", 1},
        {{"103001", "", 1, {}}, "Cuenta 103001 requiere auxiliar", 2},
        {{"101001", "000012", 1, {}}, "Cuenta 101001 no requiere auxiliar", 2},
        {{"101001", "", {}, {}}, "Ingrese valor del debe", 3},
    };
    maestros.reabrir(*db, false);
    for (const Fila& f : filas) {
        const auto r = ValidarLineas({compra().lineas[0], f.linea}, maestros[Maestro::cuentas]);
        ASSERT_TRUE(r) << f.mensaje;
        EXPECT_EQ(r->mensaje, f.mensaje);
        EXPECT_EQ(r->fila, 1);
        EXPECT_EQ(r->columna, f.columna) << f.mensaje;
    }
    const std::vector<Linea> centavos = {{"101001", "", Decimal::leer("0,1"), {}},
                                         {"101001", "", Decimal::leer("0,2"), {}},
                                         {"101002", "", {}, Decimal::leer("0,3")}};
    EXPECT_FALSE(ValidarLineas(centavos, maestros[Maestro::cuentas])) << "summed in decimal";
    // Eighteen digits can be stored, as a total too.
    const auto lineas = [](std::int64_t ultimo, bool al_debe) {
        std::vector<Linea> todas;
        for (const std::int64_t monto : {900'000'000'000'000'000, 99'999'999'999'999'999, ultimo})
            for (const bool debe : {al_debe, !al_debe}) {
                todas.push_back({"101001", ""});
                (debe ? todas.back().debe : todas.back().haber) = monto;
            }
        return todas;
    };
    for (const bool al_debe : {true, false}) {
        EXPECT_FALSE(ValidarLineas(lineas(0, al_debe), maestros[Maestro::cuentas]));
        const auto r = ValidarLineas(lineas(1, al_debe), maestros[Maestro::cuentas]);
        ASSERT_TRUE(r) << "balanced, and one peso more than fits";
        EXPECT_EQ(r->mensaje, "Monto no válido");
        EXPECT_EQ(std::pair(r->fila, r->columna),
                  std::pair(std::optional(4), std::optional(al_debe ? 3 : 4)));
        c = compra();
        c.lineas = lineas(1, al_debe);
        EXPECT_EQ(GrabarComprobante(*db, c, {.nuevo = true, .hoy = HOY}).desenlace.mensaje(),
                  "Problemas al grabar detalle");
        c.lineas = lineas(0, al_debe);
        const auto guardado = leer_guardado(*db, c.clave());
        ASSERT_EQ(GrabarComprobante(
                      *db, c, {.nuevo = al_debe, .hoy = HOY, .huella = guardado ? guardado->huella : ""})
                      .desenlace.mensaje(),
                  "");
        EXPECT_EQ(apoyo::filas(*db, "select t_debe, t_haber from ctcquorvel"),
                  "999999999999999999|999999999999999999");
    }
}

} // namespace
