#include "apoyo/disco.h"
#include "apoyo/sesiones.h"
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
    c.documento = "001 TRASPASO";
    c.num_docum = "000123";
    c.concepto = "Venta de ñandúes, 50% \"al contado\" €";
    c.libro = "VENTAS";
    c.doc_libro = "FACTURA";
    c.num_ref = "9876";
    c.rut_persona = "12.345.678-5 ";
    c.nombre = "O'HIGGINS Y CÍA. ";
    c.fecha_factura = leer_fecha("29/02/2012");
    c.codigo_no_recuperable = "1 IVA";
    c.codigo_otro_impuesto = "024X";
    c.tasa_impuesto_otro = "31,5";
    c.activo_fijo = true;
    c.apertura = true;
    c.monto_neto = 1234567;
    c.ifrs = "2 IFRS";
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

/// Everything that a file has to be told of, as the lines of a message; empty for a file that has nothing.
std::string problemas(ComprobanteImportado& leido, const std::string& b) {
    std::string t;
    leido = revisar_archivo(b, [&](const ProblemaArchivo& p) {
        t += std::to_string(p.linea) + (p.grave ? "! " : "  ") + p.campo + ": " + p.mensaje + "\n";
    });
    return t;
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
    Comprobante vacio;
    vacio.totales.debe = Decimal::leer("1.234,5");
    vacio.monto_exento = 7;
    const std::string dos_lineas = bytes(vacio).substr(esperado.find("Norma") + 7);
    EXPECT_EQ(dos_lineas.substr(0, dos_lineas.find('\r')), "1 Ferreter\xED"
                                                           "a;;;;PS PESO;1234.5;0;;;;; ;;;;;0;;;0;7;0;0");
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
        {"separator", [](auto& c) { c.concepto = "a;b"; },
         "Línea 2, campo \"concepto\": no puede llevar \";\" (a;b)"},
        {"line end", [](auto& c) { c.nombre = "a\r\nb"; },
         "Línea 2, campo \"NOMBRE\": tiene un carácter de control (a  b)"},
        {"tab", [](auto& c) { c.lineas[1].glosa = "a\tb"; },
         "Línea 5, campo \"glosa\": tiene un carácter de control (a b)"},
        {"foreign letter", [](auto& c) { c.lineas[0].glosa = "Łódź"; },
         "Línea 4, campo \"glosa\": el carácter \"Ł\" no existe en el archivo (Łódź)"},
        {"zero byte", [](auto& c) { c.num_ref = std::string("a\0b", 3); },
         "Línea 2, campo \"NUMERO_REF\": tiene un carácter de control (a b)"},
    };
    for (const auto& caso : casos) {
        Comprobante c = venta();
        caso.cambio(c);
        EXPECT_EQ(error_de([&] { (void)bytes(c); }), caso.dice) << caso.que;
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
        {"1", ".5", "000001 1"},
        {"1", ".500", "000001 1"},
        {"1", "1234.500", "000001 1235"},
        {"1", "5.", "000001 5"},
        {"1", "0.1234567890123456", "000001 0"},
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
        {con_fila(";;;;;cta;;123.456;;g;;;;;"), "parece llevar puntos de miles"},
        {con_fila(";;;;;cta;;12:;;g;;;;;"), "\"12:\" no es un número (sin puntos de miles)"},
        {con_fila(";;;;;cta;;-;;g;;;;;"), "\"-\" no es un número"},
        {con_fila(";;;;;cta;;0.12345678901234567;;g;;;;;"), "\"0.12345678901234567\" no es un número"},
        {con_fila(";;;;;cta;;1234567890123456;;g;;;;;"),
         "campo \"debe_nacional\": \"1234567890123456\" es demasiado"},
        {con_fila(";;;;;cta;;;doce;g;;;;;"), "Línea 4, campo \"haber_nacional\""},
        {con_fila(";;;;;cta;;1;1;g;;;;;\n;;;;;cta;;1"), "Línea 5: tiene 8 campos y deben ser 15"},
        {con_fila("\n;;;;;cta;;1;1;g;;;;;"), "Línea 4: tiene 1 campos"},
        {con_fila(";;;;;cta;;1;1;a\tb;;;;;"), "campo \"glosa\": tiene un tabulador"},
        {con_fila("\t;;;;;cta;;1;1;a;;;;;"), "campo \"empresa\": tiene un tabulador"},
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
    EXPECT_EQ(montos.c.totales.debe, 10);
    EXPECT_EQ(montos.c.num_docum, "7");
    const Comprobante vacios =
        interpretar_archivo("empresa\n;;;;;;22;;;;;;;;05/03/2024x;123;-1;0245;;;;;21").c;
    EXPECT_EQ(vacios.codigo_no_recuperable + "|" + vacios.codigo_otro_impuesto + "|" + vacios.ifrs,
              "12|024|2");
    EXPECT_EQ(vacios.totales, (Totales{0, 22}));
    EXPECT_EQ(vacios.fecha_pago, leer_fecha("05/03/2024"));
    EXPECT_TRUE(vacios.monto_neto + vacios.monto_exento == 0 && !vacios.activo_fijo && !vacios.apertura);
    const auto abierto = interpretar_archivo("empresa\n;;;;;;;;;;;;;;;;;;;;;1;");
    EXPECT_TRUE(abierto.con_cabecera && abierto.c.apertura && abierto.c.totales == Totales());
    EXPECT_FALSE(interpretar_archivo("\x81\x81\x81\x81"
                                     "empresa;f_comp")
                     .reconocido)
        << "nor read at all";
    EXPECT_FALSE(interpretar_archivo("x\x81").reconocido);
}

