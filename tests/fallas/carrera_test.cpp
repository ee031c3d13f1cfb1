// Goal: many users at once lose nothing and take nothing twice. Method: two and twenty processes, each with a
// screen and a user of its own, do the same thing at the same moment; the checker then reads the database,
// and every refused attempt must have told its step's message and left the screen as it was.
#include "apoyo/proceso.h"
#include "fallas/trabajos.h"
#include "screen/papeles/frmImprimir.h"
#include "screen/papeles/frmfactura.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <new>
#include <sstream>

using namespace quorvel;
using namespace quorvel::apoyo;
using namespace quorvel::fallas;
using pruebas::Pantalla;
namespace fs = std::filesystem;

namespace {

constexpr const char* GRABADO = "Comprobante Ingresado y Mayorizado";

/// Lets all processes go on together.
class Barrera {
public:
    explicit Barrera(int cuantos) : cuantos_(cuantos) {
        void* const memoria = mmap(nullptr, sizeof(std::atomic<int>), PROT_READ | PROT_WRITE,
                                   MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        if (memoria == MAP_FAILED) throw std::bad_alloc();
        llegados_ = new (memoria) std::atomic<int>(0);
    }
    void esperar(int vuelta) {
        ++*llegados_;
        for (int i = 0; *llegados_ < cuantos_ * vuelta && i < 30000; ++i) usleep(1000);
    }

private:
    int cuantos_;
    std::atomic<int>* llegados_;
};

/// Refusals that a user may meet because another one was faster.
bool rechazo_conocido(const std::string& aviso) {
    for (const char* conocido :
         {"Ya existe un comprobante contable con el mismo numero", "Problemas al grabar cabecera",
          "Este comprobante ya no es el que abrió", "Comprobante contable solo lectura",
          "Comprobante no válido", "Problemas para grabar factura sql:", "Problemas al ingresar persona sql:",
          "No se puede ingresar mas Comprobantes"})
        if (aviso.starts_with(conocido)) return true;
    return aviso.find("está bloqueada por otro programa") != std::string::npos;
}

class Carrera : public ::testing::TestWithParam<std::tuple<Motor, int>> {
protected:
    const Motor motor = std::get<0>(GetParam());
    const int cuantos = std::get<1>(GetParam());
    const Escena e = escena(motor);
    std::vector<std::string> carpetas; ///< one a user, all with their attached files in the scene's folder

