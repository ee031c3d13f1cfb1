#include "app/demo_run.h"

#include "app/db/demo.h"
#include "app/sesion_app.h"
#include "app/teclado.h"
#include "qt/FormWindow.h"
#include "qt/text.h"
#include "screen/campos.h"
#include "screen/frmQuorvel.h"
#include "voucher/bloqueo.h"

#include <QApplication>
#include <QMessageBox>
#include <QPainter>
#include <QTimer>
#include <iostream>

namespace quorvel {

namespace {

namespace fs = std::filesystem;

constexpr const char* NUMERO = "4521"; // of the document that is keyed in

/// Answers the modal windows that the keys bring up, and takes their pictures.
class Ayudante : public QObject {
public:
    Ayudante(fs::path carpeta, Teclado& teclado) : carpeta_(std::move(carpeta)), teclado_(teclado) {
        connect(&reloj_, &QTimer::timeout, this, [this] { mirar(); });
        reloj_.start(30);
    }
    std::vector<std::string> mensajes;

    void foto(QWidget& ventana, const std::string& nombre) const {
        ventana.grab().save(qt::to_qt((carpeta_ / (nombre + ".png")).string()));
    }

private:
    void mirar() {
        QWidget* modal = QApplication::activeModalWidget();
        if (modal == nullptr || modal == visto_) return;
        visto_ = modal;
        if (auto* caja = qobject_cast<QMessageBox*>(modal)) {
            mensajes.push_back(qt::to_std(caja->text()));
            foto(*modal, "mensaje" + std::to_string(mensajes.size()));
            if (QWidget* detras = modal->parentWidget()) foto_sobre(*detras->window(), *modal);
            teclado_.tecla(Qt::Key_Return);
        } else if (auto* ventana = dynamic_cast<qt::FormWindow*>(modal)) {
            atender(*ventana);
        }
        visto_ = nullptr;
    }
    /// The box in the middle of its window, as the person sees it.
    void foto_sobre(QWidget& ventana, QWidget& caja) const {
        QPixmap todo = ventana.grab();
        const QSize sobra = ventana.size() - caja.size();
        const QRect sitio(QPoint(sobra.width() / 2, sobra.height() / 2), caja.size());
        QPainter pintor(&todo);
        pintor.drawPixmap(sitio, caja.grab());
        pintor.drawRect(sitio); // the window manager's frame is not in the picture
        todo.save(qt::to_qt((carpeta_ / ("mensaje_" + std::to_string(mensajes.size()) + ".png")).string()));
    }
    void atender(qt::FormWindow& ventana) {
        foto(ventana, ventana.form().name());
        if (ventana.form().name() == "frmImprimir") {
            ventana.form().find("cmdOK")->SetFocus();
            teclado_.tecla(Qt::Key_Return);
            return;
        }
        ui::Control* lista = ventana.form().find("ctlConsulta1");
        const bool busca = ventana.form().name() == "frmBuscaQuorvel";
        if (busca && ventana.form().find("txtnum_ref")->SetFocus()) teclado_.escribir(NUMERO);
        if (lista != nullptr) lista->SetFocus();
        teclado_.tecla(busca ? Qt::Key_Return : Qt::Key_Escape);
    }