TEST(Archivo, TellsEveryProblemOfAFile) {
    ComprobanteImportado leido;
    const std::string propio = bytes(venta());
    EXPECT_EQ(problemas(leido, propio), "");
    const auto con = [&](const char* que, const char* por) { return reemplazar(propio, que, por); };
    EXPECT_EQ(problemas(leido, con("Norma", " NORMA ")), "") << "the same title";
    EXPECT_EQ(problemas(leido, con("Norma", "Normas")), "1  Norma: el título de la columna es \"Normas\"\n");
    EXPECT_EQ(problemas(leido, con("Tasa Imp.", "Tasa")),
              "3  Tasa Imp.: el título de la columna es \"Tasa\"\n");
    EXPECT_EQ(problemas(leido, "empresa\n" + propio.substr(propio.find('\n') + 1)),
              "1  f_comp: el título de la columna es \"\"\n");
    EXPECT_EQ(problemas(leido, con("numero;moneda;debe", "moneda;numero;debe")),
              "1  numero: el título de la columna es \"moneda\"\n");

    const std::string cabecera = propio.substr(0, propio.find('\n') + 1) +
                                 ";1/13/2024;1;7;PS;a;b;c;;;;;n;31/02/2024;x;;;;%;c;1.234;;\n" +
                                 NOMBRES_DETALLE + "\n";
    EXPECT_EQ(
        problemas(leido, cabecera +
                             ";;;;;cta;;1;;g;;;;;;sobra; \n;;;;;cta;;1;;g;;;;;; ;\n;;;;;cta;;u;;g;;;;;\n"
                             ";;;;;cta;;1\n"),
        "2  f_comp: \"1/13/2024\" no es una fecha (dd/mm/aaaa)\n"
        "2! debe: \"a\" no es un número (sin puntos de miles)\n"
        "2! haber: \"b\" no es un número (sin puntos de miles)\n"
        "2  Fecha Doc: \"31/02/2024\" no es una fecha (dd/mm/aaaa)\n"
        "2  Fecha Vencimiento: \"x\" no es una fecha (dd/mm/aaaa)\n"
        "2! Tasa Otro Impuesto: \"%\" no es una tasa\n"
        "2! Monto Neto: \"c\" no es un número (sin puntos de miles)\n"
        "2! Monto Exento: \"1.234\" parece llevar puntos de miles\n"
        "4  : tiene 17 campos y deben ser 15\n"
        "6! debe_nacional: \"u\" no es un número (sin puntos de miles)\n"
        "7! : tiene 8 campos y deben ser 15\n");
    EXPECT_TRUE(leido.sobran_campos);
    EXPECT_TRUE(leido.c.monto_neto + leido.c.monto_exento == 0 && leido.c.totales == Totales());
    EXPECT_EQ(leido.c.lineas.at(2), (Linea{"cta", "", 0, {}, "g"}));
}

