// Goal: the office commands do what they say with real files, and nothing else.
// Method: the program itself, run as a person runs it, on real databases; the screen says what is right.
#include "apoyo/comprobante.h"
#include "apoyo/falla.h"
#include "apoyo/pantalla.h"
#include "apoyo/pg.h"
#include "interchange/archivo_comprobante.h"
#include "oficina/salida.h"
#include "registro/archivo.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <array>
#include <fstream>
#include <nlohmann/json.hpp>
#include <thread>

namespace quorvel::oficina {
namespace {

namespace fs = std::filesystem;

struct Corrida {
    int codigo;
    std::string salida, error;
};

class Oficina_ : public testing::TestWithParam<apoyo::Motor> {
protected:
    Oficina_()
        : carpeta(apoyo::carpeta_nueva()), conexion(apoyo::conexion_empresa(GetParam())),
          db(abrir_sesion(conexion)) {}
    /// @param orden the command and its arguments; the database is added
    Corrida correr(const std::string& orden) const {
        const std::string error = carpeta + "/.error";
        const std::string linea = "cd " + carpeta + " && XDG_DATA_HOME=" + carpeta +
                                  "/.datos " QUORVEL_PROGRAMA " " + orden + " --db '" + conexion + "' 2>" +
                                  error + " </dev/null";
        FILE* tubo = popen(linea.c_str(), "r");
        Corrida c{-1, "", ""};
        std::array<char, 4096> parte{};
        for (std::size_t n = 0; (n = fread(parte.data(), 1, parte.size(), tubo)) > 0;)
            c.salida.append(parte.data(), n);
        c.codigo = WEXITSTATUS(pclose(tubo));
        c.error = leer_archivo(error);
        return c;
    }
    void escribir(const std::string& nombre, const std::string& bytes) const {
        std::ofstream(carpeta + "/" + nombre, std::ios::binary) << bytes;
    }
    /// A purchase that may be saved; the file changes it as the case wants.
    void escribir(const std::string& nombre, const Comprobante& c) const {
        escribir(nombre, bytes_de_comprobante(c, "1 Otra", "PS PESO"));
    }
    [[nodiscard]] std::string sql(const std::string& consulta) const { return apoyo::filas(*db, consulta); }
    [[nodiscard]] std::string cuantos() const {
        return sql("select count(*) as n from ctcquorvel") + "/" +
               sql("select count(*) as n from ctdquorvel");
    }
    std::string carpeta, conexion;
    std::unique_ptr<clsConexion> db;
};

bool contiene(const std::string& texto, const std::string& que) {
    return texto.find(que) != std::string::npos;
}

Comprobante de_hoy(const std::string& numero, int lineas = 2) {
    Comprobante c;
    c.f_comp = apoyo::fecha(2024, 3, 20);
    c.documento = "001";
    c.num_docum = numero;
    c.concepto = "Traspaso " + numero;
    c.libro = "CONTABLES";
    for (int i = 0; i < lineas; i += 2) {
        c.lineas.push_back({"101001", "", 1000, {}, "año"});
        c.lineas.push_back({"301001", "", {}, 1000});
    }
    c.totales.debe = c.totales.haber = 1000LL * (lineas / 2);
    return c;
}

} // namespace

TEST_P(Oficina_, LoImportadoEsLoQueGrabaLaPantalla) {
    // another user's lock and this user's own stay as they are
    apoyo::ejecutar(*db, "insert into ctcquorvel(empresa,f_comp,documento,num_docum,bloqueo_usuario) values "
                         "(1,#03/01/2024#,'001','1',2)");
    apoyo::ejecutar(*db, "insert into ctcquorvel(empresa,f_comp,documento,num_docum,bloqueo_usuario) values "
                         "(1,#03/02/2024#,'001','2',1)");
    escribir("a.csv", apoyo::compra("7"));
    escribir("b.csv", de_hoy("30"));
    const Corrida ensayo = correr("import --dry-run a.csv b.csv");
    EXPECT_EQ(ensayo.codigo, BIEN) << ensayo.error;
    EXPECT_EQ(cuantos(), "2/0");
    const Corrida c = correr("import --user 2 a.csv b.csv");
    ASSERT_EQ(c.codigo, BIEN) << c.error;
    EXPECT_EQ(c.salida, "2 comprobantes en la base\n");
    EXPECT_EQ(c.error, "");
    EXPECT_EQ(
        sql("select documento,num_docum,libro,doc_libro,rut_persona,t_debe,t_haber,moneda,usuario,estado,"
            "nro_correlativo,bloqueo_usuario from ctcquorvel where usuario=2 order by documento"),
        "001|30|CONTABLES| | |1000|1000|PS|2|P|1|0;002|7|COMPRAS|FACTURA|76.418.352-5 "
        "|119000|119000|PS|2|P|1|0");
    EXPECT_EQ(
        sql("select secuencia,centro,auxiliar,debe_nacional,haber_nacional,glosa,centro2,conciliado,num_ref,"
            "codigo_otro_impuesto,tasa_impuesto_otro from ctdquorvel where documento='002' order by "
            "secuencia"),
        "1|501002||100000|0|compra|||||;2|109001||19000|0|iva||S|||;"
        "3|201001|000013|0|119000|factura|101001||9|024|31.50");
    EXPECT_EQ(sql("select ultimo_emitido from adxemp_doc order by documento"), "30;7");
    EXPECT_EQ(sql("select bloqueo_usuario from ctcquorvel where usuario=0 order by f_comp"), "2;1");
}

TEST_P(Oficina_, UnRegistroSeCotejaYSeContabiliza) {
    using namespace pruebas;
    const std::string roble = "76418352-5", nombre = "RCV_COMPRA_REGISTRO_76111222-8_202403.csv";
    const auto registro = [&](const std::string& lineas) {
        escribir(nombre, std::string(COMPRAS_REGISTRO) + "\n" + lineas);
    };
    escribir("anterior.csv", apoyo::compra("7"));
    ASSERT_EQ(correr("import anterior.csv").codigo, BIEN);
    registro(compra_de(1, roble, "97", 100000, {{"Tipo Doc", "30"}}) + compra_de(2, roble, "98", 1000) +
             compra_de(3, roble, "99", 1000));
    const Corrida cotejo = correr("register " + nombre);
    EXPECT_EQ(cotejo.codigo, BIEN) << cotejo.error; // what is new is no problem
    EXPECT_TRUE(contiene(cotejo.salida, "COMPRAS FACTURA: 1 en el registro, 1 en libros, diferencia 0\n"))
        << cotejo.salida;
    EXPECT_TRUE(contiene(cotejo.salida, "Mes 03/2024: nuevo: 2, contabilizado: 1\n")) << cotejo.salida;
    const Corrida ensayo = correr("register --book --dry-run " + nombre);
    EXPECT_EQ(ensayo.codigo, BIEN) << ensayo.error;
    EXPECT_EQ(cuantos(), "1/3");
    const Corrida c = correr("register --book --json " + nombre);
    EXPECT_EQ(c.codigo, BIEN) << c.salida;
    const auto j = nlohmann::json::parse(c.salida);
    EXPECT_EQ(j["contabilizados"], 2);
    EXPECT_EQ(j["filas"][1]["comprobante"], "002-8 del 10/03/2024");
    EXPECT_EQ(j["prueba"][1]["diferencia"]["neto"], 0);
    EXPECT_EQ(cuantos(), "3/9");
    registro(compra_de(1, roble, "98", 900) + compra_de(2, "77777777-7", "5", 10));
    const Corrida mal = correr("register --book " + nombre);
    EXPECT_EQ(mal.codigo, RECHAZADO);
    EXPECT_TRUE(contiene(mal.error, nombre + ":2: difiere: 33 factura electrónica 98 de 76.418.352-5: neto "
                                             "900 en el registro, 1.000 en libros (-100)"))
        << mal.error;
    EXPECT_TRUE(contiene(
        mal.error,
        nombre + ":3: nuevo: 33 factura electrónica 5 de 77.777.777-7: Falta cuenta para la contraparte\n"))
        << mal.error;
    EXPECT_TRUE(
        contiene(mal.error, "002-9 del 10/03/2024: falta en el registro: F. ELECTRONICA 99 de 76.418.352-5"))
        << mal.error;
    EXPECT_EQ(correr("register nada.csv").codigo, SIN_DATOS);
    EXPECT_EQ(correr("register anterior.csv").codigo, SIN_DATOS); // another kind of file
    EXPECT_EQ(correr("register --month 13/2024 " + nombre).codigo, MAL_USO);
    EXPECT_EQ(cuantos(), "3/9");
}

TEST_P(Oficina_, TodosLosProblemasConArchivoLineaYCampo) {
    Comprobante mal = apoyo::compra("8");
    mal.lineas[0].centro = "999999";
    mal.lineas[2].auxiliar = "";
    mal.concepto = mal.num_ref = "";
    mal.rut_persona = "76.418.352-6";
    escribir("reglas.csv", mal);
    mal = de_hoy("9");
    mal.f_comp = apoyo::fecha(2023, 12, 31);
    mal.ifrs = "7";
    mal.libro = "COMPRA";
    mal.totales.haber = 999;
    escribir("cabecera.csv", mal);
    escribir("formato.csv",
             reemplazar(reemplazar(bytes_de_comprobante(de_hoy("10"), "1", "PS"), ";1000;;a", ";1.000;;a"),
                        "20/03/2024;001;10;PS", "31/02/2024;001;10;PS"));
    escribir("vacio.csv", std::string());
    escribir("otro.csv", "fecha;monto\n1;2\n");
    escribir("columnas.csv",
             reemplazar(bytes_de_comprobante(de_hoy("11"), "1", "PS"), "cuenta;auxiliar", "auxiliar;cuenta"));
    escribir("bien.csv", de_hoy("12"));
    escribir("igual.csv", de_hoy("12"));
    escribir("compra.csv", apoyo::compra("13"));
    Comprobante repetida = apoyo::compra("14");
    repetida.num_ref = "913";
    escribir("repetida.csv", repetida);
    fs::create_directory(carpeta + "/carpeta.csv");
    const Corrida c =
        correr("import --json reglas.csv cabecera.csv formato.csv vacio.csv otro.csv columnas.csv "
               "bien.csv igual.csv compra.csv repetida.csv carpeta.csv falta.csv");
    EXPECT_EQ(c.codigo, SIN_DATOS);
    EXPECT_EQ(cuantos(), "0/0");
    const auto json = nlohmann::json::parse(c.salida);
    EXPECT_FALSE(json["ok"].get<bool>());
    EXPECT_EQ(json["grabados"], 0);
    std::string lista;
    for (const auto& p : json["problemas"])
        lista += p["archivo"].get<std::string>() + ":" + std::to_string(p["linea"].get<int>()) + ":" +
                 p["campo"].get<std::string>() + ":" + primeros(p["mensaje"].get<std::string>(), 22) + "\n";
    EXPECT_EQ(lista, "reglas.csv:2:RUT_DOC:El rut no es Válido (7\n"
                     "reglas.csv:2:concepto:Ingrese Glosa\n"
                     "reglas.csv:2:NUMERO_REF:Ingrese número de bole\n"
                     "reglas.csv:4:cuenta:Cuenta 999999 no válid\n"
                     "reglas.csv:6:auxiliar:Cuenta 201001 requiere\n"
                     "cabecera.csv:2:libro:no existe \"COMPRA\"\n"
                     "cabecera.csv:2:Norma:no existe \"7\"\n"
                     "cabecera.csv:2:f_comp:Fecha fuera del períod\n"
                     "cabecera.csv:2:f_comp:Año del Comprobante ya\n"
                     "cabecera.csv:2:debe:Comprobante descuadrad\n"
                     "formato.csv:2:f_comp:\"31/02/2024\" no es una\n"
                     "formato.csv:4:debe_nacional:\"1.000\" parece llevar \n"
                     "vacio.csv:1::no es un archivo de co\n"
                     "otro.csv:1::no es un archivo de co\n"
                     "columnas.csv:3:cuenta:el título de la column\n"
                     "igual.csv:2:numero:el mismo comprobante e\n"
                     "repetida.csv:2:NUMERO_REF:el mismo documento est\n"
                     "carpeta.csv:0::es una carpeta\n"
                     "falta.csv:0::No se puede abrir el a\n");
    EXPECT_EQ(correr("check igual.csv bien.csv").error,
              "bien.csv:2: numero: el mismo comprobante está en igual.csv\n1 problema en 2 archivos\n");
}

TEST_P(Oficina_, LosNumerosUsadosSeAvisanOSeCambian) {
    escribir("1.csv", de_hoy("5"));
    escribir("2.csv", de_hoy("5"));
    escribir("3.csv", de_hoy("9"));
    escribir("4.csv", de_hoy(""));
    ASSERT_EQ(correr("import 1.csv").codigo, BIEN);
    const Corrida otra_vez = correr("import 1.csv 3.csv");
    EXPECT_EQ(otra_vez.codigo, RECHAZADO);
    EXPECT_TRUE(contiene(otra_vez.error, "1.csv:2: numero: Ya existe un comprobante contable"));
    EXPECT_EQ(cuantos(), "1/2") << "the file without fault stays out too";
    const Corrida c = correr("import --renumber 1.csv 2.csv 3.csv 4.csv");
    EXPECT_EQ(c.codigo, BIEN) << c.error;
    EXPECT_TRUE(contiene(c.salida, "1.csv: número 5 pasa a 10\n2.csv: número 5 pasa a 11\n")) << c.salida;
    EXPECT_EQ(sql("select num_docum,nro_correlativo from ctcquorvel order by nro_correlativo"),
              "5|1;10|2;11|3;9|4;12|5");
}

TEST_P(Oficina_, ExportaLoMismoQueLaPantallaYVuelve) {
    pruebas::Pantalla p(GetParam());
    p.abrir();
    p.comprobante("1.234.567");
    p.guardar();
    p.nuevo();
    p.buscar("1");
    p.escritorio.elegir_archivo(carpeta + "/pantalla.csv");
    p.pulsar("mnuexportar");
    conexion = p.conexion;
    const Corrida c = correr("export --out salida/aqui");
    ASSERT_EQ(c.codigo, BIEN) << c.error;
    ASSERT_EQ(c.salida, "1 comprobante en salida/aqui\n");
    const fs::path salida = fs::path(carpeta) / "salida/aqui";
    std::vector<fs::path> archivos(fs::directory_iterator(salida), {});
    ASSERT_EQ(archivos.size(), 1U) << "no leftovers";
    EXPECT_EQ(leer_archivo(archivos[0]), leer_archivo(carpeta + "/pantalla.csv"));
    EXPECT_EQ(correr("export --out salida/aqui").codigo, RECHAZADO) << "nothing is overwritten unasked";
    EXPECT_EQ(correr("export --out salida/aqui --overwrite").codigo, BIEN);
    EXPECT_EQ(correr("import --renumber salida/aqui/*").codigo, BIEN);
}

TEST_P(Oficina_, LosNombresNoSalenDeLaCarpetaYLoQueNoSePuedeEscribirDetieneTodo) {
    for (const char* numero : {"../../fuga", "/etc/fuga", "a b", "a/b"})
        apoyo::ejecutar(*db, std::string("insert into ctcquorvel(empresa,f_comp,documento,num_docum) values "
                                         "(1,#03/01/2024#,'001','") +
                                 numero + "')");
    apoyo::ejecutar(*db, "insert into ctcquorvel(empresa,f_comp,documento,num_docum,estado) values "
                         "(1,#03/01/2024#,'001','9','X')");
    const Corrida c = correr("export --out f");
    EXPECT_EQ(c.codigo, BIEN) << c.error;
    EXPECT_EQ(c.salida, "4 comprobantes; 1 anulado omitido en f\n");
    std::vector<std::string> nombres;
    for (const auto& e : fs::directory_iterator(carpeta + "/f")) nombres.push_back(e.path().filename());
    std::ranges::sort(nombres);
    EXPECT_EQ(nombres,
              (std::vector<std::string>{"2024-03-01_001_______fuga.csv", "2024-03-01_001__etc_fuga.csv",
                                        "2024-03-01_001_a_b-2.csv", "2024-03-01_001_a_b.csv"}));
    apoyo::ejecutar(*db, "update ctcquorvel set concepto='uno;dos' where num_docum='a b'");
    const Corrida malo = correr("export --out g");
    EXPECT_EQ(malo.codigo, RECHAZADO);
    EXPECT_TRUE(contiene(malo.error, "001 Nro.a b Fecha:01/03/2024: Línea 2, campo \"concepto\""))
        << malo.error;
    EXPECT_TRUE(fs::is_empty(carpeta + "/g"));
}

TEST_P(Oficina_, ImprimeYLlevaLosLibros) {
    escribir("a.csv", apoyo::compra("7"));
    escribir("b.csv", de_hoy("30", 200));
    ASSERT_EQ(correr("import a.csv b.csv").codigo, BIEN);
    const Corrida uno = correr("print --pdf hojas/todo.pdf --from 01/03/2024 --to 2024-03-31");
    ASSERT_EQ(uno.codigo, BIEN) << uno.error;
    EXPECT_EQ(uno.error, "");
    EXPECT_EQ(correr("print --out hojas --document 001 --number 20-40").codigo, BIEN);
    const std::string texto = [&] {
        (void)std::system(
            ("cd " + carpeta + "/hojas && pdftotext todo.pdf && pdftotext 2024-03-20_001_30.pdf").c_str());
        return leer_archivo(carpeta + "/hojas/todo.txt");
    }();
    EXPECT_TRUE(contiene(texto, "Traspaso 30") && contiene(texto, "Compra de materiales"));
    EXPECT_FALSE(contiene(leer_archivo(carpeta + "/hojas/2024-03-20_001_30.txt"), "Compra de materiales"));
    apoyo::ejecutar(*db, "update admusuario set permiso='11110' where usuario=2");
    EXPECT_EQ(correr("print --user 2 --out hojas").codigo, SIN_DATOS);
    EXPECT_EQ(correr("print --out hojas --number 99").codigo, RECHAZADO);

    const auto balance = nlohmann::json::parse(correr("report balance --json --from 01/01/2024").salida);
    EXPECT_EQ(balance["filas"].back()["Débitos"], 219000);
    EXPECT_EQ(balance["filas"][0]["Cuenta"], "101001");
    EXPECT_EQ(correr("report ledger --account 109001 --format csv --to 31/12/2024").salida,
              "Cuenta;Nombre;Auxiliar;Fecha;Documento;Número;Línea;Glosa;Referencia;Debe;Haber;Saldo\n"
              "109001;IVA CREDITO;;;;;;Saldo anterior;;0;0;0\n"
              "109001;IVA CREDITO;;20/03/2024;002;7;2;iva;;19000;0;19000\n");
    ASSERT_EQ(correr("report journal --format pdf --out diario.pdf").codigo, BIEN);
    (void)std::system(("cd " + carpeta + " && pdftotext -layout diario.pdf").c_str());
    const std::string diario = leer_archivo(carpeta + "/diario.txt");
    EXPECT_TRUE(contiene(diario, "Página 1 de 5")) << "202 lines";
    EXPECT_TRUE(contiene(diario, "Libro diario") && contiene(diario, "119.000") &&
                contiene(diario, "factura"));
    EXPECT_TRUE(contiene(correr("report journal").salida, "100.000")) << "the accounting year by itself";
    if (GetParam() == apoyo::Motor::sqlite) {
        conexion.erase(0, std::string("sqlite:").size());
        EXPECT_EQ(correr("report monthly").codigo, BIEN) << "a path names a database as well";
    }
}

TEST_P(Oficina_, ElCodigoDeSalidaDiceQuePaso) {
    escribir("a.csv", de_hoy("1"));
    const struct {
        const char* orden;
        int codigo;
    } casos[] = {
        {"check", BIEN},
        {"import", MAL_USO},
        {"import --company 9 a.csv", SIN_DATOS},
        {"import --user 9 a.csv", SIN_DATOS},
        {"print", MAL_USO},
        {"export --out x --number 1-dos", MAL_USO},
        {"export --out x --from ayer", MAL_USO},
        {"export --out x --number 77", RECHAZADO},
        {"export --out a.csv", SIN_DATOS},
        {"report balance --from 01/01/2023 --to 31/12/2024", MAL_USO},
        {"report quien", MAL_USO},
        {"report balance --out /proc/no/x.csv", SIN_DATOS},
        {"import a.csv", BIEN},
    };
    for (const auto& c : casos) {
        const Corrida r = correr(c.orden);
        EXPECT_EQ(r.codigo, c.codigo) << c.orden << ": " << r.error;
        EXPECT_EQ(r.error.empty(), c.codigo == BIEN) << c.orden;
    }
}

TEST_P(Oficina_, LoQueLaBaseRechazaDiceSuMotivo) {
    escribir("a.csv", de_hoy("30"));
    const apoyo::Falla falla(conexion, GetParam(), "insert on ctcquorvel");
    const Corrida c = correr("import a.csv");
    EXPECT_EQ(c.codigo, RECHAZADO);
    EXPECT_TRUE(contiene(c.error, "Problemas al grabar cabecera (falla pedida)")) << c.error;
    EXPECT_EQ(cuantos(), "0/0");
}

TEST_P(Oficina_, UnaOrdenMalEscritaSeExplica) {
    const std::pair<const char*, const char*> casos[] = {
        {"report nada", "LIBRO: nada no es ninguno de: journal,ledger,balance,monthly"},
        {"import", "Falta ARCHIVO"},
        {"check --company uno", "--company debe ser un número: uno"},
        {"check --nada", "No se entiende: --nada"},
    };
    for (const auto& [orden, dicho] : casos) {
        const Corrida c = correr(orden);
        EXPECT_EQ(c.codigo, MAL_USO) << orden;
        EXPECT_EQ(c.error, std::string(dicho) + "\nCon --help se ven las opciones.\n");
    }
}

INSTANTIATE_TEST_SUITE_P(Motores, Oficina_, testing::ValuesIn(apoyo::MOTORES),
                         [](const auto& m) { return apoyo::nombre(m.param); });

/// The server goes away while the files are being saved: nothing of them stays.
TEST(OficinaServidor, UnServidorPerdidoNoDejaNada) {
    const std::string carpeta = apoyo::carpeta_nueva(),
                      conexion = apoyo::conexion_empresa(apoyo::Motor::postgres);
    std::string archivos;
    for (int i = 0; i < 8; ++i) {
        const std::string nombre = carpeta + "/" + std::to_string(i) + ".csv";
        std::ofstream(nombre, std::ios::binary)
            << bytes_de_comprobante(de_hoy(std::to_string(i + 1), 4000), "1", "PS");
        archivos += " " + nombre;
    }
    // cut as soon as the transaction has written its first lines
    std::thread corte([&] {
        auto mirar = abrir_sesion(conexion);
        for (int i = 0; i < 2000; ++i) {
            if (apoyo::filas(*mirar,
                             "select count(*) as n from pg_stat_activity where query like "
                             "'insert into ctdquorvel%' or query like 'Insert into ctdquorvel%'") != "0")
                break;
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        mirar.reset();
        apoyo::pg_cortar_conexiones();
    });
    const int codigo = std::system(
        (QUORVEL_PROGRAMA " import --db '" + conexion + "'" + archivos + " 2>" + carpeta + "/error").c_str());
    corte.join();
    EXPECT_EQ(WEXITSTATUS(codigo), SIN_DATOS);
    EXPECT_NE(leer_archivo(carpeta + "/error"), "");
    EXPECT_EQ(apoyo::filas(*abrir_sesion(conexion), "select count(*) as n from ctcquorvel"), "0");
}

} // namespace quorvel::oficina
