#include "apoyo/pantalla.h"

#include "platform/ui/ctlConsulta.h"
#include "platform/ui/utf8.h"
#include "text/letras_utf8.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>

namespace quorvel::pruebas {

namespace {
constexpr Fecha HOY{std::chrono::year(2024), std::chrono::month(6), std::chrono::day(15)};
} // namespace

Pantalla::Pantalla(apoyo::Motor motor)
    : Pantalla(apoyo::conexion_empresa(motor), apoyo::carpeta_nueva(), 1) {}
Pantalla::Pantalla(const Pantalla& otra, int usuario)
    : Pantalla(otra.conexion, apoyo::carpeta_nueva(), usuario) {}

Pantalla::Pantalla(const std::string& conexion, const std::string& carpeta, int usuario)
    : conexion(conexion), carpeta(carpeta), db(abrir_sesion(conexion)),
      reporte(abrir_sesion_informes(carpeta + "/print.db")), reloj(HOY),
      f({escritorio, reloj, impresor, carpeta}) {
    f.glbUsuario = usuario;
    f.glbN_usuario = usuario == 1 ? "ANA ROJAS" : "LUIS";
}

Pantalla::~Pantalla() { f.Unload(); }

void Pantalla::abrir(const std::string& permiso) {
    f.glbdb = db.get();
    f.glbdbReport = reporte.get();
    f.glbEmpresa = 1;
    f.glbN_empresa = "Empresa de Prueba Ltda.";
    f.glbPermiso = permiso;
    f.glbPrograma = "Contabilidad";
    f.SetglbTipoImpresora("L");
    f.Show();
    EXPECT_EQ(mensajes(), std::vector<std::string>{});
}

void teclear(ui::Form& forma, const std::string& texto) {
    for (const char32_t c : ui::code_points(texto)) {
        ui::KeyEvent e;
        e.ch = c;
        forma.send_key(e);
    }
}

bool Pantalla::escribir(const char* control, const std::string& texto) {
    auto* caja = dynamic_cast<ui::TextBox*>(f.find(control));
    if (!caja || !caja->SetFocus()) return false;
    caja->SelectAll();
    if (texto.empty()) tecla("backspace");
    teclear(f, texto);
    f.focus_next();
    return !caja->has_focus();
}

void Pantalla::elegir(const char* control, const std::string& texto) {
    auto* lista = dynamic_cast<ui::ListControl*>(f.find(control));
    ASSERT_NE(lista, nullptr) << control;
    for (int i = 0; i < lista->ListCount(); ++i)
        if (lista->List(i) == texto) {
            EXPECT_TRUE(lista->choose(i)) << control;
            return;
        }
    FAIL() << control << " has no entry " << texto;
}

void Pantalla::pulsar(const char* control) {
    if (auto* boton = dynamic_cast<ui::CommandButton*>(f.find(control)))
        boton->press();
    else if (auto* menu = dynamic_cast<ui::MenuItem*>(f.find(control)))
        menu->press();
    else if (auto* opcion = dynamic_cast<ui::OptionButton*>(f.find(control)))
        opcion->press();
    else
        FAIL() << control;
}

bool Pantalla::celda(int fila, int columna, const std::string& texto) {
    ui::ctlPlanilla& g = f.grdDetalle;
    if (!g.SetFocus() || !g.move_to(fila, columna)) return false;
    if (!g.begin_edit(false)) return false;
    teclear(f, texto);
    return g.commit_edit();
}

void Pantalla::tecla(const char* nombre) {
    auto e = ui::parse_key(nombre);
    ASSERT_TRUE(e) << nombre;
    f.send_key(*e);
}

void Pantalla::adjuntar(const std::string& nombre) {
    const std::string origen = carpeta + "/" + nombre;
    std::ofstream(origen) << "contenido de " << nombre;
    escritorio.elegir_archivo(origen);
    pulsar("cmdadjunto_agregar");
}

std::string Pantalla::fila(int i) const {
    std::string todo;
    for (int col = 1; col <= 5; ++col) todo += (col > 1 ? "|" : "") + f.grdDetalle.TextMatrix(i, col);
    return todo;
}

std::string Pantalla::totales() const { return f.lblTotalDebe.Caption() + "|" + f.lblTotalhaber.Caption(); }

void Pantalla::comprobante(const std::string& monto, const std::string& documento) {
    elegir("cmbDocumento", documento);
    elegir("cmblibro", "CONTABLES");
    escribir("txtconcepto", "Aporte de capital");
    EXPECT_TRUE(celda(0, 1, "101001"));
    EXPECT_TRUE(celda(0, 3, monto));
    EXPECT_TRUE(f.grdDetalle.move_to(1, 1));
    EXPECT_TRUE(celda(1, 1, "301001"));
    EXPECT_TRUE(f.grdDetalle.move_to(2, 1));
}

void Pantalla::grabar_sin_fin(int aviso, int monto, bool con_adjunto) {
    abrir();
    for (;; ++monto) {
        comprobante(std::to_string(monto));
        if (con_adjunto) adjuntar("n" + std::to_string(monto) + ".txt");
        guardar();
        const std::string numero = f.txtNum_doc.Text() + "\n";
        if (mensajes().back() != "Comprobante Ingresado y Mayorizado" ||
            write(aviso, numero.data(), numero.size()) < 0)
            return;
        nuevo();
    }
}

void elegir_fila(ui::Form& forma, std::size_t columna, const std::string& valor) {
    auto* lista = dynamic_cast<ui::ctlConsulta*>(forma.find("ctlConsulta1"));
    ASSERT_NE(lista, nullptr) << forma.name();
    for (std::size_t i = 0; i < lista->rows().size(); ++i)
        if (recortar(lista->rows()[i].at(columna)) == valor) return lista->pick(static_cast<int>(i));
    ADD_FAILURE() << forma.name() << " lists no " << valor << " among " << lista->rows().size();
    lista->cancel();
}

void Pantalla::buscar(const std::string& numero, const std::string& documento) {
    escritorio.al_abrir([&](ui::Form& forma) {
        auto* lista = dynamic_cast<ui::ctlConsulta*>(forma.find("ctlConsulta1"));
        ASSERT_NE(lista, nullptr);
        for (std::size_t i = 0; i < lista->rows().size(); ++i)
            if (recortar(lista->rows()[i].at(2)) == numero && recortar(lista->rows()[i].at(1)) == documento)
                return lista->pick(static_cast<int>(i));
        ADD_FAILURE() << "no voucher " << documento << " " << numero;
        lista->cancel();
    });
    f.ctlRegistro1.press(ui::ctlRegistro::Function::Search);
}

} // namespace quorvel::pruebas
