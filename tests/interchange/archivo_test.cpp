#include "apoyo/disco.h"
#include "interchange/archivo_comprobante.h"
#include "text/letras_utf8.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <fstream>

using namespace quorvel;
namespace fs = std::filesystem;

namespace {

Comprobante venta() {
    Comprobante c;
    c.f_comp = leer_fecha("05/03/2015");
    c.documento = "001";
    c.num_docum = "000123";
    c.concepto = "Venta de ñandúes, 50% \"al contado\" €";
    c.libro = "VENTAS";
    c.doc_libro = "FACTURA";
    c.num_ref = "9876";
    c.rut_persona = "12.345.678-5 ";
    c.nombre = "O'HIGGINS Y CÍA. ";
    c.fecha_factura = leer_fecha("29/02/2012");
    c.codigo_no_recuperable = "1";
    c.codigo_otro_impuesto = "024";
    c.tasa_impuesto_otro = "31,5";
    c.activo_fijo = true;
    c.apertura = true;
    c.monto_neto = 1234567;
    c.ifrs = "2";
    c.totales = {1234567, 1234567};
    c.lineas = {{"103001", "1234", 1234567, {}, "Línea 'uno' \\ ;", "CC1", "S", "77", "024", "31,5"},
                {"401001", "", 0, 1234567}};
    c.lineas[0].glosa = "Línea 'uno' \\";
    return c;
}
std::string bytes(const Comprobante& c) { return bytes_de_comprobante(c, "1 Ferretería", "PS PESO"); }

template <class F> std::string error_de(F&& f) {
    try {
        f();
    } catch (const ErrorArchivo& e) {
        return e.what();
    }
    return "(nada)";
}
std::string con_fila(const std::string& fila) {
    return "empresa;\r\n1;05-03-2015;1;7;PS;10;10;c;;;;;n;;;;;;;;;;\r\nempresa\r\n" + fila;
}
/// @param finales rate, net and exempt amount of the header
std::string con_montos(const std::string& finales) {
    return "empresa;\r\n1;05-03-2015;1;7;PS;10;10;c;;;;;n;;;;;;" + finales + ";;\r\nempresa";
}
std::string leer_error(const std::string& b) {
    return error_de([&] { (void)interpretar_archivo(b); });
}

} // namespace

TEST(Archivo, IsWrittenByteForByte) {
    Comprobante c = venta();
    c.lineas.resize(1);
    const std::string esperado =
        "empresa;f_comp;documento;numero;moneda;debe;haber;concepto;libro;RUT_DOC;NUMERO_REF;TIPO_DOCUMENTO;"
        "NOMBRE;"
        "Fecha Doc;Fecha Vencimiento;Codigo No Recuperable; Activo Fijo;C\xF3"
        "digo otro impuesto;Tasa Otro Impuesto;Monto Neto;Monto Exento;Asiento Apertura;Norma\r\n"
        "1 Ferreter\xED"
        "a;05/03/2015;001;000123;PS PESO;1234567;1234567;Venta de \xF1"
        "and\xFA"
        "es, 50% \"al contado\" \x80;VENTAS;12.345.678-5 ;9876;FACTURA;O'HIGGINS Y C\xCD"
        "A. ;29/02/2012;;1;1;024;31.5;1234567;0;1;2\r\n"
        "empresa;f_comp;documento;numero;secuencia;cuenta;auxiliar;debe_nacional;haber_nacional;glosa;centro_"
        "costo;"
        "conciliado;doc.pagado;otro imp.;Tasa Imp.\r\n"
        "1 Ferreter\xED"
        "a;05/03/2015;001;000123;1;103001;1234;1234567;;L\xED"
        "nea 'uno' \\;CC1;S;77;024;31.5\r\n";
    EXPECT_EQ(bytes(c), esperado);
}

