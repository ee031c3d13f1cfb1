// Goal: whatever a session answers, or does not, nothing stored is lost and nothing done twice. Method: a
// session that fails at the n-th query, for every n, and one that loses a commit's answer and stays away for
// longer than anybody waits.
#include "apoyo/proceso.h"
#include "fallas/puesto.h"
#include "historia/comenzar.h"
#include "screen/abrir.h"
#include "voucher/pasos.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace quorvel;
using namespace quorvel::apoyo;
using namespace quorvel::fallas;
using pruebas::Pantalla;

namespace {

bool consulta(const std::string& sql) {
    const std::size_t letra = sql.find_first_not_of(' ');
    return sql.compare(letra, 6, "select") == 0 || sql.compare(letra, 6, "SELECT") == 0;
}

// --- a query that fails; the first voucher has an attached file

void abrir_primero(Pantalla& p) {
    p.f.atender([&] { (void)abrir_comprobante(p.f, {1, "01", *leer_fecha("15/06/2024"), "001", "1"}); });
}
void nuevo(Pantalla& p) { p.nuevo(); }
void copiar(Pantalla& p) { p.pulsar("cmdCopiar"); }
void cortar(Pantalla& p) {
    p.escritorio.responder(ui::Answer::yes);
    p.pulsar("cmdcortar");
}
struct Lectura {
    const char *nombre, *antes; ///< number of the voucher on the screen
    void (*hacer)(Pantalla&);
    const char* fecha; ///< of what is new on the screen afterwards
};
constexpr Lectura LECTURAS[] = {{"abrir", "2", abrir_primero, ""},
                                {"nuevo", "1", nuevo, "16/06/2024"},
                                {"copiar", "1", copiar, "16/06/2024"},
                                {"cortar", "1", cortar, "15/06/2024"}};

class Consultas : public ::testing::TestWithParam<Lectura> {};
INSTANTIATE_TEST_SUITE_P(Lecturas, Consultas, ::testing::ValuesIn(LECTURAS),
                         [](const auto& i) { return i.param.nombre; });
void PrintTo(const Lectura& l, std::ostream* os) { *os << l.nombre; }

/// The two vouchers as they were entered; a cut and saved one may get another correlative.
std::string guardados(const Escena& e) {
    const auto db = abrir_sesion(e.conexion);
    return filas(*db, "select num_docum,concepto,num_ref,t_debe,t_haber,estado,comprobante_adjunto from "
                      "ctcquorvel where f_comp=#06/15/2024# order by num_docum") +
           filas(*db, "select * from ctdquorvel where f_comp=#06/15/2024# order by num_docum,secuencia") +
           filas(*db, "select nombre from ctdcomprad where comprobante_adjunto=1 order by nombre");
}

void grabar_lo_que_haya(Pantalla& p, const Lectura& l) {
    if (p.f.glbBanderaNuevo) p.f.mskF_comp.SetText(l.fecha);
    p.guardar();
}

TEST_P(Consultas, LaQueFallaNoDejaGrabarMedioComprobante) {
    const Lectura& l = GetParam();
    for (int n = 1;; ++n) {
        SCOPED_TRACE("query " + std::to_string(n));
        const Escena e = escena(Motor::sqlite);
        ejecutar(*abrir_sesion(e.conexion), "update ctcquorvel set concepto='Uno' where num_docum='1'");
        comenzar_historia(*abrir_sesion(e.conexion), 1, 1); // which was not told of that
        const std::string antes = guardados(e);
        Puesto puesto(e, e.conexion);
        Pantalla& p = puesto.p;
        p.buscar(l.antes);
        (void)p.mensajes();
        int hechas = 0;
        puesto.sesion->antes = [&](const std::string& sql) {
            if (consulta(sql) && ++hechas == n) throw SesionFallida("falla pedida", sql);
        };
        l.hacer(p);
        puesto.sesion->antes = [](const std::string&) {};
        const auto dicho = p.mensajes();
        EXPECT_LE(std::count(dicho.begin(), dicho.end(), "falla pedida"), 1);
        p.escritorio.olvidar();
        grabar_lo_que_haya(p, l);
        EXPECT_EQ(guardados(e), antes);
        EXPECT_EQ(revision(e), "");
        if (hechas < n) break;
        l.hacer(p);
        grabar_lo_que_haya(p, l);
        EXPECT_EQ(guardados(e), antes);
        EXPECT_EQ(revision(e), "");
        p.escritorio.olvidar();
        ASSERT_LT(n, 100);
    }
}

// --- a commit whose answer is lost

/// The job, its answer lost and the database away for longer than is waited; and once more when it is back.
/// @return what is stored at the end
std::string dos_veces(const Escena& e, const Trabajo& t, bool quedo) {
    Puesto puesto(e, e.conexion);
    puesto.preparar(t);
    bool lejos = false;
    const auto perder = [&] {
        if (std::exchange(lejos, true)) return;
        throw CommitSinRespuesta("falla pedida", "commit");
    };
    if (quedo) puesto.sesion->tras_commit = perder;
    (void)puesto.hacer(t, [&](const std::string& sql) {
        if (lejos && consulta(sql)) throw SesionFallida("falla pedida", sql);
        if (quedo || lejos || sql != "commit") return;
        puesto.sesion->rollback();
        perder();
    });
    const auto& dicho = puesto.p.escritorio.mensajes;
    EXPECT_TRUE(std::ranges::any_of(dicho, [](const auto& m) { return m.text == DESENLACE_DESCONOCIDO; }));
    EXPECT_EQ(en_pantalla(puesto.p), puesto.en_riesgo);
    puesto.sesion->tras_commit = [] {};
    Trabajo otra = t;
    if (t.nombre == std::string("importar"))
        otra.hacer = [](Pantalla& p) { p.guardar(); }; // it is on the screen
    EXPECT_EQ(puesto.hacer(otra, [](const std::string&) {}), t.dicho);
    EXPECT_EQ(revision(e), "");
    return base(e);
}

TEST(Desenlace, ElDesconocidoSeAveriguaAlRepetir) {
    std::vector<Trabajo> trabajos;
    for (const Trabajo& t : TRABAJOS)
        if (t.etapas == 1) trabajos.push_back(t);
    std::vector<Escena> escenas; // a process that makes its own takes another one's folder
    for (std::size_t i = 0; i < 2 * trabajos.size(); ++i) escenas.push_back(escena(Motor::sqlite));
    const auto finales = en_procesos(static_cast<int>(escenas.size()), [&](int i) {
        const auto n = static_cast<std::size_t>(i);
        return dos_veces(escenas[n], trabajos[n / 2], n % 2 == 0);
    });
    for (std::size_t i = 0; i < finales.size(); ++i) {
        const Trabajo& t = trabajos[i / 2];
        SCOPED_TRACE(std::string(t.nombre) + (i % 2 == 0 ? ", kept" : ", not kept"));
        EXPECT_EQ(finales[i].codigo, 0);
        const Escena e = escena(Motor::sqlite);
        Puesto puesto(e, e.conexion);
        puesto.preparar(t);
        EXPECT_EQ(puesto.hacer(t, [](const std::string&) {}), t.dicho);
        EXPECT_EQ(finales[i].texto, base(e));
    }
}

} // namespace
