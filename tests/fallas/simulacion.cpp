#include "fallas/simulacion.h"

#include "dbtools/esquema.h"
#include "platform/ui/ctlConsulta.h"
#include "text/letras_utf8.h"
#include "text/numeros.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <utility>

namespace quorvel::fallas {

using pruebas::Pantalla;

namespace {

constexpr const char* GRABADO = "Comprobante Ingresado y Mayorizado";
constexpr const char* SOLO_LECTURA =
    "Comprobante contable solo lectura porque esta siendo modificado por otro usuario";
constexpr const char* DIAS[] = {"14/06/", "15/06/", "30/06/"};
constexpr const char* DOCUMENTOS[] = {"001 TRASPASO", "002 COMPRA"};

std::int64_t suma(const std::vector<LineaPlana>& lineas, std::int64_t LineaPlana::*lado) {
    std::int64_t total = 0;
    for (const LineaPlana& l : lineas) total += l.*lado;
    return total;
}

std::string monto(std::int64_t n) { return n == 0 ? "" : Decimal(n).formato("#,##0"); }

} // namespace

ClavePlana Simulacion::Ventana::clave_escrita() const {
    return {fecha_iso(*p->f.mskF_comp.date()), p->f.cmbDocumento.Text().substr(0, 3), p->f.txtNum_doc.Text()};
}

Simulacion::Simulacion(apoyo::Motor motor, unsigned semilla) : azar_(semilla) {
    escena_ = {apoyo::conexion_nueva(motor), apoyo::carpeta_nueva()};
    crear_esquema(escena_.conexion);
    db_ = abrir_sesion(escena_.conexion);
    sembrar_empresa(*db_);
    apoyo::ejecutar(*db_, "insert into ctmsdcenth(empresa,anio,centro,debe6) values (1,2024,'101001',0)");
    for (const int usuario : {1, 1, 2}) { // two windows of one user, one of another
        const std::string carpeta = apoyo::carpeta_nueva();
        std::ofstream(carpeta + "/nivo.ini") << "[nivo]\nbase=" << escena_.carpeta << "/\n";
        Ventana v;
        v.usuario = usuario;
        v.carpeta = carpeta;
        (void)reabrir(v);
        ventanas_.push_back(std::move(v));
    }
}

const std::vector<Simulacion::Accion> Simulacion::ACCIONES = {
    {"nuevo", 8, &Simulacion::nuevo},
    {"llenar", 16, &Simulacion::llenar},
    {"editar", 10, &Simulacion::editar},
    {"cambiar_fecha", 6, &Simulacion::cambiar_fecha},
    {"guardar", 26, &Simulacion::guardar},
    {"buscar", 16, &Simulacion::buscar},
    {"anular", 3, &Simulacion::anular},
    {"eliminar", 4, &Simulacion::eliminar},
    {"cortar", 5, &Simulacion::cortar},
    {"copiar", 4, &Simulacion::copiar},
    {"adjuntar", 6, &Simulacion::adjuntar},
    {"quitar_adjunto", 2, &Simulacion::quitar_adjunto},
    {"cheque", 3, &Simulacion::cheque},
    {"generar_cierre", 3, &Simulacion::generar_cierre},
    {"cerrar_anio", 4, &Simulacion::cerrar_anio},
    {"apertura", 8, &Simulacion::apertura},
    {"reabrir", 5, &Simulacion::reabrir},
};

std::string Simulacion::paso() {
    ++paso_;
    const std::size_t cual = azar_() % ventanas_.size();
    Ventana& v = ventanas_[cual];
    int pesos = 0;
    for (const Accion& a : ACCIONES) pesos += a.peso;
    int dado = al_azar(pesos);
    const Accion* accion = ACCIONES.data();
    while (dado >= accion->peso) dado -= (accion++)->peso;
    ultima_ =
        "window " + std::to_string(cual) + " of user " + std::to_string(v.usuario) + ": " + accion->nombre;
    (void)v.p->mensajes();
    const std::string esperado = (this->*accion->hacer)(v);
    v.p->escritorio.olvidar();
    const std::string dicho = ultimo_aviso(*v.p);
    if (!dicho.starts_with(esperado) || (esperado.empty() && !dicho.empty()))
        return "said: " + dicho + "\nexpected: " + esperado;
    const std::string base = Modelo::leer(*db_), modelo = modelo_.texto();
    if (base != modelo) return "database:\n" + base + "\nmodel:\n" + modelo;
    for (const Ventana& w : ventanas_) {
        std::string creido = w.c.norma + (w.c.apertura ? "1" : "0") + w.c.concepto;
        for (const LineaPlana& l : w.c.lineas)
            creido += ";" + l.cuenta + "|" + l.auxiliar + "|" + std::to_string(l.debe) + "|" +
                      std::to_string(l.haber);
        for (const std::string& nombre : w.c.adjuntos) creido += ";" + nombre;
        if (mostrado(w) != creido) return "window shows: " + mostrado(w) + "\nexpected: " + creido;
    }
    return "";
}

std::string Simulacion::revisar() const {
    constexpr std::size_t LISTADOS = 50; // the checker counts what is beyond
    const std::set<std::string> esperados = modelo_.aperturas_distintas();
    std::istringstream dichos(revision(escena_));
    std::size_t n = 0;
    for (std::string dicho; std::getline(dichos, dicho);) {
        const bool cuenta = esperados.size() > LISTADOS && dicho.ends_with(" más");
        if (!cuenta && esperados.count(dicho) == 0) return "checker: " + dicho;
        n += cuenta ? 0 : 1;
    }
    const std::size_t debe = std::min(esperados.size(), LISTADOS);
    return n == debe ? "" : "checker: " + std::to_string(n) + " findings instead of " + std::to_string(debe);
}

std::string Simulacion::mostrado(const Ventana& v) {
    const frmQuorvel& f = v.p->f;
    std::string t =
        f.cmbifrs.Text().substr(0, 1) + std::to_string(f.chkApertura.Value()) + f.txtconcepto.Text();
    for (int i = 0; i < f.grdDetalle.Rows(); ++i)
        t += ";" + f.grdDetalle.TextMatrix(i, 1) + "|" + f.grdDetalle.TextMatrix(i, 2) + "|" +
             formato(valnumeroformato(f.grdDetalle.TextMatrix(i, 3)), "0") + "|" +
             formato(valnumeroformato(f.grdDetalle.TextMatrix(i, 4)), "0");
    for (int i = 0; i < f.lstadjunto.ListCount(); ++i) t += ";" + f.lstadjunto.List(i);
    return t;
}

void Simulacion::limpiar(Ventana& v) {
    renovar(v);
    v.c = {v.c.concepto, "0", false, {}, {}};
    v.cortado_cheque.clear();
}

void Simulacion::renovar(Ventana& v) {
    modelo_.desbloquear(v.usuario);
    v.nuevo = true;
    v.solo_lectura = v.cierre = v.es_cierre = false;
    v.estado.clear();
}

void Simulacion::poner_lineas(Ventana& v, bool cuadrado) {
    static const LineaPlana CUENTAS[] = {{"101001", ""},      {"101002", ""}, {"301001", ""},
                                         {"401001", ""},      {"501001", ""}, {"103001", "000012"},
                                         {"201001", "000013"}};
    std::int64_t saldo = 0;
    v.c.lineas.clear();
    const int cuantas = 2 + al_azar(3);
    for (int i = 0; i < cuantas; ++i) {
        LineaPlana l = CUENTAS[azar_() % std::size(CUENTAS)];
        std::int64_t importe = 1 + al_azar(2000000);
        if (i == cuantas - 1) importe = std::abs(saldo) + (cuadrado ? 0 : 1);
        const bool debe = i == cuantas - 1 ? saldo < 0 : i == 0 || al_azar(2) == 0;
        if (importe == 0) importe = 5; // an even sum already: the voucher does not balance
        (debe ? l.debe : l.haber) = importe;
        saldo += l.debe - l.haber;
        v.c.lineas.push_back(l);
    }
    ui::ctlPlanilla& g = v.p->f.grdDetalle;
    g.Clear();
    for (const LineaPlana& l : v.c.lineas)
        g.AddItem("1\t" + l.cuenta + "\t" + l.auxiliar + "\t" + monto(l.debe) + "\t" + monto(l.haber) +
                  "\tglosa");
    v.p->f.RecalcularTotales();
}

void Simulacion::leer_lineas(Ventana& v) {
    v.c.lineas.clear();
    const ui::ctlPlanilla& g = v.p->f.grdDetalle;
    for (int i = 0; i < g.Rows(); ++i)
        v.c.lineas.push_back({g.TextMatrix(i, 1), g.TextMatrix(i, 2),
                              static_cast<std::int64_t>(valnumeroformato(g.TextMatrix(i, 3))),
                              static_cast<std::int64_t>(valnumeroformato(g.TextMatrix(i, 4)))});
}

std::string Simulacion::estorbo(const Ventana& v, const char* si_falta) const {
    const auto c = modelo_.comprobantes.find(v.clave);
    if (c == modelo_.comprobantes.end() || c->second.estado == "X") return si_falta;
    return c->second.bloqueo != 0 && c->second.bloqueo != v.usuario ? SOLO_LECTURA : "";
}

std::string Simulacion::fecha_al_azar() {
    const int anio = modelo_.periodo.anio - (al_azar(10) == 0 ? 1 : 0);
    return DIAS[azar_() % std::size(DIAS)] + std::to_string(anio);
}

std::string Simulacion::nuevo(Ventana& v) {
    v.p->nuevo();
    limpiar(v);
    return "";
}

std::string Simulacion::llenar(Ventana& v) {
    if (!v.nuevo || v.cierre) return nuevo(v);
    frmQuorvel& f = v.p->f;
    const std::string fecha = fecha_al_azar(), documento = DOCUMENTOS[azar_() % std::size(DOCUMENTOS)];
    f.mskF_comp.SetText(fecha);
    v.p->elegir("cmbDocumento", documento);
    const std::string propuesto = std::to_string(modelo_.propuesto(documento.substr(0, 3), fecha.substr(6)));
    if (f.txtNum_doc.Text() != propuesto) return "number " + propuesto + " instead of " + f.txtNum_doc.Text();
    if (al_azar(5) == 0) f.txtNum_doc.SetText(std::to_string(1 + al_azar(30)));
    v.c.concepto = "Glosa de O'Higgins " + std::to_string(paso_);
    f.txtconcepto.SetText(v.c.concepto);
    f.cmbifrs.SetListIndex(al_azar(3));
    v.c.norma = f.cmbifrs.Text().substr(0, 1);
    poner_lineas(v, al_azar(8) != 0);
    return "";
}

std::string Simulacion::editar(Ventana& v) {
    if (v.nuevo || v.solo_lectura || v.estado != "P") return "";
    v.c.concepto = "Corregido " + std::to_string(paso_);
    v.p->f.txtconcepto.SetText(v.c.concepto);
    if (al_azar(2) == 0) poner_lineas(v, true);
    return "";
}

std::string Simulacion::cambiar_fecha(Ventana& v) {
    if (v.nuevo) v.p->f.mskF_comp.SetText(fecha_al_azar());
    return "";
}

std::string Simulacion::guardar(Ventana& v) {
    const ClavePlana clave = v.nuevo ? v.clave_escrita() : v.clave;
    const std::int64_t debe = suma(v.c.lineas, &LineaPlana::debe);
    const std::string kind = v.p->f.cmbDocumento.Text();
    const std::string creido_fuera = modelo_.fuera(v.creido, clave),
                      fuera = modelo_.fuera(modelo_.periodo, clave);
    std::string esperado = GRABADO;
    if (!v.nuevo && (v.solo_lectura || v.estado != "P"))
        esperado.clear();
    else if (v.nuevo && kind == "(Ninguno)")
        esperado = "Ingrese tipo de documento";
    else if (!creido_fuera.empty())
        esperado = creido_fuera;
    else if (v.c.lineas.empty())
        esperado = "Ingrese detalle del comprobante";
    else if (debe != suma(v.c.lineas, &LineaPlana::haber))
        esperado = "Comprobante descuadrado";
    else if (v.nuevo && modelo_.comprobantes.count(clave) != 0)
        esperado = "Ya existe un comprobante contable";
    else if (!fuera.empty()) // an older window learns of it when it saves
        esperado = fuera;
    else if (!v.nuevo && !estorbo(v, "Problemas para actualizar cabecera").empty())
        esperado = estorbo(v, "Problemas para actualizar cabecera");
    const std::int64_t propuesto = v.p->f.estado.numero_propuesto;
    v.p->guardar();
    if (esperado != GRABADO) return esperado;
    ComprobantePlano& c = modelo_.comprobantes[clave];
    static_cast<ContenidoPlano&>(c) = v.c;
    c.total = debe;
    c.usuario = v.usuario;
    if (v.nuevo) {
        c.cheque = v.cortado_cheque;
        if (val_entero(std::get<2>(clave)) >= propuesto)
            modelo_.ultimo_emitido[std::get<1>(clave)] = std::get<2>(clave);
    }
    v.cargado_cheque = std::exchange(v.cortado_cheque, "");
    if (v.cierre) v.creido.cierre = modelo_.periodo.cierre = clave;
    v.es_cierre = v.es_cierre || v.cierre;
    v.nuevo = v.cierre = false;
    v.estado = "P";
    v.clave = clave;
    modelo_.desbloquear(v.usuario);
    modelo_.bloquear(clave, v.usuario);
    return esperado;
}

std::string Simulacion::buscar(Ventana& v) {
    if (modelo_.comprobantes.empty()) return "";
    auto elegido = modelo_.comprobantes.begin();
    std::advance(elegido, al_azar(static_cast<int>(modelo_.comprobantes.size())));
    const auto& [fecha, documento, numero] = elegido->first;
    v.p->escritorio.al_abrir([&](ui::Form& forma) {
        auto& lista = dynamic_cast<ui::ctlConsulta&>(*forma.find("ctlConsulta1"));
        for (std::size_t i = 0; i < lista.rows().size(); ++i) {
            const auto& fila = lista.rows()[i];
            if ((fila[0] == fecha || fila[0] == fecha_dmy(*leer_fecha_iso(fecha))) &&
                recortar(fila[1]) == documento && recortar(fila[2]) == numero)
                return lista.pick(static_cast<int>(i));
        }
        lista.cancel();
    });
    v.p->f.ctlRegistro1.press(ui::ctlRegistro::Function::Search);
    ComprobantePlano& c = elegido->second;
    modelo_.desbloquear(v.usuario);
    v.nuevo = v.cierre = false;
    v.cortado_cheque.clear();
    v.cargado_cheque = c.cheque;
    v.clave = elegido->first;
    v.es_cierre = modelo_.periodo.cierre == v.clave;
    v.estado = c.estado;
    v.c = c;
    if (c.estado == "X") v.c.adjuntos.clear(); // an annulled voucher's are kept, not shown
    v.solo_lectura = c.bloqueo != 0 && c.bloqueo != v.usuario;
    if (v.solo_lectura) return SOLO_LECTURA;
    c.bloqueo = v.usuario;
    return "";
}

std::string Simulacion::anular(Ventana& v) {
    v.p->escritorio.responder(ui::Answer::yes);
    const bool activo = v.p->f.mnuAnular.Enabled();
    v.p->pulsar("mnuAnular");
    if (!activo) return "";
    if (v.es_cierre) return "Comprobante de Cierre anual no puede ser anulado";
    if (v.nuevo || v.estado != "P") return "Comprobante no válido";
    if (const std::string e = estorbo(v, "Comprobante no válido"); !e.empty()) return e;
    ComprobantePlano& c = modelo_.comprobantes[v.clave];
    for (const LineaPlana& l : c.lineas)
        if (l.cuenta == "101001" && std::get<0>(v.clave).starts_with("2024-06"))
            modelo_.saldo_caja -= l.debe - l.haber;
    c.estado = v.estado = "X";
    c.concepto = v.c.concepto;
    c.usuario = v.usuario;
    c.lineas.clear();
    v.c.lineas.clear();
    return "Comprobante Anulado";
}

std::string Simulacion::eliminar(Ventana& v) {
    v.p->escritorio.responder(ui::Answer::yes);
    const bool activo = v.p->f.mnuEliminar.Enabled();
    v.p->pulsar("mnuEliminar");
    if (!activo) return "";
    if (v.nuevo || v.estado != "P") return "Comprobante no válido";
    if (estorbo(v, "") == SOLO_LECTURA) return SOLO_LECTURA;
    modelo_.comprobantes.erase(v.clave);
    limpiar(v);
    return "";
}

std::string Simulacion::cortar(Ventana& v) {
    v.p->escritorio.responder(ui::Answer::yes);
    const bool activo = v.p->f.cmdcortar.Enabled();
    v.p->pulsar("cmdcortar");
    if (!activo) return "";
    if (v.nuevo || v.estado != "P") return "Comprobante no válido";
    if (estorbo(v, "") == SOLO_LECTURA) return SOLO_LECTURA;
    const auto c = modelo_.comprobantes.find(v.clave);
    v.cortado_cheque = c != modelo_.comprobantes.end() ? c->second.cheque : v.cargado_cheque;
    modelo_.comprobantes.erase(v.clave);
    renovar(v);
    return "";
}

std::string Simulacion::copiar(Ventana& v) {
    v.p->pulsar("cmdCopiar");
    renovar(v);
    return "";
}

std::string Simulacion::adjuntar(Ventana& v) {
    if (!v.p->f.cmdadjunto_agregar.Enabled()) return "";
    const std::string nombre = "ñandú " + std::to_string(paso_) + ".txt",
                      archivo = v.p->carpeta + "/" + nombre;
    std::ofstream(archivo) << paso_;
    v.p->escritorio.elegir_archivo(archivo);
    v.p->pulsar("cmdadjunto_agregar");
    v.c.adjuntos.push_back(nombre);
    return "";
}

std::string Simulacion::quitar_adjunto(Ventana& v) {
    // of a saved voucher the file would be gone before the list is saved
    if (!v.nuevo || v.c.adjuntos.empty()) return "";
    v.p->f.lstadjunto.SetListIndex(0);
    v.p->escritorio.responder(ui::Answer::yes);
    v.p->pulsar("cmdadjunto_eliminar");
    v.c.adjuntos.erase(v.c.adjuntos.begin());
    return "";
}

std::string Simulacion::cheque(Ventana& v) {
    const std::string numero = std::to_string(1000 + paso_);
    llenar_dialogo(*v.p, "mnucheque",
                   {{"txtcheque", numero}, {"txtfecha", "14/06/2024"}, {"txtbeneficiario", "PEDRO"}});
    if (v.nuevo) return "Debe grabar el comprobante antes de imprimir la factura";
    const auto c = modelo_.comprobantes.find(v.clave);
    if (c != modelo_.comprobantes.end()) c->second.cheque = numero;
    return "Cheque Grabado";
}

std::string Simulacion::generar_cierre(Ventana& v) {
    const PeriodoPlano& p = modelo_.periodo;
    if (v.es_cierre && p.cierre) return ""; // would add the same lines again
    v.p->escritorio.responder(ui::Answer::yes);
    v.p->pulsar("mnuGenerarCierre");
    v.creido = p;
    if (p.cierre && modelo_.comprobantes.count(*p.cierre) != 0)
        return "Comprobante de Cierre ya fue Generado";
    if (!modelo_.tiene_movimientos(p.anio)) return "Antes de Generar Comprobante de Cierre debe ingresar";
    limpiar(v);
    v.cierre = true;
    v.c.concepto = "CIERRE ANUAL DEL AÑO " + std::to_string(p.anio);
    leer_lineas(v); // the largest credit comes first
    std::vector<LineaPlana> por_cuenta(v.c.lineas.begin(), v.c.lineas.end() - 1);
    std::ranges::sort(por_cuenta);
    por_cuenta.push_back(v.c.lineas.back());
    if (por_cuenta != modelo_.cierre()) return "the lines of a closing";
    return al_azar(2) == 0 ? guardar(v) : "";
}

std::string Simulacion::cerrar_anio(Ventana& v) {
    PeriodoPlano& p = modelo_.periodo;
    v.p->escritorio.responder(ui::Answer::yes);
    v.p->pulsar("mnuCerrarAnio");
    if (p.cierre) {
        if (!modelo_.resultados_en_cero()) return "Comprobante de Cierre tiene errores";
        p = {p.anio + 1, std::nullopt};
    } else if (p.anio == PeriodoPlano{}.anio || modelo_.empezado() || !modelo_.numerado()) {
        return "Antes de Cerrar el Año de debe Generar el Comprobante de Cierre";
    } // else: taken for a close that was cut off before the numbers began anew
    for (auto& [documento, numero] : modelo_.ultimo_emitido) numero = "0";
    v.creido = p;
    limpiar(v);
    return "Cierre Anual de " + std::to_string(p.anio - 1) + " Completado con éxito";
}

std::string Simulacion::apertura(Ventana& v) {
    const int anio = modelo_.periodo.anio, norma = (al_azar(5) + 1) / 2;
    (void)nuevo(v);
    v.p->f.mskF_comp.SetText("01/01/" + std::to_string(anio));
    v.p->elegir("cmbDocumento", DOCUMENTOS[0]);
    v.p->f.cmbifrs.SetListIndex(norma);
    v.c.norma = std::to_string(norma);
    v.p->escritorio.responder(ui::Answer::yes);
    v.p->pulsar(al_azar(2) == 0 ? "mnuApertura" : "mnuAperturaDoc");
    if (norma == 0) return "Seleccione la norma TRIBUTARIA o IFRS";
    if (!modelo_.tiene_movimientos(anio - 1))
        return "Empresa no tiene movimientos en año " + std::to_string(anio - 1);
    v.c.apertura = true;
    v.c.lineas = modelo_.apertura(anio, v.c.norma);
    return al_azar(2) == 0 ? guardar(v) : "";
}

/// The only way for a window to learn that another one has closed the year.
std::string Simulacion::reabrir(Ventana& v) {
    v.p.reset();
    modelo_.desbloquear(v.usuario);
    v.p = std::make_unique<Pantalla>(escena_.conexion, v.carpeta, v.usuario);
    v.p->abrir();
    v.p->elegir("cmblibro", "CONTABLES");
    v.creido = modelo_.periodo;
    limpiar(v);
    v.c.concepto = "Inicio";
    v.p->f.txtconcepto.SetText(v.c.concepto);
    return "";
}

} // namespace quorvel::fallas