TEST(Archivo, ComesBackAsItWasWritten) {
    const Comprobante c = venta();
    const ComprobanteImportado leido = interpretar_archivo(bytes(c));
    ASSERT_TRUE(leido.reconocido && leido.con_cabecera);
    const Comprobante& i = leido.c;
    EXPECT_EQ(i.f_comp, c.f_comp);
    EXPECT_EQ(i.documento, "1");
    EXPECT_EQ(i.num_docum, c.num_docum);
    EXPECT_EQ(i.concepto, c.concepto);
    EXPECT_EQ(i.libro + "|" + i.doc_libro + "|" + i.num_ref, "VENTAS|FACTURA|9876");
    EXPECT_EQ(i.rut_persona + "|" + i.nombre, "12.345.678-5 |O'HIGGINS Y CÍA. ");
    EXPECT_TRUE(i.fecha_factura == c.fecha_factura && !i.fecha_pago);
    EXPECT_EQ(i.codigo_no_recuperable + i.codigo_otro_impuesto + i.tasa_impuesto_otro + i.ifrs, "102431,52");
    EXPECT_TRUE(i.activo_fijo && i.apertura && i.monto_neto == 1234567 && i.totales == c.totales);
    std::vector<Linea> lineas = c.lineas;
    lineas[0].auxiliar = "001234";
    EXPECT_EQ(i.lineas, lineas);
    EXPECT_FALSE(leido.sobran_campos);
}

TEST(Archivo, RefusesValuesThatWouldShiftOrLoseText) {
    struct Caso {
        const char* que;
        std::function<void(Comprobante&)> cambio;
        const char* dice;
    } const casos[] = {
        {"separator", [](auto& c) { c.concepto = "a;b"; }, "Línea 2, campo \"concepto\""},
        {"line end", [](auto& c) { c.nombre = "a\r\nb"; }, "Línea 2, campo \"NOMBRE\""},
        {"tab", [](auto& c) { c.lineas[1].glosa = "a\tb"; }, "Línea 5, campo \"glosa\""},
        {"foreign letter", [](auto& c) { c.lineas[0].glosa = "Łódź"; }, "\"Ł\" no existe"},
        {"zero byte", [](auto& c) { c.num_ref = std::string("a\0b", 3); }, "campo \"NUMERO_REF\""},
    };
    for (const auto& caso : casos) {
        Comprobante c = venta();
        caso.cambio(c);
        const std::string e = error_de([&] { (void)bytes(c); });
        EXPECT_NE(e.find(caso.dice), std::string::npos) << caso.que << ": " << e;
    }
}

TEST(Archivo, CellsReadFromTheFile) {
    const struct {
        const char *auxiliar, *debe, *leidos;
    } casos[] = {
        {"1234", "1234567", "001234 1234567"},
        {"12345678", "1234.5", "12345678 1235"},
        {"AB12", "2.5", "AB12 3"},
        {"12345678901234567", "0", "12345678901234567 0"},
        {"", "", " nada"},
        {"007", "-1500", "000007 -1500"},
        {"1", "0012", "000001 12"},
        {"1", "0.125", "000001 0"},
        {"1", "1234,5", "000001 1235"},
        {"1", "000123456789012345", "000001 123456789012345"},
    };
    for (const auto& c : casos) {
        const auto i =
            interpretar_archivo(con_fila(";;;;;cta;" + std::string(c.auxiliar) + ";" + c.debe + ";;g;;;;;"));
        ASSERT_EQ(i.c.lineas.size(), 1U);
        const Linea& l = i.c.lineas[0];
        EXPECT_EQ(l.auxiliar + " " + (l.debe ? l.debe->plano() : "nada"), c.leidos);
        EXPECT_TRUE(l.centro == "cta" && !l.haber && l.glosa == "g") << c.debe;
    }
}

TEST(Archivo, SaysLineAndFieldOfWhatItCannotRead) {
    const struct {
        std::string bytes;
        const char* dice;
    } casos[] = {
        {con_fila(";;;;;cta;;1.234.567;;g;;;;;"), "Línea 4, campo \"debe_nacional\""},
        {con_fila(";;;;;cta;;1.234;;g;;;;;"), "parece llevar puntos de miles"},
        {con_fila(";;;;;cta;;1234567890123456;;g;;;;;"),
         "campo \"debe_nacional\": \"1234567890123456\" es demasiado"},
        {con_fila(";;;;;cta;;;doce;g;;;;;"), "Línea 4, campo \"haber_nacional\""},
        {con_fila(";;;;;cta;;1;1;g;;;;;\n;;;;;cta;;1"), "Línea 5: tiene 8 campos y deben ser 15"},
        {con_fila("\n;;;;;cta;;1;1;g;;;;;"), "Línea 4: tiene 1 campos"},
        {con_fila(";;;;;cta;;1;1;a\tb;;;;;"), "campo \"glosa\": tiene un tabulador"},
        {con_fila(";;;;;cta;;1;1;a\x81;;;;;"), "Línea 4, campo \"glosa\": tiene un carácter desconocido"},
        {con_fila(";;;;;cta;;1;1;g;;;;;1/2-3"), "Línea 4, campo \"Tasa Imp.\": \"1/2-3\" no es una tasa"},
        {con_montos("1/2-3;;"), "Línea 2, campo \"Tasa Otro Impuesto\""},
        {con_montos(";1.234.567;"), "Línea 2, campo \"Monto Neto\": \"1.234.567\" no es un número"},
        {con_montos(";1,234,567;"), "Línea 2, campo \"Monto Neto\""},
        {con_montos(";;1.600"), "Línea 2, campo \"Monto Exento\": \"1.600\" parece llevar puntos de miles"},
        {"empresa\n1;2;3", "Línea 2: tiene 3 campos y deben ser 23"},
    };
    for (const auto& c : casos)
        EXPECT_NE(leer_error(c.bytes).find(c.dice), std::string::npos) << leer_error(c.bytes);
}

