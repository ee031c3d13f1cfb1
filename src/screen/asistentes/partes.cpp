#include "screen/asistentes/partes.h"

#include "assistants/auxiliares.h"
#include "assistants/calculo.h"
#include "assistants/lineas.h"
#include "screen/consultas/consultas.h"
#include "screen/maestro.h"
#include "text/numeros.h"
#include "voucher/chart.h"

#include <algorithm>

namespace quorvel {
namespace {

constexpr const char* MONTO_NEGATIVO = "Una línea quedaría con monto negativo: revise los montos; un "
                                       "documento que rebaja es una nota de crédito";

/// The account found becomes the governing one: its name is shown, the auxiliary starts again.
bool tomar_cuenta(ui::Form& f, SesionAsistente& s, const ParteCodigo& cuenta,
                  const std::optional<ParteCodigo>& auxiliar, const std::string& codigo) {
    if (!existe_cuenta(s, codigo)) {
        f.critico("Cuenta no válida");
        return false;
    }
    cuenta.nombre.SetCaption(campo((*s.maestros)[Maestro::cuentas], "n_centro"));
    if (auxiliar) {
        auxiliar->codigo.SetText("");
        auxiliar->nombre.SetCaption("");
        habilitar(*auxiliar, exige_auxiliar((*s.maestros)[Maestro::cuentas].fields("req_auxiliar").Value));
    }
    return true;
}

bool tomar_auxiliar(ui::Form& f, SesionAsistente& s, const ParteCodigo& auxiliar, const std::string& codigo) {
    if (!buscar_codigo((*s.maestros)[Maestro::auxiliares], "auxiliar", codigo)) {
        f.critico("Auxiliar no válido");
        return false;
    }
    auxiliar.nombre.SetCaption(campo((*s.maestros)[Maestro::auxiliares], "n_auxiliar"));
    return true;
}

/// The button and Ctrl+Y in its box open the same lookup; the box is not left, so a half-typed code is no
/// error.
template <class F> void conectar_busqueda(ui::Form& f, const ParteCodigo& p, F abrir) {
    p.buscar.Click += [&f, abrir] { f.atender(abrir); };
    p.codigo.KeyDown += [&f, abrir](ui::KeyEvent& e) {
        if (!e.ctrl || (e.ch != U'y' && e.ch != U'Y')) return;
        e.handled = true;
        f.atender(abrir);
    };
    p.buscar.SetServes(p.codigo);
    p.buscar.SetToolTip("Ctrl - Y");
}

/// The code on entry comes back and the focus stays: the press that left the box does nothing else.
void devolver(ui::ctlEntrada& caja, bool& rechaza) {
    caja.SetText(caja.text_on_entry());
    caja.SelectAll();
    rechaza = true;
}

} // namespace

bool existe_cuenta(const SesionAsistente& s, const std::string& cuenta) {
    return buscar_codigo((*s.maestros)[Maestro::cuentas], "centro", cuenta);
}

bool cuenta_requiere_auxiliar(const SesionAsistente& s, const std::string& cuenta) {
    return existe_cuenta(s, cuenta) &&
           exige_auxiliar((*s.maestros)[Maestro::cuentas].fields("req_auxiliar").Value);
}

void habilitar(const ParteCodigo& auxiliar, bool si) {
    auxiliar.codigo.SetEnabled(si);
    auxiliar.buscar.SetEnabled(si);
}

void conectar_cuenta(ui::Form& f, SesionAsistente& s, const ParteCodigo& cuenta,
                     const std::optional<ParteCodigo>& auxiliar) {
    cuenta.codigo.LeftChanged += [&f, &s, cuenta, auxiliar](bool& rechaza) {
        if (!tomar_cuenta(f, s, cuenta, auxiliar, cuenta.codigo.Text())) devolver(cuenta.codigo, rechaza);
    };
    conectar_busqueda(f, cuenta, [&f, &s, cuenta, auxiliar] {
        const auto elegida = elegir_cuenta_contable(f.escritorio(), *s.gdb);
        if (elegida && tomar_cuenta(f, s, cuenta, auxiliar, elegida->codigo))
            cuenta.codigo.SetText(elegida->codigo);
    });
}

void conectar_auxiliar(ui::Form& f, SesionAsistente& s, const ParteCodigo& auxiliar,
                       const ui::ctlEntrada& cuenta) {
    auxiliar.codigo.LeftChanged += [&f, &s, auxiliar](bool& rechaza) {
        if (auxiliar.codigo.Text().empty()) return auxiliar.nombre.SetCaption("");
        auxiliar.codigo.SetText(codigo_seis(auxiliar.codigo.Text()));
        if (!tomar_auxiliar(f, s, auxiliar, auxiliar.codigo.Text())) devolver(auxiliar.codigo, rechaza);
    };
    conectar_busqueda(f, auxiliar, [&f, &s, auxiliar, &cuenta] {
        if (!comprobar(f, !cuenta.Text().empty(), "Ingrese cuenta")) return;
        if (!comprobar(f, existe_cuenta(s, cuenta.Text()), "Cuenta no válida")) return;
        const auto elegido = elegir_auxiliar(f.escritorio(), *s.gdb);
        if (elegido && tomar_auxiliar(f, s, auxiliar, elegido->codigo))
            auxiliar.codigo.SetText(elegido->codigo);
    });
}

void conectar_contraparte(ui::Form& f, SesionAsistente& s, const ParteContraparte& p) {
    p.generar.Click += [&f, &s, p] {
        try {
            generar_auxiliar(*s.gdb, s.gstrrut, s.gstrnombre);
            s.maestros->reabrir(Maestro::auxiliares);
            CargarAuxiliaresRut(s, p);
            p.auxiliares.SetFocus();
        } catch (const std::invalid_argument& e) {
            f.critico(e.what());
        } catch (const std::exception& e) {
            f.critico(std::string("Problemas al generar auxiliar ") + e.what());
        }
    };
}

void CargarAuxiliaresRut(SesionAsistente& s, const ParteContraparte& p) {
    p.rut.SetCaption(s.gstrrut);
    p.nombre.SetCaption(s.gstrnombre);
    p.auxiliares.Clear();
    for (std::string& entrada : auxiliares_de_rut(*s.gdb, s.gstrrut))
        p.auxiliares.AddItem(std::move(entrada));
    if (p.auxiliares.ListCount() > 0) p.auxiliares.SetListIndex(0);
    p.generar.SetEnterStop(p.auxiliares.ListCount() == 0); // the next key of a new counterpart
}

void rechazar_texto(ui::Form& f, ui::ctlEntrada& caja, const char* mensaje, bool& rechaza) {
    f.critico(mensaje);
    caja.SelectAll();
    rechaza = true;
}

void conectar_monto(ui::Form& f, ui::ctlEntrada& monto, std::function<void()> al_dejar) {
    monto.SetRightAligned(true);
    monto.LeftChanged += [&f, &monto, al_dejar = std::move(al_dejar)](bool& rechaza) {
        if (!monto_escrito(monto.Text())) return rechazar_texto(f, monto, "Monto no válido", rechaza);
        if (!monto.Text().empty()) monto.SetText(mostrar_monto(monto.Value()));
        al_dejar();
    };
}

void conectar_salidas(ui::Form& f, ui::CommandButton& aceptar, ui::CommandButton& cancelar,
                      std::function<void()> al_aceptar) {
    aceptar.SetToolTip("F5");
    aceptar.Click += std::move(al_aceptar);
    cancelar.SetToolTip("Esc");
    cancelar.SetPress(ui::Press::asks_nothing);
    cancelar.Click += [&f] { f.Hide(); };
}

void tecla_dialogo(ui::Form& f, ui::KeyEvent& e, ui::CommandButton& aceptar) {
    if (e.ctrl || e.alt || e.shift || (e.key != ui::Key::escape && e.key != ui::Key::f5)) return;
    e.handled = true;
    if (e.key == ui::Key::f5)
        aceptar.press();
    else
        f.Hide();
}

bool exigir_auxiliares(ui::Form& f, SesionAsistente& s, const ParteCodigo& auxiliar,
                       const std::string& cuenta, ui::ComboBox& contraparte) {
    const auto vigente = [&](const std::string& codigo, ui::Control& foco) {
        return comprobar(f, buscar_codigo((*s.maestros)[Maestro::auxiliares], "auxiliar", codigo),
                         "Auxiliar no válido", &foco);
    };
    if (cuenta_requiere_auxiliar(s, cuenta)) {
        const std::string codigo = auxiliar.codigo.Text();
        if (codigo.empty()) habilitar(auxiliar, true);
        if (!comprobar(f, !codigo.empty(), "Ingrese auxiliar", &auxiliar.codigo)) return false;
        if (!vigente(codigo, auxiliar.codigo)) return false;
    }
    return vigente(codigo_de_entrada(contraparte.Text()), contraparte);
}

bool comprobar(ui::Form& f, bool ok, const char* mensaje, ui::Control* foco) {
    if (ok) return true;
    f.critico(mensaje);
    if (foco != nullptr) foco->SetFocus();
    return false;
}

bool exigir_todas(ui::Form& f, std::span<const Exigencia> exigencias) {
    return std::ranges::all_of(
        exigencias, [&](const Exigencia& e) { return comprobar(f, e.cumplida, e.mensaje, e.foco); });
}

void aceptar_lineas(ui::Form& f, SesionAsistente& s, std::vector<Linea> lineas, ui::ctlEntrada& total) {
    if (!comprobar(f, !con_monto_negativo(lineas), MONTO_NEGATIVO, &total)) return;
    s.lineas = std::move(lineas);
    const Decimal monto = Decimal::leer(total.Text());
    s.totales = {monto, monto};
    s.gblnaceptar = true;
    f.Hide();
}

} // namespace quorvel