    void SetUp() override {
        const auto db = abrir_sesion(e.conexion);
        for (int i = 0; i < cuantos; ++i) {
            carpetas.push_back(carpeta_nueva());
            std::ofstream(carpetas.back() + "/nivo.ini") << "[nivo]\nbase=" << e.carpeta << "/\n";
            if (i >= 2) {
                const std::string n = std::to_string(i + 1);
                ejecutar(*db, "insert into admusuario(usuario,n_usuario) values (" + n + ",'u" + n + "')");
            }
        }
    }
    /// @param un_usuario all processes belong to user 1
    std::vector<Final> correr(const std::function<std::string(Pantalla&, int)>& vida,
                              bool un_usuario = false) {
        return en_procesos(cuantos, [&](int i) {
            Pantalla p(e.conexion, carpetas[static_cast<std::size_t>(i)], un_usuario ? 1 : i + 1);
            p.abrir();
            return vida(p, i);
        });
    }
    /// Presses until it is done. @return how often it was refused
    static int insistir(Pantalla& p, const std::function<std::string()>& pulsar,
                        const std::function<void()>& corregir) {
        for (int rechazos = 0;; ++rechazos) {
            const std::string antes = en_pantalla(p), aviso = pulsar();
            if (aviso == GRABADO || aviso.empty()) return rechazos;
            EXPECT_TRUE(rechazo_conocido(aviso)) << aviso;
            EXPECT_EQ(en_pantalla(p), antes) << aviso;
            if (rechazos > 500 || HasFailure()) {
                ADD_FAILURE() << "never done: " << aviso;
                return rechazos;
            }
            corregir();
        }
    }
    std::string sql(const std::string& consulta) { return filas(*abrir_sesion(e.conexion), consulta); }
    static void sanos(const std::vector<Final>& finales) {
        for (const Final& f : finales) EXPECT_TRUE(!f.matado && f.codigo == 0) << f.codigo << f.texto;
    }
};
INSTANTIATE_TEST_SUITE_P(Motores, Carrera,
                         ::testing::Combine(::testing::ValuesIn(MOTORES), ::testing::Values(2, 20)),
                         [](const auto& i) {
                             return nombre(std::get<0>(i.param)) + std::to_string(std::get<1>(i.param));
                         });

TEST_P(Carrera, NumerarAdjuntarGrabarImprimir) {
    const int cada = cuantos == 2 ? 10 : 3;
    const auto finales = correr([&](Pantalla& p, int i) {
        int rechazos = 0;
        for (int n = 0; n < cada; ++n) {
            const std::string marca = "usuario " + std::to_string(i) + " vez " + std::to_string(n);
            p.nuevo();
            p.comprobante(std::to_string(1000 + i));
            p.escribir("txtconcepto", marca);
            const std::string archivo = p.carpeta + "/recibo.pdf";
            std::ofstream(archivo) << marca;
            if ((i + n) % 3 != 0) {
                p.escritorio.elegir_archivo(archivo);
                p.pulsar("cmdadjunto_agregar");
            }
            const auto pulsar = [&] {
                p.guardar();
                return ultimo_aviso(p);
            };
            rechazos += insistir(p, pulsar, [&] { p.elegir("cmbDocumento", "001 TRASPASO"); });
            p.escritorio.al_abrir([](ui::Form& f) { dynamic_cast<frmImprimir&>(f).cmdOK.press(); });
            p.f.ctlRegistro1.press(ui::ctlRegistro::Function::Print);
            EXPECT_EQ(ultimo_aviso(p), "");
            EXPECT_EQ(filas(*p.reporte, "select min(concepto),count(*) from ctcQuorvel"), marca + "|3");
        }
        return std::to_string(rechazos);
    });
    sanos(finales);
    EXPECT_EQ(revision(e), "");
    EXPECT_EQ(sql("select count(*) from ctcquorvel"), std::to_string(cuantos * cada + 2));
    EXPECT_EQ(sql("select count(*) from ctcquorvel where bloqueo_usuario<>0"), "0");
    const auto db = abrir_sesion(e.conexion);
    const std::string raiz = e.carpeta + "/adjunto/";
    int archivos = 0;
    for (const auto rs =
             db->NewRecord("select concepto,comprobante_adjunto from ctcquorvel where concepto like "
                           "'usuario%' and comprobante_adjunto in (select comprobante_adjunto "
                           "from ctdcomprad)");
         !rs->eof(); rs->MoveNext(), ++archivos)
        for (const auto& base : fs::directory_iterator(raiz)) {
            std::ifstream in(base.path() / rs->at(1).text() / "recibo.pdf");
            EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}), rs->at(0).text())
                << "the file of another voucher";
        }
    EXPECT_GT(archivos, cuantos * cada / 2);
    int rechazos = 0;
    for (const Final& f : finales) rechazos += std::atoi(f.texto.c_str());
    RecordProperty("rechazos", rechazos);
}

TEST_P(Carrera, UnosGrabanOtrosAnulanEliminanOCortan) {
    // one user in several windows: his lock keeps none of them away
    constexpr const char* ORDENES[] = {"grabar", "mnuAnular", "mnuEliminar", "cmdcortar"};
    for (int ronda = 0; ronda < 4; ++ronda) {
        const std::string numero = ronda % 2 == 0 ? "1" : "2";
        SCOPED_TRACE("round " + std::to_string(ronda));
        const Escena fresca = escena(motor);
        Barrera barrera(cuantos);
        const auto finales = en_procesos(cuantos, [&](int i) -> std::string {
            const char* orden = ORDENES[(i + ronda) % (cuantos == 2 ? 3 : 4)];
            Pantalla p(fresca.conexion, carpetas[static_cast<std::size_t>(i)], 1);
            p.abrir();
            p.buscar(numero);
            p.escribir("txtconcepto", "otra glosa");
            (void)p.mensajes();
            const std::string antes = en_pantalla(p);
            p.escritorio.responder(ui::Answer::yes);
            barrera.esperar(1);
            if (std::string(orden) == "grabar")
                p.guardar();
            else
                p.pulsar(orden);
            p.escritorio.olvidar();
            const std::string dicho = ultimo_aviso(p);
            barrera.esperar(2); // nobody gives locks back before all are done
            const bool hecho = dicho.empty() || dicho == GRABADO || dicho == "Comprobante Anulado";
            EXPECT_TRUE(hecho || (rechazo_conocido(dicho) && en_pantalla(p) == antes)) << orden << dicho;
            return hecho ? orden : "";
        });
        sanos(finales);
        EXPECT_EQ(revision(fresca), "");
        int anulados = 0;
        for (const Final& f : finales) anulados += f.texto == "mnuAnular" ? 1 : 0;
        EXPECT_LE(anulados, 1);
        const auto db = abrir_sesion(fresca.conexion);
        if (numero == "1") {
            EXPECT_EQ(filas(*db, "select debe6 from ctmsdcenth where centro='101001'"),
                      anulados == 0 ? "1000" : "0");
        }
        std::string todo;
        for (const Final& f : finales) todo += f.texto + ",";
        const std::string estado =
            filas(*db, "select estado from ctcquorvel where num_docum='" + numero + "'");
        EXPECT_TRUE(anulados == 0 || estado != "P") << todo << " an annulled voucher came back to life";
    }
}