TEST(Archivo, AcceptsOtherLineEndsCodePagesAndExtraFields) {
    const auto i = interpretar_archivo("\xEF\xBB\xBF" + con_fila(";;;;;cta;;1;;año;;;;;;sobra\n\n \r\n"));
    const auto montos = interpretar_archivo(con_montos("31.5;-500;1234.5"));
    EXPECT_EQ(montos.c.tasa_impuesto_otro, "31,5");
    EXPECT_EQ(montos.c.monto_neto, -500);
    EXPECT_EQ(montos.c.monto_exento, Decimal::leer("1234,5"));
    ASSERT_EQ(i.c.lineas.size(), 1U);
    EXPECT_EQ(i.c.lineas[0].glosa, "año");
    EXPECT_TRUE(i.sobran_campos);
    EXPECT_EQ(i.c.f_comp, leer_fecha("05/03/2015"));
    for (const char* otro : {"", "Empresa;f_comp", "\xD0\xCF\x11", "empresas;x\n"})
        EXPECT_FALSE(interpretar_archivo(otro).reconocido) << otro;
    EXPECT_FALSE(interpretar_archivo("empresa").con_cabecera);
    EXPECT_EQ(error_de([] {
                  (void)interpretar_archivo(con_fila(std::string(20000, '\n') + "x"),
                                            [](long, long) { return false; });
              }).find("Línea 4"),
              0U);
}

TEST(Archivo, ReplacesTheOldFileAsAWhole) {
    char plantilla[] = "/tmp/archivoXXXXXX";
    const fs::path carpeta = ::mkdtemp(plantilla), archivo = carpeta / "123.csv";
    escribir_archivo(archivo, std::string(10000, 'x'));
    escribir_archivo(archivo, "corto\r\n");
    EXPECT_EQ(leer_archivo(archivo), "corto\r\n");
    EXPECT_NE(error_de([&] { escribir_archivo(carpeta / "no" / "x.csv", "a"); }).find("x.csv"),
              std::string::npos);
    fs::create_directory(carpeta / "ocupado.csv");
    EXPECT_NE(error_de([&] { escribir_archivo(carpeta / "ocupado.csv", "a"); }).find("ocupado.csv"),
              std::string::npos);
    EXPECT_NE(error_de([&] { (void)leer_archivo(carpeta / "falta.csv"); }).find("falta.csv"),
              std::string::npos);
    std::size_t n = 0;
    for (const auto& e : fs::directory_iterator(carpeta)) n += e.exists();
    EXPECT_EQ(n, 2U); // no leftovers
    fs::remove_all(carpeta);
}

TEST(Archivo, AFullDiskKeepsTheOldFile) {
    char plantilla[] = "/tmp/archivoXXXXXX";
    const fs::path carpeta = ::mkdtemp(plantilla), archivo = carpeta / "123.csv";
    escribir_archivo(archivo, "el de antes");
    std::string error;
    {
        const apoyo::ArchivosCortos lleno(4096);
        error = error_de([&] { escribir_archivo(archivo, std::string(10000, 'x')); });
    }
    EXPECT_NE(error.find("No se puede escribir el archivo " + archivo.string()), std::string::npos) << error;
    EXPECT_EQ(leer_archivo(archivo), "el de antes");
    EXPECT_EQ(std::distance(fs::directory_iterator(carpeta), fs::directory_iterator()), 1) << "no half file";
    fs::remove_all(carpeta);
}