TEST(Archivo, TellsWhereLettersAreUnknown) {
    ComprobanteImportado leido;
    const std::string propio = bytes(venta());
    const auto con = [&](const char* que, const char* por) { return reemplazar(propio, que, por); };
    EXPECT_EQ(problemas(leido, "\x81"
                               "empresa;;\n"),
              "1! empresa: tiene un carácter desconocido\n");
    EXPECT_EQ(problemas(leido, "empresa\n" + std::string(22, ';') + "\x81\n" + NOMBRES_DETALLE + ";\x81"),
              "2! Norma: tiene un carácter desconocido\n3! : tiene un carácter desconocido\n"
              "1  f_comp: el título de la columna es \"\"\n");
    const std::string fila = ";;;;;cta;;1;;";
    EXPECT_EQ(problemas(leido, "empresa\x81;;;\x81\n"), "1! empresa: tiene un carácter desconocido\n"
                                                        "1! numero: tiene un carácter desconocido\n");
    EXPECT_EQ(problemas(leido, con("ZZ", "") + fila +
                                   "a\x81\x8D"
                                   "b\xF1;;;;;;x\x81\n"),
              "6! glosa: tiene un carácter desconocido\n6! glosa: tiene un carácter desconocido\n"
              "6! : tiene un carácter desconocido\n6  : tiene 16 campos y deben ser 15\n");
    EXPECT_EQ(leido.c.lineas.at(2), (Linea{"cta", "", 1, {}, "a??bñ"}));
    EXPECT_EQ(problemas(leido, con("empresa;f_comp;documento;numero;sec",
                                   "emp\x81resa;f_comp;documento;numero;sec")),
              "3! empresa: tiene un carácter desconocido\n"
              "3  empresa: el título de la columna es \"emp?resa\"\n");
    EXPECT_EQ(problemas(leido, con("VENTAS;", "\x81;;;;;;;;;;;;;;;\x81;")),
              "2! libro: tiene un carácter desconocido\n2! : tiene un carácter desconocido\n"
              "2  : tiene 38 campos y deben ser 23\n");

    const std::string nada = "empresa\n" + std::string(22, ';') + "\n" + NOMBRES_DETALLE + "\n";
    const std::string titulo = "1  f_comp: el título de la columna es \"\"\n";
    EXPECT_EQ(problemas(leido, nada + fila + "½ año;;;;;"), titulo) << "UTF-8 without a mark";
    EXPECT_EQ(leido.c.lineas.at(0), (Linea{"cta", "", 1, {}, "½ año"}));
    EXPECT_EQ(problemas(leido, nada + fila + "\xEF\xBF\xBD;;;;;"), titulo)
        << "another program's loss, kept as it is";
    EXPECT_EQ(leido.c.lineas.at(0), (Linea{"cta", "", 1, {}, "ï¿½"}));
    EXPECT_EQ(problemas(leido, "\xEF\xBB\xBF" + nada + fila + "½\xFF\xFF;;;;;"),
              "4  glosa: tiene un carácter desconocido\n4  glosa: tiene un carácter desconocido\n" + titulo);
}

TEST(Archivo, ALongFileIsReadInSteps) {
    std::string largo = con_fila("");
    for (int i = 0; i < 9998; ++i) largo += ";;;;;cta;;1;;g;;;;;\n";
    std::string oido;
    const auto hasta = [&](long fin) {
        return [&oido, fin](long hechas, long total) {
            oido += std::to_string(hechas) + "/" + std::to_string(total) + " ";
            return hechas < fin;
        };
    };
    EXPECT_EQ(interpretar_archivo(largo, hasta(20000)).c.lineas.size(), 9998U);
    EXPECT_EQ(oido, "5000/10001 10000/10001 ");
    EXPECT_EQ(error_de([&] { (void)interpretar_archivo(largo, hasta(10000)); }), "Importación cancelada");
    EXPECT_EQ(interpretar_archivo(largo).c.lineas.size(), 9998U);
}

TEST(Archivo, ReplacesTheOldFileAsAWhole) {
    char plantilla[] = "/tmp/archivoXXXXXX";
    const fs::path carpeta = ::mkdtemp(plantilla), archivo = carpeta / "123.csv";
    escribir_archivo(archivo, std::string(10000, 'x'));
    escribir_archivo(archivo, "corto\r\n");
    EXPECT_EQ(leer_archivo(archivo), "corto\r\n");
    EXPECT_EQ(fs::status(archivo).permissions(), fs::perms(0644));
    const fs::path falta = carpeta / "no" / "x.csv", ocupado = carpeta / "ocupado.csv";
    fs::create_directory(ocupado);
    const auto escribir = [](const fs::path& a) { return error_de([&] { escribir_archivo(a, "a"); }); };
    const auto leer = [](const fs::path& a) { return error_de([&] { (void)leer_archivo(a); }); };
    EXPECT_EQ(escribir(falta),
              "No se puede escribir el archivo " + falta.string() + ": No such file or directory");
    EXPECT_EQ(escribir(ocupado), "No se puede escribir el archivo " + ocupado.string() + ": Is a directory");
    EXPECT_EQ(leer(falta), "No se puede abrir el archivo " + falta.string() + ": No such file or directory");
    EXPECT_EQ(leer(ocupado), "No se puede abrir el archivo " + ocupado.string());
    {
        const fs::path base = apoyo::carpeta_nueva() + "/print.db";
        const auto abierta = abrir_sesion_informes(base.string());
        for (const auto& error : {escribir(base), leer(base)})
            EXPECT_EQ(error,
                      "El archivo " + base.string() + " es de la base de datos que está abierta: elija otro");
    }
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