    fs::path carpeta_;
    Teclado& teclado_;
    QTimer reloj_;
    QWidget* visto_ = nullptr;
};

/// Tab until the named control has the focus.
bool ir_a(frmQuorvel& f, Teclado& t, const std::string& nombre) {
    for (int i = 0; i < 60; ++i) {
        if (f.active_control() != nullptr && f.active_control()->name() == nombre) return true;
        t.tecla(Qt::Key_Tab);
    }
    std::cerr << "no se llega a " << nombre << '\n';
    return false;
}

void campo(frmQuorvel& f, Teclado& t, const std::string& nombre, const std::string& texto) {
    if (ir_a(f, t, nombre)) t.escribir(texto);
}

void ingresar_compra(frmQuorvel& f, Teclado& t) {
    const std::string hoy = fecha_dmy(f.servicios.reloj.hoy());
    campo(f, t, "cmbDocumento", "COMPRA");
    campo(f, t, "cmblibro", "COMPRAS");
    campo(f, t, "txtconcepto", "Compra de materiales de oficina");
    campo(f, t, "cmbdoc_libro", "FACTURA");
    campo(f, t, "txtnum_ref", NUMERO);
    campo(f, t, "txtfecha_doc", hoy);
    campo(f, t, "txtfecha_pago", hoy);
    campo(f, t, "txtrut_persona", "96511640-0");
    campo(f, t, "txtnombre", "EMBOTELLADORA DEL MAIPO S.A.");
    if (!ir_a(f, t, "grdDetalle")) return;
}

struct Renglon {
    const char *cuenta, *auxiliar, *debe, *haber, *glosa;
};

constexpr Renglon LINEAS[] = {
    {"503006", "", "100000", "", "utiles de oficina"},
    {"109001", "", "19000", "", "iva credito fiscal"},
    {"201001", "000021", "", "119000", "factura 4521"},
};

/// The screen skips cells that an account does not use, so the goal is a column, not a number of tabs.
void celda(frmQuorvel& f, Teclado& t, int columna, const std::string& texto) {
    if (texto.empty()) return;
    for (int i = 0; i < f.grdDetalle.Cols() && f.grdDetalle.Col() != columna; ++i) t.tecla(Qt::Key_Tab);
    t.escribir(texto);
}

void linea(frmQuorvel& f, Teclado& t, const Renglon& r) {
    const char* const celdas[] = {r.cuenta, r.auxiliar, r.debe, r.haber, r.glosa};
    for (int i = 0; i < 5; ++i) celda(f, t, i + 1, celdas[i]);
    t.tecla(Qt::Key_Return);
}

/// A cell that is refused: its message, then Escape for the cell and for the row.
void renglon_rechazado(frmQuorvel& f, Teclado& t) {
    celda(f, t, 1, "999999");
    t.tecla(Qt::Key_Return);
    t.tecla(Qt::Key_Escape);
    t.tecla(Qt::Key_Escape);
}

/// The voucher on the screen is opened again while another user works on it.
void abrir_bloqueado(frmQuorvel& f, Teclado& t) {
    constexpr int OTRO = 2;
    const auto clave = clave_pantalla(f);
    t.tecla(Qt::Key_F2);
    if (clave) bloquear(*f.glbdb, *clave, OTRO);
    t.tecla(Qt::Key_F3);
}

} // namespace

int demo_run(const fs::path& carpeta) {
    try {
        fs::create_directories(carpeta);
        // Every run starts from the same company, so that it always keys in the same document.
        const auto base = carpeta / "demo-run.db";
        for (const char* cola : {"", "-wal", "-shm"}) fs::remove(base.string() + cola);
        fs::remove(carpeta / "ctcQuorvel.pdf");
        crear_demo("sqlite:" + base.string());
        qt::QtEscritorio escritorio;
        qt::PdfReportPrinter impresor(carpeta);
        const RelojSistema reloj;
        SesionApp sesion({"sqlite:" + base.string(), carpeta / "print.db", 1, 1}, escritorio, impresor, reloj,
                         carpeta);
        sesion.mostrar();
        frmQuorvel& f = sesion.pantalla();
        qt::FormWindow* ventana = escritorio.window_of(f);
        if (ventana == nullptr) throw std::runtime_error("La pantalla no se abrió");
        ventana->resize(1280, 720);
        Teclado teclado;
        Ayudante ayudante(carpeta, teclado);
        ingresar_compra(f, teclado);
        teclado.tecla(Qt::Key_Y, Qt::ControlModifier);
        for (const Renglon& l : LINEAS) {
            linea(f, teclado, l);
            if (&l != &LINEAS[1]) continue;
            teclado.tecla(Qt::Key_F9); // the counterpart is still missing
            ayudante.foto(*ventana, "comprobante_diferencia");
        }
        ayudante.foto(*ventana, "comprobante");
        renglon_rechazado(f, teclado);
        teclado.tecla(Qt::Key_F5);
        teclado.tecla(Qt::Key_F2);
        teclado.tecla(Qt::Key_F3);
        teclado.tecla(Qt::Key_F6);
        ayudante.foto(*ventana, "comprobante_abierto");
        abrir_bloqueado(f, teclado);
        ayudante.foto(*ventana, "solo_lectura");
        for (const auto& mensaje : ayudante.mensajes) std::cout << "Mensaje: " << mensaje << '\n';
        std::cout << teclado.pulsaciones() << " pulsaciones, PDF: "
                  << (impresor.printed().empty() ? "ninguno" : impresor.printed().front()) << '\n';
        f.Unload();
        return impresor.printed().empty() || ayudante.mensajes.empty() ? 1 : 0;
    } catch (const std::exception& e) {
        std::cerr << e.what() << '\n';
        return 1;
    }
}

} // namespace quorvel
