// Goal: the server dies while somebody works, and comes back or is replaced by its standby: the user reads
// what really happened, the screen keeps its voucher, the same press works, whatever was confirmed is there.
// Method: servers of the test's own, ended as by a power cut, or one of their processes killed, before a
// change, in its middle, before its commit, and while the commit waits for its answer.
#include "apoyo/servidor.h"
#include "fallas/puesto.h"

#include <gtest/gtest.h>
#include <sys/types.h>

#include <chrono>
#include <csignal>
#include <thread>

using namespace quorvel;
using namespace quorvel::apoyo;
using namespace quorvel::fallas;

namespace {

constexpr const char* GRABADO = "Comprobante Ingresado y Mayorizado";
const auto nada = [](const std::string&) {};

void pausa() { std::this_thread::sleep_for(std::chrono::milliseconds(50)); }

std::string nombre_de_base(const std::string& conexion) { return conexion.substr(conexion.rfind('/') + 1); }

/// A server with the small company, of which each case takes a copy.
struct Casa {
    Servidor servidor;
    Escena modelo{servidor.nueva(), carpeta_nueva()};
    Casa() { sembrar(modelo); }
    Escena copia() { return con_archivos(modelo, servidor.nueva(nombre_de_base(modelo.conexion))); }
};
Casa& casa() {
    static Casa una;
    return una;
}

const Trabajo& trabajo(const std::string& nombre) {
    return *std::find_if(TRABAJOS.begin(), TRABAJOS.end(),
                         [&](const Trabajo& t) { return t.nombre == nombre; });
}

/// What the undisturbed job leaves.
std::string despues_de(const Trabajo& t) {
    const Escena e = casa().copia();
    Puesto puesto(e, e.conexion);
    puesto.preparar(t);
    EXPECT_EQ(puesto.hacer(t, nada), t.dicho);
    return base(e);
}

/// Kills the process that serves this database; the server then ends all its others and starts anew.
void matar_proceso(const Servidor& s, const Escena& e) {
    const std::string pid =
        s.administrar("select pid from pg_stat_activity where datname='" + nombre_de_base(e.conexion) + "'");
    kill(static_cast<pid_t>(std::stol(pid)), SIGKILL);
}

void esperar_commit(const Servidor& s) {
    for (int i = 0; s.administrar("select count(*) from pg_stat_activity where wait_event='SyncRep'") == "0";
         ++i) {
        ASSERT_LT(i, 200) << "no commit waits";
        pausa();
    }
}

/// Where in its change the job is when the server goes.
struct Momento {
    const char* nombre;
    bool (*es)(const std::string& sql, int n); ///< n counts from the change's begin, which is 0
};
constexpr Momento MOMENTOS[] = {
    {"begin", [](const std::string&, int n) { return n == 0; }},
    {"middle", [](const std::string&, int n) { return n == 3; }},
    {"commit", [](const std::string& sql, int) { return sql == "commit"; }},
};

class ServidorCae : public ::testing::TestWithParam<bool> {};
INSTANTIATE_TEST_SUITE_P(Golpes, ServidorCae, ::testing::Bool(),
                         [](const auto& i) { return i.param ? "entero" : "un_proceso"; });

TEST_P(ServidorCae, LaPantallaGuardaYLaMismaTeclaGraba) {
    const Trabajo& t = trabajo("grabar_nuevo");
    const std::string despues = despues_de(t);
    for (const Momento& m : MOMENTOS) {
        SCOPED_TRACE(m.nombre);
        const Escena e = casa().copia();
        Puesto puesto(e, e.conexion);
        puesto.preparar(t);
        const std::string antes = base(e);
        int n = -1;
        bool golpeado = false;
        std::string dicho = puesto.hacer(t, [&](const std::string& sql) {
            if (sql == "begin") n = 0;
            if (n < 0 || golpeado || !m.es(sql, n++)) return;
            golpeado = true;
            GetParam() ? casa().servidor.caer() : matar_proceso(casa().servidor, e);
        });
        ASSERT_TRUE(golpeado);
        if (GetParam()) {
            EXPECT_NE(dicho, "");
            EXPECT_EQ(dicho.find("roblemas"), std::string::npos) << dicho;
            dicho = puesto.hacer(t, nada);
            EXPECT_TRUE(dicho.starts_with("No se puede conectar con el servidor")) << dicho;
            EXPECT_EQ(en_pantalla(puesto.p), puesto.en_riesgo);
            casa().servidor.levantar();
            EXPECT_EQ(base(e), antes);
        }
        for (int i = 0; i < 100 && dicho != t.dicho; ++i) {
            EXPECT_NE(dicho, "");
            EXPECT_EQ(en_pantalla(puesto.p), puesto.en_riesgo) << dicho;
            pausa();
            dicho = puesto.hacer(t, nada);
        }
        EXPECT_EQ(dicho, t.dicho);
        EXPECT_EQ(base(e), despues);
        EXPECT_EQ(revision(e), "");
    }
}

/// Lost while nobody used it: the next search or save simply works.
TEST(ServidorVuelve, QuienNoTrabajabaNoLoNota) {
    const Escena e = casa().copia();
    Puesto puesto(e, e.conexion);
    for (const char* nombre : {"grabar_nuevo", "grabar_de_nuevo", "anular"}) {
        SCOPED_TRACE(nombre);
        casa().servidor.caer();
        casa().servidor.levantar();
        puesto.p.nuevo();
        puesto.preparar(trabajo(nombre));
        casa().servidor.caer();
        casa().servidor.levantar();
        EXPECT_EQ(puesto.hacer(trabajo(nombre), nada), trabajo(nombre).dicho);
        EXPECT_EQ(puesto.p.mensajes(), std::vector<std::string>{});
    }
}

TEST(ServidorVuelve, ElCommitEnVueloSeAverigua) {
    for (const char* nombre : {"grabar_nuevo", "anular", "eliminar"}) {
        SCOPED_TRACE(nombre);
        const Trabajo& t = trabajo(nombre);
        const std::string despues = despues_de(t);
        const Escena e = casa().copia();
        Puesto puesto(e, e.conexion);
        puesto.preparar(t);
        Servidor& s = casa().servidor;
        s.confirmar_con("nadie");
        std::thread golpe([&] {
            esperar_commit(s);
            s.caer();
            s.levantar("-c synchronous_standby_names=");
            (void)s.administrar("alter system reset synchronous_standby_names");
        });
        EXPECT_EQ(puesto.hacer(t, nada), t.dicho) << "it was done, and the user must read so";
        golpe.join();
        EXPECT_EQ(base(e), despues);
        s.caer();
        s.levantar();
    }
}

/// Confirmed vouchers of the screen, by number.
using Numeros = std::vector<std::string>;

void grabar(Puesto& puesto, int cuantos, Numeros& confirmados) {
    for (int i = 0; i < cuantos; ++i) {
        puesto.p.comprobante(std::to_string(1000 + i));
        puesto.p.guardar();
        ASSERT_EQ(ultimo_aviso(puesto.p), GRABADO);
        confirmados.push_back(puesto.p.f.txtNum_doc.Text());
        puesto.p.nuevo();
    }
}

void todos_estan(const Escena& e, const Numeros& confirmados) {
    const auto db = abrir_sesion(e.conexion);
    for (const std::string& numero : confirmados)
        EXPECT_EQ(filas(*db, "select count(*) from ctdquorvel where num_docum='" + numero + "'"), "2")
            << numero;
    EXPECT_EQ(revision(e), "");
}

/// The connection text of two hosts, the one that can be written being meant.
std::string a_los_dos(const Servidor& uno, const Servidor& dos, const std::string& base) {
    const auto host = [](const Servidor& s) { return "127.0.0.1:" + std::to_string(s.puerto()); };
    return "postgresql://postgres@" + host(uno) + "," + host(dos) + "/" + base +
           "?target_session_attrs=read-write&connect_timeout=3";
}

/// The primary goes while the voucher on the screen is saved, and the standby is promoted.
/// @param m when; nullptr: while the commit waits for the standby. @return the screen's notice
std::string cambiar_de_servidor(Puesto& puesto, const Trabajo& t, Servidor& principal, Servidor& reserva,
                                const Momento* m) {
    if (m == nullptr) {
        const auto receptor =
            static_cast<pid_t>(std::stol(reserva.administrar("select pid from pg_stat_wal_receiver")));
        kill(receptor, SIGSTOP);
        std::thread golpe([&] {
            esperar_commit(principal);
            principal.caer();
            kill(receptor, SIGCONT);
            reserva.promover();
        });
        std::string dicho = puesto.hacer(t, nada);
        golpe.join();
        return dicho;
    }
    int n = -1;
    EXPECT_NE(puesto.hacer(t,
                           [&](const std::string& sql) {
                               if (sql == "begin") n = 0;
                               if (n >= 0 && m->es(sql, n++)) principal.caer();
                           }),
              GRABADO);
    std::string dicho = puesto.hacer(t, nada);
    EXPECT_TRUE(dicho.starts_with("No se puede conectar con el servidor")) << dicho;
    reserva.promover();
    return dicho;
}

/// The old primary comes back unasked, before the new one in the connection text, and falls again.
void grabar_en_el_viejo(Servidor& viejo, const Trabajo& t, const Escena& e) {
    viejo.levantar();
    Puesto puesto(e, e.conexion);
    puesto.p.comprobante("666");
    std::thread golpe([&] {
        esperar_commit(viejo);
        viejo.caer();
    });
    EXPECT_EQ(puesto.hacer(t, nada), "Se perdió la conexión con la base de datos, el cambio no quedó hecho");
    golpe.join();
}

TEST(Reserva, PromovidaPorTurnosTieneTodoLoConfirmado) {
    const Trabajo& t = trabajo("grabar_nuevo");
    Servidor uno;
    const std::string carpeta = carpeta_nueva(), nombre = nombre_de_base(uno.nueva());
    sembrar({uno.conexion(nombre), carpeta});
    Servidor dos(uno);
    Servidor *principal = &uno, *reserva = &dos;
    Numeros confirmados;
    for (const Momento* m : {&MOMENTOS[1], &MOMENTOS[2], static_cast<const Momento*>(nullptr)}) {
        SCOPED_TRACE(m != nullptr ? m->nombre : "commit in flight");
        const Escena e{a_los_dos(*principal, *reserva, nombre), carpeta};
        Puesto puesto(e, e.conexion);
        grabar(puesto, 5, confirmados);
        puesto.p.comprobante("777");
        std::string dicho = cambiar_de_servidor(puesto, t, *principal, *reserva, m);
        for (int i = 0; i < 100 && dicho != GRABADO; ++i) {
            EXPECT_NE(dicho, "");
            EXPECT_EQ(en_pantalla(puesto.p), puesto.en_riesgo) << dicho;
            pausa();
            dicho = puesto.hacer(t, nada);
        }
        ASSERT_EQ(dicho, GRABADO);
        confirmados.push_back(puesto.p.f.txtNum_doc.Text());
        puesto.p.nuevo();
        grabar(puesto, 3, confirmados);
        std::swap(principal, reserva);
        grabar_en_el_viejo(*reserva, t, {a_los_dos(*reserva, *principal, nombre), carpeta});
        reserva->seguir(*principal,
                        m == &MOMENTOS[1] ? Servidor::Regreso::copia : Servidor::Regreso::rebobinado);
        grabar(puesto, 1, confirmados);
        todos_estan({principal->conexion(nombre), carpeta}, confirmados);
    }
    EXPECT_EQ(confirmados.size(), 3U * (5 + 1 + 3 + 1));
}

} // namespace
