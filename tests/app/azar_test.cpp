// Goal: no sequence of keys, clicks and calls brings the program down or makes data that contradict each
// other. Method: keys and clicks at random on whatever window is in front, as the platform delivers them;
// other screens, the host and another program do what they like meanwhile; the database is checked
// afterwards.
// ./test --azar does more steps.
#include "apoyo/empresa.h"
#include "app/anfitrion.h"
#include "app/mano.h"
#include "dbtools/esquema.h"
#include "dbtools/revisar.h"
#include "demo/demo.h"
#include "host/clsQuorvel.h"
#include "host/clsQuorvelRem.h"
#include "platform/files/attachments.h"
#include "screen/frmQuorvel.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <cstdlib>
#include <fstream>

using namespace quorvel;
using namespace quorvel::app;
using namespace quorvel::pruebas;
namespace fs = std::filesystem;

namespace {

long numero_de(const char* variable, long si_falta) {
    const char* texto = std::getenv(variable);
    return texto != nullptr ? std::atol(texto) : si_falta;
}

/// A folder that is the person's own and the current one; no other program is found from it.
class Lugar {
public:
    Lugar() : antes_(fs::current_path()), programas_(std::getenv("PATH")) {
        ::setenv("XDG_DATA_HOME", carpeta.c_str(), 1);
        fs::create_directories(personal);
        ::setenv("PATH", carpeta.c_str(), 1);
        fs::current_path(carpeta);
        for (const char* nombre : {"acta.pdf", "otra/acta.pdf", "foto.png", "salida.csv"}) {
            fs::create_directories((carpeta / nombre).parent_path());
            std::ofstream(carpeta / nombre) << nombre;
            archivos.push_back(carpeta / nombre);
        }
    }
    ~Lugar() {
        fs::current_path(antes_);
        ::setenv("PATH", programas_.c_str(), 1);
    }
    Lugar(const Lugar&) = delete;
    Lugar& operator=(const Lugar&) = delete;
    const fs::path carpeta = apoyo::carpeta_nueva();
    const fs::path personal = carpeta / "quorvel";
    const std::string conexion = "sqlite:" + (carpeta / "azar.db").string();
    std::vector<fs::path> archivos;

private:
    fs::path antes_;
    std::string programas_;
};

/// What another program may write: texts that are null or padded, a voucher held by somebody. A database may
/// refuse it.
constexpr const char* DE_OTRO_PROGRAMA[] = {
    "update ctcquorvel set concepto=null where num_docum='1'",
    "update ctcquorvel set nombre=null, rut_persona=null, num_ref=null where num_docum='2'",
    "update ctcquorvel set libro=null, doc_libro=null, moneda=null where num_docum='3'",
    "update ctcquorvel set comprobante_adjunto=null where comprobante_adjunto=0",
    "update ctcquorvel set bloqueo_usuario=null where bloqueo_usuario=0",
    "update ctcquorvel set bloqueo_usuario=2 where num_docum='4'",
    "update ctcquorvel set libro='VENTAS   ', ifrs='0  ', estado='P ' where num_docum='5'",
    "update ctdquorvel set glosa=null, centro2=null where secuencia=1",
    "update ctdquorvel set auxiliar=auxiliar||'  ' where auxiliar<>''",
    "update ctmcentros set req_auxiliar='1 ' where req_auxiliar='1'",
    "update ctmcentros set n_centro=null where centro='501001'",
    "update ctxaux_cod set n_auxiliar=null where auxiliar='000014'",
    "update admpersona set n_persona=null where persona=2",
};

/// Screens of one and of two users on one database, each with a host that calls it at any time.
class Casa {
public:
    explicit Casa(const Lugar& lugar) : lugar_(lugar) {
        dbtools::crear_esquema(lugar.conexion);
        otro_programa_ = abrir_sesion(lugar.conexion);
        sembrar_empresa(*otro_programa_);
        for (Puesto& p : puestos_) instalar(p);
    }
    void jugar(unsigned semilla, long pasos) {
        Mano mano(semilla, pasos, lugar_.archivos,
                  {[&] { llamar(); }, [&] { llamar(); }, [&] { asiento(); }, [&] { otro_programa(); }});
        mano_ = &mano;
        while (!mano.termino() || !todo_cerrado())
            QApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
        for (Puesto& p : puestos_) p.objeto.reset();
        EXPECT_EQ(apoyo::filas(*otro_programa_, "select num_docum from ctcquorvel where bloqueo_usuario=1"),
                  "");
    }

private:
    struct Puesto {
        const char* clase;
        int usuario;
        std::unique_ptr<clsConexion> db{}, reporte{};
        std::unique_ptr<ObjetoHost> objeto{};
        bool en_llamada = false; ///< the host waits inside a call for the person to close the screen
    };

