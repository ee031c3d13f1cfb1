#include "screen/registro/frmContrapartes.h"

#include "assistants/libros.h"
#include "screen/campos.h"
#include "screen/consultas/consultas.h"
#include "screen/frmQuorvel.h"
#include "screen/maestro.h"
#include "screen/papeles/ocupado.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"
#include "voucher/chart.h"

#include <algorithm>
#include <array>

namespace quorvel {

namespace {

enum Columna { LIBRO, RUT, NOMBRE, DOCUMENTOS, CUENTA, AUXILIAR, CENTRO, GLOSA, CONTRAPARTE, COLUMNAS };
constexpr int CTRL_Y = 25;

struct Diseno {
    const char* titulo;
    int ancho, alineacion;
    bool boton;
};
constexpr std::array<Diseno, COLUMNAS> DISENO{{{"Libro", 76, 0, false},
                                               {"RUT", 96, 0, false},
                                               {"Nombre", 220, 0, false},
                                               {"Doc.", 44, 1, false},
                                               {"Cuenta", 86, 0, true},
                                               {"Auxiliar", 86, 0, true},
                                               {"C. costo", 86, 0, true},
                                               {"Glosa", 190, 0, false},
                                               {"Aux. contraparte", 110, 0, false}}};

bool con_consulta(int col) { return col >= CUENTA && col <= CENTRO; }

} // namespace

frmContrapartes::frmContrapartes(frmQuorvel& pantalla, registro::Bandeja& bandeja,
                                 std::vector<registro::Desconocida> lista)
    : Form(pantalla.escritorio(), "frmContrapartes", "Contrapartes sin cuenta o auxiliar"),
      pantalla_(pantalla), bandeja_(bandeja), lista_(std::move(lista)) {
    cmdRepetir.SetShortcut("f6");
    cmdRepetir.SetToolTip("Pone la cuenta, el auxiliar y el centro de costo de esta línea en las de abajo "
                          "que no tienen cuenta (F6)");
    cmdGenera.SetShortcut("f7");
    cmdGenera.SetToolTip("Crea un auxiliar a cada contraparte que no lo tiene (F7)");
    cmdaceptar.SetShortcut("f8");
    cmdRepetir.Click += [this] { atender([this] { cmdRepetir_Click(); }); };
    cmdGenera.Click += [this] { atender([this] { cmdGenera_Click(); }); };
    cmdaceptar.Click += [this] { atender([this] { cmdaceptar_Click(); }); };
    cmdcancelar.Click += [this] { Hide(); };
    grdContrapartes.BeforeColEdit += [this](int col, bool& no) {
        no = no || col < CUENTA || col == CONTRAPARTE || grdContrapartes.Row() >= grdContrapartes.Rows();
    };
    grdContrapartes.BeforeColUpdate += [this](int col, const std::string&, bool& no) {
        atender([&] { grdContrapartes_BeforeColUpdate(col, no); });
    };
    grdContrapartes.AfterColUpdate += [this](int) { mostrar_nombre(); };
    grdContrapartes.BeforeDelete += [](bool& no) { no = true; };
    grdContrapartes.RowColChange += [this](int, int) {
        if (grdContrapartes.Row() >= grdContrapartes.Rows()) // nothing is added here
            return grdContrapartes.SetRow(std::max(grdContrapartes.Rows() - 1, 0));
        atender([this] { mostrar_nombre(); });
    };
    grdContrapartes.ButtonClick += [this](int col) { atender([&] { grdContrapartes_ButtonClick(col); }); };
    grdContrapartes.KeyPress += [this](int& tecla) {
        if (tecla != CTRL_Y || !con_consulta(grdContrapartes.Col())) return;
        tecla = 0;
        atender([this] { grdContrapartes_ButtonClick(grdContrapartes.Col()); });
    };
    preparar_columnas();
}

void frmContrapartes::preparar_columnas() {
    grdContrapartes.SetCols(COLUMNAS);
    for (int i = 0; i < COLUMNAS; ++i) {
        const Diseno& d = DISENO.at(static_cast<std::size_t>(i));
        ui::ctlPlanilla::Column& c = grdContrapartes.Columns(i);
        c.Caption = d.titulo;
        c.Width = d.ancho;
        c.Alignment = d.alineacion;
        c.Button = d.boton;
    }
    grdContrapartes.SetEnterColumns(CUENTA, CUENTA);
}

void frmContrapartes::Form_Load() {
    pantalla_.maestros.reabrir(*pantalla_.glbdb, false);
    mostrar();
    (void)grdContrapartes.SetFocus();
    grdContrapartes.move_to(0, CUENTA);
}

void frmContrapartes::mostrar() {
    const int fila = grdContrapartes.Row(), columna = grdContrapartes.Col();
    std::vector<std::string> textos;
    for (const registro::Desconocida& d : lista_)
        textos.push_back(
            fila_texto({std::string(TEXTOS_LIBRO.at(static_cast<std::size_t>(d.libro))), d.rut, d.nombre,
                        std::to_string(d.documentos), d.propuesta.cuenta, d.propuesta.auxiliar,
                        d.propuesta.centro_costo, d.propuesta.glosa, d.propuesta.aux_contraparte}));
    grdContrapartes.Clear();
    grdContrapartes.AddItems(textos);
    grdContrapartes.SetRow(fila);
    grdContrapartes.SetCol(columna);
}

void frmContrapartes::leer() {
    for (std::size_t i = 0; i < lista_.size(); ++i) {
        const auto celda = [&](int col) {
            return recortar(grdContrapartes.TextMatrix(static_cast<int>(i), col));
        };
        registro::Propuesta& p = lista_[i].propuesta;
        p.cuenta = celda(CUENTA);
        p.auxiliar = celda(AUXILIAR);
        p.centro_costo = celda(CENTRO);
        p.glosa = celda(GLOSA);
    }
}

bool frmContrapartes::requiere_auxiliar(const std::string& cuenta) {
    return buscar_codigo(pantalla_.maestros[Maestro::cuentas], "centro", cuenta) &&
           exige_auxiliar(pantalla_.maestros[Maestro::cuentas].fields("req_auxiliar").Value);
}

void frmContrapartes::mostrar_nombre() {
    const std::string cuenta = grdContrapartes.TextMatrix(grdContrapartes.Row(), CUENTA);
    std::string t;
    if (!cuenta.empty() && buscar_codigo(pantalla_.maestros[Maestro::cuentas], "centro", cuenta))
        t = cuenta + " " + campo(pantalla_.maestros[Maestro::cuentas], "n_centro") +
            (requiere_auxiliar(cuenta) ? ", pide auxiliar" : "");
    lblNombre.SetCaption(t);
}

void frmContrapartes::grdContrapartes_BeforeColUpdate(int col, bool& cancel) {
    const std::string valor = recortar(grdContrapartes.Value(col));
    if (valor.empty() || col == GLOSA) return;
    Maestros& m = pantalla_.maestros;
    const auto rechazar = [&](const char* mensaje) {
        cancel = true;
        critico(mensaje);
    };
    if (col == CUENTA && !buscar_codigo(m[Maestro::cuentas], "centro", valor))
        return rechazar("Cuenta no válida");
    if (col == CENTRO && !buscar_codigo(m[Maestro::centros], "centro", valor))
        return rechazar("Centro de costo no válida");
    if (col != AUXILIAR) return;
    grdContrapartes.set_edit_text(codigo_seis(valor));
    if (!buscar_codigo(m[Maestro::auxiliares], "auxiliar", codigo_seis(valor)))
        rechazar("Auxiliar no válido");
}

void frmContrapartes::grdContrapartes_ButtonClick(int col) {
    if (!con_consulta(col) || grdContrapartes.Row() >= grdContrapartes.Rows()) return;
    grdContrapartes.cancel_edit();
    clsConexion& db = *pantalla_.glbdb;
    const auto elegido = col == CUENTA     ? elegir_cuenta_contable(escritorio(), db)
                         : col == AUXILIAR ? elegir_auxiliar(escritorio(), db)
                                           : elegir_centro_costo(escritorio(), db);
    if (!elegido) return;
    grdContrapartes.SetTextMatrix(grdContrapartes.Row(), col, elegido->codigo);
    mostrar_nombre();
    (void)grdContrapartes.SetFocus();
}

void frmContrapartes::cmdRepetir_Click() {
    if (!grdContrapartes.commit_edit()) return;
    leer();
    const auto fila = static_cast<std::size_t>(grdContrapartes.Row());
    if (fila >= lista_.size()) return;
    const registro::Propuesta modelo = lista_[fila].propuesta;
    for (std::size_t i = fila + 1; i < lista_.size(); ++i) {
        registro::Propuesta& p = lista_[i].propuesta;
        if (!p.cuenta.empty() || lista_[i].libro != lista_[fila].libro) continue;
        p.cuenta = modelo.cuenta;
        p.auxiliar = modelo.auxiliar;
        p.centro_costo = modelo.centro_costo;
    }
    mostrar();
}

void frmContrapartes::cmdGenera_Click() {
    if (!grdContrapartes.commit_edit()) return;
    leer();
    std::size_t hechos = 0;
    {
        const Ocupado ocupado(escritorio());
        hechos = bandeja_.generar_auxiliares(lista_);
    }
    pantalla_.maestros.reabrir(*pantalla_.glbdb, false);
    mostrar();
    informacion(hechos == 0 ? "Todas tienen auxiliar" : "Auxiliares generados: " + std::to_string(hechos));
}

void frmContrapartes::cmdaceptar_Click() {
    if (!grdContrapartes.commit_edit()) return;
    leer();
    for (std::size_t i = 0; i < lista_.size(); ++i) {
        const registro::Propuesta& p = lista_[i].propuesta;
        const auto faltar = [&](const std::string& que, int col) {
            critico(que);
            grdContrapartes.SetRow(static_cast<int>(i));
            grdContrapartes.SetCol(col);
            (void)grdContrapartes.SetFocus();
        };
        if (p.cuenta.empty()) return faltar("Ingrese cuenta", CUENTA);
        if (requiere_auxiliar(p.cuenta) && p.auxiliar.empty()) return faltar("Ingrese auxiliar", AUXILIAR);
    }
    for (const registro::Desconocida& d : lista_) bandeja_.completar(d);
    gblnaceptar = bandeja_.desconocidas().empty();
    if (!gblnaceptar)
        return critico("Ingrese auxiliar, sino existe auxiliar presione el botón Generar auxiliar");
    Hide();
}

void frmContrapartes::Form_KeyDown(ui::KeyEvent& e) {
    if (e.key != ui::Key::escape) return;
    e.handled = true;
    Hide();
}

} // namespace quorvel
