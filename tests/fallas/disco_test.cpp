// Goal: when the disk or the database file fails the user reads what it is, the screen keeps its voucher,
// nothing stored is lost, and once the fault is gone the same press works. Method: each fault with each thing
// a person does at the screen; what an undisturbed screen says, shows and stores is what must come out.
#include "apoyo/disco.h"
#include "dbtools/base.h"
#include "fallas/trabajos.h"
#include "platform/ui/ctlConsulta.h"
#include "screen/papeles/frmImprimir.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <map>

using namespace quorvel;
using namespace quorvel::apoyo;
using namespace quorvel::fallas;
using pruebas::Pantalla;
namespace fs = std::filesystem;

namespace {

/// The scene's database and user's folder side by side, on the small disk or on the ordinary one.
struct Lugar {
    explicit Lugar(const std::string& donde = "")
        : disco(donde), base(donde.empty() ? carpeta_nueva() : donde) {
        const Escena e = escena(Motor::sqlite);
        fs::remove_all(base + "/datos"), fs::remove_all(base + "/usuario");
        fs::create_directories(base + "/datos");
        for (const char* cola : {"", "-wal"})
            if (fs::exists(e.conexion.substr(7) + cola))
                fs::copy_file(e.conexion.substr(7) + cola, archivo() + cola);
        fs::copy(e.carpeta, base + "/usuario", fs::copy_options::recursive);
    }
    [[nodiscard]] std::string archivo() const { return base + "/datos/prueba.db"; }
    [[nodiscard]] Escena sitio() const { return {"sqlite:" + archivo(), base + "/usuario"}; }
    std::string disco, base;
};

// --- faults: each lasts as long as what it returns

using Falla = std::shared_ptr<void>;
Falla hasta(std::function<void()> quitar) {
    return {nullptr, [quitar = std::move(quitar)](void*) { quitar(); }};
}

const DiscoChico& disco() {
    static const DiscoChico uno;
    return uno;
}
Falla lleno(const Lugar&) {
    disco().llenar();
    return hasta([] { disco().vaciar(); });
}

/// @param otros what anybody may do with the folders that lead there
Falla como_cualquiera(const Lugar& l, fs::perms otros) {
    for (const fs::path& carpeta :
         {fs::path(l.base).parent_path(), fs::path(l.base), l.base / fs::path("datos")})
        fs::permissions(carpeta, fs::perms::owner_all | otros);
    return std::make_shared<Cualquiera>();
}
Falla sin_permiso(const Lugar& l) { return como_cualquiera(l, fs::perms::none); }
Falla solo_lectura(const Lugar& l) { return como_cualquiera(l, fs::perms(055)); }

void mover(const std::string& de, const std::string& a) {
    for (const char* cola : {"", "-wal", "-shm"})
        if (fs::exists(de + cola)) fs::rename(de + cola, a + cola);
}
Falla movida(const Lugar& l) {
    mover(l.archivo(), l.archivo() + ".otra");
    return hasta([l] { mover(l.archivo() + ".otra", l.archivo()); });
}
Falla reemplazada(const Lugar& l) {
    Falla vuelve = movida(l);
    fs::copy_file(l.archivo() + ".otra", l.archivo());
    return hasta([l, vuelve]() mutable {
        fs::remove(l.archivo());
        vuelve.reset();
    });
}

Falla sin_registro(const Lugar& l) {
    const std::string registro = l.archivo() + "-wal";
    if (!fs::exists(registro)) return nullptr;
    fs::rename(registro, registro + ".otro");
    return hasta([registro] { fs::rename(registro + ".otro", registro); });
}

/// Overwrites the first pages of the voucher tables and has other sessions read them anew.
Falla danada(const Lugar& l) {
    const auto base = dbtools::abrir_base("sqlite:" + l.archivo(), dbtools::Abrir::existente);
    (void)base->consultar("pragma wal_checkpoint(truncate)");
    const long largo = std::stol(base->consultar("pragma page_size")[0][0]);
    std::vector<long> lugares;
    for (const auto& fila :
         base->consultar("select rootpage from sqlite_master where tbl_name in ('ctcquorvel',"
                         "'ctdquorvel','ftcfactura','ftdfactura')"))
        lugares.push_back((std::stol(fila[0]) - 1) * largo);
    const auto guardadas = std::make_shared<std::vector<std::string>>();
    const auto escribir = [l, lugares, largo, guardadas](bool ruido) {
        std::fstream f(l.archivo(), std::ios::in | std::ios::out | std::ios::binary);
        for (std::size_t i = 0; i < lugares.size(); ++i) {
            std::string pagina(static_cast<std::size_t>(largo), '\x5a');
            if (ruido) {
                guardadas->push_back(pagina);
                f.seekg(lugares[i]).read(guardadas->back().data(), largo);
            } else {
                pagina = (*guardadas)[i];
            }
            f.seekp(lugares[i]).write(pagina.data(), largo);
        }
        f.close();
        dbtools::abrir_base("sqlite:" + l.archivo(), dbtools::Abrir::existente)
            ->ejecutar("update ctmconfigu set anio=anio");
    };
    escribir(true);
    return hasta([escribir] { escribir(false); });
}

// --- what is done, and what each fault makes the screen say

enum Clase { CAMBIO, LECTURA, PAPEL, ARCHIVO, ADJUNTO, CLASES };
constexpr const char* BIEN = nullptr;      ///< it is done all the same
constexpr const char* CALLADO = "callado"; ///< it is not done and nothing is said

struct Dano {
    const char* nombre;
    Falla (*poner)(const Lugar&);
    std::array<const char*, CLASES> dice; ///< beginning of the first notice
    const char* al_abrir = BIEN;          ///< part of what a session is told that begins with it
    bool en_disco_chico = false;
};
void PrintTo(const Dano& d, std::ostream* os) { *os << d.nombre; }

constexpr const char* NO_ESCRIBE = "No se puede escribir el archivo ";
const std::vector<Dano> DANOS = {
    {"lleno",
     lleno,
     {"No queda espacio en el disco para la base de datos ", BIEN,
      "No queda espacio en el disco para la base de datos ", NO_ESCRIBE, CALLADO},
     "No space left on device",
     true},
    {"sin_permiso",
     sin_permiso,
     {"No se puede llegar a la base de datos ", BIEN, "No se puede llegar a la base de datos ", NO_ESCRIBE,
      CALLADO},
     "Permission denied"},
    {"carpeta_de_solo_lectura", solo_lectura, {BIEN, BIEN, BIEN, NO_ESCRIBE, CALLADO}, "readonly"},
    {"danada",
     danada,
     {"Está dañada la base de datos ", "Está dañada la base de datos ", "Está dañada la base de datos ", BIEN,
      BIEN}},
    {"movida",
     movida,
     {"Ya no está en su lugar la base de datos ", BIEN, BIEN, BIEN, BIEN},
     "No existe la base de datos "},
    {"reemplazada",
     reemplazada,
     {"Hay otro archivo en el lugar de la base de datos ", BIEN, BIEN, BIEN, BIEN}},
    {"sin_registro",
     sin_registro,
     {"Otro programa quitó el registro de cambios de la base de datos ", BIEN, BIEN, BIEN, BIEN}},
};

struct Accion {
    Clase clase;
    Trabajo t;
};

void abrir_primero(Pantalla& p) { p.buscar("1"); }
void a_medias(Pantalla& p) { p.comprobante("900"); }

void buscar(Pantalla& p) {
    p.escritorio.al_abrir([](ui::Form& forma) {
        auto& lista = dynamic_cast<ui::ctlConsulta&>(*forma.find("ctlConsulta1"));
        lista.rows().empty() ? lista.cancel() : lista.pick(0);
    });
    p.f.ctlRegistro1.press(ui::ctlRegistro::Function::Search);
}

void imprimir(Pantalla& p) {
    p.escritorio.al_abrir([](ui::Form& forma) { dynamic_cast<frmImprimir&>(forma).cmdOK.press(); });
    p.f.ctlRegistro1.press(ui::ctlRegistro::Function::Print);
}

void exportar(Pantalla& p) {
    p.escritorio.elegir_archivo(p.carpeta + "/uno.csv");
    p.pulsar("mnuexportar");
}

void adjuntar(Pantalla& p) {
    p.escritorio.elegir_archivo("/etc/hostname");
    p.pulsar("cmdadjunto_agregar");
}

std::vector<Accion> acciones() {
    std::vector<Accion> todas{
        {LECTURA, {"buscar", a_medias, buscar, ""}},
        {LECTURA, {"nuevo", a_medias, [](Pantalla& p) { p.nuevo(); }, ""}},
        {LECTURA,
         {"copiar", [](Pantalla& p) { p.buscar("2"); }, [](Pantalla& p) { p.pulsar("cmdCopiar"); }, ""}},
        {PAPEL, {"imprimir", abrir_primero, imprimir, ""}},
        {ARCHIVO, {"exportar", abrir_primero, exportar, "Comprobante exportado al archivo "}},
        {ADJUNTO, {"adjuntar", abrir_primero, adjuntar, ""}},
    };
    for (const Trabajo& t : TRABAJOS)
        if (t.etapas == 1 && t.nombre != std::string("importar")) todas.push_back({CAMBIO, t});
    return todas;
}

std::vector<std::string> avisos(Pantalla& p) {
    std::vector<std::string> textos;
    const auto& todos = p.escritorio.mensajes;
    for (std::size_t i = todos.size() - p.mensajes().size(); i < todos.size(); ++i)
        if (todos[i].buttons == ui::Buttons::ok) textos.push_back(todos[i].text);
    return textos;
}

std::string base(const Lugar& l) { return huella(*abrir_sesion(l.sitio().conexion)); }

/// The press. @return its notices
std::vector<std::string> hacer(Pantalla& p, const Trabajo& t) {
    p.escritorio.responder(ui::Answer::yes); // to be cut although no draft can be written
    t.hacer(p);
    p.escritorio.olvidar();
    return avisos(p);
}

/// What the undisturbed press leaves on the screen and in the database.
std::pair<std::string, std::string> bien_hecho(const Trabajo& t) {
    static std::map<std::string, std::pair<std::string, std::string>> vistos;
    auto& [pantalla, guardado] = vistos[t.nombre];
    if (!pantalla.empty()) return {pantalla, guardado};
    const Lugar l;
    Pantalla p(l.sitio().conexion, l.sitio().carpeta, 1);
    p.abrir();
    t.preparar(p);
    (void)hacer(p, t);
    pantalla = en_pantalla(p);
    guardado = base(l);
    return {pantalla, guardado};
}

class Disco : public ::testing::TestWithParam<Dano> {};
INSTANTIATE_TEST_SUITE_P(Danos, Disco, ::testing::ValuesIn(DANOS),
                         [](const auto& i) { return i.param.nombre; });

void con_dano(const Dano& d, const Accion& a) {
    const Trabajo& t = a.t;
    const Lugar l(d.en_disco_chico ? disco().ruta() : "");
    Pantalla p(l.sitio().conexion, l.sitio().carpeta, 1);
    p.abrir();
    t.preparar(p);
    (void)avisos(p);
    const std::string pantalla = en_pantalla(p), guardado = base(l);
    const char* const dice = d.dice[a.clase];
    Falla falla = d.poner(l);
    std::vector<std::string> dicho = hacer(p, t);
    falla.reset();
    if (dice != BIEN) {
        if (dice == CALLADO)
            EXPECT_EQ(dicho, std::vector<std::string>{});
        else
            EXPECT_TRUE(!dicho.empty() && dicho[0].starts_with(dice))
                << (dicho.empty() ? "nothing" : dicho[0]);
        const std::string nombre = t.nombre; // dialogs are opened and then accepted, a cheque staged before
        EXPECT_LE(dicho.size(), nombre == "cheque" ? 3U : nombre == "factura" ? 2U : 1U) << dicho.back();
        EXPECT_EQ(en_pantalla(p), pantalla);
        EXPECT_EQ(base(l), guardado);
        dicho = hacer(p, t);
    }
    EXPECT_TRUE(dicho.empty() ? *t.dicho == '\0' : dicho.back().starts_with(t.dicho)) << dicho.back();
    const auto [pantalla_bien, guardado_bien] = bien_hecho(t);
    EXPECT_EQ(en_pantalla(p), pantalla_bien);
    EXPECT_EQ(base(l), guardado_bien);
    EXPECT_EQ(revision(l.sitio()), "");
}

TEST_P(Disco, SeDiceNadaSePierdeYDespuesFunciona) {
    if (GetParam().en_disco_chico && disco().ruta().empty()) GTEST_SKIP() << disco().motivo();
    for (const Accion& a : acciones()) {
        SCOPED_TRACE(a.t.nombre);
        con_dano(GetParam(), a);
    }
}

/// On a full disk a draft falls behind and is complete again after the first change with room.
TEST(DiscoLleno, ElBorradorSePoneAlDia) {
    if (disco().ruta().empty()) GTEST_SKIP() << disco().motivo();
    for (const bool desde_el_comienzo : {true, false}) {
        SCOPED_TRACE(desde_el_comienzo);
        const Lugar l(disco().ruta());
        std::string pantalla;
        {
            Pantalla p(l.sitio().conexion, l.sitio().carpeta, 1);
            p.abrir();
            if (!desde_el_comienzo) p.escribir("txtconcepto", "Primeras letras");
            const Falla falla = lleno(l);
            p.comprobante("900");
            EXPECT_TRUE(p.celda(1, 5, std::string(60, 'x'))); // more than half a page holds
            EXPECT_EQ(avisos(p), std::vector<std::string>{});
            disco().vaciar();
            EXPECT_TRUE(p.celda(0, 5, "con lugar"));
            pantalla = en_pantalla(p);
        }
        Pantalla q(l.sitio().conexion, l.sitio().carpeta, 1);
        q.abrir();
        q.tecla("ctrl+r");
        EXPECT_EQ(en_pantalla(q), pantalla);
    }
}

/// Between a cut and the save the voucher is nowhere but on the screen and in its draft.
TEST(DiscoLleno, NoSeCortaSinBorradorAMenosQueSeQuiera) {
    if (disco().ruta().empty()) GTEST_SKIP() << disco().motivo();
    const Lugar datos, usuario(disco().ruta());
    Pantalla p(datos.sitio().conexion, usuario.sitio().carpeta, 1);
    p.abrir();
    p.buscar("1");
    const std::string antes = base(datos);
    const Falla falla = lleno(usuario);
    for (const bool cortar : {false, true}) {
        p.escritorio.responder(ui::Answer::yes);
        p.escritorio.responder(cortar ? ui::Answer::yes : ui::Answer::no);
        p.pulsar("cmdcortar");
        EXPECT_NE(p.mensajes().back().find("No se puede guardar un borrador"), std::string::npos);
        EXPECT_EQ(base(datos) == antes, !cortar);
    }
    p.guardar();
    EXPECT_EQ(ultimo_aviso(p), "Comprobante Ingresado y Mayorizado");
    EXPECT_EQ(p.sql("select count(*) from ctdquorvel"), "4");
}

/// A session that begins while the fault is there.
TEST(DiscoAlAbrir, CadaFallaTieneSuFrase) {
    for (const Dano& d : DANOS) {
        SCOPED_TRACE(d.nombre);
        if (d.en_disco_chico && disco().ruta().empty()) continue;
        const Lugar l(d.en_disco_chico ? disco().ruta() : "");
        Falla falla = d.poner(l);
        try {
            (void)abrir_sesion(l.sitio().conexion);
            EXPECT_EQ(d.al_abrir, BIEN);
        } catch (const ErrorSesion& e) {
            EXPECT_TRUE(d.al_abrir != BIEN && std::string(e.what()).find(d.al_abrir) != std::string::npos)
                << e.what();
        }
        falla.reset();
        EXPECT_EQ(revision(l.sitio()), "");
    }
}

} // namespace
