// Goal: choosing a file never costs a voucher. Method: windows as processes of their own that open file
// dialogs beside the database, other programs that end meanwhile, and SIGKILL.
#include "apoyo/proceso.h"
#include "qt/file_dialog.h"
#include "qt/pantalla_qt.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <QFileDialog>
#include <QFileSystemModel>
#include <QProcess>
#include <cstdio>
#include <filesystem>
#include <iostream>

using namespace quorvel;
using namespace quorvel::app;
using pruebas::Pantalla;
namespace fs = std::filesystem;

namespace {

constexpr int ESPERA = 60'000;

/// Another process that is told to go on, answers with a line, and in the end is killed.
class Ventana : public QProcess {
public:
    explicit Ventana(const char* prueba) {
        setProcessChannelMode(ForwardedErrorChannel);
        start(QCoreApplication::applicationFilePath(),
              {"--gtest_also_run_disabled_tests", "--gtest_brief=1",
               QString("--gtest_filter=DISABLED_Ventana.") + prueba});
    }
    ~Ventana() override {
        kill();
        waitForFinished(ESPERA);
    }
    std::string respuesta() {
        for (;;) {
            while (!canReadLine())
                if (!waitForReadyRead(ESPERA)) return "";
            const QByteArray linea = readLine().trimmed();
            if (linea.startsWith("> ")) return linea.mid(2).toStdString();
        }
    }
    void seguir() {
        write("\n");
        waitForBytesWritten(ESPERA);
    }
};

void responder(const std::string& texto) {
    std::cout << "> " << texto << std::endl;
    std::string orden;
    std::getline(std::cin, orden);
}

void grabar_traspaso(Pantalla& p) {
    p.campo("cmbDocumento", "TRASPASO");
    p.campo("cmblibro", "CONTABLES");
    p.campo("txtconcepto", "Aporte inicial");
    p.ir_a("grdDetalle");
    p.celda(1, "101001");
    p.celda(3, "150000");
    p.teclado.tecla(Qt::Key_Return);
    p.teclado.tecla(Qt::Key_Return);
    p.celda(1, "301001");
    p.celda(4, "150000");
    p.teclado.tecla(Qt::Key_Return);
    p.teclado.tecla(Qt::Key_Return);
    p.teclado.tecla(Qt::Key_F5);
}

/// Leaves every file dialog once it shows this entry.
struct Salida {
    explicit Salida(const std::string& entrada) {
        QObject::connect(&reloj, &QTimer::timeout, &reloj, [esta = QString::fromStdString(entrada)] {
            auto* d = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            if (d == nullptr) return;
            const auto* lista = d->findChild<QFileSystemModel*>();
            if (lista->index(esta).isValid() && !lista->type(lista->index(esta)).isEmpty()) d->reject();
        });
        reloj.start(20);
    }
    QTimer reloj;
};

/// Tells whether files were opened since the last question.
class Aperturas {
public:
    explicit Aperturas(const std::vector<std::string>& archivos) {
        for (const auto& a : archivos) EXPECT_GE(inotify_add_watch(fd_, a.c_str(), IN_OPEN), 0) << a;
    }
    ~Aperturas() { close(fd_); }
    Aperturas(const Aperturas&) = delete;
    Aperturas& operator=(const Aperturas&) = delete;
    [[nodiscard]] bool hubo() const {
        char avisos[4096];
        return read(fd_, avisos, sizeof avisos) > 0;
    }

private:
    int fd_ = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
};

TEST(Archivos, NoDialogOpensWhatItLists) {
    const auto db = apoyo::crear_empresa(apoyo::Motor::sqlite);
    const std::string base = db->Name(), carpeta = fs::path(base).parent_path().string();
    fs::create_directory(carpeta + "/dentro");
    const Aperturas aperturas({base, base + "-wal", base + "-shm"});
    for (const qt::Choose que : {qt::Choose::file, qt::Choose::files, qt::Choose::save, qt::Choose::folder}) {
        SCOPED_TRACE(static_cast<int>(que));
        const Salida salida(que == qt::Choose::folder ? carpeta + "/dentro" : base);
        EXPECT_TRUE(
            qt::choose_files(nullptr, {.title = "", .proposed = QString::fromStdString(carpeta), .what = que})
                .isEmpty());
        EXPECT_FALSE(aperturas.hubo());
    }
    EXPECT_TRUE(apoyo::base_en_uso(base)) << "what is lost once stays lost";
    EXPECT_TRUE(aperturas.hubo()) << "of that other process";
}

TEST(DISABLED_Ventana, SavesAfterAFileDialog) {
    Pantalla p;
    const std::string base = p.db->Name();
    fs::current_path(fs::path(base).parent_path());
    const Salida esc(base);
    p.teclado.tecla(Qt::Key_A, Qt::ControlModifier | Qt::ShiftModifier);
    responder(base);
    grabar_traspaso(p);
    responder(p.mensajes.empty() ? "" : p.mensajes.back());
}

TEST(Archivos, AVoucherOutlivesAFileDialogOtherProgramsAndAKill) {
    Ventana ventana("SavesAfterAFileDialog");
    const std::string base = ventana.respuesta();
    ASSERT_FALSE(base.empty());
    const std::string respaldo = apoyo::carpeta_nueva() + "/respaldo";
    EXPECT_EQ(QProcess::execute(QUORVEL_PROGRAMA, {"db", "backup", base.c_str(), respaldo.c_str()}), 0);
    ventana.seguir();
    EXPECT_EQ(ventana.respuesta(), "Comprobante Ingresado y Mayorizado");
    ventana.kill();
    ventana.waitForFinished(ESPERA);
    EXPECT_EQ(apoyo::filas(*abrir_sesion("sqlite:" + base), "select concepto from ctcquorvel"),
              "Aporte inicial");
    fs::remove_all(fs::path(base).parent_path());
}

} // namespace
