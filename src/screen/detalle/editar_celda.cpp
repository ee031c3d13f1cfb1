// What a cell accepts when its edit starts, when it is left, and where the cursor goes then.
#include "screen/campos.h"
#include "screen/detalle/detalle.h"
#include "screen/frmQuorvel.h"
#include "screen/maestro.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"
#include "text/suma.h"
#include "voucher/chart.h"

namespace quorvel {

namespace {

constexpr const char* PATRON = "#,##0";

/// The code is as long as its group asks for.
bool largo_de_grupo(Recordset& rs, const std::string& codigo) {
    return static_cast<std::int64_t>(largo(codigo)) >= rs.fields("longitud").Value.integer();
}

void rechazar(frmQuorvel& f, bool& cancelar, const std::string& mensaje) {
    cancelar = true;
    if (!mensaje.empty()) f.critico(mensaje);
}

void cuenta_dejada(frmQuorvel& f, const std::string& anterior, bool& cancelar) {
    const std::string cuenta = f.grdDetalle.Value(CUENTA);
    Recordset& rs = f.maestros[Maestro::cuentas];
    if (!buscar_codigo(rs, "centro", cuenta) || !largo_de_grupo(rs, cuenta))
        return rechazar(f, cancelar, "Cuenta no válida");
    if (cuenta == anterior) { // typed again: auxiliary and gloss written by hand stay
        f.estado.ultima_cuenta = cuenta;
        return f.lblCuenta.SetCaption(campo(rs, "n_centro"));
    }
    cuenta_elegida(f, cuenta, campo(rs, "n_centro"));
}

void auxiliar_dejado(frmQuorvel& f, const std::string&, bool& cancelar) {
    const std::string auxiliar = f.grdDetalle.Value(AUXILIAR);
    if (auxiliar.empty()) return f.lblAuxiliar.SetCaption("");
    const std::string codigo = codigo_seis(auxiliar);
    Recordset& rs = f.maestros[Maestro::auxiliares];
    if (!buscar_codigo(rs, "auxiliar", codigo)) return rechazar(f, cancelar, "Auxiliar no válida");
    f.grdDetalle.SetValue(AUXILIAR, codigo);
    f.lblAuxiliar.SetCaption(campo(rs, "n_auxiliar"));
}

void sumar_a_total(frmQuorvel& f, int columna, Decimal cambio) {
    Totales t = f.estado.totales;
    Decimal& lado = columna == DEBE ? t.debe : t.haber;
    lado = lado + cambio;
    mostrar_totales(f, t);
}

void monto_dejado(frmQuorvel& f, int columna, bool& cancelar) {
    const std::string monto = f.grdDetalle.Value(columna);
    const auto nuevo = monto.empty() ? Decimal() : monto_de_linea(monto);
    if (!nuevo) return rechazar(f, cancelar, "Monto no válido");
    sumar_a_total(f, columna, *nuevo - f.estado.valor_editado);
    if (!monto.empty()) f.grdDetalle.SetValue(columna, nuevo->formato(PATRON));
}

void debe_dejado(frmQuorvel& f, const std::string&, bool& cancelar) { monto_dejado(f, DEBE, cancelar); }
void haber_dejado(frmQuorvel& f, const std::string&, bool& cancelar) { monto_dejado(f, HABER, cancelar); }

void glosa_dejada(frmQuorvel& f, const std::string&, bool& cancelar) {
    if (largo(f.grdDetalle.Value(GLOSA)) > LARGO_GLOSA) rechazar(f, cancelar, "Longitud máxima del campo 60");
}

void centro_dejado(frmQuorvel& f, const std::string&, bool& cancelar) {
    const std::string centro = f.grdDetalle.Value(CENTRO);
    if (centro.empty()) return f.lblCentro.SetCaption("");
    Recordset& rs = f.maestros[Maestro::centros];
    if (!buscar_codigo(rs, "centro", centro) || !largo_de_grupo(rs, centro))
        return rechazar(f, cancelar, "Centro no válida");
    f.lblCentro.SetCaption(campo(rs, "n_centro"));
}

void impuesto_dejado(frmQuorvel& f, const std::string&, bool& cancelar) {
    const std::string codigo = f.grdDetalle.Value(OTRO_IMP);
    if (codigo.empty()) return f.lblOtro_impuesto.SetCaption("");
    if (!ValidarOtroImpuesto(f, codigo)) return rechazar(f, cancelar, "Codigo de impuesto no válido");
    f.grdDetalle.SetValue(TASA, tasa_otro_impuesto(f));
}

void tasa_dejada(frmQuorvel& f, const std::string&, bool& cancelar) {
    if (!tasa_valida(f.grdDetalle.Value(TASA))) rechazar(f, cancelar, "Tasa no válida");
}

using AlDejar = void (*)(frmQuorvel&, const std::string& anterior, bool& cancelar);
constexpr AlDejar AL_DEJAR[COLUMNAS] = {nullptr,      cuenta_dejada,   auxiliar_dejado, debe_dejado,
                                        haber_dejado, glosa_dejada,    centro_dejado,   nullptr,
                                        nullptr,      impuesto_dejado, tasa_dejada};

/// A line holds a debit or a credit, never both.
void vaciar_otro_lado(frmQuorvel& f, int columna) {
    sumar_a_total(f, columna, -Decimal::leer(f.grdDetalle.Value(columna)));
    f.grdDetalle.SetValue(columna, "");
    f.grdDetalle.SetCol(GLOSA);
}

/// The amounts of a voucher are counted from its header's totals; where those contradict each other the lines
/// are what is being corrected.
void contar_desde_las_lineas(frmQuorvel& f) {
    const auto& c = f.estado.cargado;
    if (!c || c->totales.debe == c->totales.haber || f.grdDetalle.NewRowPending()) return;
    if (f.estado.totales == c->totales) f.RecalcularTotales();
}

} // namespace

std::string requiere_auxiliar(frmQuorvel& f, const std::string& cuenta) {
    Recordset& rs = f.maestros[Maestro::cuentas];
    if (!buscar_codigo(rs, "centro", cuenta)) return "0";
    return exige_auxiliar(rs.fields("req_auxiliar").Value) ? "1" : "0";
}

void cuenta_elegida(frmQuorvel& f, const std::string& cuenta, const std::string& nombre) {
    f.estado.ultima_cuenta = cuenta;
    f.lblCuenta.SetCaption(nombre);
    f.lblAuxiliar.SetCaption("");
    f.grdDetalle.SetValue(AUXILIAR, "");
    f.grdDetalle.SetValue(GLOSA, sin_controles(primeros(f.txtconcepto.Text(), LARGO_GLOSA)));
}

bool ValidarOtroImpuesto(frmQuorvel& f, const std::string& codigo) {
    Recordset& rs = f.maestros[Maestro::otros_impuestos];
    if (codigo.empty() || !buscar_codigo(rs, "otro_impuesto", codigo)) return false;
    f.lblOtro_impuesto.SetCaption(campo(rs, "descripcion"));
    return true;
}

bool tasa_valida(const std::string& texto) {
    return numero_sql(texto) && texto.find_first_of("+-") == std::string::npos;
}

std::string tasa_otro_impuesto(frmQuorvel& f) {
    return formato(f.maestros[Maestro::otros_impuestos].fields("tasa").Value.number(), "0.00");
}

void antes_de_editar(frmQuorvel& f, int columna, bool& cancelar) {
    ui::ctlPlanilla& g = f.grdDetalle;
    contar_desde_las_lineas(f);
    if (columna == CUENTA && g.Row() == g.Rows()) g.SetValue(SEC, std::to_string(g.Rows() + 1));
    if (columna < AUXILIAR || columna > GLOSA) return;
    const std::string cuenta = g.Value(CUENTA);
    if (cuenta.empty()) {
        g.SetHint("Escriba primero la cuenta de la línea");
        return rechazar(f, cancelar, "");
    }
    const std::string requiere = requiere_auxiliar(f, cuenta);
    if (columna == AUXILIAR && requiere == "0") {
        rechazar(f, cancelar, "Cuenta no requiere auxiliar");
        return g.SetCol(DEBE);
    }
    if (columna != AUXILIAR && requiere == "1" && g.Value(AUXILIAR).empty()) {
        rechazar(f, cancelar, "Cuenta requiere auxiliar");
        return g.SetCol(AUXILIAR);
    }
    if (columna == GLOSA && g.Value(DEBE).empty() && g.Value(HABER).empty()) {
        rechazar(f, cancelar, "");
        g.SetCol(DEBE);
        return g.SetHint("Escriba primero el monto de la línea");
    }
    if (columna == DEBE || columna == HABER) f.estado.valor_editado = Decimal::leer(g.Value(columna));
}

void antes_de_actualizar(frmQuorvel& f, int columna, const std::string& anterior, bool& cancelar) {
    if (const AlDejar al_dejar = AL_DEJAR[columna]) al_dejar(f, anterior, cancelar);
}

void despues_de_actualizar(frmQuorvel& f, int columna) {
    ui::ctlPlanilla& g = f.grdDetalle;
    switch (columna) {
    case CUENTA:
        g.SetCol(requiere_auxiliar(f, g.Value(CUENTA)) == "1" ? AUXILIAR : DEBE);
        CuadrarLinea(f);
        break;
    case AUXILIAR: g.SetCol(DEBE); break;
    case DEBE: vaciar_otro_lado(f, HABER); break;
    case HABER: vaciar_otro_lado(f, DEBE); break;
    default: break;
    }
}

} // namespace quorvel
