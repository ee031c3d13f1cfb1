#pragma once
#include "apoyo/empresa.h"
#include "apoyo/sesiones.h"
#include "app/teclado.h"
#include "host/clsQuorvel.h"
#include "qt/FormWindow.h"
#include "qt/GridView.h"
#include "qt/QtEscritorio.h"
#include "qt/report/QtReportPrinter.h"
#include "screen/asistentes/frmAsistente.h"
#include "screen/asistentes/frmAsistente2.h"
#include "screen/consultas/formas_codigo.h"
#include "screen/consultas/frmBuscaQuorvel.h"
#include "screen/frmQuorvel.h"
#include "screen/papeles/frmImprimir.h"
#include "screen/papeles/frmcheque.h"
#include "screen/papeles/frmfactura.h"
#include "screen/registro/frmContrapartes.h"
#include "screen/registro/frmRegistro.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QTimer>
#include <functional>

namespace quorvel::pruebas {

inline const Fecha HOY = std::chrono::year(2024) / 6 / 15;

/// The voucher screen of the small company in a real window.
struct Pantalla {
    std::unique_ptr<clsConexion> db = apoyo::crear_empresa(apoyo::Motor::sqlite);
    std::string carpeta = apoyo::carpeta_nueva();
    std::unique_ptr<clsConexion> reporte = abrir_sesion_informes(carpeta + "/print.db");
    qt::QtEscritorio escritorio;
    qt::PdfReportPrinter impresor{carpeta};
    RelojFijo reloj{HOY};
    std::unique_ptr<ObjetoHost> objeto = crear_objeto("clsQuorvel", {escritorio, reloj, impresor, carpeta});
    app::Teclado teclado;
    std::vector<std::string> mensajes;
    std::function<void(qt::FormWindow&)> al_abrir;
    QTimer vigia;

    Pantalla() {
        objeto->let_glbEmpresa(1);
        objeto->let_glbUsuario(1);
        objeto->let_glbPermiso("11111");
        objeto->set_glbdb(db.get());
        objeto->set_glbdbReport(reporte.get());
        EXPECT_EQ(dynamic_cast<clsQuorvel&>(*objeto).ShowForm(), S_OK) << objeto->descripcion_error();
        QObject::connect(&vigia, &QTimer::timeout, &vigia, [this] { vigilar(); });
        vigia.start(10);
    }
    /// Every box is noted and closed, so that none can hang the test.
    void vigilar() {
        QWidget* modal = QApplication::activeModalWidget();
        if (auto* caja = qobject_cast<QMessageBox*>(modal)) {
            mensajes.push_back(caja->text().toStdString());
            caja->defaultButton() != nullptr ? caja->accept() : caja->reject();
        } else if (auto* ventana = dynamic_cast<qt::FormWindow*>(modal)) {
            auto accion = std::exchange(al_abrir, nullptr);
            if (accion)
                accion(*ventana);
            else
                ventana->reject();
        }
    }
    frmQuorvel& f() { return objeto->pantalla(); }
    void ir_a(const std::string& nombre) {
        for (int i = 0; i < 60 && (!f().active_control() || f().active_control()->name() != nombre); ++i)
            teclado.tecla(Qt::Key_Tab);
        ASSERT_TRUE(f().active_control());
        ASSERT_EQ(f().active_control()->name(), nombre);
    }
    void campo(const std::string& nombre, const std::string& texto) {
        ir_a(nombre);
        teclado.escribir(texto);
    }
    void celda(int columna, const std::string& texto) {
        for (int i = 0; i < f().grdDetalle.Cols() && f().grdDetalle.Col() != columna; ++i)
            teclado.tecla(Qt::Key_Tab);
        teclado.escribir(texto);
    }
    qt::GridView& grilla() { return *escritorio.window_of(f())->findChild<qt::GridView*>("grdDetalle"); }
};

/// One of every form beside the voucher screen.
inline std::vector<std::unique_ptr<ui::Form>> todas_las_formas(Pantalla& p) {
    static std::unique_ptr<registro::Bandeja> bandeja; // the last form's own
    ui::Escritorio& e = p.escritorio;
    bandeja = std::make_unique<registro::Bandeja>(*p.f().glbdb, 1, 1, Fecha{});
    std::vector<std::unique_ptr<ui::Form>> formas;
    formas.push_back(std::make_unique<frmBuscaCentro>(e));
    formas.push_back(std::make_unique<frmBuscaAuxiliar>(e));
    formas.push_back(std::make_unique<frmpersona>(e));
    formas.push_back(std::make_unique<frmcuenta>(e));
    formas.push_back(std::make_unique<frmBuscaImpuesto>(e));
    formas.push_back(std::make_unique<frmBuscaQuorvel>(e));
    formas.push_back(std::make_unique<frmAsistente>(e));
    formas.push_back(std::make_unique<frmAsistente2>(e));
    formas.push_back(std::make_unique<frmImprimir>(e));
    formas.push_back(std::make_unique<frmcheque>(e, EntradaCheque{}));
    formas.push_back(std::make_unique<frmfactura>(e, EntradaFactura{}));
    formas.push_back(std::make_unique<frmRegistro>(p.f()));
    formas.push_back(
        std::make_unique<frmContrapartes>(p.f(), *bandeja, std::vector<registro::Desconocida>{}));
    return formas;
}

} // namespace quorvel::pruebas