    void instalar(Puesto& p) {
        abrir_sesiones(p);
        p.objeto = crear_objeto(p.clase, {escritorio_, reloj_, impresor_, lugar_.personal});
        p.objeto->let_glbEmpresa(1);
        p.objeto->let_glbUsuario(static_cast<std::int16_t>(p.usuario));
        p.objeto->let_glbPermiso("11111");
        p.objeto->set_glbdb(p.db.get());
        p.objeto->set_glbdbReport(p.reporte.get());
    }
    void abrir_sesiones(Puesto& p) {
        p.db = abrir_sesion(lugar_.conexion);
        p.reporte = abrir_sesion_informes((lugar_.carpeta / "print.db").string());
    }
    /// The host's words fit its status, and a session is closed as soon as its screen says that it is gone.
    void comprobar(Puesto& p, Estado e, bool quita = false) {
        EXPECT_EQ(fallo(e), !p.objeto->descripcion_error().empty()) << p.objeto->descripcion_error();
        EXPECT_NE(e, E_FAIL) << p.objeto->descripcion_error();
        if (!quita || fallo(e)) return;
        EXPECT_FALSE(p.objeto->pantalla().visible() || p.objeto->pantalla().running());
        abrir_sesiones(p);
        p.objeto->set_glbdb(p.db.get());
        p.objeto->set_glbdbReport(p.reporte.get());
    }
    void llamar() {
        Puesto& p = puestos_[mano_->hasta(4)];
        switch (mano_->hasta(9)) {
        case 0: return comprobar(p, quitar(p), true);
        case 1:
            p.objeto->let_glbPermiso(std::string("1011111100").substr(mano_->hasta(6), mano_->hasta(6)));
            break;
        case 2: p.objeto->let_glbEmpresa(static_cast<std::int16_t>(1 + mano_->hasta(2))); break;
        case 3:
            if (mano_->hasta(3) > 0 || p.en_llamada) break;
            viejas_.push_back(std::move(p.db)); // a screen whose object goes may still use them
            viejas_.push_back(std::move(p.reporte));
            p.objeto.reset();
            return instalar(p);
        default: break;
        }
        if (auto* una = dynamic_cast<clsQuorvel*>(p.objeto.get())) return comprobar(p, una->ShowForm());
        preparar(p, dynamic_cast<clsQuorvelRem&>(*p.objeto));
    }
    static Estado quitar(Puesto& p) {
        auto* una = dynamic_cast<clsQuorvel*>(p.objeto.get());
        return una != nullptr ? una->UnloadForm() : dynamic_cast<clsQuorvelRem&>(*p.objeto).UnloadForm();
    }
    void preparar(Puesto& p, clsQuorvelRem& otra) {
        switch (mano_->hasta(4)) {
        case 0: return comprobar(p, otra.LoadForm());
        case 1: return comprobar(p, otra.grd_agregar("101001", "", "1500", "", "a"));
        case 2: return comprobar(p, otra.grd_borrar("", "", "", "", ""));
        default: {
            const bool antes = std::exchange(p.en_llamada, true);
            const Estado e = otra.ShowForm();
            p.en_llamada = antes;
            EXPECT_TRUE(e == S_OK || e == RPC_E_SERVERCALL_RETRYLATER) << e;
        }
        }
    }
    /// Whoever is in front enters a whole voucher.
    void asiento() {
        auto* f = dynamic_cast<frmQuorvel*>(escritorio_.top());
        if (f == nullptr || f->running() || QApplication::activeModalWidget() != nullptr) return;
        using Funcion = ui::ctlRegistro::Function;
        f->ctlRegistro1.press(Funcion::New);
        if (!f->visible() || !f->cmbDocumento.choose(1) || !f->cmblibro.choose(0)) return;
        f->txtconcepto.SetText("Al azar");
        const std::string monto = std::to_string(1 + mano_->hasta(5000));
        f->grdDetalle.AddItem("1\t101001\t\t" + monto + "\t\tAl azar");
        f->grdDetalle.AddItem("2\t301001\t\t\t" + monto + "\tAl azar");
        f->RecalcularTotales();
        if (mano_->hasta(3) > 0) f->ctlRegistro1.press(Funcion::Save);
    }
    void otro_programa() {
        (void)otro_programa_->executesql(DE_OTRO_PROGRAMA[mano_->hasta(std::size(DE_OTRO_PROGRAMA))]);
    }
    bool todo_cerrado() {
        if (!mano_->termino()) return false;
        bool cerrado = true;
        for (Puesto& p : puestos_) cerrado = quitar(p) == S_OK && cerrado;
        return cerrado;
    }

    const Lugar& lugar_;
    std::unique_ptr<clsConexion> otro_programa_;
    std::vector<std::unique_ptr<clsConexion>> viejas_;
    qt::QtEscritorio escritorio_;
    qt::QtReportPrinter impresor_;
    RelojFijo reloj_{std::chrono::year(2024) / 6 / 15};
    Puesto puestos_[4] = {{"clsQuorvel", 1}, {"clsQuorvel", 1}, {"clsQuorvel", 2}, {"clsQuorvelRem", 2}};
    Mano* mano_ = nullptr;
};

class AlAzar : public ::testing::TestWithParam<long> {
protected:
    void TearDown() override {
        for (const std::string& problema : dbtools::revisar(lugar.conexion, attachment_base(lugar.personal)))
            ADD_FAILURE() << problema;
    }
    Lugar lugar;
    unsigned semilla = static_cast<unsigned>(numero_de("QUORVEL_SEMILLA", 0) + GetParam());
    long pasos = numero_de("QUORVEL_PASOS", 3000);
};

} // namespace

TEST_P(AlAzar, ElPrograma) {
    demo::crear_demo(lugar.conexion);
    Mano mano(semilla, pasos, lugar.archivos);
    while (!mano.termino())
        ASSERT_NE(trabajar({lugar.conexion, lugar.carpeta / "print.db", 1, 1}), FinPantalla::error);
}

TEST_P(AlAzar, VariasPantallasYSusAnfitriones) { Casa(lugar).jugar(semilla, pasos); }

INSTANTIATE_TEST_SUITE_P(Semillas, AlAzar, ::testing::Range(0L, numero_de("QUORVEL_VECES", 3)));
