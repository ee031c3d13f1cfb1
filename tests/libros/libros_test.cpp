// Goal: journal, ledger, balance and monthly totals of a company whose figures are worked out by hand, on
// both engines. Method: seven vouchers of three months, with noise of another company and another year around
// them.
#include "apoyo/comprobante.h"
#include "apoyo/empresa.h"
#include "libros/balance.h"
#include "libros/diario.h"
#include "libros/exportar.h"
#include "libros/mayor.h"
#include "libros/mensual.h"
#include "libros/pendientes.h"

#include <gtest/gtest.h>

using namespace quorvel::libros;
using namespace quorvel;
using namespace quorvel::apoyo;

namespace {

std::string como(const ::testing::TestParamInfo<Motor>& m) { return nombre(m.param); }

std::string en_texto(const LineaBalance& l) {
    std::string texto = l.centro + " " + l.nombre;
    for (const std::int64_t monto : columnas_balance(l)) texto += " " + std::to_string(monto);
    return texto;
}
std::string en_texto(const Movimiento& m) {
    return fecha_dmy(m.donde.f_comp) + " " + m.donde.documento + "-" + m.donde.num_docum + "." +
           std::to_string(m.donde.secuencia) + " " + std::to_string(m.debe) + " " + std::to_string(m.haber) +
           " = " + std::to_string(m.saldo);
}
template <class T> std::string todas(const std::vector<T>& filas) {
    std::string texto;
    for (const T& f : filas) texto += en_texto(f) + "\n";
    return texto;
}

class Libros : public ::testing::TestWithParam<Motor> {
protected:
    struct Apunte {
        const char *cuenta, *auxiliar;
        std::int64_t debe, haber;
        std::string glosa = "";
    };
    void voucher(const std::string& dia, const std::string& documento, const std::string& numero,
                 const std::vector<Apunte>& apuntes, const char* norma = "0", const char* libro = "CONTABLES",
                 const char* estado = "P", int empresa = 1) {
        const std::string clave =
            "(" + std::to_string(empresa) + ",'01',#" + dia + "#,'" + documento + "','" + numero + "',";
        std::int64_t total = 0;
        for (const Apunte& a : apuntes) total += a.debe;
        ejecutar(*db,
                 "insert into ctcquorvel(empresa,subsistema,f_comp,documento,num_docum,ifrs,libro,estado,"
                 "t_debe,concepto) values " +
                     clave + "'" + norma + "','" + libro + "','" + estado + "'," + std::to_string(total) +
                     ",'Comprobante " + numero + "')");
        int i = 0;
        for (const Apunte& a : apuntes)
            ejecutar(*db, "insert into ctdquorvel(empresa,subsistema,f_comp,documento,num_docum,secuencia,"
                          "centro,auxiliar,debe_nacional,haber_nacional,glosa) values " +
                              clave + std::to_string(++i) + ",'" + a.cuenta + "','" + a.auxiliar + "'," +
                              std::to_string(a.debe) + "," + std::to_string(a.haber) + ",'" + a.glosa + "')");
    }
    void SetUp() override {
        voucher("01/01/2024", "001", "1", {{"101001", "", 1000000, 0}, {"301001", "", 0, 1000000}});
        voucher("01/15/2024", "001", "10",
                {{"103001", "000012", 119000, 0}, {"401001", "", 0, 100000}, {"203001", "", 0, 19000}}, "0",
                "VENTAS");
        voucher("01/15/2024", "001", "9",
                {{"501001", "", 40000, 0, "papel; \"tinta\""},
                 {"109001", "", 7600, 0},
                 {"201001", "000013", 0, 47600}},
                "0", "COMPRAS");
        voucher("02/10/2024", "002", "1", {{"101001", "", 119000, 0}, {"103001", "000012 ", 0, 119000}});
        voucher("02/20/2024", "001", "11", {{"501002", "", 5000, 0}, {"101001", "", 0, 5000}}, "2");
        voucher("02/25/2024", "001", "12", {}, "0", "CONTABLES", "X");
        voucher("03/31/2024", "001", "13", {{"501001", "", 10000, 0}, {"101002", "", 0, 10000}}, "1");
        voucher("01/15/2024", "001", "77", {{"101001", "", 8, 0}, {"301001", "", 0, 8}}, "0", "VENTAS", "P",
                2);
        voucher("12/31/2023", "001", "5", {{"101001", "", 3, 0}, {"301001", "", 0, 3}});
    }
    PedidoLibro trimestre(const char* norma = "") const {
        return {1, fecha(2024, 1, 1), fecha(2024, 3, 31), norma};
    }
    std::unique_ptr<clsConexion> db = crear_empresa(GetParam());
};

INSTANTIATE_TEST_SUITE_P(Motores, Libros, ::testing::ValuesIn(MOTORES), como);

TEST_P(Libros, LoQueFaltaEnCadaMes) {
    voucher("02/11/2024", "002", "5", {{"101001", "", 100, 0}, {"301001", "", 0, 90}});
    voucher("03/01/2024", "002", "7", {}, "0", "CONTABLES", "T");
    voucher("03/02/2024", "002", "8", {{"101001", "", 1, 0}, {"301001", "", 0, 1}}, "0", "VENTAS", "P", 2);
    std::string texto;
    for (const MesRevisado& m : revisar_meses(*db, 1, 2024)) {
        texto += std::to_string(m.comprobantes) + ":";
        for (const Pendiente& p : m.pendientes)
            texto += " " + std::to_string(static_cast<int>(p.que)) + " " + p.donde.documento + "-" +
                     p.donde.num_docum + " " + p.detalle + ";";
    }
    EXPECT_EQ(texto, "3: 2 001-9 faltan del 2 al 8;"
                     "4: 0 002-5 falta Haber 10; 2 002-5 faltan del 2 al 4;"
                     "2: 1 002-7 Comprobante 7; 2 002-7 falta el 6;0:0:0:0:0:0:0:0:0:");
    EXPECT_EQ(revisar_meses(*db, 1, 2023)[11].comprobantes, 1);
}

TEST_P(Libros, BalanceDeOchoColumnas) {
    const Balance b = leer_balance(*db, trimestre());
    EXPECT_EQ(todas(b.cuentas), "101001 CAJA 1119000 5000 1114000 0 1114000 0 0 0\n"
                                "101002 BANCO 0 10000 0 10000 0 10000 0 0\n"
                                "103001 CLIENTES 119000 119000 0 0 0 0 0 0\n"
                                "109001 IVA CREDITO 7600 0 7600 0 7600 0 0 0\n"
                                "201001 PROVEEDORES 0 47600 0 47600 0 47600 0 0\n"
                                "203001 IVA DEBITO 0 19000 0 19000 0 19000 0 0\n"
                                "301001 CAPITAL 0 1000000 0 1000000 0 1000000 0 0\n"
                                "401001 VENTAS 0 100000 0 100000 0 0 0 100000\n"
                                "501001 GASTOS GENERALES 50000 0 50000 0 0 0 50000 0\n"
                                "501002 COMPRAS 5000 0 5000 0 0 0 5000 0\n");
    EXPECT_EQ(en_texto(b.sumas), " Sumas 1300600 1300600 1176600 1176600 1121600 1076600 55000 100000");
    EXPECT_EQ(en_texto(b.resultado), " Utilidad del ejercicio 0 0 0 0 0 45000 45000 0");
    EXPECT_EQ(en_texto(b.totales), " Totales 1300600 1300600 1176600 1176600 1121600 1121600 100000 100000");
    EXPECT_EQ(b.descuadre(), 0);
    EXPECT_TRUE(b.sin_cuenta.empty());
    const std::string csv = balance_csv(b);
    EXPECT_EQ(csv.substr(0, csv.find('\n')),
              "Cuenta;Nombre;Débitos;Créditos;Deudor;Acreedor;Activo;Pasivo;Pérdida;Ganancia");
    EXPECT_NE(csv.find("\n101001;CAJA;1119000;5000;1114000;0;1114000;0;0;0\n"), std::string::npos);
    EXPECT_NE(csv.find("\n;Totales;1300600;1300600;1176600;1176600;1121600;1121600;100000;100000\n"),
              std::string::npos);
}

TEST_P(Libros, BalancePorNormaYConPerdida) {
    // one norm: its own vouchers and those of both
    EXPECT_EQ(en_texto(leer_balance(*db, trimestre("1")).resultado),
              " Utilidad del ejercicio 0 0 0 0 0 50000 50000 0");
    EXPECT_EQ(en_texto(leer_balance(*db, trimestre("2")).resultado),
              " Utilidad del ejercicio 0 0 0 0 0 55000 55000 0");
    EXPECT_EQ(en_texto(leer_balance(*db, trimestre("0")).resultado),
              en_texto(leer_balance(*db, trimestre()).resultado));
    // February loses money: the result changes sides and the totals still agree in pairs
    const Balance febrero = leer_balance(*db, {1, fecha(2024, 2, 1), fecha(2024, 2, 29)});
    EXPECT_EQ(en_texto(febrero.resultado), " Pérdida del ejercicio 0 0 0 0 5000 0 0 5000");
    EXPECT_EQ(en_texto(febrero.totales), " Totales 124000 124000 119000 119000 119000 119000 5000 5000");
    // nothing moved
    EXPECT_EQ(en_texto(leer_balance(*db, {1, fecha(2022, 1, 1), fecha(2022, 12, 31)}).totales),
              " Totales 0 0 0 0 0 0 0 0");
}

TEST_P(Libros, CierreDescuadreYCuentaFueraDelPlan) {
    PedidoLibro anio{1, fecha(2024, 1, 1), fecha(2024, 12, 31)};
    voucher("12/31/2024", "001", "99",
            {{"401001", "", 100000, 0},
             {"501001", "", 0, 50000},
             {"501002", "", 0, 5000},
             {"302001", "", 0, 45000}});
    ejecutar(*db, "update ctmconfigu set f_comp_cierre=#12/31/2024#, documento_cierre='001', "
                  "num_docum_cierre='99' where empresa=1 and anio=2024");
    EXPECT_EQ(en_texto(leer_balance(*db, anio).resultado), " Utilidad del ejercicio 0 0 0 0 0 0 0 0");
    anio.sin_cierre = true;
    EXPECT_EQ(en_texto(leer_balance(*db, anio).resultado), " Utilidad del ejercicio 0 0 0 0 0 45000 45000 0");
    anio.norma = "1";
    EXPECT_EQ(leer_balance(*db, anio).resultado.perdida, 50000);

    voucher("06/01/2024", "001", "50", {{"199999", "", 700, 0}, {"101001", "", 0, 500}});
    const Balance b = leer_balance(*db, {1, fecha(2024, 6, 1), fecha(2024, 6, 30)});
    EXPECT_EQ(b.descuadre(), 200);
    ASSERT_EQ(b.sin_cuenta.size(), 1U);
    EXPECT_EQ(b.sin_cuenta[0], "199999");
    EXPECT_EQ(en_texto(b.cuentas.back()), "199999  700 0 700 0 700 0 0 0");
}

TEST_P(Libros, MayorPorCuentaYAuxiliar) {
    const PedidoLibro febrero{1, fecha(2024, 2, 1), fecha(2024, 2, 29)};
    std::string cuentas;
    for (const CuentaMayor& c : leer_mayor(*db, febrero))
        cuentas += c.centro + " " + std::to_string(c.anterior) + " " + std::to_string(c.debe) + " " +
                   std::to_string(c.haber) + " = " + std::to_string(c.saldo()) + "\n";
    EXPECT_EQ(cuentas, "101001 1000000 119000 5000 = 1114000\n103001 119000 0 119000 = 0\n"
                       "109001 7600 0 0 = 7600\n201001 -47600 0 0 = -47600\n203001 -19000 0 0 = -19000\n"
                       "301001 -1000000 0 0 = -1000000\n401001 -100000 0 0 = -100000\n"
                       "501001 40000 0 0 = 40000\n501002 0 5000 0 = 5000\n");
    PedidoLibro clientes = febrero;
    clientes.por_auxiliar = true;
    const auto por_auxiliar = leer_mayor(*db, clientes);
    EXPECT_EQ(por_auxiliar[1].auxiliar + " " + por_auxiliar[1].n_auxiliar, "000012 JUAN PEREZ SOTO");
    EXPECT_EQ(por_auxiliar[1].saldo(), 0);
    clientes.cuenta = "103001";
    std::ostringstream csv;
    EXPECT_TRUE(escribir_libro_csv(*db, Libro::mayor, clientes, csv));
    EXPECT_EQ(csv.str(),
              "Cuenta;Nombre;Auxiliar;Fecha;Documento;Número;Línea;Glosa;Referencia;Debe;Haber;Saldo\n"
              "103001;CLIENTES;000012;;;;;Saldo anterior;;0;0;119000\n"
              "103001;CLIENTES;000012;10/02/2024;002;1;2;;;0;119000;0\n");

    const auto caja = leer_movimientos(*db, febrero, {"101001"}, 1000000);
    EXPECT_EQ(todas(caja), "10/02/2024 002-1.1 119000 0 = 1119000\n20/02/2024 001-11.2 0 5000 = 1114000\n");
    EXPECT_EQ(todas(leer_movimientos(*db, {1, fecha(2024, 2, 1), fecha(2024, 2, 29), "1"}, {"101001"}, 0)),
              "10/02/2024 002-1.1 119000 0 = 119000\n");
    EXPECT_EQ(leer_movimientos(*db, trimestre(), {"103001", "000012"}, 0).size(), 2U);
    EXPECT_TRUE(leer_movimientos(*db, trimestre(), {"103001", ""}, 0).empty());
    // pages of one carry the balance on
    std::vector<Movimiento> una_a_una;
    std::optional<Movimiento> ultimo;
    while (true) {
        const auto pagina = leer_movimientos(*db, febrero, {"101001"}, 1000000, ultimo, 1);
        if (pagina.empty()) break;
        una_a_una.push_back(pagina[0]);
        ultimo = pagina[0];
        ASSERT_LE(una_a_una.size(), 5U);
    }
    EXPECT_EQ(todas(una_a_una), todas(caja));
    EXPECT_EQ(mayor_csv(CuentaMayor{"101001", "CAJA", "", "", 1000000, 0, 0}),
              "101001;CAJA;;;;;;Saldo anterior;;0;0;1000000");
    EXPECT_EQ(mayor_csv(CuentaMayor{"101001", "CAJA", "", "", 0, 0, 0}, caja[1]),
              "101001;CAJA;;20/02/2024;001;11;2;;;0;5000;1114000");
}

TEST_P(Libros, DiarioEnOrdenPorPaginas) {
    std::string orden;
    recorrer_diario(*db, trimestre(), [&](const RenglonDiario& r) {
        orden += r.donde.documento + "-" + r.donde.num_docum + "." + std::to_string(r.donde.secuencia) +
                 (r.estado == "X" ? "X " : " ");
        return true;
    });
    // 9 comes before 10, the annulled voucher keeps its place
    EXPECT_EQ(orden, "001-1.1 001-1.2 001-9.1 001-9.2 001-9.3 001-10.1 001-10.2 001-10.3 002-1.1 002-1.2 "
                     "001-11.1 001-11.2 001-12.0X 001-13.1 001-13.2 ");
    for (const int filas : {1, 2, 4}) {
        std::string por_paginas;
        std::optional<Posicion> despues;
        for (int i = 0; i < 20; ++i) {
            const auto pagina = leer_diario(*db, trimestre(), despues, filas);
            if (pagina.empty()) break;
            for (const RenglonDiario& r : pagina)
                por_paginas += r.donde.documento + "-" + r.donde.num_docum + "." +
                               std::to_string(r.donde.secuencia) + (r.estado == "X" ? "X " : " ");
            despues = pagina.back().donde;
        }
        EXPECT_EQ(por_paginas, orden) << filas;
    }
    const TotalesDiario t = totales_diario(*db, trimestre());
    EXPECT_EQ(t.comprobantes, 6);
    EXPECT_EQ(t.debe, 1300600);
    EXPECT_EQ(t.haber, 1300600);
    EXPECT_EQ(totales_diario(*db, trimestre("2")).debe, 1290600);
    EXPECT_EQ(leer_diario(*db, trimestre("2")).size(), 13U);
    EXPECT_EQ(diario_csv(leer_diario(*db, trimestre())[2]),
              "15/01/2024;001;9;1;COMPRAS;Comprobante 9;P;501001;GASTOS GENERALES;;\"papel; \"\"tinta\"\"\";;"
              "40000;0");
}

TEST_P(Libros, ElArchivoSeDetieneEntreFilas) {
    db->BeginTrans();
    voucher("03/30/2024", "002", "77", std::vector<Apunte>(2000, {"101002", "", 1, 0}));
    db->CommitTrans();
    const PedidoLibro marzo{1, fecha(2024, 3, 30), fecha(2024, 3, 30)};
    const auto filas_hasta = [&](Libro libro, long fin) {
        std::ostringstream csv;
        const bool entero = escribir_libro_csv(*db, libro, marzo, csv, [&](long n, long) { return n < fin; });
        EXPECT_EQ(entero, fin > 2000);
        const std::string texto = csv.str();
        return std::count(texto.begin(), texto.end(), '\n');
    };
    EXPECT_EQ(filas_hasta(Libro::diario, 1000), 1001) << "with its titles";
    EXPECT_EQ(filas_hasta(Libro::diario, 2000), 2001);
    EXPECT_EQ(filas_hasta(Libro::diario, 2001), 2001);
    const auto titulos = filas_hasta(Libro::mayor, 9999) - 2000; // and a line for each account
    EXPECT_LT(filas_hasta(Libro::mayor, 1000), 1000 + titulos);
    EXPECT_GT(filas_hasta(Libro::mayor, 1000), 1000);
    std::ostringstream diario;
    EXPECT_TRUE(escribir_libro_csv(*db, Libro::diario, {1, fecha(2024, 2, 10), fecha(2024, 2, 10)}, diario));
    EXPECT_EQ(diario.str(),
              "Fecha;Documento;Número;Línea;Libro;Concepto;Estado;Cuenta;Nombre;Auxiliar;Glosa;"
              "Referencia;Debe;Haber\n"
              "10/02/2024;002;1;1;CONTABLES;Comprobante 1;P;101001;CAJA;;;;119000;0\n"
              "10/02/2024;002;1;2;CONTABLES;Comprobante 1;P;103001;CLIENTES;000012;;;0;119000\n");
}

TEST_P(Libros, TotalesMensuales) {
    voucher("01/20/2024", "001", "14", {{"401001", "", 9000, 0}, {"103001", "000012", 0, 9000}}, "0",
            "VENTAS");
    ejecutar(*db, "update ctcquorvel set doc_libro='N.C. ELECTRONICA ' where num_docum='14'");
    const auto libros = leer_totales_mensuales(*db, 1, 2024);
    std::string texto;
    for (const LibroMensual& l : libros) {
        texto += l.libro;
        for (std::size_t i = 0; i < 4; ++i)
            texto += " " + std::to_string(l.comprobantes[i]) + ":" + std::to_string(l.total[i]);
        texto += "\n";
    }
    EXPECT_EQ(texto, "COMPRAS 1:47600 0:0 0:0 0:0\nCONTABLES 1:1000000 2:124000 1:10000 0:0\n"
                     "VENTAS 2:110000 0:0 0:0 0:0\n");
    EXPECT_NE(totales_mensuales_csv(libros).find("\nCONTABLES;2;2;124000\n"), std::string::npos);
}

TEST(PedidoLibroTest, PeriodosQueNoSePuedenResponder) {
    const Fecha f = fecha(2024, 5, 1);
    EXPECT_FALSE(revisar_pedido({1, f, f}, true));
    EXPECT_EQ(revisar_pedido({1, f, fecha(2024, 4, 30)}, false)->mensaje,
              "La fecha inicial es posterior a la final");
    EXPECT_EQ(revisar_pedido({1, Fecha{}, f}, false)->mensaje, "Indique las dos fechas del período");
    EXPECT_FALSE(revisar_pedido({1, f, fecha(2025, 1, 1)}, false));
    EXPECT_TRUE(revisar_pedido({1, f, fecha(2025, 1, 1)}, true));
}

} // namespace