TEST_P(Carrera, CerrarMientrasOtrosGraban) {
    Barrera barrera(cuantos);
    const auto finales = correr([&](Pantalla& p, int i) -> std::string {
        int grabados = 0;
        barrera.esperar(1);
        if (i == 0) {
            p.escritorio.responder(ui::Answer::yes);
            p.pulsar("mnuGenerarCierre");
            p.elegir("cmblibro", "CONTABLES");
            const auto pulsar = [&] {
                p.guardar();
                return ultimo_aviso(p);
            };
            insistir(p, pulsar, [&] { p.f.txtNum_doc.SetText(std::to_string(9000)); });
            return "cierre";
        }
        for (int n = 0; n < 100; ++n) {
            p.comprobante("10");
            p.guardar();
            const std::string aviso = ultimo_aviso(p);
            if (aviso == GRABADO) {
                ++grabados;
                p.nuevo();
            } else {
                EXPECT_TRUE(rechazo_conocido(aviso)) << aviso;
                if (aviso.starts_with("No se puede ingresar mas")) return std::to_string(grabados);
                p.elegir("cmbDocumento", "001 TRASPASO");
                p.f.grdDetalle.Clear();
            }
        }
        return "the year stayed open";
    });
    sanos(finales);
    EXPECT_EQ(revision(e), "");
    int grabados = 0;
    for (std::size_t i = 1; i < finales.size(); ++i) {
        EXPECT_NE(finales[i].texto, "the year stayed open");
        grabados += std::atoi(finales[i].texto.c_str());
    }
    EXPECT_EQ(sql("select count(*) from ctcquorvel"), std::to_string(grabados + 3));
    EXPECT_EQ(sql("select count(*) from ctmconfigu where f_comp_cierre is not null"), "1");
}

TEST_P(Carrera, FacturasDeUnClienteNuevo) {
    {
        Pantalla p(e.conexion, carpetas[0], 1);
        p.abrir();
        for (int i = 0; i < cuantos; ++i) {
            p.comprobante("10");
            p.guardar();
            EXPECT_EQ(ultimo_aviso(p), GRABADO);
            p.nuevo();
        }
    }
    Barrera barrera(cuantos);
    const auto finales = correr([&](Pantalla& p, int i) -> std::string {
        p.buscar(std::to_string(i + 3));
        int rechazos = 0;
        p.escritorio.al_abrir([&](ui::Form& forma) {
            auto& f = dynamic_cast<frmfactura&>(forma);
            f.txtruc.SetText("77.777.777-7");
            f.txtnombre.SetText("CLIENTE NUEVO");
            f.txtfactura.SetText(std::to_string(i));
            f.txtfecha.SetText("14/06/2024");
            f.txtNeto.SetText("300");
            f.grdfac.AddItem("1\tclavos\t3\t100\t300");
            const auto pulsar = [&] {
                f.cmdaceptar.press();
                return ultimo_aviso(p);
            };
            barrera.esperar(1);
            rechazos = insistir(p, pulsar, [] {});
            f.cmdcancelar.press();
        });
        p.pulsar("mnuFactura");
        return std::to_string(rechazos);
    });
    sanos(finales);
    EXPECT_EQ(revision(e), "");
    EXPECT_EQ(sql("select count(*) from ftcfactura"), std::to_string(cuantos));
    EXPECT_EQ(sql("select count(*) from ftdfactura"), std::to_string(cuantos));
    EXPECT_EQ(sql("select count(*) from admpersona where cedula_ruc='77.777.777-7'"), "1");
}

} // namespace
