// Goal: a backup is one moment of a database in use with every file that it names, and it comes back wholly
// or not at all. Method: vouchers are saved by the screen while copies are taken, backups are spoiled, and
// restoring processes are killed on the way; what is there afterwards is compared row by row, byte by byte.
#include "apoyo/pantalla.h"
#include "apoyo/proceso.h"
#include "dbtools/base.h"
#include "dbtools/linea.h"
#include "dbtools/respaldo.h"
#include "dbtools/revisar.h"
#include "demo/demo.h"
#include "oficina/salida.h"
#include "platform/files/attachments.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <fstream>
#include <functional>
#include <map>
#include <set>
#include <sstream>
#include <thread>

namespace quorvel::dbtools {
namespace {

namespace fs = std::filesystem;
using apoyo::Motor;
using pruebas::correr;
using pruebas::Corrida;
using pruebas::Pantalla;

const AvancePartes CALLADO = [](const std::string&, long, long) {};

std::string leer(const fs::path& ruta) {
    std::ostringstream texto;
    texto << std::ifstream(ruta, std::ios::binary).rdbuf();
    return texto.str();
}

void escribir(const fs::path& ruta, const std::string& texto) {
    fs::create_directories(ruta.parent_path());
    std::ofstream(ruta, std::ios::binary) << texto;
}

/// Contents of every file below a folder, by its path there.
std::map<std::string, std::string> arbol(const fs::path& carpeta) {
    std::map<std::string, std::string> archivos;
    if (!fs::exists(carpeta)) return archivos;
    for (const auto& e : fs::recursive_directory_iterator(carpeta))
        if (e.is_regular_file()) archivos[fs::relative(e.path(), carpeta).string()] = leer(e.path());
    return archivos;
}

/// Every row of every table.
std::string todo(const std::string& conexion) {
    const auto base = abrir_base(conexion, Abrir::existente);
    std::set<std::string> tablas;
    for (const auto& columna : base->columnas()) tablas.insert(columna[0]);
    std::string texto;
    for (const std::string& tabla : tablas) {
        Base::Filas filas = base->consultar("select * from " + tabla);
        std::sort(filas.begin(), filas.end());
        texto += tabla + "\n";
        for (const auto& fila : filas) {
            for (const std::string& celda : fila) texto += celda + "\x1f";
            texto += "\n";
        }
    }
    return texto;
}

std::string unir(const std::vector<std::string>& textos) {
    std::string texto;
    for (const std::string& t : textos) texto += t + "\n";
    return texto;
}

/// Makes a database so big that it is neither copied nor written in one go.
void engordar(const std::string& conexion) {
    abrir_base(conexion, Abrir::existente)
        ->ejecutar("create table relleno(t text); insert into relleno values ('" +
                   std::string(6'000'000, 'x') + "')");
}

fs::path carpeta_de(const std::string& conexion, const fs::path& adjuntos) {
    return Attachments(adjuntos, attachment_database(conexion)).home();
}

std::string otra_base(Motor motor) {
    return motor == Motor::sqlite ? "sqlite:" + apoyo::carpeta_nueva() + "/otra.db"
                                  : apoyo::conexion_nueva(motor);
}

template <class F> std::string error_de(F&& trabajo) {
    try {
        trabajo();
    } catch (const std::exception& e) {
        return e.what();
    }
    return "";
}

/// A database with two vouchers of the screen, each with a file, and its user's folder.
class Respaldos : public testing::TestWithParam<Motor> {
protected:
    void SetUp() override {
        Pantalla p(GetParam());
        conexion = p.conexion;
        carpeta = p.carpeta;
        p.abrir();
        for (const char* archivo : {"recibo.txt", "factura.pdf"}) {
            p.comprobante("1.000");
            p.adjuntar(archivo);
            p.guardar();
            p.nuevo();
        }
        ASSERT_EQ(p.sql("select comprobante_adjunto, nombre from ctdcomprad order by 1"),
                  "1|recibo.txt;2|factura.pdf");
    }
    /// One more voucher with a file, as another program would store it.
    void agregar(const std::string& conjunto, const std::string& nombre, const fs::path& archivo) const {
        escribir(archivo, "de " + nombre);
        abrir_base(conexion, Abrir::existente)
            ->ejecutar(
                "insert into ctcquorvel(empresa,f_comp,documento,num_docum,comprobante_adjunto) values "
                "(1,'2024-05-03','001','" +
                conjunto + "'," + conjunto +
                "); insert into ctdcomprad(comprobante_adjunto,correlativo,nombre) values (" + conjunto +
                ",1,'" + nombre + "')");
    }
    std::string conexion, carpeta;
    const fs::path copia = fs::path(apoyo::carpeta_nueva()) / "copia";
};
INSTANTIATE_TEST_SUITE_P(Motores, Respaldos, testing::ValuesIn(apoyo::MOTORES),
                         [](const auto& info) { return apoyo::nombre(info.param); });

TEST_P(Respaldos, vuelve_igual_y_no_pisa_nada_sin_permiso) {
    agregar("7", "l\nrota.txt", carpeta_de(conexion, carpeta) / "7/l\nrota.txt");
    agregar("8", "antiguo.txt", fs::path(carpeta) / "adjunto/8/antiguo.txt"); // the layout without a database
    const Respaldado hecho = respaldar(conexion, copia, carpeta, CALLADO);
    EXPECT_EQ(unir(hecho.faltan), "");
    EXPECT_EQ(hecho.adjuntos, 4U);
    EXPECT_EQ(std::system(("cd " + copia.string() + " && sha256sum -c --quiet contenido.sha256").c_str()), 0);
    EXPECT_NE(error_de([&] { (void)respaldar(conexion, copia, carpeta, CALLADO); }), "");
    EXPECT_EQ(unir(verificar(copia, CALLADO)), "");

    const std::string nueva = otra_base(GetParam()), lugar = apoyo::carpeta_nueva();
    const fs::path archivos = carpeta_de(nueva, lugar);
    EXPECT_TRUE(restaurar(copia, nueva, lugar, false, CALLADO).anteriores.empty());
    EXPECT_EQ(todo(nueva), todo(conexion));
    auto esperado = arbol(carpeta_de(conexion, carpeta));
    esperado["8/antiguo.txt"] = "de antiguo.txt";
    EXPECT_EQ(arbol(archivos), esperado);
    EXPECT_EQ(revisar(nueva, lugar), revisar(conexion, carpeta));

    const auto rechaza = [&](bool reemplazar, const char* mensaje) {
        const auto antes = std::pair(todo(nueva), arbol(lugar));
        EXPECT_EQ(error_de([&] { (void)restaurar(copia, nueva, lugar, reemplazar, CALLADO); }).find(mensaje),
                  0U)
            << mensaje;
        EXPECT_EQ(std::pair(todo(nueva), arbol(lugar)), antes);
    };
    abrir_base(nueva, Abrir::existente)->ejecutar("delete from ctcquorvel where num_docum='7'");
    escribir(archivos / "9/posterior.txt", "x");
    escribir(archivos / "1/recibo.txt", "otro");
    rechaza(false, "La base de datos ya tiene tablas");
    {
        const auto alguien = abrir_sesion(nueva);
        (void)apoyo::filas(*alguien, "select count(*) from ctcquorvel");
        rechaza(true, "Otros programas tienen abierta la base de datos");
    }
    const auto habia = arbol(archivos);
    const Restaurado otra_vez = restaurar(copia, nueva, lugar, true, CALLADO);
    EXPECT_EQ(todo(nueva), todo(conexion));
    EXPECT_EQ(arbol(archivos), esperado);
    EXPECT_EQ(arbol(otra_vez.anteriores), habia);

    const std::string tercera = otra_base(GetParam());
    escribir(carpeta_de(tercera, lugar) / "1/recibo.txt", "de otra base");
    EXPECT_NE(error_de([&] { (void)restaurar(copia, tercera, lugar, false, CALLADO); }).find("Ya hay otro"),
              std::string::npos);
    EXPECT_EQ(leer(carpeta_de(tercera, lugar) / "1/recibo.txt"), "de otra base");
    EXPECT_TRUE(GetParam() == Motor::sqlite ? !fs::exists(tercera.substr(7)) : todo(tercera).empty());
}

TEST_P(Respaldos, lo_que_cambia_mientras_se_copia) {
    const fs::path archivos = carpeta_de(conexion, carpeta);
    bool primera = false, segunda = false;
    engordar(conexion);
    const Respaldado hecho =
        respaldar(conexion, copia, carpeta, [&](const std::string& que, long n, long de) {
            if (que == "Copiando los adjuntos" && n == de && !std::exchange(primera, true)) {
                fs::remove(archivos /
                           "1/recibo.txt"); // taken off at a screen, whose voucher is not saved yet
                std::this_thread::sleep_for(
                    std::chrono::milliseconds(20)); // the file system's clock is coarse
                escribir(archivos / "2/factura.pdf", "otra versión");
                agregar("7", "antes.txt", archivos / "7/antes.txt");
            }
            if (que == "Copiando la base de datos" && !std::exchange(segunda, true))
                agregar("8", "despues.txt", archivos / "8/despues.txt");
        });
    EXPECT_TRUE(primera && segunda);
    EXPECT_EQ(unir(hecho.faltan), "");
    const std::string nueva = otra_base(GetParam()), lugar = apoyo::carpeta_nueva();
    (void)restaurar(copia, nueva, lugar, false, CALLADO);
    auto restaurados = arbol(carpeta_de(nueva, lugar));
    restaurados.erase("8/despues.txt"); // copied or not, no row names it
    const std::map<std::string, std::string> esperado = {{"1/recibo.txt", "contenido de recibo.txt"},
                                                         {"2/factura.pdf", "otra versión"},
                                                         {"7/antes.txt", "de antes.txt"}};
    EXPECT_EQ(restaurados, esperado);
    EXPECT_EQ(apoyo::filas(*abrir_sesion(nueva), "select comprobante_adjunto from ctdcomprad order by 1"),
              "1;2;7");
}

TEST_P(Respaldos, lo_que_falta_se_dice) {
    fs::remove(carpeta_de(conexion, carpeta) / "2/factura.pdf");
    const Corrida c = correr("db backup '" + conexion + "' " + copia.string() + " --adjuntos " + carpeta);
    EXPECT_EQ(c.codigo, oficina::RECHAZADO);
    EXPECT_EQ(c.texto.find("Respaldo en " + copia.string() +
                           ": la base de datos y 1 archivo adjunto\n"
                           "Archivo adjunto que no está: empresa 1, "),
              0U)
        << c.texto << c.error;
    EXPECT_EQ(unir(verificar(copia, CALLADO)), "") << "it is a whole backup all the same";
}

TEST_P(Respaldos, en_uso_y_despues_de_una_muerte) {
    constexpr int COPIAS = 4;
    const auto carpeta_copia = [&](int i) { return copia.string() + std::to_string(i); };
    apoyo::Proceso otro([&](int aviso) { Pantalla(conexion, carpeta, 1).grabar_sin_fin(aviso, 3, true); });
    otro.esperar_salida();
    for (int i = 0; i < COPIAS; ++i) {
        EXPECT_EQ(unir(respaldar(conexion, carpeta_copia(i), carpeta, CALLADO).faltan), "");
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    otro.matar();
    std::istringstream dichos(otro.esperar().texto);
    EXPECT_EQ(unir(respaldar(conexion, carpeta_copia(COPIAS), carpeta, CALLADO).faltan), "");
    std::string nueva;
    long anterior = 0;
    for (int i = 0; i <= COPIAS; ++i) {
        SCOPED_TRACE(i);
        const std::string lugar = apoyo::carpeta_nueva();
        nueva = otra_base(GetParam());
        (void)restaurar(carpeta_copia(i), nueva, lugar, false, CALLADO);
        EXPECT_EQ(unir(revisar(nueva, lugar)), "");
        const long cuantos = std::stol(apoyo::filas(*abrir_sesion(nueva), "select count(*) from ctdcomprad"));
        EXPECT_GT(cuantos, anterior) << "nothing was saved between two copies";
        anterior = cuantos;
    }
    EXPECT_EQ(todo(nueva), todo(conexion));
    const auto db = abrir_sesion(nueva);
    for (std::string numero; std::getline(dichos, numero);)
        EXPECT_EQ(apoyo::filas(*db, "select count(*) from ctdquorvel where num_docum='" + numero + "'"), "2");
}

/// One way to spoil a backup, and what is said of it.
struct Dano {
    const char* que;
    std::function<void(const fs::path& respaldo)> danar;
    int codigo;
    std::string dicho;
};

void agregar_a_lista(const fs::path& respaldo, const std::string& linea) {
    std::ofstream(respaldo / "contenido.sha256", std::ios::app) << linea << "\n";
}

std::vector<Dano> danos() {
    std::vector<Dano> todos = {
        {"one byte", [](const fs::path& r) { escribir(r / "adjunto/5/a", "b"); }, oficina::RECHAZADO,
         "Cambió adjunto/5/a\n"},
        {"cut short", [](const fs::path& r) { fs::resize_file(r / "base.db", 4096); }, oficina::RECHAZADO,
         "Cambió base.db\n"},
        {"missing", [](const fs::path& r) { fs::remove(r / "adjunto/5/a"); }, oficina::RECHAZADO,
         "Falta adjunto/5/a\n"},
        {"extra", [](const fs::path& r) { escribir(r / "adjunto/5/b", "b"); }, oficina::RECHAZADO,
         "No es del respaldo adjunto/5/b\n"},
        {"a log of another database", [](const fs::path& r) { escribir(r / "base.db-wal", "b"); },
         oficina::RECHAZADO, "No es del respaldo base.db-wal\n"},
        {"a link in a file's place",
         [](const fs::path& r) {
             fs::rename(r / "adjunto/5/a", r.parent_path() / "a");
             fs::create_symlink(r.parent_path() / "a", r / "adjunto/5/a");
         },
         oficina::RECHAZADO, "Cambió adjunto/5/a\n"},
        {"not finished", [](const fs::path& r) { fs::remove(r / "contenido.sha256"); }, oficina::SIN_DATOS,
         "falta contenido.sha256"},
        {"no list at all", [](const fs::path& r) { agregar_a_lista(r, "hola"); }, oficina::SIN_DATOS,
         "no es la lista de un respaldo: hola\n"},
        {"of the other engine",
         [](const fs::path& r) {
             std::string lista = leer(r / "contenido.sha256");
             escribir(r / "contenido.sha256", lista.replace(lista.find("base.db"), 7, "base.dump"));
             fs::rename(r / "base.db", r / "base.dump");
         },
         oficina::SIN_DATOS, "otro motor"},
    };
    for (const char* ruta :
         {"../una.db", "adjunto/../una.db", "adjunto/5/..", "/etc/passwd", "adjunto/5/a"}) {
        const std::string linea = std::string(64, '0') + "  " + ruta; // the last one for the second time
        todos.push_back({ruta, [linea](const fs::path& r) { agregar_a_lista(r, linea); }, oficina::SIN_DATOS,
                         "no es la lista de un respaldo: " + linea + "\n"});
    }
    return todos;
}

TEST(RespaldoDanado, no_toca_nada) {
    const std::string carpeta = apoyo::carpeta_nueva(), base = carpeta + "/una.db", sano = carpeta + "/sano";
    demo::crear_demo(base);
    abrir_base(base, Abrir::existente)
        ->ejecutar("insert into ctdcomprad(comprobante_adjunto,correlativo,nombre) values (5,1,'a')");
    escribir(carpeta + "/adjunto/UNA.DB/5/a", "a");
    (void)respaldar(base, sano, carpeta, CALLADO);
    for (const Dano& dano : danos()) {
        SCOPED_TRACE(dano.que);
        const std::string danado = apoyo::carpeta_nueva() + "/respaldo", lugar = apoyo::carpeta_nueva();
        fs::copy(sano, danado, fs::copy_options::recursive);
        dano.danar(danado);
        const Corrida c = correr("db restore " + danado + " " + lugar + "/n.db --adjuntos " + lugar);
        EXPECT_EQ(c.codigo, dano.codigo) << c.error;
        EXPECT_NE((c.texto + c.error).find(dano.dicho), std::string::npos) << c.texto << c.error;
        EXPECT_TRUE(fs::is_empty(lugar));
    }
    const std::string lugar = apoyo::carpeta_nueva();
    EXPECT_EQ(correr("db restore " + sano + " " + lugar + "/n.db --adjuntos " + lugar).codigo, oficina::BIEN);
    EXPECT_EQ(correr("db check " + lugar + "/n.db --adjuntos " + lugar).codigo, oficina::BIEN);
    fs::remove(lugar + "/adjunto/N.DB/5/a");
    EXPECT_EQ(correr("db check " + lugar + "/n.db --adjuntos " + lugar).codigo, oficina::RECHAZADO);
}

/// Writes into a database and dies with the log of what it wrote beside the file.
void dejar_registro(const std::string& ruta) {
    apoyo::Proceso muerto([&]() -> std::string {
        const auto base = abrir_base(ruta, Abrir::existente);
        base->ejecutar("pragma journal_mode=wal; update ctcquorvel set concepto='anterior'");
        apoyo::morir();
    });
    ASSERT_TRUE(muerto.esperar().matado);
    ASSERT_GT(fs::file_size(ruta + "-wal"), 0U);
}

TEST(RespaldoMuerte, queda_la_base_de_antes_o_la_del_respaldo) {
    const std::string carpeta = apoyo::carpeta_nueva(), base = carpeta + "/una.db",
                      copia = carpeta + "/copia";
    demo::crear_demo(base);
    engordar(base);
    escribir(carpeta + "/adjunto/UNA.DB/5/a", "a");
    (void)respaldar(base, copia, carpeta, CALLADO);
    const std::string nuevo = todo(base), lugar = apoyo::carpeta_nueva(), ruta = lugar + "/otra.db";
    fs::copy_file(base, ruta);
    dejar_registro(ruta);
    const std::string anterior = ruta + "-anterior";
    for (const char* cola : {"", "-wal"}) fs::copy_file(ruta + cola, anterior + cola);
    const std::string viejo = todo(ruta);
    ASSERT_NE(viejo, nuevo);

    std::map<std::string, int> quedaron;
    /// @param n dies at the n-th word of its progress, or, below 0, after so many twentieths of its time
    const auto morir_restaurando = [&](int n, std::chrono::microseconds plazo) {
        fs::remove(ruta + "-shm");
        for (const char* cola : {"", "-wal"})
            fs::copy_file(anterior + cola, ruta + cola, fs::copy_options::overwrite_existing);
        apoyo::Proceso p([&](int) {
            (void)restaurar(copia, ruta, lugar, true, [n, oidas = 0](const std::string&, long, long) mutable {
                if (++oidas == n) apoyo::morir();
            });
        });
        if (n < 0) {
            std::this_thread::sleep_for(plazo);
            p.matar();
        }
        const bool matado = p.esperar().matado;
        const std::string ahora = todo(ruta);
        EXPECT_TRUE(ahora == viejo || ahora == nuevo) << n;
        EXPECT_EQ(unir(revisar(ruta)), "") << n;
        ++quedaron[ahora == viejo ? "viejo" : "nuevo"];
        return matado;
    };
    const auto desde = std::chrono::steady_clock::now();
    EXPECT_FALSE(morir_restaurando(0, {}));
    const auto tomo =
        std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - desde);
    int n = 1;
    while (morir_restaurando(n, {})) ++n;
    EXPECT_GT(n, 3) << "too few points to die at";
    for (int i = 1; i <= 20; ++i) (void)morir_restaurando(-1, tomo * i / 20);
    EXPECT_GT(quedaron["viejo"], 3);
    EXPECT_GT(quedaron["nuevo"], 1);
    RecordProperty("muertes", n + 20);

    fs::remove(ruta);
    fs::copy_file(anterior + "-wal", ruta + "-wal",
                  fs::copy_options::overwrite_existing); // of a file that went
    (void)restaurar(copia, ruta, lugar, false, CALLADO);
    EXPECT_EQ(todo(ruta), nuevo);
    EXPECT_EQ(arbol(carpeta_de(ruta, lugar)), arbol(carpeta + "/adjunto/UNA.DB"));
    EXPECT_FALSE(fs::exists(lugar + "/adjunto/.restaurando-OTRA.DB"));
}

/// Kills the program that this process waits for.
void matar_hijo() {
    pid_t hijo = 0;
    if (std::ifstream("/proc/thread-self/children") >> hijo) kill(hijo, SIGKILL);
}

/// Whose backend still works on what its dead program asked for is in the database.
void esperar_a_estar_solo(const std::string& conexion) {
    const auto base = abrir_base(conexion, Abrir::existente);
    while (base->consultar("select count(*) from pg_stat_activity where datname=current_database()")[0][0] !=
           "1")
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
}

class RespaldoMuerteServidor : public ::testing::TestWithParam<bool> {};
INSTANTIATE_TEST_SUITE_P(Quien, RespaldoMuerteServidor, ::testing::Bool(),
                         [](const auto& i) { return i.param ? "pg_restore" : "quorvel"; });

TEST_P(RespaldoMuerteServidor, queda_la_base_de_antes_o_la_del_respaldo) {
    const std::string carpeta = apoyo::carpeta_nueva(), base = apoyo::conexion_nueva(Motor::postgres),
                      copia = carpeta + "/copia";
    demo::crear_demo(base);
    escribir(carpeta_de(base, carpeta) / "5/a", "a");
    (void)respaldar(base, copia, carpeta, CALLADO);
    const std::string nuevo = todo(base);
    abrir_base(base, Abrir::existente)->ejecutar("update ctcquorvel set concepto='anterior'");
    const std::string viejo = todo(base);
    std::map<std::string, int> quedaron;
    for (int n = 1, muertes = 0;; n += 12, ++muertes) {
        SCOPED_TRACE(n);
        const std::string otra = apoyo::copia_de(base), lugar = apoyo::carpeta_nueva();
        apoyo::Proceso p([&]() -> std::string {
            const auto morir_en = [n, oidas = 0](const std::string& que, long hechas, long total) mutable {
                if (que != "Restaurando la base de datos" || hechas == 0 || hechas == total || ++oidas != n)
                    return;
                GetParam() ? matar_hijo() : apoyo::morir();
            };
            return error_de([&] { (void)restaurar(copia, otra, lugar, true, morir_en); });
        });
        const apoyo::Final f = p.esperar();
        esperar_a_estar_solo(otra);
        const std::string ahora = todo(otra);
        EXPECT_TRUE(ahora == viejo || ahora == nuevo);
        EXPECT_EQ(unir(revisar(otra)), "");
        ++quedaron[ahora == viejo ? "viejo" : "nuevo"];
        const bool entera = !f.matado && f.texto.empty();
        EXPECT_EQ(fs::exists(carpeta_de(otra, lugar) / "5/a"), entera) << "files come with their database";
        if (entera) {
            RecordProperty("muertes", muertes);
            break;
        }
        EXPECT_TRUE(f.matado || f.texto == "pg_restore: no terminó bien") << f.texto;
    }
    EXPECT_GT(quedaron["viejo"], 3) << "too few points to die at";
    EXPECT_GE(quedaron["nuevo"], 1);
}

TEST(RespaldoServidor, la_clave_no_va_en_la_linea_de_la_orden) {
    const std::string carpeta = apoyo::carpeta_nueva(), destino = carpeta + "/copia";
    std::string conexion = apoyo::conexion_nueva(Motor::postgres);
    conexion.insert(conexion.find('@'), ":secre'ta");
    escribir(carpeta + "/pg_dump",
             "#!/bin/sh\necho \"$@\" >" + carpeta + "/orden\nprintenv PGPASSWORD >" + carpeta +
                 "/clave\necho 'pg_dump: error: server version mismatch' >&2\nexit 1\n");
    fs::permissions(carpeta + "/pg_dump", fs::perms::owner_all);
    const std::string camino = std::getenv("PATH");
    setenv("PATH", (carpeta + ":" + camino).c_str(), 1);
    const std::string error = error_de([&] { (void)respaldar(conexion, destino, carpeta, CALLADO); });
    setenv("PATH", carpeta.c_str(), 1);
    fs::remove(carpeta + "/pg_dump");
    const std::string sin_programa = error_de([&] { (void)respaldar(conexion, destino, carpeta, CALLADO); });
    setenv("PATH", camino.c_str(), 1);
    EXPECT_EQ(error, "pg_dump: error: server version mismatch");
    EXPECT_NE(leer(carpeta + "/orden").find("user='postgres'"), std::string::npos);
    EXPECT_EQ(leer(carpeta + "/orden").find("secre"), std::string::npos);
    EXPECT_EQ(leer(carpeta + "/clave"), "secre'ta\n");
    EXPECT_EQ(sin_programa, "No se encuentra el programa pg_dump: instale el paquete postgresql-client");
    EXPECT_FALSE(fs::exists(destino));
}

} // namespace
} // namespace quorvel::dbtools
